#include "app/picture.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "app/output.h"
#include "app/session.h"
#include "canvas/image.h"
#include "kzcore/device/device.h"
#include "kzcore/device/pixel_section.h"
#include "kzcore/view/view.h"
#include "kzutil/rect_math.h"

namespace app {

namespace {

// Pixels that belong to the device, so that the view is drawn right into them.
class PictureDevice : public ADevice {
public:
    explicit PictureDevice(APixelSection& section)
        : ADevice(section.getContext(), AScreenInfo(1.0)), m_section(section) {}
    ~PictureDevice() override { closeCanvas(); }

private:
    APixelSection* getSection() override { return &m_section; }

    APixelSection& m_section;
};

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

// What the picture shows, in user units.
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

AAffine fit(const AFRect& area, PictureSize size) {
    const double scale = std::min(size.width / area.Width(), size.height / area.Height());
    const double left = (size.width - area.Width() * scale) / 2;
    const double top = (size.height - area.Height() * scale) / 2;
    return {scale, 0, 0, scale, left - area.left * scale, top - area.top * scale};
}

// The whole pixels that the area touches: beside the page, the picture stays empty.
APath pixelsOfArea(const AFRect& area, const AAffine& toPixels, PictureSize size) {
    const AFPoint from = toPixels.apply({area.left, area.top});
    const AFPoint to = toPixels.apply({area.right, area.bottom});
    constexpr double kRounding = 1e-6;
    const auto within = [](double edge, int longest) {
        return std::clamp(edge, 0.0, static_cast<double>(longest));
    };
    return APath::rectangle({within(std::floor(from.x + kRounding), size.width),
                             within(std::floor(from.y + kRounding), size.height),
                             within(std::ceil(to.x - kRounding), size.width),
                             within(std::ceil(to.y - kRounding), size.height)});
}

AImage imageOf(const APixels& pixels) {
    AImage image(pixels.width, pixels.height);
    constexpr std::uint32_t kOpaque = 0xff000000;
    const auto* from = static_cast<const std::uint32_t*>(pixels.bits);
    std::ranges::transform(from, from + image.pixels().size(), image.pixels().begin(),
                           [](std::uint32_t pixel) { return pixel | kOpaque; });
    return image;
}

}  // namespace

PictureSize readPictureSize(const std::string& text) {
    const std::string_view whole = text;
    const std::size_t cross = whole.find('x');
    PictureSize size;
    size.width = takeSide(text, whole.substr(0, cross));
    if (cross != whole.npos) size.height = takeSide(text, whole.substr(cross + 1));
    return size;
}

std::string drawPng(const ADocView& view, PictureSize size) {
    ADocument& document = *view.getDocument();
    const AFRect area = shownArea(document);
    size = wholeSize(size, area, document.getPageScale());
    const AAffine toPixels = fit(area, size);
    APixelSection section(size.width, size.height);
    if (!section.isValid()) throw std::bad_alloc();
    PictureDevice device(section);
    device.Fill(AColor(RGB(255, 255, 255)));
    device.DrawStart();
    device.canvas().pushClip(pixelsOfArea(area, toPixels, size), AAffine(), EFillRule::nonZero);
    view.draw(device, toPixels);
    device.canvas().popClip();
    device.DrawEnd();
    return encodePng(imageOf(section.getPixels()));
}

}  // namespace app
