// Drawings written back, whole and without what a filter hides.
#include <gtest/gtest.h>

#include "filter.h"
#include "formats/svg/writer.h"
#include "kzcore/view/view.h"
#include "support.h"

using svg_test::drawing;
using svg_test::HideByName;
using svg_test::readText;

namespace {

std::string written(const std::string& text, AViewFilter* filter = nullptr) {
    const auto document = readText(text);
    std::string error;
    std::optional<std::string> bytes = svg::writeDrawing(*document, filter, error);
    EXPECT_TRUE(bytes) << error;
    return bytes.value_or("");
}

// The body of the drawing that is written for a body while these colours and brushes are hidden.
std::string without(const std::set<std::string>& hidden, const std::string& body) {
    HideByName filter(hidden);
    const std::string text = written(drawing(body), &filter);
    const std::string frame = drawing("");
    const std::size_t head = frame.find("\n\n</svg>") + 1;
    const std::size_t tail = frame.size() - head;
    EXPECT_EQ(text.substr(0, head), frame.substr(0, head));
    EXPECT_EQ(text.substr(text.size() - tail), frame.substr(head));
    return text.substr(head, text.size() - head - tail);
}

}  // namespace

TEST(Writer, GivesBackEveryByteOfADrawing) {
    const std::string texts[] = {
        "<?xml version=\"1.0\"?>\r\n<!-- a -->\r\n" + drawing("<rect  id='a'\t x = \"1\" />\r\n") +
            "<!-- z -->\n",
        drawing("<unknown:thing xmlns:unknown='urn:u' unknown:x='1'><![CDATA[<rect/>]]></unknown:thing><?do "
                "it?>"),
        "\xEF\xBB\xBF" + drawing("<text>\xC3\xA9&amp;&#233;</text>"),
        "<!DOCTYPE svg [\n <!ENTITY red \"#f00\">\n <!ENTITY box '<rect fill=\"&red;\"/>'>\n]>\n" +
            drawing("<g fill='&red;'>&box;<circle r='1' stroke='&red;'/></g>"),
        "<?xml version='1.0' encoding='windows-1252'?>" + drawing("<text>\x80</text>"),
    };
    HideByName nothing({"no such color"});
    for (const std::string& text : texts) {
        EXPECT_EQ(written(text), text);
        EXPECT_EQ(written(text, &nothing), text);
    }
}

TEST(Writer, WritesUtf8AndSaysSo) {
    EXPECT_EQ(written("<?xml version='1.0' encoding='ISO-8859-1'?>" + drawing("<text>\xE9</text>")),
              "<?xml version='1.0' encoding='UTF-8'?>" + drawing("<text>\xC3\xA9</text>"));
    std::string wide = "\xFF\xFE";
    for (const char c : "<?xml version='1.0' encoding='UTF-16'?>" + drawing("<g/>")) wide += {c, '\0'};
    EXPECT_EQ(written(wide), "<?xml version='1.0' encoding='UTF-8'?>" + drawing("<g/>"));
    EXPECT_EQ(
        written("\xEF\xBB\xBF<?xml version='1.0' encoding='ISO-8859-1'?>" + drawing("<text>\xC3\xA9</text>")),
        "\xEF\xBB\xBF<?xml version='1.0' encoding='UTF-8'?>" + drawing("<text>\xC3\xA9</text>"));
}

TEST(Writer, RefusesADocumentThatIsNoDrawing) {
    ADocument document;
    std::string error;
    EXPECT_FALSE(svg::writeDrawing(document, nullptr, error));
    EXPECT_EQ(error, "it was not read from a drawing");
}

