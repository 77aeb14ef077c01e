#include <sys/mman.h>
#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <new>

#include "kzutil/large_memory.h"

namespace kzutil {

namespace {

class LargeBlocks : public std::pmr::memory_resource {
    static bool isLarge(std::size_t size, std::size_t alignment) {
        return size >= kLargePage && alignment <= kLargePage;
    }
    void* do_allocate(std::size_t size, std::size_t alignment) override {
        if (!isLarge(size, alignment)) return std::pmr::new_delete_resource()->allocate(size, alignment);
        if (void* const block = allocateLarge(size)) return block;
        throw std::bad_alloc();
    }
    void do_deallocate(void* block, std::size_t size, std::size_t alignment) override {
        if (isLarge(size, alignment))
            freeLarge(block);
        else
            std::pmr::new_delete_resource()->deallocate(block, size, alignment);
    }
    bool do_is_equal(const std::pmr::memory_resource& other) const noexcept override {
        return this == &other;
    }
};

}  // namespace

void preferLargePages(void* memory, std::size_t size) noexcept {
    const auto page = static_cast<std::uintptr_t>(sysconf(_SC_PAGESIZE));
    const auto begin = reinterpret_cast<std::uintptr_t>(memory);
    const std::uintptr_t first = (begin + page - 1) / page * page;
    const std::uintptr_t end = (begin + size) / page * page;
    // A hint: where it is refused, the pages are small.
    if (first < end) madvise(reinterpret_cast<void*>(first), end - first, MADV_HUGEPAGE);
}

void* allocateLarge(std::size_t size) noexcept {
    if (size > SIZE_MAX - kLargePage) return nullptr;
    if (size < kLargePage) return std::aligned_alloc(kLargePage, kLargePage);
    const std::size_t rounded = (size + kLargePage - 1) / kLargePage * kLargePage;
    void* const block = std::aligned_alloc(kLargePage, rounded);
    if (block != nullptr) preferLargePages(block, rounded);
    return block;
}

void freeLarge(void* block) noexcept {
    std::free(block);
}

std::pmr::memory_resource& largeBlocks() {
    static LargeBlocks resource;
    return resource;
}

}  // namespace kzutil
