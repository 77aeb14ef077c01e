// What only the headless loader promises: every wrong handle is noticed, and the documented details that Wine
// leaves out.
#include <fstream>

#include "platform/headless/text.h"
#include "tests/platform/module_support.h"
#include "tests/platform/modules/linked.h"

namespace {

HMODULE made_up(ULONG_PTR value) {
    return reinterpret_cast<HMODULE>(value);
}

void expect_invalid(HMODULE handle) {
    WCHAR buffer[16];
    const auto sets_error = [](auto answer) { return answer == 0 && GetLastError() == ERROR_INVALID_HANDLE; };
    const HRSRC resource = reinterpret_cast<HRSRC>(ULONG_PTR{1});
    SetLastError(ERROR_SUCCESS);
    EXPECT_TRUE(sets_error(FreeLibrary(handle)));
    SetLastError(ERROR_SUCCESS);
    EXPECT_TRUE(sets_error(GetProcAddress(handle, "sample_answer") != nullptr));
    SetLastError(ERROR_SUCCESS);
    EXPECT_TRUE(sets_error(GetModuleFileNameW(handle, buffer, 16)));
    SetLastError(ERROR_SUCCESS);
    EXPECT_TRUE(sets_error(FindResourceW(handle, u"x", u"y") != nullptr));
    SetLastError(ERROR_SUCCESS);
    EXPECT_TRUE(sets_error(LoadResource(handle, resource) != nullptr));
    SetLastError(ERROR_SUCCESS);
    EXPECT_TRUE(sets_error(SizeofResource(handle, resource)));
    SetLastError(ERROR_SUCCESS);
    EXPECT_TRUE(sets_error(LoadStringW(handle, 1, buffer, 16)));
}

TEST(ModuleHandles, MadeUpOnesAreInvalid) {
    for (const ULONG_PTR value : {ULONG_PTR{1}, ULONG_PTR{0x10001}, ULONG_PTR{0x12345678}, ~ULONG_PTR{0}}) {
        expect_invalid(made_up(value));
    }
}

TEST(ModuleHandles, StaleOnesAreInvalidForEver) {
    const HMODULE native = load_native("sample");
    const HMODULE data = load_resources(u"localized.dll");
    ASSERT_TRUE(FreeLibrary(native));
    ASSERT_TRUE(FreeLibrary(data));
    const LoadedModule again(load_native("sample"));
    const LoadedModule data_again(load_resources(u"localized.dll"));
    expect_invalid(native);
    expect_invalid(data);
}

TEST(ModuleHandles, NullIsTheProgramButCannotBeFreed) {
    EXPECT_EQ(string_of(nullptr, 400), u"Program");
    EXPECT_FALSE(FreeLibrary(nullptr));
    EXPECT_EQ(GetLastError(), DWORD{ERROR_INVALID_HANDLE});
}

TEST(ModuleHandles, ResourceBelongsToItsModule) {
    const LoadedModule sample(load_native("sample"));
    const LoadedModule data(load_resources(u"localized.dll"));
    const HRSRC resource = FindResourceW(sample, MAKEINTRESOURCEW(7), u"KzType");
    ASSERT_NE(resource, nullptr);
    EXPECT_EQ(SizeofResource(sample, resource), 6u);
    EXPECT_EQ(SizeofResource(data, resource), 0u);
    EXPECT_EQ(GetLastError(), DWORD{ERROR_INVALID_HANDLE});
    EXPECT_EQ(LoadResource(data, resource), nullptr);
    EXPECT_EQ(LoadResource(sample, nullptr), nullptr);
    EXPECT_EQ(LockResource(nullptr), nullptr);
}

TEST(ModuleHandles, DataOfAFileLoadedTwiceIsTwoModules) {
    const HMODULE first = load_resources(u"localized.dll");
    const LoadedModule second(load_resources(u"localized.dll"));
    EXPECT_NE(first, second);
    EXPECT_TRUE(FreeLibrary(first));
    EXPECT_EQ(string_of(second, 100), u"Hundert");
}

TEST(ModuleHandles, LibraryThatCameWithTheProgramHasOneOfItsOwn) {
    const HMODULE linked = linked_record().hModule;
    EXPECT_EQ(string_of(linked, 300), u"Linked");
    EXPECT_TRUE(FreeLibrary(linked));
    EXPECT_EQ(string_of(linked, 300), u"Linked");
}

TEST(ModuleHandles, ModuleWithoutResourcesDoesNotAnswerWithThoseOfALibraryItNeeds) {
    const LoadedModule plain(load_native("plain"));
    EXPECT_EQ(FindResourceW(plain, MAKEINTRESOURCEW(19), RT_STRING), nullptr);
    EXPECT_EQ(GetLastError(), DWORD{ERROR_RESOURCE_TYPE_NOT_FOUND});
    EXPECT_EQ(string_of(plain, 400), u"");
}

TEST(ModuleHandles, StringOfASizeOfOneIsEmpty) {
    WCHAR buffer[2] = u"#";
    EXPECT_EQ(LoadStringW(nullptr, 400, buffer, 1), 0);
    EXPECT_EQ(buffer[0], 0);
}

TEST(ModuleHandles, PathThatDoesNotFitIsCutAndTerminated) {
    const Wide path = program_path();
    WCHAR buffer[9] = u"########";
    EXPECT_EQ(GetModuleFileNameW(nullptr, buffer, 8), 8u);
    EXPECT_EQ(GetLastError(), DWORD{ERROR_INSUFFICIENT_BUFFER});
    EXPECT_EQ(Wide(buffer), path.substr(0, 7));
    EXPECT_EQ(GetModuleFileNameW(nullptr, nullptr, 0), 0u);
    EXPECT_EQ(GetLastError(), DWORD{ERROR_INSUFFICIENT_BUFFER});
}

TEST(ModuleHandles, WrongArgumentsAreReported) {
    EXPECT_EQ(LoadLibraryW(nullptr), nullptr);
    EXPECT_EQ(GetLastError(), DWORD{ERROR_INVALID_PARAMETER});
    EXPECT_EQ(LoadLibraryW(u""), nullptr);
    EXPECT_EQ(GetLastError(), DWORD{ERROR_INVALID_PARAMETER});
    EXPECT_EQ(LoadLibraryExW(u"x", nullptr, DONT_RESOLVE_DLL_REFERENCES), nullptr);
    EXPECT_EQ(GetLastError(), DWORD{ERROR_INVALID_PARAMETER});
    HMODULE module = nullptr;
    EXPECT_FALSE(GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS, u"x", &module));
    EXPECT_EQ(GetLastError(), DWORD{ERROR_INVALID_PARAMETER});
    EXPECT_FALSE(GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT, nullptr, nullptr));
    EXPECT_EQ(LoadStringW(nullptr, 400, nullptr, 10), 0);
    EXPECT_EQ(GetProcAddress(nullptr, nullptr), nullptr);
    EXPECT_EQ(GetLastError(), DWORD{ERROR_PROC_NOT_FOUND});
}

