#include "kzcore/refer_item.h"

#include <utility>

namespace {

const AClassInfo& classOf(const WCHAR* name) {
    return *findClass(name);
}

template <class Item>
Item* retained(Item* item) {
    if (item) item->addReference();
    return item;
}

}  // namespace

AReferItem::AReferItem(const AClassInfo& classInfo, AString name)
    : m_class(&classInfo), m_name(std::move(name)) {}

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

int AColorItem::isSameColor(const AColorItem* other) const {
    if (this == other) return 1;
    if (!other || &getClassInfo() != &other->getClassInfo() || m_components != other->m_components) return 0;
    static const AClassInfo& spot = classOf(_T("ASpotColorItem"));
    return &getClassInfo() != &spot || getName() == other->getName();
}

int AColorItem::isEqual(const AReferItem* other) const {
    return isSameColor(dynamic_cast<const AColorItem*>(other));
}

ASolidBrushItem::ASolidBrushItem(AColorItem* color)
    : ABrushItem(classOf(stgetClassName()), AString()), m_color(retained(color)) {}

ASolidBrushItem::~ASolidBrushItem() {
    if (m_color) m_color->releaseReference();
}

const AString& ASolidBrushItem::stgetClassName() {
    static const AString name(_T("ASolidBrushItem"));
    return name;
}

AString ASolidBrushItem::getName() const {
    return m_color ? m_color->getName() : AString();
}

AGradientBrushItem::AGradientBrushItem(AString name)
    : ABrushItem(classOf(_T("AGradientBrushItem")), std::move(name)) {}

APatternBrushItem::APatternBrushItem(AString name)
    : ABrushItem(classOf(_T("APatternBrushItem")), std::move(name)) {}

APenItem::APenItem(int style, AColorItem* color, ABrushItem* brush)
    : AReferItem(classOf(stgetClassName()), AString()),
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

AString APenItem::getName() const {
    if (m_color) return m_color->getName();
    return m_brush ? m_brush->getName() : AString();
}
