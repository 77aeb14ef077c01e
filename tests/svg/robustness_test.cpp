// Untrusted drawings: errors with file and line, bounded work, no crash.
#include <filesystem>
#include <fstream>
#include <random>

#include "formats/svg/reader.h"
#include "support.h"

using namespace svg_test;

namespace {

TEST(Errors, NameFileLineAndReason) {
    const std::pair<std::string, std::string> cases[] = {
        {"", "test.svg: the file is empty"},
        {" \n ", "test.svg:1: there is no element in it"},
        {"hello", "test.svg:1: there is no element in it"},
        {"<svg>\n<g>\n</svg>", "test.svg:3: an end tag does not match its start tag"},
        {"<svg>\n<g>\n", "test.svg:2: the file ends in the middle of the drawing"},
        {"<svg>\n\n<rect x=1/></svg>", "test.svg:3: an attribute is broken"},
        {"<svg>\n<!-- x", "test.svg:2: the file ends in the middle of the drawing"},
        {"<svg>\n<1></svg>", "test.svg:2: \"<\" does not start an element here"},
        {"<?xml version='1.0'?>\n<html/>", "test.svg:2: this is no SVG drawing: its root is <html>"},
        {"<svg xmlns='urn:other'/>", "test.svg:1: this is no SVG drawing: its root is <svg>"},
        {"<svg/>\n<svg/>", "test.svg:2: a second root element <svg>"},
        {"\x1F\x8B\x08", "test.svg: its compressed data is cut off"}};
    for (const auto& [text, error] : cases) EXPECT_EQ(errorOf(text), error) << text;
}

TEST(Errors, EntitiesMayNotMakeElementsWithoutEnd) {
    std::string many = "<!DOCTYPE svg [<!ENTITY a \"";
    for (int i = 0; i < 1000; ++i) many += "<g/>";
    many += "\"><!ENTITY b \"";
    for (int i = 0; i < 60; ++i) many += "&a;";
    many += "\">]><svg>";
    for (int i = 0; i < 17; ++i) many += "&b;";
    EXPECT_EQ(errorOf(many + "</svg>"), "test.svg:1: the entity b makes too many elements");
}

TEST(Errors, AnElementHasABoundedNumberOfAttributes) {
    const auto withAttributes = [](int count) {
        std::string text = "<svg xmlns='http://www.w3.org/2000/svg'>\n<defs><g";
        for (int i = 0; i < count; ++i) text += " a" + std::to_string(i) + "=''";
        return text + "/></defs></svg>";
    };
    EXPECT_EQ(errorOf(withAttributes(1000)), "");
    EXPECT_EQ(errorOf(withAttributes(1001)), "test.svg:2: an element has more than 1000 attributes");
}

TEST(Errors, StyleSheetsMayNotTakeForEver) {
    std::string rules;
    for (int i = 0; i < 4000; ++i) rules += "rect{fill:red}";
    std::string shapes;
    for (int i = 0; i < 4000; ++i) shapes += "<rect/>";
    EXPECT_EQ(errorOf("<svg><style>" + rules + "</style>" + shapes + "</svg>"),
              "test.svg: its style sheets have too many rules for its elements");
}

// The words of a class, or the selectors of a rule, multiply what is collected by nothing.
TEST(StyleSheetBounds, ManyWordsAndSelectorsCountOnce) {
    std::string words, selectors = "rect", declarations;
    for (int i = 0; i < 3000; ++i) {
        words += "a ";
        selectors += ",rect";
        declarations += "fill:blue;";
    }
    const std::string sheet = ".a{fill:red} " + selectors + "{" + declarations + "fill:lime}";
    EXPECT_EQ(fillOf("<style>" + sheet + "</style><rect id='a' class='" + words + "'/>"), "red");
}

TEST(Errors, StayOnOneLine) {
    std::string error;
    EXPECT_FALSE(svg::readDrawingBytes("<a\nb", "odd\nname\x01.svg", error));
    EXPECT_EQ(error.find('\n'), error.npos);
    EXPECT_EQ(error.substr(0, 13), "odd?name?.svg");
}

class Files : public testing::Test {
protected:
    Files() : m_folder(std::filesystem::temp_directory_path() / "kz_svg_test") {
        std::filesystem::create_directories(m_folder);
    }
    ~Files() override { std::filesystem::remove_all(m_folder); }

