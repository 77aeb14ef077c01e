#include <memory>
#include <stdexcept>

#include "platform/afx/button.h"
#include "platform/afx/creation.h"
#include "platform/afx/tree_ctrl.h"
#include "platform/driver/input.h"
#include "tests/platform_ui/support.h"

namespace {

const CRect area(0, 0, 200, 100);
constexpr UINT message_that_throws = WM_APP + 1;
constexpr UINT message_that_answers = WM_APP + 2;

// A second base: handlers may come from one.
class Counting {
public:
    void onCounted() { ++counted; }
    int counted = 0;
};

class Panel : public CWnd, public Counting {
public:
    ~Panel() override { DestroyWindow(); }
    Strings seen;
    bool refuse = false;

    virtual void onApply() { seen.push_back("apply"); }

protected:
    int OnCreate(CREATESTRUCTW* create) {
        seen.push_back("create");
        return refuse ? -1 : CWnd::OnCreate(create);
    }
    void OnSize(UINT type, int width, int height) {
        CWnd::OnSize(type, width, height);
        seen.push_back("size " + std::to_string(width) + "x" + std::to_string(height));
    }
    void OnEnable(BOOL enable) { seen.push_back(enable ? "enabled" : "disabled"); }
    void OnLButtonDown(UINT, CPoint point) {
        seen.push_back("down " + std::to_string(point.x) + "," + std::to_string(point.y));
    }
    void OnDestroy() { seen.push_back("destroyed"); }
    void PostNcDestroy() override { seen.push_back("gone"); }
    LRESULT onThrow(WPARAM, LPARAM) { throw std::runtime_error("left a handler"); }
    LRESULT onAnswer(WPARAM wParam, LPARAM lParam) { return static_cast<LRESULT>(wParam) + lParam; }
    void onSelecting(NMHDR*, LRESULT* result) {
        seen.push_back("selecting");
        *result = 1;
    }

    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(Panel, CWnd)
ON_WM_CREATE()
ON_WM_SIZE()
ON_WM_ENABLE()
ON_WM_LBUTTONDOWN()
ON_WM_DESTROY()
ON_MESSAGE(message_that_throws, onThrow)
ON_MESSAGE(message_that_answers, onAnswer)
ON_BN_CLICKED(1, onApply)
ON_BN_CLICKED(2, onCounted)
ON_NOTIFY(TVN_SELCHANGINGW, 1059, onSelecting)
END_MESSAGE_MAP()

// Handles one message itself and leaves the others to its base.
class SpecialPanel : public Panel {
public:
    ~SpecialPanel() override { DestroyWindow(); }
    void onApply() override { seen.push_back("special apply"); }

protected:
    void OnEnable(BOOL enable) {
        Panel::OnEnable(enable);
        seen.push_back("special");
    }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(SpecialPanel, Panel)
ON_WM_ENABLE()
END_MESSAGE_MAP()

template <class Class>
std::unique_ptr<Class> make_panel() {
    auto panel = std::make_unique<Class>();
    EXPECT_TRUE(panel->Create(nullptr, _T("Panel"), WS_POPUP, area, nullptr, 0));
    return panel;
}

// Keeps to itself what it is told to swallow.
class SilentTree : public CTreeCtrl {
public:
    ~SilentTree() override { DestroyWindow(); }
    int clicks = 0;
    bool swallow = true;

protected:
    void OnLButtonDown(UINT flags, CPoint point) {
        ++clicks;
        UINT part = 0;
        EXPECT_NE(HitTest(point, &part), nullptr);
        EXPECT_EQ(part, UINT{TVHT_ONITEMLABEL});
        if (!swallow) CTreeCtrl::OnLButtonDown(flags, point);
    }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(SilentTree, CTreeCtrl)
ON_WM_LBUTTONDOWN()
END_MESSAGE_MAP()

}  // namespace

TEST(Framework, AnObjectSeesItsWindowFromTheFirstMessageToTheLast) {
    auto panel = make_panel<Panel>();
    EXPECT_EQ(panel->seen, (Strings{"create", "size 200x100"}));
    panel->seen.clear();
    panel->DestroyWindow();
    EXPECT_EQ(panel->seen, (Strings{"destroyed", "gone"}));
    EXPECT_EQ(panel->m_hWnd, nullptr);
}

TEST(Framework, ARefusedCreationLeavesTheObjectWithoutWindow) {
    Panel panel;
    panel.refuse = true;
    EXPECT_FALSE(panel.Create(nullptr, nullptr, WS_POPUP, area, nullptr, 0));
    EXPECT_EQ(panel.m_hWnd, nullptr);
    panel.refuse = false;
    EXPECT_TRUE(panel.Create(nullptr, nullptr, WS_POPUP, area, nullptr, 0));
}

TEST(Framework, HandlersGetTheirMessagesUnpacked) {
    auto panel = make_panel<Panel>();
    panel->seen.clear();
    panel->SendMessage(WM_LBUTTONDOWN, 0, MAKELPARAM(-3, 40));
    panel->EnableWindow(FALSE);
    EXPECT_EQ(panel->seen, (Strings{"down -3,40", "disabled"}));
    EXPECT_EQ(panel->SendMessage(message_that_answers, 4, 5), 9);
}

TEST(Framework, ADerivedMapComesFirstAndFallsBackToItsBase) {
    auto panel = make_panel<SpecialPanel>();
    panel->seen.clear();
    panel->EnableWindow(FALSE);
    panel->SendMessage(WM_LBUTTONDOWN, 0, MAKELPARAM(1, 2));
    EXPECT_EQ(panel->seen, (Strings{"disabled", "special", "down 1,2"}));
}

TEST(Framework, CommandsReachVirtualHandlersAndThoseOfASecondBase) {
    auto panel = make_panel<SpecialPanel>();
    CButton apply;
    CButton count;
    ASSERT_TRUE(apply.Create(_T("Apply"), WS_CHILD | WS_VISIBLE, CRect(0, 0, 50, 20), panel.get(), 1));
    ASSERT_TRUE(count.Create(_T("Count"), WS_CHILD | WS_VISIBLE, CRect(0, 30, 50, 50), panel.get(), 2));
    panel->seen.clear();
    apply.Click();
    count.Click();
    driver::settle();
    EXPECT_EQ(panel->seen, Strings{"special apply"});
    EXPECT_EQ(panel->counted, 1);
}

TEST(Framework, AnExceptionDoesNotCrossTheMessage) {
    auto panel = make_panel<Panel>();
    EXPECT_EQ(panel->SendMessage(message_that_throws), 0);
    EXPECT_THROW(AfxRethrowException(), std::runtime_error);
    EXPECT_NO_THROW(AfxRethrowException());
}

TEST(Framework, AWindowHasOneObjectAndForeignOnesATemporary) {
    auto panel = make_panel<Panel>();
    EXPECT_EQ(CWnd::FromHandle(*panel), panel.get());
    TestWindow foreign;
    EXPECT_EQ(CWnd::FromHandlePermanent(foreign), nullptr);
    CWnd* temporary = CWnd::FromHandle(foreign);
    ASSERT_NE(temporary, nullptr);
    EXPECT_EQ(temporary->m_hWnd, foreign);
    EXPECT_EQ(CWnd::FromHandle(foreign), temporary);
    EXPECT_EQ(CWnd::FromHandle(nullptr), nullptr);
    Panel second;
    EXPECT_FALSE(second.Attach(*panel));
}

TEST(Framework, ASubclassedControlPassesOnWhatItDoesNotKeep) {
    TestWindow frame;
    HWND window = CreateWindowExW(0, WC_TREEVIEWW, nullptr, WS_CHILD | WS_VISIBLE | TVS_DISABLEDRAGDROP, 0, 0,
                                  200, 80, frame, control_id(1059), nullptr, nullptr);
    {
        SilentTree tree;
        ASSERT_TRUE(tree.SubclassWindow(window));
        HTREEITEM item = tree.InsertItem(_T("leaf"));
        ASSERT_TRUE(driver::click(window, item, TVHT_ONITEMLABEL));
        EXPECT_EQ(tree.GetSelectedItem(), nullptr);
        tree.swallow = false;
        ASSERT_TRUE(driver::click(window, item, TVHT_ONITEMLABEL));
        EXPECT_EQ(tree.GetSelectedItem(), item);
        EXPECT_EQ(tree.clicks, 2);
        EXPECT_EQ(tree.UnsubclassWindow(), window);
        ASSERT_TRUE(driver::click(window, item, TVHT_ONITEMLABEL));
        EXPECT_EQ(tree.clicks, 2);
    }
    EXPECT_TRUE(IsWindow(window)) << "an object without the window does not take it along";
}

TEST(Framework, AnObjectThatGoesTakesItsWindowAlong) {
    HWND window = nullptr;
    {
        auto panel = make_panel<Panel>();
        window = *panel;
    }
    EXPECT_FALSE(IsWindow(window));
}

TEST(Framework, ANoticeIsAnsweredThroughTheMap) {
    auto panel = make_panel<Panel>();
    CTreeCtrl tree;
    ASSERT_TRUE(tree.Create(WS_CHILD | WS_VISIBLE | TVS_DISABLEDRAGDROP, area, panel.get(), 1059));
    HTREEITEM item = tree.InsertItem(_T("leaf"));
    EXPECT_FALSE(tree.SelectItem(item)) << "the panel refuses";
    EXPECT_EQ(panel->seen.back(), "selecting");
}

TEST(TreeControl, AnswersAboutItsItems) {
    auto panel = make_panel<Panel>();
    CTreeCtrl tree;
    ASSERT_TRUE(tree.Create(WS_CHILD | WS_VISIBLE | TVS_HASBUTTONS | TVS_LINESATROOT, area, panel.get(), 7));
    HTREEITEM fill = tree.InsertItem(_T("Fill"));
    HTREEITEM red = tree.InsertItem(_T("red"), fill);
    HTREEITEM first = tree.InsertItem(_T("first"), fill, TVI_FIRST);
    EXPECT_EQ(tree.GetCount(), 3u);
    EXPECT_EQ(tree.GetRootItem(), fill);
    EXPECT_EQ(tree.GetChildItem(fill), first);
    EXPECT_EQ(tree.GetNextSiblingItem(first), red);
    EXPECT_EQ(tree.GetParentItem(red), fill);
    EXPECT_TRUE(tree.ItemHasChildren(fill));
    EXPECT_FALSE(tree.ItemHasChildren(red));
    EXPECT_EQ(tree.GetItemText(red), _T("red"));
    EXPECT_TRUE(tree.SetItem(red, TVIF_PARAM, nullptr, 0, 0, 0, 0, 42));
    EXPECT_EQ(tree.GetItemData(red), 42u);
    EXPECT_TRUE(tree.SetItemState(red, INDEXTOSTATEIMAGEMASK(3), TVIS_STATEIMAGEMASK));
    EXPECT_EQ(tree.GetItemState(red, TVIS_STATEIMAGEMASK), 0x3000u);
    EXPECT_TRUE(tree.SetItemImage(red, 6, 7));
    int image = 0;
    int selected = 0;
    EXPECT_TRUE(tree.GetItemImage(red, image, selected));
    EXPECT_EQ(image, 6);
    EXPECT_EQ(selected, 7);
    EXPECT_TRUE(tree.Expand(fill, TVE_EXPAND));
    RECT rect = {};
    EXPECT_TRUE(tree.GetItemRect(red, &rect, FALSE));
    EXPECT_EQ(tree.HitTest(CPoint(100, rect.top + 5)), red);
    EXPECT_TRUE(tree.DeleteAllItems());
    EXPECT_EQ(tree.GetRootItem(), nullptr);
}

TEST(TreeControl, ATextOfAnyLengthComesBackWhole) {
    auto panel = make_panel<Panel>();
    CTreeCtrl tree;
    ASSERT_TRUE(tree.Create(WS_CHILD | WS_VISIBLE, area, panel.get(), 7));
    for (std::size_t length : {0, 1, 126, 127, 128, 129, 200}) {
        const std::basic_string<WCHAR> text(length, WCHAR('x'));
        EXPECT_EQ(tree.GetItemText(tree.InsertItem(text.c_str())), text) << length;
    }
}

TEST(TreeControl, KeepsItsImageLists) {
    auto panel = make_panel<Panel>();
    CImageList pictures;
    ASSERT_TRUE(pictures.Create(16, 16, ILC_COLOR24, 10, 10));
    CTreeCtrl tree;
    ASSERT_TRUE(tree.Create(WS_CHILD | WS_VISIBLE, area, panel.get(), 7));
    EXPECT_EQ(tree.SetImageList(&pictures, TVSIL_STATE), nullptr);
    EXPECT_EQ(tree.GetImageList(TVSIL_STATE), pictures.m_hImageList);
    EXPECT_EQ(tree.SetImageList(nullptr, TVSIL_STATE), pictures.m_hImageList);
}
