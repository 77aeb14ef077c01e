// An SVG drawing in a data URI is drawn from the budgets of the picture that it stands in; one within such a drawing
// is not drawn.
#include "formats/svg/draw/images.h"

#include <algorithm>
#include <list>
#include <memory>

#include "formats/svg/draw/context/pixel_area.h"
#include "formats/svg/draw/inner_drawing.h"
#include "formats/svg/values/base64.h"
#include "formats/svg/values/text_scan.h"

namespace svg {

namespace {

constexpr std::size_t kMostImageBytes = std::size_t{1} << 28;
constexpr double kLeastScale = 1e-9;
// To be read, and to be shown smaller, every pixel has to be looked at.
constexpr double kStepsForPixel = 0.25;

struct Picture {
    AImage image;
    std::unique_ptr<InnerDrawing> drawing;  // instead of the image
};

// Decoded pictures, the last used one first. A data URI is found by its address: attributes stay where they are
// as long as the tree.
struct ImageCache : DrawCache {
    struct Entry {
        const char* uri;
        Picture picture;
    };
    std::list<Entry> images;
    std::size_t bytes = 0;
};

std::size_t bytesOf(const Picture& picture) {
    return picture.image.pixels().size() * sizeof(std::uint32_t) +
           (picture.drawing ? picture.drawing->bytes() : 0);
}

int hexDigit(char c) {
    c = toLower(c);
    return isDigit(c) ? c - '0' : c >= 'a' && c <= 'f' ? c - 'a' + 10 : -1;
}

// "%2B" is "+": also within base64.
std::vector<unsigned char> decodePercent(std::string_view text) {
    std::vector<unsigned char> bytes;
    bytes.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool escaped =
            text[i] == '%' && i + 2 < text.size() && hexDigit(text[i + 1]) >= 0 && hexDigit(text[i + 2]) >= 0;
        if (escaped) {
            bytes.push_back(static_cast<unsigned char>(hexDigit(text[i + 1]) * 16 + hexDigit(text[i + 2])));
            i += 2;
        } else {
            bytes.push_back(static_cast<unsigned char>(text[i]));
        }
    }
    return bytes;
}

// Up to the first character that is none of base64; white space does not count.
std::vector<unsigned char> decodeBase64(std::string_view text) {
    std::vector<unsigned char> plain;
    if (text.find('%') != text.npos) {
        plain = decodePercent(text);
        text = {reinterpret_cast<const char*>(plain.data()), plain.size()};
    }
    std::vector<unsigned char> bytes;
    bytes.reserve(text.size() / 4 * 3);
    unsigned bits = 0;
    int count = 0;
    for (const char c : text) {
        if (isSpace(c)) continue;
        const int digit = base64Digit(c);
        if (digit < 0) break;
        bits = (bits << 6 | static_cast<unsigned>(digit)) & 0xffff;
        count += 6;
        if (count < 8) continue;
        count -= 8;
        bytes.push_back(static_cast<unsigned char>(bits >> count));
    }
    return bytes;
}

// The bytes of an embedded picture. Empty for anything else: files are never opened, wherever a drawing points.
std::vector<unsigned char> decodeUri(std::string_view uri) {
    uri = trimFront(uri);
    const std::size_t comma = uri.find(',');
    if (!startsWithNoCase(uri, "data:") || comma == uri.npos) return {};
    const std::string_view head = trim(uri.substr(0, comma));
    const std::string_view body = uri.substr(comma + 1);
    constexpr std::string_view kBase64 = "base64";
    const bool base64 =
        head.size() > kBase64.size() && equalsNoCase(head.substr(head.size() - kBase64.size()), kBase64);
    return base64 ? decodeBase64(body) : decodePercent(body);
}

bool isDrawing(const std::vector<unsigned char>& bytes) {
    constexpr std::string_view kBefore("\0\xEF\xBB\xBF\xFE\xFF \t\r\n", 10);
    const auto first = std::find_if(bytes.begin(), bytes.end(), [&](unsigned char c) {
        return kBefore.find(static_cast<char>(c)) == kBefore.npos;
    });
    return first != bytes.end() && *first == '<';
}

Picture decode(std::string_view uri) {
    const std::vector<unsigned char> bytes = decodeUri(uri);
    Picture picture;
    if (isDrawing(bytes)) {
        picture.drawing = InnerDrawing::read({bytes.begin(), bytes.end()});
    } else {
        picture.image = decodeImage(bytes);
    }
    return picture;
}

const Picture& cachedPicture(DrawContext& context, std::string_view uri) {
    auto& cache = context.cache<ImageCache>(CacheOf::images);
    const auto found = std::find_if(cache.images.begin(), cache.images.end(),
                                    [&](const ImageCache::Entry& entry) { return entry.uri == uri.data(); });
    if (found != cache.images.end()) {
        cache.images.splice(cache.images.begin(), cache.images, found);
        return found->picture;
    }
    // Reading costs by what there is to read and by what comes of it, whether or not that is seen.
    static const Picture kNone;
    constexpr double kStepsForByte = 0.25;
    if (!context.spendPixels(1 + kStepsForByte * static_cast<double>(uri.size()))) return kNone;
    cache.images.push_front({uri.data(), decode(uri)});
    context.spendPixels(kStepsForPixel *
                        static_cast<double>(cache.images.front().picture.image.pixels().size()));
    cache.bytes += bytesOf(cache.images.front().picture);
    constexpr std::size_t kMostImages = 1024;
    while ((cache.bytes > kMostImageBytes || cache.images.size() > kMostImages) && cache.images.size() > 1) {
        cache.bytes -= bytesOf(cache.images.back().picture);
        cache.images.pop_back();
    }
    return cache.images.front().picture;
}

AFPoint sizeOf(const Picture& picture) {
    if (picture.drawing) return picture.drawing->size();
    return {static_cast<double>(picture.image.width()), static_cast<double>(picture.image.height())};
}

// Width and height as written; one that is missing follows the picture.
AFRect viewportOf(const DrawnElement& element, AFPoint size) {
    const AttributeSet& attributes = element.attributes;
    const LengthContext lengths{element.style.fontSize, element.space.width, element.space.height};
    const double x = length(attributes, Attribute::x, Axis::horizontal, lengths);
    const double y = length(attributes, Attribute::y, Axis::vertical, lengths);
    double width = length(attributes, Attribute::width, Axis::horizontal, lengths, -1);
    double height = length(attributes, Attribute::height, Axis::vertical, lengths, -1);
    if (width < 0 && height < 0) {
        width = size.x;
        height = size.y;
    }
    if (width < 0) width = height * size.x / size.y;
    if (height < 0) height = width * size.y / size.x;
    return {x, y, x + width, y + height};
}

// A picture is drawn at the resolution of the one around it; a list holds only where it lies.
void recordPicture(DrawContext& context, const AFRect& viewport, const UserSpace& space) {
    if (viewport.IsRectEmpty()) return;
    context.recorder()->openPicture();
    context.recorder()->fill(APath::rectangle(viewport), space.toDrawing, APaint(), EFillRule::nonZero);
    context.recorder()->close();
}

bool isSeen(DrawContext& context) {
    const RECT& clip = context.clipBounds();
    return clip.left < clip.right && clip.top < clip.bottom;
}

// Draws into an image first, so that opacity and blending are those of a picture.
void drawInner(DrawContext& context, InnerDrawing& drawing, const AAffine& toPixels, const RECT& area,
               const UriPicture& picture) {
    const auto pixels =
        static_cast<std::size_t>(area.right - area.left) * static_cast<std::size_t>(area.bottom - area.top);
    constexpr double kSteps = 2;
    DrawContext::HeldPixels held(context);
    if (isEmpty(area) || !held.take(pixels) || !context.spendPixels(kSteps * static_cast<double>(pixels)))
        return;
    AImage image(area.right - area.left, area.bottom - area.top);
    {
        ACanvas canvas(pixelsOf(image));
        if (!drawing.draw(context, canvas, AAffine::translation(-area.left, -area.top) * toPixels)) return;
    }
    context.drawImage(image, AAffine::translation(area.left, area.top), picture.opacity, false,
                      EBlend::normal);
}

void paintPicture(DrawContext& context, const Picture& shown, const UriPicture& picture,
                  const UserSpace& space) {
    const auto& [uri, viewport, aspect, smooth, opacity] = picture;
    const AFPoint size = sizeOf(shown);
    if (!(size.x > 0 && size.y > 0) || viewport.IsRectEmpty() ||
        !context.spendPixels(kStepsForPixel * static_cast<double>(shown.image.pixels().size()))) {
        return;
    }
    const AFRect whole{0, 0, size.x, size.y};
    const Affine fit = fitViewBox(whole, viewport.Width(), viewport.Height(), aspect);
    if (!(fit.a > kLeastScale && fit.d > kLeastScale)) return;
    const Affine toPixels = space.toDrawing * translation(viewport.left, viewport.top) * fit;
    // "slice" fills the viewport and more.
    const AFRect shownBox = rectBounds(translation(viewport.left, viewport.top) * fit, whole);
    const double slack = 1e-6 * (viewport.Width() + viewport.Height());
    const bool slices = shownBox.left < viewport.left - slack || shownBox.top < viewport.top - slack ||
                        shownBox.right > viewport.right + slack || shownBox.bottom > viewport.bottom + slack;
    if (slices) context.pushClip(APath::rectangle(viewport), space.toDrawing, EFillRule::nonZero);
    if (shown.drawing) {
        const RECT area = intersection(pixelsAround(rectBounds(toPixels, whole), 1), context.clipBounds());
        drawInner(context, *shown.drawing, toPixels, area, picture);
    } else {
        context.drawImage(shown.image, toPixels, opacity, smooth, EBlend::normal);
    }
    if (slices) context.popClip();
}

}  // namespace

void paintUri(DrawContext& context, const UriPicture& picture, const UserSpace& space) {
    if (picture.uri.empty() || !isSeen(context)) return;
    if (context.recorder()) return recordPicture(context, picture.viewport, space);
    paintPicture(context, cachedPicture(context, picture.uri), picture, space);
}

void paintImage(DrawContext& context, const DrawnElement& element, double opacity) {
    const std::string_view uri = element.attributes.get(Attribute::href);
    if (uri.empty() || !element.style.visible || !(opacity > 0) || !isSeen(context)) return;
    const AttributeSet& attributes = element.attributes;
    const bool isSized = attributes.has(Attribute::width) && attributes.has(Attribute::height);
    if (context.recorder() && isSized) return recordPicture(context, viewportOf(element, {}), element.space);
    const Picture& picture = cachedPicture(context, uri);
    const AFRect viewport = viewportOf(element, sizeOf(picture));
    if (context.recorder()) return recordPicture(context, viewport, element.space);
    paintPicture(
        context, picture,
        {uri, viewport, attributes.get(Attribute::preserveAspectRatio), element.style.smoothImages, opacity},
        element.space);
}

}  // namespace svg
