// How a page files the conditions that it is given.
#include <random>

#include "conditions/fill_condition.h"
#include "conditions/object_condition.h"
#include "conditions/refer_condition.h"
#include "conditions/stroke_condition.h"
#include "support.h"

using test::makeColor;
using test::makeGradient;
using test::makeSolid;
using test::Names;
using test::Page;

namespace {

// The rule as loops over the whole list.
class PlainList {
public:
    ~PlainList() {
        for (ACondition* condition : held) delete condition;
    }

    void add(ACondition* added) {
        const AString base = added->path;
        int counter = 0;
        for (std::size_t i = 0; i < held.size();) {
            if (held[i]->path != added->path) {
                ++i;
                continue;
            }
            if (added->hasCommonClass(*held[i])) {
                held[i]->merge(*added);
                delete added;
                return;
            }
            AString numbered = base;
            numbered += _T("_");
            numbered.AppendNumber(++counter);
            added->path = AItemPath(numbered);
            i = 0;
        }
        held.push_back(added);
    }

    std::vector<ACondition*> held;
};

// Counts how many of its kind are alive.
class Counted : public ACondition {
public:
    Counted(const WCHAR* itemPath, const WCHAR* className) : ACondition(itemPath, className) { ++alive; }
    ~Counted() override { --alive; }
    static int alive;
};
int Counted::alive = 0;

}  // namespace

TEST(AddCondition, TheSamePathWithoutACommonClassGetsANumber) {
    Page page(nullptr);
    page.add("Fill/Red", "AOval");
    page.add("Fill/Red", "AFan");
    page.add("Fill/Red", "AText");
    EXPECT_EQ(page.paths(), (Names{"Fill/Red", "Fill/Red_1", "Fill/Red_2"}));
}

TEST(AddCondition, TheSamePathWithACommonClassIsMerged) {
    Page page(nullptr);
    page.add("Fill/Red", "AOval", 0, 0);
    page.addCondition(new ACondition(_T("Fill/Red"), _T("AOval")));
    auto* other = new Counted(_T("Fill/Red"), _T("AOval"));
    other->inSelection = 1;
    page.addCondition(other);
    EXPECT_EQ(Counted::alive, 0);
    EXPECT_EQ(page.dump(), Names{"Fill/Red AOval 01"});
}

TEST(AddCondition, ANumberedNameIsAskedForACommonClassToo) {
    Page page(nullptr);
    page.add("Fill/Red", "AOval");
    page.add("Fill/Red", "AFan", 0);
    page.add("Fill/Red", "AFan", 1);
    EXPECT_EQ(page.dump(), (Names{"Fill/Red AOval 10", "Fill/Red_1 AFan 10"}));
}

TEST(AddCondition, TheNumberStandsBehindTheNameThatTheConditionCameWith) {
    Page page(nullptr);
    page.add("Fill/Red_1", "AText");
    page.add("Fill/Red", "AOval");
    page.add("Fill/Red", "AFan");
    page.add("Fill/Red_1", "AFan");
    EXPECT_EQ(page.paths(), (Names{"Fill/Red_1", "Fill/Red", "Fill/Red_2", "Fill/Red_1_1"}));
}

TEST(AddCondition, PathsAreComparedWithTheirCase) {
    Page page(nullptr);
    page.add("Fill/Red");
    page.add("Fill/red");
    page.add("");
    page.add("");
    EXPECT_EQ(page.paths(), (Names{"Fill/Red", "Fill/red", ""}));
}

TEST(AddCondition, ThePageDeletesItsConditions) {
    {
        Page page(nullptr);
        page.addCondition(new Counted(_T("a"), _T("AOval")));
        page.addCondition(new Counted(_T("b"), nullptr));
        EXPECT_EQ(Counted::alive, 2);
        page.replaceCondition(0, new Counted(_T("a"), _T("AOval")));
        EXPECT_EQ(Counted::alive, 2);
    }
    EXPECT_EQ(Counted::alive, 0);
}

TEST(AddCondition, AReplacementIsFoundAtItsPath) {
    Page page(nullptr);
    page.add("a");
    page.add("b");
    auto* replacement = new AObjectCondition(_T("b"), _T("AOval"));
    page.replaceCondition(1, replacement);
    EXPECT_EQ(page.findCondition(_T("b")), replacement);
    EXPECT_EQ(page.findCondition(_T("c")), nullptr);
    page.sortConditions();
    EXPECT_EQ(page.findCondition(_T("b")), replacement);
    page.add("b", "AFan");
    EXPECT_EQ(page.paths(), (Names{"b", "a", "b_1"}));
}

