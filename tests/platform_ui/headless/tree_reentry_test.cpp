// A parent may do anything while the tree tells it something. Whatever it does to the tree, every action
// ends, and nothing that is gone is touched (the sanitizers watch).
#include <gtest/gtest.h>

#include <utility>

#include "platform/driver/input.h"
#include "platform/winapi.h"
#include "tests/platform_ui/support.h"

namespace {

HWND tree;
std::vector<HTREEITEM> items;
UINT awaited;
void (*deed)();
int done;

LRESULT tell(UINT message, WPARAM wParam, HTREEITEM item) {
    return SendMessageW(tree, message, wParam, reinterpret_cast<LPARAM>(item));
}

bool parent(HWND, UINT message, WPARAM, LPARAM lParam, LRESULT&) {
    if (message != WM_NOTIFY || reinterpret_cast<NMHDR*>(lParam)->code != awaited || !deed) return false;
    // Once only: the deed causes notices itself.
    auto act = std::exchange(deed, nullptr);
    act();
    ++done;
    return false;
}

HTREEITEM insert(HTREEITEM below) {
    TVINSERTSTRUCTW request = {};
    request.hParent = below;
    request.hInsertAfter = TVI_LAST;
    request.item.mask = TVIF_TEXT | TVIF_IMAGE | TVIF_SELECTEDIMAGE | TVIF_CHILDREN;
    request.item.pszText = const_cast<LPWSTR>(_T("item"));
    request.item.iImage = request.item.iSelectedImage = I_IMAGECALLBACK;
    request.item.cChildren = I_CHILDRENCALLBACK;
    return reinterpret_cast<HTREEITEM>(
        SendMessageW(tree, TVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&request)));
}

void (*const deeds[])() = {
    [] { tell(TVM_DELETEITEM, 0, items[0]); },
    [] { tell(TVM_DELETEITEM, 0, items[1]); },
    [] { tell(TVM_DELETEITEM, 0, TVI_ROOT); },
    [] { tell(TVM_SELECTITEM, TVGN_CARET, items[3]); },
    [] { tell(TVM_EXPAND, TVE_COLLAPSE | TVE_COLLAPSERESET, items[0]); },
    [] { tell(TVM_EXPAND, TVE_EXPAND, items[0]); },
    [] { insert(items[0]); },
    [] { DestroyWindow(tree); },
    [] { DestroyWindow(GetParent(tree)); },
};

void (*const actions[])() = {
    [] { tell(TVM_EXPAND, TVE_EXPAND, items[0]); },
    [] { tell(TVM_EXPAND, TVE_TOGGLE, items[0]); },
    [] { tell(TVM_SELECTITEM, TVGN_CARET, items[1]); },
    [] { tell(TVM_SELECTITEM, TVGN_FIRSTVISIBLE, items[2]); },
    [] { tell(TVM_ENSUREVISIBLE, 0, items[2]); },
    [] { tell(TVM_DELETEITEM, 0, items[0]); },
    [] { tell(TVM_DELETEITEM, 0, TVI_ROOT); },
    [] { SetFocus(tree); },
    [] {
        SetFocus(tree);
        SetFocus(GetParent(tree));
    },
    [] { DestroyWindow(tree); },
    [] { driver::click(tree, items[0], TVHT_ONITEMBUTTON); },
    [] { driver::doubleClick(tree, items[0], TVHT_ONITEMLABEL); },
    [] { driver::pressKey(tree, VK_MULTIPLY); },
    [] { driver::pressKey(tree, VK_RIGHT); },
    [] { driver::pressKey(tree, VK_END); },
};

const UINT notices[] = {
    TVN_ITEMEXPANDINGW, TVN_ITEMEXPANDEDW, TVN_SELCHANGINGW, TVN_SELCHANGEDW,
    TVN_DELETEITEMW,    TVN_GETDISPINFOW,  TVN_KEYDOWN,      NM_CLICK,
    NM_DBLCLK,          NM_SETFOCUS,       NM_KILLFOCUS,
};

}  // namespace

TEST(TreeReentry, SurvivesAParentThatInterferesWithEveryNotice) {
    for (UINT notice : notices) {
        done = 0;
        for (auto interfere : deeds) {
            for (auto act : actions) {
                for (bool expanded : {false, true}) {
                    TestWindow frame(parent);
                    tree = CreateWindowExW(0, WC_TREEVIEWW, nullptr,
                                           WS_CHILD | WS_VISIBLE | TVS_HASBUTTONS | TVS_LINESATROOT, 0, 0,
                                           200, 40, frame, control_id(7), nullptr, nullptr);
                    deed = nullptr;
                    HTREEITEM group = insert(nullptr);
                    HTREEITEM inner = insert(group);
                    items = {group, inner, insert(inner), insert(nullptr)};
                    TVITEMW record = {};
                    record.mask = TVIF_HANDLE | TVIF_CHILDREN;
                    record.cChildren = 1;
                    for (HTREEITEM item : {group, inner}) {
                        record.hItem = item;
                        SendMessageW(tree, TVM_SETITEMW, 0, reinterpret_cast<LPARAM>(&record));
                    }
                    if (expanded) tell(TVM_SELECTITEM, TVGN_CARET, items[2]);
                    awaited = notice;
                    deed = interfere;
                    act();
                    driver::settle();
                    // What is left still works.
                    deed = nullptr;
                    LRESULT rows = 0;
                    for (LRESULT item = tell(TVM_GETNEXTITEM, TVGN_ROOT, nullptr); item; ++rows)
                        item = SendMessageW(tree, TVM_GETNEXTITEM, TVGN_NEXTVISIBLE, item);
                    ASSERT_LE(rows, tell(TVM_GETCOUNT, 0, nullptr));
                }
            }
        }
        EXPECT_GT(done, 0) << "no action causes the notice " << static_cast<int>(notice);
    }
}
