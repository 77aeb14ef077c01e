// Carrying values between a dialog's controls and its members.
//
//     void Options::DoDataExchange(CDataExchange* exchange) {
//         CDialog::DoDataExchange(exchange);
//         DDX_Control(exchange, 1059, m_tree);
//         DDX_Check(exchange, 1061, m_showAll);
//     }
//
// UpdateData(TRUE) reads the controls into the members, UpdateData(FALSE) the other way round; a dialog does
// the latter when it opens.
#pragma once

#include "platform/afx/wnd.h"

class CDataExchange {
public:
    CDataExchange(CWnd* dialog, BOOL saveAndValidate)
        : m_bSaveAndValidate(saveAndValidate), m_pDlgWnd(dialog) {}

    BOOL m_bSaveAndValidate;  // from the controls into the members
    CWnd* m_pDlgWnd;

    // The dialog's control. Raises CInvalidArgException when there is none of that id.
    HWND PrepareCtrl(int id) const;
};

// Makes the object the control's, at the first call; later ones do nothing.
void DDX_Control(CDataExchange* exchange, int id, CWnd& control);
// A check box: BST_UNCHECKED, BST_CHECKED or BST_INDETERMINATE; other values show as unchecked.
void DDX_Check(CDataExchange* exchange, int id, int& value);
