// A module with an entry point, a static object, an exported function, and resources.
#include "platform/winapi.h"
#include "tests/platform/modules/module_log.h"

namespace {

struct Witness {
    Witness() { log_of_module("constructed"); }
    ~Witness() { log_of_module("destroyed"); }
} witness;

}  // namespace

extern "C" KZ_EXPORT INT_PTR sample_answer() {
    return 42;
}

extern "C" KZ_EXPORT BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, LPVOID) {
    HMODULE own = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                       reinterpret_cast<LPCWSTR>(&sample_answer), &own);
    if (own != instance) log_of_module("handed a wrong instance");
    if (reason == DLL_PROCESS_ATTACH) log_of_module("attached");
    if (reason == DLL_PROCESS_DETACH) log_of_module("detached");
    return TRUE;
}
