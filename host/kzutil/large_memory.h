// Memory for what comes in millions: blocks that the system may back by large pages, so that a drawing of a
// hundred megabytes costs fifty page faults and not twenty-five thousand.
//
//     std::pmr::monotonic_buffer_resource arena(&kzutil::largeBlocks());
//
// On systems without such a choice it is ordinary memory.
#pragma once

#include <cstddef>
#include <memory_resource>

namespace kzutil {

constexpr std::size_t kLargePage = std::size_t{2} << 20;

// Says that all of this memory is about to be used. Worth a call from two large pages on.
void preferLargePages(void* memory, std::size_t size) noexcept;

// A block that starts at a multiple of kLargePage; null when there is no memory.
void* allocateLarge(std::size_t size) noexcept;
void freeLarge(void* block) noexcept;

// For arenas: requests of a large page and more become such blocks.
std::pmr::memory_resource& largeBlocks();

}  // namespace kzutil
