// Units, transforms, pages and bounding boxes.
#include <cmath>
#include <numbers>
#include <random>

#include "formats/svg/values/path_data.h"
#include "formats/svg/values/units.h"
#include "support.h"

using namespace svg_test;

namespace {

TEST(Units, AreUserUnitsOf96ToTheInch) {
    const svg::LengthContext context{20, 400, 300};
    const std::pair<const char*, double> cases[] = {{"5", 5},
                                                    {"5px", 5},
                                                    {"1in", 96},
                                                    {"2.54cm", 96},
                                                    {"25.4mm", 96},
                                                    {"101.6Q", 96},
                                                    {"72pt", 96},
                                                    {"6pc", 96},
                                                    {"2em", 40},
                                                    {"2ex", 20},
                                                    {"50%", 200},
                                                    {" -1.5e2 ", -150},
                                                    {"+.5", .5},
                                                    {"1e3px", 1000},
                                                    {"1e-400", 0},
                                                    {"1e400", svg::kLargestNumber},
                                                    {"-1e400", -svg::kLargestNumber},
                                                    {"1E2", 100},
                                                    {"2EM", 40},
                                                    {"123456789012345678", 123456789012345678.0},
                                                    {"0.1", 0.1},
                                                    {"3.", 3}};
    for (const auto& [text, expected] : cases) {
        double value = -1;
        EXPECT_TRUE(svg::parseLength(text, svg::Axis::horizontal, context, value)) << text;
        EXPECT_DOUBLE_EQ(value, expected) << text;
    }
    double value = 0;
    EXPECT_TRUE(svg::parseLength("50%", svg::Axis::vertical, context, value));
    EXPECT_DOUBLE_EQ(value, 150);
    EXPECT_TRUE(svg::parseLength("100%", svg::Axis::both, context, value));
    EXPECT_DOUBLE_EQ(value, 500 / std::sqrt(2));
}

TEST(Units, RefuseWhatIsNoLength) {
    double value = 7;
    for (const char* text :
         {"", "px", "1 2", "inf", "nan", "-inf", "0x10", "1yd", "--1", "+-1", ".", "-", "1,2"}) {
        const bool read = svg::parseLength(text, svg::Axis::horizontal, {}, value);
        EXPECT_FALSE(read) << text;
        EXPECT_EQ(value, 7) << text;
    }
}

TEST(Units, PlainDecimalsRoundAsTheLibraryDoes) {
    std::mt19937 random(7);
    for (int i = 0; i < 20000; ++i) {
        std::string text = std::to_string(static_cast<int>(random() % 2000000) - 1000000) + '.' +
                           std::to_string(random() % 100000000);
        std::string_view view = text;
        double value = 0;
        ASSERT_TRUE(svg::takeNumber(view, value));
        ASSERT_EQ(value, std::strtod(text.c_str(), nullptr)) << text;
        ASSERT_TRUE(view.empty());
    }
}

struct PageCase {
    const char* attributes;
    AFRect page;
    double scale = 1;
};

TEST(Page, IsTheViewBoxOrTheSize) {
    const PageCase cases[] = {
        {"width='200' height='100'", {0, 0, 200, 100}},
        {"width='1in' height='25.4mm'", {0, 0, 96, 96}},
        {"viewBox='10 20 30 40'", {10, 20, 40, 60}},
        {"viewBox='0 0 0 5' width='7' height='8'", {0, 0, 7, 8}},
        {"viewBox='junk' width='7' height='8'", {0, 0, 7, 8}},
        {"", {0, 0, 300, 150}},
        {"width='-5' height='8'", {0, 0, 0, 8}},
        // The size tells how large the view box is meant.
        {"viewBox='0 0 210 297' width='210mm' height='297mm'", {0, 0, 210, 297}, 96 / 25.4},
        {"viewBox='-18 -12 36 24' width='90' height='60'", {-18, -12, 18, 12}, 2.5},
        {"viewBox='-1,-2,3,4' width='3in'", {-1, -2, 2, 2}, 96},
        {"viewBox='-1,-2,3,4' height='3in'", {-1, -2, 2, 2}, 72},
        {"viewBox='-1,-2,3,4' width='3in' height='100%'", {-1, -2, 2, 2}, 96},
        {"viewBox='-1,-2,3,4' width='100%' height='100%'", {-1, -2, 2, 2}},
        {"viewBox='-1,-2,3,4' width='-7' height='junk'", {-1, -2, 2, 2}},
        {"viewBox='-1,-2,3,4' width='0' height='0'", {-1, -2, 2, 2}},
        {"viewBox='-1,-2,3,4' width='1e-320' height='1e300'", {-1, -2, 2, 2}},
        // Of other proportions it shows what is beside the view box.
        {"viewBox='0 0 10 10' width='40' height='20'", {-5, 0, 15, 10}, 2},
        {"viewBox='0 0 10 10' width='20' height='40'", {0, -5, 10, 15}, 2},
        {"viewBox='0 0 10 10' width='40' height='20' preserveAspectRatio='xMinYMin'", {0, 0, 20, 10}, 2},
        {"viewBox='0 0 10 10' width='40' height='20' preserveAspectRatio='xMaxYMid slice'",
         {0, 2.5, 10, 7.5},
         4},
        {"viewBox='0 0 10 10' width='40' height='20' preserveAspectRatio='none'", {0, 0, 10, 10}, 4},
    };
    for (const PageCase& one : cases) {
        const auto document =
            readText(std::string("<svg xmlns='http://www.w3.org/2000/svg' ") + one.attributes + "/>");
        SCOPED_TRACE(one.attributes);
        expectBounds(document->getPage(), one.page, 1e-9);
        EXPECT_NEAR(document->getPageScale(), one.scale, 1e-9);
    }
}

// Told to others as it was written, without a zero of the other sign.
TEST(Page, OfTheViewBoxsProportionsIsTheViewBoxExactly) {
    const auto document = readText(
        "<svg xmlns='http://www.w3.org/2000/svg' viewBox='0 0 210 297' width='210mm' height='297mm'/>");
    const AFRect& page = document->getPage();
    EXPECT_EQ(page.right, 210);
    EXPECT_EQ(page.bottom, 297);
    EXPECT_FALSE(std::signbit(page.left));
    EXPECT_FALSE(std::signbit(page.top));
}

struct BoundsCase {
    const char* body;  // the object "a" is looked at; the page is 200 by 100
    AFRect bounds;
};

class Bounds : public testing::TestWithParam<BoundsCase> {};

TEST_P(Bounds, AreInDrawingCoordinates) {
    const auto document = readBody(GetParam().body);
    SCOPED_TRACE(GetParam().body);
    expectBounds(boundsOf(*document, "a"), GetParam().bounds, 1e-9);
}

const double kRoot = std::sqrt(2.0);

INSTANTIATE_TEST_SUITE_P(
    Shapes, Bounds,
    testing::Values(BoundsCase{"<rect id='a' x='1' y='2' width='3' height='4'/>", {1, 2, 4, 6}},
                    BoundsCase{"<rect id='a' x='10%' y='10%' width='50%' height='50%'/>", {20, 10, 120, 60}},
                    BoundsCase{"<rect id='a' width='-3' height='4'/>", {0, 0, 0, 4}},
                    BoundsCase{"<circle id='a' cx='5' cy='6' r='2'/>", {3, 4, 7, 8}},
                    BoundsCase{"<ellipse id='a' cx='5' cy='6' rx='2' ry='1'/>", {3, 5, 7, 7}},
                    BoundsCase{"<ellipse id='a' rx='2'/>", {-2, -2, 2, 2}},
                    BoundsCase{"<line id='a' x1='5' y1='1' x2='2' y2='1'/>", {2, 1, 5, 1}},
                    BoundsCase{"<image id='a' x='1' y='2' width='3' height='4'/>", {1, 2, 4, 6}},
                    BoundsCase{"<polygon id='a' points='1,2 3-4 5 6 7'/>", {1, -4, 5, 6}},
                    BoundsCase{"<polyline id='a' points=' 1 2,3 , 4 '/>", {1, 2, 3, 4}},
                    BoundsCase{"<polygon id='a' points=''/>", {}},
                    BoundsCase{"<g fill='none' font-size='10'><rect id='a' width='2em' height='1em'/></g>",
                               {0, 0, 20, 10}}));

INSTANTIATE_TEST_SUITE_P(
    Transforms, Bounds,
    testing::Values(
        BoundsCase{"<rect id='a' width='2' height='1' transform='translate(10,20)'/>", {10, 20, 12, 21}},
        BoundsCase{"<rect id='a' width='2' height='1' transform='translate(10)'/>", {10, 0, 12, 1}},
        BoundsCase{"<rect id='a' width='2' height='1' transform='scale(2 3)'/>", {0, 0, 4, 3}},
        BoundsCase{"<rect id='a' width='2' height='1' transform='scale(-2)'/>", {-4, -2, 0, 0}},
        BoundsCase{"<rect id='a' width='2' height='1' transform='rotate(90)'/>", {-1, 0, 0, 2}},
        BoundsCase{"<rect id='a' width='2' height='1' transform='rotate(90 1 1)'/>", {1, 0, 2, 2}},
        BoundsCase{"<rect id='a' width='1' height='1' transform='skewX(45)'/>", {0, 0, 2, 1}},
        BoundsCase{"<rect id='a' width='1' height='1' transform='skewY(45)'/>", {0, 0, 1, 2}},
        BoundsCase{"<rect id='a' width='1' height='1' transform='matrix(1,2,3,4,5,6)'/>", {5, 6, 9, 12}},
        BoundsCase{
            "<rect id='a' width='1' height='1' transform=' translate(1,0) , scale(2)translate(1 1) '/>",
            {3, 2, 5, 4}},
        BoundsCase{"<rect id='a' width='1' height='1' transform='translate(9) nonsense(1)'/>", {0, 0, 1, 1}},
        BoundsCase{"<rect id='a' width='1' height='1' transform='translate(9'/>", {0, 0, 1, 1}},
        BoundsCase{"<circle id='a' r='1' transform='rotate(45) scale(3,1)'/>",
                   {-std::sqrt(5), -std::sqrt(5), std::sqrt(5), std::sqrt(5)}},
        BoundsCase{"<rect id='a' width='2' height='2' rx='1' transform='rotate(45 1 1)'/>", {0, 0, 2, 2}},
        BoundsCase{"<rect id='a' x='-2' y='-2' width='4' height='4' rx='1' transform='rotate(45)'/>",
                   {-kRoot - 1, -kRoot - 1, kRoot + 1, kRoot + 1}},
        BoundsCase{
            "<g transform='translate(10,0)'><g transform='scale(2)'><path id='a' d='M1 1h2v3'/></g></g>",
            {12, 2, 16, 8}},
        BoundsCase{"<g inkscape:groupmode='layer' transform='translate(5,6)'><path id='a' d='M0 0h1v1'/></g>",
                   {5, 6, 6, 7}}));

INSTANTIATE_TEST_SUITE_P(
    Viewports, Bounds,
    testing::Values(
        BoundsCase{
            "<svg x='10' y='20' width='50' height='50' viewBox='0 0 10 10'><path id='a' d='M0 0h2v1'/></svg>",
            {10, 20, 20, 25}},
        BoundsCase{"<svg x='10' y='20' width='50' height='100' viewBox='5 5 10 10'>"
                   "<rect id='a' x='5' y='5' width='10' height='10'/></svg>",
                   {10, 45, 60, 95}},
        BoundsCase{"<svg width='50' height='100' viewBox='0 0 10 10' preserveAspectRatio='none'>"
                   "<rect id='a' width='50%' height='50%'/></svg>",
                   {0, 0, 25, 50}},
        BoundsCase{"<svg width='50' height='100' viewBox='0 0 10 10' preserveAspectRatio='xMinYMax slice'>"
                   "<rect id='a' width='10' height='10'/></svg>",
                   {0, 0, 100, 100}},
        BoundsCase{"<defs><path id='p' d='M1 1h2v2'/></defs><use id='a' href='#p' x='10' y='5%' "
                   "transform='scale(2)'/>",
                   {22, 12, 26, 16}},
        BoundsCase{"<symbol id='s' viewBox='0 0 10 10'><path d='M0 0h10v10'/></symbol>"
                   "<use id='a' href='#s' x='1' y='2' width='20' height='20'/>",
                   {1, 2, 21, 22}},
        BoundsCase{"<g id='a'><rect x='1' y='1' width='1' height='1'/><g/><circle cx='9' cy='9' r='1'/></g>",
                   {1, 1, 10, 10}}));

INSTANTIATE_TEST_SUITE_P(
    Paths, Bounds,
    testing::Values(BoundsCase{"<path id='a' d='M0 0 Q50 100 100 0'/>", {0, 0, 100, 50}},
                    BoundsCase{"<path id='a' d='M0 0 q50 100 100 0 t100 0'/>", {0, -50, 200, 50}},
                    BoundsCase{"<path id='a' d='M0 0 C0 100 100 100 100 0'/>", {0, 0, 100, 75}},
                    BoundsCase{"<path id='a' d='M0 0 C0 100 100 100 100 0 S200-100 200 0'/>",
                               {0, -75, 200, 75}},
                    BoundsCase{"<path id='a' d='M0,10 A10 10 0 0 1 20 10'/>", {0, 0, 20, 10}},
                    BoundsCase{"<path id='a' d='M0,10 a10 10 0 0020 0'/>", {0, 10, 20, 20}},
                    BoundsCase{"<path id='a' d='M10 0A10 10 0 1 1 0 10'/>", {0, 0, 20, 20}},
                    BoundsCase{"<path id='a' d='M0 0a1 1 0 01 10 0'/>", {0, -5, 10, 0}},
                    BoundsCase{"<path id='a' d='M0 0a0 5 0 01 10 3'/>", {0, 0, 10, 3}},
                    BoundsCase{"<path id='a' d='M1 2 3 4h2V9H0z m100 100'/>", {0, 2, 5, 9}},
                    BoundsCase{"<path id='a' d='m1 2 3 4z l10 0'/>", {1, 2, 11, 6}},
                    BoundsCase{"<path id='a' d='M5 5'/>", {}},
                    BoundsCase{"<path id='a' d='M5 5z'/>", {5, 5, 5, 5}},
                    BoundsCase{"<path id='a' d=''/>", {}}, BoundsCase{"<path id='a' d='L1 1'/>", {}},
                    BoundsCase{"<path id='a' d='M0 0L1 1 5 x 9 9'/>", {0, 0, 1, 1}},
                    BoundsCase{"<path id='a' d='M0 0L1 1k9 9'/>", {0, 0, 1, 1}},
                    BoundsCase{"<path id='a' title='&gt; \"x\"' d='M1 1L2 2'/>", {1, 1, 2, 2}},
                    BoundsCase{"<path id='a' title=\"'>\" d='M1 1&#32;L2 2'/>", {1, 1, 2, 2}}));

TEST(TextBounds, AreEstimatedFromLengthAndFontSize) {
    const auto document = readBody(
        "<text id='a' x='10' y='20' font-size='10'> four </text>"
        "<text id='b' x='10' y='20' style='font-size:10px;text-anchor:middle'>four</text>"
        "<text id='c' font-size='10'><tspan x='0' y='10'>four</tspan><tspan x='0' y='30' "
        "font-size='20'>four</tspan></text>"
        "<path id='p' d='M0 50h100'/><text id='d' font-size='10'><textPath "
        "xlink:href='#p'>x</textPath></text>"
        "<text id='e'/>");
    expectBounds(boundsOf(*document, "a"), {10, 12, 32, 22});
    expectBounds(boundsOf(*document, "b"), {-1, 12, 21, 22});
    expectBounds(boundsOf(*document, "c"), {0, 2, 44, 34});
    expectBounds(boundsOf(*document, "d"), {-8, 42, 108, 58});
    EXPECT_EQ(boundsOf(*document, "e"), AFRect());
}

TEST(Bounds, OfShapesAreLeftUntilAskedFor) {
    const auto document = readBody("<path id='a' d='M0 0h1v1'/><rect id='b' width='2' height='1'/>");
    for (const char* name : {"a", "b"}) {
        const AObject* shape = document->findObject(name);
        EXPECT_TRUE(shape->getObjectFlags(kObjectBoundsPending)) << name;
        EXPECT_NE(boundsOf(*document, name), AFRect()) << name;
        EXPECT_FALSE(shape->getObjectFlags(kObjectBoundsPending)) << name;
    }
}

TEST(Bounds, OfShapesInEmOfTheirOwnAreThoseOfTheirStyle) {
    const auto document = readBody(
        "<rect id='a' font-size='10' width='2em' height='1'/><g style='font-size:5px'><g><circle id='b' "
        "r='2em'/></g></g><rect id='c' width='2em' height='1'/>");
    expectBounds(boundsOf(*document, "a"), {0, 0, 20, 1});
    expectBounds(boundsOf(*document, "b"), {-10, -10, 10, 10});
    expectBounds(boundsOf(*document, "c"), {0, 0, 32, 1});
}

// However a start tag is written, the box that is computed from it alone is the same.
TEST(Bounds, OfShapesDoNotDependOnHowTheTagIsWritten) {
    const auto document = readBody(
        "<rect id='a' x='1' y='2' width='3' height='4'/>"
        "<rect\n\tid = \"b\"\r\n x\n=\n'1' y =\"2\" title='a > b \"c\"' width= '3' height ='4' />"
        "<rect id='c' data-a='&lt;&amp;' x='&#49;' y='2' width='3' height='4'></rect>"
        "<rect width='3' id='d' height='4' x=' 1 ' y='2'\n></rect>"
        "<rect id='e' other:width='9' x='1' y='2' width='3' height='4'/>");
    for (const char* name : {"a", "b", "c", "d", "e"}) {
        SCOPED_TRACE(name);
        expectBounds(boundsOf(*document, name), {1, 2, 4, 6});
    }
}

TEST(Bounds, AreFiniteWhateverTheNumbers) {
    const auto document = readBody(
        "<g transform='scale(1e300)'><g transform='scale(1e300) rotate(30)'><g transform='scale(1e300) "
        "skewX(90)'>"
        "<rect id='a' x='1e400' y='-1e400' width='1e999' height='1e999'/><path id='b' d='M1e300 1e300A1e308 "
        "1e308 9e99 1 1"
        " 5e300-4e300C1e308 1e308-1e308 1 2 3'/><circle id='c' r='1e308' cx='-1e308'/></g></g></g>");
    for (const char* name : {"a", "b", "c"}) {
        const AFRect bounds = boundsOf(*document, name);
        for (const double value : {bounds.left, bounds.top, bounds.right, bounds.bottom}) {
            EXPECT_TRUE(std::isfinite(value)) << name;
        }
    }
}

// Draws random paths by small steps, in the plainest way, and compares the extent.
class SampledPath {
public:
    explicit SampledPath(unsigned seed) : m_random(seed) {
        for (double* value : {&transform.a, &transform.b, &transform.c, &transform.d}) *value = number(2);
        transform.e = number(100);
        begin();
        for (int i = 0; i < 5; ++i) addSegment();
    }

