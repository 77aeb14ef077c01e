// The order in which a page lists its conditions; see ACheckPageBase::sortConditions.
#pragma once

#include <vector>

#include "kzutil/arrays.h"

namespace checkpage {

// The conditions of the array in that order. Linear in their number.
std::vector<ARoot*> inClassOrder(const AObArray& conditions);

}  // namespace checkpage
