// Several drawings in one run, and compressed ones.
#include <gtest/gtest.h>

#include "app/commands/drawings.h"
#include "app/session.h"
#include "formats/svg/reader.h"
#include "formats/svg/xml/gzip.h"
#include "process.h"
#include "sea.h"
#include "support/temp_folder.h"

using test::Outcome;
using test::refused;
using test::runKzdraw;

namespace {

constexpr char kPond[] = R"svg(<svg xmlns="http://www.w3.org/2000/svg" width="30" height="20">
  <rect id="hull" width="9" height="4" fill="blue"/><circle id="sun" r="5" fill="red"/></svg>)svg";

class Drawings : public testing::Test {
protected:
    test::TempFolder folder;
    std::string sea = test::utf8(folder.write("sea.svg", test::kSea));
    std::string pond = test::utf8(folder.write("pond.svg", kPond));
    std::string broken =
        test::utf8(folder.write("broken.svg", "<svg xmlns='http://www.w3.org/2000/svg'>\n</g>"));
    const std::string brokenReason = broken + ":2: an end tag does not match its start tag";

    std::string in(const std::string& name) const { return test::utf8(folder.path() / name); }
    bool exists(const std::string& name) const { return std::filesystem::exists(folder.path() / name); }
    std::string quoted(const std::string& text) const { return nlohmann::json(text).dump(); }
    std::string reasonOf(const std::vector<std::string>& files, const std::string& pattern) {
        try {
            app::outputNames(files, pattern);
        } catch (const app::Failure& failure) {
            return failure.reason;
        }
        return {};
    }
};

std::string unpackingProblem(const std::string& bytes) {
    std::string reason;
    return svg::gunzip(bytes, reason) ? "unpacked" : reason;
}

}  // namespace

TEST_F(Drawings, EachHasALineOfJson) {
    EXPECT_EQ(runKzdraw({"select", "--json", "--similar-to", "hull", sea, pond}),
              (Outcome{0,
                       "{\"file\":" + quoted(sea) + ",\"selection\":[\"hull\",\"sail\",\"cap\"]}\n" +
                           "{\"file\":" + quoted(pond) + ",\"selection\":[\"hull\"]}\n",
                       ""}));
    EXPECT_EQ(
        runKzdraw({"view", "--json", "--hide", "red", sea, pond}),
        (Outcome{
            0,
            "{\"file\":" + quoted(sea) +
                R"(,"filter":{"hidden":["red"],"visible":["black","blue","#123456"],)" +
                R"("brushes":{"hidden":[],"visible":["glow"]}}})" + "\n" + "{\"file\":" + quoted(pond) +
                R"(,"filter":{"hidden":["red"],"visible":["blue"],"brushes":{"hidden":[],"visible":[]}}})" +
                "\n",
            ""}));
    const Outcome info = runKzdraw({"info", "--json", sea, pond});
    EXPECT_EQ(info.status, 0) << info;
    EXPECT_EQ(info.out, runKzdraw({"info", "--json", sea}).out + runKzdraw({"info", "--json", pond}).out);
}

TEST_F(Drawings, ForPeopleTheirNamesStandInFront) {
    const Outcome select = runKzdraw({"select", sea, pond, "--same-color-as", "hull"});
    EXPECT_EQ(select.status, 0);
    EXPECT_TRUE(select.out.starts_with(sea + ": 2 of 6 objects selected\n  hull ")) << select;
    EXPECT_NE(select.out.find("\n" + pond + ": 1 of 2 objects selected\n  hull "), std::string::npos)
        << select;
    const Outcome view = runKzdraw({"view", sea, pond});
    EXPECT_TRUE(view.out.starts_with(sea + ": 0 of 5 colors, gradients and patterns hidden\n")) << view;
    EXPECT_NE(view.out.find("\n" + pond + ": 0 of 2 colors hidden\n"), std::string::npos) << view;
}

