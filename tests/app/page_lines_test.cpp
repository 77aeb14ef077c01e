// The script lines that a user interface lives on: what lies where, what colours there are, what changed.
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <sstream>

#include "app/base64.h"
#include "app/output.h"
#include "app/script/interpreter.h"
#include "canvas/image.h"
#include "support/temp_folder.h"

namespace {

using Json = nlohmann::json;

constexpr char kMeadow[] = R"svg(<svg xmlns="http://www.w3.org/2000/svg" width="100" height="80"
     xmlns:inkscape="http://www.inkscape.org/namespaces/inkscape"
     xmlns:sodipodi="http://sodipodi.sourceforge.net/DTD/sodipodi-0.dtd">
  <defs><linearGradient id="dawn"><stop offset="0" stop-color="white"/><stop offset="1" stop-color="gold"/>
    </linearGradient><rect id="blade" width="2" height="6" fill="green"/></defs>
  <g inkscape:groupmode="layer" inkscape:label="Ground">
    <rect id="field" width="100" height="40" y="40" fill="green"/>
    <g id="barn"><rect id="wall" x="10" y="30" width="20" height="20" fill="red"/>
      <rect id="door" x="18" y="40" width="4" height="10" fill="url(#dawn)"/></g>
    <use id="grass" href="#blade" x="60" y="50"/>
    <rect id="stone" x="80" y="50" width="5" height="5" fill="gray" sodipodi:insensitive="true"/>
  </g>
  <g inkscape:groupmode="layer" inkscape:label="Air" sodipodi:insensitive="true">
    <circle id="sun" cx="50" cy="10" r="5" fill="gold"/>
  </g>
</svg>
)svg";

// Lines as a page sends them: one that fails does not end the script.
class Lines : public app::LineSource {
public:
    std::vector<std::string> lines;
    std::vector<std::string> failures;
    std::vector<bool> inDialog;  // when a line was asked for

    bool next(std::string& line, driver::Dialog* dialog) override {
        inDialog.push_back(dialog != nullptr);
        if (m_next == lines.size()) return false;
        line = lines[m_next++];
        return true;
    }
    bool goesOnAfter(const std::string& reason) override {
        failures.push_back(reason);
        return true;
    }
    void open(app::Session& session, const std::string& name) override { session.openBytes(kMeadow, name); }
    void write(const std::string& name, std::string_view) override { throw app::Failure{"not " + name}; }

private:
    std::size_t m_next = 0;
};

class PageLines : public testing::Test {
protected:
    app::Session session;
    Lines source;

    // What the lines print, after the drawing was opened.
    std::vector<Json> run(std::vector<std::string> lines) {
        source = Lines();
        source.lines = std::move(lines);
        source.lines.insert(source.lines.begin(), "open meadow.svg");
        std::string text;
        {
            const app::PrintedText printed(text);
            app::interpret(session, source);
        }
        std::vector<Json> values;
        std::istringstream stream(text);
        for (std::string line; std::getline(stream, line);) values.push_back(Json::parse(line));
        return values;
    }
    Json answerTo(const std::string& line) {
        const std::vector<Json> values = run({line});
        EXPECT_EQ(source.failures, std::vector<std::string>());
        return values.empty() ? Json() : values.back();
    }
    Json state(std::vector<std::string> lines) {
        lines.push_back("print state");
        return run(lines).back()["state"];
    }
};

Json rowOf(const Json& rows, const std::string& text) {
    for (const Json& row : rows) {
        if (row["text"] == text) return row;
    }
    return nullptr;
}

}  // namespace

TEST_F(PageLines, TellWhatLiesAtAPointTopmostFirst) {
    EXPECT_EQ(answerTo("print at 20 45")["at"], (Json{"door", "wall", "field"}));
    EXPECT_EQ(answerTo("print at 20 35")["at"], Json{"wall"});
    EXPECT_EQ(answerTo("print at 50 30")["at"], Json::array());
}

TEST_F(PageLines, FindWhatIsNearAPoint) {
    EXPECT_EQ(answerTo("print at 50 38.5")["at"], Json::array());
    EXPECT_EQ(answerTo("print at 50 38.5 2")["at"], Json{"field"});
    EXPECT_EQ(answerTo("print at 50 35 2")["at"], Json::array());
}

