// Clicks, keys, enabling.
#include "checktree/fixture.h"

using test::CheckTree;
using Calls = std::vector<std::string>;

TEST_F(CheckTree, AClickOnTheBoxToggles) {
    insert("A", 1);
    insert("B", 2);
    installCallback();
    tree.SelectItem(at("B"));
    ASSERT_TRUE(driver::click(tree, at("A"), TVHT_ONITEMSTATEICON));
    EXPECT_EQ(tree.getCheck(at("A")), 3);
    EXPECT_EQ(takeCalls(), (Calls{"A 1", "end"}));
    ASSERT_TRUE(driver::click(tree, at("A"), TVHT_ONITEMSTATEICON));
    EXPECT_EQ(tree.getCheck(at("A")), 1);
    EXPECT_EQ(takeCalls(), (Calls{"A 0", "end"}));
    EXPECT_EQ(tree.GetSelectedItem(), at("B")) << "the click does not select";
}

TEST_F(CheckTree, AClickOnAPartlyCheckedItemUnchecksItsSubtree) {
    for (const char* path : {"A/x", "A/B/y", "A/B/z"}) insert(path, 1);
    tree.expandAll(1);
    tree.setCheck(at("A/B/y"), 1);
    EXPECT_EQ(tree.getCheck(at("A")), 5);
    ASSERT_TRUE(driver::click(tree, at("A"), TVHT_ONITEMSTATEICON));
    EXPECT_EQ(checkedData(0), std::vector<DWORD>{});
    for (const char* path : {"A", "A/x", "A/B", "A/B/y", "A/B/z"})
        EXPECT_EQ(tree.getCheck(at(path)), 1) << path;
}

TEST_F(CheckTree, AClickBesideTheBoxChangesNoCheck) {
    insert("A/x", 1);
    installCallback();
    for (const UINT part : {TVHT_ONITEMLABEL, TVHT_ONITEMICON, TVHT_ONITEMBUTTON}) {
        ASSERT_TRUE(driver::click(tree, at("A"), part)) << part;
        EXPECT_EQ(tree.getCheck(at("A")), 1);
    }
    EXPECT_EQ(takeCalls(), Calls{});
    EXPECT_EQ(tree.GetSelectedItem(), at("A"));
    EXPECT_NE(tree.GetItemState(at("A"), TVIS_EXPANDED), 0U) << "the button expands as ever";
}

TEST_F(CheckTree, AClickOnTheBoxIsNotPassedOn) {
    insert("A", 1);
    insert("B", 2);
    tree.SelectItem(at("B"));
    owner.SetFocus();
    driver::settle();
    ASSERT_TRUE(driver::click(tree, at("A"), TVHT_ONITEMSTATEICON));
    ASSERT_TRUE(driver::doubleClick(tree, at("A"), TVHT_ONITEMSTATEICON));
    EXPECT_EQ(owner.clicks, 0) << "the control tells its owner nothing";
    EXPECT_NE(::GetFocus(), tree.m_hWnd) << "and does not take the focus";
    ASSERT_TRUE(driver::click(tree, at("A"), TVHT_ONITEMLABEL));
    EXPECT_EQ(owner.clicks, 1);
    EXPECT_EQ(::GetFocus(), tree.m_hWnd) << "as a click beside the box does";
}

TEST_F(CheckTree, ADoubleClickOnTheBoxTogglesTwice) {
    insert("A/x", 1);
    installCallback();
    ASSERT_TRUE(driver::doubleClick(tree, at("A"), TVHT_ONITEMSTATEICON));
    EXPECT_EQ(tree.getCheck(at("A")), 1);
    EXPECT_EQ(takeCalls(), (Calls{"A 1", "x 1", "end", "A 0", "x 0", "end"}));
    EXPECT_EQ(tree.GetItemState(at("A"), TVIS_EXPANDED), 0U) << "and does not expand";
}

TEST_F(CheckTree, KeysToggleNothing) {
    insert("A", 1);
    tree.SelectItem(at("A"));
    tree.SetFocus();
    driver::pressKey(tree, VK_SPACE);
    EXPECT_EQ(tree.getCheck(at("A")), 1);
}

