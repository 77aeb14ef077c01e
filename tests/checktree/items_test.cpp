// Items and their checks.
#include "checktree/check_values.h"
#include "checktree/fixture.h"

using test::CheckTree;
using Calls = std::vector<std::string>;
using Data = std::vector<DWORD>;

TEST(CheckValues, StateImagesStandForTheValues) {
    for (const int index : {0, 1, 2}) EXPECT_EQ(checktree::checkOfState(static_cast<UINT>(index) << 12), 1);
    for (const int index : {3, 4}) EXPECT_EQ(checktree::checkOfState(static_cast<UINT>(index) << 12), 3);
    for (const int index : {5, 6}) EXPECT_EQ(checktree::checkOfState(static_cast<UINT>(index) << 12), 5);
    for (int index = 7; index < 16; ++index)
        EXPECT_EQ(checktree::checkOfState(static_cast<UINT>(index) << 12), 1);
    for (const int check : {1, 3, 5}) {
        EXPECT_EQ(checktree::stateOfCheck(check, true), static_cast<UINT>(check) << 12);
        EXPECT_EQ(checktree::stateOfCheck(check, false), static_cast<UINT>(check + 1) << 12);
        EXPECT_EQ(checktree::stateOfCheck(check + 1, true), static_cast<UINT>(check) << 12);
        EXPECT_EQ(checktree::stateOfCheck(check + 1, false), static_cast<UINT>(check + 1) << 12);
    }
    // A negative odd value has the remainder -1, which is not odd here.
    EXPECT_EQ(checktree::stateOfCheck(-1, true), (static_cast<UINT>(-2) << 12) & 0xF000U);
    EXPECT_EQ(checktree::stateOfCheck(-1, false), (static_cast<UINT>(-1) << 12) & 0xF000U);
}

TEST_F(CheckTree, APathWithoutASeparatorMakesATopLevelLeaf) {
    HTREEITEM leaf = insert("Leaf", 7);
    ASSERT_NE(leaf, nullptr);
    EXPECT_EQ(dump(), "Leaf 1 7 0\n");
    EXPECT_EQ(tree.getItemData(leaf), 7U);
}

TEST_F(CheckTree, APathMakesTheGroupsOnTheWay) {
    insert("A/B/C", 7);
    EXPECT_EQ(dump(), "A 1 0 2\n  B 1 0 2\n    C 1 7 0\n");
    insert("A/D", 8);
    EXPECT_EQ(dump(), "A 1 0 2\n  B 1 0 2\n    C 1 7 0\n  D 1 8 0\n");
}

TEST_F(CheckTree, OnePathTwiceIsOneLeafWithTheSecondData) {
    HTREEITEM first = insert("A/B", 7);
    tree.setItemColor(first, RGB(1, 2, 3));
    tree.setCheck(first, 1);
    const int picture = image("A/B");
    EXPECT_EQ(insert("A/B", 9), first);
    EXPECT_EQ(tree.getItemData(first), 9U);
    EXPECT_EQ(image("A/B"), picture);
    EXPECT_EQ(tree.getCheck(first), 3);
    EXPECT_EQ(tree.GetCount(), 2U);
}

TEST_F(CheckTree, TextsAreComparedWithRegardToCase) {
    insert("A/b", 1);
    insert("a/b", 2);
    insert("A/B", 3);
    EXPECT_EQ(dump(), "A 1 0 2\n  b 1 1 0\n  B 1 3 0\na 1 0 2\n  b 1 2 0\n");
    EXPECT_EQ(tree.findItemByText(_T("a"), nullptr), at("a"));
    EXPECT_EQ(tree.findItemByText(_T("B"), at("A")), at("A/B"));
    EXPECT_EQ(tree.findItemByText(_T("B"), at("a")), nullptr);
    EXPECT_EQ(tree.findItemByText(_T("b"), nullptr), nullptr) << "children are not searched";
}

TEST_F(CheckTree, APathThroughALeafMakesItAGroupWithTheOwnersPicture) {
    HTREEITEM leaf = insert("A", 5);
    tree.setItemColor(leaf, RGB(1, 2, 3));
    insert("A/B", 6);
    EXPECT_EQ(dump(), "A 1 5 2\n  B 1 6 0\n") << "it keeps its data";
}

TEST_F(CheckTree, ANewLeafIsUncheckedAndItsParentIsNotComputedAnew) {
    tree.setCheck(insert("A/B", 1), 1);
    EXPECT_EQ(tree.getCheck(at("A")), 3);
    insert("A/C", 2);
    EXPECT_EQ(tree.getCheck(at("A")), 3);
    EXPECT_EQ(tree.getCheck(at("A/C")), 1);
}

