// The Select by Attributes sheet in the hands of a user.
#include "kzcore/tool/tool_runner.h"
#include "kzutil/message_box.h"
#include "platform/driver/driver.h"
#include "scene.h"
#include "select/select_by_attr_sheet.h"
#include "select/select_by_attr_tool.h"
#include "select/select_page.h"

using driver::Dialog;
using test::Names;
using test::Scene;

namespace {

class Sheet : public testing::Test {
protected:
    Scene scene;
    ALayer* layer = scene.layer();
    ASelectByAttrTool tool;

    void SetUp() override { takeKeptMessages(); }
    void TearDown() override { EXPECT_EQ(messages(), Names{}); }

    // Runs the tool as a host does.
    void run(std::initializer_list<driver::Step> steps) {
        driver::Driver user(steps);
        std::string error;
        EXPECT_EQ(runTool(tool, nullptr, error), AToolOutcome::done) << error;
        EXPECT_TRUE(user.finished());
    }
    static Names messages() {
        Names texts;
        for (const AString& text : takeKeptMessages()) texts.push_back(text.toUtf8());
        return texts;
    }
    // A red and a blue rectangle, a red oval in a group, a text without paint.
    void draw() {
        scene.filled(layer, _T("ARectangle"), 0xff0000, "red");
        scene.filled(layer, _T("ARectangle"), 0x0000ff, "blue");
        AParent* group = scene.addParent(layer, _T("AGroup"), "group");
        scene.filled(group, _T("AOval"), 0xff0000, "oval");
        scene.add(layer, _T("AText"), "text");
    }
    AObject* object(const char* name) { return scene.document.findObject(name); }

    static driver::Step ok() {
        return [](Dialog& sheet) { sheet.press("OK"); };
    }
    static driver::Step check(const char* page, const char* path) {
        return [=](Dialog& sheet) {
            sheet.page(page);
            sheet.check(path);
        };
    }
    static std::string listed(const std::vector<driver::TreeItem>& items) {
        std::string text;
        for (const driver::TreeItem& item : items) {
            text += (text.empty() ? "" : " ") + item.text;
            if (item.check != 1) text += ":" + std::to_string(item.check);
            if (!item.children.empty()) text += "(" + listed(item.children) + ")";
        }
        return text;
    }
    static std::string listed(const Dialog& sheet) { return listed(sheet.tree()); }
    static const driver::ControlDescription& control(const driver::DialogDescription& shown, int id) {
        for (const driver::ControlDescription& one : shown.controls) {
            if (one.id == id) return one;
        }
        static const driver::ControlDescription none;
        ADD_FAILURE() << "there is no control " << id;
        return none;
    }
};

const char kNoMatch[] = "No object matches the criteria.";

}  // namespace

TEST_F(Sheet, ShowsAPageForEachCategoryAndItsOwnCheckBox) {
    draw();
    run({[](Dialog& sheet) {
        const driver::DialogDescription shown = sheet.describe();
        EXPECT_EQ(shown.title, "Select by Attributes");
        EXPECT_EQ(shown.pages, (Names{"Object", "Dimension", "Fill", "Stroke", "Effect", "Layer"}));
        EXPECT_EQ(shown.page, "Object");
        EXPECT_EQ(control(shown, 1060).text, "All types");
        EXPECT_EQ(control(shown, 1061).text, "Show all");
        EXPECT_EQ(control(shown, 1062).text, "Selection only");
        EXPECT_EQ(control(shown, 1062).checked, false);
        EXPECT_FALSE(control(shown, 1062).enabled) << "nothing is selected";
        EXPECT_EQ(listed(sheet), "Rectangle Oval Group Text");
        sheet.press("Cancel");
    }});
}

TEST_F(Sheet, HasOkAndCancelAlone) {
    draw();
    run({[](Dialog& sheet) {
        const driver::DialogDescription shown = sheet.describe();
        Names buttons;
        for (const driver::ControlDescription& one : shown.controls) {
            if (one.className == "Button" && !one.checked) buttons.push_back(one.text);
        }
        EXPECT_EQ(buttons, (Names{"OK", "Cancel"})) << "neither Apply nor Help";
        sheet.press("Cancel");
    }});
    ASelectByAttrSheet sheet(&tool, IDS_SELECT_BY_ATTRIBUTES_CAPTION, nullptr, 0);
    EXPECT_EQ(sheet.m_psh.dwFlags & (PSH_HASHELP | PSH_NOAPPLYNOW), DWORD{PSH_NOAPPLYNOW});
    ASelectPage& page = sheet.createPage(_T("Fill"));
    EXPECT_EQ(page.m_psp.dwFlags & (PSP_HASHELP | PSP_USETITLE), DWORD{PSP_USETITLE});
    EXPECT_EQ(AString(page.m_psp.pszTitle), _T("Fill"));
}