TEST_F(CheckTree, DisablingTurnsBoxesAndPicturesIntoTheirOtherForms) {
    insert("A", 1);
    insert("B", 2);
    insert("G/x", 3);
    insert("G/y", 4);
    tree.setCheck(at("A"), 1);
    tree.setCheck(at("G/x"), 1);
    tree.setItemImage(at("B"), 2);
    tree.setItemImage(at("G/x"), 4);
    const auto states = [this] {
        std::vector<UINT> found;
        for (const char* path : {"A", "B", "G", "G/x", "G/y"}) found.push_back(stateImage(path));
        return found;
    };
    EXPECT_EQ(states(), (std::vector<UINT>{3, 1, 5, 3, 1}));
    tree.EnableWindow(FALSE);
    EXPECT_EQ(states(), (std::vector<UINT>{4, 2, 6, 4, 2}));
    EXPECT_EQ(image("A"), 1);
    EXPECT_EQ(image("B"), 3);
    EXPECT_EQ(image("G/x"), 5);
    EXPECT_EQ(tree.getCheck(at("G")), 5);
    tree.EnableWindow(TRUE);
    EXPECT_EQ(states(), (std::vector<UINT>{3, 1, 5, 3, 1}));
    EXPECT_EQ(image("A"), 0);
    EXPECT_EQ(image("B"), 2);
    EXPECT_EQ(image("G/x"), 4);
}

TEST_F(CheckTree, AGroupKeepsTheAnsweredPictureAfterItWasDisabled) {
    insert("G/x", 1);
    tree.EnableWindow(FALSE);
    // The owner answered 3 for the disabled collapsed group, which is odd already.
    EXPECT_EQ(image("G"), 3);
    tree.EnableWindow(TRUE);
    EXPECT_EQ(image("G"), 2);
    tree.Expand(at("G"), TVE_EXPAND);
    EXPECT_EQ(image("G"), 4) << "still asked of the owner";
}

TEST_F(CheckTree, EachOfAnItemsTwoPicturesTurnsIntoItsOwnOtherForm) {
    insert("A", 1);
    insert("B", 2);
    tree.SetItemImage(at("A"), 0, 4);
    tree.SetItemImage(at("B"), 2, 3);
    const auto pictures = [this](const char* path) {
        std::pair<int, int> both;
        tree.GetItemImage(at(path), both.first, both.second);
        return both;
    };
    tree.EnableWindow(FALSE);
    EXPECT_EQ(pictures("A"), std::pair(1, 5));
    EXPECT_EQ(pictures("B"), std::pair(3, 4)) << "the first picture decides for both";
    tree.EnableWindow(TRUE);
    EXPECT_EQ(pictures("A"), std::pair(0, 4));
    EXPECT_EQ(pictures("B"), std::pair(2, 3));
}

TEST_F(CheckTree, AGroupsAnsweredPictureIsSteppedLikeEveryOther) {
    insert("G/x", 1);
    owner.fixedImage = 2;  // whatever the state of the tree
    tree.EnableWindow(FALSE);
    int image = 0;
    int selected = 0;
    tree.GetItemImage(at("G"), image, selected);
    EXPECT_EQ(image, 3) << "one more than was answered, and not asked for any more";
    EXPECT_EQ(selected, 5);
    tree.EnableWindow(TRUE);
    tree.GetItemImage(at("G"), image, selected);
    EXPECT_EQ(image, 2);
    EXPECT_EQ(selected, 4);
    owner.fixedImage = 7;
    tree.GetItemImage(at("G"), image, selected);
    EXPECT_EQ(image, 2) << "the owner's answer has become the item's own picture";
}

TEST_F(CheckTree, DeepBranchesAreReachedWhenTheControlIsDisabled) {
    insert("A/B/C/x", 1);
    insert("D", 2);
    tree.EnableWindow(FALSE);
    EXPECT_EQ(stateImage("D"), 2U) << "this walk climbs as many levels as needed";
    EXPECT_EQ(stateImage("A/B/C/x"), 2U);
}
