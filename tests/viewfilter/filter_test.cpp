// The filter's states, answers and operations.
#include "conditions/fill_condition.h"

#include "support.h"

using namespace test;

namespace {

struct Filter : testing::Test {
    Colors colors;
    AViewAttrFilter filter;
    Condition red = on(colors.red.get());
    Condition green = on(colors.green.get());
    Condition blue = on(colors.blue.get());

    void list(const std::vector<ACondition*>& show, const std::vector<ACondition*>& hide, BYTE negative,
              BYTE uniform = 0) {
        AObArray shown;
        AObArray hidden;
        for (ACondition* condition : show) shown.Add(condition);
        for (ACondition* condition : hide) hidden.Add(condition);
        filter.assign(shown, hidden, uniform, negative);
    }
    std::string visible() {
        std::string names;
        for (AColorItem* color :
             {colors.red.get(), colors.green.get(), colors.blue.get(), colors.black.get()}) {
            if (filter.isVisible(color)) names += ' ' + color->getName().toUtf8();
        }
        return names;
    }
};

}  // namespace

TEST_F(Filter, MadeFreshShowsEverythingANullItemIncluded) {
    EXPECT_EQ(told(&filter), "all shown");
    EXPECT_EQ(visible(), " red green blue black");
    EXPECT_EQ(filter.isVisible(nullptr), 1);
}

// Red is in the show list, green in the hide list, blue in both, black in none.
TEST_F(Filter, AnswersByTheTableOfItsStates) {
    struct Case {
        BYTE uniform;
        BYTE negative;
        const char* visible;
        int null;
    };
    constexpr Case cases[] = {
        {1, 0, " red green blue black", 1},
        {1, 1, "", 0},
        {0, 0, " red blue black", 0},
        {0, 1, " green", 0},
    };
    for (const Case& expected : cases) {
        list({red.get(), blue.get()}, {green.get(), blue.get()}, expected.negative, expected.uniform);
        EXPECT_EQ(visible(), expected.visible) << told(&filter);
        EXPECT_EQ(filter.isVisible(nullptr), expected.null) << told(&filter);
    }
}

TEST_F(Filter, InNormalModeHidesSolidBrushAndPenOfAHiddenColourAndNothingElse) {
    list({}, {red.get()}, 0);
    const auto redBrush = makeSolid(colors.red.get());
    const auto redPen = makePen(colors.red.get());
    const auto blueBrush = makeSolid(colors.blue.get());
    const auto bluePen = makePen(colors.blue.get());
    const auto gradient = makeGradient(_T("red"));
    EXPECT_EQ(filter.isVisible(colors.red.get()), 0);
    EXPECT_EQ(filter.isVisible(redBrush.get()), 0);
    EXPECT_EQ(filter.isVisible(redPen.get()), 0);
    EXPECT_EQ(filter.isVisible(blueBrush.get()), 1);
    EXPECT_EQ(filter.isVisible(bluePen.get()), 1);
    EXPECT_EQ(filter.isVisible(gradient.get()), 1);
}

TEST_F(Filter, ASolidBrushAndAPenWithoutColourMatchNothing) {
    const auto empty = makeSolid(nullptr);
    const auto gradient = makeGradient(_T("glow"));
    const Held<APenItem> ofGradient(new APenItem(APenItem::kStyleSolid, nullptr, gradient.get()));
    const Condition anyPen = onClass(_T("APenItem"));
    const Condition anySolid = onClass(_T("ASolidBrushItem"));
    const Condition glow = on(gradient.get());
    for (const BYTE negative : {BYTE{0}, BYTE{1}}) {
        list({}, {anyPen.get(), anySolid.get(), glow.get()}, negative);
        EXPECT_EQ(filter.isVisible(empty.get()), negative ? 0 : 1);
        EXPECT_EQ(filter.isVisible(ofGradient.get()), negative ? 0 : 1) << "its gradient is asked for itself";
        EXPECT_EQ(filter.isVisible(gradient.get()), negative ? 1 : 0);
    }
}

TEST_F(Filter, AConditionOnABrushItemIsNeverAskedAboutItForTheColourStandsForIt) {
    const auto brush = makeSolid(colors.red.get());
    const Condition onBrush = on(brush.get());
    list({}, {onBrush.get()}, 0);
    EXPECT_EQ(filter.isVisible(brush.get()), 1);
}

TEST_F(Filter, HidesAnEqualColourOfTheSameNameOnly) {
    const auto same = makeColor(_T("red"), RGB(255, 0, 0));
    const auto renamed = makeColor(_T("signal"), RGB(255, 0, 0));
    const auto other = makeColor(_T("red"), RGB(254, 0, 0));
    const auto gray = makeColor(_T("red"), RGB(255, 0, 0), _T("AGrayColorItem"));
    list({}, {red.get()}, 0);
    EXPECT_EQ(filter.isVisible(same.get()), 0);
    EXPECT_EQ(filter.isVisible(renamed.get()), 1);
    EXPECT_EQ(filter.isVisible(other.get()), 1);
    EXPECT_EQ(filter.isVisible(gray.get()), 1);
}

