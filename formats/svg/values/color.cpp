#include "formats/svg/values/color.h"

#include <algorithm>
#include <cmath>
#include <numbers>

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

// Takes "name(" arguments ")"; separators are white space, commas and one slash.
bool takeArguments(std::string_view& text, std::size_t nameLength, Arguments& arguments) {
    std::string_view rest = trimFront(text.substr(nameLength + 1));
    while (!rest.empty() && rest.front() != ')') {
        if (arguments.count == 5) return false;
        Argument& argument = arguments.list[static_cast<std::size_t>(arguments.count++)];
        if (!takeNumber(rest, argument.value)) return false;
        std::size_t length = 0;
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
        if (!rest.empty() && (rest.front() == ',' || rest.front() == '/')) rest = trimFront(rest.substr(1));
    }
    if (rest.empty()) return false;
    text = rest.substr(1);
    return true;
}

// From hue in degrees, saturation and lightness in 0..1.
std::uint32_t hslToRgb(double hue, double saturation, double lightness) {
    saturation = std::clamp(saturation, 0.0, 1.0);
    lightness = std::clamp(lightness, 0.0, 1.0);
    hue = std::fmod(hue, 360);
    if (hue < 0) hue += 360;
    const auto part = [&](double n) {
        const double k = std::fmod(n + hue / 30, 12);
        const double amount = saturation * std::min(lightness, 1 - lightness);
        return 255 * (lightness - amount * std::max(-1.0, std::min({k - 3, 9 - k, 1.0})));
    };
    return packed(part(0), part(8), part(4));
}

bool takeFunction(std::string_view& text, std::uint32_t& rgb, std::uint8_t* alpha) {
    const std::size_t open = text.find('(');
    if (open == text.npos || open > 4) return false;
    const std::string_view name = text.substr(0, open);
    const bool isRgb = equalsNoCase(name, "rgb") || equalsNoCase(name, "rgba");
    if (!isRgb && !equalsNoCase(name, "hsl") && !equalsNoCase(name, "hsla")) return false;
    std::string_view rest = text;
    Arguments arguments;
    if (!takeArguments(rest, open, arguments)) return false;
    if (arguments.count != 3 && arguments.count != 4) return false;
    const auto& v = arguments.list;
    if (isRgb) {
        const auto scaled = [](const Argument& a) { return a.percent ? a.value * 255 / 100 : a.value; };
        rgb = packed(scaled(v[0]), scaled(v[1]), scaled(v[2]));
    } else {
        if (!v[1].percent || !v[2].percent) return false;
        rgb = hslToRgb(v[0].value, v[1].value / 100, v[2].value / 100);
    }
    if (alpha && arguments.count == 4) {
        const double opacity = v[3].percent ? v[3].value / 100 : v[3].value;
        *alpha = static_cast<std::uint8_t>(channel(opacity * 255));
    }
    text = rest;
    return true;
}

}  // namespace

bool takeColor(std::string_view& text, std::uint32_t& rgb, std::uint8_t* alpha) {
    if (text.empty()) return false;
    if (text.front() == '#') return takeHex(text, rgb, alpha);
    std::size_t length = 0;
    while (length < text.size() && toLower(text[length]) >= 'a' && toLower(text[length]) <= 'z') ++length;
    if (length < text.size() && text[length] == '(') return takeFunction(text, rgb, alpha);
    if (!isNameEnd(text, length) || !findColorName(text.substr(0, length), rgb)) return false;
    text.remove_prefix(length);
    return true;
}

bool takeCmyk(std::string_view& text, std::array<float, 4>& cmyk) {
    constexpr std::string_view kName = "device-cmyk(";
    if (!startsWithNoCase(text, kName)) return false;
    Arguments arguments;
    std::string_view rest = text;
    if (!takeArguments(rest, kName.size() - 1, arguments) || arguments.count < 4) return false;
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
