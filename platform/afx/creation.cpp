#include "platform/afx/creation.h"

#include <new>
#include <utility>

#include "platform/afx/window_state.h"

AfxWindowState& AfxGetWindowState() {
    // Never destroyed: windows of static objects may outlive anything that is.
    static AfxWindowState* state = new AfxWindowState;
    return *state;
}

AfxWindowCreation::AfxWindowCreation(CWnd& window)
    : m_pending(&window), m_hook(SetWindowsHookExW(WH_CBT, Hook, nullptr, GetCurrentThreadId())) {
    if (!m_hook) throw std::bad_alloc();
    m_outer = std::exchange(AfxGetWindowState().creation, this);
}

AfxWindowCreation::~AfxWindowCreation() {
    UnhookWindowsHookEx(m_hook);
    // A page's creation that came to nothing may end after ones that began later.
    AfxWindowCreation** link = &AfxGetWindowState().creation;
    while (*link != this) link = &(*link)->m_outer;
    *link = m_outer;
}

LRESULT CALLBACK AfxWindowCreation::Hook(int code, WPARAM wParam, LPARAM lParam) {
    AfxWindowCreation* creation = AfxGetWindowState().creation;
    if (!creation) return 0;
    if (code == HCBT_CREATEWND && creation->m_pending) {
        const auto window = reinterpret_cast<HWND>(wParam);
        // Windows may make a helper window for text input first.
        WCHAR name[8] = {};
        GetClassNameW(window, name, 8);
        const bool helper = name[0] == 'I' && name[1] == 'M' && name[2] == 'E' && name[3] == 0;
        if (!helper) {
            CWnd* object = std::exchange(creation->m_pending, nullptr);
            try {
                if (object->Attach(window)) AfxWindowAccess::subclass(*object);
            } catch (...) {
                AfxKeepException();
                return 1;  // refuses the window
            }
        }
    }
    // Past the hooks of the creations around this one, which are this same function.
    while (creation->m_outer) creation = creation->m_outer;
    return CallNextHookEx(creation->m_hook, code, wParam, lParam);
}

void AfxKeepException() {
    if (!AfxGetWindowState().exception) AfxGetWindowState().exception = std::current_exception();
}

void AfxDropException() {
    AfxGetWindowState().exception = nullptr;
}

void AfxRethrowException() {
    if (std::exception_ptr kept = std::exchange(AfxGetWindowState().exception, nullptr))
        std::rethrow_exception(kept);
}

void AfxWindowAccess::subclass(CWnd& window) {
    window.PreSubclassWindow();
    window.m_pfnSuper = reinterpret_cast<WNDPROC>(
        SetWindowLongPtrW(window.m_hWnd, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(AfxWndProc)));
}

void AfxWindowAccess::unsubclass(CWnd& window) {
    if (!window.m_pfnSuper) return;
    const auto current = reinterpret_cast<WNDPROC>(GetWindowLongPtrW(window.m_hWnd, GWLP_WNDPROC));
    if (current == AfxWndProc)
        SetWindowLongPtrW(window.m_hWnd, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(window.m_pfnSuper));
    else if (::IsWindow(window.m_hWnd))
        AfxGetWindowState().orphans[window.m_hWnd] = window.m_pfnSuper;
    window.m_pfnSuper = nullptr;
}

void AfxWindowAccess::finish(CWnd& window) {
    unsubclass(window);
    window.Detach();
    try {
        window.PostNcDestroy();
    } catch (...) {
        AfxKeepException();
    }
}
