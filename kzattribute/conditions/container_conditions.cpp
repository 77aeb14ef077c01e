#include "conditions/container_conditions.h"

#include "kzcore/object.h"

namespace {

bool isLayer(AObject& object) {
    return object.asParent() && dynamic_cast<ALayer*>(&object);
}

}  // namespace

BOOL AEffectCondition::isMatch(ARoot* item) const {
    for (auto* object = dynamic_cast<AObject*>(item); object; object = AObject::getParent(object)) {
        if (isLayer(*object)) return FALSE;
        if (hasClass(object->getClassName())) return TRUE;
    }
    return FALSE;
}

BOOL ALayerCondition::isMatch(ARoot* item) const {
    for (auto* object = dynamic_cast<AObject*>(item); object; object = AObject::getParent(object)) {
        if (isLayer(*object)) return hasClass(object->getClassName());
    }
    return FALSE;
}
