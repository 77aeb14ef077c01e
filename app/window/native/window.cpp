#include "app/window/window.h"

#include "app/session.h"

namespace app {

int runWindow(const std::string&) {
    throw Failure{"the window is for Windows: here, kzdraw serve shows the same tools in a browser"};
}

bool isForWindow(const std::vector<std::string>&) {
    return false;
}

}  // namespace app
