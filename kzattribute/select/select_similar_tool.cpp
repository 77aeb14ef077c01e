#include "select/select_similar_tool.h"

#include "select/object_walk.h"

int ASelectSimilarTool::isValid() {
    const int valid = ATool::isValid();
    if (valid == 0) return valid;
    const ADocView* view = ADocView::GetActiveView();
    const ASelection* selection = view ? view->m_selection : nullptr;
    return selection ? selection->isHomogeneous() : 0;
}

namespace {

// Every reachable object of the class. One that is found is not entered: what it contains belongs to it.
void collectByClass(const ADocView& view, const AString& wanted, AObList& found) {
    AObList layers(0, 10);
    AObList work(0, 10);
    appendLayers(view, layers);
    appendEditableObjects(layers, work);
    const AString* known =
        nullptr;  // objects of one class share their name, so one comparison of texts is enough
    walkBreadthFirst(work, [&](AObject& object) -> WalkStep {
        if (isPassedOver(object)) return {};
        const AString& name = object.getClassName();
        if (&name == known || name == wanted) {
            known = &name;
            found.AddTail(&object);
            return {};
        }
        return {openChildren(object)};
    });
}

}  // namespace

int ASelectSimilarTool::onToolStart() {
    ADocView* view = ADocView::GetActiveView();
    if (view && view->m_selection->getCount() > 0) {
        const AString wanted = view->m_selection->getAt(0)->getClassName();
        AObList found(0, 10);
        collectByClass(*view, wanted, found);
        view->m_selection->resetSelection(0);
        view->m_selection->addSelection(&found, 0, 1);
    }
    notifyEnd(nullptr);
    return 1;
}
