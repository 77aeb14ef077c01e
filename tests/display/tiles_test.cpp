#include "kzcore/display/tiles.h"

#include <algorithm>
#include <random>

#include "display/pictures.h"

namespace display_test {
namespace {

std::string manyObjects() {
    std::string body;
    std::mt19937 random(3);
    for (int i = 0; i < 120; ++i) {
        const std::string x = std::to_string(random() % 190);
        const std::string y = std::to_string(random() % 90);
        const std::string color = random() % 2 == 0 ? "red" : "blue";
        body += "<circle cx='" + x + "' cy='" + y + "' r='" + std::to_string(1 + random() % 30) + "' fill='" +
                color + "' stroke='black' opacity='.7'/>";
    }
    return svg_test::drawing(body);
}

// What the tiles show once they are all there.
AImage shownBy(ATiles& tiles, double zoom, const RECT& area) {
    tiles.want(zoom, area);
    tiles.finish();
    AImage image;
    EXPECT_TRUE(tiles.show(zoom, area, image));
    return image;
}

std::shared_ptr<const AShownPaint> everything() {
    return std::make_shared<AShownPaint>();
}

std::shared_ptr<const AShownPaint> without(const Shown& shown, std::set<std::string> colors) {
    RefusingFilter filter(std::move(colors));
    return std::make_shared<AShownPaint>(*shown.list,
                                         [&](AReferItem* item) { return filter.isVisible(item) != 0; });
}

AImage part(const AImage& whole, const RECT& area) {
    AImage image(static_cast<int>(area.right - area.left), static_cast<int>(area.bottom - area.top));
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            image.at(x, y) = whole.at(static_cast<int>(area.left) + x, static_cast<int>(area.top) + y);
    }
    return image;
}

}  // namespace

TEST(Tiles, EqualTheWholePictureByteForByte) {
    const Shown shown(manyObjects());
    std::mt19937 random(5);
    for (int i = 0; i < 10; ++i) {
        const int side = 16 << random() % 4;
        const double zoom = 0.5 + static_cast<double>(random() % 100) / 40;
        const int width = static_cast<int>(200 * zoom);
        const int height = static_cast<int>(100 * zoom);
        const AImage whole =
            drawTiled(*shown.list, AShownPaint(), AAffine::scaling(zoom), width, height, side, 1);
        ATiles tiles(shown.list, everything(), {side, std::size_t{64} << 20, 2, {}});
        const LONG left = static_cast<LONG>(random() % static_cast<unsigned>(width - 1));
        const LONG top = static_cast<LONG>(random() % static_cast<unsigned>(height - 1));
        const RECT area{left, top, std::min<LONG>(width, left + 1 + static_cast<LONG>(random() % 150)),
                        std::min<LONG>(height, top + 1 + static_cast<LONG>(random() % 150))};
        ASSERT_EQ(shownBy(tiles, zoom, area).pixels(), part(whole, area).pixels()) << i;
    }
}

// An outline's coverage may be rounded otherwise where it is cut.
TEST(Tiles, LookLikeTheDrawingDrawnInOne) {
    const Shown shown(manyObjects());
    const AImage whole = shown.drawnFromList(AAffine());
    const AImage tiled = drawTiled(*shown.list, AShownPaint(), AAffine(), 200, 100, 32, 2);
    EXPECT_EQ(differentPixels(whole, tiled, 12), 0U);
}

TEST(Tiles, AreTheSameWhoeverDrawsThem) {
    const Shown shown(manyObjects());
    const AImage one = drawTiled(*shown.list, AShownPaint(), AAffine::scaling(2), 400, 200, 64, 1);
    EXPECT_EQ(drawTiled(*shown.list, AShownPaint(), AAffine::scaling(2), 400, 200, 64, 4).pixels(),
              one.pixels());
}

