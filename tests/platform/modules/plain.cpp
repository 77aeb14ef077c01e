// A module without an entry point or resources of its own.
#include "platform/winapi.h"
#include "tests/platform/modules/module_log.h"

extern "C" KZ_EXPORT INT_PTR plain_answer() {
    log_of_module("answered");
    return 7;
}
