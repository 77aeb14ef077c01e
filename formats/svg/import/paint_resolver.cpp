#include "formats/svg/import/paint_resolver.h"

#include "formats/svg/import/names.h"
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

// The stops of a gradient: how many, up to two, and the first.
int countStops(pugi::xml_node gradient, pugi::xml_node& first) {
    int count = 0;
    for (pugi::xml_node child = gradient.first_child(); child && count < 2; child = child.next_sibling()) {
        if (kindOf(child) != Element::stop) continue;
        if (count++ == 0) first = child;
    }
    return count;
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

// A gradient with a single stop is how drawing programs keep a swatch: a spot colour named by whatever holds
// the stop, which is also where its label stands.
PaintResolver::Resolved PaintResolver::resolveGradient(pugi::xml_node gradient, std::string_view id) {
    pugi::xml_node owner = gradient;
    pugi::xml_node stop;
    int count = 0;
    for (int step = 0; step < kLongestChain && owner; ++step) {
        count = countStops(owner, stop);
        if (count != 0) break;
        const std::string_view next = hrefOf(owner);
        owner = next.empty() ? pugi::xml_node() : m_index.findResource(next);
    }
    if (count != 1 || kindOf(gradient) == Element::meshGradient) {
        return {nullptr, m_table.gradientBrush(cleanName(id, m_buffer))};
    }
    static const AClassInfo& spotClass = *findClass(_T("ASpotColorItem"));
    constexpr AColorItem::Components kFullTint = {1, 0, 0, 0};
    const std::string_view name = cleanName(labelOf(owner), m_buffer);
    return ofColor(m_table.color(spotClass, name, kFullTint, stopColor(stop, owner)));
}

std::uint32_t PaintResolver::stopColor(pugi::xml_node stop, pugi::xml_node gradient) {
    Namespaces namespaces;
    AttributeSet attributes;
    attributes.read(gradient, namespaces);
    const Style around = m_styles.compute(gradient, attributes, {Style()});
    attributes.read(stop, namespaces);
    const Style style = m_styles.compute(stop, attributes, {around});
    switch (style.own.stopColor.kind) {
        case PaintKind::rgb:
            return style.own.stopColor.rgb;
        case PaintKind::currentColor:
            return style.color;
        case PaintKind::cmyk: {
            std::array<float, 4> cmyk{};
            std::string_view text = style.own.stopColor.text;
            takeCmyk(text, cmyk);
            return cmykToRgb(cmyk);
        }
        default:
            return 0;
    }
}

}  // namespace svg
