#include "select/select_by_attr_sheet.h"

#include <memory>

#include "conditions/class_tables.h"
#include "kzcore/view/view.h"
#include "kzutil/message_box.h"
#include "select/criteria.h"
#include "select/object_walk.h"
#include "select/select_by_attr_tool.h"
#include "select/select_page.h"

namespace {

// The active view's selection; null without a view.
ASelection* activeSelection() {
    const ADocView* view = ADocView::GetActiveView();
    return view ? view->m_selection : nullptr;
}

}  // namespace

BEGIN_MESSAGE_MAP(ASelectByAttrSheet, CPropertySheet)
ON_WM_CREATE()
ON_WM_SIZE()
ON_BN_CLICKED(IDC_SELECTION_ONLY, onSelectionOnly)
ON_BN_DOUBLECLICKED(IDC_SELECTION_ONLY, onSelectionOnly)
END_MESSAGE_MAP()

ASelectByAttrSheet::ASelectByAttrSheet(ASelectByAttrTool* tool, UINT captionId, CWnd* parent, UINT firstPage)
    : CPropertySheet(captionId, parent, firstPage), m_tool(tool) {
    m_psh.dwFlags &= ~DWORD{PSH_HASHELP};
    m_psh.dwFlags |= PSH_NOAPPLYNOW;
}

ASelectByAttrSheet::~ASelectByAttrSheet() {
    DestroyWindow();
    for (int i = 0; i < getSelectPageCount(); ++i) delete &getSelectPage(i);
}

ASelectPage& ASelectByAttrSheet::createPage(const AString& category) {
    auto page = std::make_unique<ASelectPage>(this, category);
    m_selectPages.Add(page.get());
    return *page.release();
}

ASelectPage& ASelectByAttrSheet::getSelectPage(int index) const {
    return *static_cast<ASelectPage*>(m_selectPages[index]);
}

ASelectPage* ASelectByAttrSheet::findPage(const AString& category) const {
    for (int i = 0; i < getSelectPageCount(); ++i) {
        if (getSelectPage(i).getTitle() == category) return &getSelectPage(i);
    }
    return nullptr;
}

// Pages of one category that differ in case end up reversed: each is moved to the front.
void ASelectByAttrSheet::orderPages() {
    for (std::size_t k = kCategories.size(); k-- > 0;) {
        for (INT_PTR i = 0; i < m_selectPages.GetSize(); ++i) {
            CObject* page = m_selectPages[i];
            if (static_cast<ASelectPage*>(page)->getTitle().CompareNoCase(kCategories[k]) != 0) continue;
            m_selectPages.RemoveAt(i);
            m_selectPages.InsertAt(0, page);
        }
    }
}

void ASelectByAttrSheet::addPages() {
    orderPages();
    for (int i = 0; i < getSelectPageCount(); ++i) {
        getSelectPage(i).sortConditions();
        AddPage(&getSelectPage(i));
    }
}

int ASelectByAttrSheet::OnCreate(CREATESTRUCTW* creation) {
    if (CPropertySheet::OnCreate(creation) == -1) return -1;
    CRect client;
    GetClientRect(&client);
    AString caption;
    caption.LoadStringW(IDS_SELECTION_ONLY);
    const CRect place(24, client.bottom - 26, 160, client.bottom - 12);
    m_selectionOnlyButton.Create(caption, WS_CHILD | WS_VISIBLE | WS_TABSTOP | BS_AUTOCHECKBOX, place, this,
                                 IDC_SELECTION_ONLY);
    return 0;
}

// Two pixels lower than where the box was created: a sheet that was ever sized shows it there, and stays that
// way.
void ASelectByAttrSheet::OnSize(UINT type, int width, int height) {
    CPropertySheet::OnSize(type, width, height);
    if (m_selectionOnlyButton.GetSafeHwnd()) m_selectionOnlyButton.MoveWindow(24, height - 24, 136, 14);
}

BOOL ASelectByAttrSheet::OnInitDialog() {
    const BOOL focus = CPropertySheet::OnInitDialog();
    m_selectionOnlyButton.SendMessage(WM_SETFONT, static_cast<WPARAM>(SendMessage(WM_GETFONT)), TRUE);
    const ASelection* selection = activeSelection();
    if (!selection || selection->getCount() == 0) m_selectionOnlyButton.EnableWindow(FALSE);
    UpdateData(FALSE);
    return focus;
}

void ASelectByAttrSheet::DoDataExchange(CDataExchange* exchange) {
    CPropertySheet::DoDataExchange(exchange);
    DDX_Check(exchange, IDC_SELECTION_ONLY, m_selectionOnly);
}

void ASelectByAttrSheet::onSelectionOnly() {
    UpdateData(TRUE);
    for (int i = 0; i < getSelectPageCount(); ++i) getSelectPage(i).fillTree(m_selectionOnly);
}

void ASelectByAttrSheet::apply() {
    UpdateData(TRUE);
    AObArray ticked;
    for (int i = 0; i < getSelectPageCount(); ++i) getSelectPage(i).getCheckedConditions(ticked, 1);
    applyConditions(ticked);
}

void ASelectByAttrSheet::applyConditions(const AObArray& ticked) {
    Criteria criteria(ticked);
    ASelection* selection = activeSelection();
    if (!selection) return;
    if (criteria.isEmpty()) {
        emptySelection(*selection);
        return;
    }
    AObList result(0, 10);
    collectMatches(criteria, result);
    replaceSelection(*selection, result);
}

void ASelectByAttrSheet::collectMatches(Criteria& criteria, AObList& result) const {
    std::vector<AObject*> found;
    for (ARoot* entry : m_tool->getCandidateObjects()) {
        auto* object = static_cast<AObject*>(entry);
        if (m_selectionOnly && !m_tool->isSelectedObject(*object)) continue;
        if (criteria.accepts(*object)) found.push_back(object);
    }
    appendOutermost(found, result);
}

void ASelectByAttrSheet::emptySelection(ASelection& selection) {
    m_tool->preChangeObject();
    selection.resetSelection(1);
    KzMessageBox(IDS_NO_MATCH, kMessageInforms);
    m_tool->postChangeObject(nullptr, TRANS_FLAG{}, static_cast<REPEAT_FLAG>(2));
}

void ASelectByAttrSheet::replaceSelection(ASelection& selection, const AObList& result) {
    m_tool->preChangeObject();
    selection.resetSelection(1);
    selection.addSelection(&result, 0, 1);
    if (result.IsEmpty()) KzMessageBox(IDS_NO_MATCH, kMessageInforms);
    selection.sortSelection(1);
    m_tool->postChangeObject(nullptr, TRANS_FLAG{}, static_cast<REPEAT_FLAG>(2));
}
