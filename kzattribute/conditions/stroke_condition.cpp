#include "conditions/stroke_condition.h"

#include "checktree/check_tree.h"
#include "conditions/paint_items.h"
#include "res/resource.h"

void AStrokeCondition::reset(const AString& itemPath, const WCHAR* className, AColorItem* color) {
    reset(itemPath, className);
    colorItem = color;
}

BOOL AStrokeCondition::isMatch(ARoot* item) const {
    const auto* object = dynamic_cast<AObject*>(item);
    if (!object) return FALSE;
    const APenItem* asked = strokeItem(*object);
    if (!asked || asked->getStyle() == APenItem::kStyleNone) return getClassNames().IsEmpty();
    if (!hasClass(asked->getClassName())) return FALSE;
    return !colorItem || asked->getColorItem() == colorItem;
}

HTREEITEM AStrokeCondition::addToTree(ACheckTree& tree) const {
    HTREEITEM item = ACondition::addToTree(tree);
    if (!item) return nullptr;
    if (colorItem)
        tree.setItemColor(item, colorItem->getDisplayColor());
    else if (!getClassNames().IsEmpty())
        tree.setItemImage(item, conditions::kColorImage);
    else
        tree.setItemBitmap(item, IDB_BLANK);
    return item;
}
