#include "app/window/swatches.h"

#include <algorithm>
#include <cstdlib>

#include "app/color_report.h"
#include "app/report.h"

namespace app::window {

namespace {

using Json = nlohmann::ordered_json;

// Of "#rrggbb".
AColor colorOf(const std::string& value) {
    const unsigned long rgb = std::strtoul(value.c_str() + 1, nullptr, 16);
    return AColor(RGB(rgb >> 16 & 255, rgb >> 8 & 255, rgb & 255));
}

Swatch swatchOf(const Json& row) {
    Swatch swatch{row["name"], row["class"], row["item"], {}, row["objects"], row["visible"]};
    if (row.contains("value")) swatch.stops.emplace_back(colorOf(row["value"]), 0);
    if (row.contains("stops")) {
        for (const Json& stop : row["stops"]) swatch.stops.emplace_back(colorOf(stop[0]), stop[1]);
    }
    return swatch;
}

}  // namespace

std::string Swatch::description() const {
    constexpr char kDot[] = " \xC2\xB7 ";
    return name + kDot + className + kDot + std::to_string(objects) +
           (objects == 1 ? " object" : " objects") + (isVisible ? "" : std::string(kDot) + "hidden");
}

std::vector<Swatch> swatchesOf(Session& session) {
    const Json report = reportColors(session);
    std::vector<Swatch> swatches;
    for (const char* kind : {"colors", "brushes"}) {
        for (const Json& row : report[kind]) swatches.push_back(swatchOf(row));
    }
    return swatches;
}

std::vector<LayerRow> layersOf(Session& session) {
    std::vector<LayerRow> rows;
    for (const Json& layer : reportLayers(session.document()))
        rows.push_back({layer["name"], layer["master"], layer["locked"], layer["hidden"], layer["objects"]});
    std::ranges::reverse(rows);
    return rows;
}

}  // namespace app::window
