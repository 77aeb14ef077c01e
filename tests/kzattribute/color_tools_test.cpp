// The show and hide tools as a host runs them: through the module, each run a step of history.
#include <algorithm>
#include <random>
#include <set>

#include "kzcore/tool/tool_runner.h"
#include "module.h"

using test::Drawing;

namespace {

constexpr const WCHAR* kTools[] = {_T("AShowAllTool"), _T("AShowAllExceptTool"), _T("AShowThisTool"),
                                   _T("AHideThisTool"), _T("AHideAllExceptTool")};

class ColorTools : public testing::Test {
protected:
    std::unique_ptr<APlugIn> plugIn = test::loadPlugIn();
    Drawing drawing;  // gone before the plug-in, whose filter its view has
    APaintTable& paint = drawing.document.getPaint();
    AObject* object = drawing.add(drawing.layer(), _T("AOval"));
    std::vector<AReferItem*> choices;  // what a tool can be started on
    std::vector<AReferItem*> foreign;  // of no document: released at the end

    ~ColorTools() override {
        drawing.view().setViewFilter(nullptr);
        for (AReferItem* item : foreign) item->releaseReference();
    }

    // Shared colours, equal ones, ones of the same name in other classes, spot colours of one tint,
    // gradients.
    void fillPalette() {
        for (const std::uint32_t value : {0xff0000U, 0x00ff00U, 0x0000ffU, 0x808080U, 0xfafad2U})
            choices.push_back(paint.rgb(value));
        for (const WCHAR* name : {_T("ARGBColorItem"), _T("ACMYKColorItem"), _T("AGrayColorItem")})
            choices.push_back(paint.color(*findClass(name), "red", {1, 0, 0, 0}, 0xff0000));
        for (const char* name : {"Lake", "Sky"})
            choices.push_back(paint.color(*findClass(_T("ASpotColorItem")), name, {1, 0, 0, 0}, 0x0000ff));
        for (const char* name : {"glow", "red"}) choices.push_back(paint.gradientBrush(name)->getBrushItem());
        foreign.push_back(
            new AColorItem(*findClass(_T("ARGBColorItem")), _T("red"), {1, 0, 0, 0}, RGB(255, 0, 0)));
        foreign.push_back(
            new AColorItem(*findClass(_T("ARGBColorItem")), _T("lime"), {0, 1, 0, 0}, RGB(0, 255, 0)));
        choices.insert(choices.end(), foreign.begin(), foreign.end());
    }

    // What a choice stands for: equal colours are one.
    using Paint = std::tuple<std::string, std::string, AColorItem::Components, const void*>;
    static Paint paintOf(AReferItem* item) {
        const auto* color = dynamic_cast<const AColorItem*>(item);
        return {item->getClassName().toUtf8(), item->getName().toUtf8(),
                color ? color->getComponents() : AColorItem::Components{}, color ? nullptr : item};
    }
    std::set<Paint> everything() {
        std::set<Paint> all;
        for (AReferItem* item : choices) all.insert(paintOf(item));
        return all;
    }
    bool isVisible(AReferItem* item) {
        AViewFilter* filter = drawing.view().m_viewFilter;
        return !filter || filter->isVisible(item) != 0;
    }
    std::set<Paint> visible() {
        std::set<Paint> seen;
        for (AReferItem* item : choices) {
            if (isVisible(item)) seen.insert(paintOf(item));
        }
        return seen;
    }
    void run(const WCHAR* className, AReferItem* item) {
        const auto tool = test::makeTool(*plugIn, className);
        std::string error;
        EXPECT_EQ(runTool(*tool, className == kTools[0] ? nullptr : item, error), AToolOutcome::done)
            << error;
    }
    // The tool's outcome on what is visible, by its name.
    void expectOf(std::set<Paint>& shown, const WCHAR* className, const Paint& chosen) {
        if (className == kTools[0]) shown = everything();
        if (className == kTools[1]) (shown = everything()).erase(chosen);
        if (className == kTools[2]) shown.insert(chosen);
        if (className == kTools[3]) shown.erase(chosen);
        if (className == kTools[4]) shown = {chosen};
    }
};

}  // namespace

TEST_F(ColorTools, ShowWhatAPlainSetOfVisibleColoursSays) {
    fillPalette();
    std::mt19937 random(77);
    for (int round = 0; round < 60; ++round) {
        drawing.view().setViewFilter(nullptr);
        std::set<Paint> shown = everything();
        for (int step = 0; step < 30; ++step) {
            const WCHAR* tool = kTools[random() % std::size(kTools)];
            AReferItem* chosen = choices[random() % choices.size()];
            run(tool, chosen);
            expectOf(shown, tool, paintOf(chosen));
            ASSERT_EQ(visible(), shown) << "round " << round << ", step " << step;
            for (AReferItem* item : choices)
                ASSERT_EQ(isVisible(item), shown.count(paintOf(item)) == 1) << "equal items are seen alike";
        }
    }
}

