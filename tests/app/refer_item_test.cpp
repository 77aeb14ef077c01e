#include "app/script/refer_item_argument.h"

#include <gtest/gtest.h>

#include "app/session.h"
#include "sea.h"
#include "support/temp_folder.h"

namespace {

class ReferItem : public testing::Test {
protected:
    test::TempFolder folder;
    app::Session session;

    void SetUp() override {
        const std::u8string file = folder.write("sea.svg", test::kSea).u8string();
        session.open(std::string(file.begin(), file.end()));
    }
    std::string named(const std::string& text) {
        return app::findReferItem(session.document(), text)->getName().toUtf8();
    }
    std::string failure(const std::string& text) {
        try {
            app::findReferItem(session.document(), text);
        } catch (const app::Failure& raised) {
            return raised.reason;
        }
        return "found";
    }
};

}  // namespace

TEST_F(ReferItem, OfAColorIsFoundByItsNameAndItsValueInAnyCase) {
    for (const char* text : {"color:red", "color:RED", "color:#ff0000", "color:#FF0000"})
        EXPECT_EQ(named(text), "red") << text;
    EXPECT_EQ(named("color:#123456"), "#123456");
}

TEST_F(ReferItem, OfASolidFillIsItsColor) {
    EXPECT_EQ(named("fill:hull"), "red");
    EXPECT_EQ(app::findReferItem(session.document(), "fill:hull"),
              app::findReferItem(session.document(), "color:red"));
}

TEST_F(ReferItem, OfAGradientIsTheBrushItself) {
    EXPECT_EQ(named("fill:sun"), "glow");
    EXPECT_EQ(named("stroke:cap"), "glow");
}

TEST_F(ReferItem, OfAStrokeIsThePensColor) {
    EXPECT_EQ(named("stroke:hull"), "black");
}

TEST_F(ReferItem, ThatIsMissingIsTold) {
    EXPECT_EQ(failure("color:pink"), "the drawing has no color \"pink\"");
    EXPECT_EQ(failure("color:"), "the drawing has no color \"\"");
    EXPECT_EQ(failure("color:#12345g"), "the drawing has no color \"#12345g\"");
    EXPECT_EQ(failure("fill:zz"), "there is no object \"zz\"");
    EXPECT_EQ(failure("fill:sail"), "\"sail\" has no fill");
    EXPECT_EQ(failure("fill:crew"), "\"crew\" has no fill");
    EXPECT_EQ(failure("stroke:sun"), "\"sun\" has no stroke");
    EXPECT_EQ(failure("red"), "\"red\" is none of color:NAME, fill:ID, stroke:ID");
}

namespace {

// Swatches beside colours of the same names and values.
class SwatchNames : public ReferItem {
protected:
    void SetUp() override {
        ReferItem::SetUp();
        for (const char* name : {"Red", "Lake", "lake", "#123456", "SKY", "Sky"}) swatch(name, 0x112233);
        swatch("cap", 0xff0000);
        swatch("cap", 0x0000ff);
    }
    AColorItem* swatch(const char* name, std::uint32_t display) {
        return session.document().getPaint().color(*findClass(_T("ASpotColorItem")), name, {1, 0, 0, 0},
                                                   display);
    }
    std::string found(const std::string& text) {
        AReferItem* item = app::findReferItem(session.document(), text);
        return item->getClassName().toUtf8() + " " + item->getName().toUtf8();
    }
};

}  // namespace

TEST_F(SwatchNames, AnExactNameGoesBeforeOneThatDiffersInCase) {
    EXPECT_EQ(found("color:red"), "ARGBColorItem red");
    EXPECT_EQ(found("color:Red"), "ASpotColorItem Red");
    EXPECT_EQ(found("color:Lake"), "ASpotColorItem Lake");
    EXPECT_EQ(found("color:lake"), "ASpotColorItem lake");
    EXPECT_EQ(found("color:BLACK"), "ARGBColorItem black");
}

TEST_F(SwatchNames, DigitsMeanTheRgbColorFirst) {
    EXPECT_EQ(found("color:#ff0000"), "ARGBColorItem red");
    EXPECT_EQ(found("color:#123456"), "ARGBColorItem #123456");
    EXPECT_EQ(found("color:spot color/#123456"), "ASpotColorItem #123456");
}

TEST_F(SwatchNames, SwatchesOfOneLabelCanBothBeNamed) {
    EXPECT_EQ(found("color:cap"), "ASpotColorItem cap");
    EXPECT_EQ(found("color:cap-2"), "ASpotColorItem cap-2");
    EXPECT_NE(app::findReferItem(session.document(), "color:cap"),
              app::findReferItem(session.document(), "color:cap-2"));
}

TEST_F(SwatchNames, WhatStaysAmbiguousIsRefusedWithTheCandidates) {
    EXPECT_EQ(failure("color:RED"),
              "the drawing has more than one color \"RED\": \"RGB Color/red\", \"Spot Color/Red\"");
    EXPECT_EQ(failure("color:sky"),
              "the drawing has more than one color \"sky\": \"Spot Color/SKY\", \"Spot Color/Sky\"");
    EXPECT_EQ(found("color:Spot Color/RED"), "ASpotColorItem Red");
    EXPECT_EQ(found("color:RGB Color/RED"), "ARGBColorItem red");
    EXPECT_EQ(failure("color:Gray Color/red"), "the drawing has no color \"Gray Color/red\"");
    for (const char* name : {"LAKE", "LaKe"}) EXPECT_NE(failure(std::string("color:") + name), "found");
}
