// Errors that concern an open drawing name its file.
#pragma once

#include <string>

#include "app/session.h"

namespace app {

// Does the work; what fails in it is told as "FILE: reason".
template <class Work>
auto onFile(const std::string& file, Work work) {
    try {
        return work();
    } catch (const Failure& failure) {
        throw Failure{file + ": " + failure.reason};
    }
}

}  // namespace app
