#include "platform/afx/data_exchange.h"

#include <string>

#include "platform/afx/exceptions.h"

void AfxThrowInvalidArgException(const char* reason) {
    throw CInvalidArgException(reason);
}

HWND CDataExchange::PrepareCtrl(int id) const {
    const HWND control = ::GetDlgItem(m_pDlgWnd->m_hWnd, id);
    if (!control) AfxThrowInvalidArgException(("the dialog has no control " + std::to_string(id)).c_str());
    return control;
}

void DDX_Control(CDataExchange* exchange, int id, CWnd& control) {
    if (control.m_hWnd) return;
    control.SubclassWindow(exchange->PrepareCtrl(id));
}

void DDX_Check(CDataExchange* exchange, int id, int& value) {
    const HWND control = exchange->PrepareCtrl(id);
    if (exchange->m_bSaveAndValidate) {
        value = static_cast<int>(::SendMessageW(control, BM_GETCHECK, 0, 0));
        return;
    }
    const bool known = value >= 0 && value <= static_cast<int>(BST_INDETERMINATE);
    ::SendMessageW(control, BM_SETCHECK, static_cast<WPARAM>(known ? value : 0), 0);
}

BOOL CWnd::UpdateData(BOOL saveAndValidate) {
    CDataExchange exchange(this, saveAndValidate);
    DoDataExchange(&exchange);
    return TRUE;
}
