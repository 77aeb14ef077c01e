#include "kzcore/display/box_tree.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

namespace {

using Numbers = std::vector<std::uint32_t>;

// The plain form: every box is looked at.
Numbers touching(const std::vector<ABox>& boxes, const ABox& area) {
    Numbers found;
    for (std::size_t i = 0; i < boxes.size(); ++i) {
        if (!boxes[i].isEmpty() && !area.isEmpty() && boxes[i].touches(area))
            found.push_back(static_cast<std::uint32_t>(i));
    }
    return found;
}

Numbers found(const ABoxTree& tree, const ABox& area) {
    Numbers numbers{99};
    tree.find(area, numbers);
    return numbers;
}

struct RandomBoxes {
    std::mt19937 random;

    explicit RandomBoxes(unsigned seed) : random(seed) {}

    float number(int limit) {
        return static_cast<float>(static_cast<int>(random() % 1000) * limit) / 1000.0F;
    }

    // Whole numbers now and then, so that edges meet; some boxes are points, lines, empty or everything.
    ABox box(int page, int size) {
        float x = number(page);
        float y = number(page);
        if (random() % 2 == 0) {
            x = std::floor(x);
            y = std::floor(y);
        }
        switch (random() % 16) {
            case 0:
                return {x, y, x, y};
            case 1:
                return {x, y, x + number(size), y};
            case 2:
                return {};
            case 3:
                return random() % 20 == 0 ? ABox::everything() : ABox{x, y, x, y + number(size)};
            default:
                return {x, y, x + number(size), y + number(size)};
        }
    }
};

}  // namespace

TEST(BoxTree, WithoutBoxesFindsNothing) {
    EXPECT_EQ(found(ABoxTree(), ABox::everything()), Numbers());
    EXPECT_EQ(found(ABoxTree(std::vector<ABox>()), ABox::everything()), Numbers());
    EXPECT_TRUE(ABoxTree().bounds().isEmpty());
}

TEST(BoxTree, CountsEdges) {
    const ABoxTree tree({{0, 0, 1, 1}, {2, 0, 3, 1}, {5, 5, 5, 5}});
    EXPECT_EQ(found(tree, {1, 1, 2, 2}), (Numbers{0, 1}));
    EXPECT_EQ(found(tree, {5, 5, 5, 5}), (Numbers{2}));
    EXPECT_EQ(found(tree, {3.5F, 0, 4, 9}), Numbers());
    EXPECT_EQ(tree.bounds(), (ABox{0, 0, 5, 5}));
}

TEST(BoxTree, NeverFindsAnEmptyBox) {
    const ABoxTree tree({ABox(), {0, 0, 1, 1}, ABox()});
    EXPECT_EQ(found(tree, ABox::everything()), (Numbers{1}));
    EXPECT_EQ(found(tree, ABox()), Numbers());
}

TEST(BoxTree, FindsWhatALoopOverAllBoxesFinds) {
    for (unsigned seed = 1; seed <= 60; ++seed) {
        RandomBoxes make(seed);
        const int page = seed % 3 == 0 ? 10 : 1000;
        std::vector<ABox> boxes(make.random() % (seed % 10 == 0 ? 5000 : 300));
        for (ABox& box : boxes) box = make.box(page, seed % 2 == 0 ? page : 20);
        const ABoxTree tree(boxes);
        for (int i = 0; i < 50; ++i) {
            const ABox area = make.box(page, i % 2 == 0 ? 5 : page);
            ASSERT_EQ(found(tree, area), touching(boxes, area)) << "seed " << seed << ", area " << i;
        }
        ASSERT_EQ(found(tree, ABox::everything()), touching(boxes, ABox::everything()));
    }
}

TEST(BoxTree, TakesFewBytesForABox) {
    RandomBoxes make(5);
    std::vector<ABox> boxes(10'000);
    for (ABox& box : boxes) box = {make.number(9), make.number(9), 10, 10};
    EXPECT_LT(ABoxTree(boxes).bytes(), 23 * boxes.size());
}

TEST(Box, OfFloatsLiesAroundTheRectangle) {
    const AFRect rect{0.1, -0.1, 1.0 / 3, 1e-50};
    const ABox box = ABox::around(rect);
    EXPECT_LE(static_cast<double>(box.left), rect.left);
    EXPECT_LE(static_cast<double>(box.top), rect.top);
    EXPECT_GE(static_cast<double>(box.right), rect.right);
    EXPECT_GE(static_cast<double>(box.bottom), rect.bottom);
    EXPECT_NEAR(static_cast<double>(box.left), rect.left, 1e-7);
    EXPECT_EQ(ABox::around({1, 2, 3, 4}), (ABox{1, 2, 3, 4}));
}

TEST(Box, OfWhatIsNoNumberIsEverything) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(ABox::around({nan, nan, nan, nan}), ABox::everything());
    EXPECT_EQ(ABox::around({-HUGE_VAL, -1e300, HUGE_VAL, 1e300}), ABox::everything());
}
