// A fill or stroke as written: the value of a paint property.
#pragma once

#include <cstdint>
#include <string_view>

namespace svg {

// context-fill and context-stroke are what a marker's shape or a "use" is painted with.
enum class PaintKind : std::uint8_t { none, currentColor, rgb, cmyk, reference, contextFill, contextStroke };

// Views point into the drawing's text or its style sheet.
struct Paint {
    PaintKind kind = PaintKind::none;
    PaintKind fallback = PaintKind::none;  // of a reference to something that is not there
    std::uint8_t alpha = 255;              // of `rgb`; for drawing: the model's colours have none
    std::uint32_t rgb = 0;                 // 0xRRGGBB, of `kind` or of `fallback`
    std::string_view text{};               // the id referred to; the text of a CMYK colour
};

// Reads a paint: none, currentColor, a colour (what follows it, such as icc-color(), is dropped), url(#id)
// with an optional fallback, context-fill or context-stroke. "transparent" counts as none. False for anything else.
bool parsePaint(std::string_view text, Paint& paint);

// The id inside "url(#id)", quoted or not, taken from the front of the text. A reference to another file
// gives an id that no element has. False when the text does not start with a reference.
bool takeUrl(std::string_view& text, std::string_view& id);

}  // namespace svg
