#include "kzcore/document/object.h"

#include <algorithm>

#include "kzcore/document/document.h"

int AObject::hasOption(int) const {
    return 0;
}

AParent* AObject::getParent(const AObject* object) {
    return object->m_parent;
}

int AObject::isParent(const AObject* other) const {
    for (const AObject* container = m_parent; container; container = container->m_parent) {
        if (container == other) return 1;
    }
    return 0;
}

void AObject::setBoundingRect(const AFRect& bounds) {
    m_bounds = bounds;
    m_flags &= ~std::uint32_t{kObjectBoundsPending};
}

void AObject::getBoundingRect(AFRect& bounds) const {
    if (m_flags & kObjectBoundsPending) {
        const ADocument* document = getDocument();
        const AGeometrySource* source = document ? document->getGeometrySource() : nullptr;
        m_bounds = source ? source->computeBounds(*this) : AFRect();
        m_flags &= ~std::uint32_t{kObjectBoundsPending};
    }
    bounds = m_bounds;
}

void AObject::getAllReferItems(AObList& items, unsigned int) const {
    if (const ABrush* brush = getBrush(); brush && brush->getBrushItem()) {
        ABrushItem* item = brush->getBrushItem();
        const auto* solid = dynamic_cast<const ASolidBrushItem*>(item);
        if (solid && solid->getColorItem())
            items.AddTail(solid->getColorItem());
        else if (!solid)
            items.AddTail(item);
    }
    if (const APen* pen = getPen(); pen && pen->getPenItem()) {
        const APenItem* item = pen->getPenItem();
        if (item->getColorItem())
            items.AddTail(item->getColorItem());
        else if (item->getBrushItem())
            items.AddTail(item->getBrushItem());
    }
}

ADocument* AObject::getDocument() const {
    const AObject* top = this;
    while (top->m_parent) top = top->m_parent;
    const auto* database = dynamic_cast<const ADatabase*>(top);
    return database ? &database->document() : nullptr;
}

std::string_view AObject::getNameUtf8() const {
    const ADocument* document = getDocument();
    return document && m_index != 0 ? document->getNames().get(m_index) : std::string_view();
}

AString AObject::getName() const {
    return AString::fromUtf8(getNameUtf8());
}

void AParent::appendChild(AObject* child) {
    children.AddTail(child);
    child->m_parent = this;
}

void AParent::getBoundingRect(AFRect& bounds) const {
    bounds = AFRect();
    bool found = false;
    for (ARoot* entry : children) {
        AFRect part;
        static_cast<AObject*>(entry)->getBoundingRect(part);
        if (part == AFRect()) continue;  // has no geometry
        if (found) {
            part.left = std::min(part.left, bounds.left);
            part.top = std::min(part.top, bounds.top);
            part.right = std::max(part.right, bounds.right);
            part.bottom = std::max(part.bottom, bounds.bottom);
        }
        bounds = part;
        found = true;
    }
}