TEST(Writer, AnElementWithoutVisiblePaintGoes) {
    EXPECT_EQ(without({"red"}, "<rect fill='red' d='>'/><g><!-- x --><rect fill='blue'/></g>"),
              "<g><!-- x --><rect fill='blue'/></g>");
    EXPECT_EQ(without({"red"}, "<rect fill='none' stroke='red'><title>t</title></rect >|<circle r='1'/>"),
              "|<circle r='1'/>");
    EXPECT_EQ(without({"red", "blue"}, "<rect fill='red' stroke='blue'/>"), "");
    EXPECT_EQ(without({"g"},
                      "<linearGradient id='g'><stop/><stop/></linearGradient>"
                      "<rect fill='url(#g)'/><rect fill='red'/>"),
              "<linearGradient id='g'><stop/><stop/></linearGradient><rect fill='red'/>");
}

TEST(Writer, AnElementWithOneVisiblePaintLosesTheOther) {
    EXPECT_EQ(without({"red"}, "<rect fill='red' stroke='blue'/>"),
              "<rect fill='red' stroke='blue' style=\"fill:none!important\"/>");
    EXPECT_EQ(without({"blue"}, "<rect fill='red' stroke='blue' ></rect>"),
              "<rect fill='red' stroke='blue' style=\"stroke:none!important\" ></rect>");
    EXPECT_EQ(without({"blue"}, "<rect style='fill:red; stroke:blue' x='1'/>"),
              "<rect style='fill:red; stroke:blue;stroke:none!important' x='1'/>");
    EXPECT_EQ(without({"blue"}, "<rect fill='red' style='stroke:blue; '/>"),
              "<rect fill='red' style='stroke:blue; stroke:none!important'/>");
    EXPECT_EQ(without({"blue"}, "<rect stroke='blue' style=''/>"),
              "<rect stroke='blue' style='stroke:none!important'/>");
    EXPECT_EQ(without({"red"}, "<style>rect{fill:red!important}</style><rect stroke='blue'/>"),
              "<style>rect{fill:red!important}</style><rect stroke='blue' style=\"fill:none!important\"/>");
}

TEST(Writer, WhatAnEffectGoesByTheExtentOfStaysWithoutPaint) {
    EXPECT_EQ(
        without({"red"},
                "<g filter='url(#f)'><g><rect fill='red'/></g><rect fill='red' filter='url(#f)'/></g>"
                "<rect fill='red' filter='url(#f)'/>"),
        "<g filter='url(#f)'><g><rect fill='red' style=\"fill:none!important;stroke:none!important\"/></g>"
        "<rect fill='red' filter='url(#f)' style=\"fill:none!important;stroke:none!important\"/></g>");
}

TEST(Writer, ObjectsWithoutPaintOfTheirOwnStay) {
    const std::string body =
        "<image width='1' height='1' fill='red'/><g fill='red'/><path fill='none' d='M0 0h1'/>";
    EXPECT_EQ(without({"red"}, body), body);
}

TEST(Writer, ATextIsHiddenWithAllItsParts) {
    EXPECT_EQ(without({"red"}, "<text fill='red'>a<tspan fill='blue'>b</tspan></text>"), "");
    EXPECT_EQ(without({"red"},
                      "<text fill='red' stroke='lime'>a<tspan fill='blue'>b<title>c</title></tspan></text>"),
              "<text fill='red' stroke='lime' style=\"fill:none!important\">a"
              "<tspan fill='blue' style=\"fill:none!important\">b<title>c</title></tspan></text>");
}

TEST(Writer, ASwitchDoesNotShowItsNextChildInstead) {
    EXPECT_EQ(without({"red"}, "<switch><rect fill='red'/><rect fill='blue'/></switch>"),
              "<switch><g/><rect fill='blue'/></switch>");
}

TEST(Writer, PrefixesOfElementsAreKept) {
    const std::string text =
        "<s:svg xmlns:s='http://www.w3.org/2000/svg'><s:switch>"
        "<s:rect fill='red'/></s:switch><s:rect fill='red'/></s:svg>";
    HideByName filter({"red"});
    EXPECT_EQ(written(text, &filter),
              "<s:svg xmlns:s='http://www.w3.org/2000/svg'><s:switch><s:g/></s:switch></s:svg>");
}