TEST_F(Sheet, ItsCheckBoxSitsTwoPixelsLowerOnceTheSheetWasSized) {
    draw();
    RECT before{}, after{};
    run({[&](Dialog& sheet) {
        RECT client{};
        ::GetClientRect(sheet.window(), &client);
        const auto place = [&](RECT& rect) {
            rect = control(sheet.describe(), 1062).rect;
            EXPECT_EQ(rect.left, 24);
            EXPECT_EQ(rect.right, 160);
            EXPECT_EQ(rect.bottom - rect.top, 14);
        };
        place(before);
        ::SendMessageW(sheet.window(), WM_SIZE, SIZE_RESTORED, MAKELPARAM(client.right, client.bottom));
        place(after);
        EXPECT_EQ(after.top, client.bottom - 24);
        ::SendMessageW(sheet.window(), WM_SIZE, SIZE_RESTORED, MAKELPARAM(client.right, client.bottom + 40));
        EXPECT_EQ(control(sheet.describe(), 1062).rect.top, client.bottom + 16);
        sheet.press("Cancel");
    }});
}

TEST_F(Sheet, ItsCheckBoxHasTheSheetsFont) {
    draw();
    run({[](Dialog& sheet) {
        const LRESULT font = ::SendMessageW(sheet.window(), WM_GETFONT, 0, 0);
        EXPECT_NE(font, 0);
        EXPECT_EQ(::SendMessageW(::GetDlgItem(sheet.window(), 1062), WM_GETFONT, 0, 0), font);
        sheet.press("Cancel");
    }});
}

// Whoever set it, and whether it was clicked or not.
TEST_F(Sheet, OkReadsItsCheckBox) {
    draw();
    scene.select({object("blue")});
    run({check("Object", "Rectangle"),
         [](Dialog& sheet) {
             ::SendMessageW(::GetDlgItem(sheet.window(), 1062), BM_SETCHECK, BST_CHECKED, 0);
         },
         ok()});
    EXPECT_EQ(scene.selected(), Names{"blue"});
}

// The host's runner records a step of its own around a tool; here nobody does.
TEST_F(Sheet, ItsChangeIsAStepWhoeverStartsTheTool) {
    draw();
    scene.select({object("text")});
    const auto start = [&](std::initializer_list<driver::Step> steps) {
        driver::Driver user(steps);
        EXPECT_EQ(tool.onToolStart(), 1);
    };
    start({check("Object", "Oval"), ok()});
    EXPECT_EQ(scene.selected(), Names{"oval"});
    start({ok()});
    EXPECT_EQ(scene.selected(), Names{});
    EXPECT_EQ(messages(), Names{kNoMatch});
    EXPECT_TRUE(scene.view.getHistory().undo());
    EXPECT_EQ(scene.selected(), Names{"oval"});
    EXPECT_TRUE(scene.view.getHistory().undo());
    EXPECT_EQ(scene.selected(), Names{"text"});
}

TEST_F(Sheet, CancelChangesNothing) {
    draw();
    scene.select({object("text"), object("blue")});
    run({check("Object", "Oval"), [](Dialog& sheet) { sheet.press("Cancel"); }});
    EXPECT_EQ(scene.selected(), (Names{"text", "blue"}));
    EXPECT_FALSE(scene.view.getHistory().undo());
}

TEST_F(Sheet, NoFillSelectsExactlyTheObjectsWithoutAFill) {
    draw();
    run({check("Fill", "No fill"), ok()});
    EXPECT_EQ(scene.selected(), (Names{"group", "text"}));
}

TEST_F(Sheet, AClassAndAColorHoldTogether) {
    draw();
    run({check("Object", "Rectangle"), check("Fill", "Solid/RGB Color/red"), ok()});
    EXPECT_EQ(scene.selected(), Names{"red"});
}

