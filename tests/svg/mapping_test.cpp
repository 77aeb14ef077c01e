// What each element becomes.
#include "support.h"

using namespace svg_test;

namespace {

struct ElementCase {
    const char* element;
    const char* expected;
};

class ElementMapping : public testing::TestWithParam<ElementCase> {};

TEST_P(ElementMapping, GivesTheClass) {
    EXPECT_EQ(tree(GetParam().element), std::string("ALayer 'Layer 1'\n") + GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Shapes, ElementMapping,
    testing::Values(
        ElementCase{"<rect id='a'/>", "  ARectangle a fill=black stroke=none\n"},
        ElementCase{"<circle id='a'/>", "  AOval a fill=black stroke=none\n"},
        ElementCase{"<ellipse id='a'/>", "  AOval a fill=black stroke=none\n"},
        ElementCase{"<polygon id='a'/>", "  APolygon a fill=black stroke=none\n"},
        ElementCase{"<path id='a'/>", "  AEditPath a fill=black stroke=none\n"},
        ElementCase{"<line id='a'/>", "  AEditPath a fill=black stroke=none\n"},
        ElementCase{"<polyline id='a'/>", "  AEditPath a fill=black stroke=none\n"},
        ElementCase{"<text id='a'>x</text>", "  AText a fill=black stroke=none\n"},
        ElementCase{"<text id='a'><textPath href='#p'>x</textPath></text>",
                    "  ACombinePathText a fill=black stroke=none\n"},
        ElementCase{"<image id='a'/>", "  ABitmap a\n"},
        ElementCase{"<path id='a' sodipodi:type='star' inkscape:flatsided='true'/>",
                    "  APolygon a fill=black stroke=none\n"},
        ElementCase{"<path id='a' sodipodi:type='star' inkscape:flatsided='false'/>",
                    "  AStarburst a fill=black stroke=none\n"},
        ElementCase{"<path id='a' sodipodi:type='arc' sodipodi:start='0' sodipodi:end='1.5'/>",
                    "  AFan a fill=black stroke=none\n"},
        ElementCase{"<path id='a' sodipodi:type='arc'/>", "  AOval a fill=black stroke=none\n"},
        ElementCase{"<path id='a' sodipodi:type='arc' sodipodi:start='0' sodipodi:end='6.2831853'/>",
                    "  AOval a fill=black stroke=none\n"},
        ElementCase{"<path id='a' sodipodi:type='spiral'/>", "  AEditPath a fill=black stroke=none\n"}));

INSTANTIATE_TEST_SUITE_P(
    Containers, ElementMapping,
    testing::Values(
        ElementCase{"<g id='a'><rect id='b'/></g>", "  AGroup a\n    ARectangle b fill=black stroke=none\n"},
        ElementCase{"<a id='a'><rect id='b'/></a>", "  AGroup a\n    ARectangle b fill=black stroke=none\n"},
        ElementCase{"<svg id='a'><rect id='b'/></svg>",
                    "  AGroup a\n    ARectangle b fill=black stroke=none\n"},
        ElementCase{"<defs><mask id='m'><rect/></mask></defs><g id='a' mask='url(#m)'><rect id='b'/></g>",
                    "  AMask a\n    ARectangle b fill=black stroke=none\n"},
        ElementCase{"<clipPath id='m'><rect/></clipPath><g id='a' style='clip-path:url(#m)'/>",
                    "  AMask a\n"},
        ElementCase{"<g id='a' clip-path='url(#nowhere)'/>", "  AGroup a\n"},
        ElementCase{"<g id='a' mask='none'/>", "  AGroup a\n"},
        ElementCase{"<defs><rect id='b'/></defs><use id='a' href='#b'/>",
                    "  AComposite a\n    ARectangle rect-1 fill=black stroke=none\n"},
        ElementCase{"<defs><rect id='b'/></defs><use id='a' xlink:href='#b' fill='red'/>",
                    "  AComposite a\n    ARectangle rect-1 fill=red stroke=none\n"},
        ElementCase{"<symbol id='s'><rect/></symbol><use id='a' href='#s'/>",
                    "  AComposite a\n    AGroup symbol-1\n      ARectangle rect-1 fill=black stroke=none\n"},
        ElementCase{"<use id='a' href='#nowhere'/>", "  AComposite a\n"},
        ElementCase{"<use id='a' href='other.svg#b'/>", "  AComposite a\n"}));

INSTANTIATE_TEST_SUITE_P(
    SwitchTakesTheFirstThatWouldBeDrawn, ElementMapping,
    testing::Values(
        ElementCase{"<switch id='a'><foreignObject requiredExtensions='x'/><g id='b'/><g id='c'/></switch>",
                    "  AGroup a\n    AGroup b\n"},
        ElementCase{"<switch id='a'><rect id='b' systemLanguage='de'/><rect id='c' systemLanguage='fr, "
                    "en-GB'/></switch>",
                    "  AGroup a\n    ARectangle c fill=black stroke=none\n"},
        ElementCase{"<switch id='a'><rect requiredExtensions='urn:x'/></switch>", "  AGroup a\n"}));

constexpr char kShadow[] = "<filter id='f'><feDropShadow dx='1'/></filter>";

TEST(Effects, DropShadowFilterPutsAShadowAroundTheObject) {
    const std::string expected =
        "ALayer 'Layer 1'\n  AShadow shadow-1\n    ARectangle a fill=black stroke=none\n";
    EXPECT_EQ(tree(kShadow + std::string("<rect id='a' filter='url(#f)'/>")), expected);
    EXPECT_EQ(tree("<rect id='a' style='filter:drop-shadow(1px 2px 3px red)'/>"), expected);
    EXPECT_EQ(tree("<filter id='f'><feGaussianBlur/><feOffset dx='2'/><feMerge/></filter>"
                   "<rect id='a' filter='url(#f)'/>"),
              expected);
}

TEST(Effects, ShadowOfAGroupStandsAroundTheGroup) {
    EXPECT_EQ(
        tree(kShadow + std::string("<g id='a' filter='url(#f)'><rect id='b'/></g>")),
        "ALayer 'Layer 1'\n  AShadow shadow-1\n    AGroup a\n      ARectangle b fill=black stroke=none\n");
}

TEST(Effects, OtherFiltersMakeNoShadow) {
    const std::string expected = "ALayer 'Layer 1'\n  ARectangle a fill=black stroke=none\n";
    EXPECT_EQ(tree("<filter id='f'><feGaussianBlur/></filter><rect id='a' filter='url(#f)'/>"), expected);
    EXPECT_EQ(tree("<rect id='a' filter='url(#nowhere)'/>"), expected);
    EXPECT_EQ(tree("<rect id='a' filter='blur(2px)'/>"), expected);
}

TEST(Mapping, DefinitionsAreNoObjects) {
    const std::string inner = "<rect/><g><path/></g>";
    std::string body;
    for (const char* holder : {"defs", "symbol", "marker", "clipPath", "mask", "pattern", "linearGradient",
                               "filter", "metadata", "title", "foreignObject", "script"}) {
        body += std::string("<") + holder + ">" + inner + "</" + holder + ">";
    }
    EXPECT_EQ(tree(body), "");
}

TEST(Mapping, ElementsOfOtherNamespacesAreNoObjects) {
    EXPECT_EQ(tree("<x:rect xmlns:x='urn:other'/><rect xmlns='urn:other'/>"
                   "<g xmlns='urn:other'><rect/></g><sodipodi:g/>"),
              "");
}

TEST(Mapping, NamespacesCountByAddressWhateverThePrefix) {
    const auto document = readText(
        "<s:svg xmlns:s='http://www.w3.org/2000/svg'><s:g q:groupmode='layer' q:label='Top'"
        " xmlns:q='http://www.inkscape.org/namespaces/inkscape' xmlns:z='urn:kzdraw:drawing'>"
        "<s:rect id='a' z:class='ALabel'/></s:g><s:rect id='b' z:class='ALabel'/></s:svg>");
    // The prefix z is not declared where b stands.
    EXPECT_EQ(describe(*document),
              "ALayer 'Top'\n  ALabel a fill=black stroke=none\n"
              "ALayer 'Layer 1'\n  ARectangle b fill=black stroke=none\n");
}

TEST(Mapping, DrawingWithoutNamespaceIsRead) {
    const auto document = readText("<svg><rect id='a'/></svg>");
    EXPECT_EQ(describe(*document), "ALayer 'Layer 1'\n  ARectangle a fill=black stroke=none\n");
}

class EveryClass : public testing::TestWithParam<const AClassInfo*> {};

TEST_P(EveryClass, IsReadWhereTheDrawingNamesIt) {
    const AClassInfo& row = *GetParam();
    const std::string name = row.name.toUtf8();
    const auto document = readBody("<g id='a' kz:class='" + name + "'><rect id='b'/></g>");
    const AObject* object = document->findObject("a");
    ASSERT_TRUE(object);
    EXPECT_EQ(&object->getClassInfo(), &row);
    const bool single = row.kind == AClassKind::leaf || row.kind == AClassKind::bitmap;
    EXPECT_EQ(document->findObject("b") == nullptr, single);
}

std::vector<const AClassInfo*> objectClasses() {
    std::vector<const AClassInfo*> rows;
    for (const AClassInfo& row : databaseClasses()) {
        if (row.kind <= AClassKind::effect) rows.push_back(&row);
    }
    return rows;
}

INSTANTIATE_TEST_SUITE_P(OfTheTable, EveryClass, testing::ValuesIn(objectClasses()),
                         [](const auto& one) { return one.param->name.toUtf8(); });

TEST(NamedClass, IsIgnoredWhereItCannotBe) {
    for (const char* name :
         {"AGroup", "AShadow", "AComposite", "ALayer", "APenItem", "ARGBColorItem", "Nothing", ""}) {
        EXPECT_EQ(tree(std::string("<rect id='a' kz:class='") + name + "'/>"),
                  "ALayer 'Layer 1'\n  ARectangle a fill=black stroke=none\n")
            << name;
    }
}

TEST(NamedClass, OfAUseMayOpenIt) {
    EXPECT_EQ(tree("<defs><rect id='r'/></defs><use id='a' href='#r' kz:class='AGroup'/>"),
              "ALayer 'Layer 1'\n  AGroup a\n    ARectangle rect-1 fill=black stroke=none\n");
}

TEST(NamedClass, SingleObjectMadeOfAGroupHasItsContentsBox) {
    const auto document = readBody(
        "<g transform='translate(100,0)'><g id='a' kz:class='ADimensionH' transform='scale(2)'>"
        "<line x1='1' y1='2' x2='11' y2='2'/><g transform='translate(0,5)'><path d='M2 0v10'/></g></g></g>");
    expectBounds(boundsOf(*document, "a"), {102, 4, 122, 30});
}

TEST(Bitmaps, TellTheirColourModel) {
    // The first bytes of PNG files: 1 bit gray, 8 bit gray, indexed, gray with alpha, colour.
    const auto model = [](const std::string& attributes) {
        const auto document = readBody("<image id='a' " + attributes + "/>");
        return static_cast<const ABitmap*>(document->findObject("a"))->getColorModel();
    };
    EXPECT_EQ(model(""), ABitmap::rgb);
    EXPECT_EQ(model("kz:model='cmyk'"), ABitmap::cmyk);
    EXPECT_EQ(model("kz:model='nonsense'"), ABitmap::rgb);
    const std::string png = "href='data:image/png;base64,iVBORw0KGgoAAAANSUhEUgAAAAEAAAAB";
    EXPECT_EQ(model(png + "AQAAAAA='"), ABitmap::blackAndWhite);
    EXPECT_EQ(model(png + "CAAAAAA='"), ABitmap::grayscale);
    EXPECT_EQ(model(png + "CAMAAAA='"), ABitmap::indexed);
    EXPECT_EQ(model(png + "CAQAAAA='"), ABitmap::grayscale);
    EXPECT_EQ(model(png + "CAYAAAA='"), ABitmap::rgb);
    EXPECT_EQ(model(png + "'"), ABitmap::rgb);
}

}  // namespace
