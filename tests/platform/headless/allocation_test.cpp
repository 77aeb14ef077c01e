// Running out of memory inside the loader: a null answer with its reason, nothing half done.
#include "tests/platform/module_support.h"
#include "tests/support/failing_new.h"

namespace {

// Calls again and again, failing the first allocation, then the second, until the call makes fewer. Returns
// how many calls failed; each must have said why.
template <class Call>
int failures_until_it_succeeds(Call call) {
    for (int n = 1; n < 1000; ++n) {
        SetLastError(ERROR_SUCCESS);
        const AllocationFailure failing = failAllocation(n);
        const bool succeeded = static_cast<bool>(call());
        if (!failing.happened()) {
            EXPECT_TRUE(succeeded);
            return n - 1;
        }
        EXPECT_FALSE(succeeded) << n;
        EXPECT_EQ(GetLastError(), DWORD{ERROR_NOT_ENOUGH_MEMORY}) << n;
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
