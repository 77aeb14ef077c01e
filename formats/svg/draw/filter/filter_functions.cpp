// Filters written as functions: blur(2px), drop-shadow(1px 2px red), grayscale(50%).
#include <algorithm>
#include <cmath>

#include "formats/svg/draw/filter/filter_graph.h"
#include "formats/svg/values/color.h"
#include "formats/svg/values/text_scan.h"

namespace svg {

namespace {

// A number or a percentage, 1 when there is none; false when it is negative or something else.
bool readAmount(std::string_view text, double& amount) {
    amount = 1;
    if (text.empty()) return true;
    if (!takeNumber(text, amount) || amount < 0) return false;
    if (text == "%") {
        amount /= 100;
        return true;
    }
    return text.empty();
}

bool readAngle(std::string_view text, double& degrees) {
    degrees = 0;
    if (text.empty()) return true;
    if (!takeNumber(text, degrees)) return false;
    if (text.empty()) return degrees == 0;
    struct Unit {
        std::string_view name;
        double degrees;
    };
    constexpr Unit kUnits[] = {
        {"deg", 1}, {"grad", 0.9}, {"rad", 180 / 3.14159265358979323846}, {"turn", 360}};
    for (const Unit& unit : kUnits) {
        if (!equalsNoCase(text, unit.name)) continue;
        degrees *= unit.degrees;
        return true;
    }
    return false;
}

// Only 0 may stand without a unit, and nothing is relative to a box.
bool readLength(std::string_view text, const LengthContext& context, double& length) {
    std::string_view rest = text;
    if (takeNumber(rest, length) && rest.empty()) return length == 0;
    return rest != "%" && parseLength(text, Axis::both, context, length);
}

ColorMatrix scaled(double factor, double offset, double alpha) {
    return {factor, 0, 0, 0, offset, 0, factor, 0, 0, offset, 0, 0, factor, 0, offset, 0, 0, 0, alpha, 0};
}

ColorMatrix sepia(double amount) {
    constexpr ColorMatrix kSepia{0.393, 0.769, 0.189, 0, 0, 0.349, 0.686, 0.168, 0, 0,
                                 0.272, 0.534, 0.131, 0, 0, 0,     0,     0,     1, 0};
    const ColorMatrix plain = scaled(1, 0, 1);
    ColorMatrix mixed;
    for (std::size_t i = 0; i < mixed.size(); ++i) mixed[i] = plain[i] + (kSepia[i] - plain[i]) * amount;
    return mixed;
}

// Those with one amount; many do no more than all.
struct AmountFunction {
    std::string_view name;
    double most;
    ColorMatrix (*matrix)(double amount);
};
constexpr AmountFunction kAmountFunctions[] = {
    {"brightness", kLargestNumber, [](double a) { return scaled(a, 0, 1); }},
    {"contrast", kLargestNumber, [](double a) { return scaled(a, 0.5 - a / 2, 1); }},
    {"grayscale", 1, [](double a) { return saturation(1 - a); }},
    {"invert", 1, [](double a) { return scaled(1 - 2 * a, a, 1); }},
    {"opacity", 1, [](double a) { return scaled(1, 0, a); }},
    {"saturate", kLargestNumber, [](double a) { return saturation(a); }},
    {"sepia", 1, [](double a) { return sepia(a); }},
};

struct Scale {
    double x, y;
};
Scale scaleOf(const FilterArea& area) {
    const Affine& t = area.space.toDrawing;
    return {std::hypot(t.a, t.b), std::hypot(t.c, t.d)};
}

bool readDropShadow(std::string_view arguments, const FilterArea& area, FilterStep& step) {
    Paint color{.kind = PaintKind::currentColor};
    double lengths[3]{};
    int count = 0;
    bool hasColor = false;
    const LengthContext context{area.style.fontSize, area.space.width, area.space.height};
    while (!(arguments = trimFront(arguments)).empty()) {
        std::uint32_t rgb = 0;
        std::uint8_t alpha = 255;
        if (!hasColor && takeColor(arguments, rgb, &alpha)) {
            color = {.kind = PaintKind::rgb, .alpha = alpha, .rgb = rgb};
            hasColor = true;
            continue;
        }
        const std::string_view word = takeWord(arguments);
        if (!hasColor && equalsNoCase(word, "currentcolor")) {
            hasColor = true;
        } else if (count == 3 || !readLength(word, context, lengths[count++])) {
            return false;
        }
    }
    if (count < 2 || lengths[2] < 0) return false;
    const Scale scale = scaleOf(area);
    makeDropShadow(step, lengths[2] * scale.x, lengths[2] * scale.y,
                   area.space.toDrawing.applyLinear({lengths[0], lengths[1]}),
                   colorValues(color, area.style.color, 1, false));
    return true;
}

}  // namespace

bool readFilterFunction(std::string_view name, std::string_view arguments, const FilterArea& area,
                        FilterGraph& graph) {
    graph.region = pixelRect({-kLargestNumber, -kLargestNumber, kLargestNumber, kLargestNumber});
    FilterStep step;
    step.inputs = {kSourceGraphic};
    step.area = graph.region;
    bool known = false;
    if (equalsNoCase(name, "blur")) {
        double deviation = 0;
        const LengthContext context{area.style.fontSize, 0, 0};
        known = (arguments.empty() || readLength(arguments, context, deviation)) && deviation >= 0;
        const Scale scale = scaleOf(area);
        makeBlur(step, deviation * scale.x, deviation * scale.y);
    } else if (equalsNoCase(name, "drop-shadow")) {
        known = readDropShadow(arguments, area, step);
    } else if (equalsNoCase(name, "hue-rotate")) {
        double degrees = 0;
        known = readAngle(arguments, degrees);
        makeColorMatrix(step, hueRotation(degrees));
    }
    for (const AmountFunction& function : kAmountFunctions) {
        double amount = 1;
        if (!equalsNoCase(name, function.name)) continue;
        known = readAmount(arguments, amount);
        makeColorMatrix(step, function.matrix(std::min(amount, function.most)));
    }
    if (known) graph.steps.push_back(std::move(step));
    return known;
}

}  // namespace svg
