#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "support/drawing.h"

using test::Drawing;
using Objects = std::vector<AObject*>;

TEST(Selection, HoldsEachObjectOnceInOrderOfSelection) {
    Drawing drawing;
    ALayer* layer = drawing.layer();
    AObject* a = drawing.add(layer, _T("AOval"));
    AObject* b = drawing.add(layer, _T("AOval"));
    AObList list;
    for (AObject* object : {b, a, b}) list.AddTail(object);
    drawing.selection().addSelection(&list, 0, 1);
    EXPECT_EQ(drawing.selected(), (Objects{b, a}));
    EXPECT_TRUE(drawing.selection().contains(a));
    drawing.selection().resetSelection(0);
    EXPECT_EQ(drawing.selection().getCount(), 0);
    EXPECT_FALSE(drawing.selection().contains(a));
}

TEST(Selection, AsksForItsHandlesOnlyWhenToldToAndWhenSomethingChanges) {
    Drawing drawing;
    AObject* a = drawing.add(drawing.layer(), _T("AOval"));
    AObject* b = drawing.add(drawing.layer(), _T("AOval"));
    ASelection& selection = drawing.selection();
    AObList both;
    both.AddTail(b);
    both.AddTail(a);
    unsigned long long redraws = selection.getRedrawCount();
    unsigned long long revision = selection.getRevision();
    const auto expect = [&](unsigned changes, unsigned asked, const char* what) {
        EXPECT_EQ(selection.getRevision(), revision += changes) << what;
        EXPECT_EQ(selection.getRedrawCount(), redraws += asked) << what;
    };
    selection.resetSelection(1);
    expect(0, 0, "nothing was selected");
    selection.addSelection(&both, 0, 1);
    expect(1, 1, "added");
    selection.addSelection(&both, 0, 1);
    expect(0, 0, "selected already");
    selection.sortSelection(0);
    expect(1, 0, "sorted in silence");
    selection.sortSelection(1);
    expect(0, 0, "in order already");
    selection.addSelection(&both, 1, 1);
    expect(1, 1, "both left");
    selection.addSelection(&both, 0, 0);
    expect(1, 0, "added in silence");
    selection.sortSelection(1);
    expect(1, 1, "sorted");
    selection.resetSelection(0);
    expect(1, 0, "emptied in silence");
    selection.addSelection(a);
    selection.resetSelection(1);
    expect(2, 1, "one added in silence, and emptied");
}

TEST(Selection, AddingWithToggleTakesOutWhatIsSelected) {
    Drawing drawing;
    ALayer* layer = drawing.layer();
    AObject* a = drawing.add(layer, _T("AOval"));
    AObject* b = drawing.add(layer, _T("AOval"));
    drawing.select({a});
    AObList list;
    list.AddTail(a);
    list.AddTail(b);
    drawing.selection().addSelection(&list, 1, 1);
    EXPECT_EQ(drawing.selected(), Objects{b});
}

TEST(Selection, IsHomogeneousWithObjectsOfOneClassOnly) {
    Drawing drawing;
    ALayer* layer = drawing.layer();
    AObject* oval = drawing.add(layer, _T("AOval"));
    AObject* otherOval = drawing.add(layer, _T("AOval"));
    AObject* text = drawing.add(layer, _T("AText"));
    EXPECT_FALSE(drawing.selection().isHomogeneous());
    drawing.select({oval});
    EXPECT_TRUE(drawing.selection().isHomogeneous());
    drawing.select({oval, otherOval});
    EXPECT_TRUE(drawing.selection().isHomogeneous());
    drawing.select({oval, otherOval, text});
    EXPECT_FALSE(drawing.selection().isHomogeneous());
}

TEST(Selection, GivesItsObjectsAsAList) {
    Drawing drawing;
    AObject* a = drawing.add(drawing.layer(), _T("AOval"));
    AObList list;
    EXPECT_EQ(drawing.selection().getSelectedChildren(&list), 0);
    drawing.select({a});
    EXPECT_NE(drawing.selection().getSelectedChildren(&list), 0);
    EXPECT_EQ(list.GetCount(), 1);
    EXPECT_EQ(list.GetHead(), a);
}

// Whatever is selected at which depth: the plain way lists all objects and keeps those that are selected.
TEST(Selection, SortingARandomSelectionFollowsTheListOfAllObjects) {
    std::mt19937 random(5);
    for (int round = 0; round < 40; ++round) {
        Drawing drawing;
        std::vector<AParent*> parents{drawing.layer(), drawing.layer(), drawing.masterLayer()};
        Objects selection;
        for (int i = 0; i < 60; ++i) {
            AParent* parent = parents[random() % parents.size()];
            AObject* object = drawing.add(parent, random() % 3 == 0 ? _T("AGroup") : _T("AOval"));
            if (object->asParent()) parents.push_back(object->asParent());
            if (random() % (1 + static_cast<unsigned>(round) % 8) == 0) selection.push_back(object);
        }
        std::ranges::shuffle(selection, random);
        drawing.selection().restore(selection);
        AObList all;
        drawing.document.getSecondaryDatabase()->getAllObjects(all, 0);
        drawing.document.getDatabase().getAllObjects(all, 0);
        Objects expected;
        for (ARoot* entry : all) {
            auto* object = static_cast<AObject*>(entry);
            if (drawing.selection().contains(object)) expected.push_back(object);
        }
        drawing.selection().sortSelection(1);
        ASSERT_EQ(drawing.selected(), expected) << round;
    }
}

TEST(Selection, SortingPutsItIntoDrawingOrderMasterLayersFirst) {
    Drawing drawing;
    ALayer* layer = drawing.layer();
    AParent* group = drawing.addParent(layer, _T("AGroup"));
    AObject* top = drawing.add(layer, _T("AOval"));
    AObject* member = drawing.add(group, _T("AOval"));
    AObject* master = drawing.add(drawing.masterLayer(), _T("AOval"));
    AObject* loose = drawing.document.createObject(*findClass(_T("AOval")), "loose");
    Objects expected{master, group, member, top, loose};
    Objects shuffled = expected;
    std::mt19937 random(3);
    for (int i = 0; i < 20; ++i) {
        std::ranges::shuffle(shuffled, random);
        drawing.selection().restore(shuffled);
        drawing.selection().sortSelection(1);
        EXPECT_EQ(drawing.selected(), expected);
    }
}
