// That detaching frees the localized module. Here data files are counted, as modules are; Windows maps each
// loading anew, so that nobody else can tell whether one is gone.
#include <gtest/gtest.h>

#include "kzutil/file_path.h"
#include "platform/winapi.h"
#include "support/temp_folder.h"

extern "C" BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, LPVOID reserved);

TEST(LocalizedModule, IsLetGoByDetach) {
    constexpr UINT kSelectSimilarObjects = 4180;
    test::TempFolder base;
    const std::string program = AFilePath().getPath().toUtf8();
    std::filesystem::create_directories(base.path() / "Plugins");
    std::filesystem::copy_file(std::filesystem::path(program) / "Languages/de/kzattributeloc.dll",
                               base.path() / "Plugins/kzattributeloc.dll");
    AFilePath::setBaseFolder(base.wide());
    AFilePath path;
    path += _T("Plugins");
    path += _T("kzattributeloc.dll");
    HMODULE self = nullptr;
    ASSERT_TRUE(GetModuleHandleExW(
        GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
        reinterpret_cast<LPCWSTR>(&DllMain), &self));
    const HMODULE held = LoadLibraryExW(path, nullptr, LOAD_LIBRARY_AS_DATAFILE);
    ASSERT_NE(held, nullptr);
    ASSERT_EQ(DllMain(self, DLL_PROCESS_ATTACH, nullptr), 1);
    DllMain(self, DLL_PROCESS_DETACH, nullptr);
    WCHAR text[64];
    EXPECT_GT(LoadStringW(held, kSelectSimilarObjects, text, 64), 0) << "this test still holds it";
    EXPECT_TRUE(FreeLibrary(held));
    EXPECT_EQ(LoadStringW(held, kSelectSimilarObjects, text, 64), 0) << "and was the last to";
    AFilePath::setBaseFolder(AString());
}
