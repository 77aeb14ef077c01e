// kzdraw view and kzdraw render, as their users run them.
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

#include "canvas/image.h"
#include "process.h"
#include "sea.h"
#include "support/temp_folder.h"

using test::Outcome;
using test::refused;
using test::runKzdraw;

namespace {

// Three squares: red, blue, and gold with a black line inside of it.
constexpr char kSquares[] = R"svg(<svg xmlns="http://www.w3.org/2000/svg" width="30" height="10">
  <rect id="a" width="10" height="10" fill="red"/>
  <rect id="b" x="10" width="10" height="10" fill="blue"/>
  <g fill="gold"><rect id="c" x="22" y="2" width="6" height="6" stroke="black" stroke-width="4"/></g>
</svg>
)svg";

class ViewCommand : public testing::Test {
protected:
    test::TempFolder folder;
    std::string sea = test::utf8(folder.write("sea.svg", test::kSea));
    std::string squares = test::utf8(folder.write("squares.svg", kSquares));
    std::string png = test::utf8(folder.path() / "out.png");
    std::string svg = test::utf8(folder.path() / "out.svg");

    const Outcome done{0, "", ""};

    AImage picture() {
        const std::string bytes = rawBytes(folder.path() / "out.png");
        return decodeImage({reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size()});
    }
    static std::string rawBytes(const std::filesystem::path& file) {
        std::ifstream stream(file, std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(stream), {});
    }
    // The middles of the three squares, and the line around the last one: r, b, g, k, and . for white.
    std::string look() {
        const AImage image = picture();
        if (image.width() != 30 || image.height() != 10) return "wrong size";
        std::string letters;
        for (const int x : {5, 15, 25, 20}) {
            switch (image.at(x, 5)) {
                case 0xffff0000:
                    letters += 'r';
                    break;
                case 0xff0000ff:
                    letters += 'b';
                    break;
                case 0xffffd700:
                    letters += 'g';
                    break;
                case 0xff000000:
                    letters += 'k';
                    break;
                case 0xffffffff:
                    letters += '.';
                    break;
                default:
                    letters += '?';
            }
        }
        return letters;
    }
    std::string lookOf(std::vector<std::string> options) {
        options.insert(options.begin(), {"view", squares, "-o", png});
        EXPECT_EQ(runKzdraw(options), done);
        return look();
    }
};

}  // namespace

TEST_F(ViewCommand, ShowsWhatTheOptionsLeave) {
    EXPECT_EQ(lookOf({}), "rbgk");
    EXPECT_EQ(lookOf({"--hide", "red"}), ".bgk");
    EXPECT_EQ(lookOf({"--hide", "black"}), "rbg.");
    EXPECT_EQ(lookOf({"--only", "gold"}), "..g.");
    EXPECT_EQ(lookOf({"--except", "gold"}), "rb.k");
}

TEST_F(ViewCommand, AppliesItsOptionsInTheOrderWritten) {
    EXPECT_EQ(lookOf({"--hide", "red", "--show", "red"}), "rbgk");
    EXPECT_EQ(lookOf({"--show", "red", "--hide", "red"}), ".bgk");
    EXPECT_EQ(lookOf({"--only", "red", "--show", "black", "--show", "gold", "--hide", "red"}), "..gk");
    EXPECT_EQ(lookOf({"--hide", "red", "--only", "blue", "--hide", "gold", "--except", "black"}), "rbg.");
    EXPECT_EQ(lookOf({"--hide=red", "--hide=blue", "--show=red"}), "r.gk");
}

TEST_F(ViewCommand, TakesColorsByNameByValueAndFromObjects) {
    for (const char* color : {"gold", "GOLD", "#ffd700", "#FFD700", "color:gold", "fill:c"})
        EXPECT_EQ(lookOf({"--hide", color}), "rb.k") << color;
    EXPECT_EQ(lookOf({"--hide", "stroke:c"}), "rbg.");
}

