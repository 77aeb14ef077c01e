#include "conditions/container_conditions.h"

#include "kzcore/document/object.h"

BOOL AEffectCondition::isMatch(ARoot* item) const {
    for (auto* object = dynamic_cast<AObject*>(item); object; object = AObject::getParent(object)) {
        if (object->asLayer()) return FALSE;
        if (hasClass(object->getClassName())) return TRUE;
    }
    return FALSE;
}

BOOL ALayerCondition::isMatch(ARoot* item) const {
    for (auto* object = dynamic_cast<AObject*>(item); object; object = AObject::getParent(object)) {
        if (object->asLayer()) return hasClass(object->getClassName());
    }
    return FALSE;
}
