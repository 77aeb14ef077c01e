#include "tests/platform_ui/dialog_support.h"

std::string placeIn(HWND frame, HWND window) {
    RECT rect = {};
    GetWindowRect(window, &rect);
    MapWindowPoints(nullptr, frame, reinterpret_cast<POINT*>(&rect), 2);
    return std::to_string(rect.left) + "," + std::to_string(rect.top) + " " +
           std::to_string(rect.right - rect.left) + "x" + std::to_string(rect.bottom - rect.top);
}

std::string placeOf(HWND dialog, int id) {
    return std::to_string(id) + " " + placeIn(dialog, GetDlgItem(dialog, id));
}

BEGIN_MESSAGE_MAP(ToggleTree, CTreeCtrl)
ON_WM_LBUTTONDOWN()
END_MESSAGE_MAP()

HTREEITEM ToggleTree::add(LPCWSTR text, HTREEITEM parent) {
    const HTREEITEM item = InsertItem(text, parent);
    SetItemState(item, INDEXTOSTATEIMAGEMASK(1), TVIS_STATEIMAGEMASK);
    return item;
}

void ToggleTree::showBoxes() {
    if (m_boxes.GetSafeHandle()) {
        SetImageList(&m_boxes, TVSIL_STATE);
        return;
    }
    CClientDC screen(nullptr);
    CBitmap strip;
    ASSERT_TRUE(strip.CreateCompatibleBitmap(&screen, 7 * 16, 16));
    ASSERT_TRUE(m_boxes.Create(16, 16, ILC_COLOR24, 7, 1));
    ASSERT_EQ(m_boxes.Add(&strip, nullptr), 0);
    SetImageList(&m_boxes, TVSIL_STATE);
}

void ToggleTree::OnLButtonDown(UINT flags, CPoint point) {
    UINT part = 0;
    const HTREEITEM item = HitTest(point, &part);
    if (!item || part != static_cast<UINT>(TVHT_ONITEMSTATEICON)) {
        CTreeCtrl::OnLButtonDown(flags, point);
        return;
    }
    const bool checked = GetItemState(item, TVIS_STATEIMAGEMASK) == UINT{INDEXTOSTATEIMAGEMASK(3)};
    SetItemState(item, checked ? INDEXTOSTATEIMAGEMASK(1) : INDEXTOSTATEIMAGEMASK(3), TVIS_STATEIMAGEMASK);
}

BEGIN_MESSAGE_MAP(TreeDialog, CDialog)
ON_WM_GETMINMAXINFO()
ON_WM_SIZE()
ON_BN_CLICKED(IDC_SHOW_ALL, showAll)
ON_BN_CLICKED(IDC_SHOW_NONE, showNone)
END_MESSAGE_MAP()

void TreeDialog::DoDataExchange(CDataExchange* exchange) {
    CDialog::DoDataExchange(exchange);
    DDX_Control(exchange, IDC_TREE, tree);
}

BOOL TreeDialog::OnInitDialog() {
    CDialog::OnInitDialog();
    seen.push_back("init");
    tree.showBoxes();
    const HTREEITEM fill = tree.add(_T("Fill"));
    tree.add(_T("red"), fill);
    tree.add(_T("blue"), fill);
    tree.add(_T("Stroke"));
    return TRUE;
}

void TreeDialog::OnGetMinMaxInfo(MINMAXINFO* limits) {
    CDialog::OnGetMinMaxInfo(limits);
    limits->ptMinTrackSize = {360, 150};
}

void TreeDialog::OnSize(UINT type, int width, int height) {
    CDialog::OnSize(type, width, height);
    if (tree.m_hWnd) seen.push_back("size " + std::to_string(width) + "x" + std::to_string(height));
}

void TreeDialog::showAll() {
    seen.push_back("show all");
    if (onShowAll) onShowAll();
}

void TreeDialog::OnOK() {
    seen.push_back("ok");
    CDialog::OnOK();
}

void TreeDialog::OnCancel() {
    seen.push_back("cancel");
    CDialog::OnCancel();
}