TEST_F(ViewCommand, TellsWhatIsHidden) {
    EXPECT_EQ(runKzdraw({"view", sea, "--hide", "red", "--hide", "fill:sun"}),
              (Outcome{0,
                       "2 of 5 colors, gradients and patterns hidden\n"
                       "  red                     RGB Color         hidden\n"
                       "  black                   RGB Color         visible\n"
                       "  blue                    RGB Color         visible\n"
                       "  #123456                 RGB Color         visible\n"
                       "  glow                    Gradient          hidden\n",
                       ""}));
    EXPECT_EQ(runKzdraw({"view", squares, "--only", "blue"}).out.substr(0, 20), "3 of 4 colors hidden");
    EXPECT_EQ(runKzdraw({"view", sea, "--json", "--only", "blue"}),
              (Outcome{0,
                       R"({"filter":{"hidden":["red","black","#123456"],"visible":["blue"],)"
                       R"("brushes":{"hidden":["glow"],"visible":[]}}})"
                       "\n",
                       ""}));
    EXPECT_EQ(runKzdraw({"view", sea, "--json"}), (Outcome{0, "{\"filter\":null}\n", ""}));
}

TEST_F(ViewCommand, TellsJsonBesideWhatItWrites) {
    const Outcome outcome = runKzdraw({"view", squares, "--hide", "red", "-o", png, "--json"});
    EXPECT_EQ(outcome, (Outcome{0,
                                R"({"filter":{"hidden":["red"],"visible":["blue","gold","black"],)"
                                R"("brushes":{"hidden":[],"visible":[]}}})"
                                "\n",
                                ""}));
    EXPECT_EQ(look(), ".bgk");
}

TEST_F(ViewCommand, WritesTheDrawingWithoutWhatIsHidden) {
    EXPECT_EQ(runKzdraw({"view", squares, "--hide", "red", "--hide", "gold", "-o", svg}), done);
    EXPECT_EQ(test::readText(folder.path() / "out.svg"),
              R"svg(<svg xmlns="http://www.w3.org/2000/svg" width="30" height="10">
  
  <rect id="b" x="10" width="10" height="10" fill="blue"/>
  <g fill="gold"><rect id="c" x="22" y="2" width="6" height="6" stroke="black" stroke-width="4" style="fill:none!important"/></g>
</svg>
)svg");
    EXPECT_EQ(runKzdraw({"render", svg, "-o", png}), done);
    EXPECT_EQ(look(), ".b.k");
}

TEST_F(ViewCommand, MayReplaceTheDrawingItself) {
    EXPECT_EQ(runKzdraw({"view", squares, "--only", "blue", "-o", squares}), done);
    EXPECT_EQ(lookOf({}), ".b..");
}

TEST_F(ViewCommand, PicturesHaveTheSizeThatIsAskedFor) {
    const struct {
        const char* size;
        int width, height;
    } table[] = {{"60x20", 60, 20}, {"60", 60, 20}, {"30x30", 30, 30},
                 {"1x1", 1, 1},     {"7", 7, 2},    {"1", 1, 1}};
    for (const auto& row : table) {
        EXPECT_EQ(runKzdraw({"render", squares, "--size", row.size, "-o", png}), done);
        EXPECT_EQ(picture().width(), row.width) << row.size;
        EXPECT_EQ(picture().height(), row.height) << row.size;
    }
}

TEST_F(ViewCommand, DrawsAPartOfThePageAlone) {
    EXPECT_EQ(runKzdraw({"render", squares, "--area", "8,0,4,2", "--size", "40", "-o", png}), done);
    const AImage image = picture();
    ASSERT_EQ(image.width(), 40);
    ASSERT_EQ(image.height(), 20);
    for (const int y : {0, 19}) {
        EXPECT_EQ(image.at(19, y), 0xffff0000U);
        EXPECT_EQ(image.at(20, y), 0xff0000ffU);
    }
    // A pixel to the unit, as the page was made; what lies outside the page can be seen, too.
    EXPECT_EQ(runKzdraw({"render", squares, "--area", "-5.5,-5,11,6", "-o", png}), done);
    EXPECT_EQ(picture().width(), 11);
    EXPECT_EQ(picture().height(), 6);
    EXPECT_EQ(picture().at(3, 5), 0xffffffffU);
    EXPECT_EQ(picture().at(8, 5), 0xffff0000U);
}

