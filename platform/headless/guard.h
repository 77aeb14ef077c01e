// No exception leaves the headless API: it is called from places that expect none, as on Windows.
#pragma once

#include <exception>
#include <new>

#include "platform/headless/include/windows.h"

namespace headless {

// What the body answers; a null answer and a last error when it runs out of memory or fails in
// an unforeseen way.
template <class Body>
auto guarded(Body body) noexcept -> decltype(body()) {
    try {
        return body();
    } catch (const std::bad_alloc&) {
        SetLastError(ERROR_NOT_ENOUGH_MEMORY);
    } catch (const std::exception&) {
        SetLastError(ERROR_INVALID_PARAMETER);
    }
    return {};
}

// The null of any type.
struct Null {
    template <class Type>
    operator Type() const {
        return {};
    }
};

// A null answer with its reason: `return fails(ERROR_MOD_NOT_FOUND);`
inline Null fails(DWORD error) {
    SetLastError(error);
    return {};
}

}  // namespace headless
