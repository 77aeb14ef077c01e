// Which calls each tool makes, and in which order.
#include <gtest/gtest.h>

#include "host_calls.h"
#include "kzutil/message_box.h"
#include "platform/driver/driver.h"
#include "select/select_by_attr_tool.h"
#include "select/select_color_tool.h"
#include "select/select_similar_tool.h"
#include "support/drawing.h"
#include "viewfilter/color_tools.h"
#include "viewfilter/view_attr_filter.h"
#include "viewfilter/view_filter_tool.h"

using test::Drawing;
using test::hostCalls;
using Calls = std::vector<std::string>;

namespace {

class RecordedHost : public testing::Test {
protected:
    Drawing drawing;
    ALayer* layer = drawing.layer();
    AObject* object = drawing.add(layer, _T("AOval"));
    AColorItem* red = drawing.document.getPaint().rgb(0xff0000);

    void SetUp() override {
        object->setBoundingRect({0, 0, 1, 1});
        object->setBrush(drawing.document.getPaint().rgbBrush(0xff0000));
        hostCalls().clear();
    }
    // The calls of one start; of those for the view, only where it is asked for again behind another call.
    template <class Tool>
    Calls callsOf(AReferItem* item = nullptr) {
        Tool tool;
        hostCalls().clear();
        if (item)
            EXPECT_EQ(tool.onToolStart(AFPoint(), item), 1);
        else
            EXPECT_EQ(tool.onToolStart(), 1);
        Calls calls = std::exchange(hostCalls(), {});
        while (!calls.empty() && calls.front() == "view") calls.erase(calls.begin());
        EXPECT_EQ(tool.getEndCount(), 1);
        return calls;
    }
    // The same of a tool with a dialog, without those for the view.
    template <class Tool>
    Calls callsWith(std::initializer_list<driver::Step> steps) {
        Tool tool;
        driver::Driver user(steps);
        hostCalls().clear();
        EXPECT_EQ(tool.onToolStart(), 1);
        EXPECT_TRUE(user.finished());
        EXPECT_EQ(tool.getEndCount(), 1);
        Calls calls = std::exchange(hostCalls(), {});
        std::erase(calls, "view");
        return calls;
    }
    static driver::Step pressing(const char* caption) {
        return [caption](driver::Dialog& dialog) { dialog.press(caption); };
    }
    void install() {
        delete drawing.view().m_viewFilter;
        drawing.view().m_viewFilter = new AViewAttrFilter;
    }
};

}  // namespace

TEST_F(RecordedHost, ShowAllHandsOverNothingRedrawsAndEnds) {
    install();
    EXPECT_EQ(callsOf<AShowAllTool>(), (Calls{"no filter", "redraw 0 all", "end"}));
    EXPECT_EQ(drawing.view().m_viewFilter, nullptr);
}

TEST_F(RecordedHost, TheToolsThatShowHandOverRedrawAndEnd) {
    EXPECT_EQ(callsOf<AShowAllExceptTool>(red), (Calls{"filter", "redraw 0 all", "end"}));
    EXPECT_EQ(callsOf<AShowThisTool>(red), (Calls{"redraw 0 all", "end"})) << "the view has a filter now";
    install();
    EXPECT_EQ(callsOf<AShowAllExceptTool>(red), (Calls{"redraw 0 all", "end"}));
}

TEST_F(RecordedHost, TheToolsThatHideHandOverResetRedrawAndEnd) {
    const Calls withNew{"filter", "view", "reset 1", "redraw 0 all", "end"};
    const Calls inPlace{"view", "reset 1", "redraw 0 all", "end"};
    // Of the leading calls for the view, those before anything else are dropped.
    const Calls alone(inPlace.begin() + 1, inPlace.end());
    EXPECT_EQ(callsOf<AHideThisTool>(red), withNew);
    EXPECT_EQ(callsOf<AHideThisTool>(red), alone) << "hidden already";
    drawing.view().setViewFilter(nullptr);
    EXPECT_EQ(callsOf<AHideAllExceptTool>(red), withNew);
    EXPECT_EQ(callsOf<AHideAllExceptTool>(red), alone);
}

TEST_F(RecordedHost, TheViewIsAskedForAgainBeforeTheSelectionIsReset) {
    // Closes the view while the new filter takes its place.
    struct ClosingFilter : AViewFilter {
        ~ClosingFilter() override { AApplication::GetApplication()->setActiveView(nullptr); }
    };
    const auto expectWithoutReset = [&](const Calls& calls) {
        EXPECT_EQ(calls, (Calls{"filter", "view", "redraw 0 all", "end"}));
        drawing.application.setActiveView(&drawing.view());
    };
    drawing.view().m_viewFilter = new ClosingFilter;
    expectWithoutReset(callsOf<AHideThisTool>(red));
    delete std::exchange(drawing.view().m_viewFilter, new ClosingFilter);
    expectWithoutReset(callsOf<AHideAllExceptTool>(red));
}

