// Numbers and lengths of a drawing.
//
//     double width = 0;
//     parseLength("2.54cm", Axis::horizontal, {}, width);   // 96
//
// Every number that comes out is finite: what is too large for a drawing is cut to kLargestNumber.
#pragma once

#include <string_view>
#include <vector>

namespace svg {

constexpr double kLargestNumber = 1e30;

// Cuts to the range of drawings; not-a-number becomes 0.
inline double finite(double value) {
    if (value >= -kLargestNumber && value <= kLargestNumber) return value;
    return value > 0 ? kLargestNumber : value < 0 ? -kLargestNumber : 0;
}

// Takes a number from the front of the text, false (and the text unchanged) when there is none.
bool takeNumber(std::string_view& text, double& value);

// Which extent of the viewport a percentage refers to; `both` is for radii.
enum class Axis { horizontal, vertical, both };

constexpr double kUsualFontSize = 16;
// How far a line of text reaches above and below its baseline, of the font size: fonts differ, and none is asked.
constexpr double kAscent = 0.8;
constexpr double kDescent = 0.2;

struct LengthContext {
    double fontSize = kUsualFontSize;
    double viewportWidth = 0;
    double viewportHeight = 0;
};

// Reads a length with an optional unit, or a math function of such, into user units (1 px; 96 to the inch). False when it
// is not one.
bool parseLength(std::string_view text, Axis axis, const LengthContext& context, double& value);
// The same where only 0 may stand without a unit.
bool parseStyleLength(std::string_view text, Axis axis, const LengthContext& context, double& value);
// A number or a percentage, "0.5" or "50%", or a math function of such. False for anything else.
bool parseShare(std::string_view text, double& value);

// The lengths of a dash array, into a list that is cleared first; empty for a line without gaps.
void parseDashes(std::string_view text, const LengthContext& context, std::vector<double>& dashes);

}  // namespace svg
