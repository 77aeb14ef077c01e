#include "tests/platform/modules/linked.h"

namespace {

AFX_EXTENSION_MODULE record;

struct InChain {
    InChain() {
        HMODULE own = nullptr;
        GetModuleHandleExW(
            GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
            reinterpret_cast<LPCWSTR>(&record), &own);
        if (AfxInitExtensionModule(record, own)) new CDynLinkLibrary(record);
    }
    ~InChain() { AfxTermExtensionModule(record); }
} in_chain;

}  // namespace

const AFX_EXTENSION_MODULE& linked_record() {
    return record;
}