TEST_F(Filter, SpotColoursOfOneTintAreToldApartByName) {
    const auto first = makeColor(_T("Lake"), RGB(9, 9, 9), _T("ASpotColorItem"));
    const auto second = makeColor(_T("Sky"), RGB(9, 9, 9), _T("ASpotColorItem"));
    const Condition lake = on(first.get());
    list({}, {lake.get()}, 0);
    EXPECT_EQ(filter.isVisible(first.get()), 0);
    EXPECT_EQ(filter.isVisible(second.get()), 1);
}

TEST_F(Filter, AClassEntryCountsForEveryItemOfTheClass) {
    const auto gray = makeColor(_T("gray"), RGB(128, 128, 128), _T("AGrayColorItem"));
    const Condition rgb = onClass(_T("ARGBColorItem"));
    list({}, {rgb.get()}, 0);
    EXPECT_EQ(visible(), "");
    EXPECT_EQ(filter.isVisible(gray.get()), 1);
    list({rgb.get()}, {red.get()}, 0);
    EXPECT_EQ(visible(), " red green blue black") << "the show list wins";
}

TEST_F(Filter, ClonesOfPredicatesThatAreOnlyEntriesMatchNothing) {
    const auto brush = makeSolid(colors.red.get());
    AFillCondition fill(_T("Solid"), brush.get());
    list({}, {&fill}, 0);
    EXPECT_EQ(told(&filter), "normal show:  hide: -");
    EXPECT_EQ(filter.isVisible(brush.get()), 1);
    EXPECT_EQ(filter.isVisible(colors.red.get()), 1);
}

// What showCondition and hideCondition of red do in each state.
TEST_F(Filter, MovesAConditionByTheTableOfItsStates) {
    struct Case {
        std::function<void()> start;
        const char* shown;
        const char* hidden;
    };
    const Case cases[] = {
        {[&] { filter.setUniform(1); }, "all shown", "normal show:  hide: red"},
        {[&] { filter.setUniform(0); }, "negative show:  hide: red", "none shown"},
        {[&] { list({}, {}, 0); }, "normal show: red hide: ", "normal show:  hide: red"},
        {[&] { list({}, {}, 1); }, "negative show:  hide: red", "negative show: red hide: "},
        {[&] { list({blue.get()}, {green.get()}, 0); }, "normal show: blue,red hide: green",
         "normal show: blue hide: green,red"},
        {[&] { list({blue.get()}, {green.get()}, 1); }, "negative show: blue hide: green,red",
         "negative show: blue,red hide: green"},
        {[&] {
             list({blue.get()}, {red.get(), green.get()}, 0);
         },
         "normal show: blue,red hide: green", "normal show: blue hide: green,red"},
        {[&] {
             list({red.get(), blue.get()}, {green.get()}, 1);
         },
         "negative show: blue hide: green,red", "negative show: blue,red hide: green"},
        {[&] {
             list({red.get(), red.get(), blue.get()}, {red.get()}, 0);
         },
         "normal show: blue,red hide: ", "normal show: blue hide: red"},
    };
    for (const Case& expected : cases) {
        expected.start();
        const std::string before = told(&filter);
        filter.showCondition(red.get());
        EXPECT_EQ(told(&filter), expected.shown) << before;
        expected.start();
        filter.hideCondition(red.get());
        EXPECT_EQ(told(&filter), expected.hidden) << before;
    }
}

TEST_F(Filter, ShowingOneThatShowsEverythingLeavesItUnchanged) {
    filter.showCondition(red.get());
    EXPECT_EQ(told(&filter), "all shown");
}

TEST_F(Filter, HidingAColourTwiceLeavesOneCondition) {
    const auto equal = makeColor(_T("red"), RGB(255, 0, 0));
    filter.hideCondition(red.get());
    filter.hideCondition(on(equal.get()).get());
    EXPECT_EQ(told(&filter), "normal show:  hide: red");
    EXPECT_EQ(equal->getReferenceCount(), 2) << "the newer one stays";
    EXPECT_EQ(colors.red->getReferenceCount(), 2) << "its maker's and that of the test's own condition";
}

TEST_F(Filter, ShowingAHiddenColourMovesItToTheShowList) {
    list({}, {green.get(), red.get()}, 0);
    filter.showCondition(red.get());
    EXPECT_EQ(told(&filter), "normal show: red hide: green");
}

TEST_F(Filter, EveryConditionWithAClassInCommonLeavesTheOtherSide) {
    const auto equal = makeColor(_T("red"), RGB(255, 0, 0));
    const Condition second = on(equal.get());
    list({}, {red.get(), green.get(), second.get(), red.get()}, 0);
    filter.showCondition(red.get());
    EXPECT_EQ(told(&filter), "normal show: red hide: green");
}

