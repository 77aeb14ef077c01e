// Dialogs of templates, on both controls.
#include "platform/afx/exceptions.h"
#include "platform/driver/input.h"
#include "tests/platform_ui/dialog_support.h"

namespace {

// The key dialog: a check box that follows a member.
class KeyDialog : public CDialog {
public:
    KeyDialog() : CDialog(IDD_KEYS) {}
    ~KeyDialog() override { DestroyWindow(); }
    int box = 0;
    int missing = 0;  // the id of a control that is not there, to be exchanged

protected:
    void DoDataExchange(CDataExchange* exchange) override {
        CDialog::DoDataExchange(exchange);
        DDX_Check(exchange, 6, box);
        if (missing) DDX_Check(exchange, missing, box);
    }
};

}  // namespace

TEST(Dialogs, LieWhereTheirTemplateSays) {
    CDialog dialog;
    ASSERT_TRUE(dialog.Create(IDD_RESIZABLE));
    EXPECT_EQ(placeIn(nullptr, dialog), "0,0 353x237");
    RECT client = {};
    dialog.GetClientRect(&client);
    EXPECT_EQ(client.right, 345);
    EXPECT_EQ(client.bottom, 210);
    EXPECT_EQ(placeOf(dialog, IDC_TREE), "1059 11,11 324x158");
    EXPECT_EQ(placeOf(dialog, IDC_SHOW_ALL), "1066 11,176 75x23");
    EXPECT_EQ(placeOf(dialog, IDC_SHOW_NONE), "1067 92,176 75x23");
    EXPECT_EQ(placeOf(dialog, IDOK), "1 179,176 75x23");
    EXPECT_EQ(placeOf(dialog, IDCANCEL), "2 260,176 75x23");
}

TEST(Dialogs, HaveTheStylesThatTheirTemplateImplies) {
    CDialog dialog;
    ASSERT_TRUE(dialog.Create(IDD_RESIZABLE));
    EXPECT_EQ(dialog.GetStyle(), 0x84CC00C4u);
    EXPECT_EQ(dialog.GetExStyle(), 0x00010101u);
    EXPECT_EQ(dialog.GetDlgItem(IDC_TREE)->GetStyle(), 0x50010037u);
    EXPECT_EQ(dialog.GetDlgItem(IDC_TREE)->GetExStyle(), 0x00000204u);
    EXPECT_EQ(dialog.GetDlgItem(IDOK)->GetStyle(), 0x50010001u);
    EXPECT_EQ(dialog.GetWindowText(), _T("View Filter"));
}

TEST(Dialogs, GiveTheirFontToTheirControls) {
    CDialog dialog;
    ASSERT_TRUE(dialog.Create(IDD_RESIZABLE));
    const LRESULT font = dialog.SendMessage(WM_GETFONT);
    EXPECT_NE(font, 0);
    for (int id : {IDC_TREE, IDC_SHOW_ALL, IDOK})
        EXPECT_EQ(SendMessageW(GetDlgItem(dialog, id), WM_GETFONT, 0, 0), font) << id;
    LOGFONTW description = {};
    ASSERT_NE(GetObjectW(reinterpret_cast<HGDIOBJ>(font), sizeof(description), &description), 0);
    EXPECT_EQ(description.lfHeight, -11);
    CDialog plain;
    ASSERT_TRUE(plain.Create(IDD_NO_FONT));
    EXPECT_EQ(plain.SendMessage(WM_GETFONT), 0);
}

TEST(Dialogs, OpenAtTheirLeastSize) {
    TreeDialog dialog;
    driver::Driver user({[](driver::Dialog& open) {
        EXPECT_EQ(open.describe().rect.right - open.describe().rect.left, 360);
        open.press("OK");
    }});
    EXPECT_EQ(dialog.DoModal(), IDOK);
    EXPECT_TRUE(user.finished());
}

TEST(Dialogs, FollowTheSizeThatTheUserGives) {
    TreeDialog dialog;
    driver::Driver user({[&](driver::Dialog& open) {
        dialog.seen.clear();
        open.size(500, 400);
        open.size(10, 10);
        open.move(40, 50);
        EXPECT_EQ(placeIn(nullptr, dialog), "40,50 360x150");
        open.press("Cancel");
    }});
    EXPECT_EQ(dialog.DoModal(), IDCANCEL);
    EXPECT_EQ(dialog.seen, (Strings{"size 492x373", "size 352x123", "cancel"}));
}

TEST(Dialogs, CarryTheirMembersToTheControlsAndBack) {
    KeyDialog dialog;
    dialog.box = 1;
    driver::Driver user({[](driver::Dialog& open) {
        EXPECT_EQ(open.describe().controls[1].checked, true);
        open.press("Box");
        EXPECT_EQ(open.describe().controls[1].checked, false);
        open.press("OK");
    }});
    EXPECT_EQ(dialog.DoModal(), IDOK);
    EXPECT_EQ(dialog.box, 0);
}

TEST(Dialogs, ACancelledOneLeavesItsMembers) {
    KeyDialog dialog;
    dialog.box = 1;
    driver::Driver user({[](driver::Dialog& open) {
        open.press("Box");
        open.cancel();
    }});
    EXPECT_EQ(dialog.DoModal(), IDCANCEL);
    EXPECT_EQ(dialog.box, 1);
}

TEST(Dialogs, AMemberOfAMissingControlIsAnError) {
    KeyDialog dialog;
    dialog.missing = 99;
    EXPECT_THROW(dialog.DoModal(), CInvalidArgException);
    EXPECT_EQ(dialog.m_hWnd, nullptr);
}

TEST(Dialogs, EnterPressesTheDefaultButtonAndEscapeCancels) {
    for (const int key : {VK_RETURN, VK_ESCAPE}) {
        KeyDialog dialog;
        driver::Driver user({[&](driver::Dialog&) { driver::pressKey(GetFocus(), key); }});
        EXPECT_EQ(dialog.DoModal(), key == VK_RETURN ? IDOK : IDCANCEL);
        EXPECT_TRUE(user.finished());
    }
}

TEST(Dialogs, TheTabKeyGoesRoundTheControls) {
    KeyDialog dialog;
    driver::Driver user({[&](driver::Dialog& open) {
        std::vector<int> visited;
        for (int i = 0; i < 4; ++i) {
            visited.push_back(GetDlgCtrlID(GetFocus()));
            driver::pressKey(GetFocus(), VK_TAB);
        }
        EXPECT_EQ(visited, (std::vector<int>{6, IDOK, IDCANCEL, 6}));
        open.cancel();
    }});
    dialog.DoModal();
}

TEST(Dialogs, OneWithoutTemplateIsNotOpened) {
    CDialog missing(9999);
    EXPECT_EQ(missing.DoModal(), -1);
    EXPECT_FALSE(missing.Create(9999));
    EXPECT_EQ(missing.m_hWnd, nullptr);
}

TEST(Dialogs, OneWithAControlOfAnUnknownClassIsNotOpened) {
    CDialog dialog(IDD_UNKNOWN_CLASS);
    EXPECT_EQ(dialog.DoModal(), -1);
    EXPECT_EQ(dialog.m_hWnd, nullptr);
}

TEST(Dialogs, ClosedByTheirFrameAreCancelled) {
    TreeDialog dialog;
    driver::Driver user({[](driver::Dialog& open) {
        PostMessageW(open.window(), WM_CLOSE, 0, 0);
        driver::settle();
        EXPECT_FALSE(open.isOpen());
    }});
    EXPECT_EQ(dialog.DoModal(), IDCANCEL);
    EXPECT_EQ(dialog.seen.back(), "cancel");
}
