// The window's icons: outlines on a square of 20, drawn by a pen of 1.5 with round ends, as on the page.
#pragma once

#include <string_view>

#include "canvas/canvas.h"

namespace app::window {

// A tool's class, or a name of this list: open, save, undo, redo, plus, minus, fit, full, close,
// shown, hidden, locked, unlocked.
// What has no icon of its own gets that of a tool.
void drawIcon(ACanvas& canvas, std::string_view name, AFPoint at, double side, AColor color);

}  // namespace app::window
