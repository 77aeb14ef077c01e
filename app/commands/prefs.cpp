#include "app/commands/commands.h"
#include "app/output.h"
#include "app/session.h"
#include "app/stored_prefs.h"
#include "kzutil/preference_manager.h"

namespace app {

namespace {

std::string sizeText(const nlohmann::ordered_json& size) {
    return size == -1 ? "its own" : size.dump();
}

}  // namespace

int runPrefs(bool reset, bool json) {
    std::string problem;
    if (reset && !APreferenceManager::removePrefs(problem)) throw Failure{problem};
    const nlohmann::ordered_json report = reportPrefs();
    if (json) {
        printJson(report);
        return 0;
    }
    const nlohmann::ordered_json& geometry = report["prefs"]["AViewFilterPrefs"];
    if (geometry.is_null()) {
        printText("nothing is stored");
        return 0;
    }
    printText("View Filter dialog: width " + sizeText(geometry["width"]) + ", height " +
              sizeText(geometry["height"]) + ", left " + geometry["left"].dump() + ", top " +
              geometry["top"].dump());
    const std::u8string folder = APreferenceManager::getFolder().u8string();
    printText("stored in " + std::string(folder.begin(), folder.end()));
    return 0;
}

}  // namespace app
