// The program as its users run it.
#include <gtest/gtest.h>

#include "process.h"
#include "sea.h"
#include "support/temp_folder.h"

using test::Outcome;
using test::refused;
using test::runKzdraw;

namespace {

class CommandLine : public testing::Test {
protected:
    test::TempFolder folder;
    std::string sea = test::utf8(folder.write("sea.svg", test::kSea));
};

std::string firstLine(const std::string& text) {
    return text.substr(0, text.find('\n'));
}

}  // namespace

TEST_F(CommandLine, InfoTellsWhatTheDrawingHolds) {
    EXPECT_EQ(runKzdraw({"info", sea}), (Outcome{0,
                                                 sea + ": 6 objects, 4 colors, page 100 x 80\n"
                                                       "  layer Sea: 4 objects at its top level\n"
                                                       "  layer Sky: 1 object at its top level, locked\n"
                                                       "  4 Rectangle\n"
                                                       "  1 Oval\n"
                                                       "  1 Group\n",
                                                 ""}));
}

TEST_F(CommandLine, InfoAsJson) {
    const Outcome outcome = runKzdraw({"info", "--json", sea});
    EXPECT_EQ(outcome.status, 0) << outcome;
    const std::size_t comma = outcome.out.find(",\"page\"");
    ASSERT_NE(comma, std::string::npos) << outcome;
    EXPECT_EQ(outcome.out.substr(comma),
              R"(,"page":[0.0,0.0,100.0,80.0],"objects":6,"colors":4,"brushes":1,"layers":[)"
              R"({"name":"Sea","class":"ALayer","master":false,"locked":false,"hidden":false,"objects":4},)"
              R"({"name":"Sky","class":"ALayer","master":false,"locked":true,"hidden":false,"objects":1}],)"
              R"("classes":{"ARectangle":4,"AOval":1,"AGroup":1}})"
              "\n");
}

TEST_F(CommandLine, ToolsListsTheExportTable) {
    const Outcome outcome = runKzdraw({"tools"});
    EXPECT_EQ(
        outcome,
        (Outcome{0,
                 "AViewFilterTool     View Filter...            Shows or hides colors\n"
                 "ASelectByAttrTool   Select by Attributes...   Selects objects based on their attributes\n"
                 "ASelectSimilarTool  Select Similar Objects    Selects all objects of the same type\n"
                 "ASelectColorTool    Select Similar Color      Selects all objects of the same color\n"
                 "AShowAllTool        Show All                  Show all objects in the active view.\n"
                 "AShowAllExceptTool  All But This Color        Show all except those with the color of the "
                 "selected objects\n"
                 "AShowThisTool       Show This Color           Show the objects with the same color of the "
                 "selected objects\n"
                 "AHideThisTool       Hide This Color           Hide the objects with the same color of the "
                 "selected objects\n"
                 "AHideAllExceptTool  Hide All But This Color   Hide all objects except those with the color "
                 "of the selected objects\n",
                 ""}));
}

TEST_F(CommandLine, ToolsAsJsonSaysThatNoneIsValidWithoutADrawing) {
    const Outcome outcome = runKzdraw({"tools", "--json"});
    EXPECT_EQ(outcome.status, 0) << outcome;
    EXPECT_TRUE(outcome.out.starts_with(
        R"({"tools":[{"class":"AViewFilterTool","name":"View Filter...","description":"Shows or hides colors",)"
        R"("flags":0,"valid":false},{"class":"ASelectByAttrTool",)"))
        << outcome;
    EXPECT_NE(
        outcome.out.find(
            R"({"class":"AShowAllTool","name":"Show All","description":"Show all objects in the active view.",)"
            R"("flags":4096,"valid":false})"),
        std::string::npos)
        << outcome;
    EXPECT_EQ(outcome.out.find("\"valid\":true"), std::string::npos);
}

TEST_F(CommandLine, SelectTellsWhatIsSimilar) {
    EXPECT_EQ(runKzdraw({"select", sea, "--similar-to", "cap"}),
              (Outcome{0,
                       "3 of 6 objects selected\n"
                       "  hull                    Rectangle         Sea\n"
                       "  sail                    Rectangle         Sea\n"
                       "  cap                     Rectangle         Sea\n",
                       ""}));
    EXPECT_EQ(runKzdraw({"select", "--json", "--similar-to=sun", sea}),
              (Outcome{0, "{\"selection\":[\"sun\"]}\n", ""}));
}

TEST_F(CommandLine, SelectSaysWithStatusOneThatNothingMatched) {
    const std::string locked = test::utf8(folder.write("locked.svg", test::kLockedHull));
    EXPECT_EQ(runKzdraw({"select", locked, "--similar-to", "hull"}),
              (Outcome{1, "0 of 1 object selected\n", ""}));
    EXPECT_EQ(runKzdraw({"select", locked, "--similar-to", "hull", "--json"}),
              (Outcome{1, "{\"selection\":[]}\n", ""}));
}

