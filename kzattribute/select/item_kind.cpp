#include "select/item_kind.h"

#include <memory>

#include "conditions/container_conditions.h"
#include "conditions/fill_condition.h"
#include "conditions/object_condition.h"
#include "conditions/stroke_condition.h"
#include "kzcore/document/object.h"
#include "kzcore/document/refer_item.h"

namespace {

constexpr const WCHAR* kNoClass = nullptr;

// The object as an effect; null for anything else. Only containers are effects, and most objects are none.
AEffect* asEffect(AObject& object) {
    return object.asParent() ? dynamic_cast<AEffect*>(&object) : nullptr;
}

std::unique_ptr<ACondition> emptyOfKind(ItemKind kind) {
    switch (kind) {
        case ItemKind::layer:
            return std::make_unique<ALayerCondition>(AString(), kNoClass);
        case ItemKind::object:
            return std::make_unique<AObjectCondition>(AString(), kNoClass);
        case ItemKind::effect:
            return std::make_unique<AEffectCondition>(AString(), kNoClass);
        case ItemKind::fill:
            return std::make_unique<AFillCondition>(AString(), nullptr);
        case ItemKind::stroke:
            return std::make_unique<AStrokeCondition>(AString(), kNoClass, nullptr);
        case ItemKind::none:
            break;
    }
    return nullptr;
}

}  // namespace

bool isObjectClassItem(ARoot* item) {
    return kindOf(item) == ItemKind::object;
}

bool isEffectWithChildren(ARoot* item) {
    return kindOf(item) == ItemKind::effect;
}

ItemKind kindOf(AObject& object) {
    if (!object.asParent()) return ItemKind::object;
    if (object.asLayer()) return ItemKind::layer;
    const AEffect* effect = asEffect(object);
    return effect && !effect->hasOption(kOptionClosed) ? ItemKind::effect : ItemKind::object;
}

ItemKind kindOf(ARoot* item) {
    if (auto* object = dynamic_cast<AObject*>(item)) return kindOf(*object);
    if (dynamic_cast<ABrushItem*>(item)) return ItemKind::fill;
    return dynamic_cast<APenItem*>(item) ? ItemKind::stroke : ItemKind::none;
}

bool isOfKind(const ACondition& condition, ItemKind kind) {
    switch (kind) {
        case ItemKind::layer:
            return dynamic_cast<const ALayerCondition*>(&condition) != nullptr;
        case ItemKind::object:
            return dynamic_cast<const AObjectCondition*>(&condition) != nullptr;
        case ItemKind::effect:
            return dynamic_cast<const AEffectCondition*>(&condition) != nullptr;
        case ItemKind::fill:
            return dynamic_cast<const AFillCondition*>(&condition) != nullptr;
        case ItemKind::stroke:
            return dynamic_cast<const AStrokeCondition*>(&condition) != nullptr;
        case ItemKind::none:
            break;
    }
    return false;
}

ACondition* madeOfKind(ItemKind kind, const ACondition& entry) {
    std::unique_ptr<ACondition> made = emptyOfKind(kind);
    made->assignBase(entry);
    return made.release();
}
