#include "formats/svg/style/properties.h"

#include <algorithm>
#include <array>
#include <optional>

#include "formats/svg/style/attributes.h"
#include "formats/svg/style/variables.h"
#include "formats/svg/values/basic_shape.h"
#include "formats/svg/values/blend_mode.h"
#include "formats/svg/values/color.h"
#include "formats/svg/values/text_scan.h"
#include "formats/svg/values/transform.h"
#include "formats/svg/values/units.h"
#include "formats/svg/values/word_table.h"

namespace svg {

namespace {

// Readers of values: each sets its target; false, with nothing changed, for a value that it does not know.

struct Value {
    std::string_view text;
    const Reading& reading;
    const Style& style;  // as far as it is computed

    LengthContext lengths() const { return {style.fontSize, reading.viewportWidth, reading.viewportHeight}; }
};

bool paint(Paint& target, const Value& value) {
    return parsePaint(value.text, target);
}

// For stops, floods and lights: no reference, no "none".
bool plainColor(Paint& target, const Value& value) {
    Paint color;
    if (equalsNoCase(value.text, "transparent")) {
        target = {.kind = PaintKind::rgb, .alpha = 0};
        return true;
    }
    if (!parsePaint(value.text, color)) return false;
    if (color.kind != PaintKind::rgb && color.kind != PaintKind::currentColor &&
        color.kind != PaintKind::cmyk)
        return false;
    target = color;
    return true;
}

// The colour among the words of "background"; nothing is said of images.
bool background(Paint& target, const Value& value) {
    for (std::string_view text = value.text; !(text = trimFront(text)).empty();) {
        if (text.find('(') != text.npos && plainColor(target, {text, value.reading, value.style}))
            return true;
        if (plainColor(target, {takeWord(text), value.reading, value.style})) return true;
    }
    target = {};
    return !hasVariable(value.text);
}

bool color(std::uint32_t& target, const Value& value) {
    std::string_view text = value.text;
    if (!equalsNoCase(text, "currentcolor")) return takeColor(text, target);
    target = value.reading.parent.color;
    return true;
}

bool transform(std::string_view& target, const Value& value) {
    Affine any;
    if (!parseStyleTransform(value.text, {}, any)) return false;
    target = value.text;
    return true;
}

bool transformOrigin(std::string_view& target, const Value& value) {
    AFPoint any;
    if (!parseTransformOrigin(value.text, {}, any)) return false;
    target = value.text;
    return true;
}

// A reference, or several words that are read where they are used.
bool written(std::string_view& target, const Value& value) {
    if (hasVariable(value.text)) return false;
    target = value.text;
    return true;
}

bool writtenOrNone(std::string_view& target, const Value& value) {
    if (!equalsNoCase(value.text, "none")) return written(target, value);
    target = {};
    return true;
}

bool clipPath(std::string_view& target, const Value& value) {
    const std::string_view text = value.text;
    const bool isKnown = startsWithNoCase(text, "url(") || equalsNoCase(text, "none") || isBasicShape(text);
    return isKnown && writtenOrNone(target, value);
}

// A number or a percentage, cut to 0..1.
bool opacity(double& target, const Value& value) {
    double share = 0;
    if (!parseShare(value.text, share)) return false;
    target = std::clamp(share, 0.0, 1.0);
    return true;
}

// "normal" is the word for no spacing.
bool anyLength(double& target, const Value& value) {
    if (!equalsNoCase(value.text, "normal"))
        return parseLength(value.text, Axis::both, value.lengths(), target);
    target = 0;
    return true;
}

bool positiveLength(double& target, const Value& value) {
    double length = 0;
    if (!anyLength(length, value) || length < 0) return false;
    target = length;
    return true;
}

bool miterLimit(double& target, const Value& value) {
    std::string_view text = value.text;
    double limit = 0;
    if (!takeNumber(text, limit) || !text.empty() || limit < 0) return false;
    // A limit below 1 leaves no miter at all.
    target = std::max(limit, 1.0);
    return true;
}

template <class T>
struct Keyword {
    std::string_view word;
    T value;
};

template <class T, std::size_t Count>
bool setKeyword(T& target, std::string_view text, const Keyword<T> (&words)[Count]) {
    for (const Keyword<T>& one : words) {
        if (!equalsNoCase(text, one.word)) continue;
        target = one.value;
        return true;
    }
    return false;
}

template <const auto& words>
struct OneOf {
    bool operator()(auto& target, const Value& value) const { return setKeyword(target, value.text, words); }
};
template <const auto& words>
constexpr OneOf<words> keyword{};

constexpr Keyword<bool> kVisibilities[] = {{"visible", true}, {"hidden", false}, {"collapse", false}};
constexpr Keyword<TextAnchor> kTextAnchors[] = {
    {"start", TextAnchor::start}, {"middle", TextAnchor::middle}, {"end", TextAnchor::end}};
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
    {"central", Baseline::central},       {"mathematical", Baseline::mathematical},
    {"hanging", Baseline::hanging},       {"text-before-edge", Baseline::textBefore},
    {"text-top", Baseline::textBefore},   {"text-after-edge", Baseline::textAfter},
    {"text-bottom", Baseline::textAfter}, {"ideographic", Baseline::ideographic}};
constexpr Keyword<std::optional<Baseline>> kAlignments[] = {{"auto", std::nullopt},
                                                            {"baseline", std::nullopt},
                                                            {"alphabetic", Baseline::alphabetic},
                                                            {"middle", Baseline::middle},
                                                            {"central", Baseline::central},
                                                            {"mathematical", Baseline::mathematical},
                                                            {"hanging", Baseline::hanging},
                                                            {"before-edge", Baseline::textBefore},
                                                            {"text-before-edge", Baseline::textBefore},
                                                            {"after-edge", Baseline::textAfter},
                                                            {"text-after-edge", Baseline::textAfter},
                                                            {"ideographic", Baseline::ideographic}};
constexpr Keyword<bool> kColorSpaces[] = {{"auto", false}, {"srgb", false}, {"linearrgb", true}};
constexpr Keyword<bool> kShapeRenderings[] = {
    {"auto", true}, {"geometricprecision", true}, {"optimizespeed", false}, {"crispedges", false}};
constexpr Keyword<bool> kFontVariants[] = {{"normal", false}, {"none", false}, {"small-caps", true}};
constexpr Keyword<bool> kDirections[] = {{"ltr", false}, {"rtl", true}};
constexpr Keyword<bool> kWritingModes[] = {{"lr", false},    {"lr-tb", false},         {"rl", false},
                                           {"rl-tb", false}, {"horizontal-tb", false}, {"tb", true},
                                           {"tb-rl", true},  {"vertical-rl", true},    {"vertical-lr", true}};
constexpr Keyword<std::uint8_t> kFontStretches[] = {
    {"normal", 100},         {"ultra-condensed", 50}, {"extra-condensed", 62}, {"condensed", 75},
    {"semi-condensed", 87},  {"semi-expanded", 112},  {"expanded", 125},       {"extra-expanded", 150},
    {"ultra-expanded", 200}, {"narrower", 75},        {"wider", 125}};
constexpr Keyword<TransformBox> kTransformBoxes[] = {{"view-box", TransformBox::viewBox},
                                                     {"border-box", TransformBox::strokeBox},
                                                     {"stroke-box", TransformBox::strokeBox},
                                                     {"content-box", TransformBox::fillBox},
                                                     {"fill-box", TransformBox::fillBox}};
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
constexpr Keyword<double> kFontSizes[] = {{"xx-small", 9}, {"x-small", 10}, {"small", 13},   {"medium", 16},
                                          {"large", 18},   {"x-large", 24}, {"xx-large", 32}};
constexpr Keyword<PaintPart> kPaintParts[] = {
    {"fill", PaintPart::fill}, {"stroke", PaintPart::stroke}, {"markers", PaintPart::markers}};

// In effect, though not by the rules, display is inherited: nothing shows inside of what does not.
bool display(bool& target, const Value& value) {
    if (hasVariable(value.text)) return false;
    target = value.reading.parent.displayed && !equalsNoCase(value.text, "none");
    return true;
}

bool fontSize(double& target, const Value& value) {
    const double around = value.reading.parent.fontSize;
    const Keyword<double> relative[] = {{"smaller", around / 1.2}, {"larger", around * 1.2}};
    if (setKeyword(target, value.text, kFontSizes) || setKeyword(target, value.text, relative)) return true;
    double size = 0;
    if (!parseLength(value.text, Axis::horizontal, {around, around, around}, size) || size < 0) return false;
    target = size;
    return true;
}

bool fontWeight(int& target, const Value& value) {
    std::string_view text = value.text;
    const int around = value.reading.parent.fontWeight;
    const Keyword<int> relative[] = {{"bolder", around < 350   ? 400
                                                : around < 550 ? 700
                                                               : 900},
                                     {"lighter", around < 550   ? 100
                                                 : around < 750 ? 400
                                                                : 700}};
    if (setKeyword(target, text, kFontWeights) || setKeyword(target, text, relative)) return true;
    double number = 0;
    if (!takeNumber(text, number) || !text.empty() || number < 1 || number > 1000) return false;
    target = static_cast<int>(number);
    return true;
}

bool fontVariant(bool& target, const Value& value) {
    bool any = false;
    for (std::string_view text = value.text; !(text = trimFront(text)).empty();) {
        bool caps = false;
        if (setKeyword(caps, takeWord(text), kFontVariants)) any |= caps;
    }
    target = any;
    return !hasVariable(value.text);
}

bool fontStretch(std::uint8_t& target, const Value& value) {
    if (setKeyword(target, value.text, kFontStretches)) return true;
    std::string_view text = value.text;
    double percent = 0;
    if (!takeNumber(text, percent) || text != "%" || percent < 0) return false;
    target = static_cast<std::uint8_t>(std::min(percent, 200.0));
    return true;
}

bool fontStyle(bool& target, const Value& value) {
    std::string_view text = value.text;
    return setKeyword(target, takeWord(text), kFontStyles);
}

// The parts that are named, each once, then the others; "normal" names none.
bool paintOrder(std::array<PaintPart, 3>& order, const Value& value) {
    std::array<PaintPart, 3> result{};
    std::size_t count = 0;
    const auto add = [&](PaintPart part) {
        const auto end = result.begin() + static_cast<std::ptrdiff_t>(count);
        if (std::find(result.begin(), end, part) != end) return false;
        result[count++] = part;
        return true;
    };
    std::string_view text = equalsNoCase(value.text, "normal") ? std::string_view() : value.text;
    while (!(text = trimFront(text)).empty()) {
        PaintPart part{};
        if (!setKeyword(part, takeWord(text), kPaintParts) || !add(part)) return false;
    }
    for (const Keyword<PaintPart>& one : kPaintParts) add(one.value);
    order = result;
    return true;
}

bool textDecoration(TextDecoration& target, const Value& value) {
    target = {};
    for (std::string_view text = value.text; !(text = trimFront(text)).empty();) {
        const std::string_view word = takeWord(text);
        target.underline |= equalsNoCase(word, "underline");
        target.overline |= equalsNoCase(word, "overline");
        target.lineThrough |= equalsNoCase(word, "line-through");
    }
    return !hasVariable(value.text);
}

bool blendMode(EBlend& target, const Value& value) {
    const std::optional<EBlend> mode = blendModeOf(value.text);
    target = mode.value_or(target);
    return mode.has_value();
}

// Shorthands.

bool marker(Style& style, const Value& value) {
    if (!writtenOrNone(style.markerStart, value)) return false;
    style.markerMid = style.markerEnd = style.markerStart;
    return true;
}

// The size in a "font" shorthand: the last word before the family that starts with a digit (12px/1.4).
std::string_view fontSizeOf(std::string_view font) {
    while (!font.empty()) {
        std::string_view word = takeWord(font);
        if (word.empty() || !(isDigit(word.front()) || word.front() == '.')) continue;
        word = word.substr(0, word.find('/'));
        if (!isDigit(word.back())) return word;  // without a unit it is the weight
    }
    return {};
}

// "italic bold 12px/1.4 'Name', sans-serif": words up to the size, then the family.
bool font(Style& style, const Value& value) {
    const std::string_view text = value.text;
    if (hasVariable(text)) return false;
    style.italic = false;
    style.fontWeight = 400;
    style.smallCaps = false;
    const std::string_view size = fontSizeOf(text);
    if (size.empty()) return true;
    const std::string_view before = text.substr(0, static_cast<std::size_t>(size.data() - text.data()));
    for (std::string_view rest = before; !(rest = trimFront(rest)).empty();) {
        const Value word{takeWord(rest), value.reading, style};
        fontStyle(style.italic, word);
        fontWeight(style.fontWeight, word);
        setKeyword(style.smallCaps, word.text, kFontVariants);
    }
    fontSize(style.fontSize, {size, value.reading, style});
    std::string_view family = text.substr(before.size());
    takeWord(family);  // the size with its line height
    style.fontFamily = trim(family);
    return true;
}

struct Row {
    std::string_view name;
    bool isInherited = true;
    Vocabulary vocabulary = Vocabulary::drawing;
    bool isAttribute = true;  // else it is for style sheets and style attributes only
    bool (*read)(Style& style, const Value& value) = nullptr;
    // "inherit" from the parent, "initial" from a fresh style; null: no such words.
    void (*copy)(Style& style, const Style& from) = nullptr;
    PaintMember paint = nullptr;

