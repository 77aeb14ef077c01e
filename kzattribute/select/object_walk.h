// How the selection tools go through a drawing.
#pragma once

#include <vector>

#include "kzcore/view/view.h"

// The layers that the tools search: those of the view's database first, then those of the secondary database.
void appendLayers(const ADocView& view, AObList& layers);

// The children of the editable layers, layer by layer. What lies on other layers is never found.
void appendEditableObjects(const AObList& layers, AObList& objects);

// Appends those of the objects that lie in none of the others, in their order.
void appendOutermost(const std::vector<AObject*>& objects, AObList& out);

// True when the tools pass over the object: neither taken nor entered.
inline bool isPassedOver(const AObject& object) {
    return object.isUnselectable() || object.getObjectFlags(kObjectHidden);
}

// The object's children as a walk enters them: null for an object without any and for a closed container.
inline const AObList* openChildren(AObject& object) {
    AParent* parent = object.asParent();
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
