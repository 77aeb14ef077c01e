#include "kzcore/view/selection.h"

#include <algorithm>

#include "kzcore/document/document.h"
#include "kzcore/document/object_prefetch.h"
#include "kzutil/flat_table.h"

namespace {

// Everything that holds one of some objects, directly or not.
class Containers {
public:
    explicit Containers(const std::vector<AObject*>& objects) {
        const AParent* last = nullptr;  // neighbours often share their container
        for (auto at = objects.begin(); at != objects.end(); ++at) {
            prefetchAhead(at, objects.end());
            const AParent* parent = (*at)->getParent();
            if (parent == last) continue;
            last = parent;
            while (parent && insert(parent)) parent = parent->getParent();
        }
    }
    bool contain(const AParent* container) const { return slotOf(container) == container; }

private:
    static std::uint64_t hashOf(const AParent* container) {
        return kzutil::mixBits(reinterpret_cast<std::uintptr_t>(container) >> 3);
    }
    const AParent* const& slotOf(const AParent* container) const {
        return m_slots.locate(hashOf(container), [=](const AParent* other) { return other == container; });
    }
    // False when it is there already.
    bool insert(const AParent* container) {
        if (contain(container)) return false;
        m_slots.makeRoom(hashOf);
        m_slots.add(hashOf(container), container);
        return true;
    }

    TFlatSlots<const AParent*> m_slots{64};
};

// Walks down to what is selected, depth-first; layers are not listed. Containers may be nested a thousand
// deep, so the way down is kept in a list.
void appendSelected(const ADatabase& database, const Containers& around, std::vector<AObject*>& out) {
    struct Level {
        ARoot* const* next;
        ARoot* const* end;
    };
    std::vector<Level> levels;
    const auto enter = [&](const AParent* container) {
        if (container && around.contain(container))
            levels.push_back({container->children.begin(), container->children.end()});
    };
    for (ARoot* layer : database.children) {
        enter(static_cast<const ALayer*>(layer));
        while (!levels.empty()) {
            Level& level = levels.back();
            if (level.next == level.end) {
                levels.pop_back();
                continue;
            }
            prefetchAhead(level.next, level.end);
            auto* object = static_cast<AObject*>(*level.next++);
            if (object->getObjectFlags(kObjectSelected)) out.push_back(object);
            if (object->getClassInfo().kind != AClassKind::leaf) enter(object->asParent());
        }
    }
}

}  // namespace

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
    for (auto at = m_objects.begin(); at != m_objects.end(); ++at) {
        prefetchAhead(at, m_objects.end());
        (*at)->setObjectFlags(kObjectSelected, false);
    }
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
    for (ARoot* const* at = objects->begin(); at != objects->end(); ++at) {
        prefetchAhead(at, objects->end());
        AObject* object = static_cast<AObject*>(*at);
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
    std::vector<AObject*> sorted;
    sorted.reserve(m_objects.size());
    const Containers around(m_objects);
    appendSelected(*m_document.getSecondaryDatabase(), around, sorted);
    appendSelected(m_document.getDatabase(), around, sorted);
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
