// What the View Filter dialog lists, before it has a window.
#include <gtest/gtest.h>

#include <random>

#include "conditions/object_condition.h"
#include "dialog.h"

using test::OpenedDialog;
using Lines = std::vector<std::string>;

namespace {

class DialogEntries : public testing::Test {
protected:
    test::Drawing drawing;
    ALayer* layer = drawing.layer();
    AViewFilterTool tool;

    APaintTable& paint() { return drawing.document.getPaint(); }
    AObject* add(ABrush* brush, APen* pen = nullptr) {
        AObject* object = drawing.add(layer, _T("AOval"));
        object->setBrush(brush);
        object->setPen(pen);
        return object;
    }
    Lines entries() { return told(OpenedDialog(&tool, nullptr, nullptr)); }
};

Lines kClasses{"RGB Color [ARGBColorItem]",   "CMYK Color [ACMYKColorItem]",   "Gray Color [AGrayColorItem]",
               "Spot Color [ASpotColorItem]", "Gradient [AGradientBrushItem]", "Pattern [APatternBrushItem]"};

// The classes, those of the given places being used by the document, and more lines.
Lines classesAnd(std::initializer_list<int> used, const Lines& more) {
    Lines lines = kClasses;
    for (const int place : used) lines[static_cast<std::size_t>(place)] += " used";
    lines.insert(lines.end(), more.begin(), more.end());
    return lines;
}

}  // namespace

TEST_F(DialogEntries, AreTheColorAndBrushClassesOfTheHost) {
    EXPECT_EQ(entries(), kClasses);
}

TEST_F(DialogEntries, AreTheColorsOfFillsAndStrokesInDrawingOrder) {
    add(paint().rgbBrush(0xff0000), paint().rgbPen(0x0000ff));
    add(paint().rgbBrush(0x0000ff), paint().rgbPen(0x123456));
    EXPECT_EQ(entries(),
              classesAnd({0}, {"RGB Color/red used", "RGB Color/blue used", "RGB Color/#123456 used"}));
}

TEST_F(DialogEntries, AreTheGradientsAndPatternsToo) {
    add(paint().gradientBrush("sea"), paint().brushPen(paint().patternBrush("waves")->getBrushItem()));
    EXPECT_EQ(entries(), classesAnd({4, 5}, {"Gradient/sea used", "Pattern/waves used"}));
}

TEST_F(DialogEntries, OfNestedHiddenAndLockedObjectsCount) {
    AParent* group = drawing.addParent(layer, _T("AGroup"));
    AObject* inside = drawing.add(group, _T("AOval"));
    inside->setBrush(paint().rgbBrush(0xff0000));
    inside->setObjectFlags(kObjectHidden, true);
    AObject* master = drawing.add(drawing.masterLayer(), _T("AOval"));
    master->setBrush(paint().rgbBrush(0x0000ff));
    EXPECT_EQ(entries(), classesAnd({0}, {"RGB Color/red used"})) << "master objects do not";
}

TEST_F(DialogEntries, OfTwoBrushesWithoutNamesAreCalledAfterTheirSerials) {
    const auto first = test::makeGradient(_T(""));
    const auto second = test::makeGradient(_T(""));
    ABrush firstBrush(first.get()), secondBrush(second.get());
    add(&firstBrush);
    add(&secondBrush);
    add(&firstBrush);
    const OpenedDialog dialog(&tool, nullptr, nullptr);
    ASSERT_EQ(dialog.getConditions().GetSize(), 9) << "the first one's brush twice: the names differ";
    for (int place = 6; place < 9; ++place) {
        const ACondition& condition = test::conditionAt(dialog.getConditions(), place);
        EXPECT_EQ(condition.path.toUtf8(), "Gradient/brush" + std::to_string(condition.getSerial()));
        EXPECT_EQ(condition.treeFlags, kTreeItemExpanded);
    }
}

TEST_F(DialogEntries, OfBrushesWithoutNamesAreNumberedByTheLow32BitsOfTheirSerials) {
    const auto unnamed = test::makeGradient(_T(""));
    ABrush brush(unnamed.get());
    add(&brush);
    const test::LaterSerials later(test::kBeyond32Bits);
    const OpenedDialog dialog(&tool, nullptr, nullptr);
    const ACondition& condition = test::conditionAt(dialog.getConditions(), 6);
    EXPECT_EQ(condition.path.toUtf8(),
              "Gradient/brush" + std::to_string(condition.getSerial() - test::kBeyond32Bits));
    EXPECT_EQ(dialog.checked()[0], condition.getSerial() - test::kBeyond32Bits) << "as the tree keeps it";
}

