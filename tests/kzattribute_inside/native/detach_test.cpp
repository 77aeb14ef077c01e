// What the entry point asks of the loader and of the framework, and in which order. This program's own functions stand
// before the libraries', which they call.
#include <dlfcn.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "kzutil/file_path.h"
#include "platform/afx/extension_module.h"
#include "platform/winapi.h"
#include "support/temp_folder.h"

extern "C" BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, LPVOID reserved);

namespace {

using Calls = std::vector<std::string>;

Calls* recorded = nullptr;  // where calls are recorded now

// The function of the same name behind this one.
template <class Function>
Function* behind(const char* name) {
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

}  // namespace

HMODULE LoadLibraryExW(LPCWSTR path, HANDLE file, DWORD flags) {
    if (recorded) recorded->push_back("load " + std::to_string(flags) + (file ? " a file" : ""));
    return behind<decltype(LoadLibraryExW)>("_Z14LoadLibraryExWPKDsPvj")(path, file, flags);
}

BOOL FreeLibrary(HMODULE module) {
    if (recorded) recorded->push_back("free");
    return behind<decltype(FreeLibrary)>("_Z11FreeLibraryP11HINSTANCE__")(module);
}

void AfxTermExtensionModule(AFX_EXTENSION_MODULE& record, BOOL all) {
    if (recorded) recorded->push_back("terminate " + std::to_string(all));
    behind<decltype(AfxTermExtensionModule)>("_Z22AfxTermExtensionModuleR20AFX_EXTENSION_MODULEi")(record,
                                                                                                   all);
}

TEST(EntryCalls, FreeTheLocalizedModuleBeforeTheExtensionModuleEnds) {
    test::TempFolder base;
    std::filesystem::create_directories(base.path() / "Plugins");
    std::filesystem::copy_file(
        std::filesystem::path(AFilePath().getPath().toUtf8()) / "Languages/de/kzattributeloc.dll",
        base.path() / "Plugins/kzattributeloc.dll");
    HMODULE self = nullptr;
    ASSERT_TRUE(GetModuleHandleExW(
        GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
        reinterpret_cast<LPCWSTR>(&DllMain), &self));
    for (const bool localized : {true, false}) {
        SCOPED_TRACE(localized);
        if (localized) AFilePath::setBaseFolder(base.wide());
        Calls attaching, detaching;
        recorded = &attaching;
        EXPECT_EQ(DllMain(self, DLL_PROCESS_ATTACH, nullptr), 1);
        recorded = &detaching;
        DllMain(self, DLL_PROCESS_DETACH, nullptr);
        recorded = nullptr;
        EXPECT_EQ(attaching, localized ? Calls{"load 2"} : Calls{});
        EXPECT_EQ(detaching, localized ? (Calls{"free", "terminate 0"}) : Calls{"terminate 0"});
        AFilePath::setBaseFolder(AString());
    }
}
