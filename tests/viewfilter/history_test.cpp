// When undo takes two filters for the same, and how the host gets its copies.
#include <random>

#include "tools.h"

using namespace test;

namespace {

struct SameFilter : testing::Test {
    Colors colors;
    AViewAttrFilter a;
    AViewAttrFilter b;

    void expectSame(bool same) {
        EXPECT_EQ(a.isSame(b), same) << told(&a) << " and " << told(&b);
        EXPECT_EQ(b.isSame(a), same) << told(&a) << " and " << told(&b);
    }
};

struct FilterHistory : ToolTest {
    FilterHistory() { registerAttributeFilter(); }
    ~FilterHistory() override {
        drawing.view().setViewFilter(nullptr);
        unregisterAttributeFilter();
    }
    // Whether the tool's run recorded a step.
    bool step(const std::string& name, AReferItem* item) {
        drawing.view().getHistory().begin();
        start(name, item);
        return drawing.view().getHistory().end();
    }
};

}  // namespace

TEST_F(SameFilter, IsOneInTheSameStateWithTheSameConditions) {
    expectSame(true);
    a.setUniform(0);
    expectSame(false);
    b.setUniform(0);
    expectSame(true);
    a.showCondition(on(colors.red.get()).get());
    expectSame(false);
    b.showCondition(on(colors.red.get()).get());
    expectSame(true);
    a.showCondition(on(colors.blue.get()).get());
    expectSame(false);
    b.hideCondition(on(colors.blue.get()).get());
    expectSame(false);
}

TEST_F(SameFilter, IsOneOnAnEqualColourButNotOnAnotherOfTheName) {
    const auto equal = makeColor(_T(""), RGB(255, 0, 0));
    const auto gray = makeColor(_T("red"), RGB(255, 0, 0), _T("AGrayColorItem"));
    a.hideCondition(on(colors.red.get()).get());
    b.hideCondition(on(equal.get()).get());
    expectSame(true);
    b.setUniform(1);
    b.hideCondition(on(gray.get()).get());
    expectSame(false);
}

TEST_F(SameFilter, CountsWhatDecidesNotWhatATreeShows) {
    Condition marked = on(colors.red.get());
    marked->inDocument = 1;
    marked->path = AItemPath(_T("RGB Color/red"));
    a.hideCondition(on(colors.red.get()).get());
    b.hideCondition(marked.get());
    expectSame(true);
}

TEST_F(SameFilter, IsNoneOfAnotherOrderKindOrClassList) {
    a.hideCondition(on(colors.red.get()).get());
    a.hideCondition(on(colors.blue.get()).get());
    b.hideCondition(on(colors.blue.get()).get());
    b.hideCondition(on(colors.red.get()).get());
    expectSame(false);
    a.setUniform(1);
    b.setUniform(1);
    a.hideCondition(onClass(_T("ARGBColorItem")).get());
    b.hideCondition(ofClasses<AReferCondition>({"ARGBColorItem", "AGrayColorItem"}).get());
    expectSame(false);
    b.setUniform(1);
    const ACondition plain(_T(""), _T("ARGBColorItem"));
    b.hideCondition(&plain);
    expectSame(false);
    a.setUniform(1);
    a.hideCondition(&plain);
    expectSame(true);
    b.setUniform(1);
    b.hideCondition(on(colors.red.get()).get());
    a.setUniform(1);
    a.hideCondition(onClass(_T("ARGBColorItem")).get());
    expectSame(false);
}

TEST_F(FilterHistory, ARunThatLeavesTheFilterAsItWasIsNoStep) {
    EXPECT_FALSE(step("AShowThisTool", color("red"))) << "visible already";
    EXPECT_FALSE(step("AShowAllTool", nullptr)) << "no filter to remove";
    EXPECT_TRUE(step("AHideThisTool", color("red")));
    EXPECT_FALSE(step("AHideThisTool", color("red")));
    EXPECT_FALSE(step("AShowAllExceptTool", color("red"))) << "made anew, and the same";
    EXPECT_TRUE(step("AHideAllExceptTool", color("red")));
    EXPECT_FALSE(step("AHideAllExceptTool", color("red")));
    EXPECT_FALSE(step("AShowThisTool", color("red")));
    EXPECT_TRUE(step("AShowAllTool", nullptr));
    EXPECT_FALSE(step("AShowAllTool", nullptr));
}