TEST_F(RecordedHost, TheSelectionToolsReplaceTheSelectionAndEndLast) {
    AObject* second = drawing.add(layer, _T("AOval"));
    second->setBoundingRect({0, 0, 1, 1});
    second->setBrush(drawing.document.getPaint().rgbBrush(0xff0000));
    drawing.select({object});
    EXPECT_EQ(callsOf<ASelectSimilarTool>(), (Calls{"reset 0", "add 2 0 1", "end"}));
    EXPECT_EQ(callsOf<ASelectColorTool>(), (Calls{"reset 0", "add 2 0 1", "end"}));
}

TEST_F(RecordedHost, TheSheetReplacesTheSelectionInOneStepAndEndsLast) {
    const auto tick = [](driver::Dialog& sheet) {
        sheet.page("Fill");
        sheet.check("Solid/RGB Color/red");
        sheet.press("OK");
    };
    EXPECT_EQ(callsWith<ASelectByAttrTool>({tick}),
              (Calls{"before change", "reset 1", "add 1 0 1", "sort 1", "after change 2", "end"}));
    EXPECT_EQ(takeKeptMessages().size(), 0U);
    EXPECT_EQ(callsWith<ASelectByAttrTool>({pressing("OK")}),
              (Calls{"before change", "reset 1", "after change 2", "end"}))
        << "nothing is ticked";
    EXPECT_EQ(takeKeptMessages().size(), 1U);
    EXPECT_EQ(callsWith<ASelectByAttrTool>({pressing("Cancel")}), Calls{"end"});
}

TEST_F(RecordedHost, TheFilterDialogHandsOverAndRedrawsBeforeTheToolResetsRedrawsAndEnds) {
    EXPECT_EQ(callsWith<AViewFilterTool>({pressing("OK")}),
              (Calls{"filter", "redraw 0 all", "reset 1", "redraw 0 all", "end"}));
    EXPECT_EQ(callsWith<AViewFilterTool>({pressing("OK")}),
              (Calls{"redraw 0 all", "reset 1", "redraw 0 all", "end"}))
        << "the view has a filter now";
    EXPECT_EQ(callsWith<AViewFilterTool>({pressing("Cancel")}),
              (Calls{"filter", "redraw 0 all", "redraw 0 all", "reset 1", "redraw 0 all", "end"}))
        << "a copy of what was";
    drawing.view().setViewFilter(nullptr);
    EXPECT_EQ(callsWith<AViewFilterTool>({pressing("Cancel")}),
              (Calls{"no filter", "redraw 0 all", "redraw 0 all", "reset 1", "redraw 0 all", "end"}));
}

TEST_F(RecordedHost, WithoutAViewAToolOnlyEnds) {
    drawing.application.setActiveView(nullptr);
    EXPECT_EQ(callsOf<AShowAllTool>(), Calls{"end"});
    EXPECT_EQ(callsOf<AShowAllExceptTool>(red), Calls{"end"});
    EXPECT_EQ(callsOf<AShowThisTool>(red), Calls{"end"});
    EXPECT_EQ(callsOf<AHideAllExceptTool>(red), Calls{"end"});
    EXPECT_EQ(callsOf<ASelectSimilarTool>(), Calls{"end"});
    EXPECT_EQ(callsOf<ASelectColorTool>(), Calls{"end"});
    EXPECT_EQ(callsOf<ASelectByAttrTool>(), Calls{"end"});
    EXPECT_EQ(callsWith<AViewFilterTool>({pressing("OK")}), (Calls{"redraw 0 all", "redraw 0 all", "end"}));
    AHideThisTool refuses;
    hostCalls().clear();
    EXPECT_EQ(refuses.onToolStart(AFPoint(), red), 0);
    EXPECT_EQ(hostCalls(), Calls{"view"});
}

// A host may refuse a tool for reasons of its own, whatever is selected.
TEST_F(RecordedHost, AToolThatTheHostsOwnTestRefusesIsNotValid) {
    drawing.select({object});
    const auto validities = [] {
        return std::vector<int>{
            AViewFilterTool().isValid(),  ASelectByAttrTool().isValid(), ASelectSimilarTool().isValid(),
            ASelectColorTool().isValid(), AShowAllTool().isValid(),      AShowAllExceptTool().isValid(),
            AShowThisTool().isValid(),    AHideThisTool().isValid(),     AHideAllExceptTool().isValid()};
    };
    EXPECT_EQ(validities(), std::vector<int>(9, 1));
    test::hostRefusesTools() = true;
    EXPECT_EQ(validities(), std::vector<int>(9, 0));
    test::hostRefusesTools() = false;
}
