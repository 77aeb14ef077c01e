// Running out of memory inside the loader: a null answer with its reason, nothing half done.
#include <cstdlib>
#include <new>

#include "tests/platform/module_support.h"

namespace {

// How many allocations still succeed; negative: all of them.
thread_local long allocations_left = -1;

void* allocate(std::size_t size) {
    if (allocations_left == 0) return nullptr;
    if (allocations_left > 0) --allocations_left;
    return std::malloc(size == 0 ? 1 : size);
}

}  // namespace

// This program's, and with it that of every library it loads.
void* operator new(std::size_t size) {
    if (void* memory = allocate(size)) return memory;
    throw std::bad_alloc();
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    return allocate(size);
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

namespace {

// Calls again and again, each time with one more allocation to succeed, until the answer is not null. Returns
// how many of the calls failed; each must have said why.
template <class Call>
int failures_until_it_succeeds(Call call) {
    for (long allowed = 0; allowed < 1000; ++allowed) {
        SetLastError(ERROR_SUCCESS);
        allocations_left = allowed;
        const bool succeeded = static_cast<bool>(call());
        allocations_left = -1;
        if (succeeded) return static_cast<int>(allowed);
        EXPECT_EQ(GetLastError(), DWORD{ERROR_NOT_ENOUGH_MEMORY}) << allowed;
    }
    ADD_FAILURE() << "never succeeds";
    return 0;
}

TEST(OutOfMemory, LoadingAModuleFails) {
    const Wide path = native_module("plain");
    HMODULE module = nullptr;
    EXPECT_GT(failures_until_it_succeeds([&] { return module = LoadLibraryW(path.c_str()); }), 0);
    EXPECT_NE(GetProcAddress(module, "plain_answer"), nullptr);
    EXPECT_TRUE(FreeLibrary(module));
    EXPECT_FALSE(FreeLibrary(module));  // the failures left no count behind
}

TEST(OutOfMemory, LoadingResourcesFails) {
    const Wide path = module_path(u"localized.dll");
    HMODULE module = nullptr;
    EXPECT_GT(failures_until_it_succeeds(
                  [&] { return module = LoadLibraryExW(path.c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE); }),
              0);
    EXPECT_EQ(string_of(module, 100), u"Hundert");
    EXPECT_TRUE(FreeLibrary(module));
}

TEST(OutOfMemory, AskingForAPathFails) {
    const LoadedModule module(load_native("plain"));
    WCHAR buffer[4096];
    EXPECT_GT(failures_until_it_succeeds([&] { return GetModuleFileNameW(module, buffer, 4096); }), 0);
}

TEST(OutOfMemory, FindingResourcesNeedsNoMemory) {
    const LoadedModule module(load_native("sample"));
    WCHAR buffer[16];
    EXPECT_EQ(failures_until_it_succeeds([&] { return LoadStringW(module, 100, buffer, 16); }), 0);
    EXPECT_EQ(
        failures_until_it_succeeds([&] { return FindResourceW(module, u"blob", MAKEINTRESOURCEW(10)); }), 0);
}

}  // namespace
