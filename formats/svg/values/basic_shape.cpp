#include "formats/svg/values/basic_shape.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "formats/svg/values/outlines.h"
#include "formats/svg/values/path_data.h"
#include "formats/svg/values/text_scan.h"
#include "formats/svg/values/transform.h"
#include "formats/svg/values/units.h"

namespace svg {

namespace {

// A round shape at its place in the box.
struct Round {
    const AFRect& box;
    double fontSize;

    LengthContext lengths() const { return {fontSize, box.Width(), box.Height()}; }
    bool length(std::string_view text, Axis axis, double& value) const {
        return parseStyleLength(text, axis, lengths(), value);
    }
};

bool takeRule(std::string_view& text, EFillRule& rule) {
    std::string_view rest = text;
    bool more = false;
    const std::string_view word = takeArgument(rest, more);
    if (!equalsNoCase(word, "nonzero") && !equalsNoCase(word, "evenodd")) return true;
    rule = equalsNoCase(word, "evenodd") ? EFillRule::evenOdd : EFillRule::nonZero;
    text = rest;
    return more;
}

// "left 20px top 50%": distances from two sides.
bool readSides(const std::string_view (&words)[4], const Round& in, AFPoint& place) {
    bool hasX = false;
    bool hasY = false;
    for (std::size_t i = 0; i < 4; i += 2) {
        const bool left = equalsNoCase(words[i], "left");
        const bool right = equalsNoCase(words[i], "right");
        const bool top = equalsNoCase(words[i], "top");
        const bool across = left || right;
        if (!across && !top && !equalsNoCase(words[i], "bottom")) return false;
        if (std::exchange(across ? hasX : hasY, true)) return false;
        double distance = 0;
        if (!in.length(words[i + 1], across ? Axis::horizontal : Axis::vertical, distance)) return false;
        if (across) {
            place.x = left ? distance : in.box.Width() - distance;
        } else {
            place.y = top ? distance : in.box.Height() - distance;
        }
    }
    return true;
}

// Where the middle lies, behind "at"; the middle of the box without.
bool readPosition(std::string_view text, const Round& in, AFPoint& place) {
    place = {in.box.Width() / 2, in.box.Height() / 2};
    if (!(text = trim(text)).empty()) {
        std::string_view words[4];
        std::size_t count = 0;
        for (std::string_view rest = text; !(rest = trimFront(rest)).empty(); ++count) {
            if (count == 4) return false;
            words[count] = takeComponent(rest);
            if (words[count].empty()) return false;
        }
        if (count == 3 || (count == 4 && !readSides(words, in, place))) return false;
        const TransformLengths lengths{in.fontSize, in.box.Width(), in.box.Height()};
        if (count < 3 && !parseTransformOrigin(text, lengths, place)) return false;
    }
    place = {place.x + in.box.left, place.y + in.box.top};
    return true;
}

// Splits at the word "at".
bool splitPosition(std::string_view text, std::string_view& before, std::string_view& position) {
    before = text = trim(text);
    position = {};
    for (std::string_view rest = text; !(rest = trimFront(rest)).empty();) {
        const std::string_view word = takeComponent(rest);
        if (word.empty()) return false;
        if (!equalsNoCase(word, "at")) continue;
        before = trim(text.substr(0, static_cast<std::size_t>(word.data() - text.data())));
        position = trim(rest);
        return !position.empty();
    }
    return true;
}

// A radius: a length, or how far the middle lies from a side. `closest`, `farthest`: these distances.
bool readRadius(std::string_view text, Axis axis, const Round& in, double closest, double farthest,
                double& radius) {
    if (equalsNoCase(text, "closest-side")) {
        radius = closest;
    } else if (equalsNoCase(text, "farthest-side")) {
        radius = farthest;
    } else {
        return in.length(text, axis, radius) && radius >= 0;
    }
    return true;
}

bool appendRound(std::string_view arguments, bool isCircle, const Round& in, APath& path) {
    std::string_view radii;
    std::string_view position;
    AFPoint middle;
    if (!splitPosition(arguments, radii, position) || !readPosition(position, in, middle)) return false;
    const double left = std::fabs(middle.x - in.box.left);
    const double right = std::fabs(in.box.right - middle.x);
    const double top = std::fabs(middle.y - in.box.top);
    const double bottom = std::fabs(in.box.bottom - middle.y);
    const auto [nearX, farX] = std::minmax({left, right});
    const auto [nearY, farY] = std::minmax({top, bottom});
    double rx = isCircle ? std::min(nearX, nearY) : nearX;
    double ry = nearY;
    if (!radii.empty()) {
        const std::string_view first = takeComponent(radii);
        const std::string_view second = takeComponent(radii);
        if (!trim(radii).empty() || second.empty() != isCircle) return false;
        const bool isRead = isCircle ? readRadius(first, Axis::both, in, rx, std::max(farX, farY), rx)
                                     : readRadius(first, Axis::horizontal, in, nearX, farX, rx) &&
                                           readRadius(second, Axis::vertical, in, nearY, farY, ry);
        if (!isRead) return false;
    }
    appendEllipse(middle, rx, isCircle ? rx : ry, path);
    return true;
}

// One to four values for four sides or corners, as "margin" has them.
bool readFour(std::string_view text, const Round& in, bool ofRadii, Axis axisOfRadii, double (&values)[4]) {
    std::size_t count = 0;
    for (; !(text = trimFront(text)).empty(); ++count) {
        if (count == 4) return false;
        const Axis axis = ofRadii ? axisOfRadii : count % 2 == 0 ? Axis::vertical : Axis::horizontal;
        const std::string_view word = takeComponent(text);
        if (word.empty() || !in.length(word, axis, values[count])) return false;
        if (ofRadii && values[count] < 0) return false;
    }
    if (count == 0) return false;
    // One value of a side counts for the axis of that side: each is read for its own.
    if (count == 1) values[1] = values[0];
    if (count < 3) values[2] = values[0];
    if (count < 4) values[3] = values[1];
    return true;
}

// The first slash outside parentheses, or the end.
std::size_t findSlash(std::string_view text) {
    int depth = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '/' && depth == 0) return i;
        depth += text[i] == '(' ? 1 : text[i] == ')' ? -1 : 0;
    }
    return text.size();
}

