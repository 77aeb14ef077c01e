// GDI keeps what is drawn between BeginPath and EndPath as an outline, texts too.
#include <algorithm>
#include <cmath>
#include <cstddef>
#include <memory>
#include <new>

#include "canvas/text_outline.h"
#include "kzutil/utf.h"
#include "platform/winapi.h"

namespace {

// Texts are laid out in this size and scaled: GDI's coordinates are whole numbers, and the outlines of most
// fonts are drawn on a grid of as many steps.
constexpr int kLayoutSize = 2048;
// Nobody reads further than this.
constexpr std::size_t kLongestText = std::size_t{1} << 20;
// GDI takes 8192 units at once.
constexpr std::size_t kLongestPiece = 4096;

// GDI finds a font of that kind itself when there is none of that name.
struct Generic {
    std::string_view name;
    const wchar_t* family;
    BYTE kind;
};
constexpr Generic kGenerics[] = {
    {"sans-serif", L"Arial", VARIABLE_PITCH | FF_SWISS},
    {"serif", L"Times New Roman", VARIABLE_PITCH | FF_ROMAN},
    {"monospace", L"Courier New", FIXED_PITCH | FF_MODERN},
    {"cursive", L"Comic Sans MS", VARIABLE_PITCH | FF_SCRIPT},
    {"fantasy", L"Impact", VARIABLE_PITCH | FF_DECORATIVE},
    {"system-ui", L"Segoe UI", VARIABLE_PITCH | FF_SWISS},
};

struct Release {
    void operator()(HDC dc) const { DeleteDC(dc); }
    void operator()(HFONT font) const { DeleteObject(font); }
};
using Context = std::unique_ptr<std::remove_pointer_t<HDC>, Release>;
using Font = std::unique_ptr<std::remove_pointer_t<HFONT>, Release>;

std::string_view trimmed(std::string_view name) {
    const std::string_view around = " \t\r\n\"'";
    const std::size_t first = name.find_first_not_of(around);
    if (first == std::string_view::npos) return {};
    return name.substr(first, name.find_last_not_of(around) - first + 1);
}

bool isSameName(std::string_view a, std::string_view b) {
    const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; };
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [&](char x, char y) { return lower(x) == lower(y); });
}

void setFamily(LOGFONTW& font, const wchar_t* family, BYTE kind) {
    lstrcpynW(font.lfFaceName, family, LF_FACESIZE);
    font.lfPitchAndFamily = kind;
}

bool setGeneric(LOGFONTW& font, std::string_view name) {
    for (const Generic& known : kGenerics) {
        if (!isSameName(known.name, name)) continue;
        setFamily(font, known.family, known.kind);
        return true;
    }
    return false;
}

bool setInstalled(HDC dc, LOGFONTW& font, std::string_view name) {
    const kzutil::WideString wide = kzutil::widen(name);
    if (wide.size() >= LF_FACESIZE) return false;
    LOGFONTW wanted{};
    wanted.lfCharSet = DEFAULT_CHARSET;
    setFamily(wanted, wide.c_str(), 0);
    // Calls for every font of that name until it is answered 0.
    const auto stop = [](const LOGFONTW*, const TEXTMETRICW*, DWORD, LPARAM found) {
        *reinterpret_cast<bool*>(found) = true;
        return 0;
    };
    bool found = false;
    EnumFontFamiliesExW(dc, &wanted, stop, reinterpret_cast<LPARAM>(&found), 0);
    if (found) setFamily(font, wide.c_str(), DEFAULT_PITCH | FF_DONTCARE);
    return found;
}

// The first that there is of a list of names.
void setFirstFamily(HDC dc, LOGFONTW& font, std::string_view names) {
    while (!names.empty()) {
        const std::size_t comma = std::min(names.find(','), names.size());
        const std::string_view name = trimmed(names.substr(0, comma));
        names.remove_prefix(std::min(comma + 1, names.size()));
        if (!name.empty() && (setGeneric(font, name) || setInstalled(dc, font, name))) return;
    }
    setGeneric(font, "sans-serif");
}

Font fontFor(HDC dc, const AFont& font) {
    LOGFONTW wanted{};
    wanted.lfHeight = -kLayoutSize;
    wanted.lfWeight = std::clamp(font.weight, 100, 1000);
    wanted.lfItalic = font.italic;
    wanted.lfCharSet = DEFAULT_CHARSET;
    wanted.lfOutPrecision = OUT_TT_ONLY_PRECIS;
    wanted.lfQuality = ANTIALIASED_QUALITY;
    setFirstFamily(dc, wanted, font.family);
    return Font(CreateFontIndirectW(&wanted));
}

// One line: whatever ends lines or is invisible is a space.
kzutil::WideString oneLine(std::string_view text) {
    kzutil::WideString line = kzutil::widen(text);
    std::replace_if(
        line.begin(), line.end(), [](WCHAR c) { return c < L' '; }, L' ');
    return line;
}

bool isUtf8(std::string_view text) {
    return kzutil::narrow(kzutil::widen(text)) == text;
}

