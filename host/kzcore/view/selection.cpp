#include "kzcore/view/selection.h"

#include <algorithm>

#include "kzcore/document/document.h"

int ASelection::isHomogeneous() const {
    if (m_objects.empty()) return 0;
    const AString& name = m_objects.front()->getClassName();
    return std::ranges::all_of(m_objects, [&](const AObject* object) {
        const AString& other = object->getClassName();
        return &other == &name || other == name;
    });
}

int ASelection::getSelectedChildren(AObList* children) const {
    for (AObject* object : m_objects) children->AddTail(object);
    return !m_objects.empty();
}

void ASelection::resetSelection(int redraw) {
    if (m_objects.empty()) return;
    for (AObject* object : m_objects) object->setObjectFlags(kObjectSelected, false);
    m_objects.clear();
    change(redraw);
}

void ASelection::select(AObject* object) {
    m_objects.push_back(object);
    object->setObjectFlags(kObjectSelected, true);
}

void ASelection::change(int redraw) {
    ++m_revision;
    if (redraw) ++m_redraws;
}

void ASelection::addSelection(AObject* object) {
    if (contains(object)) return;
    select(object);
    change(0);
}

void ASelection::addSelection(const AObList* objects, int toggle, int redraw) {
    const std::size_t before = m_objects.size();
    m_objects.reserve(m_objects.size() + static_cast<std::size_t>(objects->GetCount()));
    bool leaving = false;
    for (ARoot* entry : *objects) {
        AObject* object = static_cast<AObject*>(entry);
        if (!contains(object)) {
            select(object);
        } else if (toggle) {
            object->setObjectFlags(kObjectSelected, false);
            leaving = true;
        }
    }
    const bool added = m_objects.size() > before;
    if (leaving) std::erase_if(m_objects, [this](const AObject* object) { return !contains(object); });
    if (added || leaving) change(redraw);
}

void ASelection::sortSelection(int redraw) {
    if (m_objects.size() < 2) return;
    AObList all;
    m_document.getSecondaryDatabase()->getAllObjects(all, 0);
    m_document.getDatabase().getAllObjects(all, 0);
    std::vector<AObject*> sorted;
    sorted.reserve(m_objects.size());
    for (ARoot* entry : all) {
        AObject* object = static_cast<AObject*>(entry);
        if (contains(object)) sorted.push_back(object);
    }
    // Whatever is selected but in neither database keeps its place behind the rest.
    if (sorted.size() < m_objects.size()) {
        std::vector<AObject*> known = sorted;
        std::ranges::sort(known);
        for (AObject* object : m_objects) {
            if (!std::ranges::binary_search(known, object)) sorted.push_back(object);
        }
    }
    if (sorted == m_objects) return;
    m_objects = std::move(sorted);
    change(redraw);
}

void ASelection::restore(std::vector<AObject*> objects) noexcept {
    for (AObject* object : m_objects) object->setObjectFlags(kObjectSelected, false);
    for (AObject* object : objects) object->setObjectFlags(kObjectSelected, true);
    m_objects = std::move(objects);
    change(0);
}
