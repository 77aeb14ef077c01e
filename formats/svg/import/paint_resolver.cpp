#include "formats/svg/import/paint_resolver.h"

#include "formats/svg/import/names.h"
#include "formats/svg/style/gradient_stop.h"
#include "formats/svg/values/color.h"
#include "formats/svg/values/text_scan.h"

namespace svg {

namespace {

// A gradient may take its stops from another one; so many steps are followed, then there are none.
constexpr int kLongestChain = 32;

std::string_view hrefOf(pugi::xml_node node) {
    const pugi::xml_attribute plain = node.attribute("href");
    if (plain) return localReference(plain.value());
    for (const pugi::xml_attribute attribute : node.attributes()) {
        if (splitName(attribute.name()).local == "href") return localReference(attribute.value());
    }
    return {};
}

std::string_view labelOf(pugi::xml_node node) {
    for (const pugi::xml_attribute attribute : node.attributes()) {
        const QualifiedName name = splitName(attribute.name());
        if (name.local == "label" && !name.prefix.empty() && attribute.value()[0] != '\0')
            return attribute.value();
    }
    return node.attribute("id").value();
}

bool hasStops(pugi::xml_node gradient) {
    for (const pugi::xml_node child : gradient.children()) {
        if (kindOf(child) == Element::stop) return true;
    }
    return false;
}

}  // namespace

PaintResolver::PaintResolver(APaintTable& table, DrawingIndex& index, StyleResolver& styles)
    : m_table(table), m_index(index), m_styles(styles) {}

APen* PaintResolver::pen(const Paint& paint, std::uint32_t currentColor) {
    if (paint.kind == PaintKind::none) return nullptr;
    if (paint.kind == PaintKind::rgb) return m_table.rgbPen(paint.rgb);
    const Resolved resolved = resolve(paint, currentColor);
    if (resolved.color != nullptr) return m_table.pen(resolved.color);
    return resolved.brush != nullptr ? m_table.brushPen(resolved.brush->getBrushItem()) : nullptr;
}

PaintResolver::Resolved PaintResolver::resolve(const Paint& paint, std::uint32_t currentColor) {
    PaintKind kind = paint.kind;
    if (kind == PaintKind::reference) {
        const Resolved resolved = resolveReference(paint.text);
        if (resolved.brush != nullptr) return resolved;
        kind = paint.fallback;
    }
    switch (kind) {
        case PaintKind::rgb:
            return ofColor(m_table.rgb(paint.rgb));
        case PaintKind::currentColor:
            return ofColor(m_table.rgb(currentColor));
        case PaintKind::cmyk:
            return resolveCmyk(paint.text);
        default:
            return {};
    }
}

PaintResolver::Resolved PaintResolver::resolveCmyk(std::string_view text) {
    const auto [entry, isNew] = m_cmyk.try_emplace(text);
    if (isNew) {
        static const AClassInfo& cmykClass = *findClass(_T("ACMYKColorItem"));
        std::array<float, 4> cmyk{};
        takeCmyk(text, cmyk);
        entry->second = ofColor(m_table.color(cmykClass, {}, cmyk, cmykToRgb(cmyk)));
    }
    return entry->second;
}

PaintResolver::Resolved PaintResolver::resolveReference(std::string_view id) {
    const auto [entry, isNew] = m_references.try_emplace(id);
    if (!isNew) return entry->second;
    const pugi::xml_node server = m_index.findResource(id);
    switch (kindOf(server)) {
        case Element::linearGradient:
        case Element::radialGradient:
        case Element::meshGradient:
            entry->second = resolveGradient(server, id);
            break;
        case Element::pattern:
        case Element::hatch:
            entry->second.brush = m_table.patternBrush(cleanName(id, m_buffer));
            break;
        default:
            break;
    }
    return entry->second;
}

// The first of a chain of gradients that has stops.
pugi::xml_node PaintResolver::stopsOwner(pugi::xml_node gradient) {
    for (int step = 0; step < kLongestChain && gradient; ++step) {
        if (hasStops(gradient)) return gradient;
        const std::string_view next = hrefOf(gradient);
        gradient = next.empty() ? pugi::xml_node() : m_index.findResource(next);
    }
    return {};
}

const std::vector<AGradientStop>& PaintResolver::stopsOf(pugi::xml_node owner) {
    const auto [entry, isNew] = m_stops.try_emplace(owner.hash_value());
    std::vector<AGradientStop>& stops = entry->second;
    if (!isNew || !owner) return stops;
    Namespaces namespaces;
    AttributeSet attributes;
    attributes.read(owner, namespaces);
    const Style around = m_styles.compute(owner, attributes, {Style()});
    double last = 0;
    for (const pugi::xml_node child : owner.children()) {
        if (kindOf(child) != Element::stop || stops.size() == kMostStops) continue;
        attributes.read(child, namespaces);
        stops.push_back(gradientStop(child, m_styles.compute(child, attributes, {around}), last));
        last = stops.back().offset;
    }
    return stops;
}

// A gradient with a single stop is how drawing programs keep a swatch: a spot colour named by whatever holds
// the stop, which is also where its label stands.
PaintResolver::Resolved PaintResolver::resolveGradient(pugi::xml_node gradient, std::string_view id) {
    const pugi::xml_node owner = stopsOwner(gradient);
    const std::vector<AGradientStop>& stops = stopsOf(owner);
    if (stops.size() != 1 || kindOf(gradient) == Element::meshGradient) {
        ABrush* brush = m_table.gradientBrush(cleanName(id, m_buffer));
        auto* item = static_cast<AGradientBrushItem*>(brush->getBrushItem());
        if (item->getStops().empty()) item->setStops(stops);
        return {nullptr, brush};
    }
    static const AClassInfo& spotClass = *findClass(_T("ASpotColorItem"));
    constexpr AColorItem::Components kFullTint = {1, 0, 0, 0};
    const COLORREF color = stops[0].color.getColorRef();
    const std::uint32_t rgb = GetRValue(color) << 16 | GetGValue(color) << 8 | GetBValue(color);
    const std::string_view name = cleanName(labelOf(owner), m_buffer);
    return ofColor(m_table.color(spotClass, name, kFullTint, rgb));
}

}  // namespace svg