TEST(AddCondition, EntriesWithoutAClassNeverCombine) {
    Page page(nullptr);
    for (int i = 0; i < 3; ++i) page.addCondition(new AFillCondition(_T("No fill"), nullptr));
    for (int i = 0; i < 2; ++i) page.addCondition(new AStrokeCondition(_T("No stroke"), nullptr, nullptr));
    EXPECT_EQ(page.paths(), (Names{"No fill", "No fill_1", "No fill_2", "No stroke", "No stroke_1"}));
}

TEST(AddCondition, EveryObjectWithAFillThatIsNoColorBringsAnEntry) {
    const auto gradient = makeGradient(_T("g"));
    constexpr int kObjects = 100000;
    Page page(nullptr);
    page.add("Gradient/g_500", "AText");
    for (int i = 0; i < kObjects; ++i)
        page.addCondition(new AFillCondition(_T("Gradient/g"), gradient.get()));
    ASSERT_EQ(page.getConditions().GetSize(), kObjects + 1);
    EXPECT_EQ(page.getCondition(1)->path.toUtf8(), "Gradient/g");
    EXPECT_EQ(page.getCondition(500)->path.toUtf8(), "Gradient/g_499");
    EXPECT_EQ(page.getCondition(501)->path.toUtf8(), "Gradient/g_501") << "the name was taken";
    EXPECT_EQ(page.getCondition(kObjects)->path.toUtf8(), "Gradient/g_100000");
    EXPECT_EQ(page.getCondition(kObjects)->getSerial(),
              page.getCondition(1)->getSerial() + std::uint64_t{kObjects} - 1);
}

TEST(AddCondition, RandomConditionsFollowThePlainLoops) {
    const auto red = makeColor(_T("red"), RGB(255, 0, 0));
    const auto alsoRed = makeColor(_T("red"), RGB(255, 0, 0));
    const auto otherRed = makeColor(_T("red"), RGB(250, 0, 0));
    const test::Held<ASolidBrushItem> solids[] = {makeSolid(red.get()), makeSolid(alsoRed.get()),
                                                  makeSolid(otherRed.get()), makeSolid(nullptr)};
    const test::Held<AGradientBrushItem> gradients[] = {makeGradient(_T("red")), makeGradient(_T(""))};
    const std::vector<ABrushItem*> brushes{solids[0].get(), solids[1].get(),    solids[2].get(),
                                           solids[3].get(), gradients[0].get(), gradients[1].get(),
                                           nullptr};
    const std::vector<AReferItem*> items{red.get(), otherRed.get(), gradients[0].get()};
    const std::vector<const WCHAR*> paths{_T("a"), _T("a_1"), _T("a_2"), _T("a_1_1"), _T("b"), _T("")};
    const std::vector<const WCHAR*> classes{_T("AOval"), _T("AFan"), _T("ASolidBrushItem"), nullptr};
    std::mt19937 random(3);
    const auto one = [&random](const auto& of) { return of[random() % of.size()]; };
    for (int round = 0; round < 300; ++round) {
        Page page(nullptr);
        PlainList plain;
        std::uint64_t offset = 0;
        for (unsigned left = 1 + random() % 60; left > 0; --left) {
            const unsigned kind = random() % 5;
            const WCHAR* path = one(paths);
            const WCHAR* className = one(classes);
            ABrushItem* brush = one(brushes);
            AReferItem* item = one(items);
            const int flags = static_cast<int>(random() % 4);
            const auto make = [&]() -> ACondition* {
                ACondition* made =
                    kind == 0   ? new ACondition(path, className)
                    : kind == 1 ? new AObjectCondition(path, className)
                    : kind == 2 ? new AFillCondition(path, brush)
                    : kind == 3 ? static_cast<ACondition*>(new AStrokeCondition(path, className, red.get()))
                                : new AReferCondition(path, item);
                made->inDocument = flags & 1;
                made->inSelection = flags >> 1;
                return made;
            };
            ACondition* mine = make();
            ACondition* theirs = make();
            offset = theirs->getSerial() - mine->getSerial();
            page.addCondition(mine);
            plain.add(theirs);
        }
        AObArray expected;
        for (ACondition* condition : plain.held) expected.Add(condition);
        ASSERT_EQ(page.dump(), Page::dumpOf(expected)) << "round " << round;
        for (int i = 0; i < expected.GetSize(); ++i)
            ASSERT_EQ(page.getCondition(i)->getSerial() + offset,
                      static_cast<ACondition*>(expected[i])->getSerial());
    }
}
