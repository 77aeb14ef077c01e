#include "platform/afx/property_sheet.h"

#include <algorithm>

#include "platform/afx/creation.h"
#include "platform/afx/exceptions.h"
#include "platform/afx/extension_module.h"
#include "platform/afx/modal_loop.h"
#include "platform/afx/window_state.h"

namespace {

// In the middle of the window that it belongs to; without one it stays where the system puts it.
void centreOnOwner(HWND sheet) {
    const HWND owner = ::GetWindow(sheet, GW_OWNER);
    if (!owner || !::IsWindowVisible(owner)) return;
    RECT around, rect;
    ::GetWindowRect(owner, &around);
    ::GetWindowRect(sheet, &rect);
    const LONG x = around.left + (around.right - around.left - (rect.right - rect.left)) / 2;
    const LONG y = around.top + (around.bottom - around.top - (rect.bottom - rect.top)) / 2;
    // The caption stays within reach where the owner is smaller.
    ::SetWindowPos(sheet, nullptr, static_cast<int>(std::max(x, around.left)),
                   static_cast<int>(std::max(y, around.top)), 0, 0,
                   SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

}  // namespace

BEGIN_MESSAGE_MAP(CPropertySheet, CWnd)
ON_MESSAGE(WM_INITDIALOG, HandleInitDialog)
END_MESSAGE_MAP()

CPropertySheet::CPropertySheet(LPCWSTR caption, CWnd* parent, UINT firstPage)
    : m_pParentWnd(parent), m_strCaption(caption) {
    m_psh.dwSize = sizeof(m_psh);
    m_psh.dwFlags = PSH_PROPSHEETPAGE;
    m_psh.nStartPage = firstPage;
}

CPropertySheet::CPropertySheet(UINT captionId, CWnd* parent, UINT firstPage)
    : CPropertySheet(_T(""), parent, firstPage) {
    WCHAR caption[256];
    m_strCaption.assign(caption, static_cast<std::size_t>(AfxLoadString(captionId, caption, 256)));
}

void CPropertySheet::AddPage(CPropertyPage* page) {
    if (!page || m_hWnd) AfxThrowInvalidArgException("pages are added before the sheet opens");
    m_pages.push_back(page);
}

CPropertyPage* CPropertySheet::GetPage(int index) const {
    if (index < 0 || index >= GetPageCount()) AfxThrowInvalidArgException("the sheet has no such page");
    return m_pages[static_cast<std::size_t>(index)];
}

int CPropertySheet::GetPageIndex(const CPropertyPage* page) const {
    const auto found = std::find(m_pages.begin(), m_pages.end(), page);
    return found == m_pages.end() ? -1 : static_cast<int>(found - m_pages.begin());
}

int CPropertySheet::GetActiveIndex() const {
    if (m_hWnd) {
        // Not by the number of its tab: a page that could not be created has none.
        const auto window = reinterpret_cast<HWND>(SendMessage(PSM_GETCURRENTPAGEHWND));
        const int index = GetPageIndex(dynamic_cast<CPropertyPage*>(FromHandlePermanent(window)));
        if (index >= 0) return index;
    }
    return static_cast<int>(m_psh.nStartPage);
}

BOOL CPropertySheet::SetActivePage(int index) {
    GetPage(index);
    if (m_hWnd) return SendMessage(PSM_SETCURSEL, static_cast<WPARAM>(index)) != 0;
    m_psh.nStartPage = static_cast<UINT>(index);
    return TRUE;
}

bool CPropertySheet::create(HWND owner) {
    if (m_hWnd || m_pages.empty()) return false;
    const INITCOMMONCONTROLSEX classes = {sizeof(classes), ICC_TREEVIEW_CLASSES | ICC_TAB_CLASSES};
    if (!InitCommonControlsEx(&classes)) return false;
    m_result = -1;
    std::vector<PROPSHEETPAGEW> records;
    for (CPropertyPage* page : m_pages) {
        page->m_psp.hInstance = AfxFindResourceHandle(page->m_psp.pszTemplate, RT_DIALOG);
        if (!FindResourceW(page->m_psp.hInstance, page->m_psp.pszTemplate, RT_DIALOG)) return false;
        records.push_back(page->m_psp);
    }
    PROPSHEETHEADERW header = m_psh;
    header.dwFlags |= PSH_PROPSHEETPAGE | PSH_MODELESS;
    header.hwndParent = owner;
    header.pszCaption = m_strCaption.c_str();
    header.nPages = static_cast<UINT>(records.size());
    header.ppsp = records.data();
    AfxWindowCreation creation(*this);
    const INT_PTR made = PropertySheetW(&header);
    const bool failed = made == 0 || made == -1;
    if (failed && m_hWnd && !::IsWindow(m_hWnd)) AfxWindowAccess::finish(*this);
    AfxRethrowException();
    // A first page that cannot be made leaves a sheet without pages.
    if (failed || !ContinueModal()) {
        DestroyWindow();
        return false;
    }
    return true;
}

INT_PTR CPropertySheet::DoModal() {
    if (!AfxRunModal(*this, m_pParentWnd, [this](HWND owner) { return create(owner); })) return -1;
    return m_result == -1 ? IDCANCEL : m_result;
}

BOOL CPropertySheet::ContinueModal() {
    return m_hWnd && SendMessage(PSM_GETCURRENTPAGEHWND) != 0;
}

BOOL CPropertySheet::OnInitDialog() {
    return Default() != 0;
}

LRESULT CPropertySheet::HandleInitDialog(WPARAM, LPARAM) {
    const BOOL result = OnInitDialog();
    if (m_hWnd) centreOnOwner(m_hWnd);
    return result;
}

void CPropertySheet::rememberButton(UINT message, WPARAM wParam) {
    const int pressed = LOWORD(wParam);
    if (message == WM_CLOSE) m_result = IDCANCEL;
    if (message == WM_COMMAND && (pressed == IDOK || pressed == IDCANCEL)) m_result = pressed;
    if (message == PSM_PRESSBUTTON && pressed == PSBTN_OK) m_result = IDOK;
    if (message == PSM_PRESSBUTTON && pressed == PSBTN_CANCEL) m_result = IDCANCEL;
}

LRESULT CPropertySheet::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    rememberButton(message, wParam);
    const LRESULT result = CWnd::WindowProc(message, wParam, lParam);
    // A page that these messages should have made is made by now, or never.
    if (message == WM_INITDIALOG || message == WM_NOTIFY || message == PSM_SETCURSEL)
        for (CPropertyPage* page : m_pages) page->m_creation.reset();
    return result;
}

BOOL CPropertySheet::PreTranslateMessage(MSG* message) {
    return SendMessage(PSM_ISDIALOGMESSAGE, 0, reinterpret_cast<LPARAM>(message)) != 0;
}
