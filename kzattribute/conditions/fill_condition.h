// AFillCondition: objects and brush items by their fill.
//
//     AFillCondition red(_T("Solid/RGB Color/red"), brushItem);  // this fill, or a solid one of its colour
//     AFillCondition none(noFillText, nullptr);                  // no class: objects without fill
//     AFillCondition rgb(_T(""), nullptr);
//     rgb.reset(_T("Solid/RGB Color"), _T("ARGBColorItem"));     // every solid fill of the colour class
#pragma once

#include "conditions/condition.h"

class ABrushItem;

class AFillCondition : public ACondition {
public:
    // The class is that of the brush item; null: none.
    AFillCondition(const AString& itemPath, ABrushItem* brush);
    AFillCondition(const AFillCondition& source) : ACondition(source) {}

    using ACondition::reset;
    void reset(const AString& itemPath, ABrushItem* brush);

    // A fill without a brush item matches nothing, not even "No fill".
    BOOL isMatch(ARoot* item) const override;
    HTREEITEM addToTree(ACheckTree& tree) const override;
    // Stricter than isMatch: two entries for one brush item that is not solid have nothing in common, as each
    // object with a gradient has an entry of its own.
    BOOL hasCommonClass(const ACondition& other) const override;

    // Not counted: it has to outlive the condition. Null: any brush item of the classes.
    ABrushItem* brushItem = nullptr;
};
