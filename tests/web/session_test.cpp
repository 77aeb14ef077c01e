// Sessions of pages: lines, dialogs, files, tiles, and their end.
#include <csignal>

#include "browser.h"
#include "support/temp_folder.h"

namespace {

using test::Json;

constexpr char kSea[] = R"svg(<svg xmlns="http://www.w3.org/2000/svg" width="100" height="80">
  <rect id="hull" width="90" height="40" fill="red"/><rect id="sail" y="50" width="40" height="9" fill="blue"/>
</svg>)svg";

class PageSession : public testing::Test {
protected:
    test::TempFolder folder;
    const std::string file = folder.write("sea.svg", kSea).string();
    test::RunningServer server{test::RunningServer::options({file})};
    test::Tab tab{server};

    void SetUp() override {
        tab.start();
        ASSERT_FALSE(HasFatalFailure());
    }
    std::string openSea() { return "open '" + file + "'"; }
    std::string tile(const Json& state, const char* rest) {
        return tab.path("tiles/" + state["drawing"].dump() + "/" + state["shown"].dump() + "/" + rest);
    }
    int statusOfLines(const std::string& body, const char* type = "application/json") {
        const auto answer = tab.post(tab.path("lines"), body, type);
        return answer ? answer->status : -1;
    }
    bool isRunning(pid_t pid) { return ::kill(pid, 0) == 0; }
};

}  // namespace

TEST_F(PageSession, RunsTheLinesOfAScript) {
    const Json answers = tab.run({openSea(), "select hull", "tool ASelectSimilarTool", "print selection"});
    ASSERT_EQ(answers.size(), 4U);
    EXPECT_EQ(answers[0]["output"], Json::array());
    EXPECT_EQ(answers[0]["state"]["file"], file);
    EXPECT_EQ(answers[3]["output"][0]["selection"], (Json{"hull", "sail"}));
    EXPECT_EQ(answers[3]["error"], nullptr);
}

TEST_F(PageSession, StopsAtALineThatFailsAndGoesOnWithTheNextRequest) {
    const Json answers = tab.run({openSea(), "frobnicate", "select hull"});
    ASSERT_EQ(answers.size(), 2U);
    EXPECT_EQ(answers[1]["error"], "unknown command \"frobnicate\"");
    EXPECT_EQ(tab.run({"select sail"})[0]["state"]["selected"], 1);
}

TEST_F(PageSession, KeepsADialogOpenUntilThePageClosesIt) {
    EXPECT_EQ(tab.run({openSea(), "tool ASelectByAttrTool"})[1]["state"]["dialog"], "Select by Attributes");
    EXPECT_EQ(tab.run({"page Fill", "check 'Solid/RGB Color/blue'"})[1]["error"], nullptr);
    const Json closed = tab.run({"press OK", "print selection"});
    EXPECT_EQ(closed[0]["state"]["dialog"], nullptr);
    EXPECT_EQ(closed[1]["output"][0]["selection"], Json{"sail"});
}

TEST_F(PageSession, TellsItsPageOfChangesAndNotOfQuestions) {
    tab.run({"print state"});
    tab.run({openSea()});
    EXPECT_TRUE(tab.waitForEvent("event: change\ndata: 1\n"));
}

TEST_F(PageSession, OpensOnlyWhatTheUserNamedOrDropped) {
    const std::string other = folder.write("other.svg", kSea).string();
    for (const std::string& name :
         {other, std::string("/etc/passwd"), "../" + file, std::string("sea.svg")}) {
        const Json answer = tab.run({"open '" + name + "'"})[0];
        EXPECT_TRUE(answer["error"].get<std::string>().starts_with("the page knows no file")) << name;
    }
    const auto dropped = tab.post(tab.path("files?name=my%20%3Cb%3E.svg"), kSea, "application/octet-stream");
    ASSERT_TRUE(dropped);
    EXPECT_EQ(dropped->status, 200);
    EXPECT_EQ(tab.run({"open 'my <b>.svg'"})[0]["state"]["file"], "my <b>.svg");
    for (const char* name : {"", "a%0Ab", "%00"}) {
        const auto refused =
            tab.post(tab.path(std::string("files?name=") + name), kSea, "application/octet-stream");
        ASSERT_TRUE(refused);
        EXPECT_EQ(refused->status, 400) << name;
    }
}

TEST_F(PageSession, SaysWhatIsWrongWithADroppedFileAndKeepsTheDrawing) {
    tab.run({openSea()});
    tab.post(tab.path("files?name=bad.svg"), "<svg", "application/octet-stream");
    const Json answer = tab.run({"open bad.svg"})[0];
    EXPECT_TRUE(answer["error"].get<std::string>().starts_with("bad.svg:1: "));
    EXPECT_EQ(answer["state"]["file"], file);
    const auto picture = tab.get(tile(answer["state"], "1/64/0/0.png"));
    ASSERT_TRUE(picture);
    EXPECT_EQ(picture->status, 200);
}

TEST_F(PageSession, WritesNoFile) {
    const Json answers = tab.run({openSea(), "save '" + (folder.path() / "out.svg").string() + "'"});
    EXPECT_TRUE(answers[1]["error"].get<std::string>().starts_with("a page writes no file"));
    EXPECT_FALSE(std::filesystem::exists(folder.path() / "out.svg"));
}

