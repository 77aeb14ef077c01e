#include "formats/svg/draw/filter/filter_graph.h"

#include <algorithm>
#include <cmath>

#include "formats/svg/draw/filter/filter_reader.h"
#include "formats/svg/draw/filter/pixel_values.h"
#include "formats/svg/values/text_scan.h"

namespace svg {

namespace {

constexpr std::size_t kMostFilters = 16;  // in one property

pugi::xml_node findFilter(DrawContext& context, std::string_view id) {
    const pugi::xml_node node = id.empty() ? pugi::xml_node() : context.tree().findResource(id);
    return kindOf(node) == Element::filter ? node : pugi::xml_node();
}

// Takes the next function of the property: name(arguments), which may hold parentheses of their own.
bool takeFunction(std::string_view& property, std::string_view& name, std::string_view& arguments) {
    const std::size_t open = property.find('(');
    if (open == property.npos) return false;
    std::size_t close = open;
    for (int depth = 0; close < property.size(); ++close) {
        depth += property[close] == '(' ? 1 : property[close] == ')' ? -1 : 0;
        if (depth == 0) break;
    }
    if (close == property.size()) return false;
    name = trim(property.substr(0, open));
    arguments = trim(property.substr(open + 1, close - open - 1));
    property.remove_prefix(close + 1);
    return true;
}

}  // namespace

bool readFilters(DrawContext& context, const FilterArea& area, std::vector<FilterGraph>& graphs) {
    graphs.clear();
    for (std::string_view rest = trim(area.filter); !rest.empty(); rest = trimFront(rest)) {
        if (graphs.size() == kMostFilters) return false;
        std::string_view id;
        if (takeUrl(rest, id)) {
            // One that is not there does nothing; others may follow.
            const pugi::xml_node node = findFilter(context, id);
            if (!node) continue;
            graphs.push_back(FilterReader(context, area, node).read());
            continue;
        }
        std::string_view name, arguments;
        graphs.emplace_back();
        if (!takeFunction(rest, name, arguments) || !readFilterFunction(name, arguments, area, graphs.back()))
            return false;
    }
    return !graphs.empty();
}

ColorValues colorValues(const Paint& paint, std::uint32_t currentColor, double opacity, bool linear) {
    const bool current = paint.kind == PaintKind::currentColor;
    if (!current && paint.kind != PaintKind::rgb) return {0, 0, 0, 0};
    const std::uint32_t rgb = current ? currentColor : paint.rgb;
    const double alpha = current ? 1 : paint.alpha / 255.0;
    ColorValues values{redOf(rgb) / 255.0, greenOf(rgb) / 255.0, blueOf(rgb) / 255.0, opacity * alpha};
    if (linear) {
        for (std::size_t i = 0; i < 3; ++i) values[i] = linearOf(values[i]);
    }
    return values;
}

int wholePixels(double value) {
    constexpr double kFar = 1 << 28;
    return static_cast<int>(std::lround(std::clamp(std::isnan(value) ? 0 : value, -kFar, kFar)));
}

RECT pixelRect(const AFRect& rect) {
    return {wholePixels(rect.left), wholePixels(rect.top), wholePixels(rect.right), wholePixels(rect.bottom)};
}

void makeBlur(FilterStep& step, double across, double down) {
    step.reach = 3 * std::max(across, down) + 1;
    step.apply = [=](const StepInputs& in) { return blurImage(*in.images[0], across, down); };
}

void makeDropShadow(FilterStep& step, double across, double down, AFPoint by, const ColorValues& color) {
    step.reach = 3 * std::max(across, down) + 1 + std::max(std::fabs(by.x), std::fabs(by.y));
    step.apply = [=](const StepInputs& in) {
        const AImage& picture = *in.images[0];
        const AImage shape =
            moveImage(blurImage(alphaOf(picture), across, down), wholePixels(by.x), wholePixels(by.y));
        AImage flood(picture.width(), picture.height());
        fillImage(flood, {0, 0, picture.width(), picture.height()}, color);
        return compositeImages(picture, compositeImages(flood, shape, CompositeMode::in),
                               CompositeMode::over);
    };
}

void makeColorMatrix(FilterStep& step, const ColorMatrix& matrix) {
    step.apply = [=](const StepInputs& in) { return applyColorMatrix(*in.images[0], matrix); };
}

// How bright red, green and blue are.
constexpr double kRed = 0.213;
constexpr double kGreen = 0.715;
constexpr double kBlue = 0.072;

ColorMatrix saturation(double s) {
    const double r = kRed * (1 - s);
    const double g = kGreen * (1 - s);
    const double b = kBlue * (1 - s);
    return {r + s, g, b, 0, 0, r, g + s, b, 0, 0, r, g, b + s, 0, 0, 0, 0, 0, 1, 0};
}

ColorMatrix hueRotation(double degrees) {
    const double angle = std::fmod(degrees, 360) * 3.14159265358979323846 / 180;
    const double c = std::cos(angle);
    const double s = std::sin(angle);
    return {kRed + c * (1 - kRed) - s * kRed,
            kGreen - c * kGreen - s * kGreen,
            kBlue - c * kBlue + s * (1 - kBlue),
            0,
            0,
            kRed - c * kRed + s * 0.143,
            kGreen + c * (1 - kGreen) + s * 0.140,
            kBlue - c * kBlue - s * 0.283,
            0,
            0,
            kRed - c * kRed - s * (1 - kRed),
            kGreen - c * kGreen + s * kGreen,
            kBlue + c * (1 - kBlue) + s * kBlue,
            0,
            0,
            0,
            0,
            0,
            1,
            0};
}

}  // namespace svg
