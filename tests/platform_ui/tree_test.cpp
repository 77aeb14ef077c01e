// One table for the headless and the real tree view: what each action makes it tell its parent.
#include "platform/driver/input.h"
#include "tests/platform_ui/recorder.h"
#include "tests/platform_ui/support.h"

namespace {

constexpr DWORD check_tree_style =
    TVS_HASBUTTONS | TVS_HASLINES | TVS_LINESATROOT | TVS_DISABLEDRAGDROP | TVS_SHOWSELALWAYS;

class TreeView : public testing::Test {
protected:
    TreeView() : recorder_(check_tree_style, {200, 80}) {
        recorder_.attach_images(true, true);
        fill_ = recorder_.insert("Fill", nullptr, TVI_LAST, I_IMAGECALLBACK);
        red_ = recorder_.insert("red", fill_);
        blue_ = recorder_.insert("blue", fill_);
        pen_ = recorder_.insert("Pen", nullptr);
        recorder_.take();
    }

    LRESULT send(UINT message, WPARAM wParam, HTREEITEM item) {
        return SendMessageW(recorder_.tree(), message, wParam, reinterpret_cast<LPARAM>(item));
    }
    Strings expand(HTREEITEM item, UINT action = TVE_EXPAND) {
        send(TVM_EXPAND, action, item);
        return recorder_.take();
    }
    Strings select(HTREEITEM item) {
        send(TVM_SELECTITEM, TVGN_CARET, item);
        return recorder_.take();
    }
    Strings click(HTREEITEM item, UINT part) {
        EXPECT_TRUE(driver::click(recorder_.tree(), item, part));
        return recorder_.take();
    }
    Strings press(int key) {
        driver::pressKey(recorder_.tree(), key);
        return recorder_.take();
    }
    std::string next(UINT relation, HTREEITEM item = nullptr) {
        return recorder_.name(reinterpret_cast<HTREEITEM>(send(TVM_GETNEXTITEM, relation, item)));
    }
    UINT state(HTREEITEM item) {
        return static_cast<UINT>(
            SendMessageW(recorder_.tree(), TVM_GETITEMSTATE, reinterpret_cast<WPARAM>(item), 0xFFFF));
    }

    Recorder recorder_;
    HTREEITEM fill_, red_, blue_, pen_;
};

}  // namespace

TEST_F(TreeView, TellsOfTheFirstExpansionByTheProgramOnly) {
    EXPECT_EQ(expand(fill_), (Strings{"before expand Fill state 1000", "after expand Fill state 1020"}));
    EXPECT_EQ(state(fill_), 0x1060u);
    EXPECT_EQ(expand(fill_, TVE_COLLAPSE), Strings{});
    EXPECT_EQ(expand(fill_), Strings{});
    EXPECT_EQ(state(fill_), 0x1060u);
}

TEST_F(TreeView, AlwaysTellsOfExpansionsByTheUser) {
    select(fill_);
    SetFocus(recorder_.tree());
    expand(fill_);
    EXPECT_EQ(click(fill_, TVHT_ONITEMBUTTON),
              (Strings{"click", "before collapse Fill state 1062", "after collapse Fill state 1042"}));
    EXPECT_EQ(click(fill_, TVHT_ONITEMBUTTON),
              (Strings{"click", "before expand Fill state 1042", "after expand Fill state 1062"}));
}

TEST_F(TreeView, DoesNotExpandWhatHasNoChildren) {
    EXPECT_EQ(send(TVM_EXPAND, TVE_EXPAND, pen_), 0);
    EXPECT_EQ(recorder_.take(), Strings{});
}

TEST_F(TreeView, ARefusedExpansionChangesNothing) {
    recorder_.refuse_expanding = true;
    EXPECT_EQ(send(TVM_EXPAND, TVE_EXPAND, fill_), 0);
    EXPECT_EQ(recorder_.take(), Strings{"before expand Fill state 1000"});
    EXPECT_EQ(state(fill_), 0x1000u);
}

