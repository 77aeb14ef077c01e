// What the window is made of, apart from windows: the same on both builds.
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <set>
#include <sstream>

#include "app/output.h"
#include "app/script/interpreter.h"
#include "app/script/words.h"
#include "app/window/canvas_picture.h"
#include "app/window/icons.h"
#include "app/window/menu_model.h"
#include "app/window/opening.h"
#include "app/window/pointing.h"
#include "app/window/recent_files.h"
#include "app/window/swatches.h"
#include "app/window/viewport.h"
#include "app/window/window_lines.h"
#include "kzutil/preference_manager.h"
#include "support/temp_folder.h"

namespace {

using namespace app::window;
using Json = nlohmann::json;
using Words = std::vector<std::string>;

constexpr char kYard[] = R"svg(<svg xmlns="http://www.w3.org/2000/svg" width="100" height="80"
     xmlns:inkscape="http://www.inkscape.org/namespaces/inkscape"
     xmlns:sodipodi="http://sodipodi.sourceforge.net/DTD/sodipodi-0.dtd">
  <defs><linearGradient id="dawn"><stop offset="0" stop-color="white"/><stop offset="1" stop-color="gold"/>
    </linearGradient><rect id="blade" width="2" height="6" fill="green"/></defs>
  <g inkscape:groupmode="layer" inkscape:label="Ground">
    <rect id="lawn" y="40" width="100" height="40" fill="green"/>
    <g id="hut"><rect id="wall" x="10" y="50" width="20" height="20" fill="red"/>
      <rect id="door" x="16" y="58" width="6" height="12" fill="url(#dawn)"/></g>
    <use id="grass" href="#blade" x="60" y="50"/>
    <rect id="stone" x="80" y="50" width="5" height="5" fill="gray" sodipodi:insensitive="true"/>
  </g>
  <g inkscape:groupmode="layer" inkscape:label="Air">
    <circle id="sun" cx="50" cy="10" r="5" fill="gold"/>
  </g>
</svg>
)svg";

class WindowParts : public testing::Test {
protected:
    WindowParts() { session.openBytes(kYard, "park.svg"); }

    std::vector<std::string> selected() {
        std::vector<std::string> names;
        for (const AObject* object : session.view().m_selection->getObjects())
            names.emplace_back(object->getNameUtf8());
        return names;
    }
    std::string failureOf(const Words& words) {
        try {
            lines.run(words);
        } catch (const app::Failure& failure) {
            return failure.reason;
        }
        return "none";
    }

    app::Session session;
    WindowLines lines{session, [this](const std::string& file) { session.open(file); }};
    test::TempFolder folder;
};

// The caption has an access key that is not among those taken, which then holds it.
void expectOwnAccessKey(const std::string& caption, std::string& taken) {
    std::size_t at = 0;
    while (at < caption.size() && (caption[at] != '&' || caption[at + 1] == '&'))
        at += caption[at] == '&' ? 2 : 1;
    ASSERT_LT(at, caption.size()) << caption;
    const char key = static_cast<char>(std::toupper(caption[at + 1]));
    EXPECT_EQ(taken.find(key), taken.npos) << caption;
    taken += key;
}

TEST(Words, AreJoinedSoThatALineSplitsIntoThemAgain) {
    const std::vector<std::string> words = {
        "open", "C:\\My Files\\it's \"new\".svg", "", "#12", "a b", "$x`y`", "'", "\\", "Gr\xC3\xBC\xC3\x9F"};
    std::vector<std::string> split;
    std::string error;
    ASSERT_TRUE(app::splitWords(app::joinWords(words), split, error)) << error;
    EXPECT_EQ(split, words);
    EXPECT_EQ(app::joinWords({"tool", "AHideThisTool", "color:RGB Color/red"}),
              "tool AHideThisTool 'color:RGB Color/red'");
}

TEST(Viewport, FitsThePageInTheMiddleAndFollowsTheWindow) {
    Viewport place;
    place.resize(448, 348);
    place.setPage({10, 20, 110, 70}, 2);
    EXPECT_DOUBLE_EQ(place.zoom(), 4);
    EXPECT_DOUBLE_EQ(place.percent(), 200);
    const AFRect page = place.toPixels(place.page());
    EXPECT_EQ(page.left, 24);
    EXPECT_EQ(page.top, 74);
    place.resize(248, 348);
    EXPECT_DOUBLE_EQ(place.zoom(), 2);
    place.panBy(5, 0);
    place.resize(300, 300);
    EXPECT_DOUBLE_EQ(place.zoom(), 2) << "what was moved is not fitted again";
}

