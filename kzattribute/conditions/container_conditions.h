// The conditions that an object satisfies by what contains it.
//
//     AEffectCondition shadow(_T("Shadow"), _T("AShadow"));  // the shadow and all that casts it
//     ALayerCondition guides(_T("Guides"), _T("AGuideLayer"));
//
// A layer counts by the class name it reports, not by its title or place.
#pragma once

#include "conditions/condition.h"

// Accepts an object when it, or a container of it below its layer, is of one of the classes.
class AEffectCondition : public ACondition {
public:
    using ACondition::ACondition;
    AEffectCondition(const AEffectCondition& source) : ACondition(source) {}

    BOOL isMatch(ARoot* item) const override;
};

// Accepts an object when its layer is of one of the classes. A layer is its own layer.
class ALayerCondition : public ACondition {
public:
    using ACondition::ACondition;
    ALayerCondition(const ALayerCondition& source) : ACondition(source) {}

    BOOL isMatch(ARoot* item) const override;
};
