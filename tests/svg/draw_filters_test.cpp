#include <string>

#include "svg/picture.h"

namespace svg_test {

namespace {

// A rectangle from 50, 30 to 90, 60 with a filter; its region is the whole page.
std::string filtered(const std::string& primitives, const std::string& fill = "red",
                     const std::string& colors = "sRGB") {
    return "<defs><filter id='f' filterUnits='userSpaceOnUse' x='0' y='0' width='200' height='100'"
           " color-interpolation-filters='" +
           colors + "'>" + primitives + "</filter></defs><rect x='50' y='30' width='40' height='30' fill='" +
           fill + "' filter='url(#f)'/>";
}

Picture drawFiltered(const std::string& primitives, const std::string& fill = "red") {
    return drawBody(filtered(primitives, fill));
}

Picture drawWithProperty(const std::string& property) {
    return drawBody("<rect x='50' y='30' width='40' height='30' fill='red' style='filter:" + property +
                    "'/>");
}

bool isBetween(std::uint32_t value, std::uint32_t low, std::uint32_t high) {
    return value >= low && value <= high;
}

std::string filteredBy(const std::string& primitives,
                       const std::string& shape = box("fill='lime' filter='url(#f)'"),
                       const std::string& attributes = "") {
    return "<filter id='f' color-interpolation-filters='sRGB' " + attributes + ">" + primitives +
           "</filter>" + shape;
}

}  // namespace

TEST(DrawFilters, ABlurIsSymmetricAndKeepsTheMiddle) {
    const Picture picture = drawFiltered("<feGaussianBlur stdDeviation='3'/>", "black");
    EXPECT_COLOR(picture, 70, 45, 0x000000);
    EXPECT_COLOR(picture, 20, 45, 0xffffff);
    // Half of it at the edge, the same on all sides.
    const std::uint32_t inside = picture.at(50, 45) & 0xff;
    EXPECT_TRUE(isBetween(inside, 100, 128)) << inside;
    EXPECT_TRUE(isBetween(picture.at(49, 45) & 0xff, 127, 155));
    EXPECT_TRUE(hasColor(picture, 89, 45, picture.at(50, 45)));
    EXPECT_TRUE(hasColor(picture, 70, 30, picture.at(50, 45)));
    EXPECT_TRUE(hasColor(picture, 70, 59, picture.at(50, 45)));
}

TEST(DrawFilters, ABlurCanBeOfOneDirection) {
    const Picture picture = drawFiltered("<feGaussianBlur stdDeviation='0 4'/>", "black");
    EXPECT_COLOR(picture, 49, 45, 0xffffff);
    EXPECT_COLOR(picture, 50, 45, 0x000000);
    EXPECT_TRUE(isBetween(picture.at(70, 29) & 0xff, 120, 160));
}

TEST(DrawFilters, ABlurGrowsWithTheDrawing) {
    const std::string blur =
        "<defs><filter id='f' x='-1' y='-1' width='3' height='3'>"
        "<feGaussianBlur stdDeviation='1'/></filter></defs>";
    const Picture large = drawBody(blur +
                                   "<g transform='scale(10)'><rect x='8' y='2' width='4' height='5'"
                                   " filter='url(#f)'/></g>");
    EXPECT_TRUE(isBetween(large.at(70, 45) & 0xff, 180, 235));
    EXPECT_TRUE(isBetween(large.at(90, 45) & 0xff, 20, 75));
}

TEST(DrawFilters, AShadowIsMadeOfTheAlpha) {
    const Picture picture = drawFiltered(
        "<feOffset in='SourceAlpha' dx='10' dy='10' result='s'/><feMerge><feMergeNode in='s'/>"
        "<feMergeNode in='SourceGraphic'/></feMerge>");
    EXPECT_COLOR(picture, 50, 30, 0xff0000);
    EXPECT_COLOR(picture, 89, 59, 0xff0000);
    EXPECT_COLOR(picture, 99, 69, 0x000000);
    EXPECT_COLOR(picture, 100, 69, 0xffffff);
    EXPECT_EQ(drawFiltered("<feDropShadow dx='10' dy='10' stdDeviation='0'/>"), picture);
}

TEST(DrawFilters, AFloodFillsItsSubregion) {
    const Picture picture =
        drawFiltered("<feFlood x='10' y='20' width='30' height='10' flood-color='lime' flood-opacity='.5'/>");
    EXPECT_TRUE(hasColor(picture, 10, 20, 0x80ff80));
    EXPECT_TRUE(hasColor(picture, 39, 29, 0x80ff80));
    EXPECT_COLOR(picture, 40, 29, 0xffffff);
    EXPECT_COLOR(picture, 70, 45, 0xffffff);
}

TEST(DrawFilters, NothingIsDrawnOutsideTheRegion) {
    const Picture picture = drawBody(
        "<defs><filter id='f'><feFlood flood-color='lime'/></filter></defs>"
        "<rect x='50' y='30' width='40' height='30' filter='url(#f)'/>");
    EXPECT_COLOR(picture, 46, 27, 0x00ff00);
    EXPECT_COLOR(picture, 93, 62, 0x00ff00);
    EXPECT_COLOR(picture, 45, 45, 0xffffff);
    EXPECT_COLOR(picture, 94, 45, 0xffffff);
}

TEST(DrawFilters, NumbersCanBePartsOfTheBox) {
    const Picture picture = drawBody(
        "<defs><filter id='f' primitiveUnits='objectBoundingBox'>"
        "<feFlood x='0' y='0' width='.5' height='1' flood-color='lime'/></filter></defs>"
        "<rect x='50' y='30' width='40' height='30' filter='url(#f)'/>");
    EXPECT_COLOR(picture, 50, 30, 0x00ff00);
    EXPECT_COLOR(picture, 69, 59, 0x00ff00);
    EXPECT_COLOR(picture, 70, 45, 0xffffff);
}

TEST(DrawFilters, BlendsMixAsTheirModesSay) {
    const auto blended = [](const std::string& mode) {
        return drawFiltered(
                   "<feFlood flood-color='#8040c0' result='a'/><feBlend in='a' in2='SourceGraphic'"
                   " mode='" +
                       mode + "'/>",
                   "#408080")
            .at(70, 45);
    };
    const auto isNear = [](std::uint32_t actual, std::uint32_t expected) {
        for (int shift = 0; shift <= 16; shift += 8) {
            if (std::abs(static_cast<int>(actual >> shift & 255) -
                         static_cast<int>(expected >> shift & 255)) > 2)
                return false;
        }
        return true;
    };
    EXPECT_TRUE(isNear(blended("normal"), 0x8040c0));
    EXPECT_TRUE(isNear(blended("multiply"), 0x202060)) << std::hex << blended("multiply");
    EXPECT_TRUE(isNear(blended("screen"), 0xa0a0e0)) << std::hex << blended("screen");
    EXPECT_TRUE(isNear(blended("darken"), 0x404080));
    EXPECT_TRUE(isNear(blended("lighten"), 0x8080c0));
    EXPECT_TRUE(isNear(blended("difference"), 0x404040));
    // The bottom with the luminosity of the top: 97.3 instead of 108.8.
    EXPECT_TRUE(isNear(blended("luminosity"), 0x347474)) << std::hex << blended("luminosity");
    EXPECT_TRUE(isNear(blended("plaid"), 0x8040c0));
}

TEST(DrawFilters, CompositesKeepWhatTheyAreNamedFor) {
    const auto composed = [](const std::string& attributes) {
        return drawFiltered(
            "<feFlood x='70' y='0' width='100' height='100' flood-color='lime' result='a'/>"
            "<feComposite in='a' in2='SourceGraphic' " +
            attributes + "/>");
    };
    const Picture over = composed("");
    EXPECT_COLOR(over, 60, 45, 0xff0000);
    EXPECT_COLOR(over, 80, 45, 0x00ff00);
    const Picture in = composed("operator='in'");
    EXPECT_COLOR(in, 60, 45, 0xffffff);
    EXPECT_COLOR(in, 80, 45, 0x00ff00);
    EXPECT_COLOR(in, 110, 45, 0xffffff);
    EXPECT_COLOR(composed("operator='out'"), 80, 45, 0xffffff);
    EXPECT_COLOR(composed("operator='out'"), 110, 45, 0x00ff00);
    EXPECT_COLOR(composed("operator='atop'"), 60, 45, 0xff0000);
    EXPECT_COLOR(composed("operator='xor'"), 80, 45, 0xffffff);
    EXPECT_COLOR(composed("operator='arithmetic' k2='1' k3='1'"), 80, 45, 0xffff00);
}

TEST(DrawFilters, ColorsChangeByMatrices) {
    EXPECT_COLOR(drawFiltered("<feColorMatrix values='0 0 1 0 0 1 0 0 0 0 0 1 0 0 0 0 0 0 1 0'/>"), 70, 45,
                 0x00ff00);
    EXPECT_TRUE(hasColor(drawFiltered("<feColorMatrix type='saturate' values='0'/>"), 70, 45, 0x363636));
    EXPECT_COLOR(drawFiltered("<feColorMatrix type='hueRotate' values='0'/>"), 70, 45, 0xff0000);
    EXPECT_COLOR(drawFiltered("<feColorMatrix type='luminanceToAlpha'/>", "white"), 70, 45, 0x000000);
    EXPECT_COLOR(drawFiltered("<feColorMatrix values='1 2 3'/>"), 70, 45, 0xff0000);
}

TEST(DrawFilters, ComponentsChangeByFunctions) {
    EXPECT_COLOR(drawFiltered("<feComponentTransfer><feFuncR type='table' tableValues='1 0'/>"
                              "<feFuncG type='linear' slope='0' intercept='1'/></feComponentTransfer>"),
                 70, 45, 0x00ff00);
    EXPECT_TRUE(hasColor(drawFiltered("<feComponentTransfer><feFuncR type='discrete' tableValues='0 .5'/>"
                                      "</feComponentTransfer>"),
                         70, 45, 0x800000));
    EXPECT_TRUE(hasColor(drawFiltered("<feComponentTransfer><feFuncR type='gamma' exponent='2'/>"
                                      "</feComponentTransfer>",
                                      "#800000"),
                         70, 45, 0x400000));
}

TEST(DrawFilters, LinearColorsAreMixedAsLight) {
    const std::string half =
        "<feFlood flood-color='white' result='w'/><feComposite in='w' in2='SourceGraphic'"
        " operator='arithmetic' k2='.5' k3='.5'/>";
    EXPECT_TRUE(hasColor(drawBody(filtered(half, "black")), 70, 45, 0x808080));
    EXPECT_TRUE(hasColor(drawBody(filtered(half, "black", "linearRGB")), 70, 45, 0xbcbcbc));
}

TEST(DrawFilters, MorphologyThickensAndThins) {
    const Picture thick = drawFiltered("<feMorphology operator='dilate' radius='5 2'/>");
    EXPECT_COLOR(thick, 45, 28, 0xff0000);
    EXPECT_COLOR(thick, 44, 45, 0xffffff);
    EXPECT_COLOR(thick, 70, 27, 0xffffff);
    const Picture thin = drawFiltered("<feMorphology radius='5'/>");
    EXPECT_COLOR(thin, 55, 35, 0xff0000);
    EXPECT_COLOR(thin, 54, 45, 0xffffff);
    EXPECT_COLOR(thin, 84, 54, 0xff0000);
    EXPECT_COLOR(thin, 85, 45, 0xffffff);
}

TEST(DrawFilters, ATileRepeatsItsInput) {
    const Picture picture = drawFiltered(
        "<feFlood x='10' y='10' width='5' height='10' flood-color='lime'/>"
        "<feOffset x='10' y='10' width='10' height='10'/><feTile/>");
    for (int x = 0; x < 200; x += 10) {
        EXPECT_COLOR(picture, x, 45, 0x00ff00);
        EXPECT_COLOR(picture, x + 5, 45, 0xffffff);
    }
}

TEST(DrawFilters, AMatrixLooksAtTheNeighbours) {
    // Each pixel becomes its left neighbour: the kernel is turned by half a turn.
    const Picture picture =
        drawFiltered("<feConvolveMatrix order='3' kernelMatrix='0 0 0 0 0 1 0 0 0' edgeMode='none'/>");
    EXPECT_COLOR(picture, 50, 45, 0xffffff);
    EXPECT_COLOR(picture, 51, 45, 0xff0000);
    EXPECT_COLOR(picture, 90, 45, 0xff0000);
    EXPECT_COLOR(picture, 91, 45, 0xffffff);
}

TEST(DrawFilters, ADisplacementTakesPixelsFromElsewhere) {
    const Picture picture = drawFiltered(
        "<feFlood flood-color='rgb(255,0,0)' result='m'/><feDisplacementMap in='SourceGraphic' in2='m'"
        " scale='20' xChannelSelector='R' yChannelSelector='A'/>");
    EXPECT_COLOR(picture, 41, 25, 0xff0000);
    EXPECT_COLOR(picture, 79, 49, 0xff0000);
    EXPECT_COLOR(picture, 85, 45, 0xffffff);
    EXPECT_COLOR(picture, 70, 55, 0xffffff);
}

TEST(DrawFilters, AFlatSurfaceIsLitEvenly) {
    const Picture picture = drawFiltered(
        "<feDiffuseLighting in='SourceAlpha' lighting-color='red'><feDistantLight elevation='90'/>"
        "</feDiffuseLighting>");
    EXPECT_COLOR(picture, 70, 45, 0xff0000);
    EXPECT_COLOR(picture, 10, 10, 0xff0000);
    const Picture slanted = drawFiltered(
        "<feDiffuseLighting in='SourceAlpha'><feDistantLight elevation='30'/></feDiffuseLighting>");
    EXPECT_TRUE(hasColor(slanted, 70, 45, 0x808080));
    // Light from the right: the right edge of the raised rectangle is brighter than the left one.
    EXPECT_GT(slanted.at(90, 45) & 0xff, slanted.at(49, 45) & 0xff);
}

TEST(DrawFilters, ResultsGoByNameAndElseByOrder) {
    const Picture picture = drawFiltered(
        "<feFlood flood-color='lime' result='g'/><feFlood flood-color='blue'/><feOffset in='g'/>");
    EXPECT_COLOR(picture, 70, 45, 0x00ff00);
    EXPECT_COLOR(drawFiltered("<feFlood flood-color='lime'/><feOffset in='nowhere'/>"), 70, 45, 0x00ff00);
    // What lies below is not at hand: the element stands for it.
    EXPECT_COLOR(drawFiltered("<feOffset in='BackgroundImage'/>"), 70, 45, 0xff0000);
}

TEST(DrawFilters, AFilterWithoutStepsShowsNothingAndAMissingOneEverything) {
    EXPECT_COLOR(drawFiltered(""), 70, 45, 0xffffff);
    EXPECT_COLOR(drawWithProperty("url(#missing)"), 70, 45, 0xff0000);
    EXPECT_COLOR(drawWithProperty("nonsense(3)"), 70, 45, 0xff0000);
    EXPECT_COLOR(drawWithProperty("none"), 70, 45, 0xff0000);
}

TEST(DrawFilters, FunctionsAreFiltersToo) {
    EXPECT_COLOR(drawWithProperty("grayscale(0)"), 70, 45, 0xff0000);
    EXPECT_TRUE(hasColor(drawWithProperty("grayscale(100%)"), 70, 45, 0x363636));
    EXPECT_COLOR(drawWithProperty("invert(1)"), 70, 45, 0x00ffff);
    EXPECT_TRUE(hasColor(drawWithProperty("opacity(.5)"), 70, 45, 0xff8080));
    EXPECT_TRUE(hasColor(drawWithProperty("brightness(50%)"), 70, 45, 0x800000));
    EXPECT_TRUE(hasColor(drawWithProperty("contrast(0)"), 70, 45, 0x808080));
    EXPECT_TRUE(hasColor(drawWithProperty("sepia(1)"), 70, 45, 0x645945));
    EXPECT_COLOR(drawWithProperty("drop-shadow(10px 10px blue)"), 99, 69, 0x0000ff);
    EXPECT_COLOR(drawWithProperty("drop-shadow(10px 10px blue) invert(1)"), 99, 69, 0xffff00);
    EXPECT_TRUE(isBetween(drawWithProperty("blur(3px)").at(49, 45) & 0xff, 120, 160));
    EXPECT_COLOR(drawWithProperty("hue-rotate(360deg) saturate(1)"), 70, 45, 0xff0000);
}

TEST(DrawFilters, AnElementOutsideThePageCanShowWithinIt) {
    const Picture picture = drawBody(
        "<defs><filter id='f' filterUnits='userSpaceOnUse' x='-400' y='0' width='600' height='100'>"
        "<feOffset dx='150'/></filter></defs><rect x='-100' y='30' width='40' height='30' fill='red'"
        " filter='url(#f)'/>");
    EXPECT_COLOR(picture, 51, 45, 0xff0000);
    EXPECT_COLOR(picture, 89, 45, 0xff0000);
    EXPECT_COLOR(picture, 91, 45, 0xffffff);
}

TEST(DrawFilters, HostileNumbersAreBounded) {
    const char* const primitives[] = {
        "<feGaussianBlur stdDeviation='N N'/>",
        "<feOffset dx='N' dy='-N'/>",
        "<feFlood x='N' y='N' width='N' height='N'/>",
        "<feMorphology operator='dilate' radius='N'/>",
        "<feMorphology radius='N 1'/>",
        "<feColorMatrix type='hueRotate' values='N'/>",
        "<feColorMatrix values='N N N N N N N N N N N N N N N N N N N N'/>",
        "<feComponentTransfer><feFuncR type='gamma' amplitude='N' exponent='-N' offset='N'/>"
        "<feFuncA type='table' tableValues='N -N N'/></feComponentTransfer>",
        "<feComposite operator='arithmetic' k1='N' k2='N' k3='-N' k4='N' in2='SourceGraphic'/>",
        "<feConvolveMatrix order='N' kernelMatrix='N'/>",
        "<feConvolveMatrix order='1' kernelMatrix='N' divisor='N' bias='N' targetX='N'/>",
        "<feDisplacementMap in2='SourceGraphic' scale='N'/>",
        "<feTurbulence baseFrequency='N' numOctaves='N' seed='N' stitchTiles='stitch'/>",
        "<feTurbulence baseFrequency='.1' numOctaves='N' seed='-N'/>",
        "<feDiffuseLighting surfaceScale='N' diffuseConstant='N'><feDistantLight azimuth='N' elevation='N'/>"
        "</feDiffuseLighting>",
        "<feSpecularLighting surfaceScale='N' specularExponent='N'><feSpotLight x='N' y='N' z='N'"
        " pointsAtX='N' limitingConeAngle='N' specularExponent='N'/></feSpecularLighting>",
        "<feTile x='N' width='N'/>",
        "<feFlood x='-N' width='N'/><feTile/>",
    };
    for (const char* number : {"1e30", "-1e30", "1e-30", "0", "nan", "1e308", "2147483648"}) {
        for (std::string primitive : primitives) {
            for (std::size_t at = primitive.find('N'); at != primitive.npos; at = primitive.find('N', at)) {
                primitive.replace(at, 1, number);
                at += std::string(number).size();
            }
            const Picture picture =
                drawBody(filtered(primitive) + "<rect x='190' y='90' width='10' height='10' fill='red'/>");
            EXPECT_COLOR(picture, 195, 95, 0xff0000) << primitive;
        }
    }
}

TEST(DrawFilters, ManyStepsAreBounded) {
    std::string steps;
    for (int i = 0; i < 2000; ++i)
        steps += "<feOffset dx='1' result='r" + std::to_string(i) + "' in='SourceGraphic'/>";
    EXPECT_COLOR(drawFiltered(steps), 52, 45, 0xff0000);
    std::string property;
    for (int i = 0; i < 200; ++i) property += "blur(1px) ";
    EXPECT_COLOR(drawWithProperty(property), 70, 45, 0xff0000);
}

TEST(DrawFilters, AFloodFillsWhatHasNoPaint) {
    const Picture picture =
        drawBody(filteredBy("<feFlood flood-color='red'/>", box("fill='none' filter='url(#f)'")));
    EXPECT_COLOR(picture, 50, 50, kRed);
}

TEST(DrawFilters, AStepWithoutARegionFillsThatOfItsInputs) {
    const Picture picture = drawBody(filteredBy(
        "<feFlood x='20' y='10' width='10' height='20' flood-color='red'/><feOffset dx='5'/><feTile/>"));
    EXPECT_COLOR(picture, 22, 15, kWhite);
    EXPECT_COLOR(picture, 27, 15, kRed);
    EXPECT_COLOR(picture, 32, 15, kWhite);
    EXPECT_COLOR(picture, 107, 75, kRed);
}

TEST(DrawFilters, NumbersWithSomethingBehindThemAreNone) {
    const auto at = [](const std::string& primitive, int x) {
        const Picture picture = drawBody(filteredBy(primitive));
        return picture.at(x, 50);
    };
    EXPECT_EQ(at("<feOffset dx='50%'/>", 22), kLime);
    EXPECT_EQ(at("<feGaussianBlur stdDeviation='9 9 9'/>", 118), kLime);
    EXPECT_EQ(at("<feColorMatrix type='saturate' values='0 0'/>", 50), kLime);
    EXPECT_EQ(at("<feComponentTransfer><feFuncG type='linear' slope='0foo'/></feComponentTransfer>", 50),
              kLime);
    EXPECT_EQ(at("<feComponentTransfer><feFuncG type='table' tableValues='0 x'/></feComponentTransfer>", 50),
              kLime);
}

TEST(DrawFilters, BrokenStepsShowNothing) {
    for (const char* const primitive :
         {"<feConvolveMatrix kernelMatrix='1 2'/>",
          "<feConvolveMatrix kernelMatrix='0 0 0 0 1 0 0 0 0' targetX='3'/>", "<feDiffuseLighting/>",
          "<feTurbulence baseFrequency='-1'/>", "<feFlood width='-5' flood-color='red'/>"}) {
        EXPECT_COLOR(drawBody(filteredBy(primitive)), 50, 50, kWhite) << primitive;
    }
}

TEST(DrawFilters, PaintsAndBackgroundsAreTheElementItself) {
    for (const char* const input : {"FillPaint", "StrokePaint", "BackgroundImage"})
        EXPECT_COLOR(drawBody(filteredBy("<feOffset in='" + std::string(input) + "'/>")), 50, 50, kLime);
}

TEST(DrawFilters, OneThatIsNotThereIsLeftOut) {
    EXPECT_COLOR(drawBody(filteredBy("<feFlood flood-color='red'/>", box("filter='url(#no) url(#f)'"))), 50,
                 50, kRed);
    EXPECT_COLOR(drawBody(box("fill='red' filter='url(#no)'")), 50, 50, kRed);
}

TEST(DrawFilters, FunctionsAskForUnits) {
    EXPECT_COLOR(drawBody(box("fill='red' filter='hue-rotate(90)'")), 50, 50, kRed);
    EXPECT_COLOR(drawBody(box("fill='red' filter='blur(9)'")), 119, 50, kRed);
}

TEST(DrawFilters, WorkAlongTheAxesOfATurnedElement) {
    // Sixteen pixels down the element are sixteen to the left in the picture.
    const Picture picture = drawBody(filteredBy("<feOffset dy='16'/>",
                                                "<rect width='40' height='40' fill='red' filter='url(#f)' "
                                                "transform='translate(100,20) rotate(90)'/>",
                                                "x='-1' y='-1' width='3' height='3'"));
    EXPECT_COLOR(picture, 92, 40, kWhite);
    EXPECT_COLOR(picture, 50, 40, kRed);
    // A flood fills the turned region, not the box around it.
    const Picture flood = drawBody(filteredBy("<feFlood flood-color='red'/>",
                                              "<rect x='-30' y='-30' width='60' height='60' filter='url(#f)' "
                                              "transform='translate(100,50) rotate(45)'/>",
                                              "x='0' y='0' width='1' height='1'"));
    EXPECT_COLOR(flood, 100, 50, kRed);
    EXPECT_COLOR(flood, 74, 24, kWhite);
}

TEST(DrawFilters, ElementsFillFilterSteps) {
    const Picture picture = drawBody("<defs><rect id='e' width='30' height='30' fill='red'/></defs>" +
                                     filteredBy("<feImage x='40' y='30' href='#e'/>"));
    EXPECT_COLOR(picture, 50, 50, kRed);
    EXPECT_COLOR(picture, 30, 50, kWhite);
    // One that shows itself shows nothing.
    EXPECT_COLOR(
        drawBody(filteredBy("<feImage href='#self'/>", box("id='self' fill='red' filter='url(#f)'"))), 190, 5,
        kWhite);
}

}  // namespace svg_test
