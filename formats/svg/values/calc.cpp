#include "formats/svg/values/calc.h"

#include <algorithm>

#include "formats/svg/values/text_scan.h"
#include "formats/svg/values/units.h"

namespace svg {

namespace {

constexpr int kDeepestMath = 32;

struct Term {
    double value = 0;
    MathKind kind = MathKind::invalid;
};

// Sums of products of numbers, dimensions, and what stands in parentheses.
class MathReader {
public:
    explicit MathReader(const MathUnit& unit) : m_unit(unit) {}

    // The whole text.
    Term function(std::string_view text) {
        const Term result = factor(text);
        return text.empty() ? result : Term();
    }

private:
    Term sum(std::string_view& text) {
        Term result = product(text);
        for (;;) {
            // White space on both sides tells an operator from a sign.
            const std::string_view rest = trimFront(text);
            if (rest.size() < 2 || rest.size() == text.size() || (rest[0] != '+' && rest[0] != '-') ||
                !isSpace(rest[1])) {
                text = rest;
                return result;
            }
            text = rest.substr(1);
            const Term next = product(text);
            if (next.kind != result.kind) return {};
            result.value += rest[0] == '+' ? next.value : -next.value;
        }
    }

    Term product(std::string_view& text) {
        Term result = factor(text);
        for (;;) {
            const std::string_view rest = trimFront(text);
            if (rest.empty() || (rest[0] != '*' && rest[0] != '/')) return result;
            text = rest.substr(1);
            const Term next = factor(text);
            if (result.kind == MathKind::invalid || next.kind == MathKind::invalid) return {};
            if (rest[0] == '/') {
                if (next.kind != MathKind::number) return {};
                result.value =
                    finite(next.value != 0 ? result.value / next.value : result.value * kLargestNumber);
            } else {
                if (next.kind == MathKind::dimension && result.kind == MathKind::dimension) return {};
                if (next.kind == MathKind::dimension) result.kind = MathKind::dimension;
                result.value = finite(result.value * next.value);
            }
        }
    }

    // A number with its unit, or what stands in parentheses, with or without a function before them.
    Term factor(std::string_view& text) {
        text = trimFront(text);
        Term result;
        if (takeNumber(text, result.value)) return dimension(text, result.value);
        const std::size_t open = text.find('(');
        if (open == text.npos || ++m_depth > kDeepestMath) return {};
        const std::string_view name = text.substr(0, open);
        const std::size_t close = closingParenthesis(text, open);
        if (close == text.npos) return {};
        result = call(name, text.substr(open + 1, close - open - 1));
        text.remove_prefix(close + 1);
        --m_depth;
        return result;
    }

    Term dimension(std::string_view& text, double number) const {
        std::size_t size = 0;
        while (size < text.size() &&
               (text[size] == '%' || (toLower(text[size]) >= 'a' && toLower(text[size]) <= 'z')))
            ++size;
        const std::string_view name = text.substr(0, size);
        text.remove_prefix(size);
        if (name.empty()) return {number, MathKind::number};
        double one = 0;
        if (!m_unit(name, one)) return {};
        return {finite(number * one), MathKind::dimension};
    }

    Term call(std::string_view name, std::string_view arguments) {
        const bool isCalc = name.empty() || equalsNoCase(name, "calc");
        const bool isMin = equalsNoCase(name, "min");
        const bool isMax = equalsNoCase(name, "max");
        const bool isClamp = equalsNoCase(name, "clamp");
        if (!isCalc && !isMin && !isMax && !isClamp) return {};
        Term terms[3];
        std::size_t count = 0;
        for (bool more = true; more; ++count) {
            std::string_view one = takeArgument(arguments, more);
            const Term term = sum(one);
            if (!one.empty() || term.kind == MathKind::invalid || (count > 0 && term.kind != terms[0].kind))
                return {};
            if (count > 0 && isMin) {
                terms[0].value = std::min(terms[0].value, term.value);
            } else if (count > 0 && isMax) {
                terms[0].value = std::max(terms[0].value, term.value);
            } else if (count < (isClamp ? 3U : 1U)) {
                terms[count] = term;
            } else {
                return {};
            }
        }
        if (!isClamp) return terms[0];
        if (count != 3) return {};
        return {std::max(terms[0].value, std::min(terms[1].value, terms[2].value)), terms[0].kind};
    }

    const MathUnit& m_unit;
    int m_depth = 0;
};

}  // namespace

MathKind evaluateMath(std::string_view text, const MathUnit& unit, double& value) {
    text = trim(text);
    // A lone parenthesis is no function.
    if (!mayBeMath(text) || text.front() == '(') return MathKind::invalid;
    const Term result = MathReader(unit).function(text);
    if (result.kind != MathKind::invalid) value = finite(result.value);
    return result.kind;
}

}  // namespace svg
