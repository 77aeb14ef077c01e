// The five tools: what each leaves in the view, from every state that a filter can be in.
#include "tools.h"
#include "support.h"
#include "support/drawing.h"

using namespace test;

namespace {

struct ColorTools : ToolTest {};

// What a tool leaves, by the filter that it finds.
struct Row {
    const char* tool;
    const char* color;
    std::array<const char*, 6> left;  // in the order of kStates; "same": the filter is as it was
};

constexpr const char* kNormalRed = "normal show:  hide: red";
constexpr const char* kOnlyRed = "negative show:  hide: red";
constexpr const char* kNormalBlack = "normal show:  hide: black";
constexpr const char* kOnlyBlack = "negative show:  hide: black";

// The fifth state shows blue and hides red and green; the sixth hides green and shows red and blue alone.
constexpr Row kRows[] = {
    {"AShowAllTool", "red", {"none", "none", "none", "none", "none", "none"}},
    {"AShowAllExceptTool", "red", {kNormalRed, kNormalRed, kNormalRed, kNormalRed, kNormalRed, kNormalRed}},
    {"AShowAllExceptTool",
     "black",
     {kNormalBlack, kNormalBlack, kNormalBlack, kNormalBlack, kNormalBlack, kNormalBlack}},
    {"AHideAllExceptTool", "red", {kOnlyRed, kOnlyRed, kOnlyRed, kOnlyRed, kOnlyRed, kOnlyRed}},
    {"AHideAllExceptTool", "black", {kOnlyBlack, kOnlyBlack, kOnlyBlack, kOnlyBlack, kOnlyBlack, kOnlyBlack}},
    {"AShowThisTool", "red", {"same", "same", "same", kOnlyRed, "normal show: blue,red hide: green", "same"}},
    {"AShowThisTool",
     "green",
     {"same", "same", "same", "negative show:  hide: green", "normal show: blue,green hide: red",
      "negative show:  hide: red,blue,green"}},
    {"AShowThisTool", "blue", {"same", "same", "same", "negative show:  hide: blue", "same", "same"}},
    {"AShowThisTool",
     "black",
     {"same", "same", "same", kOnlyBlack, "same", "negative show: green hide: red,blue,black"}},
    {"AHideThisTool",
     "red",
     {kNormalRed, kNormalRed, kNormalRed, "same", "same", "negative show: green,red hide: blue"}},
    {"AHideThisTool",
     "green",
     {"normal show:  hide: green", "normal show:  hide: green", "normal show:  hide: green", "same", "same",
      "same"}},
    {"AHideThisTool",
     "blue",
     {"normal show:  hide: blue", "normal show:  hide: blue", "normal show:  hide: blue", "same",
      "normal show:  hide: red,green,blue", "negative show: green,blue hide: red"}},
    {"AHideThisTool",
     "black",
     {kNormalBlack, kNormalBlack, kNormalBlack, "same", "normal show: blue hide: red,green,black", "same"}},
};

}  // namespace

TEST_F(ColorTools, LeaveWhatTheTableOfStatesSays) {
    for (const Row& row : kRows) {
        for (std::size_t state = 0; state < row.left.size(); ++state) {
            set(kStates[state]);
            const std::string before = told(drawing.view().m_viewFilter);
            ASSERT_EQ(before, toldStates()[state]);
            EXPECT_EQ(start(row.tool, color(row.color)), 1);
            const std::string expected = row.left[state] == std::string("same") ? before : row.left[state];
            EXPECT_EQ(told(drawing.view().m_viewFilter), expected)
                << row.tool << " on " << row.color << " from " << before;
        }
    }
}

TEST_F(ColorTools, RedrawTheWholeViewOnceAndEndOnceFromEveryState) {
    for (const Row& row : kRows) {
        for (const State state : kStates) {
            set(state);
            const unsigned long long redraws = drawing.view().getRedrawCount();
            const auto tool = make(row.tool);
            start(*tool, color(row.color));
            EXPECT_EQ(drawing.view().getRedrawCount(), redraws + 1) << row.tool;
            EXPECT_TRUE(tool->hasEnded()) << row.tool;
        }
    }
}

TEST_F(ColorTools, ResetTheSelectionOnlyWhenTheirNameSaysThatTheyHide) {
    for (const Row& row : kRows) {
        const bool hides = std::string(row.tool).starts_with("AHide");
        for (const State state : kStates) {
            set(state);
            drawing.select({object});
            start(row.tool, color(row.color));
            EXPECT_EQ(drawing.selection().getCount(), hides ? 0 : 1) << row.tool << " on " << row.color;
        }
    }
}

TEST_F(ColorTools, WorkInPlaceOnTheFilterThatTheViewHas) {
    for (const char* name : {"AShowAllExceptTool", "AShowThisTool", "AHideThisTool", "AHideAllExceptTool"}) {
        for (const State state : {State::allShown, State::noneShown, State::normal, State::negative}) {
            set(state);
            const AViewFilter* before = drawing.view().m_viewFilter;
            start(name, color("red"));
            EXPECT_EQ(drawing.view().m_viewFilter, before) << name;
        }
    }
}

