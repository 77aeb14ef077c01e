// The runs of a text: what of it is shaped as a whole by the text library. A run ends only where the drawing itself moves
// a character.
#pragma once

#include <vector>

#include "formats/svg/draw/text/text_characters.h"

namespace svg {

struct TextRun {
    std::size_t first = 0, last = 0;  // characters
    std::shared_ptr<const ATextOutline> glyphs;
    double shift = 0;          // of the glyphs, before they are stretched
    double natural = 0;        // its width before it is stretched
    double spacing = 0;        // behind it
    double stretch = 1;        // of its width
    double lengthSpacing = 0;  // what a text length adds to `spacing`
    // Where the drawing puts it, as its first character says; NaN where it follows the run before.
    double x = kNowhere, y = kNowhere, dx = 0, dy = 0;
    double rotate = 0;     // degrees
    bool upright = false;  // in a vertical text

    double width() const { return natural * stretch; }
    double advance() const { return width() + spacing; }
};

// The runs of all characters. `vertical`: in columns.
std::vector<TextRun> makeTextRuns(DrawContext& context, const TextCharacters& text, bool vertical);

// Of the letters of a style; kept for the picture.
const AFontMetrics& fontMetricsOf(DrawContext& context, const Style& style);

}  // namespace svg
