// A page's tree: which conditions it shows, and whose checks come back when it is filled anew.
#include "conditions/object_condition.h"
#include "kzcore/document/application.h"
#include "support.h"

using test::Names;

namespace {

class FillTree : public test::CheckTree {
protected:
    AApplication application;
    test::Page page{&tree};
    std::uint64_t first = 0;  // the serial of the first condition

    void SetUp() override {
        CheckTree::SetUp();
        first = page.add("Group/used", "AOval", 1, 0).getSerial();
        page.add("Group/selected", "AFan", 1, 1);
        page.add("unused", "AText", 0, 0);
        page.add("only selected", "ALabel", 0, 1);
    }

    Names shown() {
        Names texts;
        checktree::forEachItem(tree, [&](HTREEITEM item) { texts.push_back(text(item)); });
        return texts;
    }
    void check(const std::string& path) { tree.setCheck(at(path), 1); }
    Names checked(int stop = 1) {
        AObArray out;
        page.getCheckedConditions(out, stop);
        return test::Page::pathsOf(out);
    }
    Names unchecked(int stop = 1) {
        AObArray out;
        page.getUncheckedConditions(out, stop);
        return test::Page::pathsOf(out);
    }
};

}  // namespace

TEST_F(FillTree, ShowsWhatTheDocumentHas) {
    page.fillTree(0);
    EXPECT_EQ(shown(), (Names{"Group", "used", "selected"}));
}

TEST_F(FillTree, ShowsWhatTheSelectionHas) {
    page.fillTree(1);
    EXPECT_EQ(shown(), (Names{"Group", "selected", "only selected"}));
}

TEST_F(FillTree, ShowsEverythingWithShowAll) {
    page.showAll = 1;
    for (const int selectionOnly : {0, 1}) {
        page.fillTree(selectionOnly);
        EXPECT_EQ(shown(), (Names{"Group", "used", "selected", "unused", "only selected"}));
    }
}

TEST_F(FillTree, EntriesCarryTheSerialsOfTheirConditions) {
    page.fillTree(0);
    EXPECT_EQ(tree.getItemData(at("Group")), 0u);
    EXPECT_EQ(tree.getItemData(at("Group/used")), first);
    EXPECT_EQ(tree.getItemData(at("Group/selected")), first + 1);
}

TEST_F(FillTree, EverythingEndsExpandedAndTheFirstItemShows) {
    page.fillTree(0);
    EXPECT_TRUE(tree.GetItemState(at("Group"), TVIS_EXPANDED) & TVIS_EXPANDED);
    EXPECT_EQ(tree.GetFirstVisibleItem(), at("Group"));
}

TEST_F(FillTree, RedrawsTheTreeAgainWhenAllIsThere) {
    tree.recording = true;
    page.fillTree(0);
    ASSERT_GT(tree.messages.size(), 4u);
    EXPECT_EQ(tree.messages.front(), "SETREDRAW 0");
    EXPECT_EQ(tree.messages.back(), "SETREDRAW 1");
}

TEST_F(FillTree, WithoutAWindowNothingHappens) {
    ACheckTree windowless;
    test::Page other(&windowless);
    other.add("a");
    other.checkedIds.Add(7);
    other.fillTree(0);
    EXPECT_EQ(std::vector<DWORD>(other.checkedIds.begin(), other.checkedIds.end()), std::vector<DWORD>{7});
    AObArray out;
    other.getCheckedConditions(out, 1);
    other.getUncheckedConditions(out, 1);
    EXPECT_EQ(out.GetSize(), 0);
    other.allTypes = 1;
    other.getCheckedConditions(out, 1);
    EXPECT_EQ(out.GetSize(), 1);
}

TEST_F(FillTree, ChecksComeBackAlsoThoseThatWereNotShownForAWhile) {
    page.fillTree(0);
    check("Group/used");
    page.fillTree(1);
    EXPECT_EQ(checked(), Names{});
    check("only selected");
    page.fillTree(0);
    EXPECT_EQ(checked(), Names{"Group/used"});
    EXPECT_EQ(tree.getCheck(at("Group")), 5);
    page.fillTree(1);
    EXPECT_EQ(checked(), Names{"only selected"});
    page.showAll = 1;
    page.fillTree(0);
    EXPECT_EQ(checked(), (Names{"Group/used", "only selected"}));
}

TEST_F(FillTree, AnUncheckedEntryStaysUnchecked) {
    page.fillTree(0);
    check("Group/used");
    page.fillTree(0);
    tree.setCheck(at("Group/used"), 0);
    page.fillTree(0);
    EXPECT_EQ(checked(), Names{});
}

