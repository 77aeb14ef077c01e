#include "formats/svg/draw/picture_cache.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <list>
#include <set>
#include <vector>

#include "formats/svg/values/base64.h"
#include "formats/svg/values/text_scan.h"

namespace svg {

namespace {

// All images together, and one that is kept whole beside its reduced form.
constexpr std::size_t kMostImageBytes = std::size_t{1} << 28;
constexpr std::size_t kMostWholeBytes = std::size_t{1} << 26;
// What the decoding of a pixel, and of a byte, costs beside the simple operations that a picture's budget counts.
constexpr double kDecodeSteps = 0.5;
constexpr double kByteSteps = 0.25;

// A drawing's pictures have at most so many pixels for each of their bytes, and some more all together: beyond are
// bombs, of a few kilobytes that become a gigabyte.
constexpr double kPixelsPerByte = 32;
constexpr double kMorePixels = 1 << 28;

struct ImageCache : DrawCache {
    std::list<CachedPicture> pictures;  // the last used one first
    std::set<const char*> counted;      // the data URIs that the pixels have been taken for
    double morePixels = kMorePixels;    // that are left
};

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

std::size_t bytesOf(const AImage& image) {
    return image.pixels().size() * sizeof(std::uint32_t);
}

// The mean of squares of pixels; those at the right and lower edge may be narrower.
AImage reduced(const AImage& image, int factor) {
    AImage result((image.width() + factor - 1) / factor, (image.height() + factor - 1) / factor);
    const auto width = static_cast<std::size_t>(result.width());
    std::vector<std::array<std::uint64_t, 2>> sums(width);  // two channels in each, 32 bits apart
    for (int top = 0; top < image.height(); top += factor) {
        std::fill(sums.begin(), sums.end(), std::array<std::uint64_t, 2>{});
        const int bottom = std::min(top + factor, image.height());
        for (int y = top; y < bottom; ++y) {
            const std::uint32_t* const row = image.row(y);
            for (std::size_t to = 0; to < width; ++to) {
                const int left = static_cast<int>(to) * factor;
                std::uint64_t even = 0, odd = 0;
                for (int x = left, right = std::min(left + factor, image.width()); x < right; ++x) {
                    const std::uint64_t pixel = row[x];
                    even += (pixel & 0xff) | (pixel & 0xff0000) << 16;
                    odd += (pixel >> 8 & 0xff) | (pixel & 0xff000000) << 8;
                }
                sums[to][0] += even;
                sums[to][1] += odd;
            }
        }
        std::uint32_t* const out = result.row(top / factor);
        for (std::size_t to = 0; to < width; ++to) {
            const int left = static_cast<int>(to) * factor;
            const auto count = static_cast<std::uint64_t>(bottom - top) *
                               static_cast<std::uint64_t>(std::min(factor, image.width() - left));
            const auto mean = [&](std::uint64_t sum) {
                return static_cast<std::uint32_t>((sum + count / 2) / count);
            };
            const auto [even, odd] = sums[to];
            out[to] = mean(even & 0xffffffff) | mean(odd & 0xffffffff) << 8 | mean(even >> 32) << 16 |
                      mean(odd >> 32) << 24;
        }
    }
    return result;
}

// Drops what was used longest ago; the first `kept` stay.
void dropOldest(ImageCache& cache, std::size_t kept) {
    constexpr std::size_t kMostImages = 1024;
    std::size_t bytes = 0;
    for (const CachedPicture& picture : cache.pictures) bytes += picture.bytes();
    while (cache.pictures.size() > kept && (bytes > kMostImageBytes || cache.pictures.size() > kMostImages)) {
        bytes -= cache.pictures.back().bytes();
        cache.pictures.pop_back();
    }
}

ImageCache& imageCache(DrawContext& context) {
    return context.cache<ImageCache>(CacheOf::images);
}

// As the head of a PNG file says; 0 for others, which only the picture's budget bounds.
double pngPixels(const std::vector<unsigned char>& bytes) {
    constexpr std::array<unsigned char, 4> kPng{0x89, 'P', 'N', 'G'};
    constexpr std::size_t kWidth = 16, kHeight = 20, kEnd = 24;
    if (bytes.size() < kEnd || !std::equal(kPng.begin(), kPng.end(), bytes.begin())) return 0;
    const auto number = [&](std::size_t at) {
        return ((bytes[at] * 256.0 + bytes[at + 1]) * 256 + bytes[at + 2]) * 256 + bytes[at + 3];
    };
    return number(kWidth) * number(kHeight);
}

// Once for each data URI.
bool takePixels(ImageCache& cache, std::string_view uri, const std::vector<unsigned char>& bytes) {
    if (cache.counted.contains(uri.data())) return true;
    const double pixels = pngPixels(bytes) - kPixelsPerByte * static_cast<double>(bytes.size());
    if (pixels > cache.morePixels) return false;
    cache.counted.insert(uri.data());
    cache.morePixels -= std::max(pixels, 0.0);
    return true;
}

}  // namespace

CachedPicture::CachedPicture(DrawContext& context, std::string_view uri) : m_uri(uri) {
    decode(context);
}

// Costs by what there is to read, and by what comes of it, whether or not that is seen. The latter is known when it
// is done: what is too much for the budget is the last that was decoded.
bool CachedPicture::decode(DrawContext& context) {
    if (!context.spendPixels(1 + kByteSteps * static_cast<double>(m_uri.size()))) return false;
    const std::vector<unsigned char> bytes = decodeUri(m_uri);
    if (isDrawing(bytes)) {
        m_drawing = InnerDrawing::read({bytes.begin(), bytes.end()});
        if (m_drawing) m_size = m_drawing->size();
        return false;
    }
    if (!takePixels(imageCache(context), m_uri, bytes)) return false;
    m_whole = decodeImage(bytes);
    m_size = {static_cast<double>(m_whole.width()), static_cast<double>(m_whole.height())};
    context.spendPixels(kDecodeSteps * static_cast<double>(m_whole.pixels().size()));
    return !m_whole.empty();
}

int CachedPicture::reductionFor(const AAffine& toPixels) {
    constexpr int kLeast = 4, kMost = 1 << 12;
    const double scale = std::max(std::hypot(toPixels.a, toPixels.b), std::hypot(toPixels.c, toPixels.d));
    int reduction = 1;
    // The library's own filter does the last halving.
    while (reduction < kMost && scale * reduction * 4 <= 1) reduction *= 2;
    return reduction < kLeast ? 1 : reduction;
}

const AImage* CachedPicture::pixels(DrawContext& context, int reduction) {
    if (reduction > 1 && reduction == m_reduction) return &m_reduced;
    if (m_whole.empty()) {
        if (!decode(context)) return nullptr;
        dropOldest(imageCache(context), 1);
    }
    if (reduction <= 1) return &m_whole;
    m_reduced = reduced(m_whole, reduction);
    m_reduction = reduction;
    if (bytesOf(m_whole) > kMostWholeBytes) m_whole = AImage();
    return &m_reduced;
}

std::size_t CachedPicture::bytes() const {
    return bytesOf(m_whole) + bytesOf(m_reduced) + (m_drawing ? m_drawing->bytes() : 0);
}

CachedPicture* cachedPicture(DrawContext& context, std::string_view uri) {
    std::list<CachedPicture>& pictures = imageCache(context).pictures;
    const auto found = std::find_if(pictures.begin(), pictures.end(), [&](const CachedPicture& picture) {
        return picture.uri().data() == uri.data();
    });
    if (found != pictures.end()) {
        pictures.splice(pictures.begin(), pictures, found);
    } else {
        dropOldest(imageCache(context), 0);
        pictures.emplace_front(context, uri);
        dropOldest(imageCache(context), 1);
    }
    CachedPicture& picture = pictures.front();
    return picture.size().x > 0 && picture.size().y > 0 ? &picture : nullptr;
}

}  // namespace svg
