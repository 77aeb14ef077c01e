#include "formats/svg/values/units.h"

#include <charconv>
#include <cmath>
#include <cstdint>
#include <system_error>

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
    if (!takeNumber(text, number)) return false;
    double scale = 0;
    if (text.empty()) {
        scale = 1;
    } else if (text == "%") {
        scale = percentBase(axis, context) / 100;
    } else if (equalsNoCase(text, "em") || equalsNoCase(text, "rem")) {
        scale = context.fontSize;
    } else if (equalsNoCase(text, "ex") || equalsNoCase(text, "ch")) {
        scale = context.fontSize / 2;  // what to assume when the font is not at hand
    } else {
        for (const Unit& unit : kAbsoluteUnits) {
            if (equalsNoCase(text, unit.name)) scale = unit.pixels;
        }
        if (scale == 0) return false;
    }
    value = finite(number * scale);
    return true;
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
        text = trimFront(text.substr(length));
        if (text == ",") visible = false;  // nothing behind a comma: invalid
    }
    if (!visible) dashes.clear();
}

}  // namespace svg
