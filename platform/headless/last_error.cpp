#include "platform/headless/include/windows.h"

namespace {

thread_local DWORD last_error = ERROR_SUCCESS;

}  // namespace

DWORD GetLastError() {
    return last_error;
}

void SetLastError(DWORD error) {
    last_error = error;
}
