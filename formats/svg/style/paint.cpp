#include "formats/svg/style/paint.h"

#include <array>
#include <utility>

#include "formats/svg/values/color.h"
#include "formats/svg/values/text_scan.h"

namespace svg {

namespace {

// Behind a colour may stand the same one in another space, which is not read: "#cd853f icc-color(acmecmyk, 0.1)".
bool isColorEnd(std::string_view text) {
    if (text.empty()) return true;
    text = trimFront(text);
    return text.empty() || startsWithNoCase(text, "icc-color(") || startsWithNoCase(text, "device-");
}

// Keywords and colours, all that may also stand as a fallback.
bool parseSimplePaint(std::string_view text, PaintKind& kind, std::uint32_t& rgb, std::uint8_t& alpha,
                      std::string_view& cmykText) {
    if (takeColor(text, rgb, &alpha)) {
        kind = PaintKind::rgb;
        return isColorEnd(text);
    }
    constexpr std::pair<std::string_view, PaintKind> kWords[] = {
        {"none", PaintKind::none},
        {"transparent", PaintKind::none},
        {"context-fill", PaintKind::contextFill},
        {"context-stroke", PaintKind::contextStroke}};
    for (const auto& [word, meaning] : kWords) {
        if (equalsNoCase(text, word)) {
            kind = meaning;
            return true;
        }
    }
    if (equalsNoCase(text, "currentcolor")) {
        kind = PaintKind::currentColor;
        return true;
    }
    std::array<float, 4> cmyk;
    std::string_view rest = text;
    if (!takeCmyk(rest, cmyk)) return false;
    kind = PaintKind::cmyk;
    cmykText = text;
    return true;
}

}  // namespace

bool takeUrl(std::string_view& text, std::string_view& id) {
    if (!startsWithNoCase(text, "url(")) return false;
    std::string_view rest = trimFront(text.substr(4));
    std::size_t end = rest.npos;
    if (!rest.empty() && (rest.front() == '"' || rest.front() == '\'')) {
        const char quote = rest.front();
        rest.remove_prefix(1);
        end = rest.find(quote);
    } else {
        end = rest.find(')');
    }
    if (end == rest.npos) return false;
    id = localReference(rest.substr(0, end));
    const std::size_t close = rest.find(')', end);
    if (close == rest.npos) return false;
    text = trimFront(rest.substr(close + 1));
    return true;
}

bool parsePaint(std::string_view text, Paint& paint) {
    text = trim(text);
    Paint result;
    if (!text.empty() && text.front() == '#') {
        result.kind = PaintKind::rgb;
        if (!takeColor(text, result.rgb, &result.alpha) || !isColorEnd(text)) return false;
    } else if (takeUrl(text, result.text)) {
        result.kind = PaintKind::reference;
        std::string_view cmykText;
        // A CMYK fallback is shown as its RGB look-alike.
        if (!text.empty() && !parseSimplePaint(text, result.fallback, result.rgb, result.alpha, cmykText))
            return false;
        if (result.fallback == PaintKind::cmyk) {
            std::array<float, 4> cmyk;
            takeCmyk(cmykText, cmyk);
            result.fallback = PaintKind::rgb;
            result.rgb = cmykToRgb(cmyk);
        }
    } else if (!parseSimplePaint(text, result.kind, result.rgb, result.alpha, result.text)) {
        return false;
    }
    paint = result;
    return true;
}

}  // namespace svg
