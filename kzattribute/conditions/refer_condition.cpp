#include "conditions/refer_condition.h"

#include <memory>

#include "checktree/check_tree.h"
#include "conditions/paint_items.h"

using conditions::classNameOf;
using conditions::isSameNamedItem;

AReferCondition::AReferCondition(const AString& itemPath, AReferItem* item)
    : ACondition(itemPath, classNameOf(item)) {
    refer(item);
}

AReferCondition::~AReferCondition() {
    refer(nullptr);
}

// The new item is retained before the old one is released: it may be the same one, or be kept alive by it.
void AReferCondition::refer(AReferItem* item) {
    AReferItem* const before = m_referItem;
    if (item) item->addReference();
    m_referItem = item;
    if (before) before->releaseReference();
}

// The names first: they may be those of the item that is about to be released.
void AReferCondition::reset(const AString& itemPath, const WCHAR* className) {
    ACondition::reset(itemPath, className);
    refer(nullptr);
}

void AReferCondition::reset(const AString& itemPath, AReferItem* item) {
    ACondition::reset(itemPath, classNameOf(item));
    refer(item);
}

ACondition* AReferCondition::clone() const {
    auto copy = std::make_unique<AReferCondition>(AString(), static_cast<const WCHAR*>(nullptr));
    copy->assignBase(*this);
    copy->refer(m_referItem);
    return copy.release();
}

BOOL AReferCondition::isMatch(ARoot* item) const {
    if (!item || !hasClass(item->getClassName())) return FALSE;
    if (!m_referItem || m_referItem == item) return TRUE;
    return isSameNamedItem(m_referItem, dynamic_cast<AReferItem*>(item));
}

BOOL AReferCondition::hasCommonClass(const ACondition& other) const {
    const auto* refers = dynamic_cast<const AReferCondition*>(&other);
    if (!refers || !ACondition::hasCommonClass(other)) return FALSE;
    const AReferItem* item = refers->m_referItem;
    if (!m_referItem || !item || m_referItem == item) return m_referItem == item;
    return isSameNamedItem(m_referItem, item);
}

HTREEITEM AReferCondition::addToTree(ACheckTree& tree) const {
    HTREEITEM item = ACondition::addToTree(tree);
    if (!item) return nullptr;
    if (!m_referItem)
        tree.setItemImage(item, conditions::kColorImage);
    else if (const auto* color = dynamic_cast<const AColorItem*>(m_referItem))
        tree.setItemColor(item, color->getDisplayColor());
    else if (const auto* brush = dynamic_cast<const ABrushItem*>(m_referItem))
        tree.setItemSwatch(item, brush);
    return item;
}
