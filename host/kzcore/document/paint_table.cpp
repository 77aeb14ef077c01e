#include "kzcore/document/paint_table.h"

#include <algorithm>
#include <deque>
#include <map>
#include <string>
#include <tuple>
#include <unordered_map>
#include <utility>

#include "kzcore/document/named_colors.h"
#include "kzutil/flat_table.h"

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

std::string inLowerCase(std::string_view text) {
    std::string lower(text);
    for (char& c : lower) c = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    return lower;
}

}  // namespace

struct APaintTable::Impl {
    // The holders that objects share for one colour or brush; empty until they are asked for.
    struct Holders {
        ABrush brush{nullptr};
        APen pen{nullptr};
    };

    using Key = std::tuple<const AClassInfo*, std::string, AColorItem::Components, std::uint32_t>;

    AFlatTable rgb;  // from value to colour number
    std::map<Key, AColorItem*> others;
    std::unordered_map<std::string, std::vector<AColorItem*>> named;  // those others, by name in lower case
    std::unordered_map<std::string, int> nextSuffix;  // of names that stand for several colours
    std::vector<AColorItem*> colors;                  // the colour of number n is colors[n - 1]
    std::deque<Holders> colorHolders;                 // side by side with `colors`; objects point into it
    std::unordered_map<AReferItem*, Holders> otherHolders;  // of brush items and other documents' colours
    std::unordered_map<std::string, ABrush> gradients;
    std::unordered_map<std::string, ABrush> patterns;
    std::vector<ABrushItem*> brushes;
    std::vector<APenItem*> penItems;

    Holders& holdersOf(AColorItem* color) {
        const std::size_t index = std::size_t{color->m_number} - 1;
        const bool own = index < colors.size() && colors[index] == color;
        return own ? colorHolders[index] : otherHolders[color];
    }

    AColorItem* keepColor(Counted<AColorItem> item) {
        colorHolders.resize(colors.size() + 1);
        item->m_number = static_cast<std::uint32_t>(colors.size() + 1);
        return keep(colors, std::move(item));
    }

    bool isTaken(const AClassInfo& colorClass, const std::string& name) const {
        const auto found = named.find(inLowerCase(name));
        if (found == named.end()) return false;
        const AString wanted = AString::fromUtf8(name);
        return std::ranges::any_of(found->second, [&](const AColorItem* color) {
            return &color->getClassInfo() == &colorClass && color->getName() == wanted;
        });
    }

    // The name itself, or the first of name-2, name-3, … that no colour of the class has. The next suffix is
    // remembered, so that a thousand like names do not search for theirs.
    std::string freeName(const AClassInfo& colorClass, std::string_view name) {
        std::string unique(name);
        while (isTaken(colorClass, unique)) {
            int& suffix = nextSuffix.try_emplace(std::string(name), 2).first->second;
            unique = std::string(name) + '-' + std::to_string(suffix++);
        }
        return unique;
    }

    template <class Make>
    ABrush* brush(ABrush& holder, Make make) {
        if (holder.getBrushItem() == nullptr) holder = ABrush(keep(brushes, Counted<ABrushItem>(make())));
        return &holder;
    }

    APen* pen(APen& holder, AColorItem* color, ABrushItem* brush) {
        if (holder.getPenItem() == nullptr) {
            holder =
                APen(keep(penItems, Counted<APenItem>(new APenItem(APenItem::kStyleSolid, color, brush))));
        }
        return &holder;
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
    return m_impl->colors[rgbNumber(value) - 1];
}

// The number of the RGB colour, made when it is new.
std::uint32_t APaintTable::rgbNumber(std::uint32_t value) {
    if (const std::uint32_t number = m_impl->rgb.find(value)) return number;
    static const AClassInfo& rgbClass = *findClass(_T("ARGBColorItem"));
    const auto part = [value](int shift) { return static_cast<float>((value >> shift) & 0xff) / 255.0F; };
    m_impl->rgb.makeRoom();  // a colour must not be kept and then not be found
    AColorItem* color = m_impl->keepColor(Counted<AColorItem>(
        new AColorItem(rgbClass, AString(), {part(16), part(8), part(0), 0}, colorRef(value))));
    m_impl->rgb.insert(value, color->m_number);
    return color->m_number;
}

AColorItem* APaintTable::color(const AClassInfo& colorClass, std::string_view name,
                               const AColorItem::Components& components, std::uint32_t display) {
    AColorItem*& slot = m_impl->others[{&colorClass, std::string(name), components, display}];
    if (slot) return slot;
    const std::string called =
        name.empty() ? canonicalColorName(display) : m_impl->freeName(colorClass, name);
    std::vector<AColorItem*>& namesakes = m_impl->named[inLowerCase(called)];
    namesakes.reserve(namesakes.size() + 1);  // a colour must not be kept and then not be found
    slot = m_impl->keepColor(Counted<AColorItem>(
        new AColorItem(colorClass, AString::fromUtf8(called), components, colorRef(display))));
    namesakes.push_back(slot);
    return slot;
}

AColorItem* APaintTable::findRgb(std::uint32_t value) const {
    const std::uint32_t number = m_impl->rgb.find(value);
    return number == 0 ? nullptr : m_impl->colors[number - 1];
}

std::vector<AColorItem*> APaintTable::findNamed(std::string_view name) const {
    const auto found = m_impl->named.find(inLowerCase(name));
    return found == m_impl->named.end() ? std::vector<AColorItem*>() : found->second;
}

ABrush* APaintTable::solidBrush(AColorItem* color) {
    return m_impl->brush(m_impl->holdersOf(color).brush, [=] { return new ASolidBrushItem(color); });
}

// The holders are looked at before the colour itself: mostly they are all that is needed.
ABrush* APaintTable::rgbBrush(std::uint32_t value) {
    const std::size_t index = rgbNumber(value) - 1;
    return m_impl->brush(m_impl->colorHolders[index].brush,
                         [&] { return new ASolidBrushItem(m_impl->colors[index]); });
}

APen* APaintTable::rgbPen(std::uint32_t value) {
    const std::size_t index = rgbNumber(value) - 1;
    Impl::Holders& holders = m_impl->colorHolders[index];
    if (holders.pen.getPenItem() != nullptr) return &holders.pen;
    solidBrush(m_impl->colors[index]);
    return pen(m_impl->colors[index]);
}

ABrush* APaintTable::gradientBrush(std::string_view name) {
    ABrush& holder = m_impl->gradients.try_emplace(std::string(name), nullptr).first->second;
    return m_impl->brush(holder, [=] { return new AGradientBrushItem(AString::fromUtf8(name)); });
}

ABrush* APaintTable::patternBrush(std::string_view name) {
    ABrush& holder = m_impl->patterns.try_emplace(std::string(name), nullptr).first->second;
    return m_impl->brush(holder, [=] { return new APatternBrushItem(AString::fromUtf8(name)); });
}

APen* APaintTable::pen(AColorItem* color) {
    return m_impl->pen(m_impl->holdersOf(color).pen, color, nullptr);
}

APen* APaintTable::brushPen(ABrushItem* brush) {
    return m_impl->pen(m_impl->otherHolders[brush].pen, nullptr, brush);
}

const std::vector<AColorItem*>& APaintTable::getColors() const {
    return m_impl->colors;
}

const std::vector<ABrushItem*>& APaintTable::getBrushes() const {
    return m_impl->brushes;
}
