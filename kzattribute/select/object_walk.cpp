#include "select/object_walk.h"

#include "kzcore/document/document.h"

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
