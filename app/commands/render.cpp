#include "app/commands/commands.h"
#include "app/commands/on_file.h"
#include "app/written_drawing.h"
#include "app/written_file.h"

namespace app {

int runRender(const RenderOptions& options) {
    PictureOptions picture;
    if (options.size) picture.size = readPictureSize(*options.size);
    if (options.area) picture.part = readPictureArea(*options.area);
    if (options.background) picture.ground = readGround(*options.background);
    checkPictureName(options.out);
    Session session;
    session.open(options.file);
    writeFile(options.out, onFile(options.file, [&] { return drawPng(session.view(), picture); }));
    return 0;
}

}  // namespace app
