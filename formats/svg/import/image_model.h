// The colour model of an image.
#pragma once

#include "formats/svg/style/attributes.h"

namespace svg {

// What kz:model says ("gray", "cmyk", …), else what the header of an embedded PNG says, else RGB.
int colorModelOf(const AttributeSet& attributes);

}  // namespace svg
