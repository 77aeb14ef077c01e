#include "kzcore/display/hits.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <random>

#include "display/pictures.h"
#include "kzcore/document/object_walk.h"

namespace display_test {
namespace {

std::string nameOf(const AObject* object) {
    return object ? object->getName().toUtf8() : "nothing";
}

std::string topAt(const Shown& shown, double x, double y, double tolerance = 0) {
    return nameOf(AHits(*shown.list, shown.shown, AAffine()).topAt({x, y}, tolerance));
}

std::string names(const std::vector<const AObject*>& objects) {
    std::string text;
    for (const AObject* object : objects) text += nameOf(object) + ' ';
    return text;
}

// How much an object changes a pixel: its alpha, where the page has no ground.
int changeOf(std::uint32_t ground, std::uint32_t own) {
    int most = 0;
    for (int shift = 0; shift < 32; shift += 8) {
        const int change = static_cast<int>(own >> shift & 0xff) - static_cast<int>(ground >> shift & 0xff);
        most = std::max(most, std::abs(change));
    }
    return most;
}

// The picture of each object without children, drawn with every other one hidden; that of null is the page's.
std::map<const AObject*, AImage> ownPictures(const Shown& shown, const AAffine& toPixels) {
    std::map<const AObject*, AImage> pictures;
    ADocument& document = *shown.document;
    for (std::uint32_t i = 0; i <= document.getObjectCount(); ++i) {
        AObject* const object = i == 0 ? nullptr : document.getObject(i);
        if (object && object->asParent()) continue;
        AImage image(Shown::kWidth, Shown::kHeight);
        ACanvas canvas(pixelsOf(image));
        const std::unique_ptr<AObjectPainter> painter =
            document.getGeometrySource()->startPainting(canvas, toPixels);
        walkShown(&document.getDatabase(), *painter, [&](const AObject& one) {
            if (&one == object) painter->paint(one, {});
        });
        painter->finish();
        canvas.flush();
        pictures.emplace(object, std::move(image));
    }
    return pictures;
}

// At random pixels; how many objects were hit.
int hitAsTheirOwnPictures(const std::string& text, const AAffine& toPixels, int pixels,
                          std::mt19937& random) {
    int hit = 0;
    const Shown shown(text);
    const auto pictures = ownPictures(shown, toPixels);
    AHits hits(*shown.list, shown.shown, toPixels);
    for (int at = 0; at < pixels; ++at) {
        const int x = static_cast<int>(random() % Shown::kWidth);
        const int y = static_cast<int>(random() % Shown::kHeight);
        const std::vector<const AObject*> all = hits.allAt({x + 0.5, y + 0.5}, 0);
        EXPECT_EQ(hits.topAt({x + 0.5, y + 0.5}, 0), all.empty() ? nullptr : all.front());
        std::string expected;
        std::string found;
        for (std::uint32_t n = static_cast<std::uint32_t>(shown.list->objectCount()); n-- > 1;) {
            const AObject& object = shown.list->object(n);
            const auto own = pictures.find(&object);
            if (own == pictures.end()) continue;
            const int change = changeOf(pictures.at(nullptr).at(x, y), own->second.at(x, y));
            // The faintest edges may be rounded either way.
            if (change > 0 && change < 4) continue;
            const bool isFound = std::find(all.begin(), all.end(), &object) != all.end();
            if (change != 0) expected += nameOf(&object) + ' ';
            if (isFound) found += nameOf(&object) + ' ';
            hit += isFound ? 1 : 0;
        }
        EXPECT_EQ(found, expected) << text << "\nat " << x << ", " << y;
        if (testing::Test::HasFailure()) break;
    }
    return hit;
}

std::string textOf(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(stream), {});
}

}  // namespace

TEST(Hits, FindTheTopmostObject) {
    const Shown shown(
        svg_test::drawing("<rect id='low' width='50' height='50'/>"
                          "<rect id='high' x='20' y='20' width='50' height='50'/>"));
    EXPECT_EQ(topAt(shown, 10, 10), "low");
    EXPECT_EQ(topAt(shown, 30, 30), "high");
    EXPECT_EQ(topAt(shown, 90, 10), "nothing");
    EXPECT_EQ(names(AHits(*shown.list, shown.shown, AAffine()).allAt({30, 30}, 0)), "high low ");
}

TEST(Hits, GoThroughHolesAndWhatIsNotFilled) {
    const Shown shown(svg_test::drawing(
        "<path id='ring' fill-rule='evenodd' d='M0 0h50v50h-50zM20 20h10v10h-10z'/>"
        "<rect id='frame' x='60' y='10' width='40' height='40' fill='none' stroke='red' stroke-width='4'/>"));
    EXPECT_EQ(topAt(shown, 5, 5), "ring");
    EXPECT_EQ(topAt(shown, 25, 25), "nothing");
    EXPECT_EQ(topAt(shown, 80, 30), "nothing");
    EXPECT_EQ(topAt(shown, 61, 30), "frame");
}

TEST(Hits, ReachAsFarAsTheirTolerance) {
    const Shown shown(svg_test::drawing("<line id='line' x1='50' y1='0' x2='50' y2='90' stroke='red'/>"));
    EXPECT_EQ(topAt(shown, 53.5, 40, 0), "nothing");
    EXPECT_EQ(topAt(shown, 53.5, 40, 2), "nothing");
    EXPECT_EQ(topAt(shown, 53.5, 40, 3), "line");
}

