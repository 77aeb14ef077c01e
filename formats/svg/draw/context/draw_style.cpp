#include "formats/svg/draw/context/draw_style.h"

#include <algorithm>
#include <cmath>

#include "formats/svg/draw/context/blend_mode.h"
#include "formats/svg/values/text_scan.h"

namespace svg {

namespace {

bool isInheritedDrawProperty(Property property) {
    if (property >= Property::opacity) return false;
    if (property == Property::baselineShift || property == Property::textDecoration) return false;
    if (property > Property::stopColor) return true;
    return property < Property::filter && property != Property::display;
}

template <class T>
struct Keyword {
    std::string_view word;
    T value;
};

template <class T, std::size_t Count>
void setKeyword(T& target, std::string_view text, const Keyword<T> (&words)[Count]) {
    for (const Keyword<T>& one : words) {
        if (equalsNoCase(text, one.word)) target = one.value;
    }
}

constexpr Keyword<EFillRule> kFillRules[] = {{"nonzero", EFillRule::nonZero},
                                             {"evenodd", EFillRule::evenOdd}};
constexpr Keyword<ELineCap> kLineCaps[] = {
    {"butt", ELineCap::butt}, {"round", ELineCap::round}, {"square", ELineCap::square}};
constexpr Keyword<ELineJoin> kLineJoins[] = {{"miter", ELineJoin::miter},
                                             {"miter-clip", ELineJoin::miter},
                                             {"arcs", ELineJoin::miter},
                                             {"round", ELineJoin::round},
                                             {"bevel", ELineJoin::bevel}};
constexpr Keyword<Baseline> kBaselines[] = {
    {"auto", Baseline::alphabetic},       {"alphabetic", Baseline::alphabetic},
    {"baseline", Baseline::alphabetic},   {"middle", Baseline::middle},
    {"central", Baseline::central},       {"mathematical", Baseline::central},
    {"hanging", Baseline::hanging},       {"text-before-edge", Baseline::textBefore},
    {"text-top", Baseline::textBefore},   {"text-after-edge", Baseline::textAfter},
    {"text-bottom", Baseline::textAfter}, {"ideographic", Baseline::ideographic}};
constexpr Keyword<bool> kFontStyles[] = {{"normal", false}, {"italic", true}, {"oblique", true}};
constexpr Keyword<bool> kImageRendering[] = {{"auto", true},
                                             {"smooth", true},
                                             {"optimizequality", true},
                                             {"high-quality", true},
                                             {"optimizespeed", false},
                                             {"pixelated", false},
                                             {"crisp-edges", false},
                                             {"-inkscape-crisp-edges", false}};
constexpr Keyword<bool> kFilterColors[] = {{"auto", true}, {"linearrgb", true}, {"srgb", false}};
constexpr Keyword<bool> kMaskTypes[] = {{"luminance", false}, {"alpha", true}};
constexpr Keyword<bool> kOverflows[] = {
    {"visible", true}, {"auto", true}, {"hidden", false}, {"scroll", false}, {"clip", false}};
constexpr Keyword<bool> kIsolations[] = {{"auto", false}, {"isolate", true}};
constexpr Keyword<bool> kVectorEffects[] = {{"none", false}, {"non-scaling-stroke", true}};
constexpr Keyword<bool> kWhiteSpaces[] = {
    {"normal", false}, {"nowrap", false}, {"pre", true}, {"pre-wrap", true}, {"break-spaces", true}};
constexpr Keyword<int> kFontWeights[] = {{"normal", 400}, {"bold", 700}};

// A number or a percentage, cut to 0..1.
void applyOpacity(double& target, std::string_view text) {
    double value = 0;
    if (!takeNumber(text, value)) return;
    if (!text.empty() && text != "%") return;
    target = std::clamp(text.empty() ? value : value / 100, 0.0, 1.0);
}

void applyLength(double& target, std::string_view text, const LengthContext& context, bool mayBeNegative) {
    double value = 0;
    if (equalsNoCase(text, "normal")) {
        target = 0;
    } else if (parseLength(text, Axis::both, context, value) && (mayBeNegative || value >= 0)) {
        target = value;
    }
}

void applyFontWeight(int& target, int parent, std::string_view text) {
    setKeyword(target, text, kFontWeights);
    if (equalsNoCase(text, "bolder")) target = parent < 350 ? 400 : parent < 550 ? 700 : 900;
    if (equalsNoCase(text, "lighter")) target = parent < 550 ? 100 : parent < 750 ? 400 : 700;
    double value = 0;
    if (takeNumber(text, value) && text.empty() && value >= 1 && value <= 1000)
        target = static_cast<int>(value);
}

void applyPaintOrder(std::array<PaintPart, 3>& order, std::string_view text) {
    constexpr Keyword<PaintPart> kParts[] = {
        {"fill", PaintPart::fill}, {"stroke", PaintPart::stroke}, {"markers", PaintPart::markers}};
    std::array<PaintPart, 3> result{};
    std::size_t count = 0;
    const auto add = [&](PaintPart part) {
        const auto end = result.begin() + static_cast<std::ptrdiff_t>(count);
        if (std::find(result.begin(), end, part) == end) result[count++] = part;
    };
    while (!(text = trimFront(text)).empty()) {
        const std::string_view word = takeWord(text);
        for (const Keyword<PaintPart>& one : kParts) {
            if (equalsNoCase(word, one.word)) add(one.value);
        }
    }
    for (const Keyword<PaintPart>& one : kParts) add(one.value);
    order = result;
}

void applyTextDecoration(DrawStyle::Own& own, std::string_view text) {
    own.underline = own.overline = own.lineThrough = false;
    while (!(text = trimFront(text)).empty()) {
        const std::string_view word = takeWord(text);
        own.underline |= equalsNoCase(word, "underline");
        own.overline |= equalsNoCase(word, "overline");
        own.lineThrough |= equalsNoCase(word, "line-through");
    }
}

std::string_view emptyForNone(std::string_view text) {
    return equalsNoCase(text, "none") ? std::string_view() : text;
}

// "italic bold 12px/1.4 'Name', sans-serif": words up to the size, then the family.
void applyFont(DrawStyle& style, const DrawStyle& parent, std::string_view text) {
    style.italic = false;
    style.fontWeight = 400;
    const std::string_view size = fontSizeOf(text);
    const std::string_view before = size.empty()
                                        ? std::string_view()
                                        : text.substr(0, static_cast<std::size_t>(size.data() - text.data()));
    for (std::string_view rest = before; !(rest = trimFront(rest)).empty();) {
        const std::string_view word = takeWord(rest);
        setKeyword(style.italic, word, kFontStyles);
        applyFontWeight(style.fontWeight, parent.fontWeight, word);
    }
    if (size.empty()) return;
    applyProperty(style, parent, Property::fontSize, size);
    std::string_view family = text.substr(before.size());
    takeWord(family);  // the size with its line height
    style.fontFamily = trim(family);
}

// "inherit" from the parent, "initial" from a fresh style.
void copyDrawProperty(DrawStyle& style, const DrawStyle& from, Property property) {
    const auto take = [&](auto member) { style.*member = from.*member; };
    const auto takeOwn = [&](auto member) { style.own.*member = from.own.*member; };
    using Own = DrawStyle::Own;
    switch (property) {
        case Property::fillOpacity:
            return take(&DrawStyle::fillOpacity);
        case Property::strokeOpacity:
            return take(&DrawStyle::strokeOpacity);
        case Property::fillRule:
            return take(&DrawStyle::fillRule);
        case Property::clipRule:
            return take(&DrawStyle::clipRule);
        case Property::strokeWidth:
            return take(&DrawStyle::strokeWidth);
        case Property::strokeLinecap:
            return take(&DrawStyle::lineCap);
        case Property::strokeLinejoin:
            return take(&DrawStyle::lineJoin);
        case Property::strokeMiterlimit:
            return take(&DrawStyle::miterLimit);
        case Property::strokeDasharray:
            return take(&DrawStyle::dashArray);
        case Property::strokeDashoffset:
            return take(&DrawStyle::dashOffset);
        case Property::paintOrder:
            return take(&DrawStyle::paintOrder);
        case Property::markerStart:
            return take(&DrawStyle::markerStart);
        case Property::markerMid:
            return take(&DrawStyle::markerMid);
        case Property::markerEnd:
            return take(&DrawStyle::markerEnd);
        case Property::marker:
            take(&DrawStyle::markerStart);
            take(&DrawStyle::markerMid);
            return take(&DrawStyle::markerEnd);
        case Property::font:
            take(&DrawStyle::fontSize);
            take(&DrawStyle::fontFamily);
            take(&DrawStyle::fontWeight);
            return take(&DrawStyle::italic);
        case Property::fontFamily:
            return take(&DrawStyle::fontFamily);
        case Property::fontWeight:
            return take(&DrawStyle::fontWeight);
        case Property::fontStyle:
            return take(&DrawStyle::italic);
        case Property::letterSpacing:
            return take(&DrawStyle::letterSpacing);
        case Property::wordSpacing:
            return take(&DrawStyle::wordSpacing);
        case Property::whiteSpace:
            return take(&DrawStyle::preserveSpace);
        case Property::dominantBaseline:
            return take(&DrawStyle::baseline);
        case Property::imageRendering:
            return take(&DrawStyle::smoothImages);
        case Property::filterColors:
            return take(&DrawStyle::linearFilters);
        case Property::baselineShift:
            return takeOwn(&Own::baselineShift);
        case Property::textDecoration:
            takeOwn(&Own::underline);
            takeOwn(&Own::overline);
            return takeOwn(&Own::lineThrough);
        case Property::opacity:
            return takeOwn(&Own::opacity);
        case Property::stopOpacity:
            return takeOwn(&Own::stopOpacity);
        case Property::floodColor:
            return takeOwn(&Own::floodColor);
        case Property::floodOpacity:
            return takeOwn(&Own::floodOpacity);
        case Property::lightingColor:
            return takeOwn(&Own::lightingColor);
        case Property::maskType:
            return takeOwn(&Own::alphaMask);
        case Property::overflow:
            return takeOwn(&Own::showsOverflow);
        case Property::vectorEffect:
            return takeOwn(&Own::keepsStrokeWidth);
        case Property::mixBlendMode:
            return takeOwn(&Own::blend);
        case Property::isolation:
            return takeOwn(&Own::isolated);
        default:
            return;
    }
}

void applyDrawProperty(DrawStyle& style, const DrawStyle& parent, const View& view, Property property,
                       std::string_view value) {
    if (property <= Property::stopColor) return applyProperty(style, parent, property, value);
    value = trim(value);
    if (value.empty()) return;
    const bool inherited = isInheritedDrawProperty(property);
    style.hasOwn |= !inherited;
    if (const GlobalWord word = globalWord(value, inherited); word != GlobalWord::none) {
        copyDrawProperty(style, word == GlobalWord::inherit ? parent : DrawStyle(), property);
        return;
    }
    const LengthContext context{style.fontSize, view.width, view.height};
    switch (property) {
        case Property::fillOpacity:
            return applyOpacity(style.fillOpacity, value);
        case Property::strokeOpacity:
            return applyOpacity(style.strokeOpacity, value);
        case Property::fillRule:
            return setKeyword(style.fillRule, value, kFillRules);
        case Property::clipRule:
            return setKeyword(style.clipRule, value, kFillRules);
        case Property::strokeWidth:
            return applyLength(style.strokeWidth, value, context, false);
        case Property::strokeLinecap:
            return setKeyword(style.lineCap, value, kLineCaps);
        case Property::strokeLinejoin:
            return setKeyword(style.lineJoin, value, kLineJoins);
        case Property::strokeMiterlimit:
            if (double limit = 0; takeNumber(value, limit) && limit >= 1) style.miterLimit = limit;
            return;
        case Property::strokeDasharray:
            style.dashArray = emptyForNone(value);
            return;
        case Property::strokeDashoffset:
            return applyLength(style.dashOffset, value, context, true);
        case Property::paintOrder:
            return applyPaintOrder(style.paintOrder, value);
        case Property::markerStart:
            style.markerStart = emptyForNone(value);
            return;
        case Property::markerMid:
            style.markerMid = emptyForNone(value);
            return;
        case Property::markerEnd:
            style.markerEnd = emptyForNone(value);
            return;
        case Property::marker:
            style.markerStart = style.markerMid = style.markerEnd = emptyForNone(value);
            return;
        case Property::font:
            return applyFont(style, parent, value);
        case Property::fontFamily:
            style.fontFamily = value;
            return;
        case Property::fontWeight:
            return applyFontWeight(style.fontWeight, parent.fontWeight, value);
        case Property::fontStyle:
            return setKeyword(style.italic, takeWord(value), kFontStyles);
        case Property::letterSpacing:
            return applyLength(style.letterSpacing, value, context, true);
        case Property::wordSpacing:
            return applyLength(style.wordSpacing, value, context, true);
        case Property::whiteSpace:
            return setKeyword(style.preserveSpace, value, kWhiteSpaces);
        case Property::dominantBaseline:
            return setKeyword(style.baseline, value, kBaselines);
        case Property::imageRendering:
            return setKeyword(style.smoothImages, value, kImageRendering);
        case Property::filterColors:
            return setKeyword(style.linearFilters, value, kFilterColors);
        case Property::baselineShift:
            style.own.baselineShift = value;
            return;
        case Property::textDecoration:
            return applyTextDecoration(style.own, value);
        case Property::opacity:
            return applyOpacity(style.own.opacity, value);
        case Property::stopOpacity:
            return applyOpacity(style.own.stopOpacity, value);
        case Property::floodColor:
            parsePaint(value, style.own.floodColor);
            return;
        case Property::floodOpacity:
            return applyOpacity(style.own.floodOpacity, value);
        case Property::lightingColor:
            parsePaint(value, style.own.lightingColor);
            return;
        case Property::maskType:
            return setKeyword(style.own.alphaMask, value, kMaskTypes);
        case Property::overflow:
            return setKeyword(style.own.showsOverflow, value, kOverflows);
        case Property::vectorEffect:
            return setKeyword(style.own.keepsStrokeWidth, value, kVectorEffects);
        case Property::mixBlendMode:
            if (const std::optional<EBlend> blend = blendModeOf(value)) style.own.blend = *blend;
            return;
        case Property::isolation:
            return setKeyword(style.own.isolated, value, kIsolations);
        default:
            return;
    }
}

}  // namespace

DrawStyle DrawStyle::inherited() const {
    DrawStyle style = *this;
    static_cast<Style&>(style) = Style::inherited();
    style.own = Own();
    style.hasOwn = false;
    return style;
}

const DrawStyle& DrawStyleResolver::compute(pugi::xml_node element, const DrawAttributes& attributes,
                                            const DrawStyle& parent, const View& view, DrawStyle& room) {
    m_fromSheet.clear();
    if (!m_sheet.isEmpty()) {
        m_sheet.collect(element, attributes.get(Attribute::id), attributes.get(Attribute::class_),
                        m_fromSheet);
    }
    if (m_fromSheet.empty() && !attributes.hasPresentation() && !attributes.has(Attribute::style) &&
        parent.isInheritedWhole()) {
        return parent;
    }
    DrawStyle& style = room;
    style = parent;
    if (!parent.isInheritedWhole()) style = parent.inherited();
    attributes.forEachPresentation([&](Property property, std::string_view value) {
        applyDrawProperty(style, parent, view, property, value);
    });
    cascade(m_fromSheet, attributes.get(Attribute::style), Vocabulary::drawing, [&](const Declaration& one) {
        if (one.hasPaint) {
            applyDeclaration(style, parent, one);
        } else {
            applyDrawProperty(style, parent, view, one.property, one.value);
        }
    });
    return style;
}

void parseDashes(std::string_view text, const LengthContext& context, std::vector<double>& dashes) {
    // More than any drawing program writes: what follows is not looked at.
    constexpr std::size_t kMostDashes = 1024;
    dashes.clear();
    bool visible = false;
    while (!(text = skipSeparator(text)).empty() && dashes.size() < kMostDashes) {
        std::size_t length = 0;
        while (length < text.size() && !isSpace(text[length]) && text[length] != ',') ++length;
        double value = 0;
        if (!parseLength(text.substr(0, length), Axis::both, context, value) || value < 0) {
            dashes.clear();
            return;
        }
        visible |= value > 0;
        dashes.push_back(value);
        text.remove_prefix(length);
    }
    if (!visible) dashes.clear();
}

}  // namespace svg
