#include "app/commands/commands.h"
#include "app/commands/on_file.h"
#include "app/written_drawing.h"
#include "app/written_file.h"

namespace app {

int runRender(const std::string& file, const std::string& out, const std::optional<std::string>& size,
              const std::optional<std::string>& area) {
    const PictureSize pixels = size ? readPictureSize(*size) : PictureSize();
    const std::optional<AFRect> part = area ? std::optional(readPictureArea(*area)) : std::nullopt;
    checkPictureName(out);
    Session session;
    session.open(file);
    writeFile(out, onFile(file, [&] { return drawPng(session.view(), pixels, part); }));
    return 0;
}

}  // namespace app
