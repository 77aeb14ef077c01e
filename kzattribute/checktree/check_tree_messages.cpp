// What the check tree does about window messages.
#include <limits>

#include "checktree/check_tree.h"
#include "checktree/check_values.h"

using namespace checktree;

BEGIN_MESSAGE_MAP(ACheckTree, CTreeCtrl)
ON_WM_LBUTTONDOWN()
ON_WM_LBUTTONDBLCLK()
ON_WM_ENABLE()
END_MESSAGE_MAP()

namespace {

// Those without a name in every set of headers.
constexpr UINT kInsertItemA = TV_FIRST;
constexpr UINT kSetItemA = TV_FIRST + 13;
constexpr UINT kEditLabelA = TV_FIRST + 14;
constexpr UINT kSortChildrenByFunction = TV_FIRST + 21;
constexpr UINT kEndEditLabelNow = TV_FIRST + 22;
constexpr UINT kEditLabelW = TV_FIRST + 65;
constexpr UINT kPrintClient = 0x318;

// The narrow record differs in the text alone.
bool changesRecord(LPARAM lParam) {
    const auto* record = reinterpret_cast<const TVITEMW*>(lParam);
    return (record->mask & (TVIF_TEXT | TVIF_PARAM)) != 0 ||
           ((record->mask & TVIF_STATE) != 0 && (record->stateMask & kStateMask) != 0);
}

// True for a message that may change what the index knows of: which items there are, in which
// order, with which texts, data and checks. A label is edited in a child window, whose end is a
// command or its destruction.
bool changesItems(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case TVM_SETITEMW:
        case kSetItemA:
            return changesRecord(lParam);
        case TVM_EXPAND:
            return (wParam & TVE_COLLAPSERESET) != 0;  // deletes what it hides
        case TVM_INSERTITEMW:
        case kInsertItemA:
        case TVM_DELETEITEM:
        case TVM_SORTCHILDREN:
        case kSortChildrenByFunction:
        case kEditLabelA:
        case kEditLabelW:
        case kEndEditLabelNow:
        case WM_COMMAND:
        case WM_PARENTNOTIFY:
            return true;
        default:
            return false;
    }
}

}  // namespace

void ACheckTree::PreSubclassWindow() {
    m_watched = m_hWnd;
    m_areGroupsKnown = false;
    m_index.attach(m_hWnd);
}

HWND ACheckTree::Detach() {
    drawPictures(std::numeric_limits<int>::max());
    m_watched = nullptr;
    return CTreeCtrl::Detach();
}

HWND ACheckTree::UnsubclassWindow() {
    drawPictures(std::numeric_limits<int>::max());
    m_watched = nullptr;
    return CTreeCtrl::UnsubclassWindow();
}

// The index may answer only for a tree whose every change it is told of; for any other one it learns the
// items anew for each answer.
TreeIndex& ACheckTree::index() const {
    if (!isWatched()) m_index.attach(m_hWnd);
    return m_index;
}

// Items may also be changed by messages from elsewhere; the index then starts anew.
LRESULT ACheckTree::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    const bool own = m_ownChange;
    m_ownChange = false;  // what the message leads to is not the check tree's own
    if (!own && changesItems(message, wParam, lParam)) m_areGroupsKnown = false;
    if (message == WM_NCDESTROY) m_watched = nullptr;
    if (message == WM_PAINT || message == kPrintClient) drawVisiblePictures();
    if (message == TVM_GETIMAGELIST && wParam == TVSIL_NORMAL) drawPictures(std::numeric_limits<int>::max());
    const LRESULT result = CTreeCtrl::WindowProc(message, wParam, lParam);
    if (!own && changesItems(message, wParam, lParam)) m_index.forget();
    return result;
}

// True, with the check toggled, when the point is on a check box: a partly checked item is unchecked.
bool ACheckTree::clickCheckBox(CPoint point) {
    UINT part = 0;
    HTREEITEM item = HitTest(point, &part);
    if (part != TVHT_ONITEMSTATEICON) return false;
    setCheck(item, getCheck(item) == kUnchecked);
    notifyCheck(nullptr, 0);
    return true;
}

// A click on a box neither selects the item nor expands it. Of a double click, each of the
// two messages toggles.
void ACheckTree::OnLButtonDown(UINT, CPoint point) {
    if (!clickCheckBox(point)) Default();
}

void ACheckTree::OnLButtonDblClk(UINT, CPoint point) {
    if (!clickCheckBox(point)) Default();
}

// Switches every picture and box to its other form. Both pictures are stepped from their own values, but the
// first one's decides. The values are those that the tree reports, so a group's callback picture becomes the
// one that its owner answered.
void ACheckTree::OnEnable(BOOL enable) {
    Default();
    forEachItem(m_hWnd, [this, enable](HTREEITEM item) {
        int image = 0;
        int selectedImage = 0;
        GetItemImage(item, image, selectedImage);
        if (enable && image % 2 == 1) setImages(item, image - 1, selectedImage - 1);
        if (!enable && image % 2 == 0) setImages(item, image + 1, selectedImage + 1);
        setCheckImage(item, getCheck(item));
    });
    Invalidate();  // a disabled tree does not draw itself anew everywhere
}
