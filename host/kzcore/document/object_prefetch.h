// Objects lie all over a large drawing: a walk along a list of them asks for those it comes to soon.
//
//     for (auto at = list.begin(); at != end; ++at) {
//         prefetchAhead(at, end);
//         use(**at);
//     }
#pragma once

#include <cstddef>

#include "kzcore/document/object.h"

// Starts to load what walks read of an object: all but its geometry. Null is allowed.
inline void prefetchObject(const ARoot* object) {
    const char* start = reinterpret_cast<const char*>(object);
    __builtin_prefetch(start);
    __builtin_prefetch(start + sizeof(AObject) / 2);
}

// `end` is that of the list.
template <class Position>
void prefetchAhead(Position at, Position end) {
    constexpr std::ptrdiff_t kAhead = 12;
    if (end - at > kAhead) prefetchObject(at[kAhead]);
}
