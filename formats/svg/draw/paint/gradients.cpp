#include "formats/svg/draw/paint/gradients.h"

#include <algorithm>
#include <unordered_map>

#include "formats/svg/style/gradient_stop.h"

namespace svg {

namespace {

// A gradient may take what it does not say from another one; so many steps are followed.
constexpr int kLongestGradientChain = 32;

// A coordinate: of the unit square, or of user space, where a percentage is of the viewport.
struct Coordinate {
    std::string_view text;
    double otherwise = 0;  // in hundredths of the viewport or of the box
};

struct ReadGradient {
    bool radial = false;
    bool inBox = true;
    AAffine transform;
    // x1, y1, x2, y2, or cx, cy, r, fx, fy, fr.
    std::array<Coordinate, 6> coordinates;
    bool hasFocusX = false, hasFocusY = false;
    Style style;  // for its transform-origin
    AGradient gradient;
};

struct Gradients : DrawCache {
    std::unordered_map<std::size_t, ReadGradient> byNode;
};

void readStops(DrawContext& context, pugi::xml_node owner, std::vector<AGradientStop>& stops) {
    const Style around = context.styleAt(owner);
    AttributeSet attributes;
    Style room;
    double last = 0;
    for (const pugi::xml_node child : owner.children()) {
        if (kindOf(child) != Element::stop || stops.size() == kMostStops) continue;
        attributes.read(child);
        const Style& style = context.styleOf(child, attributes, around, context.rootSpace(), room);
        stops.push_back(gradientStop(child, style, last));
        last = stops.back().offset;
    }
}

// An attribute of the gradient or of the first in its chain that has it.
class GradientChain {
public:
    GradientChain(DrawContext& context, pugi::xml_node gradient) {
        while (gradient && m_nodes.size() < kLongestGradientChain) {
            m_nodes.push_back(gradient);
            const std::string_view id = referenceOf(gradient);
            gradient = id.empty() ? pugi::xml_node() : context.tree().findResource(id);
            const Element element = kindOf(gradient);
            if (element != Element::linearGradient && element != Element::radialGradient) return;
            if (std::find(m_nodes.begin(), m_nodes.end(), gradient) != m_nodes.end()) return;
        }
    }

    std::string_view get(const char* attribute) const {
        for (const pugi::xml_node node : m_nodes) {
            if (const pugi::xml_attribute found = node.attribute(attribute)) return found.value();
        }
        return {};
    }
    pugi::xml_node stopsOwner() const {
        for (const pugi::xml_node node : m_nodes) {
            for (const pugi::xml_node child : node.children()) {
                if (kindOf(child) == Element::stop) return node;
            }
        }
        return {};
    }

private:
    std::vector<pugi::xml_node> m_nodes;
};

// The end colours reach to where the next repetition begins; without a stop there, the canvas would go over from one to
// the other.
void reachEnds(AGradient& gradient) {
    std::vector<AGradientStop>& stops = gradient.stops;
    if (gradient.spread != ESpread::repeat || stops.size() < 2) return;
    if (stops.front().offset > 0) stops.insert(stops.begin(), {0, stops.front().color});
    if (stops.back().offset < 1) stops.push_back({1, stops.back().color});
}

void read(DrawContext& context, pugi::xml_node node, ReadGradient& result) {
    const GradientChain chain(context, node);
    if (const pugi::xml_node owner = chain.stopsOwner()) readStops(context, owner, result.gradient.stops);
    result.radial = result.gradient.radial = kindOf(node) == Element::radialGradient;
    result.inBox = chain.get("gradientUnits") != "userSpaceOnUse";
    result.transform = parseTransform(chain.get("gradientTransform"));
    result.style = context.styleAt(node);
    const std::string_view spread = chain.get("spreadMethod");
    result.gradient.spread = spread == "reflect"  ? ESpread::reflect
                             : spread == "repeat" ? ESpread::repeat
                                                  : ESpread::pad;
    reachEnds(result.gradient);
    if (result.radial) {
        result.coordinates = {{{chain.get("cx"), 50},
                               {chain.get("cy"), 50},
                               {chain.get("r"), 50},
                               {chain.get("fx"), 50},
                               {chain.get("fy"), 50},
                               {chain.get("fr"), 0}}};
        result.hasFocusX = !chain.get("fx").empty();
        result.hasFocusY = !chain.get("fy").empty();
    } else {
        result.coordinates = {{{chain.get("x1"), 0},
                               {chain.get("y1"), 0},
                               {chain.get("x2"), 100},
                               {chain.get("y2"), 0},
                               {},
                               {}}};
    }
}

// Two equal circles have no colours between them: the first one's fill the circle, the last one's surround it.
void separateCircles(AGradient& gradient) {
    constexpr double kApart = 1e-5;
    const double least = gradient.radius * kApart;
    if (std::hypot(gradient.from.x - gradient.to.x, gradient.from.y - gradient.to.y) < least &&
        std::fabs(gradient.fromRadius - gradient.radius) < least) {
        gradient.fromRadius = gradient.radius * (1 - kApart);
    }
}

void place(ReadGradient& read, double width, double height) {
    const LengthContext context{kUsualFontSize, width, height};
    const auto at = [&](std::size_t i, Axis axis) {
        const Coordinate& one = read.coordinates[i];
        const double extent = axis == Axis::horizontal ? width
                              : axis == Axis::vertical ? height
                                                       : std::sqrt((width * width + height * height) / 2);
        double value = one.otherwise / 100 * extent;
        parseLength(one.text, axis, context, value);
        return value;
    };
    AGradient& gradient = read.gradient;
    if (!read.radial) {
        gradient.from = {at(0, Axis::horizontal), at(1, Axis::vertical)};
        gradient.to = {at(2, Axis::horizontal), at(3, Axis::vertical)};
        return;
    }
    gradient.to = {at(0, Axis::horizontal), at(1, Axis::vertical)};
    gradient.radius = std::max(0.0, at(2, Axis::both));
    gradient.from = {read.hasFocusX ? at(3, Axis::horizontal) : gradient.to.x,
                     read.hasFocusY ? at(4, Axis::vertical) : gradient.to.y};
    gradient.fromRadius = std::max(0.0, at(5, Axis::both));
    separateCircles(gradient);
}

ReadGradient& readOnce(DrawContext& context, pugi::xml_node gradient) {
    auto& cache = context.cache<Gradients>(CacheOf::gradients);
    const auto [entry, isNew] = cache.byNode.try_emplace(gradient.hash_value());
    if (isNew) read(context, gradient, entry->second);
    return entry->second;
}

}  // namespace

const AGradient* gradientFor(DrawContext& context, pugi::xml_node node, BoundingBox& box,
                             const UserSpace& space) {
    ReadGradient& read = readOnce(context, node);
    if (read.gradient.stops.empty()) return nullptr;
    AAffine units;
    if (read.inBox && !boxUnits(box.get(), units)) return nullptr;
    place(read, read.inBox ? 1 : space.width, read.inBox ? 1 : space.height);
    read.gradient.toPixels =
        space.toDrawing * units *
        aboutOrigin(read.transform, read.style, read.inBox ? UserSpace{{}, 1, 1} : space);
    return &read.gradient;
}

double swatchOpacity(DrawContext& context, pugi::xml_node gradient) {
    const ReadGradient& read = readOnce(context, gradient);
    return read.gradient.stops.size() == 1 ? read.gradient.stops.front().color.getOpacity() : 1;
}

}  // namespace svg
