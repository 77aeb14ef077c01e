// From computed paint to the document's shared brushes and pens.
#pragma once

#include <string>
#include <unordered_map>
#include <vector>

#include "formats/svg/drawing_index.h"
#include "formats/svg/style_resolver.h"
#include "kzcore/paint_table.h"

namespace svg {

class PaintResolver {
public:
    PaintResolver(APaintTable& table, DrawingIndex& index, StyleResolver& styles);

    // Null for no paint.
    ABrush* brush(const Paint& paint, std::uint32_t currentColor) {
        return resolve(paint, currentColor).brush;
    }
    APen* pen(const Paint& paint, std::uint32_t currentColor);

private:
    struct Resolved {
        ABrush* brush = nullptr;
        APen* pen = nullptr;  // made when first asked for
        bool found = false;
    };
    // Plain colours by open addressing; the table doubles before it is three quarters full.
    struct ColorSlot {
        std::uint32_t rgb = kFree;
        Resolved resolved;
    };
    static constexpr std::uint32_t kFree = 0xffffffff;

    ColorSlot& colorSlot(std::uint32_t rgb);
    Resolved& resolve(const Paint& paint, std::uint32_t currentColor);
    Resolved& resolveRgb(std::uint32_t rgb);
    Resolved& resolveCmyk(std::string_view text);
    Resolved& resolveReference(std::string_view id);
    ABrush* makeGradientBrush(pugi::xml_node gradient, std::string_view id);
    std::uint32_t stopColor(pugi::xml_node stop, pugi::xml_node gradient);

    APaintTable& m_table;
    DrawingIndex& m_index;
    StyleResolver& m_styles;
    std::vector<ColorSlot> m_colors;
    std::size_t m_colorCount = 0;
    std::unordered_map<std::string_view, Resolved> m_references;
    std::unordered_map<std::string_view, Resolved> m_cmyk;
    Resolved m_nothing;
    std::string m_buffer;
};

}  // namespace svg
