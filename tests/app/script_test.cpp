#include <gtest/gtest.h>

#include <map>
#include <nlohmann/json.hpp>

#include "canvas/image.h"
#include "script_session.h"

namespace {

constexpr char kEveryRectangle[] = "{\"selection\":[\"hull\",\"sail\",\"cap\"]}\n";

class Script : public test::ScriptSession {};

}  // namespace

TEST_F(Script, PrintsEveryObjectWithItsPlaceAndPaint) {
    EXPECT_EQ(
        runToItsEnd(openSea() + "print objects\n"),
        R"({"objects":[)"
        R"({"id":"hull","class":"ARectangle","layer":"Sea","parent":null,"fill":"red","stroke":"black","hidden":false,"locked":false},)"
        R"({"id":"sail","class":"ARectangle","layer":"Sea","parent":null,"fill":null,"stroke":"blue","hidden":false,"locked":false},)"
        R"({"id":"sun","class":"AOval","layer":"Sea","parent":null,"fill":"glow","stroke":null,"hidden":false,"locked":false},)"
        R"({"id":"crew","class":"AGroup","layer":"Sea","parent":null,"fill":null,"stroke":null,"hidden":false,"locked":false},)"
        R"({"id":"cap","class":"ARectangle","layer":"Sea","parent":"crew","fill":"red","stroke":"glow","hidden":false,"locked":false},)"
        R"({"id":"cloud","class":"ARectangle","layer":"Sky","parent":null,"fill":"#123456","stroke":null,"hidden":false,"locked":true})"
        "]}\n");
}