TEST_F(PageSession, DownloadsTheDrawingAndItsPicture) {
    const auto nothing = tab.get(tab.path("drawing.svg"));
    ASSERT_TRUE(nothing);
    EXPECT_EQ(nothing->status, 409);
    tab.run({openSea(), "tool AHideThisTool color:red"});
    EXPECT_EQ(tab.get(tab.path("drawing.svg"))->body, kSea);
    const auto shown = tab.get(tab.path("drawing.svg?shown"));
    EXPECT_EQ(shown->body.find("hull"), std::string::npos);
    EXPECT_TRUE(shown->get_header_value("Content-Disposition").starts_with("attachment"));
    EXPECT_TRUE(tab.get(tab.path("picture.png?width=50"))->body.starts_with("\x89PNG"));
    EXPECT_EQ(tab.get(tab.path("picture.png?width=9999999"))->status, 409);
}

TEST_F(PageSession, DrawsTilesOfThePictureThatIsShown) {
    const Json before = tab.run({openSea()})[0]["state"];
    const auto whole = tab.get(tile(before, "2/64/0/0.png"));
    ASSERT_TRUE(whole);
    EXPECT_EQ(whole->get_header_value("Content-Type"), "image/png");
    EXPECT_TRUE(whole->body.starts_with("\x89PNG"));
    const Json after = tab.run({"tool AHideThisTool color:red"})[0]["state"];
    EXPECT_NE(before["shown"], after["shown"]);
    EXPECT_NE(tab.get(tile(after, "2/64/0/0.png"))->body, whole->body);
    EXPECT_EQ(tab.get(tile(before, "2/64/0/0.png"))->status, 404) << "it is not shown any more";
}

TEST_F(PageSession, DrawsNoTileOutOfAllBounds) {
    const Json state = tab.run({openSea()})[0]["state"];
    for (const char* rest :
         {"0/64/0/0.png", "-1/64/0/0.png", "1e999/64/0/0.png", "1/0/0/0.png", "1/9999/0/0.png",
          "1/64/99999999/0.png", "1/64/0/-99999999.png", "nan/64/0/0.png", "1/64/0/0.gif"})
        EXPECT_EQ(tab.get(tile(state, rest))->status, 404) << rest;
}

TEST_F(PageSession, DrawsTilesWhileADialogWaits) {
    const Json state = tab.run({openSea(), "tool AViewFilterTool"})[1]["state"];
    EXPECT_EQ(tab.get(tile(state, "1/64/0/0.png"))->status, 200);
    tab.run({"press Cancel"});
}

TEST_F(PageSession, RefusesBodiesThatAreNoLines) {
    for (const char* body :
         {"", "{", "[]", "{}", "{\"lines\":1}", "{\"lines\":[1]}", "{\"lines\":[[\"print state\"]]}",
          "{\"lines\":{}}", "{\"lines\":[\"a\\nb\"]}", "\xff\xfe", "{\"lines\":[\"a\\u0000b\"]}"})
        EXPECT_EQ(statusOfLines(body), 400) << body;
    EXPECT_EQ(statusOfLines(std::string(500000, '[')), 400);
    EXPECT_EQ(statusOfLines("{\"lines\":[]}", "text/plain"), 415);
    EXPECT_EQ(statusOfLines("{\"lines\":[" + std::string(4000, ' ') + "]}"), 200);
    EXPECT_EQ(tab.get("/sessions/0123456789abcdef/drawing.svg")->status, 410);
}

TEST_F(PageSession, EndsWithItsPageEvenInsideADialog) {
    const pid_t pid = server->sessions().find(tab.session())->process().pid();
    tab.run({openSea(), "tool AViewFilterTool"});
    tab.leave();
    test::waitUntil([&] { return !isRunning(pid); });
    test::waitUntil([&] { return server->sessions().count() == 0; });
    EXPECT_EQ(tab.get(tab.path("drawing.svg"))->status, 410);
}

TEST_F(PageSession, ThatIsKilledLeavesTheOthersAlone) {
    test::Tab other(server);
    other.start();
    server->sessions().find(tab.session())->process().kill();
    const auto answer = tab.post(tab.path("lines"), "{\"lines\":[\"print state\"]}");
    ASSERT_TRUE(answer);
    EXPECT_EQ(answer->status, 410);
    EXPECT_EQ(other.run({openSea()})[0]["state"]["file"], file);
}

TEST_F(PageSession, HasItsOwnDrawing) {
    test::Tab other(server);
    other.start();
    tab.run({openSea(), "select hull"});
    const Json answers = other.run({openSea(), "print selection"});
    EXPECT_EQ(answers[1]["output"][0]["selection"], Json::array());
}

TEST_F(PageSession, IsOneOfAFewAtMost) {
    test::Tab second(server);
    second.start();
    test::Tab third(server);
    EXPECT_EQ(third.post("/sessions", "{}")->status, 503);
    second.leave();
    test::waitUntil([&] { return server->sessions().count() == 1; });
    third.start();
    EXPECT_EQ(third.run({openSea()})[0]["error"], nullptr);
}
