// Drawings that refer to themselves, are nested deep, or are measured in extremes: they are drawn as far as
// they make sense, and never for ever.
#include "picture.h"
#include "support.h"

namespace {

using namespace svg_test;

std::string repeated(const std::string& text, int count) {
    std::string out;
    for (int i = 0; i < count; ++i) out += text;
    return out;
}

const std::string kMarker = "<rect x='190' y='90' width='10' height='10' fill='red'/>";

// Whatever else it holds, the drawing is drawn to its end.
void expectDrawn(const std::string& body) {
    EXPECT_EQ(drawBody(body + kMarker).at(195, 95), kRed);
}

TEST(DrawRobustness, ReferencesInACircleEnd) {
    expectDrawn(
        "<clipPath id='c'><rect width='9' height='9' clip-path='url(#c)'/></clipPath>"
        "<rect width='20' height='20' clip-path='url(#c)'/>");
    expectDrawn(
        "<clipPath id='a' clip-path='url(#b)'><rect width='9' height='9'/></clipPath>"
        "<clipPath id='b' clip-path='url(#a)'><rect width='9' height='9'/></clipPath>"
        "<rect width='20' height='20' clip-path='url(#a)'/>");
    expectDrawn(
        "<mask id='m'><rect width='20' height='20' fill='white' mask='url(#m)'/></mask>"
        "<rect width='20' height='20' mask='url(#m)'/>");
    expectDrawn(
        "<linearGradient id='g' href='#h'/><linearGradient id='h' href='#g'/>"
        "<rect width='20' height='20' fill='url(#g)'/>");
    expectDrawn(
        "<pattern id='p' width='5' height='5'><rect width='9' height='9' fill='url(#p)'/></pattern>"
        "<rect width='20' height='20' fill='url(#p)'/>");
    expectDrawn(
        "<mask id='m'><g id='u'><use href='#u'/><use href='#v'/></g><g id='v'><use href='#u'/></g>"
        "</mask><rect width='20' height='20' mask='url(#m)'/>");
    expectDrawn(
        "<marker id='k'><path d='M0 0L5 5' marker-end='url(#k)' stroke='red'/></marker>"
        "<path d='M0 0L20 20' marker-end='url(#k)' stroke='red'/>");
}

TEST(DrawRobustness, RepetitionThatDoublesIsBounded) {
    std::string body = "<mask id='m'><g id='u0'><rect width='1' height='1' fill='white'/></g>";
    for (int i = 1; i < 40; ++i) {
        const std::string before = std::to_string(i - 1);
        body += "<g id='u" + std::to_string(i) + "'><use href='#u" + before + "'/><use href='#u" + before +
                "'/></g>";
    }
    expectDrawn(body + "</mask><rect width='20' height='20' mask='url(#m)'/>");
}

TEST(DrawRobustness, DeepNesting) {
    expectDrawn(repeated("<g opacity='.9'>", 900) + "<rect width='9' height='9'/>" + repeated("</g>", 900));
    expectDrawn("<mask id='m'>" + repeated("<g opacity='.9'>", 900) + "<rect width='9' height='9'/>" +
                repeated("</g>", 900) + "</mask><rect width='20' height='20' mask='url(#m)'/>");
    expectDrawn("<clipPath id='c'><rect width='9' height='9'/></clipPath>" +
                repeated("<g clip-path='url(#c)'>", 900) + "<rect width='9' height='9'/>" +
                repeated("</g>", 900));
}

TEST(DrawRobustness, ALongChainOfMasks) {
    std::string body;
    for (int i = 0; i < 200; ++i) {
        body += "<mask id='m" + std::to_string(i) +
                "'><rect width='20' height='20' fill='white' mask='url(#m" + std::to_string(i + 1) +
                ")'/></mask>";
    }
    expectDrawn(body + "<rect width='20' height='20' mask='url(#m0)'/>");
}

TEST(DrawRobustness, ExtremeNumbers) {
    for (const std::string& number : std::vector<std::string>{"1e30", "-1e30", "1e-300", "nan", "1e999"}) {
        expectDrawn("<rect x='" + number + "' width='1e30' height='" + number + "' fill='blue'/>");
        expectDrawn("<path d='M0 0L" + number + " " + number + "A" + number +
                    " 5 0 1 1 3 3' stroke='blue'/>");
        expectDrawn("<g transform='scale(" + number + ")' opacity='.5'><rect width='9' height='9'/></g>");
        expectDrawn("<g transform='matrix(1e30 1e30 1e30 1e30 0 0)' opacity='.5'><circle r='9'/></g>");
        expectDrawn("<linearGradient id='g' gradientUnits='userSpaceOnUse' x1='" + number +
                    "'><stop/><stop offset='1'/></linearGradient><path d='M0 0h9v9z' fill='url(#g)'/>");
        expectDrawn("<mask id='m' x='" + number + "' width='" + number +
                    "'><rect width='9' height='9'/></mask><rect width='9' height='9' mask='url(#m)'/>");
        expectDrawn("<path d='M0 0h90' stroke='blue' stroke-width='" + number + "' stroke-dasharray='" +
                    number + "' stroke-dashoffset='" + number + "' opacity='.1' fill='blue'/>");
        expectDrawn("<svg width='" + number + "' height='9' viewBox='0 0 " + number +
                    " 1'><circle r='9'/></svg>");
    }
}

// Two to the power of thirty masks, or patterns: what is beyond the picture's budget is left out.
TEST(DrawRobustness, MasksAndPatternsTwiceInEachOtherEnd) {
    std::string masks, patterns;
    for (int i = 0; i < 30; ++i) {
        const std::string name = std::to_string(i);
        const std::string next = std::to_string(i + 1);
        const std::string masked = "<rect width='200' height='100' fill='white' mask='url(#m" + next + ")'/>";
        masks += "<mask id='m" + name + "'>" + masked + masked + "</mask>";
        const std::string filled = "<rect width='150' height='90' fill='url(#p" + next + ")'/>";
        patterns += "<pattern id='p" + name + "' width='170' height='99' patternUnits='userSpaceOnUse'>" +
                    filled + "<g transform='rotate(" + name + ")'>" + filled + "</g></pattern>";
    }
    expectDrawn(masks + "<rect width='200' height='100' mask='url(#m0)'/>");
    expectDrawn(patterns + "<rect width='200' height='100' fill='url(#p0)'/>");
}

TEST(DrawRobustness, AFilterBeyondTheBudgetChangesNothing) {
    const auto colorAfter = [](int steps) {
        const std::string step = "<feConvolveMatrix order='16' kernelMatrix='" + repeated("0 ", 256) + "'/>";
        return drawBody("<filter id='f' x='0' y='0' width='1' height='1'>" + repeated(step, steps) +
                        "</filter><rect width='200' height='100' fill='red' filter='url(#f)'/>")
            .at(50, 50);
    };
    EXPECT_NE(colorAfter(1), kRed);
    EXPECT_EQ(colorAfter(128), kRed);
}

TEST(DrawRobustness, EmptyAndMissingAttributes) {
    expectDrawn(
        "<rect/><circle/><ellipse/><line/><path/><path d=''/><polygon/><polyline points=''/><text/>"
        "<image/><use/><use href=''/><use href='#none'/><svg/><switch/><g/><a/>"
        "<rect width='5' height='5' clip-path='url(#)' mask='url()' filter='url(#' fill='url(#x)'/>"
        "<rect width='5' height='5' clip-path='' style=';;:;fill:;' transform='rotate(' />");
}

TEST(DrawRobustness, ObjectsFarOutsideThePictureCostNothingVisible) {
    EXPECT_EQ(drawBody("<rect x='1000' width='50' height='50' opacity='.5' stroke='red'/>"
                       "<g opacity='.5'><circle cx='-500' cy='-500' r='50'/></g>"),
              drawBody(""));
}

}  // namespace
