// The View Filter tool as a host starts it.
#include "kzcore/tool/tool_runner.h"
#include "module.h"
#include "platform/driver/driver.h"

namespace {

class ViewFilterTool : public testing::Test {
protected:
    const AFilePath plugInFile = test::plugInPath();
    const std::filesystem::path program = test::programFolder();
    test::TempFolder base;
    std::unique_ptr<APlugIn> plugIn;  // goes after the drawing: filters are the plug-in's
    test::Drawing drawing;
    std::vector<std::string> captions;  // title, then buttons

    void SetUp() override {
        AFilePath::setBaseFolder(base.wide());
        AObject* oval = drawing.add(drawing.layer(), _T("AOval"));
        oval->setBrush(drawing.document.getPaint().rgbBrush(0xff0000));
    }
    void TearDown() override { AFilePath::setBaseFolder(AString()); }

    void install(const std::filesystem::path& module) {
        std::filesystem::create_directories(base.path() / "Plugins");
        std::filesystem::copy_file(module, base.path() / "Plugins" / "kzattributeloc.dll");
    }
    // Runs the tool as the host does; the last step closes the dialog.
    AToolOutcome run(std::initializer_list<driver::Step> steps) {
        plugIn = test::loadPlugIn(plugInFile);
        const auto tool = test::makeTool(*plugIn, _T("AViewFilterTool"));
        driver::Driver user(steps);
        std::string error;
        const AToolOutcome outcome = ::runTool(*tool, nullptr, error);
        EXPECT_EQ(error, "");
        EXPECT_TRUE(user.finished());
        return outcome;
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
