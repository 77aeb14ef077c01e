#include "kzcore/paint_table.h"

#include <map>
#include <string>
#include <tuple>
#include <unordered_map>
#include <utility>

#include "kzcore/named_colors.h"

namespace {

COLORREF colorRef(std::uint32_t rgb) {
    return ((rgb & 0xff) << 16) | (rgb & 0xff00) | ((rgb >> 16) & 0xff);
}

// A new item until it has found its place.
struct Release {
    void operator()(AReferItem* item) const { item->releaseReference(); }
};
template <class Item>
using Counted = std::unique_ptr<Item, Release>;

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
    std::vector<APenItem*> penItems;

    template <class Make>
    ABrush* brush(std::unique_ptr<ABrush>& slot, Make make) {
        if (!slot) {
            Counted<ABrushItem> item(make());
            auto holder = std::make_unique<ABrush>(item.get());
            keep(brushes, std::move(item));
            slot = std::move(holder);
        }
        return slot.get();
    }

    APen* pen(AReferItem* paint, AColorItem* color, ABrushItem* brush) {
        std::unique_ptr<APen>& slot = pens[paint];
        if (!slot) {
            Counted<APenItem> item(new APenItem(APenItem::kStyleSolid, color, brush));
            auto holder = std::make_unique<APen>(item.get());
            keep(penItems, std::move(item));
            slot = std::move(holder);
        }
        return slot.get();
    }

    template <class Item>
    static Item* keep(std::vector<Item*>& items, Counted<Item> item) {
        items.push_back(item.get());
        return item.release();
    }
};

APaintTable::APaintTable() : m_impl(std::make_unique<Impl>()) {}

APaintTable::~APaintTable() {
    for (APenItem* pen : m_impl->penItems) pen->releaseReference();
    for (ABrushItem* brush : m_impl->brushes) brush->releaseReference();
    for (AColorItem* color : m_impl->colors) color->releaseReference();
}

AColorItem* APaintTable::rgb(std::uint32_t value) {
    static const AClassInfo& rgbClass = *findClass(_T("ARGBColorItem"));
    const auto found = m_impl->rgb.find(value);
    if (found != m_impl->rgb.end()) return found->second;
    const auto part = [value](int shift) { return static_cast<float>((value >> shift) & 0xff) / 255.0F; };
    Counted<AColorItem> item(new AColorItem(rgbClass, AString::fromUtf8(canonicalColorName(value)),
                                            {part(16), part(8), part(0), 0}, colorRef(value)));
    AColorItem* color = Impl::keep(m_impl->colors, std::move(item));
    m_impl->rgb.emplace(value, color);
    return color;
}

AColorItem* APaintTable::color(const AClassInfo& colorClass, std::string_view name,
                               const AColorItem::Components& components, std::uint32_t display) {
    AColorItem*& slot = m_impl->others[{&colorClass, std::string(name), components}];
    if (!slot) {
        const std::string shown = name.empty() ? canonicalColorName(display) : std::string(name);
        slot = Impl::keep(m_impl->colors,
                          Counted<AColorItem>(new AColorItem(colorClass, AString::fromUtf8(shown), components,
                                                             colorRef(display))));
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
