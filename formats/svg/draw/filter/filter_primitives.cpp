// The filter primitives: their attributes, in the units of the drawing, become numbers of pixels.
#include <algorithm>
#include <cmath>
#include <optional>

#include "formats/svg/draw/filter/filter_light.h"
#include "formats/svg/draw/filter/filter_reader.h"
#include "formats/svg/draw/filter/filter_turbulence.h"
#include "formats/svg/draw/filter/pixel_values.h"
#include "formats/svg/values/blend_mode.h"
#include "formats/svg/values/text_scan.h"

namespace svg {

namespace {

constexpr double kDegree = 3.14159265358979323846 / 180;

// Empty for a list with anything else in it.
std::vector<double> readNumbers(std::string_view text, std::size_t most) {
    std::vector<double> numbers;
    double value = 0;
    for (text = trim(text); numbers.size() < most && takeNumber(text, value); text = skipSeparator(text))
        numbers.push_back(value);
    if (numbers.size() < most && !text.empty()) numbers.clear();
    return numbers;
}

double numberOf(pugi::xml_node node, const char* name, double missing = 0) {
    std::string_view text = trim(textOf(node, name));
    double value = missing;
    return takeNumber(text, value) && text.empty() ? value : missing;
}

template <class T>
struct Choice {
    std::string_view word;
    T value;
};
template <class T, std::size_t Count>
T valueOf(std::string_view text, const Choice<T> (&words)[Count], T otherwise) {
    for (const Choice<T>& one : words) {
        if (one.word == text) return one.value;
    }
    return otherwise;
}

// What feImage shows: an element of the drawing, or a picture inside the file.
struct FilterImage {
    DrawContext& context;
    UserSpace space;  // of the filtered element

