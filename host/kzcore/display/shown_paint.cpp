#include "kzcore/display/shown_paint.h"

AShownPaint::AShownPaint(const ADisplayList& list, const std::function<bool(AReferItem*)>& asks) {
    const std::vector<AReferItem*>& items = list.referItems();
    std::vector<std::uint8_t> isShown(items.size() + 1, 1);
    for (std::size_t i = 0; i < items.size(); ++i) isShown[i + 1] = !items[i] || asks(items[i]) ? 1 : 0;
    m_bits.resize(list.objectCount());
    for (std::uint32_t object = 0; object < m_bits.size(); ++object) {
        const std::uint32_t fill = list.fillItem(object);
        const std::uint32_t stroke = list.strokeItem(object);
        const bool hasPaint = fill != 0 || stroke != 0;
        const bool shows = (fill != 0 && isShown[fill]) || (stroke != 0 && isShown[stroke]);
        if (shows || !hasPaint)
            m_bits[object] =
                static_cast<std::uint8_t>((isShown[fill] ? kFill : 0) | (isShown[stroke] ? kStroke : 0));
    }
}

std::vector<ABox> AShownPaint::changes(const ADisplayList& list, const AShownPaint& other) const {
    std::vector<ABox> boxes;
    const auto bits = [](const AShownPaint& shown, std::uint32_t object) {
        return object < shown.m_bits.size() ? shown.m_bits[object] : kBoth;
    };
    std::uint32_t picture = 0;  // the last entry that tells where a picture reaches
    for (std::uint32_t i = 0; i < list.entryCount(); ++i) {
        const std::uint32_t object = list.entry(i).object;
        if (object == 0) picture = i;
        if (object == 0 || bits(*this, object) == bits(other, object)) continue;
        boxes.push_back(list.box(i));
        // What changes inside a picture may change all that it reaches.
        if (list.entry(picture).object == 0 && i < list.group(list.entry(picture).group).endEntry)
            boxes.push_back(list.box(picture));
    }
    return boxes;
}
