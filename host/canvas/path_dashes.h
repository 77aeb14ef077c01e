// Cutting outlines into dashes, for a drawing library whose pens cannot do it as the stroke style says it.
//
//     canvas.stroke(dashedPath(path, {4, 2}, 0, 0.1), …);   // a style without dashes
#pragma once

#include <vector>

#include "canvas/path.h"

// Every dash is an open figure of lines; curves become lines that keep within `tolerance` of them. The dashes
// start anew with every figure, `offset` into the list; an odd list goes on with its lengths in exchanged
// roles. Where a closed figure ends within the dash it starts with, the two are one. A dash of no length is a
// line of the length `dot`, so that it keeps its direction; a `dot` of 0 leaves them out. The list has a sum
// above 0 and no negative length.
APath dashedPath(const APath& path, const std::vector<double>& dashes, double offset, double tolerance,
                 double dot);

// The path with each of its dots (figures with segments, but of no length) drawn out to lines of the length
// `dot`, to the right: pens show caps only at lines. A `dot` of 0 leaves them out.
APath withDrawnDots(const APath& path, double dot);
