#include "platform/afx/modal_loop.h"

#include <utility>
#include <vector>

#include "platform/afx/creation.h"
#include "platform/afx/exceptions.h"

namespace {

struct ModalState {
    std::vector<CWnd*> windows;  // innermost last
    AfxModalIdle* idle = nullptr;
};

ModalState& modal_state() {
    // Never destroyed: as the state of windows (creation.cpp).
    static ModalState* state = new ModalState;
    return *state;
}

// Disabled until the end of the block, or until release().
class ModalOwner {
public:
    explicit ModalOwner(CWnd* parent) : m_window(owner_for(parent)) {
        m_disabled = m_window && !::EnableWindow(m_window, FALSE);
    }
    ~ModalOwner() { release(); }
    ModalOwner(const ModalOwner&) = delete;
    ModalOwner& operator=(const ModalOwner&) = delete;

    HWND window() const { return m_window; }

    void release() {
        if (std::exchange(m_disabled, false)) ::EnableWindow(m_window, TRUE);
    }

private:
    static HWND owner_for(CWnd* parent) {
        if (parent && parent->m_hWnd) return ::GetAncestor(parent->m_hWnd, GA_ROOT);
        if (CWnd* modal = AfxGetModalWindow()) return modal->m_hWnd;
        return ::GetActiveWindow();
    }

    HWND m_window;
    bool m_disabled;
};

class ModalEntry {
public:
    explicit ModalEntry(CWnd& window) { modal_state().windows.push_back(&window); }
    ~ModalEntry() { modal_state().windows.pop_back(); }
    ModalEntry(const ModalEntry&) = delete;
    ModalEntry& operator=(const ModalEntry&) = delete;
};

// False when there is nothing, or when the program is to end: then that is posted again for the outer loops.
bool handle_next(bool& quitting) {
    MSG message;
    if (!PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) return false;
    if (message.message == WM_QUIT) {
        PostQuitMessage(static_cast<int>(message.wParam));
        quitting = true;
        return false;
    }
    CWnd* modal = AfxGetModalWindow();
    const bool offered =
        modal && modal->m_hWnd && (message.hwnd == modal->m_hWnd || ::IsChild(modal->m_hWnd, message.hwnd));
    if (!offered || !modal->PreTranslateMessage(&message)) {
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
    AfxRethrowException();
    return true;
}

void run_loop(CWnd& window) {
    ModalEntry entry(window);
    bool quitting = false;
    while (!quitting && window.m_hWnd && window.ContinueModal()) {
        if (handle_next(quitting) || quitting) continue;
        AfxModalIdle* idle = modal_state().idle;
        if (idle && idle->OnModalIdle(window)) continue;
        if (!WaitMessage()) throw AfxNoInputException();
    }
}

}  // namespace

AfxModalIdle* AfxSetModalIdle(AfxModalIdle* idle) {
    return std::exchange(modal_state().idle, idle);
}

CWnd* AfxGetModalWindow() {
    return modal_state().windows.empty() ? nullptr : modal_state().windows.back();
}

bool AfxRunModal(CWnd& window, CWnd* parent, const std::function<bool(HWND owner)>& create) {
    ModalOwner owner(parent);
    try {
        if (!create(owner.window())) return false;
        window.ShowWindow(SW_SHOW);
        run_loop(window);
    } catch (...) {
        owner.release();
        window.DestroyWindow();
        AfxDropException();
        throw;
    }
    // Enabled before the window goes, so that the owner becomes the active window.
    owner.release();
    window.DestroyWindow();
    AfxRethrowException();
    return true;
}

void AfxHandleMessages() {
    bool quitting = false;
    while (handle_next(quitting)) {
    }
}