TEST_F(Drawings, ABrokenOneIsToldAndTheOthersAreDone) {
    const std::string missing = in("missing.svg");
    const std::string told = "kzdraw: " + brokenReason + "\nkzdraw: " + missing +
                             ": there is no such file\nkzdraw: 2 of 4 drawings have failed\n";
    const Outcome select = runKzdraw({"select", "--json", "--similar-to", "sun", broken, sea, missing, pond});
    EXPECT_EQ(select, (Outcome{2,
                               "{\"file\":" + quoted(broken) + ",\"error\":" + quoted(brokenReason) + "}\n" +
                                   "{\"file\":" + quoted(sea) + ",\"selection\":[\"sun\"]}\n" +
                                   "{\"file\":" + quoted(missing) +
                                   ",\"error\":" + quoted(missing + ": there is no such file") + "}\n" +
                                   "{\"file\":" + quoted(pond) + ",\"selection\":[\"sun\"]}\n",
                               told}));
    EXPECT_EQ(runKzdraw({"render", broken, sea, missing, pond, "-o", in("{name}.png")}),
              (Outcome{2, "", told}));
    EXPECT_TRUE(exists("sea.png"));
    EXPECT_TRUE(exists("pond.png"));
    EXPECT_FALSE(exists("broken.png"));
    // What fails in one drawing only, too.
    EXPECT_EQ(runKzdraw({"select", "--json", "--similar-to", "sail", pond, sea}).err,
              "kzdraw: " + pond + ": there is no object \"sail\"\nkzdraw: 1 of 2 drawings has failed\n");
}

TEST_F(Drawings, TheStatusIsOneWhenNothingMatchedInAny) {
    const std::string locked = test::utf8(folder.write("locked.svg", test::kLockedHull));
    EXPECT_EQ(runKzdraw({"select", locked, locked, "--similar-to", "hull"}).status, 1);
    EXPECT_EQ(runKzdraw({"select", locked, sea, "--similar-to", "hull"}).status, 0);
}

TEST_F(Drawings, WrongOptionsAreToldOnce) {
    EXPECT_EQ(runKzdraw({"render", sea, pond, "-o", in("{name}.png"), "--size", "big"}),
              refused("\"big\" is no size: it is WIDTHxHEIGHT or WIDTH, in pixels"));
    EXPECT_EQ(runKzdraw({"render", sea, pond, "-o", in("{name}.jpg")}),
              refused(in("sea.jpg") + ": a picture is a PNG file, its name ends in .png"));
    EXPECT_EQ(runKzdraw({"view", sea, pond, "-o", in("{name}.jpg")}),
              refused(in("{name}.jpg") + ": it is neither a picture, .png, nor a drawing, .svg or .svgz"));
}

TEST_F(Drawings, TheirPicturesAreNamedByAPattern) {
    std::filesystem::create_directory(folder.path() / "out");
    EXPECT_EQ(
        runKzdraw({"render", sea, pond, "-o", in("out/{name}-small.png"), "--json"}),
        (Outcome{0,
                 "{\"file\":" + quoted(sea) + ",\"output\":" + quoted(in("out/sea-small.png")) + "}\n" +
                     "{\"file\":" + quoted(pond) + ",\"output\":" + quoted(in("out/pond-small.png")) + "}\n",
                 ""}));
    EXPECT_TRUE(exists("out/sea-small.png"));
    EXPECT_EQ(runKzdraw({"view", sea, pond, "--hide", "red", "-o", in("out/{name}.svg")}),
              (Outcome{0, "", ""}));
    EXPECT_EQ(runKzdraw({"info", "--json", in("out/pond.svg")}).status, 0);
    // A single one, as the last of a batch may be, takes its name from the pattern too.
    EXPECT_EQ(runKzdraw({"render", sea, "-o", in("out/{name}.png")}), (Outcome{0, "", ""}));
    EXPECT_TRUE(exists("out/sea.png"));
}

TEST_F(Drawings, APatternKnowsNameAndFolder) {
    using Names = std::vector<std::string>;
    EXPECT_EQ(app::outputNames({"a/b.c.svg", "d.svgz"}, "{folder}/{name}/{x}{name}.png"),
              (Names{"a/b.c/{x}b.c.png", "./d/{x}d.png"}));
    EXPECT_EQ(app::outputNames({"{folder}.svg"}, "{name}.png"), (Names{"{folder}.png"}))
        << "what is filled in is not filled in again";
    EXPECT_EQ(app::outputNames({"a.svg"}, "all.png"), (Names{"all.png"}));
}

