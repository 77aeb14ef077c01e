#include <algorithm>
#include <array>
#include <cmath>
#include <memory>
#include <new>
#include <utility>

#include "canvas/gdiplus_startup.h"
#include "canvas/text_outline.h"
#include "kzutil/utf.h"

// <gdiplus.h> takes min and max from where it stands.
using std::max;
using std::min;

#include <objidl.h>

#include <gdiplus.h>

namespace {

// Texts are laid out in this size and scaled: far from where fonts are fitted to pixels.
constexpr float kLayoutSize = 1024;
// Nobody reads further than this.
constexpr std::size_t kLongestText = std::size_t{1} << 20;
// From here on a font is bold: GDI+ knows two weights.
constexpr int kBold = 600;

using Family = std::unique_ptr<Gdiplus::FontFamily>;

struct Generic {
    std::string_view name;
    std::array<const wchar_t*, 3> families;
};
constexpr std::array<Generic, 6> kGenerics{{
    {"sans-serif", {L"Arial", L"Liberation Sans", L"DejaVu Sans"}},
    {"serif", {L"Times New Roman", L"Liberation Serif", L"DejaVu Serif"}},
    {"monospace", {L"Courier New", L"Liberation Mono", L"DejaVu Sans Mono"}},
    {"cursive", {L"Comic Sans MS", L"Arial", L"DejaVu Sans"}},
    {"fantasy", {L"Impact", L"Arial", L"DejaVu Sans"}},
    {"system-ui", {L"Segoe UI", L"Tahoma", L"DejaVu Sans"}},
}};

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

Family familyNamed(const wchar_t* name) {
    auto family = std::make_unique<Gdiplus::FontFamily>(name);
    return family->IsAvailable() ? std::move(family) : nullptr;
}

Family generic(std::string_view name) {
    for (const Generic& known : kGenerics) {
        if (!isSameName(known.name, name)) continue;
        for (const wchar_t* family : known.families) {
            if (Family found = familyNamed(family)) return found;
        }
    }
    return nullptr;
}

// The first that there is of a list of names.
Family familyOf(std::string_view names) {
    while (!names.empty()) {
        const std::size_t comma = std::min(names.find(','), names.size());
        const std::string_view name = trimmed(names.substr(0, comma));
        names.remove_prefix(std::min(comma + 1, names.size()));
        if (name.empty()) continue;
        if (Family found = generic(name)) return found;
        if (Family found = familyNamed(kzutil::widen(name).c_str())) return found;
    }
    if (Family found = generic("sans-serif")) return found;
    // The one that GDI+ itself falls back to; there may be none at all.
    return Family(Gdiplus::FontFamily::GenericSansSerif()->Clone());
}

INT styleOf(const Gdiplus::FontFamily& family, const AFont& font) {
    const INT wanted =
        (font.weight >= kBold ? Gdiplus::FontStyleBold : 0) | (font.italic ? Gdiplus::FontStyleItalic : 0);
    for (INT style :
         {wanted, wanted & Gdiplus::FontStyleBold, wanted & Gdiplus::FontStyleItalic,
          static_cast<INT>(Gdiplus::FontStyleRegular), static_cast<INT>(Gdiplus::FontStyleBold),
          static_cast<INT>(Gdiplus::FontStyleItalic), static_cast<INT>(Gdiplus::FontStyleBoldItalic)}) {
        if (family.IsStyleAvailable(style)) return style;
    }
    return wanted;
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

// `up`: how far the outline's baseline lies below 0.
APath pathOf(const Gdiplus::GraphicsPath& outline, double up, double scale) {
    APath path;
    Gdiplus::PathData data;
    if (outline.GetPointCount() <= 0 || outline.GetPathData(&data) != Gdiplus::Ok) return path;
    const auto point = [&](INT index) {
        return AFPoint{data.Points[index].X * scale, (data.Points[index].Y - up) * scale};
    };
    for (INT i = 0; i < data.Count; ++i) {
        const int kind = data.Types[i] & Gdiplus::PathPointTypePathTypeMask;
        if (kind == Gdiplus::PathPointTypeStart) {
            path.moveTo(point(i));
        } else if (kind == Gdiplus::PathPointTypeLine) {
            path.lineTo(point(i));
        } else if (i + 2 < data.Count) {
            path.curveTo(point(i), point(i + 1), point(i + 2));
            i += 2;
        }
        if (data.Types[i] & Gdiplus::PathPointTypeCloseSubpath) path.close();
    }
    return path;
}

double advanceOf(const kzutil::WideString& line, const Gdiplus::FontFamily& family, INT style,
                 const Gdiplus::StringFormat& format) {
    // Something to measure on.
    Gdiplus::Bitmap bitmap(1, 1, PixelFormat32bppRGB);
    Gdiplus::Graphics graphics(&bitmap);
    // Else widths are rounded to pixels.
    graphics.SetTextRenderingHint(Gdiplus::TextRenderingHintAntiAlias);
    const Gdiplus::Font font(&family, kLayoutSize, style, Gdiplus::UnitPixel);
    Gdiplus::RectF box;
    graphics.MeasureString(line.c_str(), static_cast<INT>(line.size()), &font, Gdiplus::PointF(0, 0), &format,
                           &box);
    return box.Width;
}

}  // namespace

ATextOutline outlineText(std::string_view text, const AFont& font) {
    if (text.empty() || text.size() > kLongestText || !(font.size > 0) || !std::isfinite(font.size))
        return {};
    if (!isUtf8(text)) return {};
    ensureGdiplus();
    const kzutil::WideString line = oneLine(text);
    const Family family = familyOf(font.family);
    if (!family->IsAvailable()) return {};
    const INT style = styleOf(*family, font);

    // Without the margins and the fitting of texts on screens.
    Gdiplus::StringFormat format(Gdiplus::StringFormat::GenericTypographic());
    format.SetFormatFlags(Gdiplus::StringFormatFlagsNoWrap | Gdiplus::StringFormatFlagsNoClip |
                          Gdiplus::StringFormatFlagsMeasureTrailingSpaces);
    format.SetTrimming(Gdiplus::StringTrimmingNone);
    Gdiplus::GraphicsPath outline(Gdiplus::FillModeWinding);
    const Gdiplus::Status drawn = outline.AddString(line.c_str(), static_cast<INT>(line.size()), family.get(),
                                                    style, kLayoutSize, Gdiplus::PointF(0, 0), &format);
    if (drawn == Gdiplus::OutOfMemory) throw std::bad_alloc();
    if (drawn != Gdiplus::Ok) return {};
    const double baseline = kLayoutSize * static_cast<double>(family->GetCellAscent(style)) /
                            static_cast<double>(std::max<UINT16>(family->GetEmHeight(style), 1));
    const double scale = font.size / kLayoutSize;
    return {pathOf(outline, baseline, scale), advanceOf(line, *family, style, format) * scale};
}
