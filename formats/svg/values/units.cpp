#include "formats/svg/values/units.h"

#include <charconv>
#include <cmath>
#include <cstdint>
#include <system_error>

#include "formats/svg/values/calc.h"
#include "formats/svg/values/text_scan.h"

namespace svg {

namespace {

struct Unit {
    std::string_view name;
    double pixels;
};

constexpr Unit kAbsoluteUnits[] = {
    {"px", 1},         {"mm", 96 / 25.4}, {"cm", 96 / 2.54}, {"in", 96},
    {"pt", 96.0 / 72}, {"pc", 16},        {"q", 96 / 101.6},
};

// Powers of ten that a double holds exactly.
constexpr double kPowers[] = {1,    1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,  1e10, 1e11,
                              1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};

// Plain decimals of up to 15 digits, which is nearly all of a drawing: digits and power of ten are exact in a
// double, so one division rounds correctly. Gives the end of the number, null for anything else.
const char* readPlainDecimal(const char* at, const char* end, double& value) {
    const bool negative = at != end && *at == '-';
    if (negative || (at != end && *at == '+')) ++at;
    std::uint64_t digits = 0;
    const char* const first = at;
    while (at != end && isDigit(*at)) digits = digits * 10 + static_cast<unsigned>(*at++ - '0');
    std::ptrdiff_t count = at - first;
    std::ptrdiff_t fraction = 0;
    if (at != end && *at == '.') {
        const char* const point = ++at;
        while (at != end && isDigit(*at)) digits = digits * 10 + static_cast<unsigned>(*at++ - '0');
        fraction = at - point;
        count += fraction;
    }
    if (count == 0 || count > 15 || (at != end && (*at == 'e' || *at == 'E'))) return nullptr;
    value = static_cast<double>(digits) / kPowers[fraction];
    if (negative) value = -value;
    return at;
}

double percentBase(Axis axis, const LengthContext& context) {
    if (axis == Axis::horizontal) return context.viewportWidth;
    if (axis == Axis::vertical) return context.viewportHeight;
    return std::hypot(context.viewportWidth, context.viewportHeight) / std::sqrt(2.0);
}

// What one of a unit is long; false for an unknown one.
bool unitLength(std::string_view name, Axis axis, const LengthContext& context, double& one) {
    if (name == "%") {
        one = percentBase(axis, context) / 100;
    } else if (equalsNoCase(name, "em")) {
        one = context.fontSize;
    } else if (equalsNoCase(name, "rem")) {
        one = kUsualFontSize;
    } else if (equalsNoCase(name, "ex") || equalsNoCase(name, "ch")) {
        one = context.fontSize / 2;  // what to assume when the font is not at hand
    } else {
        for (const Unit& unit : kAbsoluteUnits) {
            if (!equalsNoCase(name, unit.name)) continue;
            one = unit.pixels;
            return true;
        }
        return false;
    }
    return true;
}

MathKind readMathLength(std::string_view text, Axis axis, const LengthContext& context, double& value) {
    if (!mayBeMath(text)) return MathKind::invalid;
    const auto unit = [&](std::string_view name, double& one) {
        return unitLength(name, axis, context, one);
    };
    return evaluateMath(text, unit, value);
}

}  // namespace

bool takeNumber(std::string_view& text, double& value) {
    const char* begin = text.data();
    const char* const end = begin + text.size();
    if (const char* const rest = readPlainDecimal(begin, end, value)) {
        text.remove_prefix(static_cast<std::size_t>(rest - begin));
        return true;
    }
    if (begin != end && *begin == '+') ++begin;
    // from_chars reads "inf" and "nan" too; in a drawing they are no numbers.
    const char* digits = begin != end && *begin == '-' && begin == text.data() ? begin + 1 : begin;
    if (digits == end || !(isDigit(*digits) || *digits == '.')) return false;
    const auto [rest, failure] = std::from_chars(begin, end, value);
    if (failure == std::errc::invalid_argument) return false;
    if (failure == std::errc::result_out_of_range) {
        const std::string_view number(begin, static_cast<std::size_t>(rest - begin));
        const std::size_t exponent = number.find_first_of("eE");
        const bool tiny = exponent != number.npos ? number[exponent + 1] == '-' : number.find('.') <= 2;
        value = tiny ? 0 : *begin == '-' ? -kLargestNumber : kLargestNumber;
    }
    value = finite(value);
    text.remove_prefix(static_cast<std::size_t>(rest - text.data()));
    return true;
}

bool parseLength(std::string_view text, Axis axis, const LengthContext& context, double& value) {
    if (text.empty()) return false;
    const char* const end = text.data() + text.size();
    double plain = 0;
    if (readPlainDecimal(text.data(), end, plain) == end) {  // nearly always
        value = plain;
        return true;
    }
    text = trim(text);
    double number = 0;
    if (!takeNumber(text, number)) return readMathLength(text, axis, context, value) != MathKind::invalid;
    double one = 1;
    if (!text.empty() && !unitLength(text, axis, context, one)) return false;
    value = finite(number * one);
    return true;
}

bool parseStyleLength(std::string_view text, Axis axis, const LengthContext& context, double& value) {
    std::string_view rest = text;
    double number = 0;
    if (!takeNumber(rest, number)) return readMathLength(text, axis, context, value) == MathKind::dimension;
    if (rest.empty() && number != 0) return false;
    return parseLength(text, axis, context, value);
}

bool parseShare(std::string_view text, double& value) {
    double number = 0;
    std::string_view rest = text;
    if (takeNumber(rest, number)) {
        if (!rest.empty() && rest != "%") return false;
        value = rest.empty() ? number : number / 100;
        return true;
    }
    const auto percent = [](std::string_view name, double& one) {
        one = 0.01;
        return name == "%";
    };
    return evaluateMath(text, percent, value) != MathKind::invalid;
}

void parseDashes(std::string_view text, const LengthContext& context, std::vector<double>& dashes) {
    // More than any drawing program writes: what follows is not looked at.
    constexpr std::size_t kMostDashes = 1024;
    dashes.clear();
    bool visible = false;
    while (!(text = skipSeparator(text)).empty() && dashes.size() < kMostDashes) {
        const std::size_t length = componentLength(text);
        double value = 0;
        if (!parseLength(text.substr(0, length), Axis::both, context, value) || value < 0) {
            dashes.clear();
            return;
        }
        visible |= value > 0;
        dashes.push_back(value);
        text = trimFront(text.substr(length));
        if (text == ",") visible = false;  // nothing behind a comma: invalid
    }
    if (!visible) dashes.clear();
}

}  // namespace svg