TEST(Hits, AreCutByClipPaths) {
    const Shown shown(
        svg_test::drawing("<clipPath id='c'><rect width='20' height='20'/></clipPath>"
                          "<g clip-path='url(#c)'><rect id='r' width='90' height='90'/></g>"));
    EXPECT_EQ(topAt(shown, 10, 10), "r");
    EXPECT_EQ(topAt(shown, 30, 10), "nothing");
}

TEST(Hits, CountObjectsThatTheFormatDraws) {
    const Shown shown(svg_test::drawing(
        "<pattern id='p' width='20' height='20' patternUnits='userSpaceOnUse'><rect width='10' height='20'/>"
        "</pattern><rect id='striped' width='90' height='50' fill='url(#p)'/>"
        "<mask id='m'><rect width='150' height='20' fill='white'/></mask>"
        "<g mask='url(#m)'><rect id='masked' x='100' width='90' height='90'/></g>"));
    EXPECT_EQ(topAt(shown, 25, 25), "striped");
    EXPECT_EQ(topAt(shown, 35, 25), "nothing");
    EXPECT_EQ(topAt(shown, 120, 10), "masked");
    EXPECT_EQ(topAt(shown, 120, 60), "nothing");
}

TEST(Hits, GoThroughWhatAGradientLeavesOut) {
    const Shown shown(svg_test::drawing(
        "<radialGradient id='cone' cx='0.3' r='0.2' fx='0.8'><stop stop-color='red'/>"
        "<stop offset='1'/></radialGradient>"
        "<linearGradient id='fade'><stop offset='0.5' stop-opacity='0'/><stop offset='0.5'/></linearGradient>"
        "<rect id='light' width='100' height='100' fill='url(#cone)'/>"
        "<rect id='half' x='100' width='100' height='100' fill='url(#fade)'/>"));
    EXPECT_EQ(topAt(shown, 20, 50), "light");
    EXPECT_EQ(topAt(shown, 95, 50), "nothing");
    EXPECT_EQ(topAt(shown, 120, 50), "nothing");
    EXPECT_EQ(topAt(shown, 170, 50), "half");
}

TEST(Hits, FindWhatOnlyAFilterDraws) {
    const Shown shown(svg_test::drawing(
        "<filter id='f'><feFlood/></filter>"
        "<rect id='flood' x='50' y='20' width='50' height='50' fill='none' filter='url(#f)'/>"));
    EXPECT_EQ(topAt(shown, 75, 45), "flood");
    EXPECT_EQ(topAt(shown, 20, 45), "nothing");
}

TEST(Hits, FindWhatAFilterHidesOnlyOnRequest) {
    const Shown shown(svg_test::drawing("<rect id='blue' width='50' height='50' fill='blue'/>"
                                        "<rect id='red' width='50' height='50' fill='red'/>"),
                      new RefusingFilter({"red"}));
    EXPECT_EQ(topAt(shown, 10, 10), "blue");
    EXPECT_EQ(nameOf(AHits(*shown.list, AShownPaint(), AAffine()).topAt({10, 10}, 0)), "red");
}

TEST(Hits, TellWhatLiesInARectangleFromWhatTouchesIt) {
    const Shown shown(
        svg_test::drawing("<rect id='in' x='10' y='10' width='10' height='10'/>"
                          "<rect id='across' x='40' y='10' width='40' height='10'/>"
                          "<path id='around' d='M0 0h90v90h-90z' fill='none' stroke='red'/>"
                          "<circle id='beside' cx='70' cy='70' r='28'/>"));
    AHits hits(*shown.list, shown.shown, AAffine());
    EXPECT_EQ(names(hits.inside({5, 5, 50, 50})), "in ");
    EXPECT_EQ(names(hits.touching({5, 5, 50, 50})), "in across ");
    EXPECT_EQ(names(hits.inside({-5, -5, 200, 200})), "in across around beside ");
    EXPECT_EQ(names(hits.touching({190, 80, 200, 100})), "");
}

TEST(Hits, OfRandomDrawingsAreTheObjectsWhoseOwnPicturesCoverThePixel) {
    std::mt19937 random(7);
    int hit = 0;
    for (int i = 0; i < 25 && !HasFailure(); ++i) {
        const std::string text = svg_test::randomDrawing(random);
        const double scale = 0.5 + static_cast<double>(random() % 100) / 40;
        hit += hitAsTheirOwnPictures(text, {scale, 0, 0, scale, 2.5, -3}, 30, random);
    }
    EXPECT_GT(hit, 50);
}

TEST(Hits, OfGoldenDrawingsAreTheObjectsWhoseOwnPicturesCoverThePixel) {
    std::mt19937 random(9);
    int hit = 0;
    for (const auto& folder : std::filesystem::directory_iterator(KZ_GOLDEN)) {
        if (folder.is_directory())
            hit += hitAsTheirOwnPictures(textOf(folder.path() / "drawing.svg"), AAffine(), 60, random);
    }
    EXPECT_GT(hit, 50);
}

}  // namespace display_test
