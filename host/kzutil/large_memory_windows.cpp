// Ordinary memory: there is nothing to ask the system for.
#include <new>

#include "kzutil/large_memory.h"

namespace kzutil {

void preferLargePages(void*, std::size_t) noexcept {}

void* allocateLarge(std::size_t size) noexcept {
    return ::operator new (size, std::align_val_t{kLargePage}, std::nothrow);
}

void freeLarge(void* block) noexcept {
    ::operator delete (block, std::align_val_t{kLargePage});
}

std::pmr::memory_resource& largeBlocks() {
    return *std::pmr::new_delete_resource();
}

}  // namespace kzutil
