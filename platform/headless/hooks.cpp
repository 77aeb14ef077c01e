// CBT hooks: functions that are asked before a window is created or destroyed. The newest one is called
// first, and passes the call on if it likes.
#include <algorithm>

#include "platform/headless/desk.h"
#include "platform/headless/guard.h"

namespace headless {

namespace {

struct Hook {
    HHOOK handle;
    HOOKPROC procedure;
};

struct Hooks {
    std::vector<Hook> chain;  // oldest first
    std::uintptr_t last_handle = 0;
};

Hooks& hooks() {
    static Hooks* all = new Hooks;
    return *all;
}

}  // namespace

LRESULT call_cbt_hooks(int code, WPARAM wParam, LPARAM lParam) {
    return hooks().chain.empty() ? 0 : hooks().chain.back().procedure(code, wParam, lParam);
}

}  // namespace headless

using namespace headless;

HHOOK SetWindowsHookExW(int kind, HOOKPROC procedure, HINSTANCE, DWORD) {
    if (kind != WH_CBT || !procedure) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return nullptr;
    }
    return guarded([&] {
        auto handle = reinterpret_cast<HHOOK>(hooks().last_handle += 4);
        hooks().chain.push_back({handle, procedure});
        return handle;
    });
}

BOOL UnhookWindowsHookEx(HHOOK hook) {
    if (std::erase_if(hooks().chain, [&](const Hook& entry) { return entry.handle == hook; })) return TRUE;
    SetLastError(ERROR_INVALID_HOOK_HANDLE);
    return FALSE;
}

LRESULT CallNextHookEx(HHOOK hook, int code, WPARAM wParam, LPARAM lParam) {
    auto& chain = hooks().chain;
    auto place =
        std::find_if(chain.begin(), chain.end(), [&](const Hook& entry) { return entry.handle == hook; });
    if (place == chain.end() || place == chain.begin()) return 0;
    return (--place)->procedure(code, wParam, lParam);
}

DWORD GetCurrentThreadId() {
    return 1;
}
