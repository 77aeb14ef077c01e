// The whole contract between a host and a plug-in module.
//
// A plug-in is a module in the host's "Plugins" folder that exports one C function:
//
//     extern "C" const APlugInExport* APlugInExportGetList();
//
// It returns the address of a static, read-only table of 48-byte records: a header (kind 3, everything
// else zero), one record for each tool (kind 2), and an all-zero record (kind 0) that ends the table.
// The address is the same on every call, and the table never changes. All pointers stay good until the
// module is unloaded.
//
// offset  width  field
//      0      4  kind
//      4      4  flags of a tool: 0x1000 for a tool that is started on a colour or brush item; 0 otherwise
//      8      8  class name, NUL-terminated UTF-16
//     16      8  reserved, null
//     24      8  factory: makes a tool that the caller owns, or null when allocation fails
//     32      8  first callback: returns 0
//     40      8  second callback: returns 0
//
// Ownership: the host owns every tool a factory makes and deletes it before it unloads the module. A view
// filter that a tool hands to a view belongs to the view. A host may archive a tool by its class name; the
// module exports operator>>(AArchive&, X*&) for its classes.
#pragma once

#include <cstddef>
#include <cstdint>

#include "platform/winapi.h"

class ATool;

enum : std::uint32_t {
    kPlugInEnd = 0,
    kPlugInTool = 2,
    kPlugInHeader = 3,
};

enum : std::uint32_t {
    kToolTakesItem = 0x1000,
};

struct APlugInExport {
    std::uint32_t kind;
    std::uint32_t flags;
    const WCHAR* className;
    const void* reserved;
    ATool* (*factory)();
    int (*firstCallback)();
    int (*secondCallback)();
};

static_assert(sizeof(APlugInExport) == 48);
static_assert(offsetof(APlugInExport, className) == 8);
static_assert(offsetof(APlugInExport, factory) == 24);
static_assert(offsetof(APlugInExport, secondCallback) == 40);

using APlugInExportGetListFunction = const APlugInExport* (*)();