TEST_F(ViewCommand, RefusesAnAreaThatIsNone) {
    for (const std::string area :
         {"1", "1,2,3", "1,2,3,4,5", "1 2 3 4", "a,b,c,d", "1,2,3,nan", "1,2,inf,4", "1,2,3,4 "}) {
        EXPECT_EQ(runKzdraw({"render", squares, "--area=" + area, "-o", png}),
                  refused("\"" + area + "\" is no area: it is X,Y,WIDTH,HEIGHT, in user units"));
    }
    for (const std::string area : {"1,2,0,4", "1,2,3,-4"}) {
        EXPECT_EQ(runKzdraw({"render", squares, "--area", area, "-o", png}),
                  refused("\"" + area + "\" is no area: its width and height are above 0"));
    }
}

TEST_F(ViewCommand, PicturesAreAsLargeAsThePageWasMade) {
    const struct {
        const char* page;
        int width;
        int height;
    } table[] = {
        {"viewBox='0 0 20300 28300' width='203mm' height='283mm'", 767, 1070},
        {"viewBox='-18 -12 36 24' width='640' height='480'", 640, 480},
        {"viewBox='0 0 36 24' width='72pt'", 96, 64},
        {"viewBox='0 0 36 24' width='100%' height='100%'", 36, 24},
    };
    for (const auto& row : table) {
        const std::string file = test::utf8(folder.write(
            "page.svg", "<svg xmlns='http://www.w3.org/2000/svg' " + std::string(row.page) + "/>"));
        EXPECT_EQ(runKzdraw({"render", file, "-o", png}), done);
        EXPECT_EQ(picture().width(), row.width) << row.page;
        EXPECT_EQ(picture().height(), row.height) << row.page;
        // One side alone keeps the page's proportions.
        EXPECT_EQ(runKzdraw({"render", file, "-o", png, "--size", std::to_string(row.width * 2)}), done);
        EXPECT_NEAR(picture().height(), row.height * 2, 1) << row.page;
    }
}

// Three units are shown beside the box on each side, in the proportions of the size.
TEST_F(ViewCommand, APageOfOtherProportionsShowsWhatIsBesideItsBox) {
    const std::string file = test::utf8(
        folder.write("page.svg",
                     "<svg xmlns='http://www.w3.org/2000/svg' viewBox='0 0 10 10' width='32' height='20'>"
                     "<rect x='-9' y='-9' width='30' height='30' fill='red'/></svg>"));
    EXPECT_EQ(runKzdraw({"render", file, "-o", png}), done);
    EXPECT_EQ(picture().width(), 32);
    EXPECT_EQ(picture().at(0, 0), 0xffff0000);
    EXPECT_EQ(picture().at(31, 19), 0xffff0000);
}

// A height of 33.33 pixels is rounded; a drawing made smaller for that would leave white at both sides.
TEST_F(ViewCommand, AWidthAloneIsTheDrawingsWidth) {
    const std::string file = test::utf8(
        folder.write("page.svg",
                     "<svg xmlns='http://www.w3.org/2000/svg' viewBox='0 0 30 10' width='30' height='10'>"
                     "<rect width='30' height='10' fill='red'/></svg>"));
    EXPECT_EQ(runKzdraw({"render", file, "-o", png, "--size", "100"}), done);
    const AImage image = picture();
    ASSERT_EQ(image.width(), 100);
    ASSERT_EQ(image.height(), 33);
    for (const int y : {1, 16, 31}) {
        EXPECT_EQ(image.at(0, y), 0xffff0000) << y;
        EXPECT_EQ(image.at(99, y), 0xffff0000) << y;
    }
}

