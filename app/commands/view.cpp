#include "kzcore/view/view.h"
#include "app/commands/commands.h"
#include "app/commands/on_file.h"
#include "app/filter_report.h"
#include "app/report.h"
#include "app/script/refer_item_argument.h"
#include "app/written_drawing.h"
#include "app/written_file.h"

namespace app {

namespace {

void printItem(const ShownItem& one) {
    std::string line = "  " + one.item->getName().toUtf8();
    fillUp(line, 26);
    line += displayName(one.item->getClassInfo());
    fillUp(line, 44);
    printText(line + (one.isVisible ? "visible" : "hidden"));
}

void printShownForPeople(const ADocView& view) {
    const ShownItems shown = shownItems(view);
    std::size_t hidden = 0;
    for (const auto* items : {&shown.colors, &shown.brushes}) {
        for (const ShownItem& one : *items) hidden += one.isVisible ? 0 : 1;
    }
    const std::size_t count = shown.colors.size() + shown.brushes.size();
    const char* const what = !shown.brushes.empty() ? " colors, gradients and patterns hidden"
                             : count == 1           ? " color hidden"
                                                    : " colors hidden";
    printLine(std::to_string(hidden) + " of " + std::to_string(count) + what);
    for (const auto* items : {&shown.colors, &shown.brushes}) {
        for (const ShownItem& one : *items) printItem(one);
    }
}

std::string outputBytes(const ADocView& view, const std::string& extension, const PictureOptions& picture) {
    if (extension == ".png") return drawPng(view, picture);
    return drawingBytes(*view.getDocument(), view.m_viewFilter);
}

}  // namespace

int runView(const ViewOptions& options) {
    PictureOptions picture;
    if (options.size) picture.size = readPictureSize(*options.size);
    if (options.background) picture.ground = readGround(*options.background);
    const std::string extension = options.out ? extensionOf(*options.out) : std::string();
    if (options.out && extension != ".png" && extension != ".svg")
        throw Failure{*options.out + ": it is neither a picture, .png, nor a drawing, .svg"};
    if (options.size && extension != ".png") throw Failure{"--size is for pictures: -o FILE.png"};
    if (options.background && extension != ".png") throw Failure{"--background is for pictures: -o FILE.png"};
    Session session;
    session.open(options.file);
    const ADocView& view = session.view();
    onFile(options.file, [&] {
        for (const ViewStep& step : options.steps) {
            if (!session.runTool(step.tool, findReferItemOrColor(session.document(), step.item)))
                throw Failure{"the tool " + step.tool + " cannot start"};
        }
    });
    if (options.out) {
        writeFile(*options.out, onFile(options.file, [&] { return outputBytes(view, extension, picture); }));
    }
    if (options.json)
        printJson(reportFilter(view));
    else if (!options.out)
        printShownForPeople(view);
    return 0;
}

}  // namespace app
