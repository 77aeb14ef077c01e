// AViewFilter: decides what a view shows. Plug-ins derive their own.
//
// Filters are changed in place, so undo needs to know what they were. A filter class has no virtual operation
// for that: whoever defines one registers how to copy and compare it, or how to keep its state, by its
// run-time type. A filter of a class that is not registered works as well, but undo cannot bring it back once
// it is gone.
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

// What a filter was at one moment. It does not change any more.
class AViewFilterState {
public:
    virtual ~AViewFilterState() = default;
    // Whether the filter is as it was then.
    virtual bool isStateOf(const AViewFilter& filter) const = 0;
    // A filter as it was then. Raises bad_alloc.
    virtual std::unique_ptr<AViewFilter> make() const = 0;
    // Makes the filter what it was then; false, and the filter unchanged, when that takes a new one.
    virtual bool restore(AViewFilter& filter) const noexcept {
        static_cast<void>(filter);
        return false;
    }
};

struct AViewFilterOperations {
    AViewFilter* (*copy)(const AViewFilter& filter);  // a new filter, owned by the caller
    bool (*same)(const AViewFilter& a, const AViewFilter& b);
    // For filters that can keep their state for less than a copy costs; null: undo keeps copies.
    std::unique_ptr<AViewFilterState> (*keep)(const AViewFilter& filter) = nullptr;
};

void registerViewFilter(const std::type_info& type, const AViewFilterOperations& operations);
// A module takes back its registrations before it is unloaded.
void unregisterViewFilter(const std::type_info& type);

// Null for null and for a class that is not registered.
std::unique_ptr<AViewFilter> copyViewFilter(const AViewFilter* filter);
// Two nulls are the same; filters of an unregistered class are the same only when they are one object.
bool sameViewFilter(const AViewFilter* a, const AViewFilter* b);
// Null for null and for a class that is not registered. Raises bad_alloc.
std::unique_ptr<AViewFilterState> keepViewFilter(const AViewFilter* filter);