TEST_F(CheckTree, EmptySegmentsAreItemsToo) {
    insert("/a/", 3);
    EXPECT_EQ(dump(), " 1 0 2\n  a 1 0 2\n     1 3 0\n");
    insert("", 4);
    EXPECT_EQ(tree.getItemData(at("")), 4U);
}

TEST_F(CheckTree, InsertionIntoADisabledTreeTakesTheDisabledPicture) {
    tree.EnableWindow(FALSE);
    insert("A/B", 1);
    EXPECT_EQ(image("A/B"), 1);
    EXPECT_EQ(stateImage("A/B"), 1U) << "a new item's state is the enabled form";
}

TEST_F(CheckTree, FindsTheFirstItemOfADataValueInPreOrder) {
    insert("A/x", 5);
    insert("B", 7);
    insert("A/y", 7);
    EXPECT_EQ(tree.findItemByData(7), at("A/y"));
    EXPECT_EQ(tree.findItemByData(5), at("A/x"));
    EXPECT_EQ(tree.findItemByData(6), nullptr);
    EXPECT_EQ(tree.findItemByData(0), at("A")) << "groups carry 0";
    insert("A/y", 8);
    EXPECT_EQ(tree.findItemByData(7), at("B"));
    tree.SetItemData(at("B"), 9);
    EXPECT_EQ(tree.findItemByData(7), nullptr);
}

TEST_F(CheckTree, AListValueIsComparedWithTheWholeParameter) {
    insert("A", 1);
    tree.SetItemData(at("A"), (DWORD_PTR{1} << 32) | 1);
    EXPECT_EQ(tree.findItemByData(1), nullptr);
    tree.setCheck(at("A"), 1);
    EXPECT_EQ(checkedData(1), Data{1}) << "cut to 32 bits in a list";
}

TEST_F(CheckTree, ChangesByOthersAreSeen) {
    insert("A/x", 1);
    insert("A/y", 2);
    HTREEITEM foreign = tree.InsertItem(_T("z"), at("A"));
    EXPECT_EQ(tree.findItemByText(_T("z"), at("A")), foreign);
    tree.SetItemText(at("A/x"), _T("renamed"));
    EXPECT_EQ(tree.findItemByText(_T("x"), at("A")), nullptr);
    EXPECT_EQ(tree.findItemByText(_T("renamed"), at("A")), at("A/renamed"));
    tree.DeleteItem(at("A/y"));
    EXPECT_EQ(tree.findItemByText(_T("y"), at("A")), nullptr);
    tree.SetItemState(at("A/z"), 0x3000, 0xF000);
    tree.setCheck(at("A/renamed"), 1);
    EXPECT_EQ(tree.getCheck(at("A")), 3) << "all children are checked, one of them by a stranger";
}

TEST_F(CheckTree, CheckingTheLastUncheckedLeafChecksTheAncestors) {
    for (const char* path : {"A/B/x", "A/B/y", "A/C"}) insert(path, 1);
    installCallback();
    tree.setCheck(at("A/B/x"), 1);
    EXPECT_EQ(takeCalls(), (Calls{"x 1"})) << "partly checked ancestors call nobody";
    EXPECT_EQ(tree.getCheck(at("A/B")), 5);
    EXPECT_EQ(tree.getCheck(at("A")), 5);
    tree.setCheck(at("A/B/y"), 1);
    EXPECT_EQ(takeCalls(), (Calls{"y 1", "B 1"}));
    EXPECT_EQ(tree.getCheck(at("A/B")), 3);
    EXPECT_EQ(tree.getCheck(at("A")), 5);
    tree.setCheck(at("A/C"), 1);
    EXPECT_EQ(takeCalls(), (Calls{"C 1", "A 1"}));
    EXPECT_EQ(tree.getCheck(at("A")), 3);
}

TEST_F(CheckTree, ACheckFlowsDownToWhateverDiffers) {
    for (const char* path : {"A/x", "A/B/y", "A/B/z", "A/w"}) insert(path, 1);
    tree.setCheck(at("A/B/y"), 1);
    installCallback();
    tree.setCheck(at("A"), 1);
    EXPECT_EQ(takeCalls(), (Calls{"A 1", "x 1", "B 1", "z 1", "w 1"}));
    tree.setCheck(at("A"), 0);
    EXPECT_EQ(takeCalls(), (Calls{"A 0", "x 0", "B 0", "y 0", "z 0", "w 0"}));
}

TEST_F(CheckTree, UncheckingOneLeafLeavesItsAncestorsPartlyChecked) {
    for (const char* path : {"A/B/x", "A/B/y"}) insert(path, 1);
    tree.setCheck(at("A"), 1);
    installCallback();
    tree.setCheck(at("A/B/x"), 0);
    EXPECT_EQ(takeCalls(), (Calls{"x 0"}));
    EXPECT_EQ(dump(), "A 5 0 2\n  B 5 0 2\n    x 1 1 0\n    y 3 1 0\n");
    tree.setCheck(at("A/B/y"), 0);
    EXPECT_EQ(takeCalls(), (Calls{"y 0", "B 0", "A 0"}));
}

