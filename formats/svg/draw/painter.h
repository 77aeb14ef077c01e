// Paints the objects of a document that was read from a drawing: what there is, and in which order, as the
// model says; how it looks, as the drawing says.
#pragma once

#include <memory>
#include <string>

#include "canvas/canvas.h"
#include "formats/svg/tree/user_space.h"
#include "kzcore/display/display_recorder.h"
#include "kzcore/document/object_painter.h"

namespace svg {

// `text`: the drawing's (DrawingSource::text); `root`: the user space of its root, in drawing coordinates.
// The text and the canvas outlive the painter. Raises bad_alloc.
std::unique_ptr<AObjectPainter> makePainter(const std::string& text, const UserSpace& root, ACanvas& canvas,
                                            const AAffine& toPixels);

// The same for a display list. The list draws what it cannot hold through a copy of the drawing's tree, made when
// that is first asked for, from the text, which the list's document keeps.
std::unique_ptr<AObjectPainter> makeRecording(const std::string& text, const UserSpace& root,
                                              ADisplayRecorder& recorder);

}  // namespace svg
