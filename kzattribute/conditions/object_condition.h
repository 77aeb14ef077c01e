// AObjectCondition: objects of a class, all of them or those of one sub-kind.
//
//     AObjectCondition bitmaps(_T("Bitmap"), _T("ABitmap"));
//     AObjectCondition rgb(_T(""), nullptr);
//     rgb.reset(_T("ABitmap"), IDS_BITMAP_RGB, bitmapColorModelId);  // "Bitmap/RGB Bitmap"
#pragma once

#include "conditions/condition.h"

class AObjectCondition : public ACondition {
public:
    // Tells the string id of an object's sub-kind, 0 when it has none.
    using Classifier = UINT (*)(const ARoot* object);

    using ACondition::ACondition;
    AObjectCondition(const AObjectCondition& source) : ACondition(source) {}

    using ACondition::reset;
    // The path is the class's display name without its category, and the text of the sub-kind.
    void reset(const WCHAR* className, UINT subKindId, Classifier subKindOf);

    BOOL isMatch(ARoot* item) const override;
    HTREEITEM addToTree(ACheckTree& tree) const override;

    Classifier classifier = nullptr;  // null: every object of the class
    UINT expectedId = 0;              // what the classifier must answer
};
