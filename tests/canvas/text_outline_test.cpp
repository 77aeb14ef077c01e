#include "canvas/text_outline.h"

#include <gtest/gtest.h>

#include <limits>
#include <set>

#include "canvas/canvas.h"

namespace {

AFont font(const char* family, double size = 100) {
    AFont result;
    result.family = family;
    result.size = size;
    return result;
}

// The outline lies where its boxes say.
void expectBounds(const ATextShape& shape, const AAffine& transform) {
    APath path;
    shape.appendTo(path, transform);
    const AFRect whole = path.bounds();
    const AFRect bounds = shape.bounds(transform);
    EXPECT_NEAR(bounds.left, whole.left, 1e-9);
    EXPECT_NEAR(bounds.top, whole.top, 1e-9);
    EXPECT_NEAR(bounds.right, whole.right, 1e-9);
    EXPECT_NEAR(bounds.bottom, whole.bottom, 1e-9);
}

void expectNothing(const ATextOutline& text) {
    EXPECT_TRUE(text.path().empty());
    EXPECT_EQ(text.advance, 0);
}

}  // namespace

TEST(TextOutline, StandsOnItsBaseline) {
    const AFRect bounds = outlineText("H", font("sans-serif")).path().bounds();
    EXPECT_NEAR(bounds.bottom, 0, 2);
    EXPECT_LT(bounds.top, -50);
    EXPECT_GT(bounds.top, -100);
    EXPECT_GE(bounds.left, 0);
    EXPECT_LT(bounds.left, 30);
    EXPECT_GT(outlineText("g", font("sans-serif")).path().bounds().bottom, 10);
}

TEST(TextOutline, AdvancesFurtherTheLongerItIs) {
    const double one = outlineText("n", font("serif")).advance;
    EXPECT_GT(one, 20);
    EXPECT_LT(one, 100);
    EXPECT_NEAR(outlineText("nn", font("serif")).advance, 2 * one, 2);
    EXPECT_GT(outlineText("n n", font("serif")).advance, 2 * one + 5);
}

TEST(TextOutline, SpacesAdvanceWithoutAnOutline) {
    const ATextOutline text = outlineText("  ", font("serif"));
    EXPECT_TRUE(text.path().empty());
    EXPECT_GT(text.advance, 20);
}

