// Links this library's resources into the framework's chain while it is loaded.
#include "platform/afx/extension_module.h"

namespace {

class ResourceModule {
public:
    ResourceModule() {
        HMODULE self = nullptr;
        constexpr DWORD flags =
            GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT;
        if (!GetModuleHandleExW(flags, reinterpret_cast<LPCWSTR>(this), &self)) return;
        if (AfxInitExtensionModule(m_record, self)) new CDynLinkLibrary(m_record);  // the chain owns it
    }
    ~ResourceModule() { AfxTermExtensionModule(m_record); }
    ResourceModule(const ResourceModule&) = delete;
    ResourceModule& operator=(const ResourceModule&) = delete;

private:
    AFX_EXTENSION_MODULE m_record{};
};

ResourceModule resourceModule;

}  // namespace
