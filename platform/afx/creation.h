// Attaching an object to its window at the very start of the window's creation, so that it
// sees every message.
//
//     AfxWindowCreation creation(*this);
//     HWND window = CreateDialogParamW(…);   // the first window created from here on becomes this object's
//     if (!creation.attached()) …
//
// And the state that all modules of the process share: there is one framework library, so one window map.
#pragma once

#include "platform/afx/wnd.h"

class AfxWindowCreation {
public:
    // Raises bad_alloc when the window could not be waited for.
    explicit AfxWindowCreation(CWnd& window);
    ~AfxWindowCreation();
    AfxWindowCreation(const AfxWindowCreation&) = delete;
    AfxWindowCreation& operator=(const AfxWindowCreation&) = delete;

    bool attached() const { return m_pending == nullptr; }

private:
    static LRESULT CALLBACK Hook(int code, WPARAM wParam, LPARAM lParam);

    CWnd* m_pending;
    AfxWindowCreation* m_outer = nullptr;
    HHOOK m_hook;
};

// The window procedure of every window that has an object.
LRESULT CALLBACK AfxWndProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

// Throws the exception that left a handler, if any is kept. Called where no API function is on the way up.
void AfxRethrowException();
// Forgets it: another one is on its way already.
void AfxDropException();
// Keeps the exception being handled, unless an earlier one is kept.
void AfxKeepException();
