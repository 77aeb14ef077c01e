// What the check tree does about window messages.
#include "checktree/check_tree.h"
#include "checktree/check_values.h"

using namespace checktree;

BEGIN_MESSAGE_MAP(ACheckTree, CTreeCtrl)
ON_WM_LBUTTONDOWN()
ON_WM_LBUTTONDBLCLK()
ON_WM_ENABLE()
END_MESSAGE_MAP()

namespace {

// True for a message that changes what the index knows of.
bool changesItems(UINT message, LPARAM lParam) {
    if (message != TVM_SETITEMW) return message == TVM_INSERTITEMW || message == TVM_DELETEITEM;
    const auto* record = reinterpret_cast<const TVITEMW*>(lParam);
    return (record->mask & (TVIF_TEXT | TVIF_PARAM)) != 0 ||
           ((record->mask & TVIF_STATE) != 0 && (record->stateMask & kStateMask) != 0);
}

}  // namespace

// Items may also be changed by messages from elsewhere; the index then starts anew.
LRESULT ACheckTree::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    if (m_indexed != m_hWnd) {
        m_index.attach(m_hWnd);
        m_indexed = m_hWnd;
    }
    const bool own = m_ownChange;
    m_ownChange = false;  // what the message leads to is not the check tree's own
    const LRESULT result = CTreeCtrl::WindowProc(message, wParam, lParam);
    if (!own && changesItems(message, lParam)) m_index.forget();
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

// A click on a box neither selects the item nor expands it. Of a double click, each of the two messages
// toggles.
void ACheckTree::OnLButtonDown(UINT, CPoint point) {
    if (!clickCheckBox(point)) Default();
}

void ACheckTree::OnLButtonDblClk(UINT, CPoint point) {
    if (!clickCheckBox(point)) Default();
}

// Switches every picture and box to its other form. The picture's index is the one that the tree reports, so
// a group's callback picture becomes the one that its owner answered, deliberately.
void ACheckTree::OnEnable(BOOL enable) {
    Default();
    forEachItem(m_hWnd, [this, enable](HTREEITEM item) {
        int image = 0;
        int selectedImage = 0;
        GetItemImage(item, image, selectedImage);
        if (enable && image % 2 == 1) setImages(item, image - 1);
        if (!enable && image % 2 == 0) setImages(item, image + 1);
        setCheckImage(item, getCheck(item));
    });
    Invalidate();  // a disabled tree does not draw itself anew everywhere
}