TEST_F(ColorTools, HideFillsAndStrokesOfTheColourAlike) {
    run(_T("AHideThisTool"), paint.rgb(0xff0000));
    EXPECT_FALSE(isVisible(paint.rgbBrush(0xff0000)->getBrushItem()));
    EXPECT_FALSE(isVisible(paint.rgbPen(0xff0000)->getPenItem()));
    EXPECT_TRUE(isVisible(paint.rgbBrush(0x0000ff)->getBrushItem()));
    EXPECT_TRUE(isVisible(paint.rgbPen(0x0000ff)->getPenItem()));
    ABrushItem* glow = paint.gradientBrush("glow")->getBrushItem();
    EXPECT_TRUE(isVisible(paint.brushPen(glow)->getPenItem()));
    run(_T("AHideAllExceptTool"), glow);
    EXPECT_TRUE(isVisible(glow));
    EXPECT_FALSE(isVisible(paint.brushPen(glow)->getPenItem())) << "the host asks for its gradient instead";
}

TEST_F(ColorTools, AreUndoneAndRedoneStepByStep) {
    fillPalette();
    std::mt19937 random(78);
    std::vector<std::set<Paint>> states{visible()};
    AHistory& history = drawing.view().getHistory();
    for (int step = 0; step < 60; ++step) {
        const WCHAR* tool = kTools[random() % std::size(kTools)];
        drawing.select({});
        run(tool, choices[random() % choices.size()]);
        if (visible() != states.back()) states.push_back(visible());
    }
    ASSERT_GT(states.size(), 20U);
    // A step may change a filter without changing what is seen: those pass by.
    std::size_t at = states.size() - 1;
    while (history.undo()) {
        if (visible() != states[at]) {
            ASSERT_GT(at, 0U);
            ASSERT_EQ(visible(), states[--at]);
        }
    }
    EXPECT_EQ(at, 0U);
    EXPECT_EQ(drawing.view().m_viewFilter, nullptr);
    while (history.redo()) {
        if (visible() != states[at]) {
            ASSERT_LT(at + 1, states.size());
            ASSERT_EQ(visible(), states[++at]);
        }
    }
    EXPECT_EQ(at, states.size() - 1);
}

TEST_F(ColorTools, UndoBringsBackTheSelectionThatHidingCleared) {
    drawing.select({object});
    run(_T("AHideThisTool"), paint.rgb(0xff0000));
    EXPECT_TRUE(drawing.selected().empty());
    EXPECT_TRUE(drawing.view().getHistory().undo());
    EXPECT_EQ(drawing.selected(), std::vector<AObject*>{object});
    EXPECT_EQ(drawing.view().m_viewFilter, nullptr);
    EXPECT_TRUE(drawing.view().getHistory().redo());
    EXPECT_TRUE(drawing.selected().empty());
    EXPECT_FALSE(isVisible(paint.rgb(0xff0000)));
}

TEST_F(ColorTools, LeaveAFilterThatOutlivesTheChosenColoursMaker) {
    auto* item = new AColorItem(*findClass(_T("ARGBColorItem")), _T("own"), {0, 0, 0, 0}, RGB(0, 0, 0));
    run(_T("AHideThisTool"), item);
    EXPECT_GT(item->releaseReference(), 0) << "filter and history hold it";
    EXPECT_FALSE(isVisible(item));
}

TEST_F(ColorTools, WorkAgainAfterTheModuleWasLoadedAnew) {
    AColorItem* red = paint.rgb(0xff0000);
    const int document = red->getReferenceCount();
    {
        Drawing other;
        AColorItem* blue = other.document.getPaint().rgb(0x0000ff);
        run(_T("AHideThisTool"), blue);
    }
    drawing.application.setActiveView(&drawing.view());
    plugIn.reset();
    plugIn = test::loadPlugIn();
    run(_T("AHideThisTool"), red);
    EXPECT_FALSE(isVisible(red));
    EXPECT_TRUE(drawing.view().getHistory().undo());
    EXPECT_TRUE(isVisible(red));
    drawing.view().getHistory().redo();
    EXPECT_EQ(red->getReferenceCount(), document + 1) << "one condition, which filter and history share";
}