    constexpr Row forModel() const {
        Row row = *this;
        row.vocabulary = Vocabulary::model;
        return row;
    }
    constexpr Row inStylesOnly() const {
        Row row = *this;
        row.isAttribute = false;
        return row;
    }
};

template <class T>
constexpr auto& memberOf(auto& style, T InheritedStyle::*member) {
    return style.*member;
}
template <class T>
constexpr auto& memberOf(auto& style, T OwnStyle::*member) {
    return style.own.*member;
}
template <class T>
constexpr bool isInheritedMember(T InheritedStyle::*) {
    return true;
}
template <class T>
constexpr bool isInheritedMember(T OwnStyle::*) {
    return false;
}

// A property with one member, which says by where it stands whether the property inherits.
template <auto member, auto readValue>
constexpr Row row(std::string_view name) {
    Row row;
    row.name = name;
    row.isInherited = isInheritedMember(member);
    row.read = [](Style& style, const Value& value) { return readValue(memberOf(style, member), value); };
    row.copy = [](Style& style, const Style& from) { memberOf(style, member) = memberOf(from, member); };
    if constexpr (std::is_same_v<decltype(member), PaintMember>) row.paint = member;
    return row;
}

template <auto readValue, auto... members>
constexpr Row shorthand(std::string_view name) {
    Row row;
    row.name = name;
    row.isAttribute = false;
    row.read = readValue;
    row.copy = [](Style& style, const Style& from) { ((style.*members = from.*members), ...); };
    return row;
}

constexpr Row withoutCopy(Row row) {
    row.copy = nullptr;
    return row;
}

using In = InheritedStyle;
using Own = OwnStyle;

// Presentation attributes are applied in this order, so the font size, which others refer to, stands first.
constexpr Row kProperties[] = {
    row<&In::fontSize, fontSize>("font-size").forModel(),
    row<&In::fill, paint>("fill").forModel(),
    row<&In::stroke, paint>("stroke").forModel(),
    row<&In::color, color>("color").forModel(),
    withoutCopy(row<&In::displayed, display>("display")).forModel(),
    row<&In::visible, keyword<kVisibilities>>("visibility").forModel(),
    row<&In::textAnchor, keyword<kTextAnchors>>("text-anchor").forModel(),
    row<&Own::filter, writtenOrNone>("filter").forModel(),
    row<&Own::mask, writtenOrNone>("mask").forModel(),
    row<&Own::clipPath, clipPath>("clip-path").forModel(),
    row<&Own::stopColor, plainColor>("stop-color").forModel(),
    shorthand<font, &In::fontSize, &In::fontFamily, &In::fontWeight, &In::italic, &In::smallCaps>("font")
        .forModel(),
    row<&Own::transform, transform>("transform").inStylesOnly().forModel(),
    row<&Own::transformOrigin, transformOrigin>("transform-origin").forModel(),
    row<&Own::transformBox, keyword<kTransformBoxes>>("transform-box").forModel(),
    row<&In::fillOpacity, opacity>("fill-opacity"),
    row<&In::strokeOpacity, opacity>("stroke-opacity"),
    row<&In::fillRule, keyword<kFillRules>>("fill-rule"),
    row<&In::clipRule, keyword<kFillRules>>("clip-rule"),
    row<&In::strokeWidth, positiveLength>("stroke-width"),
    row<&In::lineCap, keyword<kLineCaps>>("stroke-linecap"),
    row<&In::lineJoin, keyword<kLineJoins>>("stroke-linejoin"),
    row<&In::miterLimit, miterLimit>("stroke-miterlimit"),
    row<&In::dashArray, writtenOrNone>("stroke-dasharray"),
    row<&In::dashOffset, anyLength>("stroke-dashoffset"),
    row<&In::paintOrder, paintOrder>("paint-order"),
    row<&In::markerStart, writtenOrNone>("marker-start"),
    row<&In::markerMid, writtenOrNone>("marker-mid"),
    row<&In::markerEnd, writtenOrNone>("marker-end"),
    shorthand<marker, &In::markerStart, &In::markerMid, &In::markerEnd>("marker"),
    row<&In::fontFamily, written>("font-family"),
    row<&In::fontWeight, fontWeight>("font-weight"),
    row<&In::italic, fontStyle>("font-style"),
    row<&In::smallCaps, fontVariant>("font-variant"),
    row<&In::smallCaps, fontVariant>("font-variant-caps").inStylesOnly(),
    row<&In::fontStretch, fontStretch>("font-stretch"),
    row<&In::rightToLeft, keyword<kDirections>>("direction"),
    row<&In::vertical, keyword<kWritingModes>>("writing-mode"),
    row<&In::linearColors, keyword<kColorSpaces>>("color-interpolation"),
    row<&In::smooth, keyword<kShapeRenderings>>("shape-rendering"),
    row<&In::letterSpacing, anyLength>("letter-spacing"),
    row<&In::wordSpacing, anyLength>("word-spacing"),
    row<&In::preserveSpace, keyword<kWhiteSpaces>>("white-space"),
    row<&In::baseline, keyword<kBaselines>>("dominant-baseline"),
    row<&In::smoothImages, keyword<kImageRendering>>("image-rendering"),
    row<&In::linearFilters, keyword<kFilterColors>>("color-interpolation-filters"),
    row<&Own::baselineShift, written>("baseline-shift"),
    row<&Own::alignment, keyword<kAlignments>>("alignment-baseline"),
    row<&Own::background, background>("background").inStylesOnly(),
    row<&Own::background, plainColor>("background-color").inStylesOnly(),
    row<&Own::decoration, textDecoration>("text-decoration"),
    row<&Own::decoration, textDecoration>("text-decoration-line"),
    row<&Own::opacity, opacity>("opacity"),
    row<&Own::stopOpacity, opacity>("stop-opacity").forModel(),
    row<&Own::floodColor, plainColor>("flood-color"),
    row<&Own::floodOpacity, opacity>("flood-opacity"),
    row<&Own::lightingColor, plainColor>("lighting-color"),
    row<&Own::alphaMask, keyword<kMaskTypes>>("mask-type"),
    row<&Own::showsOverflow, keyword<kOverflows>>("overflow"),
    row<&Own::keepsStrokeWidth, keyword<kVectorEffects>>("vector-effect"),
    row<&Own::blend, blendMode>("mix-blend-mode").inStylesOnly(),
    row<&Own::isolated, keyword<kIsolations>>("isolation").inStylesOnly(),
};
static_assert(std::size(kProperties) <= 64);

// The names of a vocabulary's rows.
template <Vocabulary vocabulary>
constexpr auto namesOf() {
    constexpr auto isWanted = [](const Row& row) { return row.vocabulary <= vocabulary; };
    std::array<Word<Property>, std::count_if(std::begin(kProperties), std::end(kProperties), isWanted)>
        words{};
    std::size_t count = 0;
    for (std::size_t i = 0; i < std::size(kProperties); ++i) {
        if (isWanted(kProperties[i])) words[count++] = {kProperties[i].name, static_cast<Property>(i)};
    }
    return WordTable<Property, words.size()>(words);
}
constexpr Property geometry(Attribute attribute) {
    return static_cast<Property>(kGeometry + static_cast<std::uint8_t>(attribute));
}
// Behind the attributes: transforms beside "transform".
constexpr Property kSingleTransform = geometry(Attribute::count);
static_assert(kSingleTransform + 3 < kVariable);
constexpr Word<Property> kGeometryNames[] = {
    {"x", geometry(Attribute::x)},         {"y", geometry(Attribute::y)},
    {"width", geometry(Attribute::width)}, {"height", geometry(Attribute::height)},
    {"cx", geometry(Attribute::cx)},       {"cy", geometry(Attribute::cy)},
    {"r", geometry(Attribute::r)},         {"rx", geometry(Attribute::rx)},
    {"ry", geometry(Attribute::ry)},       {"d", geometry(Attribute::d)},
    {"translate", kSingleTransform},       {"rotate", kSingleTransform + 1},
    {"scale", kSingleTransform + 2}};

constexpr auto kModelNames = namesOf<Vocabulary::model>().with(kGeometryNames);
constexpr auto kNames = namesOf<Vocabulary::drawing>().with(kGeometryNames);

constexpr std::uint64_t kModelBits = [] {
    std::uint64_t bits = 0;
    for (std::size_t i = 0; i < std::size(kProperties); ++i) {
        if (kProperties[i].vocabulary == Vocabulary::model) bits |= std::uint64_t{1} << i;
    }
    return bits;
}();

constexpr auto kSlots = [] {
    constexpr auto isAttribute = [](const Row& row) { return row.isAttribute; };
    std::array<Word<std::uint8_t>,
               std::size(kPlainAttributes) +
                   std::count_if(std::begin(kProperties), std::end(kProperties), isAttribute)>
        words{};
    std::size_t count = 0;
    for (const Word<Attribute>& word : kPlainAttributes)
        words[count++] = {word.text, static_cast<std::uint8_t>(word.id)};
    for (std::size_t i = 0; i < std::size(kProperties); ++i) {
        if (isAttribute(kProperties[i]))
            words[count++] = {kProperties[i].name, static_cast<std::uint8_t>(kPropertySlot + i)};
    }
    return WordTable<std::uint8_t, words.size()>(words);
}();
constexpr PackedWordTable kShortSlots(kSlots);

enum class GlobalWord : std::uint8_t { none, inherit, initial };

GlobalWord globalWord(std::string_view value, bool isInherited) {
    if (value.size() < 5) return GlobalWord::none;
    const char first = toLower(value[0]);
    if (first != 'i' && first != 'u' && first != 'r') return GlobalWord::none;
    const bool natural = equalsNoCase(value, "unset") || equalsNoCase(value, "revert");
    if (equalsNoCase(value, "inherit") || (natural && isInherited)) return GlobalWord::inherit;
    return natural || equalsNoCase(value, "initial") ? GlobalWord::initial : GlobalWord::none;
}

}  // namespace