TEST(ModuleHandles, FolderIsNoModule) {
    EXPECT_EQ(LoadLibraryW(module_path(u"").c_str()), nullptr);
    EXPECT_EQ(GetLastError(), DWORD{ERROR_ACCESS_DENIED});
    EXPECT_EQ(load_resources(u""), nullptr);
    EXPECT_EQ(GetLastError(), DWORD{ERROR_ACCESS_DENIED});
}

TEST(ModuleHandles, NameWithoutASlashStandsBesideTheProgram) {
    const LoadedModule linked(LoadLibraryW(u"libtest_linked.so"));
    EXPECT_EQ(linked, linked_record().hModule);
    EXPECT_EQ(LoadLibraryW(u"libdl.so.2"), nullptr);
    EXPECT_EQ(GetLastError(), DWORD{ERROR_MOD_NOT_FOUND});
}

TEST(ModuleHandles, LibraryLoadedByHandStaysWhenItsLoadIsUndone) {
    EXPECT_TRUE(FreeLibrary(LoadLibraryW(u"libtest_linked.so")));
    EXPECT_EQ(string_of(linked_record().hModule, 300), u"Linked");
}

TEST(ModuleHandles, CutModuleIsNoModule) {
    const std::string original = headless::to_utf8(native_module("sample"));
    const std::string cut = headless::to_utf8(module_path(u"cut.so"));
    std::ifstream source(original, std::ios::binary);
    std::string front(200, '\0');
    ASSERT_TRUE(source.read(front.data(), 200));
    ASSERT_TRUE(std::ofstream(cut, std::ios::binary).write(front.data(), 200).flush());
    EXPECT_EQ(LoadLibraryW(module_path(u"cut.so").c_str()), nullptr);
    EXPECT_EQ(GetLastError(), DWORD{ERROR_BAD_EXE_FORMAT});
}

}  // namespace
