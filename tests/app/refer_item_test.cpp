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
