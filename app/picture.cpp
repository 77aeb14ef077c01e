#include "app/picture.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "app/output.h"
#include "app/session.h"
#include "canvas/image.h"
#include "formats/svg/values/color.h"
#include "kzcore/display/tiled_picture.h"
#include "kzcore/view/view_display.h"
#include "kzutil/rect_math.h"

namespace app {

namespace {

// Large squares cut few objects in two, and still keep all cores busy.
constexpr int kTileSide = 512;

std::string textOf(PictureSize size) {
    return std::to_string(size.width) + 'x' + std::to_string(size.height);
}

int takeSide(const std::string& text, std::string_view digits) {
    int side = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), side);
    const bool isNumber = !digits.empty() && end == digits.data() + digits.size() && digits.front() != '-';
    if (!isNumber && error != std::errc::result_out_of_range)
        throw Failure{inQuotes(text) + " is no size: it is WIDTHxHEIGHT or WIDTH, in pixels"};
    if (error != std::errc() || side > kLongestPictureSide)
        throw Failure{inQuotes(text) + " is too large: a side has at most " +
                      std::to_string(kLongestPictureSide) + " pixels"};
    if (side == 0) throw Failure{inQuotes(text) + " is no size: a side has at least one pixel"};
    return side;
}

bool hasExtent(const AFRect& rect) {
    return std::isfinite(rect.Width()) && std::isfinite(rect.Height()) && rect.Width() > 0 &&
           rect.Height() > 0;
}

// Both sides, of what was asked for and of the area's proportions; else the area, with so many pixels to a
// unit.
PictureSize wholeSize(PictureSize size, const AFRect& area, double scale) {
    const auto side = [](double length) { return std::max(1.0, std::round(length)); };
    const double width = size.width != 0 ? size.width : side(area.Width() * scale);
    const double height = size.height != 0  ? size.height
                          : size.width != 0 ? side(area.Height() / area.Width() * width)
                                            : side(area.Height() * scale);
    if (width > kLongestPictureSide || height > kLongestPictureSide) {
        throw Failure{"the page makes a picture with a side of more than " +
                      std::to_string(kLongestPictureSide) + " pixels: give a size"};
    }
    const PictureSize whole{static_cast<int>(width), static_cast<int>(height)};
    if (width * height > static_cast<double>(AImage::kMostPixels)) {
        throw Failure{"a picture of " + textOf(whole) + " is too large: it has at most " +
                      std::to_string(AImage::kMostPixels) + " pixels"};
    }
    return whole;
}

// `byWidth`: the height was chosen for the width, rounded; the drawing is not made smaller for that.
AAffine fit(const AFRect& area, PictureSize size, bool byWidth) {
    const double across = size.width / area.Width();
    const double scale = byWidth ? across : std::min(across, size.height / area.Height());
    const double left = (size.width - area.Width() * scale) / 2;
    const double top = (size.height - area.Height() * scale) / 2;
    return {scale, 0, 0, scale, left - area.left * scale, top - area.top * scale};
}

// Empties what lies beside the whole pixels that the area touches.
void emptyBeside(AImage& image, const AFRect& area, const AAffine& toPixels, std::uint32_t ground) {
    const AFPoint from = toPixels.apply({area.left, area.top});
    const AFPoint to = toPixels.apply({area.right, area.bottom});
    constexpr double kRounding = 1e-6;
    const auto pixel = [](double edge, int longest) {
        return static_cast<int>(std::clamp(edge, 0.0, static_cast<double>(longest)));
    };
    const int left = pixel(std::floor(from.x + kRounding), image.width());
    const int right = pixel(std::ceil(to.x - kRounding), image.width());
    const int top = pixel(std::floor(from.y + kRounding), image.height());
    const int bottom = pixel(std::ceil(to.y - kRounding), image.height());
    for (int y = 0; y < image.height(); ++y) {
        std::uint32_t* const row = image.row(y);
        const bool beside = y < top || y >= bottom;
        std::fill(row, row + (beside ? image.width() : left), ground);
        std::fill(row + right, row + image.width(), ground);
    }
}

double takeNumber(const std::string& text, std::string_view& rest) {
    double value = 0;
    const auto [end, error] = std::from_chars(rest.data(), rest.data() + rest.size(), value);
    if (error != std::errc() || !std::isfinite(value))
        throw Failure{inQuotes(text) + " is no area: it is X,Y,WIDTH,HEIGHT, in user units"};
    rest.remove_prefix(static_cast<std::size_t>(end - rest.data()));
    return value;
}

}  // namespace

AFRect shownArea(ADocument& document) {
    if (hasExtent(document.getPage())) return document.getPage();
    AFRect area, master;
    document.getDatabase().getBoundingRect(area);
    document.getSecondaryDatabase()->getBoundingRect(master);
    if (!hasExtent(area)) area = master;
    if (hasExtent(master)) area = unionOf(area, master);
    if (!hasExtent(area)) throw Failure{"there is nothing to make a picture of: the page has no extent"};
    return area;
}

PictureSize readPictureSize(const std::string& text) {
    const std::string_view whole = text;
    const std::size_t cross = whole.find('x');
    PictureSize size;
    size.width = takeSide(text, whole.substr(0, cross));
    if (cross != whole.npos) size.height = takeSide(text, whole.substr(cross + 1));
    return size;
}

AFRect readPictureArea(const std::string& text) {
    std::string_view rest = text;
    double numbers[4];
    for (double& number : numbers) {
        number = takeNumber(text, rest);
        const bool isLast = &number == std::end(numbers) - 1;
        if (isLast != rest.empty() || (!isLast && rest.front() != ','))
            throw Failure{inQuotes(text) + " is no area: it is X,Y,WIDTH,HEIGHT, in user units"};
        if (!isLast) rest.remove_prefix(1);
    }
    const AFRect area{numbers[0], numbers[1], numbers[0] + numbers[2], numbers[1] + numbers[3]};
    if (!hasExtent(area)) throw Failure{inQuotes(text) + " is no area: its width and height are above 0"};
    return area;
}

std::uint32_t readGround(const std::string& text) {
    if (text == "none") return 0;
    std::string_view rest = text;
    std::uint32_t rgb = 0;
    std::uint8_t alpha = 255;
    if (!svg::takeColor(rest, rgb, &alpha) || !rest.empty())
        throw Failure{inQuotes(text) + " is no background: it is none or a color, as #ffffff or white"};
    const auto premultiplied = [&](int shift) { return ((rgb >> shift & 255) * alpha + 127) / 255 << shift; };
    return std::uint32_t{alpha} << 24 | premultiplied(16) | premultiplied(8) | premultiplied(0);
}

std::string drawPng(const ADocView& view, const PictureOptions& options) {
    ADocument& document = *view.getDocument();
    const AFRect area = options.part ? *options.part : shownArea(document);
    const PictureSize size = wholeSize(options.size, area, document.getPageScale());
    const AAffine toPixels = fit(area, size, options.size.width != 0 && options.size.height == 0);
    AViewDisplay display(view);
    AImage image = drawTiled(*display.list(), *display.shown(), toPixels, size.width, size.height, kTileSide,
                             0, options.ground);
    emptyBeside(image, area, toPixels, options.ground);
    return encodePng(image);
}

}  // namespace app