TEST(Viewport, KeepsWhatIsAtThePixelThatItZoomsAt) {
    Viewport place;
    place.resize(800, 600);
    place.setPage({0, 0, 400, 300}, 1);
    const AFPoint pixel{130, 470};
    AFPoint before = place.toDrawing(pixel);
    for (const double factor : {1.25, 1.25, 3.0, 0.8, 0.1}) {
        place.zoomBy(factor, pixel);
        const AFPoint after = place.toDrawing(pixel);
        EXPECT_NEAR(after.x, before.x, 0.51 / place.zoom());
        EXPECT_NEAR(after.y, before.y, 0.51 / place.zoom());
        before = after;
    }
    place.showFullSize();
    EXPECT_DOUBLE_EQ(place.percent(), 100);
}

TEST(Viewport, NeverLosesThePageNorItsNumbers) {
    Viewport place;
    place.resize(640, 480);
    for (const AFRect& page :
         {AFRect{0, 0, 100, 100}, AFRect{-1e7, -1e7, 1e7, 1e7}, AFRect{0, 0, 1e-3, 1e-3}}) {
        place.setPage(page, 1);
        for (const double step : {1e6, -1e6, 1e12, -1e12}) {
            place.panBy(step, step);
            const AFRect box = place.toPixels(page);
            EXPECT_LT(box.left, 640);
            EXPECT_GT(box.right, 0);
        }
        for (const double factor : {1e3, 1e30, 1e-3, 1e-30}) {
            place.zoomBy(factor, {600, 10});
            const RECT area = place.area();
            EXPECT_EQ(area.right - area.left, 640);
            EXPECT_LT(std::abs(static_cast<double>(area.left)), 1 << 29);
            EXPECT_GT(place.zoom(), 0);
        }
    }
}

TEST(Viewport, TellsScrollBarsAboutThePageAndWhatIsSeen) {
    Viewport place;
    place.resize(200, 100);
    place.setPage({0, 0, 100, 100}, 1);
    place.zoomTo(10, {100, 50});
    const ScrollRange across = place.across(), down = place.down();
    EXPECT_EQ(across.from, -24);
    EXPECT_EQ(across.to, 1024);
    EXPECT_EQ(across.length, 200);
    EXPECT_EQ(down.length, 100);
    place.scrollTo(300, 40);
    EXPECT_EQ(place.across().position, 300);
    EXPECT_EQ(place.down().position, 40);
}

TEST(ScriptRecord, KeepsTheNewestLinesButThoseThatPrint) {
    ScriptRecord record;
    record.add("print state");
    EXPECT_EQ(record.text(), "");
    for (int i = 0; i < 5001; ++i) record.add("select a" + std::to_string(i));
    EXPECT_TRUE(record.text().starts_with("select a1\n"));
    EXPECT_TRUE(record.text().ends_with("select a5000\n"));
    record.cutTo(3);
    EXPECT_EQ(record.text(), "select a1\nselect a2\n");
    record.cutTo(0);
    EXPECT_TRUE(record.isEmpty());
}

TEST(ScriptRecord, TakesALineBackWhenItIsFull) {
    ScriptRecord record;
    for (int i = 0; i < 5000; ++i) record.add("select a" + std::to_string(i));
    const std::size_t before = record.addedCount();
    record.add("select nothing");
    record.cutTo(before);
    EXPECT_TRUE(record.text().ends_with("select a4999\n"));
}

TEST_F(WindowParts, LinesRunAndAreRecordedAndTheRecordDoesTheSameAgain) {
    lines.run({"tool", "AHideThisTool", "color:gold"});
    lines.run({"select", "wall"});
    EXPECT_EQ(lines.run({"print", "selection"}), "{\"selection\":[\"wall\"]}\n");
    const std::string record = lines.record().text();
    EXPECT_EQ(record, "tool AHideThisTool color:gold\nselect wall\n");

    std::string before, after;
    {
        const app::PrintedText printed(before);
        std::istringstream script("print filter\nprint selection\n");
        app::interpret(session, script, "S");
    }
    app::Session other;
    other.openBytes(kYard, "park.svg");
    {
        const app::PrintedText printed(after);
        std::istringstream script(record + "print filter\nprint selection\n");
        app::interpret(other, script, "S");
    }
    EXPECT_EQ(after, before);
}

