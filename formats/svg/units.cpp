#include "formats/svg/units.h"

#include <charconv>
#include <cmath>
#include <system_error>

#include "formats/svg/text_scan.h"

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

double percentBase(Axis axis, const LengthContext& context) {
    if (axis == Axis::horizontal) return context.viewportWidth;
    if (axis == Axis::vertical) return context.viewportHeight;
    return std::hypot(context.viewportWidth, context.viewportHeight) / std::sqrt(2.0);
}

}  // namespace

double finite(double value) {
    if (std::isnan(value)) return 0;
    return value > kLargestNumber ? kLargestNumber : value < -kLargestNumber ? -kLargestNumber : value;
}

bool takeNumber(std::string_view& text, double& value) {
    const char* begin = text.data();
    const char* const end = begin + text.size();
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

}  // namespace svg