TEST_F(Filter, AWiderClassEntryOfItsOwnSideStays) {
    auto wide = ofClasses<AReferCondition>({"ARGBColorItem", "AGrayColorItem"});
    const Condition rgb = onClass(_T("ARGBColorItem"));
    list({}, {wide.get()}, 0);
    filter.hideCondition(rgb.get());
    EXPECT_EQ(told(&filter), "normal show:  hide: [ARGBColorItem][AGrayColorItem],[ARGBColorItem]");
    filter.hideCondition(rgb.get());
    EXPECT_EQ(told(&filter), "normal show:  hide: [ARGBColorItem][AGrayColorItem],[ARGBColorItem]");
    filter.showCondition(rgb.get());
    EXPECT_EQ(told(&filter), "normal show: [ARGBColorItem] hide: ") << "but not the other side";
}

TEST_F(Filter, TakesAConditionOfItsOwnLists) {
    list({green.get()}, {red.get(), blue.get()}, 0);
    filter.showCondition(dynamic_cast<const ACondition*>(filter.getHideConditions()[0]));
    EXPECT_EQ(told(&filter), "normal show: green,red hide: blue");
    filter.showCondition(dynamic_cast<const ACondition*>(filter.getShowConditions()[0]));
    EXPECT_EQ(told(&filter), "normal show: red,green hide: blue");
    filter.assign(filter.getHideConditions(), filter.getShowConditions(), 0, 1);
    EXPECT_EQ(told(&filter), "negative show: blue hide: red,green");
    EXPECT_EQ(visible(), " red green");
}

TEST_F(Filter, ClearsItsConditionsAndKeepsItsFlags) {
    for (const BYTE negative : {BYTE{0}, BYTE{1}}) {
        list({red.get()}, {green.get()}, negative);
        filter.clearConditions();
        EXPECT_EQ(told(&filter), negative ? "negative show:  hide: " : "normal show:  hide: ");
        EXPECT_EQ(visible(), negative ? "" : " red green blue black");
    }
}

TEST_F(Filter, BecomesUniformWithEmptyListsFromAnyState) {
    list({red.get()}, {green.get()}, 1);
    filter.setUniform(7);
    EXPECT_EQ(told(&filter), "all shown");
    list({red.get()}, {green.get()}, 0);
    filter.setUniform(0);
    EXPECT_EQ(told(&filter), "none shown");
    filter.setUniform(1);
    EXPECT_EQ(told(&filter), "all shown");
}

TEST_F(Filter, AssignedUniformHoldsNoConditions) {
    list({red.get()}, {green.get()}, 0);
    list({red.get()}, {green.get()}, 1, 1);
    EXPECT_EQ(told(&filter), "none shown");
    list({red.get()}, {green.get()}, 0, 1);
    EXPECT_EQ(told(&filter), "all shown");
}

TEST_F(Filter, AssignClonesInOrderAndLeavesTheCallersConditions) {
    list({green.get(), red.get()}, {blue.get(), red.get()}, 2);
    EXPECT_EQ(told(&filter), "negative show: green,red hide: blue,red");
    EXPECT_NE(filter.getShowConditions()[0], green.get());
    const auto* copy = dynamic_cast<const ACondition*>(filter.getShowConditions()[0]);
    EXPECT_EQ(copy->getSerial(), green->getSerial());
}

TEST_F(Filter, ClonesIntoAnIndependentFilterOfTheSameState) {
    list({red.get()}, {green.get()}, 1);
    const std::unique_ptr<AViewAttrFilter> copy(filter.clone());
    EXPECT_EQ(told(copy.get()), "negative show: red hide: green");
    copy->setUniform(1);
    EXPECT_EQ(told(&filter), "negative show: red hide: green");
    EXPECT_EQ(visible(), " green");
}

TEST_F(Filter, CloneOfAUniformOneIsUniformWithEmptyLists) {
    for (const int show : {0, 1}) {
        filter.setUniform(show);
        const std::unique_ptr<AViewAttrFilter> copy(filter.clone());
        EXPECT_EQ(told(copy.get()), show ? "all shown" : "none shown");
    }
}

TEST_F(Filter, OwnsItsConditionsAndKeepsTheirItemsAlive) {
    const int before = AllBut::alive;
    {
        const AllBut foreign(_T("ARGBColorItem"), nullptr);
        AViewAttrFilter other;
        other.hideCondition(&foreign);
        other.hideCondition(red.get());
        EXPECT_EQ(AllBut::alive, before + 2);
        EXPECT_EQ(colors.red->getReferenceCount(), 3) << "maker, the test's condition, the filter's clone";
        red.reset();
        AColorItem* alive = colors.red.get();
        colors.red.reset();
        EXPECT_EQ(other.isVisible(alive), 0);
        other.clearConditions();
        EXPECT_EQ(AllBut::alive, before + 1);
        other.hideCondition(&foreign);
    }
    EXPECT_EQ(AllBut::alive, before);
}

TEST_F(Filter, NothingButAssignAndSetUniformLeavesNegativeMode) {
    filter.setUniform(0);
    filter.showCondition(red.get());
    filter.hideCondition(red.get());
    filter.showCondition(blue.get());
    filter.clearConditions();
    EXPECT_TRUE(filter.isNegative());
    list({}, {}, 0);
    EXPECT_FALSE(filter.isNegative());
}
