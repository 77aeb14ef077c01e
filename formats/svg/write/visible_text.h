// The changes that make a drawing's text look as its view under a filter does.
//
//     const SourceElements source(text);
//     const LeftOut leftOut(document, filter, source);
//     std::vector<TextEdit> edits = editsUnder(text, source, leftOut);
#pragma once

#include "formats/svg/write/left_out.h"
#include "formats/svg/xml/text_edits.h"

namespace svg {

// Raised when copies in copies would grow beyond every use.
struct CopiesGrow {};

// In no order; see applyEdits. Raises CopiesGrow.
std::vector<TextEdit> editsUnder(const std::string& text, const SourceElements& source,
                                 const LeftOut& leftOut);

}  // namespace svg
