// An SVG drawing in a data URI draws nothing: it would be a second document with limits of its own.
#include "formats/svg/draw/images.h"

#include <algorithm>
#include <list>
#include <optional>

#include "formats/svg/values/base64.h"
#include "formats/svg/values/text_scan.h"

namespace svg {

namespace {

constexpr std::size_t kMostImageBytes = std::size_t{1} << 28;
constexpr double kLeastScale = 1e-9;

// Decoded images, the last used one first. A data URI is found by its address: attributes stay where they are
// as long as the tree.
struct ImageCache : DrawCache {
    struct Entry {
        const char* uri;
        AImage image;
    };
    std::list<Entry> images;
    std::size_t bytes = 0;
};

std::size_t bytesOf(const AImage& image) {
    return image.pixels().size() * sizeof(std::uint32_t);
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

// Empty for what is not an embedded picture: files are never opened, wherever a drawing points.
AImage decodeUri(std::string_view uri) {
    uri = trimFront(uri);
    const std::size_t comma = uri.find(',');
    if (!startsWithNoCase(uri, "data:") || comma == uri.npos) return {};
    const std::string_view head = uri.substr(0, comma);
    const std::string_view body = uri.substr(comma + 1);
    constexpr std::string_view kBase64 = ";base64";
    const bool base64 =
        head.size() > kBase64.size() && equalsNoCase(head.substr(head.size() - kBase64.size()), kBase64);
    return decodeImage(base64 ? decodeBase64(body) : decodePercent(body));
}

const AImage& cachedImage(DrawContext& context, std::string_view uri) {
    auto& cache = context.cache<ImageCache>(CacheOf::images);
    const auto found = std::find_if(cache.images.begin(), cache.images.end(),
                                    [&](const ImageCache::Entry& entry) { return entry.uri == uri.data(); });
    if (found != cache.images.end()) {
        cache.images.splice(cache.images.begin(), cache.images, found);
        return found->image;
    }
    cache.images.push_front({uri.data(), decodeUri(uri)});
    cache.bytes += bytesOf(cache.images.front().image);
    constexpr std::size_t kMostImages = 1024;
    while ((cache.bytes > kMostImageBytes || cache.images.size() > kMostImages) && cache.images.size() > 1) {
        cache.bytes -= bytesOf(cache.images.back().image);
        cache.images.pop_back();
    }
    return cache.images.front().image;
}

// Width and height as written; one that is missing follows the image.
AFRect viewportOf(const DrawnElement& element, const AImage& image) {
    const AttributeSet& attributes = element.attributes;
    const LengthContext lengths{element.style.fontSize, element.space.width, element.space.height};
    const double x = length(attributes, Attribute::x, Axis::horizontal, lengths);
    const double y = length(attributes, Attribute::y, Axis::vertical, lengths);
    double width = length(attributes, Attribute::width, Axis::horizontal, lengths, -1);
    double height = length(attributes, Attribute::height, Axis::vertical, lengths, -1);
    if (width < 0 && height < 0) {
        width = image.width();
        height = image.height();
    }
    if (width < 0) width = height * image.width() / image.height();
    if (height < 0) height = width * image.height() / image.width();
    return {x, y, x + width, y + height};
}

// An image is drawn at the resolution of the picture; a list holds only where it lies.
void recordImage(DrawContext& context, const DrawnElement& element, std::string_view uri) {
    const AttributeSet& attributes = element.attributes;
    const bool isSized = attributes.has(Attribute::width) && attributes.has(Attribute::height);
    const AImage unknown;
    const AFRect viewport = viewportOf(element, isSized ? unknown : cachedImage(context, uri));
    if (viewport.IsRectEmpty()) return;
    context.recorder()->openPicture();
    context.recorder()->fill(APath::rectangle(viewport), element.space.toDrawing, APaint(),
                             EFillRule::nonZero);
    context.recorder()->close();
}

}  // namespace

void paintImage(DrawContext& context, const DrawnElement& element, double opacity) {
    const std::string_view uri = element.attributes.get(Attribute::href);
    if (uri.empty() || !element.style.visible || !(opacity > 0)) return;
    const RECT& clip = context.clipBounds();
    if (clip.left >= clip.right || clip.top >= clip.bottom) return;
    if (context.recorder()) return recordImage(context, element, uri);
    const AImage& image = cachedImage(context, uri);
    // To be shown smaller, every pixel may have to be read.
    constexpr double kSteps = 0.25;
    if (image.empty() || !context.spendPixels(kSteps * static_cast<double>(image.pixels().size()))) return;
    const AFRect viewport = viewportOf(element, image);
    if (viewport.IsRectEmpty()) return;
    const std::string_view aspect = element.attributes.get(Attribute::preserveAspectRatio);
    const AFRect whole{0, 0, static_cast<double>(image.width()), static_cast<double>(image.height())};
    const Affine fit = fitViewBox(whole, viewport.Width(), viewport.Height(), aspect);
    if (!(fit.a > kLeastScale && fit.d > kLeastScale)) return;
    const Affine toPixels = element.space.toDrawing * translation(viewport.left, viewport.top) * fit;
    // "slice" fills the viewport and more.
    const AFRect shown = rectBounds(translation(viewport.left, viewport.top) * fit, whole);
    const double slack = 1e-6 * (viewport.Width() + viewport.Height());
    const bool slices = shown.left < viewport.left - slack || shown.top < viewport.top - slack ||
                        shown.right > viewport.right + slack || shown.bottom > viewport.bottom + slack;
    if (slices) context.pushClip(APath::rectangle(viewport), element.space.toDrawing, EFillRule::nonZero);
    context.drawImage(image, toPixels, opacity, element.style.smoothImages, EBlend::normal);
    if (slices) context.popClip();
}

}  // namespace svg