TEST_F(DialogEntries, OfOnePathAndDifferentColorsGetNumbers) {
    std::vector<test::Held<AColorItem>> colors;
    std::vector<std::unique_ptr<ABrush>> brushes;
    std::vector<test::Held<ASolidBrushItem>> solids;
    for (const COLORREF display : {1, 2, 3, 2}) {
        colors.push_back(test::makeColor(_T("Sea"), display));
        solids.push_back(test::makeSolid(colors.back().get()));
        brushes.push_back(std::make_unique<ABrush>(solids.back().get()));
        add(brushes.back().get());
    }
    EXPECT_EQ(entries(),
              classesAnd({0}, {"RGB Color/Sea used", "RGB Color/Sea_1 used", "RGB Color/Sea_2 used"}))
        << "the last one is equal to the second";
}

TEST_F(DialogEntries, OfAClassTakeInLaterOnesOfTheirPath) {
    OpenedDialog dialog(&tool, nullptr, nullptr);
    auto more = test::onClass(_T("AOtherColorItem"));
    more->path = AItemPath(_T("RGB Color"));
    more->inSelection = 1;
    dialog.addCondition(more.release());
    Lines expected = kClasses;
    expected[0] += " [AOtherColorItem]";
    EXPECT_EQ(told(dialog), expected);
    EXPECT_EQ(test::conditionAt(dialog.getConditions(), 0).inSelection, 1);
}

TEST_F(DialogEntries, OfItemsDoNotTakeInLaterOnes) {
    const auto red = test::makeColor(_T("red"), RGB(255, 0, 0));
    OpenedDialog dialog(&tool, nullptr, nullptr);
    for (int i = 0; i < 2; ++i) {
        auto item = std::make_unique<AReferCondition>(_T("RGB Color/red"), red.get());
        item->inSelection = i;
        dialog.addCondition(item.release());
    }
    ASSERT_EQ(dialog.getConditions().GetSize(), 7);
    EXPECT_EQ(test::conditionAt(dialog.getConditions(), 6).inSelection, 0);
    EXPECT_EQ(red->getReferenceCount(), 2) << "that of the test and that of the entry";
}

TEST_F(DialogEntries, OfOtherKindsAreRenamedOrDropped) {
    OpenedDialog dialog(&tool, nullptr, nullptr);
    dialog.addCondition(new AObjectCondition(_T("RGB Color"), _T("AOval")));
    dialog.addCondition(new ACondition(_T("RGB Color"), _T("ARGBColorItem")));
    EXPECT_EQ(told(dialog), classesAnd({}, {"RGB Color_1 [AOval]"}));
}

TEST_F(DialogEntries, HoldAReferenceOnTheirItems) {
    const AObject* object = add(paint().rgbBrush(0xff0000));
    AObList items;
    object->getAllReferItems(items, 0x2003);
    const auto* red = dynamic_cast<const AReferItem*>(items.GetHead());
    const int before = red->getReferenceCount();
    {
        const OpenedDialog dialog(&tool, nullptr, nullptr);
        EXPECT_EQ(red->getReferenceCount(), before + 1);
    }
    EXPECT_EQ(red->getReferenceCount(), before);
}

namespace {

// Colours that are equal, colours of one name, names that look numbered, brushes with and without names.
struct RandomPaint {
    std::vector<test::Held<AReferItem>> items;
    std::vector<std::unique_ptr<ABrush>> brushes;
    std::vector<std::unique_ptr<APen>> pens;

    explicit RandomPaint(std::mt19937& random) {
        static const WCHAR* const kNames[] = {_T("red"), _T("red_1"), _T("red_2"), _T("red_1_1"), _T("")};
        static const WCHAR* const kColors[] = {_T("ARGBColorItem"), _T("ACMYKColorItem"),
                                               _T("ASpotColorItem")};
        const auto name = [&] { return kNames[random() % 5]; };
        for (int i = 0; i < 12; ++i) {
            AColorItem* color = test::makeColor(name(), random() % 4, kColors[random() % 3]).release();
            items.emplace_back(color);
            keep(new ASolidBrushItem(color));
            items.emplace_back(new APenItem(0, color, nullptr));
            pens.push_back(std::make_unique<APen>(static_cast<APenItem*>(items.back().get())));
        }
        for (int i = 0; i < 6; ++i) {
            ABrushItem* brush = new AGradientBrushItem(name());
            keep(brush);
            keep(new APatternBrushItem(name()));
            items.emplace_back(new APenItem(0, nullptr, brush));
            pens.push_back(std::make_unique<APen>(static_cast<APenItem*>(items.back().get())));
        }
    }

private:
    void keep(ABrushItem* brush) {
        items.emplace_back(brush);
        brushes.push_back(std::make_unique<ABrush>(brush));
    }
};

// A filter of conditions on a few of the entries, on classes, and on kinds that filters do not know.
void makeRandomFilter(std::mt19937& random, const test::PlainEntries& entries, AViewAttrFilter& filter) {
    std::vector<test::Condition> made;
    AObArray lists[2];
    for (AObArray& list : lists) {
        for (unsigned i = random() % 6; i > 0; --i) {
            const ACondition& like = *entries.held[random() % entries.held.size()];
            made.push_back(random() % 8 == 0 ? std::make_unique<ACondition>(like)
                                             : test::Condition(like.clone()));
            list.Add(made.back().get());
        }
    }
    filter.assign(lists[0], lists[1], random() % 4 == 0, random() % 2 == 0);
}

struct Compared {
    std::string path;
    std::uint64_t serial;
    int inDocument;
    DWORD treeFlags;
    const AReferItem* item;
    test::Names classes;
    bool operator==(const Compared&) const = default;
};

Compared compared(const ACondition& condition, std::uint64_t base) {
    const auto* refers = dynamic_cast<const AReferCondition*>(&condition);
    return {condition.path.toUtf8(),
            condition.getSerial() - base,
            condition.inDocument,
            condition.treeFlags,
            refers ? refers->getReferItem() : nullptr,
            test::namesOf(condition)};
}

std::uint64_t nextSerial() {
    return ACondition(AString(), nullptr).getSerial() + 1;
}

std::vector<DWORD> minus(const auto& data, std::uint64_t base) {
    std::vector<DWORD> values;
    for (const DWORD value : data) values.push_back(value - static_cast<DWORD>(base));
    return values;
}

}  // namespace

