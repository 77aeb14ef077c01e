#include "kzcore/paint_table.h"

#include <map>
#include <string>
#include <tuple>
#include <unordered_map>

#include "kzcore/named_colors.h"

namespace {

COLORREF colorRef(std::uint32_t rgb) {
    return ((rgb & 0xff) << 16) | (rgb & 0xff00) | ((rgb >> 16) & 0xff);
}

}  // namespace

struct APaintTable::Impl {
    std::unordered_map<std::uint32_t, AColorItem*> rgb;
    std::map<std::tuple<const AClassInfo*, std::string, AColorItem::Components>, AColorItem*> others;
    std::vector<AColorItem*> colors;
    std::unordered_map<AColorItem*, std::unique_ptr<ABrush>> solid;
    std::unordered_map<std::string, std::unique_ptr<ABrush>> gradients;
    std::unordered_map<std::string, std::unique_ptr<ABrush>> patterns;
    std::vector<ABrushItem*> brushes;
    std::unordered_map<AReferItem*, std::unique_ptr<APen>> pens;

    template <class Make>
    ABrush* brush(std::unique_ptr<ABrush>& slot, Make make) {
        if (!slot) {
            brushes.reserve(brushes.size() + 1);
            ABrushItem* item = make();
            brushes.push_back(item);
            slot = std::make_unique<ABrush>(item);
        }
        return slot.get();
    }

    APen* pen(AReferItem* paint, AColorItem* color, ABrushItem* brush) {
        std::unique_ptr<APen>& slot = pens[paint];
        if (!slot) slot = std::make_unique<APen>(new APenItem(APenItem::kStyleSolid, color, brush));
        return slot.get();
    }

    AColorItem* keep(AColorItem* color) {
        colors.push_back(color);
        return color;
    }
};

APaintTable::APaintTable() : m_impl(std::make_unique<Impl>()) {}

APaintTable::~APaintTable() {
    for (const auto& [paint, pen] : m_impl->pens) {
        if (pen) pen->getPenItem()->releaseReference();
    }
    for (ABrushItem* brush : m_impl->brushes) brush->releaseReference();
    for (AColorItem* color : m_impl->colors) color->releaseReference();
}

AColorItem* APaintTable::rgb(std::uint32_t value) {
    static const AClassInfo& rgbClass = *findClass(_T("ARGBColorItem"));
    const auto found = m_impl->rgb.find(value);
    if (found != m_impl->rgb.end()) return found->second;
    const auto part = [value](int shift) { return static_cast<float>((value >> shift) & 0xff) / 255.0F; };
    AColorItem* color = m_impl->keep(new AColorItem(rgbClass, AString::fromUtf8(canonicalColorName(value)),
                                                    {part(16), part(8), part(0), 0}, colorRef(value)));
    m_impl->rgb.emplace(value, color);
    return color;
}

AColorItem* APaintTable::color(const AClassInfo& colorClass, std::string_view name,
                               const AColorItem::Components& components, std::uint32_t display) {
    AColorItem*& slot = m_impl->others[{&colorClass, std::string(name), components}];
    if (!slot) {
        const std::string shown = name.empty() ? canonicalColorName(display) : std::string(name);
        slot =
            m_impl->keep(new AColorItem(colorClass, AString::fromUtf8(shown), components, colorRef(display)));
    }
    return slot;
}

ABrush* APaintTable::solidBrush(AColorItem* color) {
    return m_impl->brush(m_impl->solid[color], [=] { return new ASolidBrushItem(color); });
}

ABrush* APaintTable::gradientBrush(std::string_view name) {
    return m_impl->brush(m_impl->gradients[std::string(name)],
                         [=] { return new AGradientBrushItem(AString::fromUtf8(name)); });
}

ABrush* APaintTable::patternBrush(std::string_view name) {
    return m_impl->brush(m_impl->patterns[std::string(name)],
                         [=] { return new APatternBrushItem(AString::fromUtf8(name)); });
}

APen* APaintTable::pen(AColorItem* color) {
    return m_impl->pen(color, color, nullptr);
}

APen* APaintTable::brushPen(ABrushItem* brush) {
    return m_impl->pen(brush, nullptr, brush);
}

const std::vector<AColorItem*>& APaintTable::getColors() const {
    return m_impl->colors;
}

const std::vector<ABrushItem*>& APaintTable::getBrushes() const {
    return m_impl->brushes;
}
