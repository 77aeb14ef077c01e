// From computed paint to the document's shared brushes and pens.
#pragma once

#include <string>
#include <unordered_map>

#include "formats/svg/style/style_resolver.h"
#include "formats/svg/tree/drawing_index.h"
#include "formats/svg/values/text_map.h"
#include "kzcore/document/paint_table.h"

namespace svg {

class PaintResolver {
public:
    PaintResolver(APaintTable& table, DrawingIndex& index, StyleResolver& styles);

    // Null for no paint.
    ABrush* brush(const Paint& paint, std::uint32_t currentColor) {
        if (paint.kind == PaintKind::none) return nullptr;
        if (paint.kind == PaintKind::rgb) return m_table.rgbBrush(paint.rgb);
        return resolve(paint, currentColor).brush;
    }
    APen* pen(const Paint& paint, std::uint32_t currentColor);

private:
    // What a paint stands for: a colour and its brush, a brush alone, or nothing.
    struct Resolved {
        AColorItem* color = nullptr;
        ABrush* brush = nullptr;
    };

    Resolved resolve(const Paint& paint, std::uint32_t currentColor);
    Resolved ofColor(AColorItem* color) { return {color, m_table.solidBrush(color)}; }
    Resolved resolveCmyk(std::string_view text);
    Resolved resolveReference(std::string_view id);
    Resolved resolveGradient(pugi::xml_node gradient, std::string_view id);
    pugi::xml_node stopsOwner(pugi::xml_node gradient);
    const std::vector<AGradientStop>& stopsOf(pugi::xml_node owner);

    APaintTable& m_table;
    DrawingIndex& m_index;
    StyleResolver& m_styles;
    TextMap<Resolved> m_references;
    TextMap<Resolved> m_cmyk;
    std::unordered_map<std::size_t, std::vector<AGradientStop>> m_stops;  // by the node that has them
    std::string m_buffer;
};

}  // namespace svg
