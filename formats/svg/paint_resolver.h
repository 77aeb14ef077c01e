// From computed paint to the document's shared brushes and pens.
#pragma once

#include <array>
#include <string>
#include <unordered_map>

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
    // The last brush of each of some colours: most objects of a drawing share few.
    struct CachedColor {
        std::uint32_t rgb = 0xffffffff;
        Resolved resolved;
    };
    static constexpr std::size_t kCachedColors = 1024;

    Resolved& resolve(const Paint& paint, std::uint32_t currentColor);
    Resolved& resolveRgb(std::uint32_t rgb);
    Resolved& resolveCmyk(std::string_view text);
    Resolved& resolveReference(std::string_view id);
    ABrush* makeGradientBrush(pugi::xml_node gradient, std::string_view id);
    std::uint32_t stopColor(pugi::xml_node stop, pugi::xml_node gradient);

    APaintTable& m_table;
    DrawingIndex& m_index;
    StyleResolver& m_styles;
    std::array<CachedColor, kCachedColors> m_colors;
    std::unordered_map<std::string_view, Resolved> m_references;
    std::unordered_map<std::string_view, Resolved> m_cmyk;
    Resolved m_nothing;
    std::string m_buffer;
};

}  // namespace svg