TEST_F(CheckTree, AnyNumberButZeroChecksAndIsToldAsOne) {
    insert("A", 1);
    installCallback();
    tree.setCheck(at("A"), 2);
    EXPECT_EQ(takeCalls(), Calls{"A 1"});
    EXPECT_EQ(tree.getCheck(at("A")), 3);
}

TEST_F(CheckTree, SetAllChecksEndsWithOneCall) {
    insert("A/x", 1);
    insert("B", 2);
    installCallback();
    tree.setAllChecks(1);
    EXPECT_EQ(takeCalls(), (Calls{"A 1", "x 1", "B 1", "end"}));
    EXPECT_EQ(tree.isAllChecked(), 1);
    tree.setCheck(at("B"), 0);
    EXPECT_EQ(tree.isAllChecked(), 0);
    tree.setAllChecks(0);
    EXPECT_EQ(tree.isAllChecked(), 0);
}

TEST_F(CheckTree, AnEmptyTreeIsAllChecked) {
    EXPECT_EQ(tree.isAllChecked(), 1);
    EXPECT_EQ(checkedData(1), Data{});
    EXPECT_EQ(tree.findItemByData(0), nullptr);
    tree.expandAll(1);
    tree.setAllChecks(1);
    EXPECT_EQ(tree.isAllChecked(), 1);
}

TEST_F(CheckTree, SetChecksChecksThenUnchecksAndIgnoresStrangers) {
    for (const char* path : {"A/x", "A/y", "B"}) insert(path, static_cast<DWORD>(path[path[1] ? 2 : 0]));
    tree.setCheck(at("B"), 1);
    installCallback();
    const ADWordArray uncheck = list({'y', 4711});
    tree.setChecks(list({'x', 'y', 4711}), 0, &uncheck);
    EXPECT_EQ(takeCalls(), (Calls{"x 1", "y 1", "A 1", "y 0", "end"}));
    EXPECT_EQ(checkedData(1), (Data{'x', 'B'}));
    tree.setChecks(list({'y'}), 1, nullptr);
    EXPECT_EQ(takeCalls(), (Calls{"A 0", "x 0", "B 0", "end", "y 1", "end"}));
    EXPECT_EQ(checkedData(1), Data{'y'});
}

TEST_F(CheckTree, ACheckedGroupWithDataStandsForItsLeavesOrNot) {
    insert("A", 10);
    insert("A/x", 1);
    insert("A/y", 2);
    insert("B", 3);
    tree.setAllChecks(1);
    EXPECT_EQ(checkedData(1), (Data{10, 3}));
    EXPECT_EQ(checkedData(0), (Data{1, 2, 3}));
    tree.setAllChecks(0);
    EXPECT_EQ(uncheckedData(1), (Data{10, 3}));
    EXPECT_EQ(uncheckedData(0), (Data{1, 2, 3}));
    EXPECT_EQ(checkedData(1), Data{});
    tree.setCheck(at("A/y"), 1);
    EXPECT_EQ(checkedData(1), Data{2});
    EXPECT_EQ(uncheckedData(1), (Data{1, 3}));
}

TEST_F(CheckTree, CollectingClimbsOneLevelOnly) {
    // The walk ends behind the last run of grandchildren whose parent is the last of its siblings.
    for (const char* path : {"A/B/x", "A/C/y"}) insert(path, static_cast<DWORD>(path[4]));
    insert("D", 'D');
    tree.setAllChecks(1);
    EXPECT_EQ(checkedData(0), (Data{'x', 'y'})) << "D is not visited";
    tree.setAllChecks(0);
    EXPECT_EQ(uncheckedData(0), (Data{'x', 'y'}));
}

TEST_F(CheckTree, CollectingAppendsToTheList) {
    insert("A", 1);
    tree.setAllChecks(1);
    ADWordArray data = list({42});
    EXPECT_EQ(tree.getCheckedData(data, 1), 2);
    EXPECT_EQ(values(data), (Data{42, 1}));
}

TEST_F(CheckTree, UpdatingKeepsWhatTheTreeDoesNotShow) {
    for (const char* path : {"x", "y", "z"}) insert(path, static_cast<DWORD>(path[0]));
    tree.setCheck(at("y"), 1);
    tree.setCheck(at("z"), 1);
    ADWordArray data = list({'x', 4711, 'z', 4712});
    tree.updateCheckedData(data);
    EXPECT_EQ(values(data), (Data{4711, 'z', 4712, 'y'}));
}