TEST_F(PageLines, FindNothingThatIsLockedAndOfAUseTheWhole) {
    EXPECT_EQ(answerTo("print at 50 10")["at"], Json::array()) << "a locked layer";
    EXPECT_EQ(answerTo("print at 82 52")["at"], Json{"field"}) << "a locked object";
    EXPECT_EQ(answerTo("print at 61 53")["at"], (Json{"grass", "field"})) << "a closed container";
}

TEST_F(PageLines, FindNothingThatTheFilterHides) {
    EXPECT_EQ(run({"tool AHideThisTool color:red", "print at 20 35"}).back()["at"], Json::array());
}

TEST_F(PageLines, TellWhatLiesWithinAnAreaAndWhatReachesIntoIt) {
    EXPECT_EQ(answerTo("print inside 9 29 22 22")["inside"], (Json{"wall", "door"}));
    EXPECT_EQ(answerTo("print touching 12 25 2 10")["touching"], Json{"wall"});
    EXPECT_EQ(answerTo("print touching 0 0 100 80")["touching"], (Json{"field", "wall", "door", "grass"}));
}

TEST_F(PageLines, TellTheBoxesOfWhatIsSelected) {
    EXPECT_EQ(answerTo("print extents")["extents"],
              (Json{{"all", nullptr}, {"boxes", Json::array()}, {"more", 0}}));
    EXPECT_EQ(run({"select wall door", "print extents"}).back()["extents"],
              (Json{{"all", {10, 30, 20, 20}}, {"boxes", {{10, 30, 20, 20}, {18, 40, 4, 10}}}, {"more", 0}}));
}

TEST_F(PageLines, TellEachColorWithWhatAToolTakesForIt) {
    const Json colors = run({"tool AHideThisTool color:red", "print colors"}).back();
    const Json green{{"name", "green"},    {"class", "RGB Color"},
                     {"value", "#008000"}, {"item", "color:RGB Color/green"},
                     {"objects", 2},       {"visible", true}};
    EXPECT_EQ(colors["colors"][0], green) << "the field, and the blade that is used";
    EXPECT_EQ(colors["colors"][1]["name"], "red");
    EXPECT_EQ(colors["colors"][1]["visible"], false);
    const Json stops = Json::array({Json::array({"#ffffff", 0.0}), Json::array({"#ffd700", 1.0})});
    const Json dawn{{"name", "dawn"},      {"class", "Gradient"}, {"stops", stops},
                    {"item", "fill:door"}, {"objects", 1},        {"visible", true}};
    EXPECT_EQ(colors["brushes"], Json{dawn});
    for (const Json& color : colors["colors"])
        EXPECT_EQ(state({"tool AHideThisTool '" + color["item"].get<std::string>() + "'"})["filter"], true);
}

TEST_F(PageLines, TellTheLayers) {
    const Json layers = answerTo("print layers")["layers"];
    ASSERT_EQ(layers.size(), 2U);
    EXPECT_EQ(layers[0]["name"], "Ground");
    EXPECT_EQ(layers[1]["locked"], true);
}

TEST_F(PageLines, TellWhatASessionIsAt) {
    const Json opened = state({});
    EXPECT_EQ(opened["file"], "meadow.svg");
    EXPECT_EQ(opened["page"], (Json{0, 0, 100, 80}));
    EXPECT_EQ(opened["undo"], false);
    const Json hidden = state({"tool AHideThisTool color:red"});
    EXPECT_EQ(hidden["hidden"], 1);
    EXPECT_EQ(hidden["filter"], true);
    EXPECT_EQ(hidden["undo"], true);
    EXPECT_EQ(hidden["redo"], false);
    EXPECT_EQ(hidden["drawing"], 2);
    const Json undone = state({"tool AHideThisTool color:red", "undo"});
    EXPECT_EQ(undone["hidden"], 0);
    EXPECT_EQ(undone["undo"], false);
    EXPECT_EQ(undone["redo"], true);
}

TEST_F(PageLines, CountAnotherPictureOnlyWhenItIsOne) {
    const auto shown = [this](std::vector<std::string> lines) {
        lines.insert(lines.begin(), "print state");
        lines.push_back("print state");
        const std::vector<Json> states = run(lines);
        return states.back()["state"]["shown"].get<int>() - states.front()["state"]["shown"].get<int>();
    };
    EXPECT_EQ(shown({"select wall"}), 0);
    EXPECT_EQ(shown({"tool AHideThisTool color:red"}), 1);
    EXPECT_EQ(shown({"tool AHideThisTool color:red", "print state", "undo"}), 2);
    EXPECT_EQ(shown({"tool AShowAllTool"}), 0);
}