// Same entries, order, names, marks and serials as the plain rules give, and the same ticks for any filter.
// Names that hold a serial are compared where both counters stand alike: unnamed brushes are left to the test
// above.
TEST_F(DialogEntries, AreThoseOfThePlainRules) {
    for (unsigned seed = 1; seed <= 150; ++seed) {
        std::mt19937 random(seed);
        test::Drawing own;
        const RandomPaint paints(random);
        ALayer* top = own.layer();
        for (unsigned i = random() % 60; i > 0; --i) {
            AObject* object = own.add(top, _T("AOval"));
            if (random() % 4 != 0) object->setBrush(paints.brushes[random() % paints.brushes.size()].get());
            if (random() % 2 != 0) object->setPen(paints.pens[random() % paints.pens.size()].get());
        }
        test::PlainEntries plain;
        const std::uint64_t plainBase = nextSerial();
        plain.addColorClasses();
        plain.addDocumentColors(own.document.getDatabase());
        const std::uint64_t plainEnd = nextSerial() - plainBase;
        AViewAttrFilter filter;
        makeRandomFilter(random, plain, filter);
        plain.load(&filter);

        const std::uint64_t base = nextSerial();
        OpenedDialog dialog(&tool, nullptr, nullptr);
        const std::uint64_t end = nextSerial() - base;
        EXPECT_EQ(end, plainEnd) << "as many serials are taken, seed " << seed;
        ASSERT_EQ(dialog.getConditions().GetSize(), static_cast<int>(plain.held.size())) << "seed " << seed;
        for (int i = 0; i < dialog.getConditions().GetSize(); ++i) {
            Compared expected = compared(*plain.held[static_cast<std::size_t>(i)], plainBase);
            Compared actual = compared(test::conditionAt(dialog.getConditions(), i), base);
            const auto without = [](Compared& one, std::uint64_t from) {
                const std::string serial = "brush" + std::to_string(one.serial + from);
                if (one.path.ends_with(serial))
                    one.path.replace(one.path.size() - serial.size(), serial.size(), "brush*");
            };
            without(expected, plainBase);
            without(actual, base);
            ASSERT_EQ(actual.path, expected.path) << "seed " << seed << ", entry " << i;
            ASSERT_TRUE(actual == expected) << "seed " << seed << ", entry " << i << ": " << actual.path;
        }
        const std::uint64_t ticksBase = nextSerial();
        const OpenedDialog withFilter(&tool, &filter, nullptr);
        // The saved copy of the filter takes serials only behind the entries.
        EXPECT_EQ(minus(withFilter.checked(), ticksBase), minus(plain.checked, plainBase)) << "seed " << seed;
        EXPECT_EQ(minus(withFilter.unchecked(), ticksBase), minus(plain.unchecked, plainBase))
            << "seed " << seed;
    }
}

TEST_F(DialogEntries, KeepACopyOfTheFilter) {
    const AObject* object = add(paint().rgbBrush(0xff0000));
    AObList items;
    object->getAllReferItems(items, 0x2003);
    AViewAttrFilter filter;
    filter.hideCondition(test::on(dynamic_cast<AReferItem*>(items.GetHead())).get());
    const OpenedDialog dialog(&tool, &filter, nullptr);
    ASSERT_NE(dialog.saved(), nullptr);
    EXPECT_NE(dialog.saved(), &filter);
    EXPECT_TRUE(dialog.saved()->isSame(filter));
    EXPECT_EQ(OpenedDialog(&tool, nullptr, nullptr).saved(), nullptr);
}

TEST_F(DialogEntries, AreTheClassesWithoutAView) {
    drawing.application.setActiveView(nullptr);
    EXPECT_EQ(entries(), kClasses);
}
