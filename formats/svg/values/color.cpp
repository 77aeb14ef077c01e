#include "formats/svg/values/color.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <optional>

#include "formats/svg/values/color_spaces.h"
#include "formats/svg/values/text_scan.h"
#include "formats/svg/values/units.h"

namespace svg {

namespace {

// An argument of a colour function: its number, and the unit behind it.
struct Argument {
    double value = 0;
    bool percent = false;
};

struct Arguments {
    std::array<Argument, 5> list;
    int count = 0;
    bool commas = false;
};

std::uint32_t channel(double value) {
    return static_cast<std::uint32_t>(std::lround(std::clamp(value, 0.0, 255.0)));
}

std::uint32_t packed(double r, double g, double b) {
    return channel(r) << 16 | channel(g) << 8 | channel(b);
}

constexpr std::uint8_t kNoDigit = 0xff;

constexpr auto kHexDigits = [] {
    std::array<std::uint8_t, 256> table{};
    table.fill(kNoDigit);
    for (std::uint8_t i = 0; i < 10; ++i) table['0' + i] = i;
    for (std::uint8_t i = 0; i < 6; ++i) table['a' + i] = table['A' + i] = static_cast<std::uint8_t>(10 + i);
    return table;
}();

bool isNameEnd(std::string_view text, std::size_t at) {
    return at >= text.size() || isSpace(text[at]) || text[at] == ',' || text[at] == ')' || text[at] == '/';
}

bool takeHex(std::string_view& text, std::uint32_t& rgb, std::uint8_t* alpha) {
    std::uint32_t value = 0;
    std::size_t count = 0;
    for (; count + 1 < text.size() && count < 9; ++count) {
        const std::uint8_t digit = kHexDigits[static_cast<unsigned char>(text[count + 1])];
        if (digit == kNoDigit) break;
        value = value << 4 | digit;
    }
    if (!isNameEnd(text, count + 1)) return false;
    if (count == 4 || count == 8) {  // the opacity: one digit of four, two of eight
        if (alpha) *alpha = static_cast<std::uint8_t>(count == 4 ? (value & 0xf) * 0x11 : value & 0xff);
        value >>= count;
    }
    if (count == 3 || count == 4) {
        rgb = (value >> 8 & 0xf) * 0x110000 + (value >> 4 & 0xf) * 0x1100 + (value & 0xf) * 0x11;
    } else if (count == 6 || count == 8) {
        rgb = value;
    } else {
        return false;
    }
    text.remove_prefix(count + 1);
    return true;
}

// The angle units of a hue; the factor to degrees, 0 when it is none.
double angleUnit(std::string_view unit) {
    if (unit.empty() || equalsNoCase(unit, "deg")) return 1;
    if (equalsNoCase(unit, "grad")) return 0.9;
    if (equalsNoCase(unit, "rad")) return 180 / std::numbers::pi;
    return equalsNoCase(unit, "turn") ? 360 : 0;
}

// Takes arguments and the ")" behind them; separators are white space, commas and one slash.
bool takeArguments(std::string_view& text, Arguments& arguments) {
    std::string_view rest = trimFront(text);
    while (!rest.empty() && rest.front() != ')') {
        if (arguments.count == 5) return false;
        Argument& argument = arguments.list[static_cast<std::size_t>(arguments.count++)];
        std::size_t length = 0;
        if (startsWithNoCase(rest, "none")) {  // the component counts as 0
            rest.remove_prefix(4);
        } else if (!takeNumber(rest, argument.value)) {
            return false;
        }
        while (length < rest.size() &&
               (rest[length] == '%' || (toLower(rest[length]) >= 'a' && toLower(rest[length]) <= 'z'))) {
            ++length;
        }
        const std::string_view unit = rest.substr(0, length);
        argument.percent = unit == "%";
        if (!argument.percent) {
            const double factor = angleUnit(unit);
            if (factor == 0) return false;
            argument.value *= factor;
        }
        rest = trimFront(rest.substr(length));
        arguments.commas |= rest.starts_with(',');
        if (!rest.empty() && (rest.front() == ',' || rest.front() == '/')) rest = trimFront(rest.substr(1));
    }
    // The end of the text closes what is open.
    text = rest.empty() ? rest : rest.substr(1);
    return true;
}

// A colour in sRGB, perhaps beyond its range.
struct Rgba {
    ColorValues3 values{};
    double alpha = 1;
};

// A colour function: the space of its arguments, and what 100 % of each is.
struct ColorFunction {
    std::string_view name;
    ColorSpace space;
    ColorValues3 whole;
    double unit;  // of a plain number, for all but hues
};
constexpr ColorFunction kFunctions[] = {
    {"rgb", ColorSpace::srgb, {1, 1, 1}, 1.0 / 255}, {"rgba", ColorSpace::srgb, {1, 1, 1}, 1.0 / 255},
    {"hsl", ColorSpace::hsl, {360, 1, 1}, 0.01},     {"hsla", ColorSpace::hsl, {360, 1, 1}, 0.01},
    {"hwb", ColorSpace::hwb, {360, 1, 1}, 0.01},     {"lab", ColorSpace::lab, {100, 125, 125}, 1},
    {"lch", ColorSpace::lch, {100, 150, 360}, 1},    {"oklab", ColorSpace::oklab, {1, 0.4, 0.4}, 1},
    {"oklch", ColorSpace::oklch, {1, 0.4, 360}, 1},
};

double opacityOf(const Argument& argument) {
    return std::clamp(argument.percent ? argument.value / 100 : argument.value, 0.0, 1.0);
}

// With commas, components are all numbers or all percentages, and those of a hue's fellows percentages.
bool isLegacy(ColorSpace space, const Arguments& arguments) {
    const auto& [list, count, commas] = arguments;
    if (space == ColorSpace::srgb)
        return list[0].percent == list[1].percent && list[1].percent == list[2].percent;
    return space != ColorSpace::hsl || (list[1].percent && list[2].percent);
}

bool readColor(const ColorFunction& function, const Arguments& arguments, Rgba& color) {
    if (arguments.count != 3 && arguments.count != 4) return false;
    if (arguments.commas && !isLegacy(function.space, arguments)) return false;
    for (std::size_t i = 0; i < 3; ++i) {
        const Argument& one = arguments.list[i];
        const bool isHue = static_cast<int>(i) == hueOf(function.space);
        color.values[i] = one.percent ? one.value / 100 * function.whole[i]
                          : isHue     ? one.value
                                      : one.value * function.unit;
    }
    color.values = toSrgb(function.space, color.values);
    if (arguments.count == 4) color.alpha = opacityOf(arguments.list[3]);
    return true;
}

bool takeAnyColor(std::string_view& text, Rgba& color, int depth);

// "color(display-p3 1 0 0 / 50%)"; the name is taken.
bool takeColorInSpace(std::string_view& text, Rgba& color) {
    std::string_view rest = trimFront(text);
    const std::optional<ColorSpace> space = colorSpaceNamed(takeWord(rest));
    Arguments arguments;
    if (!space || *space > ColorSpace::xyz50 || !takeArguments(rest, arguments)) return false;
    text = rest;
    return readColor({{}, *space, {1, 1, 1}, 1}, arguments, color);
}

// "red 30%", with the percentage in front or behind; negative: none is given.
bool takeShare(std::string_view& text, Rgba& color, double& share, int depth) {
    const auto takePercentage = [&] {
        std::string_view rest = trimFront(text);
        double value = 0;
        if (share >= 0 || !takeNumber(rest, value) || !rest.starts_with('%')) return;
        share = value / 100;
        text = rest.substr(1);
    };
    share = -1;
    takePercentage();
    text = trimFront(text);
    if (!takeAnyColor(text, color, depth)) return false;
    takePercentage();
    text = trimFront(text);
    return share <= 1;
}

// Half of the shorter way round is the middle between two hues.
double mixHues(double a, double b, double share) {
    return a + std::remainder(b - a, 360) * share;
}

// "color-mix(in oklab, red 30%, blue)"; the name is taken.
bool takeMix(std::string_view& text, Rgba& color, int depth) {
    std::string_view rest = trimFront(text);
    if (!equalsNoCase(takeWord(rest), "in")) return false;
    rest = trimFront(rest);
    const std::size_t comma = rest.find(',');
    if (comma == rest.npos) return false;
    std::string_view method = rest.substr(0, comma);
    const std::optional<ColorSpace> space = colorSpaceNamed(takeWord(method));
    rest = rest.substr(comma + 1);
    Rgba first, second;
    double a = 0, b = 0;
    if (!space || !takeShare(rest, first, a, depth) || !rest.starts_with(',')) return false;
    rest.remove_prefix(1);
    if (!takeShare(rest, second, b, depth) || !rest.starts_with(')')) return false;
    text = rest.substr(1);
    if (a < 0) a = b < 0 ? 0.5 : 1 - b;
    if (b < 0) b = 1 - a;
    if (!(a + b > 0)) return false;
    const double share = b / (a + b);
    const double left = first.alpha * (1 - share);
    const double right = second.alpha * share;
    color.alpha = (left + right) * std::min(a + b, 1.0);
    const ColorValues3 from = fromSrgb(*space, first.values);
    const ColorValues3 to = fromSrgb(*space, second.values);
    for (std::size_t i = 0; i < 3; ++i) {
        const bool isHue = static_cast<int>(i) == hueOf(*space);
        color.values[i] = isHue              ? mixHues(from[i], to[i], share)
                          : left + right > 0 ? (from[i] * left + to[i] * right) / (left + right)
                                             : from[i];
    }
    color.values = toSrgb(*space, color.values);
    return true;
}

bool takeFunction(std::string_view& text, std::size_t open, Rgba& color, int depth) {
    const std::string_view name = text.substr(0, open);
    std::string_view rest = text.substr(open + 1);
    bool known = false;
    if (equalsNoCase(name, "color")) {
        known = takeColorInSpace(rest, color);
    } else if (equalsNoCase(name, "color-mix")) {
        known = takeMix(rest, color, depth + 1);
    } else if (equalsNoCase(name, "light-dark")) {
        Rgba dark;
        rest = trimFront(rest);
        known = takeAnyColor(rest, color, depth + 1) && (rest = trimFront(rest)).starts_with(',') &&
                takeAnyColor(rest = trimFront(rest.substr(1)), dark, depth + 1) &&
                (rest = trimFront(rest)).starts_with(')');
        if (known) rest.remove_prefix(1);
    } else {
        for (const ColorFunction& function : kFunctions) {
            Arguments arguments;
            if (equalsNoCase(name, function.name))
                known = takeArguments(rest, arguments) && readColor(function, arguments, color);
        }
    }
    if (known) text = rest;
    return known;
}

bool takeAnyColor(std::string_view& text, Rgba& color, int depth) {
    constexpr int kDeepestColor = 8;
    if (text.empty() || depth > kDeepestColor) return false;
    std::size_t length = 0;
    while (length < text.size() &&
           ((toLower(text[length]) >= 'a' && toLower(text[length]) <= 'z') || text[length] == '-')) {
        ++length;
    }
    if (length < text.size() && text[length] == '(') return takeFunction(text, length, color, depth);
    std::uint32_t rgb = 0;
    std::uint8_t alpha = 255;
    if (equalsNoCase(text.substr(0, length), "transparent")) {
        alpha = 0;
        text.remove_prefix(length);
    } else if (!takeColor(text, rgb, &alpha)) {
        return false;
    }
    color.values = {(rgb >> 16 & 255) / 255.0, (rgb >> 8 & 255) / 255.0, (rgb & 255) / 255.0};
    color.alpha = alpha / 255.0;
    return true;
}

}  // namespace

bool takeColor(std::string_view& text, std::uint32_t& rgb, std::uint8_t* alpha) {
    if (text.empty()) return false;
    if (text.front() == '#') return takeHex(text, rgb, alpha);
    std::size_t length = 0;
    while (length < text.size() && toLower(text[length]) >= 'a' && toLower(text[length]) <= 'z') ++length;
    if (length < text.size() && (text[length] == '(' || text[length] == '-')) {
        Rgba color;
        length = text.find('(');
        if (length == text.npos || !takeFunction(text, length, color, 0)) return false;
        // Halves stay halves on their way through other units.
        constexpr double kHair = 1e-7;
        rgb = packed(color.values[0] * 255 + kHair, color.values[1] * 255 + kHair,
                     color.values[2] * 255 + kHair);
        if (alpha) *alpha = static_cast<std::uint8_t>(channel(color.alpha * 255));
        return true;
    }
    if (!isNameEnd(text, length) || !findColorName(text.substr(0, length), rgb)) return false;
    text.remove_prefix(length);
    return true;
}

bool takeCmyk(std::string_view& text, std::array<float, 4>& cmyk) {
    constexpr std::string_view kName = "device-cmyk(";
    if (!startsWithNoCase(text, kName)) return false;
    Arguments arguments;
    std::string_view rest = text.substr(kName.size());
    if (!takeArguments(rest, arguments) || arguments.count < 4) return false;
    for (std::size_t i = 0; i < 4; ++i) {
        const Argument& argument = arguments.list[i];
        cmyk[i] = static_cast<float>(
            std::clamp(argument.percent ? argument.value / 100 : argument.value, 0.0, 1.0));
    }
    text = rest;
    return true;
}

std::uint32_t cmykToRgb(const std::array<float, 4>& cmyk) {
    const auto part = [&](std::size_t i) { return 255.0 * (1.0 - std::min(1.0F, cmyk[i] + cmyk[3])); };
    return packed(part(0), part(1), part(2));
}

}  // namespace svg
