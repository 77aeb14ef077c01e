// Push buttons and check boxes.
#pragma once

#include "platform/afx/wnd.h"

class CButton : public CWnd {
public:
    ~CButton() override { DestroyWindow(); }

    BOOL Create(LPCWSTR caption, DWORD style, const RECT& rect, CWnd* parent, UINT id) {
        return CWnd::Create(_T("BUTTON"), caption, style, rect, parent, id);
    }
    using CWnd::Create;

    int GetCheck() const { return static_cast<int>(SendMessage(BM_GETCHECK)); }
    void SetCheck(int check) { SendMessage(BM_SETCHECK, static_cast<WPARAM>(check)); }
    // As a user's click: the parent hears of it.
    void Click() { SendMessage(BM_CLICK); }
};