TEST_F(CommandLine, SelectTellsWhatHasTheSameColor) {
    const std::string file =
        test::utf8(folder.write("colors.svg", R"svg(<svg xmlns="http://www.w3.org/2000/svg">
        <style>.hot{fill:#f00}</style>
        <rect id="a" width="9" height="9" fill="red"/>
        <g id="g" fill="rgb(255,0,0)"><circle id="b" r="5"/><rect id="c" width="9" height="9" fill="blue"/></g>
        <path id="d" class="hot" d="M0 0h9v9z"/>
        <rect id="e" width="9" height="9" style="fill:none;stroke:red"/></svg>)svg"));
    EXPECT_EQ(runKzdraw({"select", file, "--same-color-as", "a", "--json"}),
              (Outcome{0, "{\"selection\":[\"a\",\"b\",\"d\"]}\n", ""}));
    EXPECT_EQ(runKzdraw({"select", file, "--same-color-as", "g", "--json"}),
              (Outcome{0, "{\"selection\":[\"a\",\"b\",\"d\"]}\n", ""}))
        << "a group stands for its first filled descendant";
    EXPECT_EQ(runKzdraw({"select", file, "--same-color-as", "e"}),
              refused(file + ": \"e\" has no fill to go by"));
    EXPECT_EQ(runKzdraw({"select", file, "--same-color-as", "z"}),
              refused(file + ": there is no object \"z\""));
}

TEST_F(CommandLine, ScriptComesFromAFileOrFromStandardInput) {
    const std::string text = "open '" + sea + "'\nselect hull # and no more\nprint selection\n";
    const Outcome expected{0, "{\"selection\":[\"hull\"]}\n", ""};
    EXPECT_EQ(runKzdraw({"script", test::utf8(folder.write("a script.kzs", text))}), expected);
    EXPECT_EQ(runKzdraw({"script", "-"}, text), expected);
}

TEST_F(CommandLine, AFailingScriptNamesItsLine) {
    const std::string text = "print messages\n\nrecite\nprint messages\n";
    const std::string file = test::utf8(folder.write("s.kzs", text));
    EXPECT_EQ(runKzdraw({"script", file}),
              (Outcome{2, "{\"messages\":[]}\n", "kzdraw: " + file + ":3: unknown command \"recite\"\n"}));
    EXPECT_EQ(runKzdraw({"script", "-"}, text),
              (Outcome{2, "{\"messages\":[]}\n", "kzdraw: -:3: unknown command \"recite\"\n"}));
}

TEST_F(CommandLine, WrongUsageIsToldInOneLine) {
    const struct {
        std::vector<std::string> arguments;
        const char* reason;
    } table[] = {
        {{},
         "a command is missing: it is one of info, tools, attributes, select, view, render, prefs, script, "
         "serve, window (see kzdraw --help)"},
        {{"bogus"},
         "there is no command \"bogus\": it is one of info, tools, attributes, select, view, render, prefs, "
         "script, serve, window (see kzdraw --help)"},
        {{""},
         "there is no command \"\": it is one of info, tools, attributes, select, view, render, prefs, "
         "script, serve, window (see kzdraw --help)"},
        {{"--bogus"}, "there is no option \"--bogus\" (see kzdraw --help)"},
        {{"--json", "info", sea}, "there is no option \"--json\" (see kzdraw --help)"},
        {{"info"}, "FILE is required (see kzdraw info --help)"},
        {{"info", ""}, "the name of a file is empty"},
        {{"tools", ""}, "the name of a file is empty"},
        {{"script", ""}, "the name of a file is empty"},
        {{"tools", sea, "more"}, "The following argument was not expected: more (see kzdraw tools --help)"},
        {{"info", "--wrong", sea},
         "The following argument was not expected: --wrong (see kzdraw info --help)"},
        {{"script"}, "FILE is required (see kzdraw script --help)"},
        {{"select", sea},
         "one of --similar-to, --same-color-as and --where is needed (see kzdraw select --help)"},
        {{"select", sea, "--similar-to", "cap", "--same-color-as", "cap"},
         "one of --similar-to, --same-color-as and --where is needed (see kzdraw select --help)"},
        {{"select", sea, "--same-color-as"},
         "--same-color-as: 1 required ID missing (see kzdraw select --help)"},
        {{"select", sea, "--similar-to"}, "--similar-to: 1 required ID missing (see kzdraw select --help)"},
    };
    for (const auto& row : table) EXPECT_EQ(runKzdraw(row.arguments), refused(row.reason));
}

TEST_F(CommandLine, AnUnknownIdIsToldWithItsFile) {
    EXPECT_EQ(runKzdraw({"select", sea, "--similar-to", "zz"}), refused(sea + ": there is no object \"zz\""));
    EXPECT_EQ(runKzdraw({"select", sea, "--similar-to", ""}), refused(sea + ": there is no object \"\""));
}

TEST_F(CommandLine, HelpSaysWhatItIsAndGivesAnExample) {
    const Outcome help = runKzdraw({"--help"});
    EXPECT_EQ(help.status, 0);
    EXPECT_EQ(help.err, "");
    EXPECT_EQ(
        firstLine(help.out),
        "kzdraw selects the objects of a drawing by their attributes and shows or hides them by color.");
    for (const char* command : {"info", "tools", "select", "view", "render", "script"}) {
        EXPECT_NE(help.out.find("\n  " + std::string(command) + " "), std::string::npos) << command;
        const Outcome own = runKzdraw({command, "--help"});
        EXPECT_EQ(own.status, 0) << command;
        EXPECT_EQ(own.err, "") << command;
        EXPECT_NE(own.out.find("\nExample:\n  kzdraw " + std::string(command)), std::string::npos) << own.out;
    }
}

TEST_F(CommandLine, VersionIsOneLine) {
    const Outcome outcome = runKzdraw({"--version"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_TRUE(outcome.out.starts_with("kzdraw ")) << outcome;
    EXPECT_EQ(firstLine(outcome.out) + '\n', outcome.out);
}