TEST_F(WindowParts, WhatDoesNotWorkIsRaisedAndNotRecorded) {
    EXPECT_EQ(failureOf({"select", "nobody"}), "there is no object \"nobody\"");
    EXPECT_EQ(failureOf({"undo"}), "there is nothing to undo");
    EXPECT_EQ(failureOf({"open", "no such file.svg"}), "no such file.svg: there is no such file");
    EXPECT_EQ(lines.record().text(), "");
    EXPECT_EQ(session.fileName(), "park.svg");
}

TEST_F(WindowParts, LayersAreHiddenAndLockedByLines) {
    lines.run({"select", "wall", "sun"});
    const unsigned shown = session.shown().revision();
    lines.run({"layer", "Ground", "lock"});
    EXPECT_EQ(selected(), Words{"sun"}) << "what is locked leaves the selection";
    EXPECT_EQ(session.shown().revision(), shown) << "the picture stays";
    lines.run({"layer", "Air", "hide"});
    EXPECT_EQ(selected(), Words());
    EXPECT_NE(session.shown().revision(), shown);
    EXPECT_EQ(lines.run({"print", "at", "50", "10"}), "{\"at\":[]}\n");
    lines.run({"layer", "Air", "show"});
    EXPECT_EQ(lines.run({"print", "at", "50", "10"}), "{\"at\":[\"sun\"]}\n");
    EXPECT_EQ(lines.run({"print", "at", "20", "55"}), "{\"at\":[]}\n");
    lines.run({"layer", "Ground", "unlock"});
    EXPECT_EQ(lines.run({"print", "at", "12", "55"}), "{\"at\":[\"wall\",\"lawn\"]}\n");
    EXPECT_EQ(failureOf({"layer", "Water", "hide"}), "there is no layer \"Water\"");
    EXPECT_TRUE(failureOf({"layer", "Air", "vanish"}).starts_with("\"vanish\" is no change of a layer"));
}

TEST_F(WindowParts, AHiddenLayerStaysHiddenUnderAFilter) {
    lines.run({"tool", "AHideThisTool", "color:green"});
    lines.run({"layer", "Air", "hide"});
    EXPECT_EQ(lines.run({"print", "at", "50", "10"}), "{\"at\":[]}\n");
    EXPECT_EQ(lines.run({"print", "at", "50", "75"}), "{\"at\":[]}\n") << "the filter still hides";
}

TEST_F(WindowParts, SelectAllTakesWhateverCanBePointedAt) {
    lines.run({"select", "all"});
    EXPECT_EQ(selected(), (Words{"lawn", "wall", "door", "grass", "sun"}));
    lines.run({"tool", "AHideThisTool", "color:red"});
    lines.run({"layer", "Air", "lock"});
    lines.run({"select", "all"});
    EXPECT_EQ(selected(), (Words{"lawn", "door", "grass"}));
}

TEST_F(WindowParts, APictureOfAPartAndADrawingAsShownAreWrittenByLines) {
    const std::string part = (folder.path() / "part.png").string();
    const std::string shown = (folder.path() / "shown.svg").string();
    lines.run({"render", part, "40x40", "10,50,20,20"});
    std::ifstream stream(part, std::ios::binary);
    const std::string bytes((std::istreambuf_iterator<char>(stream)), {});
    const AImage image = decodeImage({reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size()});
    ASSERT_EQ(image.width(), 40);
    EXPECT_EQ(image.at(3, 3), 0xffff0000);
    lines.run({"tool", "AHideThisTool", "color:gold"});
    lines.run({"save", shown, "shown"});
    app::Session other;
    other.open(shown);
    EXPECT_EQ(other.document().findObject("sun"), nullptr);
    EXPECT_NE(other.document().findObject("wall"), nullptr);
    EXPECT_EQ(failureOf({"save", shown, "hidden"}), "usage: save FILE [shown]");
}