TEST_F(PageLines, TellOfATreeOnlyWhatChangedSinceARevision) {
    const std::vector<Json> told =
        run({"tool ASelectByAttrTool", "print rows", "check Rectangle", "print rows 1", "print rows 2",
             "page Fill", "print rows 2", "press Cancel"});
    ASSERT_EQ(told.size(), 4U);
    const Json all = told[0]["rows"];
    EXPECT_EQ(all["page"], "Object");
    EXPECT_EQ(rowOf(all["all"], "Rectangle")["check"], 1);
    const Json& changed = told[1]["rows"]["changed"];
    ASSERT_EQ(changed.size(), 1U);
    EXPECT_EQ(all["all"][changed[0]["row"].get<std::size_t>()]["text"], "Rectangle");
    EXPECT_EQ(changed[0]["check"], 3);
    EXPECT_EQ(told[2]["rows"]["changed"], Json::array());
    const Json fill = told[3]["rows"];
    EXPECT_EQ(fill["page"], "Fill");
    EXPECT_EQ(rowOf(fill["all"], "dawn")["depth"], 1);
    EXPECT_GT(rowOf(fill["all"], "Gradient")["children"], 0);
}

TEST_F(PageLines, ShowThePicturesOfATree) {
    const std::vector<Json> told =
        run({"tool AViewFilterTool", "print rows", "print images", "press Cancel"});
    ASSERT_EQ(told.size(), 2U);
    const int red = rowOf(told[0]["rows"]["all"], "red")["image"];
    const Json& images = told[1]["images"];
    EXPECT_EQ(images["width"], 16);
    ASSERT_GT(images["count"], red);
    EXPECT_TRUE(images["png"].get<std::string>().starts_with(app::inBase64("\x89PNG\r\n")));
}

TEST_F(PageLines, TellWhatTheControlsOfADialogAre) {
    const std::vector<Json> told =
        run({"tool AViewFilterTool", "print dialog", "print kinds", "press Cancel"});
    ASSERT_EQ(told.size(), 2U);
    EXPECT_EQ(told[1]["kinds"], (Json{"tree", "button", "button", "button", "button"}));
    EXPECT_EQ(told[0]["dialog"]["controls"].size(), told[1]["kinds"].size());
}

TEST_F(PageLines, GoOnAfterALineThatFailsAndKeepTheDialogOpen) {
    const std::vector<Json> told = run(
        {"tool AViewFilterTool", "press Nonsense", "frobnicate", "print dialog", "press OK", "print state"});
    ASSERT_EQ(told.size(), 2U);
    EXPECT_EQ(told[0]["dialog"]["title"], "View Filter");
    EXPECT_EQ(told[1]["state"]["dialog"], nullptr);
    ASSERT_EQ(source.failures.size(), 2U);
    EXPECT_TRUE(source.failures[0].starts_with("there is no button \"Nonsense\""));
    EXPECT_EQ(source.failures[1], "unknown command \"frobnicate\"");
    EXPECT_EQ(source.inDialog, (std::vector{false, false, true, true, true, true, false, false}));
}

TEST_F(PageLines, CancelADialogThatIsOpenAtTheEnd) {
    run({"tool AViewFilterTool", "press 'Show None'"});
    EXPECT_EQ(session.view().m_viewFilter, nullptr);
    ASSERT_EQ(source.failures.size(), 1U);
    EXPECT_EQ(source.failures[0], "the script ends inside the dialog \"View Filter\"");
}

TEST_F(PageLines, OpenAndWriteFilesOnlyThroughTheirSource) {
    run({"save x.svg", "render x.png"});
    EXPECT_EQ(source.failures, (std::vector<std::string>{"not x.svg", "not x.png"}));
}

TEST(Base64, WritesEveryLength) {
    EXPECT_EQ(app::inBase64(""), "");
    EXPECT_EQ(app::inBase64("f"), "Zg==");
    EXPECT_EQ(app::inBase64("fo"), "Zm8=");
    EXPECT_EQ(app::inBase64("foo"), "Zm9v");
    EXPECT_EQ(app::inBase64("\xff\xff\xfe"), "///+");
}