TEST_F(Sheet, TwoClassesAreAlternatives) {
    draw();
    run({check("Object", "Text"), check("Object", "Oval"), ok()});
    EXPECT_EQ(scene.selected(), (Names{"oval", "text"})) << "in drawing order";
}

TEST_F(Sheet, AGroupAndItsMemberLeaveTheGroup) {
    draw();
    run({check("Object", "Group"), check("Object", "Oval"), ok()});
    EXPECT_EQ(scene.selected(), Names{"group"});
}

TEST_F(Sheet, NothingTickedEmptiesTheSelectionAndSaysSo) {
    draw();
    scene.select({object("red")});
    run({ok()});
    EXPECT_EQ(scene.selected(), Names{});
    EXPECT_EQ(messages(), Names{kNoMatch});
}

TEST_F(Sheet, NothingFoundEmptiesTheSelectionAndSaysSo) {
    draw();
    scene.select({object("red")});
    run({check("Object", "Text"), check("Fill", "Solid"), ok()});
    EXPECT_EQ(scene.selected(), Names{});
    EXPECT_EQ(messages(), Names{kNoMatch});
}

TEST_F(Sheet, OkIsOneStepOfTheHistory) {
    draw();
    scene.select({object("text")});
    run({check("Object", "Rectangle"), ok()});
    EXPECT_EQ(scene.selected(), (Names{"red", "blue"}));
    EXPECT_TRUE(scene.view.getHistory().undo());
    EXPECT_EQ(scene.selected(), Names{"text"});
    EXPECT_FALSE(scene.view.getHistory().undo());
    EXPECT_TRUE(scene.view.getHistory().redo());
    EXPECT_EQ(scene.selected(), (Names{"red", "blue"}));
}

TEST_F(Sheet, SelectionOnlyKeepsToWhatWasSelected) {
    draw();
    scene.select({object("blue"), object("group")});
    run({[](Dialog& sheet) {
             EXPECT_TRUE(control(sheet.describe(), 1062).enabled);
             sheet.press("Selection only");
             EXPECT_EQ(listed(sheet), "Rectangle Oval Group");
             sheet.check("Rectangle");
             sheet.page("Fill");
             EXPECT_EQ(listed(sheet), "No fill Solid(RGB Color(red blue))");
             sheet.check("Solid");
         },
         ok()});
    EXPECT_EQ(scene.selected(), Names{"blue"});
}

TEST_F(Sheet, SelectionOnlyStartsUntickedEachTime) {
    draw();
    scene.select({object("blue")});
    for (int i = 0; i < 2; ++i) {
        run({[](Dialog& sheet) {
            EXPECT_EQ(control(sheet.describe(), 1062).checked, false);
            sheet.press("Selection only");
            EXPECT_EQ(control(sheet.describe(), 1062).checked, true);
            sheet.press("Cancel");
        }});
    }
}

TEST_F(Sheet, ShowAllListsWhatNothingMakesUseOf) {
    draw();
    run({[](Dialog& sheet) {
             sheet.page("Stroke");
             EXPECT_EQ(listed(sheet), "No stroke");
             sheet.press("Show all");
             EXPECT_EQ(listed(sheet), "No stroke Pen");
             sheet.check("Pen");
             sheet.press("Show all");
             EXPECT_EQ(listed(sheet), "No stroke");
             sheet.press("Show all");
             EXPECT_EQ(listed(sheet), "No stroke Pen:3");
         },
         ok()});
    EXPECT_EQ(scene.selected(), Names{});
    EXPECT_EQ(messages(), Names{kNoMatch}) << "a class that never occurred takes no part";
}

TEST_F(Sheet, AllTypesGreysThePageWithEverythingCheckedAndGivesTheChecksBack) {
    draw();
    run({[](Dialog& sheet) {
             sheet.check("Text");
             sheet.press("All types");
             EXPECT_EQ(listed(sheet), "Rectangle:4 Oval:4 Group:4 Text:4");
             EXPECT_FALSE(control(sheet.describe(), 1059).enabled);
             sheet.press("All types");
             EXPECT_EQ(listed(sheet), "Rectangle Oval Group Text:3");
             EXPECT_TRUE(control(sheet.describe(), 1059).enabled);
         },
         ok()});
    EXPECT_EQ(scene.selected(), Names{"text"});
}

