// Text elements as outlines: tspans with their own styles and positions, anchors, texts on paths.
#pragma once

#include <vector>

#include "formats/svg/draw/text/text_characters.h"

namespace svg {

// A run of glyphs with one style.
struct TextPiece {
    ATextShape outline;  // in the text's user space, decorations included
    AFRect box;          // of its line: the advance wide, ascent and descent high; for bounding boxes
    Style style;         // computed; that of the text element itself where no tspan says otherwise
    // The innermost part that it lies in; null: none. Pieces of one part follow each other.
    std::shared_ptr<const TextEffect> effect;
};

// Lays out a text. Pieces that are not displayed are left out; those with visibility: hidden are, too, but
// take their room.
void layOutText(DrawContext& context, const DrawnElement& text, std::vector<TextPiece>& pieces);

}  // namespace svg
