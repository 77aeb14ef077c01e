#include "app/commands/commands.h"
#include "app/report.h"

namespace app {

int runTools(const std::string& file, bool json) {
    Session session;
    if (!file.empty()) session.open(file);
    const nlohmann::ordered_json report = reportTools(session);
    if (json) {
        printJson(report);
        return 0;
    }
    for (const auto& tool : report["tools"]) {
        std::string line = tool["class"].get<std::string>();
        line.resize(std::max<std::size_t>(line.size() + 1, 20), ' ');
        line += tool["name"].get<std::string>();
        line.resize(std::max<std::size_t>(line.size() + 1, 46), ' ');
        printLine(line + tool["description"].get<std::string>());
    }
    return 0;
}

}  // namespace app
