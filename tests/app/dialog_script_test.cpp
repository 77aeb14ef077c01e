// Scripts that act on the dialogs of tools.
#include "script_session.h"

namespace {

class DialogScript : public test::ScriptSession {
protected:
    std::string beginning() const override { return openSea() + "tool ASelectByAttrTool\n"; }
};

}  // namespace

TEST_F(DialogScript, TicksAndPressesOk) {
    EXPECT_EQ(runToItsEnd("check Rectangle\npage Fill\ncheck 'Solid/RGB Color/red'\npress OK\n"
                          "print selection\nundo\nprint selection\n"),
              "{\"selection\":[\"hull\",\"cap\"]}\n{\"selection\":[]}\n");
}

TEST_F(DialogScript, BlankLinesAndCommentsMayStandInADialog) {
    EXPECT_EQ(runToItsEnd("\n  # the boats\ncheck Rectangle\n\npress OK\nprint selection\n"),
              "{\"selection\":[\"hull\",\"sail\",\"cap\"]}\n");
}

TEST_F(DialogScript, PrintsTheTree) {
    EXPECT_EQ(runToItsEnd("page Stroke\ncheck 'No stroke'\ncollapse Pen\nprint tree\npress Cancel\n"),
              "{\"tree\":["
              "{\"text\":\"No stroke\",\"check\":3,\"image\":6,\"expanded\":false,\"children\":[]},"
              "{\"text\":\"Pen\",\"check\":1,\"image\":2,\"expanded\":false,\"children\":["
              "{\"text\":\"RGB Color\",\"check\":1,\"image\":4,\"expanded\":true,\"children\":["
              "{\"text\":\"black\",\"check\":1,\"image\":12,\"expanded\":false,\"children\":[]},"
              "{\"text\":\"blue\",\"check\":1,\"image\":16,\"expanded\":false,\"children\":[]}]}]}]}\n");
}

TEST_F(DialogScript, PrintsTheDialog) {
    const std::string out = runToItsEnd("page Fill\nprint dialog\npress Cancel\n");
    EXPECT_EQ(out.substr(0, out.find(",\"rect\"")), "{\"dialog\":{\"title\":\"Select by Attributes\"");
    for (const char* part :
         {"\"page\":\"Fill\",\"pages\":[\"Object\",\"Dimension\",\"Fill\",\"Stroke\",\"Effect\",\"Layer\"]",
          "{\"id\":1060,\"text\":\"All types\",\"enabled\":true,\"checked\":false,\"rect\":[",
          "{\"id\":1062,\"text\":\"Selection only\",\"enabled\":false,\"checked\":false,\"rect\":[",
          "{\"id\":1,\"text\":\"OK\",\"enabled\":true,\"checked\":null,\"rect\":["})
        EXPECT_NE(out.find(part), std::string::npos) << part << " in " << out;
}

TEST_F(DialogScript, OtherPrintsWorkWhileADialogIsOpen) {
    EXPECT_EQ(runToItsEnd("print selection\npress Cancel\nprint messages\n"),
              "{\"selection\":[]}\n{\"messages\":[]}\n");
}

TEST_F(DialogScript, TellsWhenNothingMatches) {
    EXPECT_EQ(runToItsEnd("press OK\nprint messages\n"),
              "{\"messages\":[\"No object matches the criteria.\"]}\n");
}

TEST_F(DialogScript, ThatEndsInsideADialogCancelsIt) {
    session.open(test::utf8(folder.path() / "sea.svg"));
    EXPECT_EQ(failureOf("check Rectangle\n"),
              "S:4: the script ends inside the dialog \"Select by Attributes\"");
    EXPECT_EQ(session.view().m_selection->getCount(), 0);
    EXPECT_EQ(runToItsEnd("check Rectangle\npress OK\nprint selection\n"),
              "{\"selection\":[\"hull\",\"sail\",\"cap\"]}\n");
}

TEST_F(DialogScript, AFailingLineCancelsTheDialog) {
    EXPECT_EQ(failureOf("check Rectangle\ncheck Rectangel\npress OK\n"),
              "S:4: there is no item \"Rectangel\"; nearest: \"Rectangle\", \"Oval\", \"Group\"");
    EXPECT_EQ(session.view().m_selection->getCount(), 0);
    EXPECT_EQ(
        failureOf("page Fil\n"),
        "S:3: there is no page \"Fil\"; nearest: \"Fill\", \"Effect\", \"Layer\", \"Object\", \"Stroke\"");
    EXPECT_EQ(failureOf("nonsense\n"), "S:3: unknown command \"nonsense\"");
    EXPECT_EQ(failureOf("press 'Selection only'\n"), "S:3: the button \"Selection only\" is disabled");
    EXPECT_EQ(failureOf("check\n"), "S:3: usage: check PATH");
    EXPECT_EQ(failureOf("move 1 x\n"), "S:3: \"x\" is no number of pixels");
    EXPECT_EQ(failureOf("size 500 500\n"), "S:3: the dialog has a fixed size");
}

TEST_F(DialogScript, WhatWorksOnTheDrawingHasToWait) {
    for (const char* line : {"open x.svg", "select hull", "tool ASelectByAttrTool", "undo", "save x.svg"}) {
        EXPECT_EQ(failureOf(line + std::string("\n")),
                  "S:3: \"" + std::string(line).substr(0, std::string(line).find(' ')) +
                      "\" has to wait until the dialog is closed");
    }
}

TEST_F(DialogScript, WithoutADialogItsLinesFail) {
    for (const char* line : {"page Fill", "check Oval", "press OK", "move 1 2", "print tree", "print dialog"})
        EXPECT_EQ(failureOf("press Cancel\n" + std::string(line) + "\n"), "S:4: no dialog is open") << line;
}

TEST_F(DialogScript, MovesTheDialog) {
    const std::string out = runToItsEnd("move 30 40\nprint dialog\npress Cancel\n");
    EXPECT_NE(out.find("\"rect\":[30,40,"), std::string::npos) << out;
}
