// Style sheets as programs write them today: selectors, at-rules, variables, colours.
#include "formats/svg/style/conditions.h"
#include "formats/svg/style/selector.h"
#include "support.h"

using namespace svg_test;

namespace {

// The fill of the rectangle "a" in a row of shapes under a sheet.
std::string fillUnder(const std::string& sheet) {
    return fillOf("<style>" + sheet +
                  "</style><g id='g' class='wall left' xml:lang='de-CH'><circle id='c' class='first'/>"
                  "<rect id='a' class='big wall' data-kind='Door-12' width='9'/><rect id='b'/>"
                  "<path id='p'/></g>");
}

TEST(StyleSheets, AttributesAreAskedForTheirValues) {
    for (const std::string selector :
         {"[width]", "[width='9']", "rect[width=\"9\"]", "[class~=wall]", "[data-kind|='Door']",
          "[data-kind^=Door]", "[data-kind$='12']", "[data-kind*='or-1']", "[data-kind='door-12' i]"})
        EXPECT_EQ(fillUnder(selector + "{fill:red}"), "red") << selector;
    for (const std::string selector : {"[ry]", "[width='8']", "[class~=wa]", "[data-kind='door-12']",
                                       "[data-kind^='']", "[data-kind='door-12' s]"})
        EXPECT_EQ(fillUnder(selector + "{fill:red}"), "black") << selector;
}

TEST(StyleSheets, SiblingsAndPlacesAreCounted) {
    for (const std::string selector :
         {"circle + rect", "circle ~ rect", ".wall > .first + .big", "rect:nth-child(2)",
          "rect:nth-child(even)", "rect:nth-child(3n+2)", "rect:nth-child(-n+2)", "rect:nth-last-child(3)",
          "rect:first-of-type", ":nth-last-of-type(2)", "#g :not(circle):not(path):not(#b)",
          ":is(circle, rect):nth-child(2)", "svg:root > g > rect", "rect:empty", "rect:lang(de)",
          ":where(#a)"})
        EXPECT_EQ(fillUnder("#g{} " + selector + "{fill:red}"), "red") << selector;
    for (const std::string selector :
         {"rect + circle", "path ~ rect", "rect:first-child", "rect:last-child", "rect:only-child",
          "rect:nth-child(odd)", "rect:hover", "rect:lang(fr)", "rect::before", ":root > rect", "rect:link"})
        EXPECT_EQ(fillUnder(selector + "{fill:red}"), "black") << selector;
}

TEST(StyleSheets, ALinkIsAnElementWithAReference) {
    EXPECT_EQ(fillOf("<style>:link rect{fill:red}</style><a href='x'><rect id='a'/></a>"), "red");
    EXPECT_EQ(fillOf("<style>:link rect{fill:red}</style><a><rect id='a'/></a>"), "black");
}

TEST(StyleSheets, AnInvalidSelectorDropsItsWholeList) {
    EXPECT_EQ(fillUnder("rect, rect:unheard-of {fill:red}"), "black");
    EXPECT_EQ(fillUnder("rect, {fill:red}"), "black");
    EXPECT_EQ(fillUnder("rect, rect:hover {fill:red}"), "red");
}

TEST(StyleSheets, SpecificityCountsWhatPseudoClassesHold) {
    EXPECT_EQ(fillUnder(":is(#a, rect){fill:red} .big.wall{fill:blue}"), "red");
    EXPECT_EQ(fillUnder(":where(#a){fill:red} rect{fill:blue}"), "blue");
    EXPECT_EQ(fillUnder("[width]{fill:red} rect{fill:blue}"), "red");
}

TEST(StyleSheets, BlocksCountUnderTheirConditions) {
    const std::pair<std::string, std::string> cases[] = {
        {"@media screen and (prefers-color-scheme: light){rect{fill:red}}", "red"},
        {"@media (prefers-color-scheme: dark){rect{fill:red}}", "black"},
        {"@media not print{rect{fill:red}}", "red"},
        {"@media print, screen{rect{fill:red}}", "red"},
        {"@media (min-width: 1px){rect{fill:red}}", "black"},
        {"@supports (fill: red){rect{fill:red}}", "red"},
        {"@supports (fill: nonsense) or (not (unheard: of)){rect{fill:red}}", "red"},
        {"@supports not (fill: red){rect{fill:red}}", "black"},
        {"@supports selector(:is(a)) and (stroke-width: 2px){rect{fill:red}}", "red"},
        {"@layer a, b; @layer b{rect{fill:red}} @layer a{rect{fill:blue}}", "red"},
        {"@layer a{#a{fill:red}} rect{fill:blue}", "blue"},
    };
    for (const auto& [sheet, fill] : cases) EXPECT_EQ(fillUnder(sheet), fill) << sheet;
    EXPECT_EQ(fillOf("<style media='print'>rect{fill:red}</style><rect id='a'/>"), "black");
    EXPECT_EQ(fillOf("<style media='screen'>rect{fill:red}</style><rect id='a'/>"), "red");
}

TEST(StyleSheets, CommentsMayStandInAStyleAttribute) {
    EXPECT_EQ(fillOf("<rect id='a' style='/* fill:blue; */fill:/**/red/* ; */;'/>"), "red");
    EXPECT_EQ(fillOf("<rect id='a' style='fill/**/:red;/* open'/>"), "red");
}

TEST(StyleSheets, VariablesStandForTheirValues) {
    const std::pair<std::string, std::string> cases[] = {
        {"<g style='--x:red'><rect id='a' fill='var(--x)'/></g>", "red"},
        {"<rect id='a' style='fill:var(--x);--x:red'/>", "red"},
        {"<style>:root{--x:red} rect{fill:var( --x )}</style><rect id='a'/>", "red"},
        {"<rect id='a' style='fill:var(--none, red)'/>", "red"},
        {"<rect id='a' style='--y:var(--x);--x:red;fill:var(--y)'/>", "red"},
        {"<rect id='a' style='--r:255;fill:rgb(var(--r), 0, 0)'/>", "red"},
        {"<g fill='blue'><rect id='a' fill='red' style='fill:var(--none)'/></g>", "blue"},
        {"<g fill='blue'><rect id='a' style='--x:var(--x);fill:var(--x)'/></g>", "blue"},
        {"<g style='--x:red'><rect id='a' style='--x:blue;fill:var(--x);fill:lime'/></g>", "lime"},
    };
    for (const auto& [body, fill] : cases) EXPECT_EQ(fillOf(body), fill) << body;
}

TEST(StyleSheets, ColoursComeInEverySpace) {
    const std::pair<std::string, std::string> cases[] = {
        {"hwb(0 0% 0%)", "red"},
        {"hwb(120 50% 50%)", "gray"},
        {"lab(54.29 80.80 69.89)", "red"},
        {"lch(29.57% 131.2 301.36)", "blue"},
        {"oklab(0.628 0.2249 0.1258)", "red"},
        {"oklch(0.5198 0.1769 142.5)", "green"},
        {"color(srgb 1 0 0)", "red"},
        {"color(srgb-linear 0 0 1 / 50%)", "blue"},
        {"color(xyz 0.4124 0.2126 0.0193)", "red"},
        {"color(display-p3 0 0 0)", "black"},
        {"light-dark(red, blue)", "red"},
        {"color-mix(in srgb, red, blue)", "purple"},
        {"color-mix(in srgb, white 0%, red)", "red"},
        {"color-mix(in hsl, red, lime)", "yellow"},
        {"color-mix(in srgb, red 200%, blue)", "black"},
        {"color(nowhere 1 0 0)", "black"},
        {"hsl(none 0% 50%)", "gray"},
    };
    for (const auto& [color, fill] : cases)
        EXPECT_EQ(fillOf("<rect id='a' style='fill:" + color + "'/>"), fill) << color;
}

TEST(StyleSheets, MatchingCountsItsSteps) {
    svg::Selector selector;
    ASSERT_TRUE(svg::parseSelector("a b c rect", selector));
    pugi::xml_document document;
    ASSERT_TRUE(document.load_string("<a><b><c><rect/></c></b></a>"));
    std::size_t steps = 0;
    EXPECT_TRUE(svg::matches(selector, document.child("a").child("b").child("c").child("rect"), steps));
    EXPECT_GE(steps, 4u);
}

TEST(StyleSheets, AListWithAnInvalidSelectorIsDroppedWhole) {
    for (const std::string list :
         {"#a, :foo", "#a, [", "#a,, rect", "#a, ", "#a, b:::c", ":not(#b, :foo)", "#a, .3x"})
        EXPECT_EQ(fillUnder(list + "{fill:red}"), "black") << list;
    // But for those in :is() and :where().
    for (const std::string list : {":is(#a, :foo)", ":where(:foo(3), #a)", "rect:is(, .big)"})
        EXPECT_EQ(fillUnder(list + "{fill:red}"), "red") << list;
    EXPECT_EQ(fillUnder(":is(:foo){fill:red}"), "black");
}

TEST(StyleSheets, ABracketThatNothingClosesTakesTheRest) {
    EXPECT_EQ(fillUnder("[x {fill:lime} #a{fill:red}"), "black");
    EXPECT_EQ(fillUnder("#a{fill:red} [x {fill:lime} #a{fill:lime}"), "red");
    EXPECT_EQ(fillUnder("[x] {fill:lime} #a{fill:red}"), "red");
    EXPECT_EQ(fillUnder(") {fill:lime} #a{fill:red}"), "red");
}

TEST(StyleSheets, GeometryIsSupported) {
    EXPECT_TRUE(svg::isSupported("(width: 5px)"));
    EXPECT_TRUE(svg::isSupported("(d: path('M0 0'))"));
    EXPECT_FALSE(svg::isSupported("(width: red)"));
    EXPECT_TRUE(svg::isSupported("(clip-path: circle(50%))"));
    EXPECT_FALSE(svg::isSupported("(clip-path: foo(50%))"));
}

}  // namespace
