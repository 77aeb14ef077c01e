// The bytes of the files that the program writes, and what these may be called.
#pragma once

#include <string>

#include "app/picture.h"

class AViewFilter;

namespace app {

// The drawing as an SVG file: whole, or without what the filter hides. Raises Failure.
std::string drawingBytes(ADocument& document, AViewFilter* filter);
// The same for a file of this name: compressed when it ends in .svgz.
std::string drawingBytesFor(const std::string& name, ADocument& document, AViewFilter* filter);

// Raises Failure for a name that promises another kind of file than a PNG picture: it ends in .png or has no
// extension.
void checkPictureName(const std::string& name);

}  // namespace app