TEST_F(WindowParts, AClickTakesWhatIsOnTopAndThenWhatLiesBelow) {
    Pointing pointing(session);
    const AFPoint door{18, 60};
    EXPECT_EQ(pointing.click(door, 0.5, false), Names{"door"});
    EXPECT_EQ(pointing.click(door, 0.5, false), Names{"wall"});
    EXPECT_EQ(pointing.click(door, 0.5, false), Names{"lawn"});
    EXPECT_EQ(pointing.click(door, 0.5, false), Names{"door"});
    EXPECT_EQ(pointing.click({12, 52}, 0.5, false), Names{"wall"});
    EXPECT_EQ(pointing.click({5, 5}, 0.5, false), std::nullopt) << "nothing was selected";
    lines.run({"select", "wall"});
    EXPECT_EQ(pointing.click({5, 5}, 0.5, false), Names());
    EXPECT_EQ(pointing.click({5, 5}, 0.5, true), std::nullopt) << "Shift keeps what is selected";
    EXPECT_EQ(pointing.click({50, 10}, 0.5, true), (Names{"wall", "sun"}));
    EXPECT_EQ(pointing.click({12, 52}, 0.5, true), Names()) << "leaves, since it was selected";
    EXPECT_EQ(pointing.click({82, 52}, 0.5, false), Names{"lawn"}) << "the stone is locked";
}

TEST_F(WindowParts, ABandTakesWhatLiesWithinOrToTheLeftWhatReachesIn) {
    Pointing pointing(session);
    EXPECT_EQ(pointing.band({14, 56}, {40, 75}, false), Names{"door"});
    EXPECT_EQ(pointing.band({40, 75}, {14, 56}, false), (Names{"lawn", "wall", "door"}));
    EXPECT_EQ(pointing.band({5, 5}, {5, 30}, false), std::nullopt) << "it has no width";
    lines.run({"select", "sun", "door"});
    EXPECT_EQ(pointing.band({8, 48}, {40, 75}, true), (Names{"sun", "door", "wall"}));
}

TEST(MenuModel, EveryCommandCanBeReachedByKeys) {
    MenuState state;
    state.tools = {{"View Filter...", true}, {"Hide This Color", false},
                   {"Hide & Seek", true},    {"\u8868\u793A\u30D5\u30A3\u30EB\u30BF\u30FC...", true},
                   {"\u8272", true},         {"Hi", true}};
    state.recent = {"C:\\a & b.svg", "D:\\c.svg"};
    const std::vector<Menu> all = menus(state);
    std::string titles;
    std::set<std::string> shortcuts;
    for (const Menu& menu : all) {
        expectOwnAccessKey(menu.caption, titles);
        std::string taken;
        for (const MenuEntry& entry : menu.entries) {
            if (entry.command == kNoCommand) continue;
            expectOwnAccessKey(entry.caption, taken);
            EXPECT_TRUE(entry.keys.empty() || shortcuts.insert(entry.keys).second) << entry.keys;
        }
    }
    EXPECT_EQ(plainCaption(findEntry(all, kFirstTool + 2)->caption), "Hide & Seek");
    EXPECT_EQ(findEntry(all, kFirstTool + 3)->caption, "\u8868\u793A\u30D5\u30A3\u30EB\u30BF\u30FC(&1)...");
    EXPECT_EQ(findEntry(all, kFirstTool + 4)->caption, "\u8272(&2)");
    EXPECT_FALSE(findEntry(all, kFirstTool + 1)->isEnabled);
    EXPECT_EQ(plainCaption(findEntry(all, kFirstRecent)->caption), "1  C:\\a & b.svg");
    EXPECT_FALSE(findEntry(all, kSave)->isEnabled) << "nothing is open";
    EXPECT_EQ(findEntry(all, kFirstTool + 9), nullptr);
}

TEST_F(WindowParts, RecentFilesAreKeptNewestFirstAndNoneTwice) {
    APreferenceManager::setFolder(folder.path() / "prefs");
    RecentFiles recent;
    recent.read();
    EXPECT_TRUE(recent.files().empty());
    const std::string root = wholeName("/");
    for (int i = 0; i < 12; ++i) recent.add("/f" + std::to_string(i) + ".svg");
    recent.add("/f9.svg");
    RecentFiles again;
    again.read();
    ASSERT_EQ(again.files().size(), RecentFiles::kMost);
    EXPECT_EQ(again.files()[0], root + "f9.svg");
    EXPECT_EQ(again.files()[1], root + "f11.svg");
    again.remove("/f9.svg");
    recent.read();
    EXPECT_EQ(recent.files()[0], root + "f11.svg");
    folder.write("prefs/RecentFiles.prefs", "nonsense");
    recent.read();
    EXPECT_TRUE(recent.files().empty());
    APreferenceManager::setFolder({});
}