TEST_F(FillTree, ADisabledTreeIsFilledCheckedAndKeepsWhatWasRemembered) {
    page.fillTree(0);
    check("Group/used");
    page.fillTree(0);
    tree.EnableWindow(FALSE);
    page.fillTree(0);
    EXPECT_EQ(tree.isAllChecked(), 1);
    EXPECT_EQ(tree.getCheck(at("Group/selected")), 3);
    tree.EnableWindow(TRUE);
    tree.setChecks(page.checkedIds, 1, nullptr);
    EXPECT_EQ(checked(), Names{"Group/used"});
}

TEST_F(FillTree, CheckedConditionsComeInTheOrderOfTheList) {
    page.showAll = 1;
    page.fillTree(0);
    check("only selected");
    check("unused");
    check("Group/selected");
    EXPECT_EQ(checked(), (Names{"Group/selected", "unused", "only selected"}));
    EXPECT_EQ(unchecked(), Names{"Group/used"});
    page.sortConditions();
    EXPECT_EQ(checked(), (Names{"Group/selected", "only selected", "unused"}));
}

TEST_F(FillTree, AGroupWithAConditionStandsForItsEntries) {
    page.add("Group", "AGroup");
    page.fillTree(0);
    check("Group");
    EXPECT_EQ(checked(1), Names{"Group"});
    EXPECT_EQ(checked(0), (Names{"Group/used", "Group/selected"}));
    tree.setCheck(at("Group"), 0);
    EXPECT_EQ(unchecked(1), Names{"Group"});
    EXPECT_EQ(unchecked(0), (Names{"Group/used", "Group/selected"}));
}

TEST_F(FillTree, WithAllTypesEveryConditionIsCheckedWhateverTheTreeShows) {
    page.fillTree(0);
    page.allTypes = 1;
    EXPECT_EQ(checked(), (Names{"Group/used", "Group/selected", "unused", "only selected"}));
    EXPECT_EQ(unchecked(), Names{});
}

// The tree keeps 32 bits of a serial, the condition all of them: only the one whose whole serial the data is.
TEST_F(FillTree, ASerialBeyond32BitsIsNotTakenForTheDataOfAnItem) {
    const std::uint64_t next = page.add("near").getSerial() + 1;
    const test::LaterSerials later(test::kBeyond32Bits - (next - first));
    EXPECT_EQ(page.add("far").getSerial(), first + test::kBeyond32Bits);
    page.fillTree(0);
    EXPECT_EQ(tree.getItemData(at("far")), first);
    check("far");
    EXPECT_EQ(checked(), Names{"Group/used"});
    check("near");
    EXPECT_EQ(unchecked(), (Names{"Group/used", "Group/selected"}));
    page.allTypes = 1;
    EXPECT_EQ(checked().back(), "far");
}

TEST_F(FillTree, CollectedConditionsAreAppended) {
    page.fillTree(0);
    check("Group/used");
    AObArray out;
    page.getCheckedConditions(out, 1);
    page.getUncheckedConditions(out, 1);
    EXPECT_EQ(test::Page::pathsOf(out), (Names{"Group/used", "Group/selected"}));
}

TEST_F(FillTree, GroupsAreAnsweredWithTheFolderThatFits) {
    page.fillTree(0);
    NMHDR header{};
    LRESULT result = 77;
    struct Row {
        bool expanded, enabled;
        int image;
    };
    for (const Row row :
         {Row{false, true, 2}, Row{true, true, 4}, Row{false, false, 3}, Row{true, false, 5}}) {
        tree.Expand(at("Group"), row.expanded ? TVE_EXPAND : TVE_COLLAPSE);
        tree.EnableWindow(row.enabled);
        TVITEMW item{};
        item.hItem = at("Group");
        item.mask = TVIF_IMAGE | TVIF_SELECTEDIMAGE;
        page.getItemDispInfo(&header, &item, &result);
        EXPECT_EQ(item.iImage, row.image);
        EXPECT_EQ(item.iSelectedImage, row.image);
    }
    TVITEMW item{};
    item.hItem = at("Group");
    item.iImage = item.iSelectedImage = 9;
    page.getItemDispInfo(&header, &item, &result);
    EXPECT_EQ(item.iImage, 9);
    EXPECT_EQ(item.iSelectedImage, 9);
    item.mask = TVIF_SELECTEDIMAGE;
    page.getItemDispInfo(&header, &item, &result);
    EXPECT_EQ(item.iImage, 9);
    EXPECT_EQ(item.iSelectedImage, 5);
    EXPECT_EQ(result, 77);
}
