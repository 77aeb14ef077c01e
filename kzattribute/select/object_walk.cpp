#include "select/object_walk.h"

#include "kzcore/document/document.h"
#include "select/container_answers.h"

void appendLayers(const ADocView& view, AObList& layers) {
    layers.AddTail(&view.m_database->children);
    layers.AddTail(&view.getDocument()->getSecondaryDatabase()->children);
}

void appendEditableObjects(const AObList& layers, AObList& objects) {
    for (ARoot* entry : layers) {
        const auto* layer = static_cast<const ALayer*>(entry);
        if (layer->IsLayerEditable()) objects.AddTail(&layer->children);
    }
}

void appendOutermost(const std::vector<AObject*>& objects, AObList& out) {
    PointerTable<bool> containers;
    for (AObject* object : objects) {
        if (object->asParent()) containers[object] = true;
    }
    ContainerAnswers inside;
    const auto decide = [&](AParent& container) -> std::optional<bool> {
        if (containers.contains(&container)) return true;
        return {};
    };
    for (AObject* object : objects) {
        if (containers.isEmpty() || !inside.ask(object->getParent(), decide)) out.AddTail(object);
    }
}
