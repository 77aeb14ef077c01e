#include "formats/svg/style/style.h"

#include <array>

#include "formats/svg/values/color.h"
#include "formats/svg/values/text_scan.h"
#include "formats/svg/values/units.h"
#include "formats/svg/values/word_table.h"

namespace svg {

namespace {

constexpr auto kProperties = makeWordTable<Property>({
    {"fill", Property::fill},
    {"stroke", Property::stroke},
    {"color", Property::color},
    {"display", Property::display},
    {"visibility", Property::visibility},
    {"font-size", Property::fontSize},
    {"text-anchor", Property::textAnchor},
    {"filter", Property::filter},
    {"mask", Property::mask},
    {"clip-path", Property::clipPath},
    {"stop-color", Property::stopColor},
});

constexpr auto kDrawingProperties = kProperties.with({
    {"fill-opacity", Property::fillOpacity},
    {"stroke-opacity", Property::strokeOpacity},
    {"fill-rule", Property::fillRule},
    {"clip-rule", Property::clipRule},
    {"stroke-width", Property::strokeWidth},
    {"stroke-linecap", Property::strokeLinecap},
    {"stroke-linejoin", Property::strokeLinejoin},
    {"stroke-miterlimit", Property::strokeMiterlimit},
    {"stroke-dasharray", Property::strokeDasharray},
    {"stroke-dashoffset", Property::strokeDashoffset},
    {"paint-order", Property::paintOrder},
    {"marker-start", Property::markerStart},
    {"marker-mid", Property::markerMid},
    {"marker-end", Property::markerEnd},
    {"marker", Property::marker},
    {"font", Property::font},
    {"font-family", Property::fontFamily},
    {"font-weight", Property::fontWeight},
    {"font-style", Property::fontStyle},
    {"letter-spacing", Property::letterSpacing},
    {"word-spacing", Property::wordSpacing},
    {"white-space", Property::whiteSpace},
    {"dominant-baseline", Property::dominantBaseline},
    {"baseline-shift", Property::baselineShift},
    {"text-decoration", Property::textDecoration},
    {"text-decoration-line", Property::textDecoration},
    {"image-rendering", Property::imageRendering},
    {"color-interpolation-filters", Property::filterColors},
    {"opacity", Property::opacity},
    {"stop-opacity", Property::stopOpacity},
    {"flood-color", Property::floodColor},
    {"flood-opacity", Property::floodOpacity},
    {"lighting-color", Property::lightingColor},
    {"mask-type", Property::maskType},
    {"overflow", Property::overflow},
    {"vector-effect", Property::vectorEffect},
    {"mix-blend-mode", Property::mixBlendMode},
    {"isolation", Property::isolation},
});

struct FontKeyword {
    std::string_view name;
    double size;
};

constexpr FontKeyword kFontSizes[] = {{"xx-small", 9}, {"x-small", 10}, {"small", 13},   {"medium", 16},
                                      {"large", 18},   {"x-large", 24}, {"xx-large", 32}};

bool isInherited(Property property) {
    return property < Property::filter && property != Property::display;
}

// Copies a property from one style to another: "inherit" from the parent, "initial" from a fresh style.
void copyProperty(Style& style, const Style& from, Property property) {
    switch (property) {
        case Property::fill:
            style.fill = from.fill;
            break;
        case Property::stroke:
            style.stroke = from.stroke;
            break;
        case Property::color:
            style.color = from.color;
            break;
        case Property::visibility:
            style.visible = from.visible;
            break;
        case Property::fontSize:
            style.fontSize = from.fontSize;
            break;
        case Property::textAnchor:
            style.textAnchor = from.textAnchor;
            break;
        case Property::filter:
            style.filter = from.filter;
            break;
        case Property::mask:
            style.mask = from.mask;
            break;
        case Property::clipPath:
            style.clipPath = from.clipPath;
            break;
        case Property::stopColor:
            style.stopColor = from.stopColor;
            break;
        default:
            break;
    }
}

void applyColor(Style& style, const Style& parent, std::string_view value) {
    if (equalsNoCase(value, "currentcolor")) {
        style.color = parent.color;
    } else if (std::uint32_t rgb = 0; takeColor(value, rgb)) {
        style.color = rgb;
    }
}

void applyFontSize(Style& style, const Style& parent, std::string_view value) {
    for (const FontKeyword& keyword : kFontSizes) {
        if (equalsNoCase(value, keyword.name)) style.fontSize = keyword.size;
    }
    if (equalsNoCase(value, "smaller")) style.fontSize = parent.fontSize / 1.2;
    if (equalsNoCase(value, "larger")) style.fontSize = parent.fontSize * 1.2;
    const LengthContext context{parent.fontSize, parent.fontSize, parent.fontSize};
    double size = 0;
    if (parseLength(value, Axis::horizontal, context, size) && size >= 0) style.fontSize = size;
}

void applyTextAnchor(Style& style, std::string_view value) {
    if (equalsNoCase(value, "start")) style.textAnchor = TextAnchor::start;
    if (equalsNoCase(value, "middle")) style.textAnchor = TextAnchor::middle;
    if (equalsNoCase(value, "end")) style.textAnchor = TextAnchor::end;
}

std::string_view noneIsEmpty(std::string_view value) {
    return equalsNoCase(value, "none") ? "" : value;
}

enum CharacterClass : std::uint8_t { ordinary, semicolon, quotation, opening, closing };

constexpr auto kCharacters = [] {
    std::array<std::uint8_t, 256> table{};
    table[';'] = semicolon;
    table['"'] = table['\''] = quotation;
    table['('] = opening;
    table[')'] = closing;
    return table;
}();

// The length of a declaration: up to a semicolon outside quotes and parentheses.
std::size_t declarationLength(std::string_view text) {
    int depth = 0;
    const auto kindAt = [text](std::size_t i) { return kCharacters[static_cast<unsigned char>(text[i])]; };
    for (std::size_t i = 0; i < text.size(); ++i) {
        while (kindAt(i) == ordinary) {
            if (++i == text.size()) return i;
        }
        switch (kindAt(i)) {
            case semicolon:
                if (depth <= 0) return i;
                break;
            case quotation:
                i = text.find(text[i], i + 1);
                if (i == text.npos) return text.size();
                break;
            case opening:
                ++depth;
                break;
            case closing:
                --depth;
                break;
            default:
                break;
        }
    }
    return text.size();
}

bool takeImportant(std::string_view& value) {
    if (value.empty() || toLower(value.back()) != 't') return false;
    const std::size_t mark = value.rfind('!');
    if (mark == value.npos || !equalsNoCase(trim(value.substr(mark + 1)), "important")) return false;
    value = trim(value.substr(0, mark));
    return true;
}

}  // namespace

Style Style::inherited() const {
    Style style = *this;
    style.filter = style.mask = style.clipPath = {};
    style.stopColor = Style().stopColor;
    return style;
}

Property findProperty(std::string_view name, Vocabulary vocabulary) {
    return vocabulary == Vocabulary::import ? kProperties.find(name, Property::unknown)
                                            : kDrawingProperties.find(name, Property::unknown);
}

GlobalWord globalWord(std::string_view value, bool isInherited) {
    if (value.size() < 5) return GlobalWord::none;
    const char first = toLower(value[0]);
    if (first != 'i' && first != 'u' && first != 'r') return GlobalWord::none;
    const bool natural = equalsNoCase(value, "unset") || equalsNoCase(value, "revert");
    if (equalsNoCase(value, "inherit") || (natural && isInherited)) return GlobalWord::inherit;
    return natural || equalsNoCase(value, "initial") ? GlobalWord::initial : GlobalWord::none;
}

// The size in a "font" shorthand: the last word before the family that starts with a digit, "12px/1.4"
// included.
std::string_view fontSizeOf(std::string_view font) {
    while (!font.empty()) {
        std::string_view word = takeWord(font);
        if (word.empty() || !(isDigit(word.front()) || word.front() == '.')) continue;
        word = word.substr(0, word.find('/'));
        const char last = word.back();
        if (!isDigit(last)) return word;  // without a unit it is the weight
    }
    return {};
}

void applyProperty(Style& style, const Style& parent, Property property, std::string_view value) {
    value = trim(value);
    if (value.empty()) return;
    if (property == Property::display) {  // not inherited as a property, but in effect
        style.displayed = parent.displayed && !equalsNoCase(value, "none");
        return;
    }
    if (const GlobalWord word = globalWord(value, isInherited(property)); word != GlobalWord::none) {
        copyProperty(style, word == GlobalWord::inherit ? parent : Style(), property);
        return;
    }
    switch (property) {
        case Property::fill:
            parsePaint(value, style.fill);
            break;
        case Property::stroke:
            parsePaint(value, style.stroke);
            break;
        case Property::color:
            applyColor(style, parent, value);
            break;
        case Property::visibility:
            if (equalsNoCase(value, "visible")) style.visible = true;
            if (equalsNoCase(value, "hidden") || equalsNoCase(value, "collapse")) style.visible = false;
            break;
        case Property::fontSize:
            applyFontSize(style, parent, value);
            break;
        case Property::textAnchor:
            applyTextAnchor(style, value);
            break;
        case Property::filter:
            style.filter = noneIsEmpty(value);
            break;
        case Property::mask:
            style.mask = noneIsEmpty(value);
            break;
        case Property::clipPath:
            style.clipPath = noneIsEmpty(value);
            break;
        case Property::stopColor:
            parsePaint(value, style.stopColor);
            break;
        default:
            break;
    }
}

void applyDeclaration(Style& style, const Style& parent, const Declaration& declaration) {
    if (!declaration.hasPaint) {
        applyProperty(style, parent, declaration.property, declaration.value);
    } else if (declaration.property == Property::fill) {
        style.fill = declaration.paint;
    } else {
        style.stroke = declaration.paint;
    }
}

void prepare(Declaration& declaration) {
    const bool isPaint = declaration.property == Property::fill || declaration.property == Property::stroke;
    // No paint is written like the words that copy a property.
    declaration.hasPaint = isPaint && parsePaint(declaration.value, declaration.paint);
}

bool takeDeclaration(std::string_view& text, Declaration& declaration, Vocabulary vocabulary) {
    while (!text.empty()) {
        std::size_t colon = 0;
        while (colon < text.size() && text[colon] != ':' && text[colon] != ';') ++colon;
        const std::size_t length = colon + declarationLength(text.substr(colon));
        const std::string_view whole = text.substr(0, length);
        text.remove_prefix(length < text.size() ? length + 1 : length);
        if (colon == whole.size()) continue;
        const std::string_view name = trim(whole.substr(0, colon));
        Property property = findProperty(name, vocabulary);
        const bool shorthand =
            vocabulary == Vocabulary::import && property == Property::unknown && equalsNoCase(name, "font");
        if (property == Property::unknown && !shorthand) {
            // Written in capitals, rarely.
            char lower[32];
            if (name.empty() || name.size() > sizeof lower || (name[0] >= 'a' && name[0] <= 'z')) continue;
            for (std::size_t i = 0; i < name.size(); ++i) lower[i] = toLower(name[i]);
            property = findProperty({lower, name.size()}, vocabulary);
            if (property == Property::unknown) continue;
        }
        declaration.value = trim(whole.substr(colon + 1));
        declaration.important = takeImportant(declaration.value);
        declaration.property = shorthand ? Property::fontSize : property;
        if (shorthand) declaration.value = fontSizeOf(declaration.value);
        return true;
    }
    return false;
}

}  // namespace svg
