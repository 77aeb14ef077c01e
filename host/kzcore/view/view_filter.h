// AViewFilter: decides what a view shows. Plug-ins derive their own.
//
// Filters are changed in place, so undo needs copies. A filter class has no virtual operation for that:
// whoever defines one registers how to copy and compare it, by its run-time type.
#pragma once

#include <memory>
#include <typeinfo>

class AReferItem;

class AViewFilter {
public:
    virtual ~AViewFilter() = default;
    // Non-zero when what is painted with the item is drawn. The base shows everything.
    virtual int isVisible(AReferItem* item);
};

struct AViewFilterOperations {
    AViewFilter* (*copy)(const AViewFilter& filter);  // a new filter, owned by the caller
    bool (*same)(const AViewFilter& a, const AViewFilter& b);
};

void registerViewFilter(const std::type_info& type, const AViewFilterOperations& operations);
// A module takes back its registrations before it is unloaded.
void unregisterViewFilter(const std::type_info& type);

// Null for null and for a class that is not registered.
std::unique_ptr<AViewFilter> copyViewFilter(const AViewFilter* filter);
// Two nulls are the same; filters of an unregistered class are the same only when they are one object.
bool sameViewFilter(const AViewFilter* a, const AViewFilter* b);