TEST_F(WindowParts, ColorsAndLayersAreDescribedForTheLists) {
    lines.run({"tool", "AHideThisTool", "color:gold"});
    const std::vector<Swatch> swatches = swatchesOf(session);
    const auto find = [&](const std::string& name) {
        return std::ranges::find(swatches, name, &Swatch::name)->description();
    };
    EXPECT_EQ(find("gold"), "gold \xC2\xB7 RGB Color \xC2\xB7 1 object \xC2\xB7 hidden");
    EXPECT_EQ(std::ranges::find(swatches, "gold", &Swatch::name)->stops.size(), 1U);
    const std::vector<LayerRow> layers = layersOf(session);
    ASSERT_EQ(layers.size(), 2U);
    EXPECT_EQ(layers[0].name, "Air");
}

TEST_F(WindowParts, ADrawingIsReadInAThreadOfItsOwn) {
    const std::string file = folder.write("park.svg", kYard).string();
    Opening opening(file, {});
    while (!opening.waitFor(std::chrono::minutes(1))) {
    }
    Opened opened = opening.take();
    EXPECT_GT(opened.list->entryCount(), 0U);
    session.open(std::move(opened.document), file, opened.list);
    EXPECT_EQ(session.fileName(), file);
    EXPECT_EQ(session.shown().list(), opened.list) << "it is not made again";

    Opening bad((folder.path() / "none.svg").string(), {});
    bad.waitFor(std::chrono::minutes(1));
    EXPECT_THROW(bad.take(), app::Failure);
}

TEST_F(WindowParts, ACancelledReadingStops) {
    const std::filesystem::path file = folder.write("park.svg", kYard);
    svg::ReadingWatch watch;
    watch.cancelled = true;
    std::string error;
    EXPECT_EQ(svg::readDrawing(file, error, &watch), nullptr);
    EXPECT_TRUE(error.ends_with("park.svg: opening it was cancelled")) << error;
}

TEST_F(WindowParts, TheCanvasShowsTheDrawingItsPageAndMarks) {
    const CanvasColors colors{AColor(RGB(0, 0, 255)), AColor(RGB(255, 0, 255)), AColor(RGB(0, 0, 0))};
    std::atomic<int> arrived = 0;
    CanvasPicture picture([&] { ++arrived; });
    Viewport place;
    place.resize(248, 208);
    place.setPage({0, 0, 100, 80}, 1);
    AImage image;
    EXPECT_TRUE(picture.draw(place, std::nullopt, colors, image)) << "nothing is missing of nothing";
    EXPECT_EQ(image.at(120, 100), 0xff0000ff);

    picture.show(session.shown().list(), session.shown().paint());
    picture.draw(place, std::nullopt, colors, image);
    picture.finish();
    ASSERT_TRUE(picture.draw(place, std::nullopt, colors, image));
    EXPECT_GT(arrived, 0);
    const auto at = [&](double x, double y) {
        const AFPoint pixel = place.toPixel({x, y});
        return image.at(static_cast<int>(pixel.x), static_cast<int>(pixel.y));
    };
    EXPECT_EQ(at(12, 52), 0xffff0000);
    EXPECT_EQ(at(50, 10), 0xffffd700);
    EXPECT_NE(image.at(5, 100), 0xffffffff) << "beside the page it is dimmed";

    picture.setMarks({{10, 50, 30, 70}});
    picture.draw(place, std::nullopt, colors, image);
    EXPECT_NE(at(12, 52), 0xffff0000) << "what is selected is tinted";
    EXPECT_NE(at(10, 60), at(12, 60)) << "and framed";

    lines.run({"tool", "AHideThisTool", "color:red"});
    picture.setMarks({});
    picture.showPaint(session.shown().paint());
    picture.draw(place, std::nullopt, colors, image);
    picture.finish();
    picture.draw(place, RubberBand{{0, 0}, {20, 20}}, colors, image);
    EXPECT_EQ(at(12, 52), 0xff008000) << "the lawn shows through";
    picture.showNothing();
    EXPECT_FALSE(picture.isShown());
}

TEST(Icons, EveryNameDrawsSomethingAndAnUnknownOneThatOfATool) {
    const auto pixels = [](std::string_view name) {
        AImage image(20, 20);
        {
            ACanvas canvas(pixelsOf(image));
            drawIcon(canvas, name, {0, 0}, 20, AColor());
        }
        return image.pixels();
    };
    const auto unknown = pixels("AnotherPlugInsTool");
    EXPECT_EQ(pixels("tool"), unknown);
    for (const char* name : {"open", "save", "undo", "plus", "fit", "full", "close", "shown", "hidden",
                             "locked", "unlocked", "AHideThisTool", "AViewFilterTool"})
        EXPECT_NE(pixels(name), unknown) << name;
}

}  // namespace