TEST_F(TreeView, TellsOfASelectionBeforeAndAfter) {
    EXPECT_EQ(select(pen_), (Strings{"selecting - > Pen by 0", "selected - > Pen by 0"}));
    EXPECT_EQ(select(pen_), Strings{});
    EXPECT_EQ(select(nullptr), (Strings{"selecting Pen > - by 0", "selected Pen > - by 0"}));
}

TEST_F(TreeView, ARefusedSelectionStaysWhereItWas) {
    select(pen_);
    recorder_.refuse_selecting = true;
    EXPECT_EQ(select(fill_), Strings{"selecting Pen > Fill by 0"});
    EXPECT_EQ(next(TVGN_CARET), "Pen");
}

TEST_F(TreeView, SelectingAHiddenItemExpandsItsParents) {
    EXPECT_EQ(select(red_), (Strings{"selecting - > red by 0", "before expand Fill state 1000",
                                     "after expand Fill state 1020", "selected - > red by 0"}));
}

TEST_F(TreeView, AClickIsToldThenSelectsThenTakesTheFocus) {
    EXPECT_EQ(click(pen_, TVHT_ONITEMLABEL),
              (Strings{"click", "selecting - > Pen by 1", "selected - > Pen by 1", "focus"}));
}

TEST_F(TreeView, AClickOnTheCheckBoxNeitherSelectsNorExpands) {
    SetFocus(recorder_.tree());
    recorder_.take();
    EXPECT_EQ(click(pen_, TVHT_ONITEMSTATEICON), Strings{"click"});
    EXPECT_EQ(click(fill_, TVHT_ONITEMSTATEICON), Strings{"click"});
    EXPECT_EQ(next(TVGN_CARET), "Fill") << "from taking the focus";
}

TEST_F(TreeView, AClickOnTheButtonTogglesAndLeavesTheSelection) {
    select(pen_);
    EXPECT_EQ(click(fill_, TVHT_ONITEMBUTTON),
              (Strings{"click", "before expand Fill state 1000", "after expand Fill state 1020", "focus"}));
    EXPECT_EQ(next(TVGN_CARET), "Pen");
}

TEST_F(TreeView, ADoubleClickOnTheTextExpands) {
    select(pen_);
    SetFocus(recorder_.tree());
    recorder_.take();
    ASSERT_TRUE(driver::doubleClick(recorder_.tree(), fill_, TVHT_ONITEMLABEL));
    EXPECT_EQ(recorder_.take(),
              (Strings{"click", "selecting Pen > Fill by 1", "selected Pen > Fill by 1", "double click",
                       "before expand Fill state 1002", "after expand Fill state 1022"}));
}

TEST_F(TreeView, TakingTheFocusSelectsTheFirstVisibleItem) {
    SetFocus(recorder_.tree());
    EXPECT_EQ(recorder_.take(), (Strings{"selecting - > Fill by 0", "selected - > Fill by 0", "focus"}));
}

TEST_F(TreeView, CollapsingOverTheSelectionMovesItSilently) {
    select(red_);
    EXPECT_EQ(expand(fill_, TVE_COLLAPSE), Strings{});
    EXPECT_EQ(next(TVGN_CARET), "Fill");
    EXPECT_EQ(state(red_), 0x1000u);
}

