// The driver of dialogs, on both controls.
#include "tests/platform_ui/dialog_support.h"

namespace {

// Runs one step on the tree dialog, which is cancelled afterwards unless the step closed it.
void drive(TreeDialog& dialog, driver::Step step) {
    driver::Driver user({std::move(step)});
    dialog.DoModal();
}

void drive(driver::Step step) {
    TreeDialog dialog;
    drive(dialog, std::move(step));
}

// The error that an action ends with; an empty text when it works.
template <class Action>
std::string errorOf(Action action) {
    try {
        action();
    } catch (const driver::Error& error) {
        return error.what();
    }
    return {};
}

}  // namespace

TEST(Driver, ChecksAndUnchecksItemsByTheirPath) {
    TreeDialog dialog;
    drive(dialog, [&](driver::Dialog& open) {
        open.check("Fill/red");
        open.check("Fill/red");
        open.click("Stroke");
        std::vector<driver::TreeItem> tree = open.tree();
        ASSERT_EQ(tree.size(), 2u);
        EXPECT_EQ(tree[0].text, "Fill");
        EXPECT_EQ(tree[0].check, 1);
        EXPECT_TRUE(tree[0].expanded) << "opened on the way";
        ASSERT_EQ(tree[0].children.size(), 2u);
        EXPECT_EQ(tree[0].children[0].check, 3);
        EXPECT_EQ(tree[0].children[1].check, 1);
        EXPECT_EQ(tree[1].check, 3);
        open.uncheck("Fill/red");
        EXPECT_EQ(open.tree()[0].children[0].check, 1);
    });
}

TEST(Driver, ExpandsAndCollapsesItems) {
    drive([](driver::Dialog& open) {
        open.expand("Fill");
        open.expand("Fill");
        EXPECT_TRUE(open.tree()[0].expanded);
        open.collapse("Fill");
        EXPECT_FALSE(open.tree()[0].expanded);
        EXPECT_EQ(errorOf([&] { open.expand("Stroke"); }), "the item \"Stroke\" has nothing below it");
    });
}

TEST(Driver, ReachesItemsThatAreScrolledAway) {
    TreeDialog dialog;
    drive(dialog, [&](driver::Dialog& open) {
        for (int i = 0; i < 50; ++i) dialog.tree.add(_T("filler"));
        dialog.tree.add(_T("last"));
        open.check("last");
        EXPECT_EQ(open.tree().back().check, 3);
        open.check("Fill");
        EXPECT_EQ(open.tree().front().check, 3);
    });
}

TEST(Driver, NamesTheNearestItemsWhenThereIsNone) {
    TreeDialog dialog;
    drive(dialog, [&](driver::Dialog& open) {
        EXPECT_EQ(
            errorOf([&] { open.check("Fill/rad"); }),
            "there is no item \"Fill/rad\"; nearest: \"Fill/red\", \"Fill\", \"Fill/blue\", \"Stroke\"");
        EXPECT_FALSE(open.tree()[0].expanded) << "nothing is opened for an item that is not there";
        try {
            open.click("strike");
            ADD_FAILURE();
        } catch (const driver::Error& error) {
            EXPECT_EQ(error.reason(), "there is no item \"strike\"");
            EXPECT_EQ(error.nearest().front(), "Stroke");
        }
    });
}

TEST(Driver, PressesButtonsByTheirCaption) {
    TreeDialog dialog;
    drive(dialog, [&](driver::Dialog& open) {
        dialog.seen.clear();
        open.press("Show All");
        open.press("Show None");
        EXPECT_EQ(dialog.seen, (Strings{"show all", "show none"}));
        EXPECT_EQ(
            errorOf([&] { open.press("Show all"); }),
            "there is no button \"Show all\"; nearest: \"Show All\", \"Show None\", \"OK\", \"Cancel\"");
        open.press("OK");
        EXPECT_FALSE(open.isOpen());
        EXPECT_EQ(errorOf([&] { open.press("OK"); }), "the dialog is closed");
    });
}

TEST(Driver, DoesNotTouchWhatIsDisabled) {
    TreeDialog dialog;
    drive(dialog, [&](driver::Dialog& open) {
        dialog.tree.EnableWindow(FALSE);
        dialog.GetDlgItem(IDC_SHOW_ALL)->EnableWindow(FALSE);
        EXPECT_EQ(errorOf([&] { open.check("Stroke"); }), "the tree is disabled");
        EXPECT_EQ(errorOf([&] { open.press("Show All"); }), "the button \"Show All\" is disabled");
        EXPECT_EQ(errorOf([&] { open.page("Fill"); }), "the dialog has no pages");
    });
}

TEST(Driver, DescribesTheDialog) {
    TreeDialog dialog;
    drive(dialog, [&](driver::Dialog& open) {
        const driver::DialogDescription description = open.describe();
        EXPECT_EQ(description.title, "View Filter");
        EXPECT_FALSE(description.page);
        ASSERT_EQ(description.controls.size(), 5u);
        EXPECT_EQ(description.controls[0].className, "SysTreeView32");
        EXPECT_EQ(description.controls[1].id, IDC_SHOW_ALL);
        EXPECT_EQ(description.controls[1].text, "Show All");
        EXPECT_TRUE(description.controls[1].enabled);
        EXPECT_FALSE(description.controls[1].checked);
        EXPECT_EQ(description.controls[1].rect.top, 176);
    });
}

TEST(Driver, CancelsADialogWhenItsAuthorHasNothingMore) {
    TreeDialog dialog;
    driver::Driver user([](driver::Dialog&) { return false; });
    EXPECT_EQ(dialog.DoModal(), IDCANCEL);
    EXPECT_EQ(user.cancelled(), 1);
    EXPECT_FALSE(user.finished());
    EXPECT_EQ(dialog.seen.back(), "cancel");
}

TEST(Driver, AnErrorOfItsAuthorClosesTheDialogAndLeavesIt) {
    TreeDialog dialog;
    driver::Driver user({[](driver::Dialog& open) { open.press("Nothing"); }});
    EXPECT_THROW(dialog.DoModal(), driver::Error);
    EXPECT_EQ(dialog.m_hWnd, nullptr);
}

TEST(Driver, TheOneBeforeIsBackAfterwards) {
    driver::Driver outer({[](driver::Dialog& open) { open.press("OK"); }});
    {
        driver::Driver inner({[](driver::Dialog& open) { open.press("Cancel"); }});
        EXPECT_EQ(TreeDialog().DoModal(), IDCANCEL);
    }
    EXPECT_EQ(TreeDialog().DoModal(), IDOK);
    EXPECT_TRUE(outer.finished());
}