TEST_F(CheckTree, UpdatingADisabledTreeDoesNothing) {
    insert("x", 1);
    ADWordArray data = list({1, 2});
    tree.EnableWindow(FALSE);
    tree.updateCheckedData(data);
    EXPECT_EQ(values(data), (Data{1, 2}));
}

TEST_F(CheckTree, UpdatingKeepsDuplicatesOfWhatStays) {
    insert("x", 1);
    insert("y", 2);
    tree.setCheck(at("x"), 1);
    ADWordArray data = list({1, 2, 1, 9, 9, 2});
    tree.updateCheckedData(data);
    EXPECT_EQ(values(data), (Data{1, 1, 9, 9}));
}

TEST_F(CheckTree, ExpandsAndCollapsesEverything) {
    for (const char* path : {"A/B/x", "A/y", "C/z"}) insert(path, 1);
    const auto expanded = [this](const char* path) {
        return (tree.GetItemState(at(path), TVIS_EXPANDED)) != 0;
    };
    tree.expandAll(1);
    for (const char* group : {"A", "A/B", "C"}) EXPECT_TRUE(expanded(group)) << group;
    EXPECT_EQ(image("A"), 4);
    EXPECT_EQ(tree.GetFirstVisibleItem(), at("A"));
    tree.expandAll(0);
    for (const char* group : {"A", "A/B", "C"}) EXPECT_FALSE(expanded(group)) << group;
    EXPECT_EQ(image("A"), 2);
}

TEST_F(CheckTree, TheMessagesOfEachOperationAreAsListed) {
    const auto messagesOf = [this](auto act) {
        tree.recording = true;
        act();
        tree.recording = false;
        return std::exchange(tree.messages, {});
    };
    using Messages = std::vector<std::string>;
    EXPECT_EQ(messagesOf([&] { tree.initImageLists(); }),
              (Messages{"DELETEITEM 0", "SETIMAGELIST 2", "SETIMAGELIST 0"}));
    EXPECT_EQ(messagesOf([&] { insert("A/x", 7); }),
              (Messages{"INSERTITEM text A state 1 image -1 selected -1 data 0",
                        "INSERTITEM text x state 1 image 0 selected 0 data 7"}));
    EXPECT_EQ(
        messagesOf([&] { insert("A/y", 8); }),
        (Messages{"SETITEM image -1 selected -1", "INSERTITEM text y state 1 image 0 selected 0 data 8"}));
    EXPECT_EQ(messagesOf([&] { insert("A/y", 9); }),
              (Messages{"SETITEM image -1 selected -1", "SETITEM data 9"}));
    EXPECT_EQ(messagesOf([&] { tree.setCheck(at("A/x"), 1); }),
              (Messages{"SETITEM state 3", "SETITEM state 5"}));
    EXPECT_EQ(messagesOf([&] { tree.setCheck(at("A"), 1); }),
              (Messages{"SETITEM state 3", "SETITEM state 3"}));
    EXPECT_EQ(messagesOf([&] { tree.setItemImage(at("A/x"), 3); }), (Messages{"SETITEM image 2 selected 2"}));
    EXPECT_EQ(messagesOf([&] { tree.setItemImage(at("A"), 3); }), (Messages{"SETITEM image -1 selected -1"}));
    EXPECT_EQ(messagesOf([&] { tree.expandAll(1); }),
              (Messages{"EXPAND 2", "EXPAND 2", "EXPAND 2", "SELECTITEM 5"}));
    EXPECT_EQ(messagesOf([&] { tree.setItemColor(at("A/x"), 0); }), (Messages{"SETITEM image 6 selected 6"}));
    // The group's owner already answers with the picture of a disabled group, which is odd.
    EXPECT_EQ(messagesOf([&] { tree.EnableWindow(FALSE); }),
              (Messages{"SETITEM state 4", "SETITEM image 7 selected 7", "SETITEM state 4",
                        "SETITEM image 1 selected 1", "SETITEM state 4"}));
}

TEST_F(CheckTree, APathLeavesThePicturesOfOtherGroupsAlone) {
    insert("A/x", 1);
    insert("B/x", 2);
    tree.SetItemImage(at("A"), 5, 5);
    insert("B/y", 3);
    EXPECT_EQ(image("A"), 5);
}

TEST_F(CheckTree, WithoutItsGroupALeafIsNotInserted) {
    tree.refusedItems = 1;
    EXPECT_EQ(insert("A/B/x", 1), nullptr);
    tree.refusedItems = 1;
    EXPECT_EQ(insert("x", 1), nullptr);
    EXPECT_EQ(tree.GetRootItem(), nullptr) << "neither at the top nor anywhere else";
}
