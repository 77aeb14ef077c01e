#include "conditions/fill_condition.h"

#include "checktree/check_tree.h"
#include "conditions/paint_items.h"
#include "res/resource.h"

using conditions::classNameOf;
using conditions::isSameNamedColor;

AFillCondition::AFillCondition(const AString& itemPath, ABrushItem* brush)
    : ACondition(itemPath, classNameOf(brush)), brushItem(brush) {}

void AFillCondition::reset(const AString& itemPath, ABrushItem* brush) {
    reset(itemPath, classNameOf(brush));
    brushItem = brush;
}

BOOL AFillCondition::isMatch(ARoot* item) const {
    const ABrushItem* asked = nullptr;
    if (const auto* object = dynamic_cast<AObject*>(item)) {
        const ABrush* fill = object->getBrush();
        if (!fill) return getClassNames().IsEmpty();
        asked = fill->getBrushItem();
    } else {
        asked = dynamic_cast<ABrushItem*>(item);
    }
    if (!asked) return FALSE;
    if (!hasClass(asked->getClassName())) {
        const AColorItem* color = colorOf(asked);
        return color && hasClass(color->getClassName());
    }
    // The same item has the same colour, so that the order of the two tests does not show.
    return !brushItem || asked == brushItem || isSameNamedColor(colorOf(brushItem), colorOf(asked));
}

BOOL AFillCondition::hasCommonClass(const ACondition& other) const {
    const auto* fill = dynamic_cast<const AFillCondition*>(&other);
    if (!fill || !ACondition::hasCommonClass(other)) return FALSE;
    if (!brushItem || !fill->brushItem) return brushItem == fill->brushItem;
    return isSameNamedColor(colorOf(brushItem), colorOf(fill->brushItem));
}

HTREEITEM AFillCondition::addToTree(ACheckTree& tree) const {
    HTREEITEM item = ACondition::addToTree(tree);
    if (!item) return nullptr;
    if (brushItem)
        tree.setItemSwatch(item, brushItem);
    else if (!getClassNames().IsEmpty())
        tree.setItemImage(item, conditions::kColorImage);
    else
        tree.setItemBitmap(item, IDB_SWATCH_FRAME);
    return item;
}