// What is between BeginPath and EndPath.
APath currentPath(HDC dc, const AAffine& placed) {
    const int count = GetPath(dc, nullptr, nullptr, 0);
    if (count <= 0) return {};
    std::vector<POINT> points(static_cast<std::size_t>(count));
    std::vector<BYTE> kinds(points.size());
    GetPath(dc, points.data(), kinds.data(), count);
    const auto point = [&](std::size_t index) {
        return placed.apply({static_cast<double>(points[index].x), static_cast<double>(points[index].y)});
    };
    APath path;
    for (std::size_t i = 0; i < points.size(); ++i) {
        switch (kinds[i] & ~PT_CLOSEFIGURE) {
            case PT_MOVETO:
                path.moveTo(point(i));
                break;
            case PT_LINETO:
                path.lineTo(point(i));
                break;
            default:
                if (i + 2 >= points.size()) return path;
                path.curveTo(point(i), point(i + 1), point(i + 2));
                i += 2;
        }
        if (kinds[i] & PT_CLOSEFIGURE) path.close();
    }
    return path;
}

// How much of the text makes the next piece; a pair of surrogates stays together.
std::size_t pieceOf(kzutil::WideView rest) {
    if (rest.size() <= kLongestPiece) return rest.size();
    const bool split = IS_HIGH_SURROGATE(rest[kLongestPiece - 1]);
    return split ? kLongestPiece - 1 : kLongestPiece;
}

}  // namespace

namespace {

// The bytes of a character and of the marks upon it.
std::size_t clusterLength(std::string_view text) {
    std::size_t length = 1;
    while (length < text.size() && (text[length] & 0xc0) == 0x80) ++length;
    // Combining marks from U+0300 to U+036F.
    while (length + 1 < text.size() &&
           (text[length] == '\xcc' ||
            (text[length] == '\xcd' && static_cast<unsigned char>(text[length + 1]) < 0xb0))) {
        length += 2;
    }
    return length;
}

}  // namespace

ATextClusters outlineClusters(std::string_view text, const AFont& font) {
    ATextClusters clusters;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t end = at + clusterLength(text.substr(at));
        clusters.list.push_back({at, end, outlineText(text.substr(at, end - at), font)});
        at = end;
    }
    return clusters;
}

AFontMetrics fontMetrics(const AFont& font) {
    Font selected;  // outlives the context that has it
    const Context dc(CreateCompatibleDC(nullptr));
    selected = fontFor(dc.get(), font);
    if (!dc || !selected) throw std::bad_alloc();
    SelectObject(dc.get(), selected.get());
    const double scale = font.size / kLayoutSize;
    TEXTMETRICW text{};
    GetTextMetricsW(dc.get(), &text);
    AFontMetrics metrics;
    metrics.ascent = text.tmAscent * scale;
    metrics.descent = text.tmDescent * scale;
    metrics.xHeight = font.size / 2;
    metrics.subscript = font.size / 5;
    metrics.superscript = font.size / 3;
    metrics.underline = -font.size * 0.1;
    metrics.lineThrough = font.size * 0.28;
    metrics.underlineThickness = metrics.lineThroughThickness = font.size * 0.06;
    std::vector<std::byte> bytes(GetOutlineTextMetricsW(dc.get(), 0, nullptr));
    auto* const outline = reinterpret_cast<OUTLINETEXTMETRICW*>(bytes.data());
    if (bytes.size() < sizeof *outline ||
        GetOutlineTextMetricsW(dc.get(), static_cast<UINT>(bytes.size()), outline) == 0) {
        return metrics;
    }
    const auto read = [&](int value, double& target) {
        if (value > 0) target = value * scale;
    };
    read(static_cast<int>(outline->otmsXHeight), metrics.xHeight);
    read(outline->otmptSubscriptOffset.y, metrics.subscript);
    read(outline->otmptSuperscriptOffset.y, metrics.superscript);
    read(static_cast<int>(outline->otmsUnderscoreSize), metrics.underlineThickness);
    read(static_cast<int>(outline->otmsStrikeoutSize), metrics.lineThroughThickness);
    read(static_cast<int>(outline->otmsStrikeoutPosition), metrics.lineThrough);
    metrics.underline = outline->otmsUnderscorePosition * scale - metrics.underlineThickness / 2;
    return metrics;
}

ATextOutline outlineText(std::string_view text, const AFont& font) {
    if (text.empty() || text.size() > kLongestText || !(font.size > 0) || !std::isfinite(font.size))
        return {};
    if (!isUtf8(text)) return {};
    Font selected;  // outlives the context that has it
    const Context dc(CreateCompatibleDC(nullptr));
    selected = fontFor(dc.get(), font);
    if (!dc || !selected) throw std::bad_alloc();
    SelectObject(dc.get(), selected.get());
    SetBkMode(dc.get(), TRANSPARENT);  // else the letters' background is an outline, too
    SetTextAlign(dc.get(), TA_BASELINE | TA_LEFT);

    const double scale = font.size / kLayoutSize;
    const kzutil::WideString line = oneLine(text);
    APath path;
    double advance = 0;
    for (kzutil::WideView rest = line; !rest.empty();) {
        const auto length = static_cast<UINT>(pieceOf(rest));
        BeginPath(dc.get());
        ExtTextOutW(dc.get(), 0, 0, 0, nullptr, rest.data(), length, nullptr);
        EndPath(dc.get());
        const AAffine placed = AAffine::translation(advance, 0) * AAffine::scaling(scale);
        path.append(currentPath(dc.get(), placed), AAffine());
        SIZE size{};
        GetTextExtentPoint32W(dc.get(), rest.data(), static_cast<int>(length), &size);
        advance += size.cx * scale;
        rest.remove_prefix(length);
    }
    ATextOutline outline = ATextOutline::ofPath(std::move(path));
    outline.advance = advance;
    return outline;
}
