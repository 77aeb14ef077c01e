#include "formats/svg/values/transform.h"

#include <numbers>
#include <utility>

#include "formats/svg/values/text_scan.h"
#include "formats/svg/values/units.h"

namespace svg {

namespace {

constexpr int kMostArguments = 6;

double radians(double degrees) {
    return degrees * std::numbers::pi / 180;
}

// One function of the list with its arguments; false when the name or the count of arguments is unknown.
bool makeTransform(std::string_view name, const double* v, int count, Affine& out) {
    if (name == "translate" && (count == 1 || count == 2)) {
        out = translation(v[0], count == 2 ? v[1] : 0);
    } else if (name == "scale" && (count == 1 || count == 2)) {
        out = {v[0], 0, 0, count == 2 ? v[1] : v[0], 0, 0};
    } else if (name == "rotate" && count == 1) {
        out = rotation(v[0]);
    } else if (name == "rotate" && count == 3) {
        out = translation(v[1], v[2]) * rotation(v[0]) * translation(-v[1], -v[2]);
    } else if (name == "skewX" && count == 1) {
        out = {1, 0, std::tan(radians(v[0])), 1, 0, 0};
    } else if (name == "skewY" && count == 1) {
        out = {1, std::tan(radians(v[0])), 0, 1, 0, 0};
    } else if (name == "matrix" && count == 6) {
        out = {v[0], v[1], v[2], v[3], v[4], v[5]};
    } else {
        return false;
    }
    return true;
}

}  // namespace

Affine rotation(double degrees) {
    const double turn = std::remainder(degrees, 360);
    if (turn == 90) return {0, 1, -1, 0, 0, 0};
    if (turn == -90) return {0, -1, 1, 0, 0, 0};
    if (std::fabs(turn) == 180) return {-1, 0, 0, -1, 0, 0};
    const double sine = std::sin(radians(turn));
    const double cosine = std::cos(radians(turn));
    return {cosine, sine, -sine, cosine, 0, 0};
}

Affine parseTransform(std::string_view text) {
    Affine result;
    text = trim(text);
    if (text == "none") return {};
    while (!text.empty()) {
        const std::size_t open = text.find('(');
        if (open == text.npos) return {};
        const std::string_view name = trim(text.substr(0, open));
        text = trimFront(text.substr(open + 1));
        double values[kMostArguments];
        int count = 0;
        while (count < kMostArguments && takeNumber(text, values[count])) {
            ++count;
            text = trimFront(text);
            // A comma stands between two numbers.
            if (text.empty() || text.front() != ',') continue;
            text = trimFront(text.substr(1));
            if (!text.empty() && text.front() == ')') return {};
        }
        Affine next;
        if (text.empty() || text.front() != ')' || !makeTransform(name, values, count, next)) return {};
        result = result * next;
        text = skipSeparator(text.substr(1));
    }
    return result;
}

namespace {

struct AngleUnit {
    std::string_view name;
    double degrees;
};
constexpr AngleUnit kAngleUnits[] = {
    {"deg", 1}, {"grad", 0.9}, {"rad", 180 / std::numbers::pi}, {"turn", 360}};

bool readNumber(std::string_view text, double& value) {
    return takeNumber(text, value) && text.empty();
}

// Degrees; only 0 may stand without a unit.
bool readAngle(std::string_view text, double& degrees) {
    if (!takeNumber(text, degrees)) return false;
    if (text.empty()) return degrees == 0;
    for (const AngleUnit& unit : kAngleUnits) {
        if (!equalsNoCase(text, unit.name)) continue;
        degrees *= unit.degrees;
        return true;
    }
    return false;
}

// A length in pixels; only 0 may stand without a unit.
bool readLength(std::string_view text, Axis axis, const TransformLengths& lengths, double& value) {
    if (readNumber(text, value)) return value == 0;
    return parseLength(text, axis, {lengths.fontSize, lengths.width, lengths.height}, value);
}

bool readFactor(std::string_view text, double& value) {
    if (!takeNumber(text, value)) return false;
    if (text == "%") value /= 100;
    return text.empty() || text == "%";
}

// How the arguments of a function are read, and which of makeTransform's functions it is.
enum class Reads { number, factor, angle, across, down, both };
struct StyleFunction {
    std::string_view name;
    Reads reads;
    int least, most;
    std::string_view means;
};
constexpr StyleFunction kStyleFunctions[] = {
    {"translate", Reads::both, 1, 2, "translate"},
    {"translatex", Reads::across, 1, 1, "translate"},
    {"translatey", Reads::down, 1, 1, "translate"},
    {"scale", Reads::factor, 1, 2, "scale"},
    {"scalex", Reads::factor, 1, 1, "scale"},
    {"scaley", Reads::factor, 1, 1, "scale"},
    {"rotate", Reads::angle, 1, 1, "rotate"},
    {"rotatez", Reads::angle, 1, 1, "rotate"},
    {"skewx", Reads::angle, 1, 1, "skewX"},
    {"skewy", Reads::angle, 1, 1, "skewY"},
    {"skew", Reads::angle, 1, 2, ""},
    {"matrix", Reads::number, 6, 6, "matrix"},
};

bool readArgument(std::string_view text, Reads reads, int index, const TransformLengths& lengths,
                  double& value) {
    switch (reads) {
        case Reads::number:
            return readNumber(text, value);
        case Reads::factor:
            return readFactor(text, value);
        case Reads::angle:
            return readAngle(text, value);
        case Reads::across:
            return readLength(text, Axis::horizontal, lengths, value);
        case Reads::down:
            return readLength(text, Axis::vertical, lengths, value);
        case Reads::both:
            return readLength(text, index == 0 ? Axis::horizontal : Axis::vertical, lengths, value);
    }
    return false;
}

bool makeStyleTransform(const StyleFunction& function, double v[kMostArguments], int count, Affine& out) {
    if (function.means.empty()) {
        out = {1, std::tan(radians(count == 2 ? v[1] : 0)), std::tan(radians(v[0])), 1, 0, 0};
        return true;
    }
    const bool isScale = function.reads == Reads::factor;
    if (function.name.ends_with('y') && function.most == 1 && function.means != "skewY") {
        v[1] = std::exchange(v[0], isScale ? 1 : 0);
        count = 2;
    } else if (function.name == "scalex") {
        v[1] = 1;
        count = 2;
    }
    return makeTransform(function.means, v, count, out);
}

const StyleFunction* styleFunction(std::string_view name) {
    for (const StyleFunction& one : kStyleFunctions) {
        if (equalsNoCase(name, one.name)) return &one;
    }
    return nullptr;
}

}  // namespace

bool parseStyleTransform(std::string_view text, const TransformLengths& lengths, Affine& transform) {
    Affine result;
    text = trim(text);
    if (text.empty()) return false;
    if (equalsNoCase(text, "none")) text = {};
    while (!text.empty()) {
        const std::size_t open = text.find('(');
        const std::size_t close = text.find(')');
        if (open == text.npos || close == text.npos || close < open) return false;
        const StyleFunction* const function = styleFunction(text.substr(0, open));
        std::string_view rest = trim(text.substr(open + 1, close - open - 1));
        text = trimFront(text.substr(close + 1));
        double values[kMostArguments]{};
        int count = 0;
        if (!function || rest.empty()) return false;
        for (bool more = true; more; ++count) {
            const std::size_t comma = rest.find(',');
            const std::string_view one = trim(rest.substr(0, comma));
            if (count == function->most || !readArgument(one, function->reads, count, lengths, values[count]))
                return false;
            more = comma != rest.npos;
            if (more) rest = rest.substr(comma + 1);
        }
        Affine next;
        if (count < function->least || !makeStyleTransform(*function, values, count, next)) return false;
        result = result * next;
    }
    transform = result;
    return true;
}

bool parseTransformOrigin(std::string_view text, const TransformLengths& lengths, AFPoint& origin) {
    struct Word {
        std::string_view word;
        double share;
        bool across, down;
    };
    constexpr Word kWords[] = {{"left", 0, true, false},
                               {"right", 1, true, false},
                               {"top", 0, false, true},
                               {"bottom", 1, false, true},
                               {"center", 0.5, true, true}};
    const Word* words[2]{};
    double values[2]{};
    int count = 0;
    for (; !(text = trimFront(text)).empty() && count < 2; ++count) {
        const std::string_view one = takeWord(text);
        for (const Word& word : kWords) {
            if (equalsNoCase(one, word.word)) words[count] = &word;
        }
        const Axis axis = count == 0 ? Axis::horizontal : Axis::vertical;
        const LengthContext context{lengths.fontSize, lengths.width, lengths.height};
        if (!words[count] && !parseLength(one, axis, context, values[count])) return false;
    }
    double depth = 0;
    if (count == 0 || !((text = trim(text)).empty() || parseLength(text, Axis::both, {}, depth)))
        return false;
    // "top left" is "left top"; one value is that of its own axis.
    const bool swapped =
        words[0] && (words[1] ? words[0]->down && words[1]->across && !(words[0]->across && words[1]->down)
                              : count == 1 && !words[0]->across);
    if (swapped) {
        std::swap(words[0], words[1]);
        std::swap(values[0], values[1]);
    }
    if ((words[0] && !words[0]->across) || (words[1] && !words[1]->down)) return false;
    const bool centersX = count == 1 && swapped;
    const bool centersY = count == 1 && !swapped;
    origin.x = centersX ? lengths.width / 2 : words[0] ? words[0]->share * lengths.width : values[0];
    origin.y = centersY ? lengths.height / 2 : words[1] ? words[1]->share * lengths.height : values[1];
    return true;
}

AFRect BoundsBuilder::get() const {
    if (m_empty) return {};
    return {finite(m_rect.left), finite(m_rect.top), finite(m_rect.right), finite(m_rect.bottom)};
}

AFRect roundBounds(const Affine& t, AFPoint center, AFPoint core, double rx, double ry) {
    const AFPoint middle = t.apply(center);
    double x = std::fabs(t.a * core.x) + std::fabs(t.c * core.y);
    double y = std::fabs(t.b * core.x) + std::fabs(t.d * core.y);
    if (t.b == 0 && t.c == 0) {  // nearly always, and no square root
        x += std::fabs(t.a * rx);
        y += std::fabs(t.d * ry);
    } else {
        x += std::hypot(t.a * rx, t.c * ry);
        y += std::hypot(t.b * rx, t.d * ry);
    }
    return {finite(middle.x - x), finite(middle.y - y), finite(middle.x + x), finite(middle.y + y)};
}

AFRect rectBounds(const Affine& t, const AFRect& rect) {
    BoundsBuilder bounds;
    bounds.add(t.apply({rect.left, rect.top}));
    bounds.add(t.apply({rect.right, rect.top}));
    bounds.add(t.apply({rect.left, rect.bottom}));
    bounds.add(t.apply({rect.right, rect.bottom}));
    return bounds.get();
}

}  // namespace svg