// Splits at the word "round"; reads the radii behind it.
bool takeRadii(std::string_view& text, const Round& in, CornerRadii& radii) {
    for (std::string_view rest = text; !(rest = trimFront(rest)).empty();) {
        const std::string_view word = takeComponent(rest);
        if (word.empty()) return false;
        if (!equalsNoCase(word, "round")) continue;
        const std::size_t slash = findSlash(rest);
        const std::string_view across = rest.substr(0, slash);
        const std::string_view down = slash < rest.size() ? rest.substr(slash + 1) : across;
        double x[4];
        double y[4];
        if (!readFour(across, in, true, Axis::horizontal, x) || !readFour(down, in, true, Axis::vertical, y))
            return false;
        for (std::size_t i = 0; i < 4; ++i) radii[i] = {x[i], y[i]};
        text = text.substr(0, static_cast<std::size_t>(word.data() - text.data()));
        return true;
    }
    return true;
}

// Radii that are too large for their side become smaller, all of them by the same factor.
void fitRadii(const AFRect& box, CornerRadii& radii) {
    double factor = 1;
    const auto fit = [&](double sum, double side) {
        if (sum > side) factor = std::min(factor, side / sum);
    };
    fit(radii[0].x + radii[1].x, box.Width());
    fit(radii[2].x + radii[3].x, box.Width());
    fit(radii[1].y + radii[2].y, box.Height());
    fit(radii[3].y + radii[0].y, box.Height());
    if (factor == 1) return;
    for (AFPoint& radius : radii) radius = {radius.x * factor, radius.y * factor};
}

// The sides of a rectangle as distances from those of the box (inset), from its upper left corner (rect), or as a place
// and a size (xywh).
bool appendBox(std::string_view name, std::string_view arguments, const Round& in, APath& path) {
    CornerRadii radii{};
    if (!takeRadii(arguments, in, radii)) return false;
    double values[4];
    AFRect cut = in.box;
    if (equalsNoCase(name, "inset")) {
        if (!readFour(arguments, in, false, {}, values)) return false;
        // One value alone is of both axes.
        if (in.length(trim(arguments), Axis::horizontal, values[3])) values[1] = values[3];
        cut = {in.box.left + values[3], in.box.top + values[0], in.box.right - values[1],
               in.box.bottom - values[2]};
    } else {
        const bool isRect = equalsNoCase(name, "rect");
        for (std::size_t i = 0; i < 4; ++i) {
            const std::string_view word = takeComponent(arguments);
            const bool across = (i % 2 == 0) != isRect;
            const double extent = across ? in.box.Width() : in.box.Height();
            if (isRect && equalsNoCase(word, "auto")) {
                values[i] = i == 1 || i == 2 ? extent : 0;
            } else if (!in.length(word, across ? Axis::horizontal : Axis::vertical, values[i])) {
                return false;
            }
        }
        if (!trim(arguments).empty()) return false;
        if (isRect) {
            cut = {in.box.left + values[3], in.box.top + values[0], in.box.left + values[1],
                   in.box.top + values[2]};
        } else {
            if (values[2] < 0 || values[3] < 0) return false;
            cut = {in.box.left + values[0], in.box.top + values[1], in.box.left + values[0] + values[2],
                   in.box.top + values[1] + values[3]};
        }
    }
    if (!(cut.right > cut.left && cut.bottom > cut.top)) return true;
    fitRadii(cut, radii);
    appendRectangle(cut, radii, path);
    return true;
}