TEST(Writer, EntitiesStayWhereNothingChanged) {
    const std::string head = "<!DOCTYPE svg [<!ENTITY two '<rect fill=\"red\"/><rect fill=\"blue\"/>'>]>";
    HideByName filter({"red"});
    EXPECT_EQ(written(head + drawing("&two;"), nullptr), head + drawing("&two;"));
    EXPECT_EQ(written(head + drawing("<g>&two;</g>"), &filter),
              head + drawing("<g><rect fill=\"blue\"/></g>"));
    HideByName lime({"lime"});
    EXPECT_EQ(written(head + drawing("&two;<rect fill='lime'/>"), &lime), head + drawing("&two;"));
}

TEST(Writer, WhatIsRepeatedIsChangedWhereAllPlacesAgree) {
    EXPECT_EQ(without({"red"},
                      "<defs><g id='b'><rect fill='red'/><rect fill='blue'/></g></defs>"
                      "<use href='#b'/><use xlink:href='#b' x='9'/>"),
              "<defs><g id='b'><rect fill='blue'/></g></defs><use href='#b'/><use xlink:href='#b' x='9'/>");
    EXPECT_EQ(without({"red"}, "<g id='b'><rect fill='red'/><rect fill='blue'/></g><use href='#b'/>"),
              "<g id='b'><rect fill='blue'/></g><use href='#b'/>");
}

TEST(Writer, AUseGoesWhenEverythingInItIsHidden) {
    EXPECT_EQ(without({"red"},
                      "<defs><g id='b'><rect/><rect/></g></defs>"
                      "<use href='#b' fill='red'/><use href='#b' fill='blue'/>"),
              "<defs><g id='b'><rect/><rect/></g></defs><use href='#b' fill='blue'/>");
    EXPECT_EQ(without({"red"}, "<rect id='b' fill='red'/><use href='#b'/>"), "");
}

TEST(Writer, AUseThatHasToLookDifferentGetsACopyWithoutIds) {
    EXPECT_EQ(without({"red"},
                      "<defs><g id='b'><rect id='r' fill='lime'/><circle r='1' id='c'/></g></defs>"
                      "<use href='#b' fill='red'/><use href='#b' fill='blue'/>"),
              "<defs><g id='b'><rect id='r' fill='lime'/><circle r='1' id='c'/></g>"
              "<g id='b-2'><rect fill='lime'/></g></defs>"
              "<use href='#b-2' fill='red'/><use href='#b' fill='blue'/>");
    EXPECT_EQ(without({"red"},
                      "<g id='b' fill='red'><rect/><rect fill='blue'/></g>"
                      "<symbol id='s'><rect/><image width='1' height='1'/></symbol>"
                      "<use href='#s' fill='red'/><use href='#s'/>"),
              "<g id='b' fill='red'><rect fill='blue'/></g>"
              "<symbol id='s'><rect/><image width='1' height='1'/></symbol>"
              "<symbol id='s-2'><image width='1' height='1'/></symbol>"
              "<use href='#s-2' fill='red'/><use href='#s'/>");
}

TEST(Writer, ACopyOfWhatIsDrawnDirectlyStandsInDefinitions) {
    EXPECT_EQ(without({"red"}, "<g fill='red'><g id='b'><rect/><rect fill='blue'/></g></g><use href='#b'/>"),
              "<g fill='red'><g id='b'><rect fill='blue'/></g>"
              "<defs><g id='b-2'><rect/><rect fill='blue'/></g></defs></g><use href='#b-2'/>");
    EXPECT_EQ(without({"red"}, "<g fill='red'><rect id='b'/></g><use href='#b'/>"),
              "<g fill='red'><defs><rect id='b-2'/></defs></g><use href='#b-2'/>");
}

