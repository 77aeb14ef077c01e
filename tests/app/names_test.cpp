// Names of objects and files that are no plain words.
#include <gtest/gtest.h>

#include "app/output.h"
#include "process.h"
#include "sea.h"
#include "support/temp_folder.h"

using test::Outcome;
using test::runKzdraw;

namespace {

class Names : public testing::Test {
protected:
    test::TempFolder folder;

    std::string drawing(const std::string& content) {
        return test::utf8(
            folder.write("names.svg", "<svg xmlns='http://www.w3.org/2000/svg'>" + content + "</svg>"));
    }
};

constexpr char kStrange[] =
    "<rect id='a&quot;b\\c'/><rect id='tab&#9;line&#10;escape&#27;'/><rect id='M\xC3\xB6we \xE2\x9B\xB5'/>"
    "<rect id='bad \xFF'/><rect id='-dash'/><rect id='[x]'/><rect id='&quot;quoted&quot;'/>";

}  // namespace

TEST_F(Names, AreEscapedAsJsonDemands) {
    EXPECT_EQ(
        runKzdraw({"select", drawing(kStrange), "--similar-to", "-dash", "--json"}),
        (Outcome{
            0,
            "{\"selection\":[\"a\\\"b\\\\c\",\"tab\\tline\\nescape\\u001b\",\"M\xC3\xB6we \xE2\x9B\xB5\","
            "\"bad \xEF\xBF\xBD\",\"-dash\",\"[x]\",\"\\\"quoted\\\"\"]}\n",
            ""}));
}

TEST_F(Names, NeitherBreakALineForPeopleNorCommandTheirTerminal) {
    EXPECT_EQ(runKzdraw({"select", drawing(kStrange), "--similar-to", "[x]"}),
              (Outcome{0,
                       "7 of 7 objects selected\n"
                       "  a\"b\\c                   Rectangle         Layer 1\n"
                       "  tab?line?escape?        Rectangle         Layer 1\n"
                       "  M\xC3\xB6we \xE2\x9B\xB5                  Rectangle         Layer 1\n"
                       "  bad \xEF\xBF\xBD                   Rectangle         Layer 1\n"
                       "  -dash                   Rectangle         Layer 1\n"
                       "  [x]                     Rectangle         Layer 1\n"
                       "  \"quoted\"                Rectangle         Layer 1\n",
                       ""}));
}

TEST_F(Names, AreTakenFromTheCommandLineAsTheyAre) {
    const std::string file = drawing(kStrange);
    for (const char* id : {"a\"b\\c", "M\xC3\xB6we \xE2\x9B\xB5", "-dash", "[x]", "\"quoted\""})
        EXPECT_EQ(runKzdraw({"select", file, "--json", "--similar-to=" + std::string(id)}).status, 0) << id;
}

TEST_F(Names, AreTakenFromAScriptInQuotes) {
    EXPECT_EQ(runKzdraw({"script", "-"}, "open '" + drawing(kStrange) +
                                             "'\nselect 'a\"b\\c' \"M\xC3\xB6we \xE2\x9B\xB5\" \\[x]\n"
                                             "print selection\nselect '\xFF'\n"),
              (Outcome{2, "{\"selection\":[\"a\\\"b\\\\c\",\"M\xC3\xB6we \xE2\x9B\xB5\",\"[x]\"]}\n",
                       "kzdraw: -:4: there is no object \"\xFF\"\n"}));
}

TEST_F(Names, OfFilesMayHaveSpacesAndLettersOfEveryLanguage) {
    const std::filesystem::path file =
        folder.write(std::filesystem::path(u8"Bücher und Schiffe") / u8"Möwe 船 Ω.svg", test::kSea);
    const std::string name = test::utf8(file);
    const Outcome info = runKzdraw({"info", name});
    EXPECT_EQ(info.status, 0) << info;
    EXPECT_TRUE(info.out.starts_with(name + ": 6 objects")) << info;
    EXPECT_EQ(runKzdraw({"script", "-"}, "open \"" + name + "\"\nselect sun\nprint selection\n").out,
              "{\"selection\":[\"sun\"]}\n");
    const std::filesystem::path script = folder.write(u8"Скрипт.kzs", "print messages\n");
    EXPECT_EQ(runKzdraw({"script", test::utf8(script)}), (Outcome{0, "{\"messages\":[]}\n", ""}));
}

TEST_F(Names, OfFilesMayBeginWithADashOrASlash) {
    const std::string file = test::utf8(folder.write("sea.svg", test::kSea));
    EXPECT_EQ(runKzdraw({"info", "--", "-missing.svg"}),
              (Outcome{2, "", "kzdraw: -missing.svg: there is no such file\n"}));
    EXPECT_EQ(runKzdraw({"info", "/missing/sea.svg"}),
              (Outcome{2, "", "kzdraw: /missing/sea.svg: there is no such file\n"}));
}

TEST_F(Names, ThatNoFileCanHaveAreRefusedWithTheirLine) {
    const Outcome outcome = runKzdraw({"script", "-"}, "print messages\nopen 'no \xFF file.svg'\n");
    EXPECT_EQ(outcome.status, 2);
    EXPECT_TRUE(outcome.err.starts_with("kzdraw: -:2: no \xFF file.svg: ")) << outcome;
}

TEST(FillUp, CountsCharactersAndNotBytes) {
    std::string line = "M\xC3\xB6we";
    app::fillUp(line, 6);
    EXPECT_EQ(line, "M\xC3\xB6we  ");
    app::fillUp(line, 3);
    EXPECT_EQ(line, "M\xC3\xB6we   ") << "one blank at least";
}
