#include "platform/afx/dialog.h"

#include "platform/afx/creation.h"
#include "platform/afx/extension_module.h"
#include "platform/afx/modal_loop.h"
#include "platform/afx/window_state.h"

BEGIN_MESSAGE_MAP(CDialog, CWnd)
ON_COMMAND(IDOK, OnOK)
ON_COMMAND(IDCANCEL, OnCancel)
END_MESSAGE_MAP()

INT_PTR CALLBACK AfxDialogProc(HWND window, UINT message, WPARAM, LPARAM) {
    if (message != WM_INITDIALOG) return FALSE;
    auto* dialog = dynamic_cast<CDialog*>(CWnd::FromHandlePermanent(window));
    if (!dialog) return TRUE;
    try {
        return dialog->OnInitDialog();
    } catch (...) {
        AfxKeepException();
        return TRUE;
    }
}

bool CDialog::create(UINT templateId, HWND owner) {
    if (m_hWnd) return false;
    const INITCOMMONCONTROLSEX classes = {sizeof(classes), ICC_TREEVIEW_CLASSES | ICC_TAB_CLASSES};
    if (!InitCommonControlsEx(&classes)) return false;
    m_ended = false;
    m_result = -1;
    const LPCWSTR name = MAKEINTRESOURCEW(templateId);
    AfxWindowCreation creation(*this);
    const HWND window =
        CreateDialogParamW(AfxFindResourceHandle(name, RT_DIALOG), name, owner, AfxDialogProc, 0);
    // A window that was refused before its first message never sends its last one.
    if (!window && m_hWnd && !::IsWindow(m_hWnd)) AfxWindowAccess::finish(*this);
    try {
        AfxRethrowException();
    } catch (...) {
        DestroyWindow();
        AfxDropException();
        throw;
    }
    return window != nullptr;
}

BOOL CDialog::Create(UINT templateId, CWnd* parent) {
    return create(templateId, parent ? parent->m_hWnd : nullptr);
}

INT_PTR CDialog::DoModal() {
    const bool run =
        AfxRunModal(*this, m_pParentWnd, [this](HWND owner) { return create(m_templateId, owner); });
    return run ? m_result : -1;
}

void CDialog::EndDialog(int result) {
    m_ended = true;
    m_result = result;
}

BOOL CDialog::OnInitDialog() {
    return UpdateData(FALSE);
}

LRESULT CDialog::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    const LRESULT result = CWnd::WindowProc(message, wParam, lParam);
    // Who sent the notification may ask the dialog for its result.
    if (message == WM_NOTIFY && m_hWnd) SetWindowLongPtrW(m_hWnd, DWLP_MSGRESULT, result);
    return result;
}

BOOL CDialog::PreTranslateMessage(MSG* message) {
    return IsDialogMessageW(m_hWnd, message);
}

void CDialog::OnOK() {
    if (UpdateData(TRUE)) EndDialog(IDOK);
}

void CDialog::OnCancel() {
    EndDialog(IDCANCEL);
}