TEST_F(TreeView, KeysMoveTheSelectionAndExpand) {
    const struct {
        int key;
        const char* selected;
        Strings told;
    } steps[] = {
        {VK_DOWN, "Pen", {"key", "selecting Fill > Pen by 2", "selected Fill > Pen by 2"}},
        {VK_DOWN, "Pen", {"key"}},
        {VK_HOME, "Fill", {"key", "selecting Pen > Fill by 2", "selected Pen > Fill by 2"}},
        {VK_RIGHT, "Fill", {"key", "before expand Fill state 1002", "after expand Fill state 1022"}},
        {VK_RIGHT, "red", {"key", "selecting Fill > red by 2", "selected Fill > red by 2"}},
        {VK_END, "Pen", {"key", "selecting red > Pen by 2", "selected red > Pen by 2"}},
        {VK_UP, "blue", {"key", "selecting Pen > blue by 2", "selected Pen > blue by 2"}},
        {VK_LEFT, "Fill", {"key", "selecting blue > Fill by 2", "selected blue > Fill by 2"}},
        {VK_LEFT, "Fill", {"key", "before collapse Fill state 1062", "after collapse Fill state 1042"}},
        {VK_ADD, "Fill", {"key", "before expand Fill state 1042", "after expand Fill state 1062"}},
        {VK_SUBTRACT, "Fill", {"key", "before collapse Fill state 1062", "after collapse Fill state 1042"}},
        {VK_SPACE, "Fill", {"key"}},
    };
    select(fill_);
    for (const auto& step : steps) {
        EXPECT_EQ(press(step.key), step.told) << step.key;
        EXPECT_EQ(next(TVGN_CARET), step.selected) << step.key;
    }
}

TEST_F(TreeView, DeletingTheSelectionHandsItOn) {
    select(fill_);
    send(TVM_DELETEITEM, 0, fill_);
    EXPECT_EQ(recorder_.take(), (Strings{"deleted red", "deleted blue", "deleted Fill",
                                         "selecting - > Pen by 0", "selected - > Pen by 0"}));
    EXPECT_EQ(send(TVM_GETCOUNT, 0, nullptr), 1);
}

TEST_F(TreeView, DeletingEverythingTellsOfEveryItem) {
    EXPECT_TRUE(send(TVM_DELETEITEM, 0, TVI_ROOT));
    EXPECT_EQ(recorder_.take(), (Strings{"deleted red", "deleted blue", "deleted Fill", "deleted Pen"}));
    EXPECT_EQ(next(TVGN_ROOT), "-");
    EXPECT_EQ(next(TVGN_FIRSTVISIBLE), "-");
}

TEST_F(TreeView, AnItemWithoutAPictureOfItsOwnAsksTheParent) {
    auto image = [this] {
        TVITEMW record = {};
        record.mask = TVIF_HANDLE | TVIF_IMAGE | TVIF_SELECTEDIMAGE;
        record.hItem = fill_;
        SendMessageW(recorder_.tree(), TVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&record));
        EXPECT_EQ(record.iImage, record.iSelectedImage);
        return record.iImage;
    };
    EXPECT_EQ(image(), 2);
    expand(fill_);
    EXPECT_EQ(image(), 4);
}

TEST_F(TreeView, AStateIsChangedUnderItsMask) {
    TVITEMW record = {};
    record.mask = TVIF_HANDLE | TVIF_STATE;
    record.hItem = pen_;
    record.state = INDEXTOSTATEIMAGEMASK(3) | TVIS_BOLD;
    record.stateMask = TVIS_STATEIMAGEMASK;
    EXPECT_TRUE(SendMessageW(recorder_.tree(), TVM_SETITEMW, 0, reinterpret_cast<LPARAM>(&record)));
    EXPECT_EQ(state(pen_), 0x3000u);
}

TEST_F(TreeView, AnswersItsRelations) {
    EXPECT_EQ(next(TVGN_ROOT), "Fill");
    EXPECT_EQ(next(TVGN_CHILD, fill_), "red");
    EXPECT_EQ(next(TVGN_NEXT, red_), "blue");
    EXPECT_EQ(next(TVGN_PREVIOUS, blue_), "red");
    EXPECT_EQ(next(TVGN_PARENT, red_), "Fill");
    EXPECT_EQ(next(TVGN_PARENT, pen_), "-");
    EXPECT_EQ(next(TVGN_NEXTVISIBLE, fill_), "Pen");
    expand(fill_);
    EXPECT_EQ(next(TVGN_NEXTVISIBLE, fill_), "red");
    EXPECT_EQ(next(TVGN_PREVIOUSVISIBLE, pen_), "blue");
}