TEST(Tiles, AfterChangesOfTheFilterEqualThoseOfAFreshView) {
    const Shown shown(manyObjects());
    ATiles tiles(shown.list, everything(), {32, std::size_t{64} << 20, 2, {}});
    const RECT area{0, 0, 200, 100};
    std::mt19937 random(8);
    for (int i = 0; i < 12; ++i) {
        std::set<std::string> colors;
        for (const char* const color : {"red", "blue", "black"}) {
            if (random() % 2 == 0) colors.insert(color);
        }
        // Sometimes while tiles are being drawn.
        if (random() % 2 == 0) tiles.want(1, area);
        const auto paint = without(shown, colors);
        tiles.setShown(paint);
        ATiles fresh(shown.list, paint, {32, std::size_t{64} << 20, 1, {}});
        ASSERT_EQ(shownBy(tiles, 1, area).pixels(), shownBy(fresh, 1, area).pixels()) << i;
    }
}

TEST(Tiles, ThatAChangeDoesNotTouchAreKept) {
    const Shown shown(
        svg_test::drawing("<rect x='5' y='5' width='20' height='20' fill='red'/>"
                          "<rect x='150' y='5' width='20' height='20' fill='blue'/>"));
    ATiles tiles(shown.list, everything(), {50, std::size_t{64} << 20, 2, {}});
    const RECT area{0, 0, 200, 100};
    shownBy(tiles, 1, area);
    EXPECT_EQ(tiles.drawnCount(), 8U);
    tiles.setShown(without(shown, {"red"}));
    shownBy(tiles, 1, area);
    EXPECT_EQ(tiles.drawnCount(), 9U);
}

TEST(Tiles, OfAnotherZoomStandInUntilTheirOwnAreThere) {
    const Shown shown(svg_test::drawing("<rect width='200' height='100' fill='red'/>"));
    ATiles tiles(shown.list, everything(), {64, std::size_t{64} << 20, 1, {}});
    shownBy(tiles, 1, {0, 0, 200, 100});
    AImage image;
    EXPECT_FALSE(tiles.show(2, {0, 0, 100, 100}, image));
    EXPECT_EQ(image.at(50, 50), 0xffff0000U);
    EXPECT_FALSE(tiles.show(2, {2000, 0, 2100, 100}, image));
    EXPECT_EQ(image.at(50, 50), 0xffffffffU);
}

TEST(Tiles, StayWithinTheBudget) {
    const Shown shown(svg_test::drawing("<rect width='190' height='90'/><circle r='50' fill='red'/>"));
    constexpr std::size_t kBudget = 40 * 32 * 32 * 4;
    ATiles tiles(shown.list, everything(), {32, kBudget, 2, {}});
    std::mt19937 random(2);
    for (int i = 0; i < 10'000; ++i) {
        const LONG x = static_cast<LONG>(random() % 4000);
        const LONG y = static_cast<LONG>(random() % 2000);
        tiles.want(1.0 + static_cast<double>(random() % 3), {x, y, x + 150, y + 100});
        ASSERT_LE(tiles.bytes(), kBudget);
        if (i % 1000 == 0) tiles.finish();
    }
    tiles.finish();
    EXPECT_LE(tiles.bytes(), kBudget);
    EXPECT_GT(tiles.tileCount(), 0U);
}

TEST(Tiles, WantedAndNeverWaitedForLeaveNothingBehind) {
    const Shown shown(manyObjects());
    for (int i = 0; i < 30; ++i) {
        ATiles tiles(shown.list, everything(), {64, std::size_t{64} << 20, 3, {}});
        tiles.want(20, {0, 0, 4000, 2000});
        tiles.want(10, {0, 0, 2000, 1000});
        if (i % 3 == 0) tiles.setShown(without(shown, {"red"}));
        if (i % 2 == 0) tiles.want(1, {});
    }
    // The list is nobody's but ours again.
    EXPECT_EQ(shown.list.use_count(), 1);
}

TEST(Tiles, TellWhenOneIsThere) {
    const Shown shown(manyObjects());
    std::atomic<int> told{0};
    {
        ATiles tiles(shown.list, everything(), {64, std::size_t{64} << 20, 2, [&] { ++told; }});
        shownBy(tiles, 1, {0, 0, 200, 100});
        EXPECT_EQ(tiles.drawnCount(), 8U);
    }
    EXPECT_EQ(told, 8);
}

}  // namespace display_test
