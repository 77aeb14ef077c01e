// The math functions of style sheets: calc(), min(), max(), clamp().
//
//     double value = 0;
//     const auto unit = [](std::string_view name, double& one) { return name == "px" && (one = 1); };
//     evaluateMath("calc(2 * (1px + 3px))", unit, value);   // 8, MathKind::dimension
#pragma once

#include <functional>
#include <string_view>

namespace svg {

enum class MathKind { invalid, number, dimension };

// What one of a unit stands for; the name is that behind a number, "%" among them. False for an unknown one.
using MathUnit = std::function<bool(std::string_view name, double& one)>;

// Reads a value that is one math function. `invalid`, and the value unchanged, for anything else, and for what mixes
// numbers with dimensions. A value is finite.
MathKind evaluateMath(std::string_view text, const MathUnit& unit, double& value);

// Whether a text may be a math function: so can be asked of every value.
inline bool mayBeMath(std::string_view text) {
    return !text.empty() && text.back() == ')';
}

}  // namespace svg