TEST_F(Sheet, AllTypesContributesEveryConditionOfThePage) {
    draw();
    run({[](Dialog& sheet) {
             sheet.page("Layer");
             sheet.press("All types");
             sheet.page("Object");
             sheet.check("Oval");
         },
         ok()});
    EXPECT_EQ(scene.selected(), Names{"oval"});
}

TEST_F(Sheet, ThatIsOpenedAgainShowsAllTypesStill) {
    draw();
    tool.prepareSelectionData(scene.view);
    ASelectByAttrSheet sheet(&tool, IDS_SELECT_BY_ATTRIBUTES_CAPTION, nullptr, 0);
    tool.createPages(sheet);
    tool.fillPages(sheet);
    sheet.addPages();
    driver::Driver user({[](Dialog& shown) {
                             shown.press("All types");
                             shown.press("Cancel");
                         },
                         [](Dialog& shown) {
                             EXPECT_EQ(listed(shown), "Rectangle:4 Oval:4 Group:4 Text:4");
                             shown.press("Cancel");
                         }});
    sheet.DoModal();
    sheet.DoModal();
    EXPECT_TRUE(user.finished());
}

TEST_F(Sheet, ATickedClassTakesWhatHasNoneOfItsSubKinds) {
    dynamic_cast<ABitmap*>(scene.add(layer, _T("ABitmap"), "rgb"))->setColorModel(ABitmap::rgb);
    dynamic_cast<ABitmap*>(scene.add(layer, _T("ABitmap"), "other"))->setColorModel(99);
    run({check("Object", "Bitmap"), ok()});
    EXPECT_EQ(scene.selected(), (Names{"rgb", "other"}));
}

// The sheet's pages look after the selection, too.
TEST_F(Sheet, APageOfItsOwnListsEverythingWithShowAll) {
    CPropertySheet sheet(IDS_SELECT_BY_ATTRIBUTES_CAPTION, nullptr, 0);
    ACheckPage page(&sheet, _T("Own"));
    page.addCondition(new ACondition(_T("Oval"), _T("AOval")));
    sheet.AddPage(&page);
    driver::Driver user({[](Dialog& shown) {
        EXPECT_EQ(listed(shown), "");
        shown.press("Show all");
        EXPECT_EQ(listed(shown), "Oval");
        shown.press("Cancel");
    }});
    sheet.DoModal();
    EXPECT_TRUE(user.finished());
}

TEST_F(Sheet, OnlyTheActivePageAppliesOnce) {
    draw();
    run({check("Fill", "Solid/RGB Color/blue"), check("Object", "Rectangle"),
         [](Dialog& sheet) { sheet.page("Layer"); }, ok()});
    EXPECT_EQ(scene.selected(), Names{"blue"});
    EXPECT_TRUE(scene.view.getHistory().undo());
    EXPECT_FALSE(scene.view.getHistory().undo());
}

TEST_F(Sheet, GroupsShowFolders) {
    draw();
    run({[](Dialog& sheet) {
        sheet.page("Fill");
        const auto solid = [&] { return sheet.tree()[1]; };
        EXPECT_EQ(solid().text, "Solid");
        EXPECT_EQ(solid().image, 4);
        EXPECT_EQ(solid().children[0].image, 4);
        sheet.collapse("Solid");
        EXPECT_EQ(solid().image, 2);
        sheet.press("Cancel");
    }});
}

TEST_F(Sheet, TheToolKeepsNothing) {
    draw();
    scene.select({object("red")});
    run({[this](Dialog& sheet) {
        EXPECT_EQ(tool.getCandidateObjects().GetSize(), 5);
        sheet.press("Cancel");
    }});
    EXPECT_EQ(tool.getCandidateObjects().GetSize(), 0);
    EXPECT_EQ(tool.getSelectedLayers().GetCount(), 0);
}

TEST_F(Sheet, WithoutAnObjectTheToolIsNotValid) {
    EXPECT_EQ(tool.isValid(), 0);
    draw();
    EXPECT_EQ(tool.isValid(), 1);
    scene.application.setActiveView(nullptr);
    EXPECT_EQ(tool.isValid(), 0);
}

TEST_F(Sheet, WithoutAViewNothingIsAppliedOrSaid) {
    draw();
    scene.select({object("red")});
    run({[this](Dialog& sheet) {
        sheet.check("Text");
        scene.application.setActiveView(nullptr);
        sheet.press("OK");
        scene.application.setActiveView(&scene.view);
    }});
    EXPECT_EQ(scene.selected(), Names{"red"});
}
