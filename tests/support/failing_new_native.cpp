// The program's own operator new, which the shared libraries that it loads use too.
#include <cstdlib>
#include <new>

#include "tests/support/failing_new.h"

void ensureAllocationsAreCounted() {}

void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    return allocationFailsNow() ? nullptr : std::malloc(size > 0 ? size : 1);
}

void* operator new(std::size_t size) {
    if (void* memory = operator new(size, std::nothrow)) return memory;
    throw std::bad_alloc();
}

void* operator new[](std::size_t size) {
    return operator new(size);
}
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
    return operator new(size, std::nothrow);
}

void operator delete(void* memory) noexcept {
    std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}
void operator delete(void* memory, const std::nothrow_t&) noexcept {
    std::free(memory);
}
void operator delete[](void* memory) noexcept {
    std::free(memory);
}
void operator delete[](void* memory, std::size_t) noexcept {
    std::free(memory);
}
void operator delete[](void* memory, const std::nothrow_t&) noexcept {
    std::free(memory);
}
