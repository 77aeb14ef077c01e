// Writes drawings back.
//
//     std::string error;
//     std::optional<std::string> bytes = svg::writeDrawing(document, nullptr, error);
//
// The file comes back as it was read, byte for byte, with all that this program knows nothing of; only, it is
// UTF-8 whatever it was.
//
// With a filter, what the view does not show is left out, so that the written drawing looks, without a
// filter, as the view does: an element all of whose paint is hidden goes, one that keeps the other paint gets
// "fill:none!important" or "stroke:none!important" at the end of its style (a text with all its parts).
// Inside of a filter, a mask or a clip path, which go by the extent of what they show, elements get both
// instead of going. Elements that "use" repeats are changed where all the places agree; a "use" that has to
// look different gets a changed copy of its own, behind the original and without ids. What clip paths, texts
// on a path and the like refer to stays for them, inside "defs".
//
// Gaps: a rule of a style sheet with ">" may miss a copy, around which new elements stand; one for the id of
// a symbol or nested drawing wins, in its copy, over the element's own style; and what repeats itself, which
// is an error, may be repeated once more.
#pragma once

#include <optional>
#include <string>

#include "kzcore/document/document.h"

class AViewFilter;

namespace svg {

// Nothing, and `error` is the reason, for a document that was not read from a drawing, and for one whose
// copies would grow beyond every use.
std::optional<std::string> writeDrawing(const ADocument& document, AViewFilter* filter, std::string& error);

}  // namespace svg