TEST_F(FilterHistory, AHiddenColourHiddenAgainIsAStepWhenItClearsTheSelection) {
    step("AHideThisTool", color("red"));
    drawing.select({object});
    EXPECT_TRUE(step("AHideThisTool", color("red")));
    EXPECT_TRUE(drawing.view().getHistory().undo());
    EXPECT_EQ(drawing.selection().getCount(), 1);
    EXPECT_EQ(told(drawing.view().m_viewFilter), "normal show:  hide: red");
}

TEST_F(FilterHistory, CopiesKeepTheirItemsAliveUntilTheyAreGone) {
    AColorItem* red = color("red");
    const int document = red->getReferenceCount();
    step("AHideThisTool", red);
    EXPECT_EQ(red->getReferenceCount(), document + 1) << "of the condition that filter and history share";
    step("AShowAllTool", nullptr);
    EXPECT_EQ(red->getReferenceCount(), document + 1) << "the history's alone";
    drawing.view().getHistory().undo();
    EXPECT_EQ(red->getReferenceCount(), document + 1);
    EXPECT_EQ(told(drawing.view().m_viewFilter), "normal show:  hide: red");
}

TEST_F(FilterHistory, ConditionsOutliveTheFilterWhoseHistoryIsKept) {
    for (const char* name : {"red", "green"}) step("AHideThisTool", color(name));
    step("AShowAllExceptTool", color("blue"));
    step("AShowAllTool", nullptr);
    AHistory& history = drawing.view().getHistory();
    const char* const states[] = {"none", "normal show:  hide: red", "normal show:  hide: red,green",
                                  "normal show:  hide: blue", "none"};
    for (int i = 3; i >= 0; --i) {
        EXPECT_TRUE(history.undo());
        EXPECT_EQ(told(drawing.view().m_viewFilter), states[i]);
    }
    for (int i = 1; i <= 4; ++i) {
        EXPECT_TRUE(history.redo());
        EXPECT_EQ(told(drawing.view().m_viewFilter), states[i]);
    }
}

// Each state of a random session comes back, by undo and redo, as it was told when it was made; what is
// visible then is what the plain rules say.
TEST_F(FilterHistory, RandomSessionsComeBackStepByStep) {
    std::mt19937 random(std::random_device{}());
    AHistory& history = drawing.view().getHistory();
    std::vector<AColorItem*> colors;
    for (std::uint32_t i = 0; i < 60; ++i) colors.push_back(drawing.document.getPaint().rgb(i * 0x010203));
    std::vector<std::string> states{"none"};
    std::size_t at = 0;
    for (int i = 0; i < 3000; ++i) {
        const unsigned what = random() % 10;
        if (what < 7) {
            const char* const name = what == 0 && random() % 20 == 0 ? kTools[random() % 5]
                                     : what < 5                      ? "AHideThisTool"
                                                                     : "AShowThisTool";
            if (step(name, colors[random() % colors.size()])) {
                states.resize(at + 1);
                states.push_back(told(drawing.view().m_viewFilter));
                at += 1;
                if (states.size() > 101) {
                    states.erase(states.begin());
                    --at;
                }
            }
        } else if (what == 7 || random() % 2 != 0) {
            EXPECT_EQ(history.undo(), at > 0);
            if (at > 0) --at;
        } else {
            EXPECT_EQ(history.redo(), at + 1 < states.size());
            if (at + 1 < states.size()) ++at;
        }
        ASSERT_EQ(told(drawing.view().m_viewFilter), states[at]) << "event " << i;
        auto* filter = dynamic_cast<AViewAttrFilter*>(drawing.view().m_viewFilter);
        AColorItem* asked = colors[random() % colors.size()];
        if (filter) {
            ASSERT_EQ(filter->isVisible(asked), plainlyVisible(*filter, asked)) << "event " << i;
        }
    }
}

TEST_F(FilterHistory, UnregisteredFiltersAreNotCopied) {
    set(State::normal);
    const std::unique_ptr<AViewFilter> copy = copyViewFilter(drawing.view().m_viewFilter);
    EXPECT_EQ(told(copy.get()), "normal show: blue hide: red,green");
    unregisterAttributeFilter();
    EXPECT_EQ(copyViewFilter(drawing.view().m_viewFilter), nullptr);
    EXPECT_FALSE(sameViewFilter(copy.get(), drawing.view().m_viewFilter));
}
