#include "app/commands/commands.h"
#include "app/commands/drawings.h"
#include "app/commands/on_file.h"
#include "app/written_drawing.h"
#include "app/written_file.h"

namespace app {

int runRender(const RenderOptions& options) {
    PictureOptions picture;
    if (options.size) picture.size = readPictureSize(*options.size);
    if (options.area) picture.part = readPictureArea(*options.area);
    if (options.background) picture.ground = readGround(*options.background);
    const std::vector<std::string> names = outputNames(options.files, options.out);
    for (const std::string& name : names) checkPictureName(name);
    return onEachDrawing(options.files, options.json, [&](std::size_t i) {
        Session session;
        session.open(options.files[i]);
        writeFile(names[i], onFile(options.files[i], [&] { return drawPng(session.view(), picture); }));
        if (options.json) printJson({{"file", options.files[i]}, {"output", names[i]}});
        return 0;
    });
}

}  // namespace app