    std::string errorOfFile(const std::filesystem::path& file) {
        std::string error;
        EXPECT_FALSE(svg::readDrawing(file, error));
        return error;
    }

    std::filesystem::path m_folder;
};

TEST_F(Files, AreReadByPath) {
    const auto file = m_folder / u8"Küche.svg";
    std::ofstream(file, std::ios::binary) << drawing("<rect id='a'/>");
    std::string error;
    const auto document = svg::readDrawing(file, error);
    ASSERT_TRUE(document) << error;
    EXPECT_TRUE(document->findObject("a"));
}

TEST_F(Files, ThatCannotBeReadSayWhy) {
    const std::string missing = (m_folder / "missing.svg").string();
    EXPECT_EQ(errorOfFile(missing), missing + ": there is no such file");
    EXPECT_EQ(errorOfFile(m_folder), m_folder.string() + ": is a folder");
    const auto empty = m_folder / "empty.svg";
    std::ofstream(empty).close();
    EXPECT_EQ(errorOfFile(empty), empty.string() + ": the file is empty");
    const auto broken = m_folder / "broken.svg";
    std::ofstream(broken, std::ios::binary) << "<svg>\n<g\n";
    EXPECT_EQ(errorOfFile(broken).substr(0, broken.string().size() + 3), broken.string() + ":2:");
}

std::string nested(int depth) {
    std::string text;
    for (int i = 0; i < depth; ++i) text += "<g>";
    for (int i = 0; i < depth; ++i) text += "</g>";
    return text;
}

TEST(Depth, UpToAThousandIsRead) {
    const auto document = readText("<svg>" + nested(999) + "</svg>");
    EXPECT_EQ(document->getObjectCount(), 999U);
}

TEST(Depth, BeyondAThousandIsAnError) {
    EXPECT_EQ(errorOf("<svg>\n" + nested(1000) + "</svg>"),
              "test.svg:2: elements are nested deeper than 1000");
    EXPECT_EQ(errorOf("<svg>" + nested(100000) + "</svg>"),
              "test.svg:1: elements are nested deeper than 1000");
    EXPECT_EQ(errorOf("<svg><metadata>" + nested(100000) + "</metadata></svg>"),
              "test.svg:1: elements are nested deeper than 1000");
}

TEST(Use, OfItselfIsEmpty) {
    EXPECT_EQ(tree("<use id='a' href='#a'/>"), "ALayer 'Layer 1'\n  AComposite a\n");
    EXPECT_EQ(tree("<g id='g'><use id='a' href='#g'/></g>"),
              "ALayer 'Layer 1'\n  AGroup g\n    AComposite a\n");
    EXPECT_EQ(
        tree("<use id='a' href='#b'/><use id='b' href='#a'/>"),
        "ALayer 'Layer 1'\n  AComposite a\n    AComposite use-1\n  AComposite b\n    AComposite use-2\n");
    EXPECT_EQ(tree("<defs><g id='p'><use href='#q'/></g><g id='q'><use href='#p'/></g></defs><use id='a' "
                   "href='#p'/>"),
              "ALayer 'Layer 1'\n  AComposite a\n    AGroup g-1\n      AComposite use-1\n        AGroup g-2\n"
              "          AComposite use-2\n");
}

TEST(Use, ThatGrowsExponentiallyIsBounded) {
    std::string body = "<defs><rect id='l0'/>";
    for (int level = 1; level <= 10; ++level) {
        body += "<g id='l" + std::to_string(level) + "'>";
        for (int i = 0; i < 10; ++i) body += "<use href='#l" + std::to_string(level - 1) + "'/>";
        body += "</g>";
    }
    body += "</defs><use id='a' href='#l10'/><rect id='behind'/>";
    const auto document = readBody(body);
    EXPECT_LT(document->getObjectCount(), 150'000U);
    EXPECT_TRUE(document->findObject("behind"));
}

TEST(Use, OfALongChainIsBounded) {
    std::string body = "<defs><g id='c0'/>";
    for (int i = 1; i < 5000; ++i) {
        body += "<g id='c" + std::to_string(i) + "'><use href='#c" + std::to_string(i - 1) + "'/></g>";
    }
    const auto document = readBody(body + "</defs><use href='#c4999'/>");
    EXPECT_LT(document->getObjectCount(), 1100U);
}

TEST(Entities, OfTheDrawingAreReplaced) {
    const auto document = readText(
        "<?xml version='1.0'?>\n<!DOCTYPE svg PUBLIC \"-//W3C//DTD SVG 1.1//EN\" \"x.dtd\" [\n"
        "<!ENTITY ns_svg \"http://www.w3.org/2000/svg\">\n<!ENTITY ns_kz 'urn:kzdraw:drawing'>\n"
        "<!-- <!ENTITY red \"blue\"> -->\n<!ENTITY red \"r&e;\"><!ENTITY e \"ed\"><!ENTITY red \"blue\">\n"
        "<!ENTITY box \"<rect id='b'/>\"><!ENTITY % p \"lime\">\n]>\n"
        "<svg xmlns='&ns_svg;' xmlns:q='&ns_kz;'><rect id='a' q:class='ALabel' fill='&red;'/>&box;</svg>");
    EXPECT_EQ(describe(*document),
              "ALayer 'Layer 1'\n  ALabel a fill=red stroke=none\n  ARectangle b fill=black stroke=none\n");
}

TEST(Entities, ThatAreUnknownOrPredefinedStay) {
    const auto document = readText(
        "<!DOCTYPE svg [<!ENTITY amp 'x'><!ENTITY y 'z'><!ENTITY out SYSTEM 'file:///etc/passwd'>]>"
        "<svg><rect id='&amp;&who;&y;&out;&#65;'/><!-- &y; --></svg>");
    EXPECT_EQ(std::string(document->getObject(1)->getNameUtf8()), "&&who;z&out;A");
}

TEST(Entities, KeepTheNumbersOfLines) {
    EXPECT_EQ(errorOf("<!DOCTYPE svg [<!ENTITY e 'a\nb\nc'>]>\n<svg>&e;\n<rect x=1/></svg>"),
              "test.svg:5: an attribute is broken");
}

TEST(Entities, ThatReferToThemselvesAreAnError) {
    EXPECT_EQ(errorOf("<!DOCTYPE svg [\n<!ENTITY a '&b;'>\n<!ENTITY b '&a;'>]>\n<svg>&a;</svg>"),
              "test.svg:2: the entity a refers to itself");
}

TEST(Entities, ThatExplodeAreAnError) {
    std::string text = "<!DOCTYPE svg [<!ENTITY l0 'lolololo'>\n";
    for (int i = 1; i < 10; ++i) {
        text += "<!ENTITY l" + std::to_string(i) + " '";
        for (int k = 0; k < 10; ++k) text += "&l" + std::to_string(i - 1) + ';';
        text += "'>\n";
    }
    EXPECT_EQ(errorOf(text + "]>\n<svg>&l9;</svg>"), "test.svg:7: the entity l6 expands to more than 1 MiB");
}

TEST(Entities, ThatAreUsedVeryOftenAreAnError) {
    std::string text = "<!DOCTYPE svg [<!ENTITY big '" + std::string(1000000, 'x') + "'>]>\n<svg>";
    for (int i = 0; i < 100; ++i) text += "&big;";
    EXPECT_EQ(errorOf(text + "</svg>"), "test.svg:1: its entities make the drawing more than 64 MiB larger");
}

TEST(Encodings, AreAllBroughtToUtf8) {
    const std::string name =
        "K\xC3\xBC"
        "che \xE2\x82\xAC \xF0\x9F\x8E\xA8";
    const std::u16string wide =
        u"<?xml version='1.0' encoding='UTF-16'?><svg><rect id='K\u00fcche \u20ac \U0001F3A8'/></svg>";
    std::string little, big;
    for (const char16_t c : wide) {
        little += {static_cast<char>(c & 0xff), static_cast<char>(c >> 8)};
        big += {static_cast<char>(c >> 8), static_cast<char>(c & 0xff)};
    }
    const std::string plain = "<svg><rect id='" + name + "'/></svg>";
    for (const std::string& text :
         {plain, "\xEF\xBB\xBF" + plain, "\xFF\xFE" + little, "\xFE\xFF" + big, little, big}) {
        EXPECT_TRUE(readText(text)->findObject(name));
    }
    const auto latin = readText(
        "<?xml version='1.0' encoding='ISO-8859-1'?><svg><rect id='K\xFC"
        "che'/></svg>");
    EXPECT_TRUE(
        latin->findObject("K\xC3\xBC"
                          "che"));
}

const std::string kSmall =
    "<?xml version='1.0'?><!DOCTYPE svg [<!ENTITY c 'red'>]>" +
    drawing(
        "<style>.c&gt;rect{fill:red}</style><linearGradient id='g'><stop/></linearGradient>"
        "<g inkscape:groupmode='layer' class='c' transform='rotate(5)'><rect fill='url(#g)' id='r'/>"
        "<path d='M0 0C1 2 3 4 5 6a1 1 0 01 2 2z' style='fill:&c;!important'/><use href='#r'/>"
        "<text x='1'>a<tspan>b</tspan></text></g><polygon points='1 2 3 4'/><!-- x --><![CDATA[x]]>");

// Uses everything that was read, so that sanitizers see it.
void touch(ADocument& document) {
    AFRect bounds;
    document.getDatabase().getBoundingRect(bounds);
    EXPECT_FALSE(describe(document).size() > 1'000'000);
}

TEST(Corruption, CutOffAtEveryByteIsAnErrorOrADrawing) {
    const std::size_t end = kSmall.rfind('>');
    for (std::size_t size = 0; size <= kSmall.size(); ++size) {
        std::string error;
        const auto document = svg::readDrawingBytes(kSmall.substr(0, size), "cut.svg", error);
        ASSERT_EQ(document != nullptr, size > end) << size;
        ASSERT_EQ(error.empty(), size > end) << size;
        if (document) touch(*document);
    }
}

TEST(Corruption, OfRandomBytesIsSurvived) {
    std::mt19937 random(42);
    int read = 0;
    for (int round = 0; round < 3000; ++round) {
        std::string text = kSmall;
        for (unsigned i = 0; i <= random() % 4; ++i) {
            text[random() % text.size()] =
                static_cast<char>(random() % 3 == 0 ? random() : " <>/&'\"=;#(1e-:"[random() % 15]);
        }
        std::string error;
        const auto document = svg::readDrawingBytes(text, "bad.svg", error);
        ASSERT_EQ(document == nullptr, !error.empty());
        if (document) {
            ++read;
            touch(*document);
        }
    }
    EXPECT_GT(read, 0);
}

TEST(StyleSheets, OfDeepSelectorsTakeNoExponentialTime) {
    std::string selector;
    for (int i = 0; i < 200; ++i) selector += "g ";
    const auto document = readText("<svg><style>x " + selector + "rect{fill:red}</style>" + [] {
        std::string text;
        for (int i = 0; i < 900; ++i) text += "<g>";
        text += "<rect id='a'/>";
        for (int i = 0; i < 900; ++i) text += "</g>";
        return text;
    }() + "</svg>");
    EXPECT_EQ(fillOf(*document, "a"), "black");
}

}  // namespace
