#include "app/commands/commands.h"
#include "app/commands/drawings.h"
#include "app/report.h"

namespace app {

namespace {

std::string counted(std::size_t count, const std::string& singular, const std::string& plural) {
    return std::to_string(count) + " " + (count == 1 ? singular : plural);
}

std::string number(double value) {
    char text[32];
    std::snprintf(text, sizeof text, "%.6g", value);
    return text;
}

int tellInfo(const std::string& file, bool json) {
    Session session;
    session.open(file);
    const nlohmann::ordered_json info = reportInfo(file, session.document());
    if (json) {
        printJson(info);
        return 0;
    }
    const AFRect& page = session.document().getPage();
    printText(file + ": " + counted(info["objects"], "object", "objects") + ", " +
              counted(info["colors"], "color", "colors") + ", page " + number(page.Width()) + " x " +
              number(page.Height()));
    for (const auto& layer : info["layers"]) {
        std::string line = "  layer " + layer["name"].get<std::string>() + ": " +
                           counted(layer["objects"], "object", "objects") + " at its top level";
        if (layer["master"]) line += ", master";
        if (layer["locked"]) line += ", locked";
        if (layer["hidden"]) line += ", hidden";
        printText(line);
    }
    for (const auto& [className, count] : info["classes"].items()) {
        const AClassInfo* row = findClass(AString::fromUtf8(className).view());
        printText("  " + counted(count, displayName(*row), displayName(*row)));
    }
    return 0;
}

}  // namespace

int runInfo(const InfoOptions& options) {
    return onEachDrawing(options.files, options.json,
                         [&](std::size_t i) { return tellInfo(options.files[i], options.json); });
}

}  // namespace app
