// The window as a user meets it: opens, points, zooms, runs tools and their dialogs, saves.
#include "window/window_fixture.h"

#include <shlobj.h>

#include <cstring>
#include <fstream>

#include "app/output.h"
#include "app/picture.h"
#include "app/script/interpreter.h"
#include "app/window/window.h"
#include "canvas/image.h"
#include "kzutil/utf.h"

namespace test {

namespace {

using namespace app::window;
using Names = std::vector<std::string>;

constexpr UINT kShift = MK_SHIFT;

std::string readFile(const std::string& file) {
    std::ifstream stream(std::filesystem::path(kzutil::widen(file)), std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

AImage pictureIn(const std::string& bytes) {
    return decodeImage({reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size()});
}

int indexOf(const ColorStrip& strip, const std::string& name) {
    for (std::size_t i = 0; i < strip.swatches().size(); ++i) {
        if (strip.swatches()[i].name == name) return static_cast<int>(i);
    }
    return -1;
}

// How far the two are apart at most, in any component of any pixel.
int difference(const AImage& a, const AImage& b) {
    if (a.width() != b.width() || a.height() != b.height()) return 256;
    int most = 0;
    for (std::size_t i = 0; i < a.pixels().size(); ++i) {
        for (int shift = 0; shift < 24; shift += 8) {
            const auto of = [&](const AImage& image) {
                return static_cast<int>(image.pixels()[i] >> shift & 255);
            };
            most = std::max(most, std::abs(of(a) - of(b)));
        }
    }
    return most;
}

class Window : public WindowTest {};

TEST_F(Window, ShowsTheDrawingAsTheCommandLineDrawsIt) {
    EXPECT_EQ(kzutil::narrow(window.GetWindowText()), "park.svg \xE2\x80\x93 kzdraw");
    const Viewport& place = window.canvas().place();
    window.canvas().zoomBy(place.width() / place.page().Width() * 1.3 / place.zoom());
    const AImage seen = grabCanvas();
    const std::string picture = utf8(folder.path() / "seen.png");
    user.file = picture;
    window.perform(kExportSeen);
    EXPECT_TRUE(user.told.empty()) << user.told.back();
    EXPECT_EQ(difference(pictureIn(readFile(picture)), seen), 0);
}

TEST_F(Window, TheWheelZoomsAtThePointerAndKeysZoomToo) {
    const CPoint at = pixelOf(62, 52);
    wheel(at, 3);
    const CPoint after = pixelOf(62, 52);
    EXPECT_NEAR(after.x, at.x, 2);
    EXPECT_NEAR(after.y, at.y, 2);
    const double zoom = window.canvas().place().zoom();
    key(VK_OEM_PLUS);
    EXPECT_GT(window.canvas().place().zoom(), zoom);
    key('1');
    EXPECT_DOUBLE_EQ(window.canvas().place().percent(), 100);
    EXPECT_EQ(status(4), "100 %");
    pressButton(kFit);
    const AFRect page = window.canvas().place().toPixels({0, 0, 100, 80});
    EXPECT_GE(page.left, 0);
    EXPECT_LE(page.bottom, window.canvas().place().height());
}

TEST_F(Window, MiddleButtonSpaceArrowsAndScrollBarsPan) {
    window.canvas().zoomBy(3);
    CanvasWindow& canvas = window.canvas();
    const auto at = [&] { return pixelOf(50, 40); };
    CPoint before = at();
    canvas.SendMessage(WM_MBUTTONDOWN, MK_MBUTTON, MAKELPARAM(100, 100));
    canvas.SendMessage(WM_MOUSEMOVE, MK_MBUTTON, MAKELPARAM(130, 90));
    canvas.SendMessage(WM_MBUTTONUP, 0, MAKELPARAM(130, 90));
    EXPECT_EQ(at().x, before.x + 30);
    EXPECT_EQ(at().y, before.y - 10);
    before = at();
    canvas.SendMessage(WM_KEYDOWN, VK_SPACE, 1);
    drag({50, 50}, {70, 40});
    canvas.SendMessage(WM_KEYUP, VK_SPACE, 1);
    EXPECT_EQ(at().x, before.x + 20);
    EXPECT_TRUE(selected().empty());
    before = at();
    key(VK_RIGHT);
    EXPECT_LT(at().x, before.x);
    before = at();
    canvas.SendMessage(WM_VSCROLL, SB_LINEDOWN, 0);
    EXPECT_LT(at().y, before.y);
    before = at();
    wheel({10, 10}, 1, MK_SHIFT);
    EXPECT_GT(at().x, before.x);
}

TEST_F(Window, ClicksAndBandsSelectAndShiftAdds) {
    click(12, 52);
    EXPECT_EQ(selected(), Names{"wall"});
    EXPECT_EQ(status(2), "1 selected");
    click(50, 10, kShift);
    EXPECT_EQ(selected(), (Names{"wall", "sun"}));
    click(12, 52, kShift);
    EXPECT_EQ(selected(), Names{"sun"});
    band(8, 48, 35, 75);
    EXPECT_EQ(selected(), (Names{"wall", "door"}));
    band(75, 65, 65, 52, kShift);
    EXPECT_EQ(selected(), (Names{"wall", "door", "lawn", "kiosk"}));
    click(50, 25);
    EXPECT_EQ(selected(), Names());
    key('A', "Ctrl");
    EXPECT_EQ(selected().size(), 5U);
    key(VK_ESCAPE);
    EXPECT_EQ(selected(), Names());
    EXPECT_EQ(recorded(),
              "select wall\nselect wall sun\nselect sun\nselect wall door\nselect wall door lawn kiosk\n"
              "select none\nselect all\nselect none\n");
}

TEST_F(Window, SelectionsAreUndoneAndRedone) {
    EXPECT_FALSE(window.commandBar().isEnabled(kUndo));
    click(12, 52);
    band(8, 48, 35, 75);
    key('A', "Ctrl");
    key('Z', "Ctrl");
    EXPECT_EQ(selected(), (Names{"wall", "door"}));
    pressButton(kUndo);
    EXPECT_EQ(selected(), Names{"wall"});
    pressButton(kUndo);
    EXPECT_EQ(selected(), Names());
    EXPECT_FALSE(window.commandBar().isEnabled(kUndo));
    key('Y', "Ctrl");
    EXPECT_EQ(selected(), Names{"wall"});
    EXPECT_EQ(status(2), "1 selected");
}

TEST_F(Window, WhatIsSelectedIsMarked) {
    const CPoint corner = pixelOf(60, 55);
    const AImage before = grabCanvas();
    click(62, 52);
    const AImage after = grabCanvas();
    EXPECT_NE(after.at(corner.x, corner.y), before.at(corner.x, corner.y));
    EXPECT_EQ(after.at(pixelOf(5, 45).x, pixelOf(5, 45).y), before.at(pixelOf(5, 45).x, pixelOf(5, 45).y));
}

TEST_F(Window, EscapeGivesUpARubberBandFirst) {
    click(12, 52);
    const CPoint at = pixelOf(55, 45);
    window.canvas().SendMessage(WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(at.x, at.y));
    window.canvas().SendMessage(WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(at.x + 90, at.y + 90));
    key(VK_ESCAPE);
    window.canvas().SendMessage(WM_LBUTTONUP, 0, MAKELPARAM(at.x + 90, at.y + 90));
    EXPECT_EQ(selected(), Names{"wall"});
}

TEST_F(Window, ToolsAreOnTheBarWithNamesAndTipsEnabledAsTheySay) {
    ASSERT_EQ(window.session().plugIns().tools().size(), 9U);
    const int similar = toolCommand(window, "ASelectSimilarTool");
    EXPECT_FALSE(window.toolColumn().isEnabled(similar)) << "nothing is selected";
    NMTTDISPINFOW asked = {};
    asked.hdr = {window.toolColumn().tips(), static_cast<UINT_PTR>(similar),
                 static_cast<UINT>(TTN_GETDISPINFOW)};
    window.SendMessage(WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&asked));
    ASSERT_TRUE(asked.lpszText);
    EXPECT_EQ(kzutil::narrow(asked.lpszText), "Selects all objects of the same type");
    click(12, 52);
    EXPECT_TRUE(window.toolColumn().isEnabled(similar));
    pressButton(similar);
    EXPECT_EQ(selected(), (Names{"lawn", "wall", "door", "kiosk"}));
    key('Z', "Ctrl");
    EXPECT_EQ(selected(), Names{"wall"});
    key('Y', "Ctrl");
    EXPECT_EQ(selected().size(), 4U);
    EXPECT_EQ(recorded(), "select wall\ntool ASelectSimilarTool\nundo\nredo\n");
}

TEST_F(Window, BothDialogsRunAndWhatIsDoneInThemIsRecorded) {
    {
        driver::Driver acts({
            [](driver::Dialog& sheet) { sheet.page("Fill"); },
            [](driver::Dialog& sheet) { sheet.check("Solid/RGB Color/red"); },
            [&](driver::Dialog& sheet) {
                const RECT place = sheet.describe().rect;
                RECT around;
                window.GetWindowRect(&around);
                EXPECT_NEAR(place.left - around.left, around.right - place.right, 1) << "in the middle";
                EXPECT_NEAR(place.top - around.top, around.bottom - place.bottom, 1);
                keepPicture("dialog-sheet");
                sheet.press("OK");
            },
        });
        key('2', "Alt");
        EXPECT_TRUE(acts.finished());
    }
    EXPECT_EQ(selected(), (Names{"wall", "kiosk"}));
    {
        driver::Driver acts({
            [](driver::Dialog& dialog) { dialog.press("Show All"); },
            [](driver::Dialog& dialog) { dialog.uncheck("RGB Color/red"); },
            [&](driver::Dialog& dialog) {
                keepPicture("dialog-filter");
                dialog.press("OK");
            },
        });
        pressButton(toolCommand(window, "AViewFilterTool"));
        EXPECT_TRUE(acts.finished());
    }
    EXPECT_EQ(hidden(), 2);
    const std::string record = recorded();
    EXPECT_EQ(record,
              "tool ASelectByAttrTool\n  page Fill\n  click 'Solid/RGB Color/red'\n  press OK\n"
              "tool AViewFilterTool\n  press 'Show All'\n  click 'RGB Color/red'\n  press OK\n");

    std::string again, here;
    {
        app::Session other;
        other.openBytes(kPark, "park.svg");
        std::istringstream script(record + "print selection\nprint filter\n");
        const app::PrintedText printed(again);
        app::interpret(other, script, "S");
    }
    for (const char* what : {"selection", "filter"}) here += window.lines().run({"print", what});
    EXPECT_EQ(again, here);
}

TEST_F(Window, ACancelledDialogChangesNothing) {
    driver::Driver acts({[](driver::Dialog& dialog) { dialog.press("Show None"); },
                         [](driver::Dialog& dialog) { dialog.press("Cancel"); }});
    window.perform(toolCommand(window, "AViewFilterTool"));
    EXPECT_TRUE(acts.finished());
    EXPECT_EQ(hidden(), 0);
    EXPECT_FALSE(::IsWindowVisible(window.badge()));
}

TEST_F(Window, AMessageOfAToolIsShown) {
    click(50, 10);
    driver::Driver acts({[](driver::Dialog& sheet) { sheet.press("OK"); }});
    window.perform(toolCommand(window, "ASelectByAttrTool"));
    EXPECT_EQ(user.told, Names{"No object matches the criteria."});
}

TEST_F(Window, TheStripOffersTheFourColorToolsAndTheBadgeClearsTheFilter) {
    ColorStrip& strip = window.strip();
    const RECT red = strip.rectOf(indexOf(strip, "red"));
    user.choice = "Hide This Color";
    strip.SendMessage(WM_RBUTTONDOWN, MK_RBUTTON, MAKELPARAM(red.left + 4, red.top + 4));
    strip.SendMessage(WM_CONTEXTMENU, reinterpret_cast<WPARAM>(strip.m_hWnd), MAKELPARAM(10, 10));
    settle();
    EXPECT_EQ(user.menu, (Names{"red \xC2\xB7 RGB Color \xC2\xB7 2 objects", "", "All But This Color",
                                "Show This Color", "Hide This Color", "Hide All But This Color"}));
    EXPECT_EQ(hidden(), 2);
    EXPECT_FALSE(strip.swatches()[static_cast<std::size_t>(indexOf(strip, "red"))].isVisible);
    EXPECT_TRUE(::IsWindowVisible(window.badge()));
    const CPoint wall = pixelOf(12, 52);
    const AImage picture = grabCanvas();
    EXPECT_EQ(picture.at(wall.x, wall.y), 0xff008000) << "the lawn shows through";
    click(12, 52);
    EXPECT_EQ(selected(), Names{"lawn"}) << "what is hidden cannot be clicked";

    clickOn(window.badge(), {5, 5});
    EXPECT_EQ(hidden(), 0);
    EXPECT_FALSE(::IsWindowVisible(window.badge()));
    EXPECT_EQ(recorded(), "tool AHideThisTool 'color:RGB Color/red'\nselect lawn\ntool AShowAllTool\n");
}

TEST_F(Window, ColorToolsWorkOnTheChosenColorByKeysToo) {
    window.perform(toolCommand(window, "AHideThisTool"));
    EXPECT_EQ(user.told, Names{"Choose a color in the strip first."});
    key(VK_F6);
    EXPECT_EQ(::GetFocus(), window.strip().m_hWnd);
    key(VK_RIGHT);
    key(VK_RIGHT);
    ASSERT_TRUE(window.strip().chosen());
    user.choice = "Hide All But This Color";
    key(VK_RETURN);
    EXPECT_GT(hidden(), 0);
    EXPECT_EQ(status(0), window.strip().chosen()->description());
    key('F', "Ctrl Shift");
    EXPECT_EQ(hidden(), 0);
    key(VK_ESCAPE);
    EXPECT_EQ(::GetFocus(), window.canvas().m_hWnd);
}

TEST_F(Window, ATipTellsOfTheColorUnderThePointer) {
    const RECT gold = window.strip().rectOf(indexOf(window.strip(), "gold"));
    window.strip().SendMessage(WM_MOUSEMOVE, 0, MAKELPARAM(gold.left + 3, gold.top + 3));
    NMTTDISPINFOW asked = {};
    asked.hdr = {window.strip().tips(), 0, static_cast<UINT>(TTN_GETDISPINFOW)};
    window.SendMessage(WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&asked));
    ASSERT_TRUE(asked.lpszText);
    EXPECT_EQ(kzutil::narrow(asked.lpszText), "gold \xC2\xB7 RGB Color \xC2\xB7 1 object");
}

TEST_F(Window, LayersHaveAnEyeAndALock) {
    LayerList& layers = window.layers();
    ASSERT_EQ(layers.rows().size(), 2U);
    const CPoint sun = pixelOf(50, 10);
    clickOn(layers, layers.eyeOf(0));
    EXPECT_TRUE(layers.rows()[0].isHidden);
    EXPECT_EQ(grabCanvas().at(sun.x, sun.y), 0xffffffff);
    key(VK_SPACE);
    EXPECT_FALSE(layers.rows()[0].isHidden);
    EXPECT_EQ(grabCanvas().at(sun.x, sun.y), 0xffffd700);
    click(12, 52);
    clickOn(layers, layers.lockOf(1));
    EXPECT_TRUE(layers.rows()[1].isLocked);
    EXPECT_EQ(selected(), Names());
    click(12, 52);
    EXPECT_EQ(selected(), Names());
    EXPECT_EQ(recorded(), "layer Air hide\nlayer Air show\nselect wall\nlayer Ground lock\n");
    key(VK_F7);
    EXPECT_FALSE(layers.IsWindowVisible());
}

TEST_F(Window, SavesTheDrawingAndExportsThePage) {
    const std::string copy = utf8(folder.path() / "copy.svg"), picture = utf8(folder.path() / "page.png");
    user.file = copy;
    key('S', "Ctrl");
    EXPECT_EQ(readFile(copy), kPark);
    EXPECT_TRUE(user.suggestion.ends_with("park.svg"));
    user.file = picture;
    key('E', "Ctrl");
    EXPECT_TRUE(user.suggestion.ends_with("park.png"));
    EXPECT_EQ(readFile(picture), app::drawPng(window.session().view(), {}));
    window.runLine({"tool", "AHideThisTool", "color:gold"});
    user.file = copy;
    window.perform(kSaveShown);
    EXPECT_EQ(readFile(copy).find("\"sun\""), std::string::npos);
    EXPECT_TRUE(user.told.empty());
}

TEST_F(Window, AFileThatCannotBeWrittenIsTold) {
    user.file = utf8(folder.path() / "no such folder" / "x.svg");
    window.perform(kSave);
    ASSERT_EQ(user.told.size(), 1U);
    EXPECT_TRUE(user.wasError);
    EXPECT_NE(user.told[0].find("x.svg"), std::string::npos);
    EXPECT_EQ(recorded(), "");
}

TEST_F(Window, HostileFilesAreRefusedWithTheReasonAndTheOldDrawingStays) {
    click(12, 52);
    const AImage before = grabCanvas();
    const std::pair<const char*, const char*> files[] = {
        {"", "the file is empty"},
        {"\x1F\x8B\x08 zipped", ""},
        {"<svg xmlns='http://www.w3.org/2000/svg'><g>", "the file ends in the middle"},
        {"<html/>", "its root is <html>"},
        {"no drawing at all", "there is no element in it"},
        {"<!DOCTYPE svg [<!ENTITY a 'aaaaaaaaaa'><!ENTITY b '&a;&a;&a;&a;&a;&a;&a;&a;&a;&a;'><!ENTITY c "
         "'&b;&c;'>]><svg xmlns='http://www.w3.org/2000/svg'>&c;</svg>",
         ""},
    };
    for (const auto& [bytes, reason] : files) {
        user.told.clear();
        user.file = write("hostile.svg", bytes);
        key('O', "Ctrl");
        ASSERT_EQ(user.told.size(), 1U) << bytes;
        EXPECT_TRUE(user.wasError);
        EXPECT_NE(user.told[0].find("hostile.svg"), std::string::npos) << user.told[0];
        EXPECT_NE(user.told[0].find(reason), std::string::npos) << user.told[0];
    }
    EXPECT_EQ(kzutil::narrow(window.GetWindowText()), "park.svg \xE2\x80\x93 kzdraw");
    EXPECT_EQ(selected(), Names{"wall"});
    EXPECT_EQ(difference(grabCanvas(), before), 0);
    EXPECT_EQ(recorded(), "select wall\n");
}

TEST_F(Window, ADroppedFileIsOpened) {
    const kzutil::WideString name = kzutil::widen(write("gr\xC3\xBC\xC3\x9F.svg", kPark));
    const std::size_t bytes = sizeof(DROPFILES) + (name.size() + 2) * sizeof(WCHAR);
    const HGLOBAL memory = GlobalAlloc(GHND, bytes);
    auto* const drop = static_cast<DROPFILES*>(GlobalLock(memory));
    drop->pFiles = sizeof(DROPFILES);
    drop->fWide = TRUE;
    std::memcpy(drop + 1, name.c_str(), (name.size() + 1) * sizeof(WCHAR));
    GlobalUnlock(memory);
    window.PostMessage(WM_DROPFILES, reinterpret_cast<WPARAM>(memory));
    settle();
    EXPECT_EQ(kzutil::narrow(window.GetWindowText()), "gr\xC3\xBC\xC3\x9F.svg \xE2\x80\x93 kzdraw");
    EXPECT_TRUE(user.told.empty());
}

TEST_F(Window, RecentFilesAreInTheMenuAndThoseThatAreGoneLeaveIt) {
    const std::string other = write("other.svg", kPark);
    window.open(other);
    const auto caption = [&](int i) {
        const MenuEntry* const entry = findEntry(window.menuBar().menus(), kFirstRecent + i);
        return entry ? plainCaption(entry->caption) : std::string();
    };
    EXPECT_TRUE(caption(0).ends_with("other.svg"));
    EXPECT_TRUE(caption(1).ends_with("park.svg"));
    window.perform(kFirstRecent + 1);
    EXPECT_TRUE(caption(0).ends_with("park.svg"));
    std::filesystem::remove(folder.path() / "other.svg");
    window.perform(kFirstRecent + 1);
    EXPECT_EQ(user.told.size(), 1U);
    EXPECT_EQ(caption(1), "");
}

TEST_F(Window, WhatWasDoneIsCopiedAsAScript) {
    click(12, 52);
    key('C', "Ctrl Shift");
    ASSERT_TRUE(OpenClipboard(window.m_hWnd));
    const HANDLE data = GetClipboardData(CF_UNICODETEXT);
    std::string text;
    if (data) text = kzutil::narrow(static_cast<const WCHAR*>(GlobalLock(data)));
    CloseClipboard();
    EXPECT_EQ(text, "select wall\n");
    window.perform(kForgetScript);
    EXPECT_EQ(recorded(), "");
    EXPECT_FALSE(findEntry(window.menuBar().menus(), kCopyScript)->isEnabled);
}

TEST_F(Window, OpeningALargeDrawingShowsProgressAndCanBeCancelled) {
    std::string large = "<svg xmlns='http://www.w3.org/2000/svg' width='9' height='9'>";
    for (int i = 0; i < 60000; ++i) large += "<rect x='1' y='2' width='3' height='4' fill='red'/>";
    const std::string file = write("large.svg", large + "</svg>");
    window.setPatience(std::chrono::milliseconds(0));
    std::string title;
    {
        const driver::Driver acts([&](driver::Dialog& dialog) {
            if (!dialog.isOpen() || !title.empty()) return true;  // until the thread has noticed
            title = dialog.describe().title;
            dialog.press("Cancel");
            return true;
        });
        EXPECT_FALSE(window.open(file));
    }
    EXPECT_EQ(title, "Opening a drawing");
    EXPECT_EQ(user.told, Names()) << "who cancels knows";
    EXPECT_EQ(status(1), "5 objects");
    EXPECT_TRUE(window.IsWindowEnabled());
    EXPECT_TRUE(window.open(file));
    EXPECT_EQ(status(1), "60,000 objects");
}

TEST_F(Window, FollowsAScreenOfAnotherDensity) {
    RECT rect;
    window.GetWindowRect(&rect);
    rect.right += 300;
    rect.bottom += 200;
    const int before = window.strip().height();
    window.SendMessage(WM_DPICHANGED, MAKEWPARAM(144, 144), reinterpret_cast<LPARAM>(&rect));
    settle();
    EXPECT_EQ(2 * window.strip().height(), 3 * before);
    window.perform(kFullSize);
    EXPECT_DOUBLE_EQ(window.canvas().place().zoom(), 1.5);
    paint();
    keepPicture("window-144-dpi");
    const RECT button = window.commandBar().buttonRect(kOpen);
    EXPECT_GE(button.right - button.left, 30);
}

// The pictures of the user guide.
TEST_F(Window, TheHarbourBeforeAndAfterAColorIsHidden) {
    window.MoveWindow(0, 0, 1080, 760);
    ASSERT_TRUE(window.open(std::string(KZ_SAMPLES) + "/harbour.svg"));
    paint();
    keepPicture("window-before");
    const AImage before = grabCanvas();
    window.runLine({"select", "house-1-roof"});
    window.perform(toolCommand(window, "ASelectSimilarTool"));
    paint();
    keepPicture("window");
    {
        driver::Driver acts({[](driver::Dialog& sheet) { sheet.page("Fill"); },
                             [](driver::Dialog& sheet) { sheet.check("Solid/Spot Color/Signal Red"); },
                             [&](driver::Dialog& sheet) {
                                 keepPicture("window-sheet");
                                 sheet.press("OK");
                             }});
        window.perform(toolCommand(window, "ASelectByAttrTool"));
    }
    EXPECT_GT(selected().size(), 0U);
    EXPECT_TRUE(user.told.empty()) << user.told.back();
    window.perform(kSelectNone);
    window.strip().choose(indexOf(window.strip(), "Signal Red"));
    window.perform(toolCommand(window, "AHideThisTool"));
    paint();
    keepPicture("window-filtered");
    EXPECT_GT(hidden(), 0);
    EXPECT_GT(difference(grabCanvas(), before), 100);
    driver::Driver acts({[](driver::Dialog& dialog) { dialog.move(330, 120); },
                         [&](driver::Dialog& dialog) {
                             keepPicture("window-view-filter");
                             dialog.press("Cancel");
                         }});
    window.perform(toolCommand(window, "AViewFilterTool"));
    EXPECT_TRUE(acts.finished());
}

TEST(WindowArguments, OneDrawingWithoutACommandIsForTheWindow) {
    EXPECT_TRUE(app::isForWindow({"C:\\drawings\\Harbour.SVG"}));
    for (const Names& others : {Names{"info"}, Names{"-x.svg"}, Names{"a.svg", "b.svg"}, Names{"--help"}})
        EXPECT_FALSE(app::isForWindow(others)) << others[0];
}

class EmptyWindow : public WindowTest {
protected:
    void SetUp() override { createWindow(); }
};

TEST_F(EmptyWindow, OffersNothingThatNeedsADrawing) {
    for (const int command : {kSave, kUndo, kZoomIn, kFit})
        EXPECT_FALSE(window.commandBar().isEnabled(command));
    for (int tool = 0; tool < 9; ++tool) EXPECT_FALSE(window.toolColumn().isEnabled(kFirstTool + tool));
    EXPECT_TRUE(window.commandBar().isEnabled(kOpen));
    for (const int one : {VK_RETURN, VK_ESCAPE, VK_LEFT, VK_F6, VK_RIGHT, VK_RETURN, VK_F6, VK_SPACE})
        key(one);
    for (int one = '1'; one <= '9'; ++one) key(one, "Alt");
    for (const int one : {'A', 'S', 'E', 'Z', 'Y'}) key(one, "Ctrl");
    drag({10, 10}, {90, 90});
    wheel({10, 10}, 2);
    paint();
    EXPECT_TRUE(user.told.empty()) << user.told.back();
    EXPECT_EQ(status(0), "Drop an SVG drawing here, or open one.");
    EXPECT_EQ(kzutil::narrow(window.GetWindowText()), "kzdraw");
}

}  // namespace

}  // namespace test
