#include "viewfilter/view_filter_dialog.h"

#include "res/resource.h"
#include "viewfilter/view_filter_tool.h"

namespace {

constexpr int kLeastWidth = 360, kLeastHeight = 150;  // of the whole window, in pixels

constexpr int kButtons[] = {IDOK, IDCANCEL, IDC_SHOW_NO_COLORS, IDC_SHOW_ALL_COLORS};

CRect windowRect(const CWnd& window) {
    CRect rect;
    window.GetWindowRect(&rect);
    return rect;
}

}  // namespace

BEGIN_MESSAGE_MAP(AViewFilterDialog, CDialog)
ON_BN_CLICKED(IDC_SHOW_ALL_COLORS, onShowAll)
ON_BN_CLICKED(IDC_SHOW_NO_COLORS, onShowNone)
ON_WM_SIZE()
ON_WM_GETMINMAXINFO()
END_MESSAGE_MAP()

AViewFilterDialog::AViewFilterDialog(AViewFilterTool* tool, const AViewAttrFilter* filter, CWnd* parent)
    : CDialog(IDD_VIEW_FILTER, parent), m_tool(tool) {
    if (!parent) m_prefs = std::make_unique<AViewFilterPrefs>(this);
    addColorClasses();
    addDocumentColors();
    loadFilter(filter);
}

// The filter goes before the preferences, which store what the dialog still holds.
AViewFilterDialog::~AViewFilterDialog() {
    m_savedFilter.reset();
    m_prefs.reset();
}

void AViewFilterDialog::DoDataExchange(CDataExchange* exchange) {
    CDialog::DoDataExchange(exchange);
    DDX_Control(exchange, IDC_CHECK_TREE, m_tree);
    DDX_Control(exchange, IDC_SHOW_NO_COLORS, m_showNoneButton);
    DDX_Control(exchange, IDC_SHOW_ALL_COLORS, m_showAllButton);
}

BOOL AViewFilterDialog::OnInitDialog() {
    CDialog::OnInitDialog();
    const auto font = static_cast<WPARAM>(SendMessage(WM_GETFONT));
    m_showNoneButton.SendMessage(WM_SETFONT, font, TRUE);
    m_showAllButton.SendMessage(WM_SETFONT, font, TRUE);
    fillTree(0);
    m_tree.EnableWindow(!allTypes);
    if (allTypes)
        m_tree.setAllChecks(1);
    else
        m_tree.setChecks(checkedIds, 1, &m_uncheckedIds);

    // The fields become what the window is before it moves: the relayout goes by the difference.
    const CRect rect = windowRect(*this);
    const int width = m_width == -1 ? rect.Width() : m_width;
    const int height = m_height == -1 ? rect.Height() : m_height;
    m_width = rect.Width();
    m_height = rect.Height();
    MoveWindow(m_left, m_top, width, height, TRUE);
    return TRUE;
}

BOOL AViewFilterDialog::OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* result) {
    auto* header = reinterpret_cast<NMHDR*>(lParam);
    if (header->code != TVN_GETDISPINFOW && header->code != TVN_SETDISPINFOW)
        return CDialog::OnNotify(wParam, lParam, result);
    getItemDispInfo(header, &reinterpret_cast<NMTVDISPINFOW*>(header)->item, result);
    return TRUE;
}

// The buttons keep their distance from the lower right corner; the tree takes what is left. While the window
// is being made there is no tree, and nothing to move.
void AViewFilterDialog::OnSize(UINT how, int width, int height) {
    if (!m_tree.GetSafeHwnd()) return CDialog::OnSize(how, width, height);
    const CRect rect = windowRect(*this);
    const int dx = rect.Width() - m_width;
    const int dy = rect.Height() - m_height;
    CDialog::OnSize(how, width, height);
    if (dx == 0 && dy == 0) return;
    for (const int id : kButtons) moveButton(id, dx, dy);
    CRect tree = windowRect(m_tree);
    ScreenToClient(&tree);
    m_tree.MoveWindow(tree.left, tree.top, tree.Width() + dx, tree.Height() + dy);
    for (const int id : kButtons) GetDlgItem(id)->Invalidate();
    m_width = rect.Width();
    m_height = rect.Height();
}

void AViewFilterDialog::moveButton(int id, int dx, int dy) {
    CWnd& button = *GetDlgItem(id);
    CRect rect = windowRect(button);
    ScreenToClient(&rect);
    button.MoveWindow(rect.left + dx, rect.top + dy, rect.Width(), rect.Height());
}

void AViewFilterDialog::OnGetMinMaxInfo(MINMAXINFO* info) {
    CDialog::OnGetMinMaxInfo(info);
    info->ptMinTrackSize.x = kLeastWidth;
    info->ptMinTrackSize.y = kLeastHeight;
}

// Conditions only where something is unticked: a filter without any shows everything, also what the document
// comes to be painted with later.
void AViewFilterDialog::OnOK() {
    UpdateData(TRUE);
    AObArray show;
    AObArray hide;
    if (!m_tree.isAllChecked()) {
        getCheckedConditions(show, 1);
        getUncheckedConditions(hide, 0);
    }
    m_tool->applyFilter(show, hide, 0, 0);
    m_tool->redrawView(0, nullptr);
    keepPosition();
    CDialog::OnOK();
}

// The view gets a copy even when nothing was changed, and loses a filter of another class.
void AViewFilterDialog::OnCancel() {
    m_tool->replaceFilter(m_savedFilter ? m_savedFilter->clone() : nullptr);
    m_tool->redrawView(0, nullptr);
    keepPosition();
    CDialog::OnCancel();
}

void AViewFilterDialog::keepPosition() {
    const CRect rect = windowRect(*this);
    m_left = rect.left;
    m_top = rect.top;
}