TEST_F(ViewCommand, ABackgroundStandsBehindTheDrawing) {
    const std::string file = test::utf8(
        folder.write("page.svg",
                     "<svg xmlns='http://www.w3.org/2000/svg' viewBox='0 0 20 20' width='20' height='20'>"
                     "<rect width='10' height='10' fill='red'/>"
                     "<rect y='10' width='10' height='10' fill='red' opacity='0.5'/></svg>"));
    const struct {
        const char* color;
        std::uint32_t beside, through;
    } table[] = {
        {"none", 0x00000000, 0x80800000},      {"white", 0xffffffff, 0xffff7f7f},
        {"#00f", 0xff0000ff, 0xff80007f},      {"rgb(0, 255, 0)", 0xff00ff00, 0xff807f00},
        {"#0000ff00", 0x00000000, 0x80800000},
    };
    for (const auto& row : table) {
        for (const std::string command : {"render", "view"}) {
            EXPECT_EQ(runKzdraw({command, file, "-o", png, "--background", row.color}), done);
            const AImage image = picture();
            EXPECT_EQ(image.at(2, 2), 0xffff0000) << row.color;
            EXPECT_EQ(image.at(15, 5), row.beside) << row.color;
            EXPECT_EQ(image.at(2, 15), row.through) << row.color;
            // Beside the page too.
            EXPECT_EQ(runKzdraw({command, file, "-o", png, "--background", row.color, "--size", "60x20"}),
                      done);
            EXPECT_EQ(picture().at(1, 10), row.beside) << row.color;
        }
    }
    for (const char* color : {"", "blueish", "none ", "red blue"}) {
        EXPECT_EQ(runKzdraw({"render", file, "-o", png, "--background=" + std::string(color) + ""}).status, 2)
            << color;
    }
    EXPECT_EQ(runKzdraw({"render", file, "-o", png, "--background", "blueish"}),
              refused("\"blueish\" is no background: it is none or a color, as #ffffff or white"));
    EXPECT_EQ(runKzdraw({"view", file, "-o", svg, "--background", "none"}),
              refused("--background is for pictures: -o FILE.png"));
}

TEST_F(ViewCommand, PicturesShowThePageInTheirMiddleAndNothingBesideIt) {
    folder.write("wide.svg", R"svg(<svg xmlns="http://www.w3.org/2000/svg" viewBox="100 50 30 10">
        <rect x="90" y="0" width="1000" height="1000" fill="red"/></svg>)svg");
    const std::string wide = test::utf8(folder.path() / "wide.svg");
    EXPECT_EQ(runKzdraw({"render", wide, "--size", "60x60", "-o", png}), done);
    const AImage image = picture();
    ASSERT_EQ(image.width(), 60);
    for (const int y : {20, 30, 39}) {
        EXPECT_EQ(image.at(0, y), 0xffff0000) << y;
        EXPECT_EQ(image.at(59, y), 0xffff0000) << y;
    }
    for (const int y : {0, 19, 40, 59}) EXPECT_EQ(image.at(30, y), 0xffffffff) << y;
}

TEST_F(ViewCommand, PicturesOfAPageWithoutExtentShowTheObjects) {
    folder.write("flat.svg", R"svg(<svg xmlns="http://www.w3.org/2000/svg" width="0" height="0">
        <rect x="100" y="100" width="30" height="10" fill="red"/></svg>)svg");
    const std::string flat = test::utf8(folder.path() / "flat.svg");
    EXPECT_EQ(runKzdraw({"render", flat, "-o", png}), done);
    const AImage image = picture();
    ASSERT_EQ(image.width(), 30);
    ASSERT_EQ(image.height(), 10);
    EXPECT_EQ(image.at(0, 0), 0xffff0000);
    EXPECT_EQ(image.at(29, 9), 0xffff0000);
    folder.write("flat.svg", "<svg xmlns='http://www.w3.org/2000/svg' width='0' height='5'/>");
    EXPECT_EQ(runKzdraw({"render", flat, "-o", png}),
              refused(flat + ": there is nothing to make a picture of: the page has no extent"));
}

