#include "tests/platform/modules/module_log.h"

#include <utility>

namespace {

std::vector<std::string>& events() {
    static std::vector<std::string> list;
    return list;
}

}  // namespace

void log_of_module(const char* event) {
    events().emplace_back(event);
}

std::vector<std::string> take_module_log() {
    return std::exchange(events(), {});
}