TEST_F(Drawings, NamesThatCollideAreRefusedBeforeAnythingIsDone) {
    EXPECT_EQ(runKzdraw({"render", sea, pond, "-o", in("all.png")}),
              refused(in("all.png") +
                      ": several drawings need several names: write {name} where the drawing's stands"));
    EXPECT_FALSE(exists("all.png"));
    const std::string deep = test::utf8(folder.write("deep/sea.svgz", test::kSea));
    EXPECT_EQ(runKzdraw({"render", pond, sea, deep, "-o", in("{name}.png")}),
              refused(in("sea.png") + ": both " + sea + " and " + deep + " would be written to it"));
    EXPECT_FALSE(exists("pond.png"));
    EXPECT_EQ(reasonOf({"a.svg", "A.svg"}, "{name}.png"),
              "A.png: both a.svg and A.svg would be written to it");
    EXPECT_EQ(reasonOf({"a.svg", "xa.svg"}, "x{name}.svg"),
              "xa.svg: a.svg would be written over the drawing of this name");
    EXPECT_EQ(reasonOf({"a.svg", "b/../a.svg"}, "{name}.svg"),
              "a.svg: both a.svg and b/../a.svg would be written to it");
    EXPECT_EQ(reasonOf({"a.svg", "b.svg"}, "{folder}/{name}.svg"), "") << "each over itself";
}

TEST_F(Drawings, CompressedOnesAreReadAndWritten) {
    const std::string packed = test::utf8(folder.write("sea.svgz", svg::gzip(test::kSea)));
    EXPECT_EQ(runKzdraw({"select", packed, "--similar-to", "hull", "--json"}),
              runKzdraw({"select", sea, "--similar-to", "hull", "--json"}));
    const std::string out = in("out.SVGZ");
    EXPECT_EQ(runKzdraw({"view", packed, "-o", out}), (Outcome{0, "", ""}));
    std::string reason;
    const std::optional<std::string> written = svg::gunzip(
        [&] {
            std::ifstream stream(folder.path() / "out.SVGZ", std::ios::binary);
            return std::string(std::istreambuf_iterator<char>(stream), {});
        }(),
        reason);
    ASSERT_TRUE(written) << reason;
    EXPECT_EQ(*written, test::kSea);
    const std::string copy = in("copy.svgz");
    EXPECT_EQ(runKzdraw({"script", "-"}, "open '" + packed + "'\nsave '" + copy + "'\n"),
              (Outcome{0, "", ""}));
    EXPECT_EQ(test::readText(copy), test::readText(out));
    EXPECT_EQ(runKzdraw({"view", packed, "-o", in("plain.svg")}), (Outcome{0, "", ""}));
    EXPECT_EQ(test::readText(in("plain.svg")), test::kSea);
}

TEST_F(Drawings, ErrorsOfACompressedOneNameItsLine) {
    const std::string file = test::utf8(folder.write("b.svgz", svg::gzip(test::readText(broken))));
    EXPECT_EQ(runKzdraw({"info", file}), refused(file + ":2: an end tag does not match its start tag"));
    const std::string empty = test::utf8(folder.write("empty.svgz", svg::gzip("")));
    EXPECT_EQ(runKzdraw({"info", empty}), refused(empty + ": the file is empty"));
}

TEST_F(Drawings, DamagedCompressionIsAnErrorWhereverItIs) {
    const std::string whole = svg::gzip(test::kSea);
    for (std::size_t size = 2; size < whole.size(); ++size)
        EXPECT_EQ(unpackingProblem(whole.substr(0, size)), "its compressed data is cut off") << size;
    constexpr std::size_t kHeader = 10;  // its time, system and level are told by nothing
    for (std::size_t at = kHeader; at < whole.size(); ++at) {
        std::string damaged = whole;
        damaged[at] = static_cast<char>(damaged[at] ^ 0x10);
        const std::string problem = unpackingProblem(damaged);
        EXPECT_TRUE(problem == "its compressed data is damaged" ||
                    problem == "its compressed data is cut off" ||
                    problem == "behind its compressed data stands something else")
            << at << ' ' << problem;
    }
    EXPECT_EQ(unpackingProblem(whole + "more"), "behind its compressed data stands something else");
    EXPECT_EQ(unpackingProblem(whole + std::string(512, '\0')), "unpacked");
    std::string reason;
    EXPECT_EQ(svg::gunzip(svg::gzip("<svg ") + svg::gzip("/>"), reason), "<svg />") << "members in a row";
}

TEST_F(Drawings, AFewBytesDoNotGrowIntoGigabytes) {
    const std::string member = svg::gzip(std::string(std::size_t{1} << 24, ' '));
    std::string bomb;
    for (int i = 0; i < 8; ++i) bomb += member;
    EXPECT_EQ(unpackingProblem(bomb), "its compressed data grows to more than 256 times its size");
    const std::string file = test::utf8(folder.write("bomb.svgz", bomb));
    EXPECT_EQ(runKzdraw({"info", file}),
              refused(file + ": its compressed data grows to more than 256 times its size"));
    EXPECT_EQ(unpackingProblem(member), "unpacked") << "what stays small may shrink as it likes";
}
