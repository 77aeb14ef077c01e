// The tools with a dialog as a host starts them, the View Filter above all.
#include "kzcore/tool/tool_runner.h"
#include "module.h"
#include "platform/driver/driver.h"
#include "platform/driver/input.h"
#include "res/resource.h"

namespace {

constexpr int kTabs = 0x3020;  // the tab control of every sheet

class ViewFilterTool : public testing::Test {
protected:
    const AFilePath plugInFile = test::plugInPath();
    const std::filesystem::path program = test::programFolder();
    test::TempFolder base;
    std::unique_ptr<APlugIn> plugIn;  // goes after the drawing: filters are the plug-in's
    test::Drawing drawing;
    AObject* oval = nullptr;
    std::vector<std::string> captions;  // title, then buttons

    void SetUp() override {
        AFilePath::setBaseFolder(base.wide());
        oval = drawing.add(drawing.layer(), _T("AOval"));
        oval->setBrush(drawing.document.getPaint().rgbBrush(0xff0000));
    }
    void TearDown() override { AFilePath::setBaseFolder(AString()); }

    void install(const std::filesystem::path& module) {
        std::filesystem::create_directories(base.path() / "Plugins");
        std::filesystem::copy_file(module, base.path() / "Plugins" / "kzattributeloc.dll");
    }
    // Runs the tool as the host does; the last step closes the dialog.
    AToolOutcome run(std::initializer_list<driver::Step> steps,
                     const WCHAR* className = _T("AViewFilterTool")) {
        plugIn.reset();
        plugIn = test::loadPlugIn(plugInFile);
        const auto tool = test::makeTool(*plugIn, className);
        driver::Driver user(steps);
        std::string error;
        const AToolOutcome outcome = ::runTool(*tool, nullptr, error);
        EXPECT_EQ(error, "");
        EXPECT_TRUE(user.finished());
        return outcome;
    }
    // The controls that the Tab key goes through until it is back at the first.
    std::vector<int> tabOrder(const WCHAR* className) {
        std::vector<int> visited;
        run({[&](driver::Dialog& dialog) {
                while (visited.size() < 20 && (visited.size() < 2 || visited.front() != visited.back())) {
                    visited.push_back(GetDlgCtrlID(GetFocus()));
                    driver::pressKey(GetFocus(), VK_TAB);
                }
                dialog.cancel();
            }},
            className);
        return visited;
    }
    void cancelAndTell() {
        EXPECT_EQ(run({[this](driver::Dialog& dialog) {
                      const driver::DialogDescription shown = dialog.describe();
                      captions.push_back(shown.title);
                      for (const driver::ControlDescription& control : shown.controls) {
                          if (control.className == "Button") captions.push_back(control.text);
                      }
                      dialog.cancel();
                  }}),
                  AToolOutcome::done);
    }
};

using Captions = std::vector<std::string>;
const Captions kEnglish{"View Filter", "Show All", "Show None", "OK", "Cancel"};

}  // namespace

TEST_F(ViewFilterTool, OpensItsDialog) {
    cancelAndTell();
    EXPECT_EQ(captions, kEnglish);
}

TEST_F(ViewFilterTool, OpensItInTheLanguageOfTheLocalizedModule) {
    install(program / "Languages" / "de" / "kzattributeloc.dll");
    cancelAndTell();
    EXPECT_EQ(captions, (Captions{"Ansichtsfilter", "Alle zeigen", "Keine zeigen", "OK", "Abbrechen"}));
}

TEST_F(ViewFilterTool, OpensItsOwnDialogWhereTheLocalizedModuleLacksIt) {
    install(program / "test_modules" / "kzattributeloc_partial.dll");
    cancelAndTell();
    EXPECT_EQ(captions, kEnglish);
}

TEST_F(ViewFilterTool, TheTabKeyGoesThroughItsDialogAndTheSheet) {
    EXPECT_EQ(tabOrder(_T("AViewFilterTool")),
              (std::vector<int>{IDC_CHECK_TREE, IDC_SHOW_ALL_COLORS, IDC_SHOW_NO_COLORS, IDOK, IDCANCEL,
                                IDC_CHECK_TREE}));
    drawing.select({oval});
    EXPECT_EQ(tabOrder(_T("ASelectByAttrTool")),
              (std::vector<int>{IDC_CHECK_TREE, IDC_ALL_TYPES, IDC_SHOW_ALL, IDC_SELECTION_ONLY, IDOK,
                                IDCANCEL, kTabs, IDC_CHECK_TREE}));
}

TEST_F(ViewFilterTool, IsOneStepOfTheHistory) {
    EXPECT_EQ(run({[](driver::Dialog& dialog) {
                  dialog.uncheck("RGB Color/red");
                  dialog.press("OK");
              }}),
              AToolOutcome::done);
    AHistory& history = drawing.view().getHistory();
    EXPECT_NE(drawing.view().m_viewFilter, nullptr);
    EXPECT_TRUE(history.undo());
    EXPECT_EQ(drawing.view().m_viewFilter, nullptr);
    EXPECT_FALSE(history.undo());
    EXPECT_TRUE(history.redo());
    EXPECT_NE(drawing.view().m_viewFilter, nullptr);
}
