// Modal loops: nesting, owners, exceptions and windows that go, on both controls.
#include <stdexcept>

#include "platform/afx/exceptions.h"
#include "platform/driver/input.h"
#include "tests/platform_ui/dialog_support.h"

namespace {

void pressOk(driver::Dialog& dialog) {
    dialog.press("OK");
}

class EndingDialog : public CDialog {
public:
    EndingDialog() : CDialog(IDD_KEYS) {}
    ~EndingDialog() override { DestroyWindow(); }
    std::function<void()> onInit;

protected:
    BOOL OnInitDialog() override {
        CDialog::OnInitDialog();
        onInit();
        return TRUE;
    }
};

}  // namespace

TEST(ModalLoops, DisableTheOwnerForAsLongAsTheyRun) {
    TestWindow frame;
    CWnd owner;
    ASSERT_TRUE(owner.Attach(frame));
    TreeDialog dialog(&owner);
    driver::Driver user({[&](driver::Dialog& open) {
        EXPECT_FALSE(owner.IsWindowEnabled());
        EXPECT_EQ(GetWindow(open.window(), GW_OWNER), owner.m_hWnd);
        open.press("OK");
    }});
    EXPECT_EQ(dialog.DoModal(), IDOK);
    EXPECT_TRUE(owner.IsWindowEnabled());
    owner.Detach();
}

TEST(ModalLoops, AnOwnerThatWasDisabledStaysSo) {
    TestWindow frame;
    CWnd owner;
    ASSERT_TRUE(owner.Attach(frame));
    owner.EnableWindow(FALSE);
    TreeDialog dialog(&owner);
    driver::Driver user({pressOk});
    EXPECT_EQ(dialog.DoModal(), IDOK);
    EXPECT_FALSE(owner.IsWindowEnabled());
    owner.Detach();
}

TEST(ModalLoops, AnInnerOneRunsBeforeTheOuterGoesOn) {
    TreeDialog outer;
    CDialog inner(IDD_KEYS);
    Strings order;
    outer.onShowAll = [&] {
        EXPECT_EQ(inner.DoModal(), IDOK);
        order.push_back("inner is over");
    };
    driver::Driver user({
        [&](driver::Dialog& open) {
            open.press("Show All");
            order.push_back("outer goes on");
            EXPECT_EQ(open.window(), outer.m_hWnd);
            EXPECT_TRUE(outer.IsWindowEnabled());
            open.press("OK");
        },
        [&](driver::Dialog& open) {
            EXPECT_EQ(open.window(), inner.m_hWnd);
            EXPECT_FALSE(outer.IsWindowEnabled());
            open.press("OK");
        },
    });
    EXPECT_EQ(outer.DoModal(), IDOK);
    EXPECT_EQ(order, (Strings{"inner is over", "outer goes on"}));
    EXPECT_TRUE(user.finished());
}

TEST(ModalLoops, WhatLeavesAHandlerLeavesTheDialogToo) {
    TreeDialog dialog;
    dialog.onShowAll = [] { throw std::runtime_error("left a handler"); };
    driver::Driver user({[](driver::Dialog& open) { open.press("Show All"); }});
    EXPECT_THROW(dialog.DoModal(), std::runtime_error);
    EXPECT_EQ(dialog.m_hWnd, nullptr);
    EXPECT_EQ(AfxGetModalWindow(), nullptr);
}

TEST(ModalLoops, WhatLeavesAnInnerDialogClosesBoth) {
    TreeDialog outer;
    TreeDialog inner;
    outer.onShowAll = [&] { inner.DoModal(); };
    inner.onShowAll = [] { throw std::runtime_error("left a handler"); };
    const auto showAll = [](driver::Dialog& open) { open.press("Show All"); };
    driver::Driver user({showAll, showAll});
    EXPECT_THROW(outer.DoModal(), std::runtime_error);
    EXPECT_EQ(inner.m_hWnd, nullptr);
    EXPECT_EQ(outer.m_hWnd, nullptr);
}

TEST(ModalLoops, WhatLeavesTheStartOfADialogLeavesNoWindow) {
    EndingDialog dialog;
    dialog.onInit = [] { throw std::runtime_error("left the start"); };
    EXPECT_THROW(dialog.DoModal(), std::runtime_error);
    EXPECT_EQ(dialog.m_hWnd, nullptr);
    dialog.onInit = [] {};
    driver::Driver user({pressOk});
    EXPECT_EQ(dialog.DoModal(), IDOK) << "it opens again";
}

TEST(ModalLoops, ADialogThatEndsAtItsStartNeverWaits) {
    EndingDialog dialog;
    dialog.onInit = [&] { dialog.EndDialog(42); };
    EXPECT_EQ(dialog.DoModal(), 42);
}

TEST(ModalLoops, ADestroyedWindowEndsThem) {
    TreeDialog dialog;
    driver::Driver user({[&](driver::Dialog& open) {
        dialog.DestroyWindow();
        EXPECT_FALSE(open.isOpen());
        EXPECT_THROW(open.press("OK"), driver::Error);
    }});
    EXPECT_EQ(dialog.DoModal(), -1);
}

TEST(ModalLoops, TheEndOfTheProgramEndsThemAllAndIsToldAgain) {
    TreeDialog dialog;
    driver::Driver user({[](driver::Dialog&) { PostQuitMessage(7); }});
    EXPECT_EQ(dialog.DoModal(), -1);
    MSG message = {};
    ASSERT_TRUE(PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE));
    EXPECT_EQ(message.message, UINT{WM_QUIT});
    EXPECT_EQ(message.wParam, 7u);
}

TEST(ModalLoops, ADialogCanBeOpenedAgain) {
    TreeDialog dialog;
    for (int i = 0; i < 3; ++i) {
        driver::Driver user({pressOk});
        EXPECT_EQ(dialog.DoModal(), IDOK);
    }
}
