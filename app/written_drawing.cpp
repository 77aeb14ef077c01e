#include "app/written_drawing.h"

#include "app/session.h"
#include "app/written_file.h"
#include "formats/svg/writer.h"
#include "formats/svg/xml/gzip.h"

namespace app {

std::string drawingBytes(ADocument& document, AViewFilter* filter) {
    std::string error;
    std::optional<std::string> bytes = svg::writeDrawing(document, filter, error);
    if (!bytes) throw Failure{"the drawing cannot be written: " + error};
    return std::move(*bytes);
}

std::string drawingBytesFor(const std::string& name, ADocument& document, AViewFilter* filter) {
    std::string bytes = drawingBytes(document, filter);
    return extensionOf(name) == ".svgz" ? svg::gzip(bytes) : bytes;
}

void checkPictureName(const std::string& name) {
    const std::string extension = extensionOf(name);
    if (!extension.empty() && extension != ".png")
        throw Failure{name + ": a picture is a PNG file, its name ends in .png"};
}

}  // namespace app
