#include "app/commands/commands.h"
#include "app/report.h"

namespace app {

int runTools(const std::optional<std::string>& file, bool json) {
    Session session;
    if (file) session.open(*file);
    const nlohmann::ordered_json report = reportTools(session);
    const int status = report["tools"].empty() ? 1 : 0;
    if (json) {
        printJson(report);
        return status;
    }
    for (const auto& tool : report["tools"]) {
        std::string line = tool["class"].get<std::string>();
        fillUp(line, 20);
        line += tool["name"].get<std::string>();
        fillUp(line, 46);
        printText(line + tool["description"].get<std::string>());
    }
    return status;
}

}  // namespace app
