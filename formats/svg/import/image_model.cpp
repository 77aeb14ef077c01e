#include "formats/svg/import/image_model.h"

#include <array>

#include "formats/svg/values/base64.h"
#include "formats/svg/values/text_scan.h"
#include "formats/svg/values/word_table.h"
#include "kzcore/document/object.h"

namespace svg {

namespace {

constexpr auto kModels = makeWordTable<int>({
    {"rgb", ABitmap::rgb},
    {"blackAndWhite", ABitmap::blackAndWhite},
    {"grayscale", ABitmap::grayscale},
    {"cmyk", ABitmap::cmyk},
    {"indexed", ABitmap::indexed},
    {"lab", ABitmap::lab},
});

// PNG: 8 bytes signature, 8 bytes chunk head, width, height, then bit depth and colour type.
constexpr std::size_t kDepthAt = 24;
constexpr std::size_t kTypeAt = 25;
using PngStart = std::array<unsigned char, kTypeAt + 1>;

bool decodeStart(std::string_view base64, PngStart& out) {
    unsigned bits = 0;
    int count = 0;
    std::size_t size = 0;
    for (const char c : base64) {
        if (isSpace(c)) continue;
        const int digit = base64Digit(c);
        if (digit < 0) return false;
        bits = (bits << 6 | static_cast<unsigned>(digit)) & 0xFFFF;
        count += 6;
        if (count < 8) continue;
        count -= 8;
        out[size++] = static_cast<unsigned char>(bits >> count);
        if (size == out.size()) return true;
    }
    return false;
}

}  // namespace

int colorModelOf(const AttributeSet& attributes) {
    if (attributes.has(Attribute::kzModel))
        return kModels.find(attributes.get(Attribute::kzModel), ABitmap::rgb);
    std::string_view href = trimFront(attributes.get(Attribute::href));
    constexpr std::string_view kPng = "data:image/png;base64,";
    PngStart start;
    if (!startsWithNoCase(href, kPng) || !decodeStart(href.substr(kPng.size()), start)) return ABitmap::rgb;
    constexpr int kGray = 0;
    constexpr int kIndexed = 3;
    constexpr int kGrayWithAlpha = 4;
    switch (start[kTypeAt]) {
        case kGray:
            return start[kDepthAt] == 1 ? ABitmap::blackAndWhite : ABitmap::grayscale;
        case kGrayWithAlpha:
            return ABitmap::grayscale;
        case kIndexed:
            return ABitmap::indexed;
        default:
            return ABitmap::rgb;
    }
}

}  // namespace svg
