// A module that does not want to be loaded.
#include "platform/winapi.h"
#include "tests/platform/modules/module_log.h"

extern "C" KZ_EXPORT BOOL WINAPI DllMain(HINSTANCE, DWORD reason, LPVOID) {
    if (reason == DLL_PROCESS_ATTACH) log_of_module("refused");
    if (reason == DLL_PROCESS_DETACH) log_of_module("detached");
    return FALSE;
}
