#include "platform/afx/property_page.h"

#include <new>

#include "platform/afx/creation.h"
#include "platform/afx/extension_module.h"

CPropertyPage::CPropertyPage(UINT templateId, UINT captionId) : CDialog(templateId) {
    m_psp.dwSize = sizeof(m_psp);
    m_psp.dwFlags = PSP_USECALLBACK;
    m_psp.pszTemplate = MAKEINTRESOURCEW(templateId);
    m_psp.pfnDlgProc = AfxDialogProc;
    m_psp.lParam = reinterpret_cast<LPARAM>(this);
    m_psp.pfnCallback = Callback;
    if (captionId == 0) return;
    WCHAR caption[256];
    m_strCaption.assign(caption, static_cast<std::size_t>(AfxLoadString(captionId, caption, 256)));
    m_psp.pszTitle = m_strCaption.c_str();
    m_psp.dwFlags |= PSP_USETITLE;
}

CPropertyPage::~CPropertyPage() {
    DestroyWindow();
}

UINT CALLBACK CPropertyPage::Callback(HWND, UINT message, PROPSHEETPAGEW* record) {
    auto* page = reinterpret_cast<CPropertyPage*>(record->lParam);
    if (message == PSPCB_CREATE) {
        page->m_shown = false;
        try {
            page->m_creation = std::make_unique<AfxWindowCreation>(*page);
        } catch (const std::bad_alloc&) {
            return FALSE;
        }
    }
    if (message == PSPCB_RELEASE) page->m_creation.reset();
    return TRUE;
}

LRESULT CPropertyPage::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_INITDIALOG) m_creation.reset();
    return CDialog::WindowProc(message, wParam, lParam);
}

BOOL CPropertyPage::OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* result) {
    if (CDialog::OnNotify(wParam, lParam, result)) return TRUE;
    const auto& header = *reinterpret_cast<const NMHDR*>(lParam);
    if (header.hwndFrom != ::GetParent(m_hWnd)) return FALSE;
    switch (header.code) {
        case PSN_SETACTIVE:
            *result = OnSetActive() ? 0 : -1;
            return TRUE;
        case PSN_KILLACTIVE:
            *result = !OnKillActive();
            return TRUE;
        case PSN_APPLY:
            *result = OnApply() ? PSNRET_NOERROR : PSNRET_INVALID_NOCHANGEPAGE;
            return TRUE;
        case PSN_RESET:
            OnReset();
            return TRUE;
        case PSN_QUERYCANCEL:
            *result = !OnQueryCancel();
            return TRUE;
        default:
            return FALSE;
    }
}

void CPropertyPage::SetModified(BOOL changed) {
    if (m_hWnd)
        ::SendMessageW(::GetParent(m_hWnd), changed ? PSM_CHANGED : PSM_UNCHANGED,
                       reinterpret_cast<WPARAM>(m_hWnd), 0);
}

BOOL CPropertyPage::OnSetActive() {
    // The members are in the controls already when the page is new.
    if (!m_shown) {
        m_shown = true;
        return TRUE;
    }
    return UpdateData(FALSE);
}

BOOL CPropertyPage::OnKillActive() {
    return UpdateData(TRUE);
}

BOOL CPropertyPage::OnApply() {
    OnOK();
    return TRUE;
}

void CPropertyPage::OnReset() {
    OnCancel();
}

void CPropertyPage::OnOK() {}
