#include "formats/svg/draw/filter/filter_reader.h"

#include <algorithm>
#include <cmath>

#include "formats/svg/draw/context/pixel_area.h"
#include "formats/svg/values/text_scan.h"

namespace svg {

namespace {

AFRect readRect(pugi::xml_node node, bool ofBox, const Affine& fromUnit, const LengthContext& lengths,
                const AFRect& missing) {
    // Numbers that are parts of the box; a percentage is the same number by another name.
    const LengthContext unit{lengths.fontSize, 1, 1};
    const auto get = [&](const char* name, Axis axis, double scale, double start, double otherwise) {
        double value = 0;
        if (!parseLength(textOf(node, name), axis, ofBox ? unit : lengths, value)) return otherwise;
        return ofBox ? start + value * scale : value;
    };
    const double x = get("x", Axis::horizontal, fromUnit.a, fromUnit.e, missing.left);
    const double y = get("y", Axis::vertical, fromUnit.d, fromUnit.f, missing.top);
    // Less than nothing is nothing.
    const double width = std::max(0.0, get("width", Axis::horizontal, fromUnit.a, 0, missing.Width()));
    const double height = std::max(0.0, get("height", Axis::vertical, fromUnit.d, 0, missing.Height()));
    return {finite(x), finite(y), finite(x + width), finite(y + height)};
}

}  // namespace

const FilterReader::Primitive FilterReader::kPrimitives[] = {
    {"feGaussianBlur", 1, &FilterReader::readBlur},
    {"feOffset", 1, &FilterReader::readOffset},
    {"feFlood", 0, &FilterReader::readFlood},
    {"feMerge", 0, &FilterReader::readMerge},
    {"feBlend", 2, &FilterReader::readBlend},
    {"feComposite", 2, &FilterReader::readComposite},
    {"feColorMatrix", 1, &FilterReader::readColorMatrix},
    {"feComponentTransfer", 1, &FilterReader::readTransfer},
    {"feDropShadow", 1, &FilterReader::readDropShadow},
    {"feMorphology", 1, &FilterReader::readMorphology},
    {"feTile", 1, &FilterReader::readTile},
    {"feTurbulence", 0, &FilterReader::readTurbulence},
    {"feDiffuseLighting", 1, &FilterReader::readLighting},
    {"feSpecularLighting", 1, &FilterReader::readLighting},
    {"feConvolveMatrix", 1, &FilterReader::readConvolve},
    {"feDisplacementMap", 2, &FilterReader::readDisplacement},
    {"feImage", 0, &FilterReader::readImage},
};

FilterReader::FilterReader(DrawContext& context, const FilterArea& area, pugi::xml_node filter)
    : m_context(context), m_area(area), m_filter(filter), m_hasBox(boxUnits(area.box, m_fromUnit)) {
    const Affine& t = area.space.toDrawing;
    m_scale = {std::hypot(t.a, t.b), std::hypot(t.c, t.d)};
    m_boxPrimitives = equalsNoCase(textOf(filter, "primitiveUnits"), "objectboundingbox");
}

FilterGraph FilterReader::read() {
    const bool ofBox = !equalsNoCase(textOf(m_filter, "filterUnits"), "userspaceonuse");
    const LengthContext lengths{m_area.style.fontSize, m_area.space.width, m_area.space.height};
    const AFRect& box = m_area.box;
    const AFRect usual = ofBox ? AFRect{box.left - box.Width() / 10, box.top - box.Height() / 10,
                                        box.right + box.Width() / 10, box.bottom + box.Height() / 10}
                               : AFRect{-lengths.viewportWidth / 10, -lengths.viewportHeight / 10,
                                        lengths.viewportWidth * 1.1, lengths.viewportHeight * 1.1};
    if ((ofBox || m_boxPrimitives) && !m_hasBox) return {};
    m_region = readRect(m_filter, ofBox, m_fromUnit, lengths, usual);
    if (m_region.IsRectEmpty() || !m_area.space.toDrawing.isFinite()) return {};
    m_graph.region = pixelRect(rectBounds(m_area.space.toDrawing, m_region));
    for (m_node = m_filter.first_child(); m_node; m_node = m_node.next_sibling()) {
        if (m_node.type() != pugi::node_element || m_graph.steps.size() >= kMostFilterSteps) continue;
        const std::string_view name = splitName(m_node.name()).local;
        for (const Primitive& primitive : kPrimitives) {
            if (primitive.name == name) readStep(primitive);
        }
    }
    return std::move(m_graph);
}

void FilterReader::readStep(const Primitive& primitive) {
    m_style = m_context.styleAt(m_node);
    FilterStep step;
    step.linear = m_style.linearFilters;
    if (primitive.inputs > 0) step.inputs.push_back(inputOf(m_node, "in"));
    if (primitive.inputs > 1) step.inputs.push_back(inputOf(m_node, "in2"));
    (this->*primitive.read)(step);
    m_regions.push_back(subregion(usualRegion(step)));
    step.area = intersection(pixelRect(rectBounds(m_area.space.toDrawing, m_regions.back())), m_graph.region);
    // What turned out to do nothing hands its input on.
    if (!step.apply) step.apply = [](const StepInputs& in) { return *in.images[0]; };
    m_graph.steps.push_back(std::move(step));
    const std::string_view result = word("result");
    if (!result.empty()) m_names[result] = static_cast<int>(m_graph.steps.size()) - 1;
}

// That of the inputs together; of the filter where there is none, or one that the filter starts with, and for tiles.
AFRect FilterReader::usualRegion(const FilterStep& step) const {
    BoundsBuilder inputs;
    for (const int input : step.inputs) {
        if (input == kTransparent) continue;
        if (input < 0) return m_region;
        inputs.add(m_regions[static_cast<std::size_t>(input)]);
    }
    return inputs.isEmpty() || splitName(m_node.name()).local == "feTile" ? m_region : inputs.get();
}

// Without a name, or with one that no step before has: the step before. What lies below the element, and the paints
// of its shape, are not at hand: the element itself stands for them, as in browsers.
int FilterReader::inputOf(pugi::xml_node node, const char* attribute) const {
    const std::string_view name = trim(textOf(node, attribute));
    const auto found = m_names.find(name);
    if (found != m_names.end()) return found->second;
    if (name == "SourceAlpha") return kSourceAlpha;
    if (name == "SourceGraphic" || name == "BackgroundImage" || name == "BackgroundAlpha" ||
        name == "FillPaint" || name == "StrokePaint")
        return kSourceGraphic;
    return m_graph.steps.empty() ? kSourceGraphic : static_cast<int>(m_graph.steps.size()) - 1;
}

AFRect FilterReader::subregion(const AFRect& around) const {
    const LengthContext lengths{m_style.fontSize, m_area.space.width, m_area.space.height};
    return readRect(m_node, m_boxPrimitives, m_fromUnit, lengths, around);
}

double FilterReader::number(const char* name, double missing) const {
    std::string_view text = trim(textOf(m_node, name));
    double value = missing;
    return takeNumber(text, value) && text.empty() ? value : missing;
}

AFPoint FilterReader::pair(const char* name, AFPoint missing) const {
    std::string_view text = trim(textOf(m_node, name));
    AFPoint value;
    if (!takeNumber(text, value.x)) return missing;
    text = skipSeparator(text);
    if (!takeNumber(text, value.y)) value.y = value.x;
    return text.empty() ? value : missing;
}

std::string_view FilterReader::word(const char* name) const {
    return trim(textOf(m_node, name));
}

AFPoint FilterReader::vectorInPixels(AFPoint v) const {
    if (m_boxPrimitives) v = {v.x * m_fromUnit.a, v.y * m_fromUnit.d};
    return m_area.space.toDrawing.applyLinear(v);
}

AFPoint FilterReader::sizeInPixels(AFPoint size) const {
    if (m_boxPrimitives) size = {size.x * m_fromUnit.a, size.y * m_fromUnit.d};
    return {size.x * m_scale.x, size.y * m_scale.y};
}

}  // namespace svg
