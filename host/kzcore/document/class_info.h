// The host's class table: every class that a document or a user interface can name.
//
// A class that needs no behaviour of its own is a row of this table, not a C++ class. The order of the rows
// is the order in which class entries are listed to users.
#pragma once

#include <span>

#include "kzutil/astring.h"

enum class AClassKind {
    leaf,       // an object without children and without behaviour of its own
    bitmap,     // ABitmap
    group,      // AGroup, AMask: an open container
    composite,  // AComposite: a closed container
    effect,     // AEffect: an open container that changes how its children look
    brushItem,
    penItem,
    colorItem,
    layer,
    database,
};

// One row. Rows live as long as the process, so a pointer to one identifies the class.
struct AClassInfo {
    AString name;
    UINT nameId;  // string id of the display structure; 0: the class is not shown to users
    UINT iconId;  // bitmap id of a 16x16 picture; 0: none
    AClassKind kind;
};

// The classes of the database, in table order: drawing objects, brush items, the pen item, layers.
std::span<const AClassInfo> databaseClasses();
// The colour item classes, in table order.
std::span<const AClassInfo> colorItemClasses();

// The row of a name (exact), of either table; null when there is none.
const AClassInfo* findClass(kzutil::WideView name);