    std::string data;
    svg::Affine transform;
    AFRect extent{1e9, 1e9, -1e9, -1e9};

private:
    double number(double size) {
        return std::round(std::uniform_real_distribution<double>(-size, size)(m_random) * 100) / 100;
    }
    AFPoint point() { return {number(100), number(100)}; }
    void write(double value) {
        char text[32];
        std::snprintf(text, sizeof text, " %.2f", value);
        data += text;
    }
    void write(AFPoint p) {
        write(p.x);
        write(p.y);
    }
    void see(AFPoint p) {
        const AFPoint q{transform.a * p.x + transform.c * p.y + transform.e,
                        transform.b * p.x + transform.d * p.y + transform.f};
        extent = {std::min(extent.left, q.x), std::min(extent.top, q.y), std::max(extent.right, q.x),
                  std::max(extent.bottom, q.y)};
    }
    void begin() {
        m_at = point();
        data = "M";
        write(m_at);
        see(m_at);
    }
    void addSegment();
    void sampleArc(double rx, double ry, double tilt, bool large, bool sweep, AFPoint to);

    static constexpr int kSteps = 4000;
    std::mt19937 m_random;
    AFPoint m_at;
};

void SampledPath::addSegment() {
    const AFPoint c = point();
    const AFPoint d = point();
    const AFPoint to = point();
    switch (m_random() % 4) {
        case 0:
            data += "L";
            break;
        case 1:
            data += "Q";
            write(c);
            for (int i = 0; i <= kSteps; ++i) {
                const double t = static_cast<double>(i) / kSteps, s = 1 - t;
                see({s * s * m_at.x + 2 * s * t * c.x + t * t * to.x,
                     s * s * m_at.y + 2 * s * t * c.y + t * t * to.y});
            }
            break;
        case 2:
            data += "C";
            write(c);
            write(d);
            for (int i = 0; i <= kSteps; ++i) {
                const double t = static_cast<double>(i) / kSteps, s = 1 - t;
                see({s * s * s * m_at.x + 3 * s * s * t * c.x + 3 * s * t * t * d.x + t * t * t * to.x,
                     s * s * s * m_at.y + 3 * s * s * t * c.y + 3 * s * t * t * d.y + t * t * t * to.y});
            }
            break;
        default: {
            const double rx = std::fabs(number(80)) + 1, ry = std::fabs(number(80)) + 1, tilt = number(180);
            const bool large = m_random() % 2, sweep = m_random() % 2;
            data += "A";
            write(rx);
            write(ry);
            write(tilt);
            data += large ? " 1" : " 0";
            data += sweep ? " 1" : " 0";
            sampleArc(rx, ry, tilt, large, sweep, to);
        }
    }
    write(to);
    see(to);
    m_at = to;
}

// Finds the centre by geometry: on the unit circle, the middle of the ends' chord lies below the centre.
void SampledPath::sampleArc(double rx, double ry, double tilt, bool large, bool sweep, AFPoint to) {
    const double angle = tilt * std::numbers::pi / 180;
    const auto toUnit = [&](AFPoint p) {
        return AFPoint{(p.x * std::cos(angle) + p.y * std::sin(angle)) / rx,
                       (-p.x * std::sin(angle) + p.y * std::cos(angle)) / ry};
    };
    const auto fromUnit = [&](AFPoint p) {
        return AFPoint{p.x * rx * std::cos(angle) - p.y * ry * std::sin(angle),
                       p.x * rx * std::sin(angle) + p.y * ry * std::cos(angle)};
    };
    const AFPoint a = toUnit(m_at), b = toUnit(to);
    const AFPoint middle{(a.x + b.x) / 2, (a.y + b.y) / 2};
    const double chord = std::hypot(b.x - a.x, b.y - a.y);
    const double radius = std::max(1.0, chord / 2);
    const double height = std::sqrt(std::max(0.0, radius * radius - chord * chord / 4));
    const double side = large == sweep ? -1 : 1;  // y points down: clockwise is the positive sweep
    const AFPoint center{middle.x - side * height * (b.y - a.y) / chord,
                         middle.y + side * height * (b.x - a.x) / chord};
    const double begin = std::atan2(a.y - center.y, a.x - center.x);
    double delta = std::atan2(b.y - center.y, b.x - center.x) - begin;
    while (sweep && delta < 0) delta += 2 * std::numbers::pi;
    while (!sweep && delta > 0) delta -= 2 * std::numbers::pi;
    for (int i = 0; i <= kSteps; ++i) {
        const double t = begin + delta * i / kSteps;
        see(fromUnit({center.x + radius * std::cos(t), center.y + radius * std::sin(t)}));
    }
}

TEST(PathBounds, AgreeWithManySmallSteps) {
    for (unsigned seed = 0; seed < 400; ++seed) {
        const SampledPath path(seed);
        svg::BoundsBuilder bounds;
        svg::addPathBounds(path.data, path.transform, bounds);
        const AFRect actual = bounds.get();
        SCOPED_TRACE(path.data);
        expectBounds(actual, path.extent, 2e-3);
        // Exact: never inside what was sampled.
        EXPECT_LE(actual.left, path.extent.left + 1e-7);
        EXPECT_LE(actual.top, path.extent.top + 1e-7);
        EXPECT_GE(actual.right, path.extent.right - 1e-7);
        EXPECT_GE(actual.bottom, path.extent.bottom - 1e-7);
    }
}

}  // namespace