TEST_F(Script, TellsWhichObjectsAreHiddenAndLockedByWhatever) {
    const std::string file =
        test::utf8(folder.write("states.svg", R"svg(<svg xmlns="http://www.w3.org/2000/svg"
         xmlns:inkscape="http://www.inkscape.org/namespaces/inkscape"
         xmlns:sodipodi="http://sodipodi.sourceforge.net/DTD/sodipodi-0.dtd">
      <g inkscape:groupmode="layer" inkscape:label="Seen">
        <rect id="plain"/><rect id="gone" display="none"/><rect id="fixed" sodipodi:insensitive="true"/>
        <g id="out" display="none"><rect id="inner"/></g>
        <g id="pinned" sodipodi:insensitive="true"><rect id="held"/></g>
      </g>
      <g inkscape:groupmode="layer" inkscape:label="Unseen" style="display:none"><rect id="under"/></g>
      <g inkscape:groupmode="layer" inkscape:label="Fixed" sodipodi:insensitive="true"><rect id="kept"/></g>
    </svg>)svg"));
    const auto objects =
        nlohmann::json::parse(runToItsEnd("open '" + file + "'\nprint objects\n")).at("objects");
    std::map<std::string, std::string> states;
    for (const auto& object : objects) {
        states[object["id"]] = std::string(object["hidden"].get<bool>() ? "hidden " : "") +
                               (object["locked"].get<bool>() ? "locked" : "");
    }
    const std::map<std::string, std::string> expected{
        {"plain", ""},      {"gone", "hidden "},  {"fixed", "locked"},
        {"out", ""},        {"inner", "hidden "}, {"pinned", "locked"},
        {"held", "locked"}, {"under", "hidden "}, {"kept", "locked"}};
    EXPECT_EQ(states, expected);
}

TEST_F(Script, RunsATool) {
    EXPECT_EQ(runToItsEnd(openSea() + "select hull\ntool ASelectSimilarTool\nprint selection\n"),
              kEveryRectangle);
}

TEST_F(Script, TellsThatAToolIsNotValidAndGoesOn) {
    EXPECT_EQ(runToItsEnd(openSea() + "tool ASelectSimilarTool\nprint selection\n"),
              "{\"tool\":\"ASelectSimilarTool\",\"valid\":false}\n{\"selection\":[]}\n");
    EXPECT_EQ(runToItsEnd("select hull sun\ntool ASelectSimilarTool\nprint selection\n"),
              "{\"tool\":\"ASelectSimilarTool\",\"valid\":false}\n{\"selection\":[\"hull\",\"sun\"]}\n")
        << "objects of two classes";
}

TEST_F(Script, UndoesAndRedoesATool) {
    EXPECT_EQ(runToItsEnd(openSea() + "select sail\ntool ASelectSimilarTool\nundo\nprint selection\nredo\n"
                                      "print selection\n"),
              std::string("{\"selection\":[\"sail\"]}\n") + kEveryRectangle);
    EXPECT_EQ(failureOf("redo\n"), "S:1: there is nothing to redo");
    EXPECT_EQ(failureOf("undo\nundo\nundo\n"), "S:3: there is nothing to undo");
}

TEST_F(Script, UndoesAndRedoesSelections) {
    EXPECT_EQ(runToItsEnd(openSea() + "select sail\nselect sun hull\nselect all\nselect none\nundo\nundo\n"
                                      "print selection\nundo\nprint selection\nundo\nprint selection\n"
                                      "redo\nredo\nprint selection\n"),
              "{\"selection\":[\"sun\",\"hull\"]}\n{\"selection\":[\"sail\"]}\n{\"selection\":[]}\n"
              "{\"selection\":[\"sun\",\"hull\"]}\n");
    EXPECT_EQ(failureOf(openSea() + "select none\nundo\n"), "S:3: there is nothing to undo");
    EXPECT_EQ(failureOf(openSea() + "select sail\nselect sail\nundo\nundo\n"),
              "S:5: there is nothing to undo");
}

TEST_F(Script, ForgetsTheHistoryOfTheDrawingBefore) {
    runToItsEnd(openSea() + "select sail\ntool ASelectSimilarTool\n");
    EXPECT_EQ(failureOf(openSea() + "undo\n"), "S:2: there is nothing to undo");
}

TEST_F(Script, SelectsInTheOrderGivenAndNoneTwice) {
    EXPECT_EQ(runToItsEnd(openSea() + "select sun hull sun\nprint selection\nselect none\nprint selection\n"),
              "{\"selection\":[\"sun\",\"hull\"]}\n{\"selection\":[]}\n");
}

TEST_F(Script, SelectsAnObjectThatIsCalledNone) {
    folder.write("none.svg", "<svg xmlns='http://www.w3.org/2000/svg'><rect id='none'/></svg>");
    EXPECT_EQ(
        runToItsEnd("open '" + test::utf8(folder.path() / "none.svg") + "'\nselect none\nprint selection"),
        "{\"selection\":[\"none\"]}\n");
}

TEST_F(Script, KeepsTheSelectionWhenOneOfTheObjectsIsMissing) {
    EXPECT_EQ(failureOf(openSea() + "select hull\nselect sun zz\n"), "S:3: there is no object \"zz\"");
    EXPECT_EQ(runToItsEnd("print selection"), "{\"selection\":[\"hull\"]}\n");
}

TEST_F(Script, KeepsTheDrawingWhenAnotherOneCannotBeOpened) {
    runToItsEnd(openSea() + "select hull\n");
    const std::string missing = test::utf8(folder.path() / "missing.svg");
    EXPECT_EQ(failureOf("open '" + missing + "'"), "S:1: " + missing + ": there is no such file");
    EXPECT_EQ(runToItsEnd("print selection"), "{\"selection\":[\"hull\"]}\n");
}

TEST_F(Script, PrintsTheMessagesShownSinceTheLastTime) {
    KzMessageBox(64001, 0);
    KzMessageBox(64002, 0x80000000);
    EXPECT_EQ(runToItsEnd("print messages\nprint messages\n"),
              "{\"messages\":[\"#64001\",\"#64002\"]}\n{\"messages\":[]}\n");
}

TEST_F(Script, SaysOfATheToolsWhichAreValidNow) {
    const std::string similar = R"({"class":"ASelectSimilarTool","name":"Select Similar Objects",)"
                                R"("description":"Selects all objects of the same type","flags":0,"valid":)";
    EXPECT_NE(runToItsEnd(openSea() + "print tools\n").find(similar + "false}"), std::string::npos);
    EXPECT_NE(runToItsEnd("select hull\nprint tools\n").find(similar + "true}"), std::string::npos);
}

TEST_F(Script, StopsAtTheFirstLineThatFailsAndKeepsWhatWasPrinted) {
    EXPECT_EQ(run(openSea() + "\n# the next line is wrong\nprint selection\n  frobnicate\nprint selection\n"),
              "{\"selection\":[]}\n");
    EXPECT_EQ(failure, "S:5: unknown command \"frobnicate\"");
}

TEST_F(Script, TellsWhatIsWrongWithALine) {
    runToItsEnd(openSea());
    const struct {
        const char* line;
        const char* failure;
    } table[] = {
        {"Open x", "S:1: unknown command \"Open\""},
        {"''", "S:1: unknown command \"\""},
        {"open", "S:1: usage: open FILE"},
        {"open ''", "S:1: the name of a file is empty"},
        {"open a b", "S:1: usage: open FILE"},
        {"select", "S:1: usage: select ID... | select none | select all"},
        {"select none hull", "S:1: there is no object \"none\""},
        {"save", "S:1: usage: save FILE [shown]"},
        {"save ''", "S:1: the name of a file is empty"},
        {"save a b", "S:1: usage: save FILE [shown]"},
        {"render", "S:1: usage: render FILE [WIDTHxHEIGHT [X,Y,WIDTH,HEIGHT]]"},
        {"render a.gif", "S:1: a.gif: a picture is a PNG file, its name ends in .png"},
        {"render a.png 0x0", "S:1: \"0x0\" is no size: a side has at least one pixel"},
        {"render a.png big", "S:1: \"big\" is no size: it is WIDTHxHEIGHT or WIDTH, in pixels"},
        {"render a.png 1 1", "S:1: \"1\" is no area: it is X,Y,WIDTH,HEIGHT, in user units"},
        {"render a.png 1 1,1,1,1 1", "S:1: usage: render FILE [WIDTHxHEIGHT [X,Y,WIDTH,HEIGHT]]"},
        {"layer Sea", "S:1: usage: layer NAME hide | show | lock | unlock"},
        {"undo 2", "S:1: usage: undo"},
        {"redo 2", "S:1: usage: redo"},
        {"print", "S:1: usage: print WHAT: kzdraw script --help lists what can be printed"},
        {"print objects tools", "S:1: usage: print objects"},
        {"print weather", "S:1: cannot print \"weather\": kzdraw script --help lists what can be printed"},
        {"print at 1", "S:1: usage: print at X Y [TOLERANCE]"},
        {"print at 1 two", "S:1: \"two\" is no number"},
        {"print at 1 nan", "S:1: \"nan\" is no number"},
        {"print at 1 2 -1", "S:1: a tolerance is not below 0"},
        {"print inside 1 2 0 4", "S:1: the width and height of an area are above 0"},
        {"print touching 1 2 3", "S:1: usage: print touching X Y WIDTH HEIGHT"},
        {"print rows", "S:1: no dialog is open"},
        {"print rows 1x", "S:1: \"1x\" is no revision"},
        {"print images", "S:1: no dialog is open"},
        {"print 'x", "S:1: a single quote is not closed"},
        {"tool", "S:1: usage: tool CLASS [color:NAME | fill:ID | stroke:ID]"},
        {"tool ANoTool", "S:1: there is no tool \"ANoTool\""},
        {"tool ANoTool color:red", "S:1: there is no tool \"ANoTool\""},
        {"tool aselectsimilartool", "S:1: there is no tool \"aselectsimilartool\""},
        {"tool ASelectSimilarTool color:red", "S:1: the tool ASelectSimilarTool takes no item"},
        {"tool AShowThisTool red", "S:1: \"red\" is none of color:NAME, fill:ID, stroke:ID"},
        {"tool AShowThisTool color:pink", "S:1: the drawing has no color \"pink\""},
        {"tool AHideThisTool", "S:1: the tool AHideThisTool could not start without an item"},
        {"tool AHideThisTool fill:sail", "S:1: \"sail\" has no fill"},
        {"tool AHideThisTool stroke:sun", "S:1: \"sun\" has no stroke"},
    };
    for (const auto& row : table) EXPECT_EQ(failureOf(row.line), row.failure) << row.line;
}

TEST_F(Script, WithANulCharacterInALineIsRefused) {
    for (const std::string line : {"print messages", "save 'a.svg", "# a remark"})
        EXPECT_EQ(failureOf("print messages\n" + line + '\0' + ".png'\n"),
                  "S:2: the line holds a NUL character");
}

TEST_F(Script, NeedsADrawingForMostThings) {
    for (const char* line :
         {"select hull", "select none", "select all", "layer Sea hide", "undo", "redo", "print selection",
          "print objects", "print filter", "print visible", "save a.svg", "render a.png",
          "tool ASelectSimilarTool", "tool AShowThisTool color:red"})
        EXPECT_EQ(failureOf(line), "S:1: no drawing is open") << line;
    EXPECT_EQ(failureOf("print tools\nprint messages"), "");
}

TEST_F(Script, MayBeEmptyOrWithoutAnEndOfItsLastLine) {
    EXPECT_EQ(runToItsEnd(""), "");
    EXPECT_EQ(runToItsEnd("\n\n"), "");
    EXPECT_EQ(runToItsEnd("print messages"), "{\"messages\":[]}\n");
}

TEST_F(Script, MayHaveAByteOrderMarkAndWindowsLineEnds) {
    EXPECT_EQ(runToItsEnd("\xEF\xBB\xBF"
                          "print messages\r\n\r\nprint messages\r\n"),
              "{\"messages\":[]}\n{\"messages\":[]}\n");
    EXPECT_EQ(failureOf("print messages\n\xEF\xBB\xBFprint messages\n"),
              "S:2: unknown command \"\xEF\xBB\xBFprint\"");
}

TEST_F(Script, OfOneEndlessLineIsRefused) {
    EXPECT_EQ(failureOf("print messages\n" + std::string((64u << 20) + 1, 'x')), "S:2: the line is too long");
}

TEST_F(Script, CutsALongNameInAMessage) {
    EXPECT_EQ(failureOf(std::string(300, 'x')), "S:1: unknown command \"" + std::string(200, 'x') + "...\"");
    EXPECT_EQ(failureOf(std::string(199, 'x') + "\xC3\xB6yz"),
              "S:1: unknown command \"" + std::string(199, 'x') + "...\"")
        << "a character is not cut in two";
}

TEST_F(Script, PrintsWhatTheFilterHides) {
    EXPECT_EQ(runToItsEnd(openSea() + "print filter\ntool AHideThisTool color:red\nprint filter\n"
                                      "tool AHideThisTool fill:sun\nprint filter\n"),
              "{\"filter\":null}\n"
              R"({"filter":{"hidden":["red"],"visible":["black","blue","#123456"],)"
              R"("brushes":{"hidden":[],"visible":["glow"]}}})"
              "\n"
              R"({"filter":{"hidden":["red"],"visible":["black","blue","#123456"],)"
              R"("brushes":{"hidden":["glow"],"visible":[]}}})"
              "\n");
}

TEST_F(Script, PrintsOfEveryObjectWhatShows) {
    EXPECT_EQ(runToItsEnd(openSea() + "print visible\ntool AHideThisTool color:red\nprint visible\n"),
              R"({"visible":{"hull":{"fill":true,"stroke":true},"sail":{"fill":null,"stroke":true},)"
              R"("sun":{"fill":true,"stroke":null},"crew":{"fill":null,"stroke":null},)"
              R"("cap":{"fill":true,"stroke":true},"cloud":{"fill":true,"stroke":null}}})"
              "\n"
              R"({"visible":{"hull":{"fill":false,"stroke":true},"sail":{"fill":null,"stroke":true},)"
              R"("sun":{"fill":true,"stroke":null},"crew":{"fill":null,"stroke":null},)"
              R"("cap":{"fill":false,"stroke":true},"cloud":{"fill":true,"stroke":null}}})"
              "\n");
}

TEST_F(Script, UndoesAndRedoesAFilterTogetherWithTheSelection) {
    const std::string hidden = R"({"filter":{"hidden":["red"],"visible":["black","blue","#123456"],)"
                               R"("brushes":{"hidden":[],"visible":["glow"]}}})"
                               "\n";
    const std::string both = R"({"filter":{"hidden":["red","blue"],"visible":["black","#123456"],)"
                             R"("brushes":{"hidden":[],"visible":["glow"]}}})"
                             "\n";
    const std::string none = "{\"filter\":null}\n";
    const std::string hull = "{\"selection\":[\"hull\"]}\n";
    const std::string nothing = "{\"selection\":[]}\n";
    EXPECT_EQ(runToItsEnd(openSea() + "select hull\ntool AHideThisTool color:red\nprint selection\n"
                                      "tool AHideThisTool color:blue\nprint filter\n"
                                      "undo\nprint filter\nundo\nprint filter\nprint selection\n"
                                      "redo\nprint filter\nprint selection\nredo\nprint filter\n"),
              nothing + both + hidden + none + hull + hidden + nothing + both);
    EXPECT_EQ(failureOf("redo"), "S:1: there is nothing to redo");
}

TEST_F(Script, AToolThatChangesNothingIsNoStep) {
    EXPECT_EQ(failureOf(openSea() + "tool AShowThisTool color:red\nundo\n"), "S:3: there is nothing to undo");
    runToItsEnd(openSea() + "tool AHideThisTool color:red\ntool AHideThisTool color:red\nundo\n");
    EXPECT_EQ(failureOf("undo"), "S:1: there is nothing to undo");
}

TEST_F(Script, WhatIsDoneAfterAnUndoReplacesWhatWasUndone) {
    EXPECT_EQ(
        failureOf(openSea() + "tool AHideThisTool color:red\nundo\ntool AHideThisTool color:blue\nredo\n"),
        "S:5: there is nothing to redo");
    EXPECT_EQ(runToItsEnd("print filter\n"),
              R"({"filter":{"hidden":["blue"],"visible":["red","black","#123456"],)"
              R"("brushes":{"hidden":[],"visible":["glow"]}}})"
              "\n");
}

TEST_F(Script, ShowAllTakesTheFilterBack) {
    EXPECT_EQ(
        runToItsEnd(openSea() + "tool AHideAllExceptTool color:red\ntool AShowAllTool\nprint visible\n"),
        runToItsEnd(openSea() + "print visible\n"));
    EXPECT_EQ(failure, "");
}

TEST_F(Script, SavesTheWholeDrawingWhateverIsHidden) {
    const std::string out = test::utf8(folder.path() / "saved.svg");
    EXPECT_EQ(runToItsEnd(openSea() + "tool AHideAllExceptTool color:blue\nsave '" + out + "'\n"), "");
    EXPECT_EQ(test::readText(folder.path() / "saved.svg"), test::kSea);
}

TEST_F(Script, RendersWhatTheViewShows) {
    folder.write("one.svg",
                 "<svg xmlns='http://www.w3.org/2000/svg' width='8' height='4'>"
                 "<rect width='8' height='4' fill='red'/></svg>");
    const auto at = [&](const char* name) { return " '" + test::utf8(folder.path() / name) + "'"; };
    EXPECT_EQ(
        runToItsEnd("open" + at("one.svg") + "\nrender" + at("a.png") + "\ntool AHideThisTool color:red\n" +
                    "render" + at("b.png") + " 16x8\nundo\nrender" + at("c.png") + " 16\n"),
        "");
    const struct {
        const char* name;
        int width;
        std::uint32_t pixel;
    } table[] = {{"a.png", 8, 0xffff0000}, {"b.png", 16, 0xffffffff}, {"c.png", 16, 0xffff0000}};
    for (const auto& row : table) {
        std::ifstream stream(folder.path() / row.name, std::ios::binary);
        const std::string bytes(std::istreambuf_iterator<char>(stream), {});
        const AImage image =
            decodeImage({reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size()});
        ASSERT_EQ(image.width(), row.width) << row.name;
        EXPECT_EQ(image.at(row.width / 2, 2), row.pixel) << row.name;
    }
}