    void paint(const StepInputs& in, AImage& image, pugi::xml_node node, const AFRect& region) const {
        if (image.empty()) return;
        ACanvas canvas(pixelsOf(image));
        const AAffine place = AAffine::translation(-in.origin.x, -in.origin.y);
        const DrawContext::OnCanvas on(context, canvas, place);
        UserSpace here = space;
        here.toDrawing = place * here.toDrawing;
        const std::string_view id = referenceOf(node);
        if (id.empty()) {
            std::string_view uri;
            for (const pugi::xml_attribute one : node.attributes()) {
                if (splitName(one.name()).local == "href") uri = one.value();
            }
            const std::string_view aspect = textOf(node, "preserveAspectRatio");
            return context.paintUri(uri, region, aspect, here, context.styleAt(node).smoothImages);
        }
        const pugi::xml_node element = context.tree().findAny(id);
        const DrawContext::Visit visit(context, element);
        if (!visit || kindOf(element) == Element::symbol) return;
        // Its origin is the corner of what the step fills.
        here.toDrawing = here.toDrawing * translation(region.left, region.top);
        context.paintElement(element, context.styleAt(element.parent()), here);
    }
};

// A function of feComponentTransfer as a table.
std::array<std::uint8_t, 256> transferTable(pugi::xml_node function) {
    const std::string_view type = trim(textOf(function, "type"));
    constexpr std::size_t kMostValues = 4096;
    const std::vector<double> values = readNumbers(textOf(function, "tableValues"), kMostValues);
    const double slope = numberOf(function, "slope", 1);
    const double intercept = numberOf(function, "intercept");
    const double amplitude = numberOf(function, "amplitude", 1);
    const double exponent = numberOf(function, "exponent", 1);
    const double offset = numberOf(function, "offset");
    const auto map = [&](double x) {
        if (type == "linear") return slope * x + intercept;
        if (type == "gamma") return amplitude * std::pow(x, exponent) + offset;
        if (values.empty()) return x;
        const std::size_t last = values.size() - 1;
        if (type == "discrete")
            return values[std::min(static_cast<std::size_t>(x * static_cast<double>(values.size())), last)];
        if (type != "table") return x;
        const double place = x * static_cast<double>(last);
        const std::size_t before = std::min(static_cast<std::size_t>(place), last);
        const std::size_t behind = std::min(before + 1, last);
        return values[before] + (place - static_cast<double>(before)) * (values[behind] - values[before]);
    };
    std::array<std::uint8_t, 256> table{};
    for (std::size_t i = 0; i < table.size(); ++i)
        table[i] = static_cast<std::uint8_t>(componentOf(map(static_cast<double>(i) / 255)));
    return table;
}

}  // namespace

void FilterReader::readBlur(FilterStep& step) {
    const AFPoint deviation = pair("stdDeviation", {});
    const AFPoint pixels = sizeInPixels({std::max(deviation.x, 0.0), std::max(deviation.y, 0.0)});
    makeBlur(step, pixels.x, pixels.y);
}

void FilterReader::readOffset(FilterStep& step) {
    const AFPoint by = vectorInPixels({number("dx"), number("dy")});
    step.reach = std::max(std::fabs(by.x), std::fabs(by.y));
    const int dx = wholePixels(by.x);
    const int dy = wholePixels(by.y);
    step.apply = [=](const StepInputs& in) { return moveImage(*in.images[0], dx, dy); };
}

void FilterReader::readFlood(FilterStep& step) {
    const OwnStyle& own = m_style.own;
    step.linear = false;
    const ColorValues color = colorValues(own.floodColor, m_style.color, own.floodOpacity, false);
    step.inputs = {kTransparent};
    step.apply = [=](const StepInputs& in) {
        AImage flood = *in.images[0];
        fillImage(flood, in.area, color);
        return flood;
    };
}

void FilterReader::readMerge(FilterStep& step) {
    step.inputs = {kTransparent};
    for (pugi::xml_node child = m_node.first_child(); child; child = child.next_sibling()) {
        if (splitName(child.name()).local == "feMergeNode" && step.inputs.size() < kMostFilterSteps)
            step.inputs.push_back(inputOf(child, "in"));
    }
    step.apply = [](const StepInputs& in) {
        AImage merged = *in.images[0];
        for (std::size_t i = 1; i < in.images.size(); ++i)
            merged = compositeImages(*in.images[i], merged, CompositeMode::over);
        return merged;
    };
}

void FilterReader::readBlend(FilterStep& step) {
    const EBlend mode = blendModeOf(word("mode")).value_or(EBlend::normal);
    step.apply = [=](const StepInputs& in) { return blendImages(*in.images[0], *in.images[1], mode); };
}

void FilterReader::readComposite(FilterStep& step) {
    if (word("operator") == "arithmetic") {
        const std::array<double, 4> k{number("k1"), number("k2"), number("k3"), number("k4")};
        step.apply = [=](const StepInputs& in) { return mixImages(*in.images[0], *in.images[1], k); };
        return;
    }
    constexpr Choice<CompositeMode> kModes[] = {
        {"in", CompositeMode::in},           {"out", CompositeMode::out},
        {"atop", CompositeMode::atop},       {"xor", CompositeMode::exclusiveOr},
        {"lighter", CompositeMode::lighter},
    };
    const CompositeMode mode = valueOf(word("operator"), kModes, CompositeMode::over);
    step.apply = [=](const StepInputs& in) { return compositeImages(*in.images[0], *in.images[1], mode); };
}

void FilterReader::readColorMatrix(FilterStep& step) {
    const std::string_view type = word("type");
    const std::vector<double> values = readNumbers(textOf(m_node, "values"), 21);
    if (type == "saturate") return makeColorMatrix(step, saturation(values.size() != 1 ? 1 : values[0]));
    if (type == "hueRotate") return makeColorMatrix(step, hueRotation(values.size() != 1 ? 0 : values[0]));
    if (type == "luminanceToAlpha") {
        ColorMatrix matrix{};
        matrix[15] = 0.2125;
        matrix[16] = 0.7154;
        matrix[17] = 0.0721;
        return makeColorMatrix(step, matrix);
    }
    ColorMatrix matrix;
    if (values.size() != matrix.size()) return;  // as if it were not there
    std::copy(values.begin(), values.end(), matrix.begin());
    makeColorMatrix(step, matrix);
}

void FilterReader::readTransfer(FilterStep& step) {
    TransferTables tables;
    for (auto& table : tables) {
        for (std::size_t i = 0; i < table.size(); ++i) table[i] = static_cast<std::uint8_t>(i);
    }
    constexpr Choice<int> kFunctions[] = {{"feFuncR", 0}, {"feFuncG", 1}, {"feFuncB", 2}, {"feFuncA", 3}};
    for (pugi::xml_node child = m_node.first_child(); child; child = child.next_sibling()) {
        const int channel = valueOf(splitName(child.name()).local, kFunctions, -1);
        if (channel >= 0) tables[static_cast<std::size_t>(channel)] = transferTable(child);
    }
    step.apply = [=](const StepInputs& in) { return applyTransfer(*in.images[0], tables); };
}

void FilterReader::readDropShadow(FilterStep& step) {
    const AFPoint deviation = pair("stdDeviation", {2, 2});
    const AFPoint pixels = sizeInPixels({std::max(deviation.x, 0.0), std::max(deviation.y, 0.0)});
    const OwnStyle& own = m_style.own;
    makeDropShadow(step, pixels.x, pixels.y, vectorInPixels({number("dx", 2), number("dy", 2)}),
                   colorValues(own.floodColor, m_style.color, own.floodOpacity, step.linear));
}

void FilterReader::readMorphology(FilterStep& step) {
    const AFPoint radius = sizeInPixels(pair("radius", {}));
    const bool dilates = word("operator") == "dilate";
    if (!(radius.x >= 0 && radius.y >= 0)) return;
    step.reach = std::max(radius.x, radius.y);
    const int x = wholePixels(radius.x);
    const int y = wholePixels(radius.y);
    step.apply = [=](const StepInputs& in) { return thickenImage(*in.images[0], x, y, dilates); };
}

void FilterReader::readTile(FilterStep& step) {
    step.reach = kEndlessReach;
    step.apply = [](const StepInputs& in) { return tileImage(*in.images[0], in.areas[0]); };
}

void FilterReader::readTurbulence(FilterStep& step) {
    const AFPoint frequency = pair("baseFrequency", {});
    // A broken step shows nothing.
    step.inputs = {kTransparent};
    if (frequency.x < 0 || frequency.y < 0) return;
    Turbulence::Settings settings;
    settings.frequencyX = std::max(frequency.x, 0.0);
    settings.frequencyY = std::max(frequency.y, 0.0);
    settings.octaves = static_cast<int>(std::clamp(number("numOctaves", 1), 0.0, 100.0));
    settings.seed = number("seed");
    settings.fractal = word("type") == "fractalNoise";
    settings.stitches = word("stitchTiles") == "stitch";
    const AFRect tile = subregion(m_region);
    settings.tileX = tile.left;
    settings.tileY = tile.top;
    settings.tileWidth = tile.Width();
    settings.tileHeight = tile.Height();
    const std::optional<Affine> toUser = m_area.space.toDrawing.inverse();
    step.cost = 20.0 * settings.octaves;
    if (!toUser) return;
    step.apply = [settings, toUser](const StepInputs& in) {
        const Turbulence turbulence(settings);
        AImage result = *in.images[0];
        for (int y = in.area.top; y < in.area.bottom; ++y) {
            for (int x = in.area.left; x < in.area.right; ++x) {
                const AFPoint at = toUser->apply({x + in.origin.x + 0.5, y + in.origin.y + 0.5});
                const std::array<double, 4> value = turbulence.at(at.x, at.y);
                result.at(x, y) = multipliedPixel(componentOf(value[0]), componentOf(value[1]),
                                                  componentOf(value[2]), componentOf(value[3]));
            }
        }
        return result;
    };
}

void FilterReader::readLighting(FilterStep& step) {
    Light light;
    light.specular = splitName(m_node.name()).local == "feSpecularLighting";
    light.strength = std::max(0.0, number(light.specular ? "specularConstant" : "diffuseConstant", 1));
    light.shininess = std::clamp(number("specularExponent", 1), 1.0, 128.0);
    const double scale = m_area.space.toDrawing.scale();
    light.surfaceScale = number("surfaceScale", 1) * scale;
    light.color = colorValues(m_style.own.lightingColor, m_style.color, 1, step.linear);
    constexpr Choice<Light::Kind> kKinds[] = {{"feDistantLight", Light::Kind::distant},
                                              {"fePointLight", Light::Kind::point},
                                              {"feSpotLight", Light::Kind::spot}};
    pugi::xml_node source;
    for (pugi::xml_node child = m_node.first_child(); child && !source; child = child.next_sibling()) {
        const std::string_view name = splitName(child.name()).local;
        for (const Choice<Light::Kind>& kind : kKinds) {
            if (kind.word != name) continue;
            source = child;
            light.kind = kind.value;
        }
    }
    if (!source) return readNothing(step);
    const double azimuth = std::fmod(numberOf(source, "azimuth"), 360) * kDegree;
    const double elevation = std::fmod(numberOf(source, "elevation"), 360) * kDegree;
    light.toLight = {std::cos(azimuth) * std::cos(elevation), std::sin(azimuth) * std::cos(elevation),
                     std::sin(elevation)};
    const auto place = [&](const char* x, const char* y, const char* z) {
        AFPoint at{numberOf(source, x), numberOf(source, y)};
        double height = numberOf(source, z);
        if (m_boxPrimitives) {
            at = m_fromUnit.apply(at);
            height *= std::hypot(m_fromUnit.a, m_fromUnit.d) / std::sqrt(2.0);
        }
        at = m_area.space.toDrawing.apply(at);
        return Vector3{at.x, at.y, height * scale};
    };
    light.at = place("x", "y", "z");
    light.target = place("pointsAtX", "pointsAtY", "pointsAtZ");
    light.focus = std::min(numberOf(source, "specularExponent", 1), 128.0);
    if (!(light.focus > 0)) light.focus = 1;
    const double cone = numberOf(source, "limitingConeAngle", 180);
    light.coneCosine = std::cos(std::min(std::fabs(cone), 180.0) * kDegree);
    step.reach = 1;
    step.apply = [light](const StepInputs& in) {
        Light moved = light;
        for (Vector3* one : {&moved.at, &moved.target}) {
            one->x -= in.origin.x;
            one->y -= in.origin.y;
        }
        return lightImage(*in.images[0], moved);
    };
}

void FilterReader::readConvolve(FilterStep& step) {
    Convolution c;
    AFPoint order = pair("order", {3, 3});
    const auto isCount = [](double value) { return value >= 1 && value == std::floor(value); };
    if (!isCount(order.x) || !isCount(order.y)) order = {3, 3};
    if (order.x * order.y > Convolution::kMostWeights) return;
    c.columns = static_cast<int>(order.x);
    c.rows = static_cast<int>(order.y);
    const auto count = static_cast<std::size_t>(c.columns * c.rows);
    c.weights = readNumbers(textOf(m_node, "kernelMatrix"), count + 1);
    if (c.weights.size() != count) return readNothing(step);
    double sum = 0;
    for (const double weight : c.weights) sum += weight;
    c.divisor = number("divisor", 0);
    if (c.divisor == 0) c.divisor = sum != 0 ? sum : 1;
    c.bias = number("bias");
    const AFPoint target{std::floor(number("targetX", c.columns / 2)),
                         std::floor(number("targetY", c.rows / 2))};
    if (!(target.x >= 0 && target.x < c.columns && target.y >= 0 && target.y < c.rows))
        return readNothing(step);
    c.targetX = static_cast<int>(target.x);
    c.targetY = static_cast<int>(target.y);
    constexpr Choice<EdgeMode> kEdges[] = {{"none", EdgeMode::none}, {"wrap", EdgeMode::wrap}};
    c.edges = valueOf(word("edgeMode"), kEdges, EdgeMode::duplicate);
    c.keepsAlpha = word("preserveAlpha") == "true";
    step.reach = std::max(c.columns, c.rows);
    step.cost = 2.0 * c.columns * c.rows;
    step.apply = [c](const StepInputs& in) {
        Convolution here = c;
        here.area = in.area;
        return convolveImage(*in.images[0], here);
    };
}

void FilterReader::readDisplacement(FilterStep& step) {
    constexpr Choice<int> kComponents[] = {{"R", 0}, {"G", 1}, {"B", 2}, {"A", 3}};
    const int x = valueOf(word("xChannelSelector"), kComponents, 3);
    const int y = valueOf(word("yChannelSelector"), kComponents, 3);
    const double amount = number("scale");
    const AFPoint scale = sizeInPixels({amount, amount});
    step.reach = std::max(std::fabs(scale.x), std::fabs(scale.y)) / 2 + 1;
    step.apply = [=](const StepInputs& in) {
        return displaceImage(*in.images[0], *in.images[1], scale.x, scale.y, x, y);
    };
}

// A broken step shows nothing.
void FilterReader::readNothing(FilterStep& step) {
    step.inputs = {kTransparent};
    step.apply = nullptr;
}

void FilterReader::readImage(FilterStep& step) {
    step.inputs = {kTransparent};
    step.linear = false;
    const AFRect region = subregion(m_region);
    const pugi::xml_node node = m_node;
    step.apply = [=, reader = FilterImage{m_context, m_area.space}](const StepInputs& in) {
        AImage image = *in.images[0];
        reader.paint(in, image, node, region);
        return image;
    };
}

}  // namespace svg
