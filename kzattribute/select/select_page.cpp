#include "select/select_page.h"

#include "select/select_by_attr_sheet.h"

ASelectPage::ASelectPage(ASelectByAttrSheet* sheet, const AString& category) : ACheckPage(sheet, category) {}

ASelectByAttrSheet& ASelectPage::sheet() const {
    return static_cast<ASelectByAttrSheet&>(*getOwner());
}

BOOL ASelectPage::OnInitDialog() {
    CDialog::OnInitDialog();
    fillTree(sheet().getSelectionOnly());
    ACheckTree& tree = *getTree();
    tree.EnableWindow(allTypes == 0);
    if (allTypes)
        tree.setAllChecks(1);
    else
        tree.setChecks(checkedIds, 1, nullptr);
    return TRUE;
}

void ASelectPage::OnOK() {
    if (sheet().GetActivePage() == this) sheet().apply();
    ACheckPage::OnOK();
}

void ASelectPage::onShowAll() {
    UpdateData(TRUE);
    fillTree(sheet().getSelectionOnly());
    if (!getTree()->IsWindowEnabled()) getTree()->setAllChecks(1);
}
