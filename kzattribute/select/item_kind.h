// Which kind of condition an object or item of the host calls for.
#pragma once

#include "conditions/condition.h"

class AObject;

enum class ItemKind {
    none,    // entries keep their kind
    layer,   // ALayerCondition
    object,  // AObjectCondition
    effect,  // AEffectCondition
    fill,    // AFillCondition
    stroke,  // AStrokeCondition
};

// True for an object that counts by its own class: no layer, and no effect that can be entered.
bool isObjectClassItem(ARoot* item);
// True for an effect that can be entered.
bool isEffectWithChildren(ARoot* item);

ItemKind kindOf(AObject& object);
ItemKind kindOf(ARoot* item);
bool isOfKind(const ACondition& condition, ItemKind kind);
// A condition of the kind, which is not `none`, with the entry's path, serial, classes and flags. To the
// caller. Consumes a serial: it is made anew before it takes the entry's.
ACondition* madeOfKind(ItemKind kind, const ACondition& entry);
