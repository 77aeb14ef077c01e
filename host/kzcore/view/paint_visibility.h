// What a view's filter says of an object's paint.
#pragma once

#include "kzcore/document/object_painter.h"

class AViewFilter;

// What the filter says of the object's brush item and of its pen item (of a stroke with a brush: of that).
// What the object does not have counts as shown, and is not asked for; a null filter shows everything.
APaintVisibility paintVisibility(const AObject& object, AViewFilter* filter);
