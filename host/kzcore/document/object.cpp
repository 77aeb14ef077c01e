#include "kzcore/document/object.h"

#include "kzcore/document/document.h"
#include "kzcore/document/object_paint.h"
#include "kzutil/rect_math.h"

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
    if (AReferItem* fill = shownItem(fillItem(*this))) items.AddTail(fill);
    if (AReferItem* stroke = shownItem(strokeItem(*this))) items.AddTail(stroke);
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
        bounds = found ? unionOf(part, bounds) : part;
        found = true;
    }
}
