#include "checkpage/check_page.h"

#include "res/resource.h"

BEGIN_MESSAGE_MAP(ACheckPage, CPropertyPage)
ON_BN_CLICKED(IDC_ALL_TYPES, onAllTypes)
ON_BN_DOUBLECLICKED(IDC_ALL_TYPES, onAllTypes)
ON_BN_CLICKED(IDC_SHOW_ALL, onShowAll)
ON_BN_DOUBLECLICKED(IDC_SHOW_ALL, onShowAll)
END_MESSAGE_MAP()

ACheckPage::ACheckPage(CWnd* owner, const AString& title)
    : CPropertyPage(IDD_CHECK_PAGE), m_owner(owner), m_title(title) {
    m_psp.pszTitle = m_title;
    m_psp.dwFlags |= PSP_USETITLE;
    m_psp.dwFlags &= ~DWORD{PSP_HASHELP};
}

void ACheckPage::DoDataExchange(CDataExchange* exchange) {
    CPropertyPage::DoDataExchange(exchange);
    DDX_Control(exchange, IDC_CHECK_TREE, m_tree);
    DDX_Check(exchange, IDC_SHOW_ALL, showAll);
    DDX_Check(exchange, IDC_ALL_TYPES, allTypes);
}

BOOL ACheckPage::OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* result) {
    auto* notice = reinterpret_cast<NMTVDISPINFOW*>(lParam);
    if (notice->hdr.code != TVN_GETDISPINFOW && notice->hdr.code != TVN_SETDISPINFOW)
        return CPropertyPage::OnNotify(wParam, lParam, result);
    getItemDispInfo(&notice->hdr, &notice->item, result);
    return TRUE;
}

void ACheckPage::onAllTypes() {
    UpdateData(TRUE);
    if (!allTypes) {
        m_tree.EnableWindow(TRUE);
        m_tree.setChecks(checkedIds, 1, nullptr);
        return;
    }
    // While the tree is enabled: a disabled one remembers nothing.
    m_tree.updateCheckedData(checkedIds);
    m_tree.EnableWindow(FALSE);
    m_tree.setAllChecks(1);
}

void ACheckPage::onShowAll() {
    UpdateData(TRUE);
    fillTree(0);
    if (!m_tree.IsWindowEnabled()) m_tree.setAllChecks(1);
}
