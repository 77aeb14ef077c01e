// An extension module as plug-ins are: it links itself into the resource chain, its localized resources
// first.
#include <new>

#include "platform/afx/extension_module.h"
#include "tests/platform/module_path.h"

namespace {

AFX_EXTENSION_MODULE record;
HMODULE localized = nullptr;

}  // namespace

extern "C" KZ_EXPORT BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, LPVOID) {
    if (reason == DLL_PROCESS_ATTACH) {
        if (!AfxInitExtensionModule(record, instance)) return FALSE;
        localized =
            LoadLibraryExW(module_path(_T("localized.dll")).c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE);
        if (localized != nullptr) record.hResource = localized;
        new (std::nothrow) CDynLinkLibrary(record);
    } else if (reason == DLL_PROCESS_DETACH) {
        if (localized != nullptr) FreeLibrary(localized);
        AfxTermExtensionModule(record);
    }
    return TRUE;
}