TEST_F(ViewCommand, SizesThatAreNoneAreRefused) {
    for (const char* size :
         {"x", "60x", "x60", "60X20", "a", "60x20x3", "-60x20", "60x-20", "6e1", "60 x 20", "+60"}) {
        EXPECT_EQ(
            runKzdraw({"render", squares, "-o", png, "--size=" + std::string(size)}),
            refused("\"" + std::string(size) + "\" is no size: it is WIDTHxHEIGHT or WIDTH, in pixels"));
    }
    for (const char* size : {"0", "0x0", "60x0", "0x60"}) {
        EXPECT_EQ(runKzdraw({"render", squares, "-o", png, "--size", size}),
                  refused("\"" + std::string(size) + "\" is no size: a side has at least one pixel"));
    }
    for (const char* size : {"32768", "32768x1", "1x99999999999999999999"}) {
        EXPECT_EQ(runKzdraw({"render", squares, "-o", png, "--size", size}),
                  refused("\"" + std::string(size) + "\" is too large: a side has at most 32767 pixels"));
    }
    EXPECT_EQ(runKzdraw({"render", squares, "-o", png, "--size", "32767x32767"}),
              refused(squares + ": a picture of 32767x32767 is too large: it has at most 268435456 pixels"));
    const std::string large = test::utf8(
        folder.write("large.svg", "<svg xmlns='http://www.w3.org/2000/svg' width='40000' height='10'/>"));
    EXPECT_EQ(
        runKzdraw({"render", large, "-o", png}),
        refused(large + ": the page makes a picture with a side of more than 32767 pixels: give a size"));
    EXPECT_FALSE(std::filesystem::exists(folder.path() / "out.png"));
}

TEST_F(ViewCommand, WrongUsageIsToldInOneLine) {
    const std::string jpg = test::utf8(folder.path() / "out.jpg");
    const struct {
        std::vector<std::string> arguments;
        std::string reason;
    } table[] = {
        {{"view"}, "FILE is required (see kzdraw view --help)"},
        {{"view", squares, "--hide"}, "--hide: 1 required COLOR missing (see kzdraw view --help)"},
        {{"view", squares, "--hide", "pink"}, squares + ": the drawing has no color \"pink\""},
        {{"view", squares, "--only", "#12345"}, squares + ": the drawing has no color \"#12345\""},
        {{"view", squares, "--hide", ""}, squares + ": the drawing has no color \"\""},
        {{"view", squares, "--except", "fill:z"}, squares + ": there is no object \"z\""},
        {{"view", squares, "--show", "stroke:a"}, squares + ": \"a\" has no stroke"},
        {{"view", squares, "-o", jpg}, jpg + ": it is neither a picture, .png, nor a drawing, .svg or .svgz"},
        {{"view", squares, "-o", ""}, "the name of a file is empty"},
        {{"view", squares, "--size", "9"}, "--size is for pictures: -o FILE.png"},
        {{"view", squares, "--size", "9", "-o", svg}, "--size is for pictures: -o FILE.png"},
        {{"render", squares, "-o", png, "--size="},
         "--size: 1 required SIZE missing (see kzdraw render --help)"},
        {{"view", "", "-o", png}, "the name of a file is empty"},
        {{"render", squares}, "--output is required (see kzdraw render --help)"},
        {{"render", squares, "-o", jpg}, jpg + ": a picture is a PNG file, its name ends in .png"},
        {{"render", squares, "-o", svg}, svg + ": a picture is a PNG file, its name ends in .png"},
        {{"render", "-o", png}, "FILE is required (see kzdraw render --help)"},
        {{"render", squares, "-o", test::utf8(folder.path())},
         test::utf8(folder.path()) + ": cannot be written: it is a folder"},
    };
    for (const auto& row : table) EXPECT_EQ(runKzdraw(row.arguments), refused(row.reason));
    EXPECT_FALSE(std::filesystem::exists(folder.path() / "out.png"));
}

TEST_F(ViewCommand, WhatCannotBeReadIsTold) {
    const std::string missing = test::utf8(folder.path() / "missing.svg");
    EXPECT_EQ(runKzdraw({"render", missing, "-o", png}), refused(missing + ": there is no such file"));
    EXPECT_EQ(runKzdraw({"view", missing, "--hide", "red"}), refused(missing + ": there is no such file"));
}
