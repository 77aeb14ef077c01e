// Objects by their stroke.
#include <gtest/gtest.h>

#include "conditions/stroke_condition.h"
#include "kzcore/document/object.h"
#include "support.h"

using test::cloneOf;
using test::Foreign;
using test::makeColor;
using test::makeGradient;
using test::makePen;
using test::Names;
using test::namesOf;

namespace {

constexpr COLORREF kRed = RGB(255, 0, 0);

struct StrokeCondition : testing::Test {
    test::Held<AColorItem> red = makeColor(_T("red"), kRed);
    test::Held<AColorItem> equalRed = makeColor(_T("red"), kRed);
    test::Held<AGradientBrushItem> gradient = makeGradient(_T("g"));
    test::Held<APenItem> redPen = makePen(red.get());
    test::Held<APenItem> otherRedPen = makePen(red.get(), 3);
    test::Held<APenItem> equalRedPen = makePen(equalRed.get());
    test::Held<APenItem> gradientPen{new APenItem(APenItem::kStyleSolid, nullptr, gradient.get())};
    test::Held<APenItem> barePen = makePen(nullptr);
    test::Held<APenItem> undrawnPen = makePen(red.get(), 5);
    Foreign foreign{_T("APenItem")};

    // The strokes of the objects that the condition accepts; "none" is an object without pen, "empty" one
    // whose pen has no item.
    Names acceptedBy(const ACondition& condition) {
        Names accepted;
        const auto ask = [&](const char* name, APen* pen) {
            AObject object(*findClass(_T("AOval")));
            object.setPen(pen);
            if (condition.isMatch(&object)) accepted.emplace_back(name);
        };
        const std::pair<const char*, APenItem*> strokes[] = {{"red", redPen.get()},
                                                             {"otherRed", otherRedPen.get()},
                                                             {"equalRed", equalRedPen.get()},
                                                             {"gradient", gradientPen.get()},
                                                             {"bare", barePen.get()},
                                                             {"undrawn", undrawnPen.get()},
                                                             {"empty", nullptr}};
        for (const auto& [name, item] : strokes) {
            APen pen(item);
            ask(name, &pen);
        }
        ask("none", nullptr);
        EXPECT_FALSE(condition.isMatch(nullptr));
        EXPECT_FALSE(condition.isMatch(&foreign));
        EXPECT_FALSE(condition.isMatch(redPen.get())) << "only objects have strokes";
        return accepted;
    }
};

}  // namespace

TEST_F(StrokeCondition, NoStrokeAcceptsObjectsWithoutAPenAndWithOneThatDrawsNothing) {
    EXPECT_EQ(acceptedBy(AStrokeCondition(_T("No stroke"), nullptr, nullptr)),
              (Names{"undrawn", "empty", "none"}));
    AGroup group(*findClass(_T("AGroup")));
    EXPECT_TRUE(AStrokeCondition(_T("No stroke"), nullptr, nullptr).isMatch(&group));
}

TEST_F(StrokeCondition, NoStrokeDoesNotAskForItsColor) {
    EXPECT_EQ(acceptedBy(AStrokeCondition(_T("No stroke"), nullptr, red.get())),
              (Names{"undrawn", "empty", "none"}));
}

TEST_F(StrokeCondition, APenClassAcceptsEveryDrawnStroke) {
    EXPECT_EQ(acceptedBy(AStrokeCondition(_T("Pen"), _T("APenItem"), nullptr)),
              (Names{"red", "otherRed", "equalRed", "gradient", "bare"}));
    EXPECT_EQ(acceptedBy(AStrokeCondition(_T("Pen"), _T("apenitem"), nullptr)), Names{});
    EXPECT_EQ(acceptedBy(AStrokeCondition(_T("Pen"), _T("ARGBColorItem"), nullptr)), Names{});
    EXPECT_EQ(acceptedBy(AStrokeCondition(_T("Pen"), _T(""), nullptr)), Names{});
}

TEST_F(StrokeCondition, AColorAcceptsPensOfThisVeryItemAndNotOfAnEqualOne) {
    EXPECT_EQ(acceptedBy(AStrokeCondition(_T("red"), _T("APenItem"), red.get())), (Names{"red", "otherRed"}));
    EXPECT_EQ(acceptedBy(AStrokeCondition(_T("red"), _T("APenItem"), equalRed.get())), Names{"equalRed"});
    EXPECT_EQ(acceptedBy(AStrokeCondition(_T("red"), _T("AOval"), red.get())), Names{});
}

TEST_F(StrokeCondition, ConstructionAndResetTakeTheColorWithoutCountingIt) {
    AStrokeCondition condition(_T("a"), _T("APenItem"), red.get());
    EXPECT_EQ(condition.colorItem, red.get());
    EXPECT_EQ(namesOf(condition), Names{"APenItem"});
    condition.inDocument = 1;
    condition.inSelection = 1;
    condition.reset(_T("b"), _T("AOval"), equalRed.get());
    EXPECT_EQ(condition.colorItem, equalRed.get());
    EXPECT_EQ(condition.path.toUtf8(), "b");
    EXPECT_EQ(namesOf(condition), Names{"AOval"});
    EXPECT_EQ(condition.inDocument, 0);
    EXPECT_EQ(condition.inSelection, 1);
    condition.reset(_T("b"), nullptr, nullptr);
    EXPECT_EQ(condition.colorItem, nullptr);
    EXPECT_EQ(namesOf(condition), Names{});
    EXPECT_EQ(red->getReferenceCount(), 4) << "its maker's and three pens'";
    EXPECT_EQ(equalRed->getReferenceCount(), 2);
}

TEST_F(StrokeCondition, ACopyHasNoColor) {
    const AStrokeCondition source(_T("red"), _T("APenItem"), red.get());
    const AStrokeCondition copy(source);
    EXPECT_EQ(copy.colorItem, nullptr);
    EXPECT_EQ(copy.getSerial(), source.getSerial());
    EXPECT_EQ(acceptedBy(copy), (Names{"red", "otherRed", "equalRed", "gradient", "bare"}));
}

TEST_F(StrokeCondition, ItsCloneIsAPlainEntryThatMatchesNothing) {
    for (const WCHAR* className :
         {static_cast<const WCHAR*>(_T("APenItem")), static_cast<const WCHAR*>(nullptr)}) {
        const AStrokeCondition source(_T("Pen"), className, nullptr);
        const auto clone = cloneOf(source);
        EXPECT_EQ(typeid(*clone), typeid(ACondition));
        EXPECT_EQ(acceptedBy(*clone), Names{});
        EXPECT_EQ(clone->getSerial(), source.getSerial());
        EXPECT_EQ(namesOf(*clone), namesOf(source));
    }
}

TEST_F(StrokeCondition, HasCommonClassAsksForClassesAlone) {
    const AStrokeCondition one(_T("a"), _T("APenItem"), red.get());
    EXPECT_TRUE(one.hasCommonClass(AStrokeCondition(_T("a"), _T("APenItem"), equalRed.get())));
    EXPECT_TRUE(one.hasCommonClass(AStrokeCondition(_T("a"), _T("APenItem"), nullptr)));
    EXPECT_FALSE(one.hasCommonClass(AStrokeCondition(_T("a"), _T("AOval"), red.get())));
    EXPECT_FALSE(AStrokeCondition(_T("No stroke"), nullptr, nullptr)
                     .hasCommonClass(AStrokeCondition(_T("No stroke"), nullptr, nullptr)));
}
