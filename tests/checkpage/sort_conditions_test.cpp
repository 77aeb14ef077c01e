// The order of a page's conditions.
#include <algorithm>
#include <random>

#include "conditions/class_tables.h"
#include "support.h"

using test::Names;
using test::Page;

namespace {

// The moves themselves.
Names movedByTheRule(const AObArray& conditions) {
    std::vector<ARoot*> list(conditions.begin(), conditions.end());
    for (std::size_t k = kObjectClasses.size(); k-- > 0;) {
        for (std::size_t i = 0; i < list.size(); ++i) {
            const AStringArray& classes = static_cast<ACondition*>(list[i])->getClassNames();
            if (classes.IsEmpty() || classes[0] == kObjectClasses[k])
                std::rotate(list.begin(), list.begin() + static_cast<std::ptrdiff_t>(i),
                            list.begin() + static_cast<std::ptrdiff_t>(i) + 1);
        }
    }
    AObArray moved;
    for (ARoot* entry : list) moved.Add(entry);
    return Page::pathsOf(moved);
}

}  // namespace

TEST(SortConditions, ClassesComeInTheOrderOfTheTableAndReversedWithinEach) {
    Page page(nullptr);
    page.add("brush", "ASolidBrushItem");
    page.add("shadow", "AShadow");
    page.add("bitmap", "ABitmap");
    page.add("rgb bitmap", "ABitmap");
    page.add("rectangle", "ARectangle");
    page.add("other", "arectangle");
    page.sortConditions();
    EXPECT_EQ(page.paths(), (Names{"rectangle", "rgb bitmap", "bitmap", "shadow", "brush", "other"}));
}

TEST(SortConditions, OnlyTheFirstClassCounts) {
    Page page(nullptr);
    page.add("oval", "AOval");
    page.add("late", "AShadow").merge(ACondition(_T(""), _T("ARectangle")));
    page.sortConditions();
    EXPECT_EQ(page.paths(), (Names{"oval", "late"}));
}

TEST(SortConditions, AConditionWithoutAClassMovesInEveryPass) {
    Page page(nullptr);
    page.add("solid", "ASolidBrushItem");
    page.addCondition(new ACondition(_T("none"), nullptr));
    page.add("rectangle", "ARectangle");
    page.sortConditions();
    EXPECT_EQ(page.paths(), (Names{"rectangle", "none", "solid"}));
}

TEST(SortConditions, AnEmptyListStaysEmpty) {
    Page page(nullptr);
    page.sortConditions();
    EXPECT_TRUE(page.getConditions().IsEmpty());
}

TEST(SortConditions, RandomListsFollowTheMoves) {
    std::mt19937 random(5);
    for (int round = 0; round < 400; ++round) {
        Page page(nullptr);
        const unsigned classes = 1 + random() % 42;  // few of them, or all
        const unsigned without = random() % 3;
        const unsigned count = random() % 120;
        for (unsigned i = 0; i < count; ++i) {
            const unsigned which = random() % (classes + without);
            const AString path = AString::fromUtf8(std::to_string(i));
            if (which >= classes)
                page.addCondition(new ACondition(path, nullptr));
            else
                page.addCondition(new ACondition(
                    path, which < kObjectClasses.size() ? kObjectClasses[36 - which] : _T("AForeign")));
        }
        const Names expected = movedByTheRule(page.getConditions());
        page.sortConditions();
        ASSERT_EQ(page.paths(), expected) << "round " << round;
    }
}

TEST(SortConditions, ALongListIsSortedInOneGo) {
    Page page(nullptr);
    constexpr int kCount = 100000;
    for (int i = 0; i < kCount; ++i)
        page.add(std::to_string(i).c_str(), i % 2 == 0 ? "AGradientBrushItem" : "AOval");
    page.sortConditions();
    EXPECT_EQ(page.getCondition(0)->path.toUtf8(), "99999");
    EXPECT_EQ(page.getCondition(kCount / 2)->path.toUtf8(), "0");
    EXPECT_EQ(page.getCondition(kCount - 1)->path.toUtf8(), "99998");
}