bool appendPolygon(std::string_view arguments, const Round& in, APath& path) {
    bool first = true;
    for (bool more = true; more; first = false) {
        std::string_view point = takeArgument(arguments, more);
        AFPoint at;
        const std::string_view x = takeComponent(point);
        const std::string_view y = takeComponent(point);
        if (!trim(point).empty() || !in.length(x, Axis::horizontal, at.x) ||
            !in.length(y, Axis::vertical, at.y))
            return false;
        at = {at.x + in.box.left, at.y + in.box.top};
        if (first) {
            path.moveTo(at);
        } else {
            path.lineTo(at);
        }
    }
    path.close();
    return true;
}

// False when the arguments are none of the shape's.
bool appendShapeNamed(const BasicShape& shape, const AFRect& box, double fontSize, APath& path) {
    const Round in{box, fontSize};
    if (shape.name.empty()) {
        if (box.right > box.left && box.bottom > box.top) appendRectangle(box, 0, 0, path);
        return true;
    }
    if (equalsNoCase(shape.name, "circle")) return appendRound(shape.arguments, true, in, path);
    if (equalsNoCase(shape.name, "ellipse")) return appendRound(shape.arguments, false, in, path);
    if (equalsNoCase(shape.name, "polygon")) return appendPolygon(shape.arguments, in, path);
    if (!equalsNoCase(shape.name, "path")) return appendBox(shape.name, shape.arguments, in, path);
    const std::string_view data = shape.arguments;
    if (data.size() < 2 || (data.front() != '"' && data.front() != '\'') || data.back() != data.front())
        return false;
    APath drawn;
    appendPath(data.substr(1, data.size() - 2), drawn);
    path.append(drawn, AAffine::translation(box.left, box.top));
    return true;
}

bool readBox(std::string_view word, ShapeBox& box) {
    constexpr std::pair<std::string_view, ShapeBox> kBoxes[] = {
        {"fill-box", ShapeBox::fill},     {"content-box", ShapeBox::fill},  {"padding-box", ShapeBox::fill},
        {"stroke-box", ShapeBox::stroke}, {"border-box", ShapeBox::stroke}, {"margin-box", ShapeBox::stroke},
        {"view-box", ShapeBox::view}};
    for (const auto& [name, known] : kBoxes) {
        if (!equalsNoCase(word, name)) continue;
        box = known;
        return true;
    }
    return false;
}

}  // namespace

bool parseBasicShape(std::string_view text, BasicShape& shape) {
    constexpr std::string_view kShapes[] = {"circle", "ellipse", "inset", "rect", "xywh", "polygon", "path"};
    shape = {};
    bool hasBox = false;
    for (text = trim(text); !text.empty(); text = trimFront(text)) {
        const std::size_t open = text.find('(');
        const std::size_t space = componentLength(text);
        if (open >= space) {
            if (hasBox || !readBox(text.substr(0, space), shape.box)) return false;
            hasBox = true;
            text.remove_prefix(space);
            continue;
        }
        const std::size_t close = closingParenthesis(text, open);
        const std::string_view name = text.substr(0, open);
        const bool isKnown = std::any_of(std::begin(kShapes), std::end(kShapes),
                                         [&](std::string_view known) { return equalsNoCase(name, known); });
        if (close == text.npos || !shape.name.empty() || !isKnown) return false;
        shape.name = name;
        shape.arguments = trim(text.substr(open + 1, close - open - 1));
        text.remove_prefix(close + 1);
    }
    if (shape.name.empty() && !hasBox) return false;
    if (equalsNoCase(shape.name, "polygon") || equalsNoCase(shape.name, "path")) {
        if (!takeRule(shape.arguments, shape.rule)) return false;
        shape.arguments = trim(shape.arguments);
    }
    APath any;
    return appendShapeNamed(shape, {0, 0, 1, 1}, kUsualFontSize, any);
}

void appendBasicShape(const BasicShape& shape, const AFRect& box, double fontSize, APath& path) {
    appendShapeNamed(shape, box, fontSize, path);
}

}  // namespace svg
