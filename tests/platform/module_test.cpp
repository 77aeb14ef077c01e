// Loading modules, asking them for functions and resources.
#include "tests/platform/module_support.h"
#include "tests/platform/modules/module_log.h"

namespace {

using Events = std::vector<std::string>;

class Module : public testing::Test {
protected:
    void SetUp() override { take_module_log(); }
};

TEST_F(Module, IsAttachedAfterItsStaticObjectsAndDetachedBeforeThem) {
    const HMODULE module = load_native("sample");
    ASSERT_NE(module, nullptr);
    EXPECT_EQ(take_module_log(), (Events{"constructed", "attached"}));
    EXPECT_TRUE(FreeLibrary(module));
    EXPECT_EQ(take_module_log(), (Events{"detached", "destroyed"}));
}

TEST_F(Module, IsAttachedOnceHoweverOftenItIsLoaded) {
    const HMODULE first = load_native("sample");
    const HMODULE second = load_native("sample");
    ASSERT_NE(first, nullptr);
    EXPECT_EQ(first, second);
    EXPECT_EQ(take_module_log(), (Events{"constructed", "attached"}));
    EXPECT_TRUE(FreeLibrary(first));
    EXPECT_EQ(take_module_log(), Events{});
    EXPECT_EQ(string_of(first, 200), _T("Two hundred"));
    EXPECT_TRUE(FreeLibrary(second));
    EXPECT_EQ(take_module_log(), (Events{"detached", "destroyed"}));
}

TEST_F(Module, CanBeLoadedAgainAfterItWasUnloaded) {
    for (int round = 0; round < 3; ++round) {
        const HMODULE module = load_native("sample");
        ASSERT_NE(module, nullptr);
        EXPECT_TRUE(FreeLibrary(module));
        EXPECT_EQ(take_module_log(), (Events{"constructed", "attached", "detached", "destroyed"}));
    }
}

TEST_F(Module, ThatRefusesIsDetachedUnloadedAndReported) {
    for (int round = 0; round < 2; ++round) {
        SetLastError(ERROR_SUCCESS);
        EXPECT_EQ(load_native("refusing"), nullptr);
        EXPECT_EQ(GetLastError(), DWORD{ERROR_DLL_INIT_FAILED});
        EXPECT_EQ(take_module_log(), (Events{"refused", "detached"}));
    }
}

TEST_F(Module, WithoutAnEntryPointLoads) {
    const LoadedModule module(load_native("plain"));
    const FARPROC answer = GetProcAddress(module, "plain_answer");
    ASSERT_NE(answer, nullptr);
    EXPECT_EQ(answer(), 7);
    EXPECT_EQ(take_module_log(), Events{"answered"});
}

TEST_F(Module, GivesItsOwnFunctionsOnly) {
    const LoadedModule module(load_native("sample"));
    const FARPROC answer = GetProcAddress(module, "sample_answer");
    ASSERT_NE(answer, nullptr);
    EXPECT_EQ(answer(), 42);
    SetLastError(ERROR_SUCCESS);
    EXPECT_EQ(GetProcAddress(module, "no_such_function"), nullptr);
    EXPECT_EQ(GetLastError(), DWORD{ERROR_PROC_NOT_FOUND});
    // A library that the module depends on has this one.
    EXPECT_EQ(GetProcAddress(module, "SetLastError"), nullptr);
    EXPECT_EQ(GetProcAddress(module, "_Z12SetLastErrorj"), nullptr);
}

TEST_F(Module, ThatDoesNotExistIsReported) {
    EXPECT_EQ(LoadLibraryW(module_path(_T("missing.so")).c_str()), nullptr);
    EXPECT_EQ(GetLastError(), DWORD{ERROR_MOD_NOT_FOUND});
}

TEST_F(Module, ThatIsAnEmptyFileOrTextIsNoModule) {
    for (const auto* file : {_T("empty.dll"), _T("text.dll")}) {
        EXPECT_EQ(LoadLibraryW(module_path(file).c_str()), nullptr);
        EXPECT_EQ(GetLastError(), DWORD{ERROR_BAD_EXE_FORMAT});
    }
}

TEST_F(Module, KnowsItsFile) {
    const LoadedModule module(load_native("sample"));
    WCHAR buffer[4096];
    const DWORD length = GetModuleFileNameW(module, buffer, 4096);
    ASSERT_GT(length, 0u);
    const Wide path(buffer, length);
    const Wide name = wide("sample") + wide(KZ_MODULE_SUFFIX);
    ASSERT_GT(path.size(), name.size());
    EXPECT_EQ(path.substr(path.size() - name.size()), name);

    EXPECT_EQ(GetModuleFileNameW(module, buffer, length), length);
    EXPECT_EQ(GetLastError(), DWORD{ERROR_INSUFFICIENT_BUFFER});
}

TEST_F(Module, IsFoundByAnAddressOfItsOwn) {
    const LoadedModule module(load_native("sample"));
    HMODULE found = nullptr;
    const auto address = reinterpret_cast<LPCWSTR>(GetProcAddress(module, "sample_answer"));
    const DWORD flags = GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT;
    EXPECT_TRUE(GetModuleHandleExW(flags, address, &found));
    EXPECT_EQ(found, module);

    EXPECT_FALSE(GetModuleHandleExW(flags, reinterpret_cast<LPCWSTR>(ULONG_PTR{16}), &found));
    EXPECT_EQ(found, nullptr);
}

TEST_F(Module, ThatCameWithTheProgramIsNotUnloaded) {
    HMODULE program = nullptr;
    ASSERT_TRUE(GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT, nullptr, &program));
    EXPECT_TRUE(FreeLibrary(program));
    EXPECT_EQ(string_of(program, 400), _T("Program"));
    EXPECT_EQ(string_of(nullptr, 400), _T("Program"));
}