TEST(TextOutline, IsAsLargeAsItsFont) {
    const ATextOutline small = outlineText("Harbour", font("sans-serif", 10));
    const ATextOutline large = outlineText("Harbour", font("sans-serif", 1'000));
    EXPECT_NEAR(large.advance, small.advance * 100, small.advance * 5);
    EXPECT_NEAR(large.path().bounds().top, small.path().bounds().top * 100, 50);
}

TEST(TextOutline, EveryMonospaceLetterIsAsWide) {
    EXPECT_NEAR(outlineText("iiii", font("monospace")).advance,
                outlineText("MMMM", font("monospace")).advance, 2);
    EXPECT_LT(outlineText("iiii", font("sans-serif")).advance,
              outlineText("MMMM", font("sans-serif")).advance * 0.7);
}

TEST(TextOutline, AnUnknownFamilyFallsBackToTheNextAndNoFamilyToSansSerif) {
    EXPECT_EQ(outlineText("Harbour", font("Surely No Such Family, monospace")).advance,
              outlineText("Harbour", font("monospace")).advance);
    EXPECT_EQ(outlineText("Harbour", font("")).advance, outlineText("Harbour", font("sans-serif")).advance);
    EXPECT_FALSE(outlineText("Harbour", font("Surely No Such Family")).path().empty());
}

// tests/fonts.conf: what texts look like does not depend on the machine.
TEST(TextOutline, GenericFamiliesAreTheFontsOfTheTests) {
    const std::pair<const char*, const char*> families[]{
        {"sans-serif", "DejaVu Sans"}, {"serif", "DejaVu Serif"}, {"monospace", "DejaVu Sans Mono"}};
    for (const auto& [generic, family] : families) {
        const ATextOutline text = outlineText("Harbour", font(generic));
        EXPECT_EQ(text.path().points().size(), outlineText("Harbour", font(family)).path().points().size());
        EXPECT_EQ(text.advance, outlineText("Harbour", font(family)).advance) << generic;
    }
}

TEST(TextOutline, BoldAndItalicLookDifferent) {
    AFont style = font("sans-serif");
    const ATextOutline plain = outlineText("Harbour", style);
    style.weight = 700;
    const ATextOutline bold = outlineText("Harbour", style);
    EXPECT_NE(bold.path().bounds(), plain.path().bounds());
    style.weight = 400;
    style.italic = true;
    EXPECT_NE(outlineText("Harbour", style).path().bounds(), plain.path().bounds());
}

TEST(TextOutline, OfNothingIsEmpty) {
    expectNothing(outlineText("", font("serif")));
    for (double size :
         {0.0, -1.0, std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity()}) {
        expectNothing(outlineText("Harbour", font("serif", size)));
    }
}

TEST(TextOutline, OfBytesThatAreNoTextIsEmpty) {
    expectNothing(outlineText("\xff", font("serif")));
    expectNothing(outlineText("Harb\xc3", font("serif")));
    expectNothing(outlineText("\xed\xa0\x80", font("serif")));
    expectNothing(outlineText("\xc0\xaf", font("serif")));
}

TEST(TextOutline, StaysOnOneLine) {
    const AFRect one = outlineText("Hy Hy", font("serif")).path().bounds();
    for (const char* text : {"Hy\nHy", "Hy\r\nHy", "Hy\tHy"}) {
        const AFRect bounds = outlineText(text, font("serif")).path().bounds();
        EXPECT_NEAR(bounds.top, one.top, 1);
        EXPECT_NEAR(bounds.bottom, one.bottom, 1);
    }
    EXPECT_FALSE(outlineText(std::string_view("H\0H", 3), font("serif")).path().empty());
}

TEST(TextOutline, OtherScriptsAndLongTextsAreDrawn) {
    EXPECT_FALSE(outlineText("Ελλάδα ж é", font("serif")).path().empty());
    const std::string longest(20'000, 'n');
    const double one = outlineText("n", font("serif")).advance;
    const ATextOutline text = outlineText(longest, font("serif"));
    EXPECT_NEAR(text.advance / 20'000, one, one / 20);
    EXPECT_NEAR(text.path().bounds().right, text.advance, 100);
}

TEST(TextOutline, HasNoMoreOutlinesThanDifferentLetters) {
    const ATextOutline text = outlineText("rarararara", font("serif"));
    std::set<const ALetterOutline*> outlines;
    for (const ATextLetter& letter : text.letters) outlines.insert(letter.outline.get());
    EXPECT_GE(outlines.size(), 1U);
    EXPECT_LE(outlines.size(), 2U);
}

TEST(TextOutline, InItsPlaceHasTheBoundsOfItsPoints) {
    ATextShape shape;
    shape.add(std::make_shared<ATextOutline>(outlineText("Harbour", font("serif"))),
              AAffine::translation(7, 9) * AAffine::scaling(1.5, 1));
    shape.add(std::make_shared<ATextOutline>(outlineText("gÄ", font("sans-serif", 5))),
              AAffine{0, 1, -1, 0, 3, 4});
    for (const AAffine& transform : {AAffine(), AAffine::scaling(-2, 3), AAffine{0.5, 0.7, -0.3, 2, 11, -5}})
        expectBounds(shape, transform);
}

TEST(TextOutline, WithoutLettersLeavesAShapeEmpty) {
    ATextShape shape;
    shape.add(std::make_shared<ATextOutline>(outlineText("  ", font("serif"))), AAffine());
    EXPECT_TRUE(shape.empty());
    EXPECT_EQ(shape.bounds(AAffine()), AFRect());
}