TEST(Writer, UsesThatLookTheSameShareTheirCopy) {
    EXPECT_EQ(without({"red"},
                      "<defs><g id='b'><rect/><rect fill='blue'/></g><g id='b-2'/></defs>"
                      "<use href='#b'/><use href='#b' fill='red' x='1'/><use href='#b' fill='red'/>"),
              "<defs><g id='b'><rect/><rect fill='blue'/></g><g id='b-3'><rect fill='blue'/></g>"
              "<g id='b-2'/></defs>"
              "<use href='#b'/><use href='#b-3' fill='red' x='1'/><use href='#b-3' fill='red'/>");
}

TEST(Writer, UsesWithinUsesAreFollowed) {
    EXPECT_EQ(
        without({"red"},
                "<defs><rect id='a'/><g id='b'><use href='#a'/><use href='#a' fill='blue'/></g>"
                "</defs><use href='#b'/><use href='#b' fill='red'/>"),
        "<defs><rect id='a'/><g id='b'><use href='#a'/><use href='#a' fill='blue'/></g>"
        "<g id='b-2'><use href='#a' fill='blue'/></g></defs><use href='#b'/><use href='#b-2' fill='red'/>");
    EXPECT_EQ(without({"red"},
                      "<defs><g id='a'><rect/><rect fill='lime'/></g><g id='b'><use href='#a'/></g>"
                      "</defs><use href='#b'/><use href='#b' fill='red'/>"),
              "<defs><g id='a'><rect/><rect fill='lime'/></g><g id='a-2'><rect fill='lime'/></g>"
              "<g id='b'><use href='#a'/></g><g id='b-2'><use href='#a-2'/></g></defs>"
              "<use href='#b'/><use href='#b-2' fill='red'/>");
}

TEST(Writer, WhatElseRefersToAnElementFindsItAsItWas) {
    EXPECT_EQ(without({"red"}, "<clipPath id='k'><use href='#r'/></clipPath><rect id='r' fill='red'/>"),
              "<clipPath id='k'><use href='#r'/></clipPath><defs><rect id='r' fill='red'/></defs>");
    EXPECT_EQ(without({"red"},
                      "<path id='p' fill='red' stroke='blue' d='M0 0h9'/>"
                      "<text><textPath href='#p'>t</textPath></text>"),
              "<defs><path id='p' fill='red' stroke='blue' d='M0 0h9'/></defs>"
              "<path fill='red' stroke='blue' d='M0 0h9' style=\"fill:none!important\"/>"
              "<text><textPath href='#p'>t</textPath></text>");
    EXPECT_EQ(without({"red"},
                      "<defs><g id='b'><rect fill='red'/><rect/></g></defs>"
                      "<pattern id='p'><use href='#b'/></pattern><use href='#b'/>"),
              "<defs><g id='b'><rect fill='red'/><rect/></g><g id='b-2'><rect/></g></defs>"
              "<pattern id='p'><use href='#b'/></pattern><use href='#b-2'/>");
}

TEST(Writer, AnIdThatAStyleSheetKnowsStaysInACopy) {
    EXPECT_EQ(without({"red"},
                      "<style>#r{stroke:blue} #b rect{opacity:.5}</style>"
                      "<defs><g id='b'><rect id='q'/><rect id='r'/></g></defs>"
                      "<use href='#b' fill='red'/><use href='#b'/>"),
              "<style>#r{stroke:blue} #b rect{opacity:.5}</style>"
              "<defs><g id='b'><rect id='q'/><rect id='r'/></g>"
              "<g id=\"b-2\"><g id='b'><rect id='r' style=\"fill:none!important\"/></g></g></defs>"
              "<use href='#b-2' fill='red'/><use href='#b'/>");
}

TEST(Writer, ElementsThatRepeatEachOtherForEverAreWrittenOnce) {
    const std::string body =
        "<g id='a'><rect fill='red'/><use href='#b'/></g>"
        "<g id='b'><rect fill='blue'/><use href='#a'/></g>";
    HideByName filter({"red"});
    const std::string text = written(drawing(body), &filter);
    EXPECT_LT(text.size(), 3 * drawing(body).size());
    EXPECT_EQ(svg_test::errorOf(text), "");
}
