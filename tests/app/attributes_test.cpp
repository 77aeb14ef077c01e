// kzdraw attributes and kzdraw select --where.
#include <gtest/gtest.h>

#include "app/attribute_tree.h"
#include "app/guarded_author.h"
#include "process.h"
#include "sea.h"
#include "support/temp_folder.h"

using test::Outcome;
using test::runKzdraw;

namespace {

class Attributes : public testing::Test {
protected:
    test::TempFolder folder;
    std::string sea = test::utf8(folder.write("sea.svg", test::kSea));

    Outcome where(std::vector<std::string> entries, std::vector<std::string> more = {"--json"}) {
        std::vector<std::string> arguments{"select", sea};
        for (std::string& entry : entries) {
            arguments.push_back("--where");
            arguments.push_back(std::move(entry));
        }
        arguments.insert(arguments.end(), more.begin(), more.end());
        return runKzdraw(arguments);
    }
    static Outcome selects(const std::string& ids) { return {0, "{\"selection\":[" + ids + "]}\n", ""}; }
};

// Every entry, ticked alone, selects as many objects as are told beside it.
void expectCounts(app::Session& session, const std::string& page,
                  const std::vector<app::AttributeEntry>& entries, const std::string& above, int& asked) {
    for (const app::AttributeEntry& entry : entries) {
        const std::string path = above + entry.text;
        app::GuardedAuthor author([&](driver::Dialog& sheet) {
            sheet.page(page);
            sheet.check(path);
            sheet.press("OK");
            return true;
        });
        {
            const driver::Driver user(author.asAuthor());
            ASSERT_TRUE(session.runTool("ASelectByAttrTool"));
        }
        author.rethrow();
        ASSERT_TRUE(entry.objects) << page << "/" << path;
        EXPECT_EQ(session.view().m_selection->getObjects().size(), *entry.objects) << page << "/" << path;
        ++asked;
        session.select({});
        expectCounts(session, page, entry.entries, path + "/", asked);
    }
}

}  // namespace

TEST_F(Attributes, AreListedPageByPageWithHowManyObjectsEachSelects) {
    EXPECT_EQ(runKzdraw({"attributes", sea}), (Outcome{0,
                                                       "Object\n"
                                                       "  Rectangle                             3\n"
                                                       "  Oval                                  1\n"
                                                       "  Group                                 1\n"
                                                       "Dimension\n"
                                                       "Fill\n"
                                                       "  No fill                               2\n"
                                                       "  Gradient                              1\n"
                                                       "    glow                                1\n"
                                                       "  Solid                                 2\n"
                                                       "    RGB Color                           2\n"
                                                       "      red                               2\n"
                                                       "Stroke\n"
                                                       "  No stroke                             2\n"
                                                       "  Pen                                   3\n"
                                                       "    RGB Color                           3\n"
                                                       "      black                             1\n"
                                                       "      blue                              1\n"
                                                       "Effect\n"
                                                       "Layer\n"
                                                       "  Drawing                               4\n",
                                                       ""}));
}

TEST_F(Attributes, AsJson) {
    const Outcome outcome = runKzdraw({"attributes", sea, "--json"});
    EXPECT_EQ(outcome.status, 0) << outcome;
    EXPECT_EQ(outcome.out.find("{\"attributes\":[{\"page\":\"Object\",\"entries\":[{\"text\":\"Rectangle\","
                               "\"objects\":3,\"entries\":[]},"),
              0u)
        << outcome;
}

TEST_F(Attributes, CountsAgreeWithTheToolOnEveryEntry) {
    int asked = 0;
    for (const std::string& file : {sea, std::string(KZ_SAMPLES) + "/harbour.svg"}) {
        app::Session session;
        session.open(file);
        for (const app::AttributePage& page : app::readAttributes(session))
            expectCounts(session, page.name, page.entries, "", asked);
    }
    EXPECT_GT(asked, 40);
}

TEST_F(Attributes, SelectTheObjectsOfAnEntry) {
    EXPECT_EQ(where({"Object/Rectangle"}), selects("\"hull\",\"sail\",\"cap\""));
    EXPECT_EQ(where({"Stroke/Pen/RGB Color/blue"}), selects("\"sail\""));
}

TEST_F(Attributes, OfOnePageAreAlternativesOfSeveralHoldTogether) {
    EXPECT_EQ(where({"Object/Oval", "Object/Group"}), selects("\"sun\",\"crew\""));
    EXPECT_EQ(where({"Object/Rectangle", "Fill/Solid/RGB Color/red"}), selects("\"hull\",\"cap\""));
    EXPECT_EQ(where({"Object/Oval", "Fill/No fill"}), (Outcome{1, "{\"selection\":[]}\n", ""}));
}

TEST_F(Attributes, WithinKeepsToObjectsAndWhatIsInThem) {
    EXPECT_EQ(where({"Object/Rectangle"}, {"--json", "--within", "hull", "crew"}),
              selects("\"hull\",\"cap\""));
}

TEST_F(Attributes, WhatIsNotThereIsRefusedWithTheNearestNames) {
    const auto refused = [this](const std::string& reason) {
        return Outcome{2, "", "kzdraw: " + sea + ": " + reason + "\n"};
    };
    EXPECT_EQ(where({"Object/Rectangel"}),
              refused("there is no item \"Rectangel\"; nearest: \"Rectangle\", \"Oval\", \"Group\""));
    EXPECT_EQ(where({"Fil/Solid"}), refused("there is no page \"Fil\"; nearest: \"Fill\", \"Effect\", "
                                            "\"Layer\", \"Object\", \"Stroke\""));
    EXPECT_EQ(where({"Rectangle"}), refused("\"Rectangle\" is no entry of a page: it is written PAGE/PATH"));
    EXPECT_EQ(where({"Object/Oval"}, {"--within", "nobody"}), refused("there is no object \"nobody\""));
}

TEST_F(Attributes, TheOptionsAreCheckedAgainstEachOther) {
    EXPECT_EQ(
        runKzdraw({"select", sea}).err,
        "kzdraw: one of --similar-to, --same-color-as and --where is needed (see kzdraw select --help)\n");
    EXPECT_EQ(runKzdraw({"select", sea, "--similar-to", "hull", "--within", "hull"}).err,
              "kzdraw: --within needs --where (see kzdraw select --help)\n");
    EXPECT_EQ(where({"Object/Oval"}, {"--similar-to", "hull"}).status, 2);
}

TEST_F(Attributes, ADrawingWithoutObjectsHasNothingToSelect) {
    const std::string empty =
        test::utf8(folder.write("empty.svg", "<svg xmlns=\"http://www.w3.org/2000/svg\"/>"));
    EXPECT_EQ(runKzdraw({"attributes", empty}),
              (Outcome{2, "", "kzdraw: " + empty + ": there is no object to select\n"}));
}
