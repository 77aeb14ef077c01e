// What the window's lists show: the colours in use, and the layers.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "app/session.h"
#include "canvas/color.h"

namespace app::window {

struct Swatch {
    std::string name, className;
    std::string item;                              // what a colour tool is started on
    std::vector<std::pair<AColor, double>> stops;  // a colour has one; what has no one colour none
    std::size_t objects = 0;
    bool isVisible = true;

    // "Signal Red · RGB Color · 12 objects · hidden"
    std::string description() const;
    friend bool operator==(const Swatch&, const Swatch&) = default;
};

// The colours, then the brushes that are not solid.
std::vector<Swatch> swatchesOf(Session& session);

struct LayerRow {
    std::string name;
    bool isMaster = false, isLocked = false, isHidden = false;
    std::size_t objects = 0;
    friend bool operator==(const LayerRow&, const LayerRow&) = default;
};

// Topmost first; master layers, which lie below all others, last.
std::vector<LayerRow> layersOf(Session& session);

}  // namespace app::window
