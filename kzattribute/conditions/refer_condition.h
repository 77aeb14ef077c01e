// AReferCondition: one colour or brush item that objects refer to, or all items of a class.
//
//     AReferCondition red(_T(""), colorItem);                       // this colour, or its equal of that name
//     AReferCondition rgb(_T("RGB Color"), _T("ARGBColorItem"));    // every RGB colour
//
// Counts a reference on its item from taking to dropping it, so that it may outlive the dialog that made it.
// The only kind that clones into itself.
#pragma once

#include "conditions/condition.h"

class AReferItem;

class AReferCondition : public ACondition {
public:
    // The class is that of the item; null, which callers do not hand over, makes a condition without a class.
    AReferCondition(const AString& itemPath, AReferItem* item);
    AReferCondition(const AString& itemPath, const WCHAR* className) : ACondition(itemPath, className) {}
    AReferCondition(const AReferCondition&) = delete;  // see clone
    ~AReferCondition() override;

    // To all items of a class.
    void reset(const AString& itemPath, const WCHAR* className);
    // To an item.
    void reset(const AString& itemPath, AReferItem* item);

    // With the source's path, serial, presence flags, classes and item. Consumes a serial all the same: it
    // is made anew before it takes the source's.
    ACondition* clone() const override;
    BOOL isMatch(ARoot* item) const override;
    HTREEITEM addToTree(ACheckTree& tree) const override;
    BOOL hasCommonClass(const ACondition& other) const override;

    // Null: any item of the classes.
    const AReferItem* getReferItem() const { return m_referItem; }

private:
    void refer(AReferItem* item);

    AReferItem* m_referItem = nullptr;
};
