// Lookups on trees whose items others changed, and on windows that the check tree took over: it may never
// answer for a tree that it has not seen.
#include "checktree/fixture.h"

using test::CheckTree;

namespace {

class CheckTreeIndex : public CheckTree {
protected:
    // A tree that nobody has taken over yet, with items of these texts at the top; the first has the data 1.
    HWND window(std::initializer_list<const WCHAR*> texts) {
        HWND made = ::CreateWindowExW(0, WC_TREEVIEWW, nullptr, WS_CHILD | WS_VISIBLE, 0, 0, 100, 100,
                                      owner.m_hWnd, nullptr, nullptr, nullptr);
        DWORD data = 0;
        for (const WCHAR* text : texts) insertInto(made, text, ++data);
        return made;
    }
    static HTREEITEM insertInto(HWND window, const WCHAR* text, LPARAM data) {
        TVINSERTSTRUCTW record{};
        record.hParent = TVI_ROOT;
        record.hInsertAfter = TVI_LAST;
        record.item.mask = TVIF_TEXT | TVIF_PARAM;
        record.item.pszText = const_cast<WCHAR*>(text);
        record.item.lParam = data;
        return reinterpret_cast<HTREEITEM>(
            ::SendMessageW(window, TVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&record)));
    }
    // The first item in pre-order with the data, by asking every item.
    HTREEITEM plainlyFound(DWORD data) {
        HTREEITEM found = nullptr;
        checktree::forEachItem(tree, [&](HTREEITEM item) {
            if (!found && tree.getItemData(item) == data) found = item;
        });
        return found;
    }
};

}  // namespace

TEST_F(CheckTreeIndex, ASecondWindowIsNotAnsweredForByTheFirst) {
    for (const DWORD data : {41U, 42U, 43U}) {
        insert(("leaf " + std::to_string(data)).c_str(), data);
        tree.setCheck(tree.findItemByData(data), 1);
    }
    ADWordArray remembered;
    tree.updateCheckedData(remembered);
    ASSERT_EQ(values(remembered), (std::vector<DWORD>{41, 42, 43}));
    tree.DestroyWindow();
    ASSERT_TRUE(tree.SubclassWindow(window({})));
    tree.updateCheckedData(remembered);
    EXPECT_EQ(values(remembered), (std::vector<DWORD>{41, 42, 43})) << "none has an item in this tree";
}

TEST_F(CheckTreeIndex, ATreeThatHadItemsBeforeItWasTakenOverIsSearched) {
    tree.DestroyWindow();
    ASSERT_TRUE(tree.SubclassWindow(window({_T("A"), _T("B")})));
    EXPECT_EQ(tree.findItemByData(2), plainlyFound(2));
    EXPECT_EQ(tree.findItemByText(_T("B"), nullptr), plainlyFound(2));
    EXPECT_NE(plainlyFound(2), nullptr);
}

TEST_F(CheckTreeIndex, WithoutAWindowNothingIsFound) {
    insert("A", 1);
    EXPECT_NE(tree.findItemByData(1), nullptr);
    EXPECT_NE(tree.findItemByText(_T("A"), nullptr), nullptr);
    tree.DestroyWindow();
    EXPECT_EQ(tree.findItemByData(1), nullptr);
    EXPECT_EQ(tree.findItemByText(_T("A"), nullptr), nullptr);
}

TEST_F(CheckTreeIndex, WhatHappenedWhileTheWindowWasLetGoIsSeen) {
    insert("A", 1);
    EXPECT_NE(tree.findItemByData(1), nullptr);
    const HWND window = tree.UnsubclassWindow();
    ::SendMessageW(window, TVM_DELETEITEM, 0, reinterpret_cast<LPARAM>(TVI_ROOT));
    ASSERT_TRUE(tree.SubclassWindow(window));
    EXPECT_EQ(tree.findItemByData(1), nullptr);
    EXPECT_EQ(tree.findItemByText(_T("A"), nullptr), nullptr);
}

TEST_F(CheckTreeIndex, GroupsThatWentWhileTheWindowWasLetGoAreMadeAgain) {
    insert("G/x", 1);
    const HWND window = tree.UnsubclassWindow();
    ::SendMessageW(window, TVM_DELETEITEM, 0, reinterpret_cast<LPARAM>(TVI_ROOT));
    ASSERT_TRUE(tree.SubclassWindow(window));
    insert("G/y", 2);
    EXPECT_EQ(dump(), "G 1 0 2\n  y 1 2 0\n");
}

TEST_F(CheckTreeIndex, GroupsAreLookedForEachTimeWhereMessagesDoNotPassHere) {
    insert("G/x", 1);
    const HWND window = tree.UnsubclassWindow();
    ASSERT_TRUE(tree.Attach(window));
    ::SendMessageW(window, TVM_DELETEITEM, 0, reinterpret_cast<LPARAM>(TVI_ROOT));
    insert("G/y", 2);
    EXPECT_EQ(tree.GetChildItem(tree.GetRootItem()), plainlyFound(2));
    EXPECT_NE(plainlyFound(2), nullptr);
}

