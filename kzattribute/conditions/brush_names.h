// What the entries for brushes are called.
#pragma once

#include "conditions/condition.h"
#include "kzcore/document/refer_item.h"

namespace conditions {

// The brush's name. One without a name is called after its entry: "brush" and the low 32 bits of the entry's
// serial as a signed number, which the host's "%d" prints.
inline AString nameForEntry(const AReferItem& brush, const ACondition& entry) {
    AString name = brush.getName();
    if (!name.IsEmpty()) return name;
    name = _T("brush");
    name.AppendNumber(static_cast<int>(entry.getSerial()));
    return name;
}

}  // namespace conditions
