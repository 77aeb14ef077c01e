// Texts that take no input.
#include "platform/headless/controls.h"
#include "platform/headless/desk.h"
#include "platform/headless/guard.h"

using namespace headless;

namespace {

struct Static : ControlState {
    WPARAM font = 0;
};

}  // namespace

LRESULT headless::static_procedure(HWND handle, UINT message, WPARAM wParam, LPARAM lParam) {
    std::shared_ptr<Window> window = hold(handle);
    if (!window) return 0;
    if (message == WM_NCCREATE) window->state = guarded([] { return std::make_unique<Static>(); });
    auto* state = dynamic_cast<Static*>(window->state.get());
    if (state && message == WM_SETFONT) state->font = wParam;
    if (state && message == WM_GETFONT) return static_cast<LRESULT>(state->font);
    if (message == WM_GETDLGCODE) return DLGC_STATIC;
    return DefWindowProcW(handle, message, wParam, lParam);
}
