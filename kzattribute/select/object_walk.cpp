#include "select/object_walk.h"

#include "kzcore/document/document.h"

void appendLayers(const ADocView& view, AObList& layers) {
    layers.AddTail(&view.m_database->children);
    layers.AddTail(&view.getDocument()->getSecondaryDatabase()->children);
}

void appendEditableObjects(const AObList& layers, AObList& objects) {
    for (const AObList* children : listsOfEditableLayers(layers)) objects.AddTail(children);
}

std::vector<const AObList*> listsOfEditableLayers(const AObList& layers) {
    std::vector<const AObList*> lists;
    for (ARoot* entry : layers) {
        const auto* layer = static_cast<const ALayer*>(entry);
        if (layer->IsLayerEditable()) lists.push_back(&layer->children);
    }
    return lists;
}

bool OutermostObjects::cover(AParent* container) {
    if (m_containers.isEmpty()) return false;
    if (m_containers.contains(container)) return true;
    return m_inside.ask(container, [this](AParent& outer) -> std::optional<bool> {
        if (m_containers.contains(&outer)) return true;
        return {};
    });
}
