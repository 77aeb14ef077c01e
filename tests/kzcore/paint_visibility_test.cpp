// Which items a view's filter is asked with.
#include "kzcore/view/paint_visibility.h"

#include <gtest/gtest.h>

#include "support/drawing.h"

using test::Drawing;

namespace {

// Notes what it is asked with, and refuses one item.
struct AskedFilter : AViewFilter {
    std::vector<const AReferItem*> asked;
    const AReferItem* refused = nullptr;
    int isVisible(AReferItem* item) override {
        asked.push_back(item);
        return item != refused;
    }
};

using Items = std::vector<const AReferItem*>;

class PaintVisibility : public testing::Test {
protected:
    Drawing drawing;
    APaintTable& paint = drawing.document.getPaint();
    AObject* object = drawing.add(drawing.layer(), _T("AOval"));
    AskedFilter filter;

    void expectAsked(const Items& items) {
        filter.asked.clear();
        const APaintVisibility visible = paintVisibility(*object, &filter);
        EXPECT_EQ(filter.asked, items);
        EXPECT_TRUE(visible.fill);
        EXPECT_TRUE(visible.stroke);
    }
};

}  // namespace

TEST_F(PaintVisibility, AsksWithTheBrushItemOfTheFillAndThePenItemOfTheStroke) {
    expectAsked({});
    ABrush* red = paint.rgbBrush(0xff0000);
    object->setBrush(red);
    expectAsked({red->getBrushItem()});
    APen* blue = paint.rgbPen(0x0000ff);
    object->setPen(blue);
    expectAsked({red->getBrushItem(), blue->getPenItem()});
}

TEST_F(PaintVisibility, AsksWithTheGradientItselfForAGradientStroke) {
    ABrush* glow = paint.gradientBrush("glow");
    object->setBrush(glow);
    object->setPen(paint.brushPen(glow->getBrushItem()));
    expectAsked({glow->getBrushItem(), glow->getBrushItem()});
}

TEST_F(PaintVisibility, IsWhatTheFilterSaysOfEach) {
    ABrush* red = paint.rgbBrush(0xff0000);
    APen* blue = paint.rgbPen(0x0000ff);
    object->setBrush(red);
    object->setPen(blue);
    filter.refused = red->getBrushItem();
    EXPECT_FALSE(paintVisibility(*object, &filter).fill);
    EXPECT_TRUE(paintVisibility(*object, &filter).stroke);
    filter.refused = blue->getPenItem();
    EXPECT_TRUE(paintVisibility(*object, &filter).fill);
    EXPECT_FALSE(paintVisibility(*object, &filter).stroke);
    EXPECT_TRUE(paintVisibility(*object, nullptr).stroke);
}

TEST_F(PaintVisibility, HoldersWithoutAnItemAreNotAskedAbout) {
    ABrush noFill(nullptr);
    APen noStroke(nullptr);
    object->setBrush(&noFill);
    object->setPen(&noStroke);
    expectAsked({});
}
