// What the conditions on paint ask of the host's items. Null items are equal to nothing.
#pragma once

#include "kzcore/document/object_paint.h"

namespace conditions {

// The check tree's picture for colours in general.
constexpr int kColorImage = 2;

// Null for no item. Lives as long as the item's class.
inline const WCHAR* classNameOf(const ARoot* item) {
    return item ? static_cast<const WCHAR*>(item->getClassName()) : nullptr;
}

// Two items of one name that compare equal. The names come last: they are rarely needed and have to be made.
inline bool isSameNamedColor(const AColorItem* a, const AColorItem* b) {
    return a && b && a->isSameColor(b) && (a == b || a->getName() == b->getName());
}
inline bool isSameNamedItem(const AReferItem* a, const AReferItem* b) {
    return a && b && a->isEqual(b) && (a == b || a->getName() == b->getName());
}

}  // namespace conditions