TEST_F(CheckTreeIndex, TextsOfAnyLengthAreToldApart) {
    const std::string shared(3000, 'm');
    insert((shared + "1").c_str(), 1);
    insert((shared + "2").c_str(), 2);
    tree.SetItemData(tree.GetRootItem(), 1);  // a change by others: all items are learned anew
    EXPECT_EQ(tree.findItemByText(AString::fromUtf8(shared + "2"), nullptr), plainlyFound(2));
    EXPECT_EQ(tree.findItemByText(AString::fromUtf8(shared), nullptr), nullptr);
}

TEST_F(CheckTreeIndex, AWindowWhoseMessagesDoNotPassHereIsAskedEachTime) {
    insert("A", 1);
    EXPECT_NE(tree.findItemByData(1), nullptr);
    const HWND window = tree.UnsubclassWindow();
    ASSERT_TRUE(tree.Attach(window));
    EXPECT_NE(tree.findItemByData(1), nullptr);
    insertInto(window, _T("B"), 2);
    EXPECT_EQ(tree.findItemByData(2), plainlyFound(2));
    EXPECT_EQ(tree.findItemByText(_T("B"), nullptr), plainlyFound(2));
    ::SendMessageW(window, TVM_DELETEITEM, 0, reinterpret_cast<LPARAM>(TVI_ROOT));
    EXPECT_EQ(tree.findItemByData(2), nullptr);
}

TEST_F(CheckTreeIndex, CollapsingAndResettingAGroupTakesItsItemsAway) {
    insert("G/x", 1);
    insert("G/y", 2);
    tree.Expand(at("G"), TVE_EXPAND);
    EXPECT_NE(tree.findItemByData(1), nullptr);
    EXPECT_NE(tree.findItemByText(_T("x"), at("G")), nullptr);
    tree.Expand(at("G"), TVE_COLLAPSE | TVE_COLLAPSERESET);
    ASSERT_EQ(tree.GetChildItem(at("G")), nullptr);
    EXPECT_EQ(tree.findItemByData(1), nullptr);
    EXPECT_EQ(tree.findItemByText(_T("x"), at("G")), nullptr);
    tree.setCheck(at("G"), 1);
    EXPECT_EQ(tree.getCheck(at("G")), 3) << "no child is left that says otherwise";
}

// Paths that follow each other mostly share their groups, which are then not looked for again.
TEST_F(CheckTreeIndex, GroupsThatChangedBetweenTwoPathsAreLookedForAnew) {
    insert("G/H/x", 1);
    tree.DeleteItem(at("G"));
    insert("G/H/y", 2);
    EXPECT_EQ(tree.findItemByData(2), at("G/H/y")) << "below a group of its own";
    std::u16string other = u"I";
    TVITEMW renamed{};
    renamed.mask = TVIF_HANDLE | TVIF_TEXT;
    renamed.hItem = at("G/H");
    renamed.pszText = reinterpret_cast<WCHAR*>(other.data());
    tree.SetItem(&renamed);
    insert("G/H/z", 3);
    EXPECT_NE(tree.GetParentItem(tree.findItemByData(3)), tree.GetParentItem(tree.findItemByData(2)));
    insert("G/I/z", 4);
    EXPECT_EQ(tree.GetParentItem(tree.findItemByData(4)), tree.GetParentItem(tree.findItemByData(2)));
}

TEST_F(CheckTreeIndex, AnotherWindowHasGroupsOfItsOwn) {
    insert("G/x", 1);
    tree.DestroyWindow();
    ASSERT_TRUE(tree.SubclassWindow(window({})));
    insert("G/y", 2);
    EXPECT_EQ(tree.GetParentItem(tree.findItemByData(2)), tree.GetRootItem());
    EXPECT_EQ(tree.GetNextSiblingItem(tree.GetChildItem(tree.GetRootItem())), nullptr);
}

TEST_F(CheckTreeIndex, AfterSortingTheFirstItemIsTheFirstOfTheNewOrder) {
    insert("B", 7);
    insert("A", 7);
    EXPECT_EQ(tree.findItemByData(7), at("B"));
    tree.SendMessage(TVM_SORTCHILDREN, FALSE, 0);
    EXPECT_EQ(tree.findItemByData(7), plainlyFound(7));
}

TEST_F(CheckTreeIndex, AQuestionWhileAnItemIsInsertedDoesNotCountItTwice) {
    // Changes an item and asks, in the middle of every insertion: all items are learned then, the new one too.
    struct Curious : ACheckTree {
        ~Curious() override { DestroyWindow(); }
        LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override {
            const LRESULT result = ACheckTree::WindowProc(message, wParam, lParam);
            if (message == TVM_INSERTITEMW) {
                SetItemData(GetRootItem(), 0);
                findItemByText(_T("?"), nullptr);
            }
            return result;
        }
    } curious;
    ASSERT_TRUE(curious.Create(WS_CHILD | WS_VISIBLE, CRect(0, 0, 100, 100), &owner, 7));
    curious.initImageLists();
    HTREEITEM x = curious.insertItem(_T("G/x"), 1);
    HTREEITEM y = curious.insertItem(_T("G/y"), 2);
    curious.setCheck(x, 1);
    EXPECT_EQ(curious.getCheck(curious.GetRootItem()), 5);
    curious.setCheck(y, 1);
    EXPECT_EQ(curious.getCheck(curious.GetRootItem()), 3) << "both of its two children are checked";
}
