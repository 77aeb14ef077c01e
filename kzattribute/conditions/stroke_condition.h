// AStrokeCondition: objects by their stroke.
//
//     AStrokeCondition black(_T("Pen/RGB Color/black"), _T("APenItem"), colorItem);
//     AStrokeCondition none(noStrokeText, nullptr, nullptr);  // without a class: objects without stroke
#pragma once

#include "conditions/condition.h"

class AColorItem;

class AStrokeCondition : public ACondition {
public:
    AStrokeCondition(const AString& itemPath, const WCHAR* className, AColorItem* color)
        : ACondition(itemPath, className), colorItem(color) {}
    AStrokeCondition(const AStrokeCondition& source) : ACondition(source) {}

    using ACondition::reset;
    void reset(const AString& itemPath, const WCHAR* className, AColorItem* color);

    // A pen without an item, and one of the style that draws nothing, count as no stroke.
    BOOL isMatch(ARoot* item) const override;
    HTREEITEM addToTree(ACheckTree& tree) const override;

    // This very item, not an equal colour. Not counted: it has to outlive the condition. Null: any colour.
    AColorItem* colorItem = nullptr;
};
