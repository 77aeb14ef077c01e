// How the selection tools go through a drawing.
#pragma once

#include <vector>

#include "kzcore/document/object_prefetch.h"
#include "kzcore/view/view.h"
#include "select/container_answers.h"

// The layers that the tools search: those of the view's database first, then those of the secondary database.
void appendLayers(const ADocView& view, AObList& layers);

// The children of the editable layers, layer by layer. What lies on other layers is never found.
void appendEditableObjects(const AObList& layers, AObList& objects);
// The lists of children themselves.
std::vector<const AObList*> listsOfEditableLayers(const AObList& layers);

// Objects of most classes have no behaviour of their own: what their virtual operations answer is known
// without the call, which counts where a million of them are asked.
inline bool isLeaf(const AObject& object) {
    return object.getClassInfo().kind == AClassKind::leaf;
}
inline AParent* containerOf(AObject& object) {
    return isLeaf(object) ? nullptr : object.asParent();
}
inline const ABrush* brushOf(const AObject& object) {
    return isLeaf(object) ? object.AObject::getBrush() : object.getBrush();
}
inline const APen* penOf(const AObject& object) {
    return isLeaf(object) ? object.AObject::getPen() : object.getPen();
}

// Visits the objects of a part of an array or list in order; `last` is the end of the whole.
template <class Position, class Visit>
void forEachObject(Position begin, Position end, Position last, Visit visit) {
    for (Position at = begin; at != end; ++at) {
        prefetchAhead(at, last);
        visit(static_cast<AObject&>(**at));
    }
}
template <class List, class Visit>
void forEachObject(const List& list, Visit visit) {
    forEachObject(list.begin(), list.end(), list.end(), visit);
}

// Those of the objects of a walk that lie in none of the others. A walk meets containers before what they hold.
class OutermostObjects {
public:
    // `containers` is how many there may be among the objects.
    explicit OutermostObjects(std::size_t containers = 0) : m_containers(containers) {}

    // Whether what lies in the container, which may be null, lies in an object that was taken.
    bool cover(AParent* container);
    // Takes an object that is not covered.
    void take(AObject& object) {
        if (const AParent* container = containerOf(object)) m_containers[container] = true;
    }

private:
    PointerTable<bool> m_containers;
    ContainerAnswers m_inside;
};

// True when the tools pass over the object: neither taken nor entered.
inline bool isPassedOver(const AObject& object) {
    const bool isLocked = (isLeaf(object) ? object.AObject::isUnselectable() : object.isUnselectable()) != 0;
    return isLocked || object.getObjectFlags(kObjectHidden);
}

// The object's children as a walk enters them: null for an object without any and for a closed container.
inline const AObList* openChildren(AObject& object) {
    AParent* parent = containerOf(object);
    return parent && !parent->hasOption(kOptionClosed) ? &parent->children : nullptr;
}

// What a walk does after an object: goes on, with the children of `enter` to be walked later unless it is
// null, or ends.
struct WalkStep {
    const AObList* enter = nullptr;
    bool end = false;
};

// Walks the list from its head, breadth-first: `visit(object)` gives the step after each.
//
// When the object at hand is the last of the list, the list is emptied before its children are put in: the
// order is that of appending, and the list of a deep drawing stays short.
template <class Visit>
void walkBreadthFirst(AObList& work, Visit visit) {
    POSITION at = work.GetHeadPosition();
    while (at) {
        auto* object = static_cast<AObject*>(work.GetNext(at));
        const WalkStep step = visit(*object);
        if (step.end) return;
        if (!step.enter || step.enter->IsEmpty()) continue;
        const bool wasLast = at == nullptr;
        if (wasLast) work.RemoveAll();
        work.AddTail(step.enter);
        if (wasLast) at = work.GetHeadPosition();
    }
}

// The same over lists that stay as they are, one after the other: `visit(object)` gives the children to be
// walked later, or null. `lists` ends up with every list that was walked.
template <class Visit>
void walkBreadthFirst(std::vector<const AObList*>& lists, Visit visit) {
    for (std::size_t at = 0; at < lists.size(); ++at) {
        // What the next lists are reached by, one step each.
        if (at + 3 < lists.size()) __builtin_prefetch(lists[at + 3]);
        if (at + 2 < lists.size()) __builtin_prefetch(lists[at + 2]->begin());
        if (at + 1 < lists.size()) prefetchObject(lists[at + 1]->GetHead());
        forEachObject(*lists[at], [&](AObject& object) {
            const AObList* children = visit(object);
            if (children && !children->IsEmpty()) lists.push_back(children);
        });
    }
}