TEST_F(ColorTools, TheViewFreesTheForeignFilterThatItLoses) {
    for (const char* name : {"AShowAllTool", "AShowAllExceptTool", "AHideThisTool", "AHideAllExceptTool"}) {
        set(State::foreign);
        EXPECT_EQ(ForeignFilter::alive, 1);
        start(name, color("red"));
        EXPECT_EQ(ForeignFilter::alive, 0) << name;
    }
    set(State::foreign);
    start("AShowThisTool", color("red"));
    EXPECT_EQ(ForeignFilter::alive, 1) << "what was made to ask it is not handed over";
}

TEST_F(ColorTools, HoldTheChosenColourOnceAndOnlyThroughTheFilter) {
    AColorItem* red = color("red");
    const int document = red->getReferenceCount();
    start("AHideThisTool", red);
    EXPECT_EQ(red->getReferenceCount(), document + 1);
    start("AHideThisTool", red);
    start("AShowThisTool", red);
    start("AShowAllExceptTool", red);
    start("AHideAllExceptTool", red);
    EXPECT_EQ(red->getReferenceCount(), document + 1);
    start("AShowAllTool", nullptr);
    EXPECT_EQ(red->getReferenceCount(), document);
}

TEST_F(ColorTools, HideThisColourTwiceLeavesTheFilterButStillClearsTheSelectionAndRedraws) {
    start("AHideThisTool", color("red"));
    EXPECT_EQ(told(drawing.view().m_viewFilter), kNormalRed);
    const auto* held = ours().getHideConditions()[0];
    drawing.select({object});
    const unsigned long long redraws = drawing.view().getRedrawCount();
    EXPECT_EQ(start("AHideThisTool", color("red")), 1);
    EXPECT_EQ(ours().getHideConditions()[0], held) << "not even replaced";
    EXPECT_EQ(drawing.selection().getCount(), 0);
    EXPECT_EQ(drawing.view().getRedrawCount(), redraws + 1);
}

TEST_F(ColorTools, ShowThisColourOnAViewWithoutFilterLeavesItWithout) {
    EXPECT_EQ(start("AShowThisTool", color("red")), 1);
    EXPECT_EQ(drawing.view().m_viewFilter, nullptr);
}

TEST_F(ColorTools, HideAllButOneColourThenShowASecondShowsBoth) {
    start("AHideAllExceptTool", color("red"));
    start("AShowThisTool", color("blue"));
    EXPECT_EQ(visible(), " red blue");
}

TEST_F(ColorTools, AllButOneColourThenShowItShowsEverythingWhileAFilterStays) {
    start("AShowAllExceptTool", color("red"));
    EXPECT_EQ(visible(), " green blue black");
    start("AShowThisTool", color("red"));
    EXPECT_EQ(told(drawing.view().m_viewFilter), "normal show: red hide: ");
    EXPECT_EQ(visible(), " red green blue black");
}

TEST_F(ColorTools, ShowAllRemovesTheFilterAfterAnyOfThem) {
    for (const char* name : {"AShowAllExceptTool", "AShowThisTool", "AHideThisTool", "AHideAllExceptTool"}) {
        set(State::noneShown);
        start(name, color("red"));
        start("AShowAllTool", nullptr);
        EXPECT_EQ(drawing.view().m_viewFilter, nullptr) << name;
    }
}

TEST_F(ColorTools, TakeAGradientAsTheyTakeAColour) {
    ABrushItem* glow = drawing.document.getPaint().gradientBrush("glow")->getBrushItem();
    ABrushItem* dusk = drawing.document.getPaint().gradientBrush("dusk")->getBrushItem();
    start("AHideThisTool", glow);
    EXPECT_EQ(ours().isVisible(glow), 0);
    EXPECT_EQ(ours().isVisible(dusk), 1);
    start("AHideAllExceptTool", glow);
    EXPECT_EQ(ours().isVisible(glow), 1);
    EXPECT_EQ(ours().isVisible(dusk), 0);
    EXPECT_EQ(visible(), "");
}

TEST_F(ColorTools, WithoutAViewEndAndHideThisRefuses) {
    drawing.application.setActiveView(nullptr);
    for (const char* name : kTools) {
        const auto tool = make(name);
        const bool refuses = name == std::string("AHideThisTool");
        EXPECT_EQ(start(*tool, color("red")), refuses ? 0 : 1) << name;
        EXPECT_EQ(tool->hasEnded(), !refuses) << name;
    }
    EXPECT_EQ(drawing.view().getRedrawCount(), 0U);
}

TEST_F(ColorTools, WithoutAnItemEndAndLeaveEverything) {
    for (const char* name : kTools) {
        if (name == std::string("AShowAllTool")) continue;
        for (const State state : kStates) {
            set(state);
            drawing.select({object});
            const std::string before = told(drawing.view().m_viewFilter);
            const unsigned long long redraws = drawing.view().getRedrawCount();
            const auto tool = make(name);
            EXPECT_EQ(tool->onToolStart(AFPoint(), nullptr), 1) << name;
            EXPECT_TRUE(tool->hasEnded());
            EXPECT_EQ(told(drawing.view().m_viewFilter), before) << name;
            EXPECT_EQ(drawing.selection().getCount(), 1);
            EXPECT_EQ(drawing.view().getRedrawCount(), redraws);
        }
    }
}