Property findProperty(std::string_view name, Vocabulary vocabulary) {
    return vocabulary == Vocabulary::model ? kModelNames.find(name, kUnknownProperty)
                                           : kNames.find(name, kUnknownProperty);
}

std::uint64_t propertiesOf(Vocabulary vocabulary) {
    return vocabulary == Vocabulary::model ? kModelBits : ~std::uint64_t{0};
}

std::uint8_t findSlot(const char* name) {
    const char* rest = name;
    const std::uint64_t key = packWord(rest);
    return *rest == '\0' ? kShortSlots.find(key, std::uint8_t{0}) : kSlots.find(name, std::uint8_t{0});
}

bool applyProperty(Style& style, const Reading& reading, Property property, std::string_view value) {
    const Row& row = kProperties[property];
    value = trim(value);
    if (value.empty()) return false;
    style.hasOwn |= !row.isInherited;
    const GlobalWord word = row.copy != nullptr ? globalWord(value, row.isInherited) : GlobalWord::none;
    if (word == GlobalWord::none) return row.read(style, {value, reading, style});
    row.copy(style, word == GlobalWord::inherit ? reading.parent : Style());
    return true;
}

void resetProperty(Style& style, const Reading& reading, Property property) {
    const Row& row = kProperties[property];
    if (row.copy != nullptr) row.copy(style, row.isInherited ? reading.parent : Style());
}

const char* geometryName(Property property) {
    for (const Word<Property>& one : kGeometryNames) {
        if (one.id == property) return one.text.data();
    }
    return "";
}

bool readGeometry(Property property, std::string_view value, std::string_view& text) {
    if (property == geometry(Attribute::d)) {
        text = {};
        if (equalsNoCase(value, "none")) return true;
        BasicShape path;
        if (!parseBasicShape(value, path) || !equalsNoCase(path.name, "path") || path.arguments.size() < 2)
            return false;
        text = path.arguments.substr(1, path.arguments.size() - 2);
        return true;
    }
    double any = 0;
    text = value;
    Affine anyTransform;
    if (property >= kSingleTransform)
        return parseSingleTransform(geometryName(property), value, {}, anyTransform);
    return equalsNoCase(value, "auto") || parseStyleLength(value, Axis::both, {}, any);
}

PaintMember paintMember(Property property) {
    return kProperties[property].paint;
}

}  // namespace svg
