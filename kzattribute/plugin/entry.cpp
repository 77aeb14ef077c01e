// The module's entry point: attach and detach.
#include <exception>
#include <filesystem>
#include <new>

#include "kzcore/tool/module_file.h"
#include "kzutil/file_path.h"
#include "platform/afx/extension_module.h"
#include "platform/winapi.h"
#include "viewfilter/view_attr_filter.h"

namespace {

AFX_EXTENSION_MODULE extensionModule{};

// Null when there is no localized module. Loaded once on attach, freed once on detach.
HMODULE localizedModule = nullptr;

// The localized module stands beside the plug-in; whatever keeps it from being loaded, the module's
// own texts serve.
HMODULE loadLocalizedModule() {
    try {
        AFilePath path;
        path += _T("Plugins");
        path += _T("kzattributeloc.dll");
        // Not every loader looks at the file's size before it maps the file.
        if (!moduleFileProblem(std::filesystem::path(path.getPath().view())).empty()) return nullptr;
        return LoadLibraryExW(path, nullptr, LOAD_LIBRARY_AS_DATAFILE);
    } catch (const std::exception&) {
        return nullptr;
    }
}

// Without memory for it the tools work all the same, but undo cannot bring their filters back.
void registerFilter() {
    try {
        registerAttributeFilter();
    } catch (const std::bad_alloc&) {
    }
}

BOOL attach(HINSTANCE instance) {
    AfxPrepareExtensionModule();
    if (!AfxInitExtensionModule(extensionModule, instance)) return 0;
    localizedModule = loadLocalizedModule();
    if (localizedModule) extensionModule.hResource = localizedModule;
    new (std::nothrow)
        CDynLinkLibrary(extensionModule, FALSE);  // owned by the chain; without it, no resources
    registerFilter();
    return 1;
}

void detach() {
    unregisterAttributeFilter();
    if (localizedModule) FreeLibrary(localizedModule);
    localizedModule = nullptr;
    AfxTermExtensionModule(extensionModule, FALSE);
}

}  // namespace

extern "C" BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, LPVOID) {
    if (reason == DLL_PROCESS_ATTACH) return attach(instance);
    if (reason == DLL_PROCESS_DETACH) detach();
    return 1;
}
