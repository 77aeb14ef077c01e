// Text elements as outlines: tspans with their own styles and positions, anchors, texts on paths.
#pragma once

#include <memory>
#include <vector>

#include "formats/svg/draw/context/context.h"

namespace svg {

// A run of glyphs with one style, or lines of its decoration.
struct TextPiece {
    std::shared_ptr<const APath> outline;  // never null; labels that read alike share theirs
    AFPoint at;                            // where its 0, 0 lies in the text's user space
    AFRect box;   // of its line: the advance wide, ascent and descent high; for bounding boxes
    Style style;  // computed; that of the text element itself where no tspan says otherwise

    // From the outline to the text's user space.
    AAffine placed() const { return AAffine::translation(at.x, at.y); }
};

// Lays out a text. Pieces that are not displayed are left out; those with visibility: hidden are, too, but
// take their room.
void layOutText(DrawContext& context, const DrawnElement& text, std::vector<TextPiece>& pieces);

}  // namespace svg