TEST_F(Module, HasStringsInUtf16) {
    const LoadedModule module(load_native("sample"));
    EXPECT_EQ(string_of(module, 100), _T("Hundred"));
    EXPECT_EQ(string_of(module, 102), _T("Gr\u00f6\u00dfe \u2013 \u5927 \U0001f600"));
    EXPECT_EQ(string_of(module, 103), _T(""));
    EXPECT_EQ(string_of(module, 5000), _T(""));
}

TEST_F(Module, CutsAStringToTheBuffer) {
    const LoadedModule module(load_native("sample"));
    WCHAR buffer[8] = _T("#######");
    EXPECT_EQ(LoadStringW(module, 101, buffer, 4), 3);
    EXPECT_EQ(Wide(buffer), _T("Hun"));
    EXPECT_EQ(buffer[4], _T('#'));
}

TEST_F(Module, PointsAtAStringWhenTheSizeIsZero) {
    const LoadedModule module(load_native("sample"));
    LPCWSTR text = nullptr;
    ASSERT_EQ(LoadStringW(module, 100, reinterpret_cast<LPWSTR>(&text), 0), 7);
    EXPECT_EQ(Wide(text, 7), _T("Hundred"));
}

TEST_F(Module, FindsResourcesByNumberAndByNameInAnyCase) {
    const LoadedModule module(load_native("sample"));
    const HRSRC blob = FindResourceW(module, _T("bLOB"), MAKEINTRESOURCEW(10));
    ASSERT_NE(blob, nullptr);
    EXPECT_EQ(SizeofResource(module, blob), 3u);
    const auto* bytes = static_cast<const BYTE*>(LockResource(LoadResource(module, blob)));
    ASSERT_NE(bytes, nullptr);
    EXPECT_EQ(std::vector<int>(bytes, bytes + 3), (std::vector<int>{1, 2, 3}));

    EXPECT_NE(FindResourceW(module, MAKEINTRESOURCEW(7), _T("kztype")), nullptr);
    EXPECT_NE(FindResourceW(module, _T("#7"), _T("KZTYPE")), nullptr);
    EXPECT_EQ(FindResourceW(module, MAKEINTRESOURCEW(8), _T("KZTYPE")), nullptr);
    EXPECT_EQ(GetLastError(), DWORD{ERROR_RESOURCE_NAME_NOT_FOUND});
    EXPECT_EQ(FindResourceW(module, MAKEINTRESOURCEW(7), _T("NOTYPE")), nullptr);
    EXPECT_EQ(GetLastError(), DWORD{ERROR_RESOURCE_TYPE_NOT_FOUND});
}

TEST_F(Module, LoadedAsDataGivesItsResourcesOnly) {
    const LoadedModule module(load_resources(_T("localized.dll")));
    EXPECT_NE(reinterpret_cast<ULONG_PTR>(HMODULE{module}) & 1, 0u);
    EXPECT_EQ(string_of(module, 100), _T("Hundert"));
    EXPECT_EQ(string_of(module, 101), _T(""));
    const HRSRC eight = FindResourceW(module, MAKEINTRESOURCEW(8), _T("KzType"));
    ASSERT_NE(eight, nullptr);
    EXPECT_STREQ(static_cast<const char*>(LockResource(LoadResource(module, eight))), "acht");
    EXPECT_EQ(GetProcAddress(module, "DllMain"), nullptr);
}

TEST_F(Module, LoadedAsDataMustBeAnImage) {
    EXPECT_EQ(load_resources(_T("missing.dll")), nullptr);
    EXPECT_EQ(GetLastError(), DWORD{ERROR_FILE_NOT_FOUND});
    EXPECT_EQ(load_resources(_T("text.dll")), nullptr);
    EXPECT_EQ(GetLastError(), DWORD{ERROR_BAD_EXE_FORMAT});
    EXPECT_EQ(load_resources(_T("empty.dll")), nullptr);
}

}  // namespace
