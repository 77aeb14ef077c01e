// Paints the objects of a document that was read from a drawing: what there is, and in which order, as the
// model says; how it looks, as the drawing says.
#pragma once

#include <memory>
#include <string>

#include "canvas/canvas.h"
#include "formats/svg/tree/user_space.h"
#include "kzcore/document/object_painter.h"

namespace svg {

// `text`: the drawing's (DrawingSource::text); `root`: the user space of its root, in drawing coordinates.
// The text and the canvas outlive the painter. Raises bad_alloc.
std::unique_ptr<AObjectPainter> makePainter(const std::string& text, const UserSpace& root, ACanvas& canvas,
                                            const AAffine& toPixels);

}  // namespace svg
