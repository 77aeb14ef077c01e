#include "kzcore/document/refer_item.h"

#include <utility>

#include "kzcore/document/named_colors.h"

namespace {

// The row of an item's own class, looked up once.
template <class Item>
const AClassInfo& ownClass() {
    static const AClassInfo& row = *findClass(Item::stgetClassName().view());
    return row;
}

template <class Item>
Item* retained(Item* item) {
    if (item) item->addReference();
    return item;
}

}  // namespace

AReferItem::AReferItem(const AClassInfo& classInfo, AString name)
    : m_name(std::move(name)), m_class(&classInfo) {}

int AReferItem::isEqual(const AReferItem* other) const {
    return this == other;
}

int AReferItem::releaseReference() {
    const int left = --m_references;
    if (left == 0) delete this;
    return left;
}

AColorItem::AColorItem(const AClassInfo& classInfo, AString name, const Components& components,
                       COLORREF display)
    : AReferItem(classInfo, std::move(name)), m_components(components), m_display(display) {}

const AString& AColorItem::getName() const {
    if (m_name.IsEmpty()) {
        const std::uint32_t red = m_display & 0xff;
        const std::uint32_t green = m_display >> 8 & 0xff;
        const std::uint32_t blue = m_display >> 16 & 0xff;
        m_name = AString::fromUtf8(canonicalColorName(red << 16 | green << 8 | blue));
    }
    return m_name;
}

int AColorItem::isSameColor(const AColorItem* other) const {
    if (this == other) return 1;
    if (!other || &getClassInfo() != &other->getClassInfo() || m_components != other->m_components) return 0;
    static const AClassInfo& spot = *findClass(_T("ASpotColorItem"));
    return &getClassInfo() != &spot || getName() == other->getName();
}

int AColorItem::isEqual(const AReferItem* other) const {
    return isSameColor(dynamic_cast<const AColorItem*>(other));
}

ASolidBrushItem::ASolidBrushItem(AColorItem* color)
    : ABrushItem(ownClass<ASolidBrushItem>(), AString()), m_color(retained(color)) {}

ASolidBrushItem::~ASolidBrushItem() {
    if (m_color) m_color->releaseReference();
}

const AString& ASolidBrushItem::stgetClassName() {
    static const AString name(_T("ASolidBrushItem"));
    return name;
}

const AString& ASolidBrushItem::getName() const {
    return m_color ? m_color->getName() : m_name;
}

AGradientBrushItem::AGradientBrushItem(AString name)
    : ABrushItem(*findClass(_T("AGradientBrushItem")), std::move(name)) {}

APatternBrushItem::APatternBrushItem(AString name)
    : ABrushItem(*findClass(_T("APatternBrushItem")), std::move(name)) {}

APenItem::APenItem(int style, AColorItem* color, ABrushItem* brush)
    : AReferItem(ownClass<APenItem>(), AString()),
      m_style(style),
      m_color(retained(color)),
      m_brush(retained(brush)) {}

APenItem::~APenItem() {
    if (m_color) m_color->releaseReference();
    if (m_brush) m_brush->releaseReference();
}

const AString& APenItem::stgetClassName() {
    static const AString name(_T("APenItem"));
    return name;
}

const AString& APenItem::getName() const {
    if (m_color) return m_color->getName();
    return m_brush ? m_brush->getName() : m_name;
}
