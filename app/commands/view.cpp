#include "kzcore/view/view.h"
#include "app/commands/commands.h"
#include "app/commands/drawings.h"
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

void printShownForPeople(const ADocView& view, const std::string& lead) {
    const ShownItems shown = shownItems(view);
    std::size_t hidden = 0;
    for (const auto* items : {&shown.colors, &shown.brushes}) {
        for (const ShownItem& one : *items) hidden += one.isVisible ? 0 : 1;
    }
    const std::size_t count = shown.colors.size() + shown.brushes.size();
    const char* const what = !shown.brushes.empty() ? " colors, gradients and patterns hidden"
                             : count == 1           ? " color hidden"
                                                    : " colors hidden";
    printText(lead + std::to_string(hidden) + " of " + std::to_string(count) + what);
    for (const auto* items : {&shown.colors, &shown.brushes}) {
        for (const ShownItem& one : *items) printItem(one);
    }
}

std::string outputBytes(const ADocView& view, const std::string& name, const PictureOptions& picture) {
    if (extensionOf(name) == ".png") return drawPng(view, picture);
    return drawingBytesFor(name, *view.getDocument(), view.m_viewFilter);
}

// Before any drawing is opened. Raises Failure.
PictureOptions readPictureOptions(const ViewOptions& options) {
    PictureOptions picture;
    if (options.size) picture.size = readPictureSize(*options.size);
    if (options.background) picture.ground = readGround(*options.background);
    const std::string extension = options.out ? extensionOf(*options.out) : std::string();
    if (options.out && extension != ".png" && extension != ".svg" && extension != ".svgz")
        throw Failure{*options.out + ": it is neither a picture, .png, nor a drawing, .svg or .svgz"};
    if (options.size && extension != ".png") throw Failure{"--size is for pictures: -o FILE.png"};
    if (options.background && extension != ".png") throw Failure{"--background is for pictures: -o FILE.png"};
    return picture;
}

// `name`: of the file to write, null when what is hidden is to be told.
int showAndHide(const ViewOptions& options, const PictureOptions& picture, const std::string& file,
                const std::string* name) {
    Session session;
    session.open(file);
    const ADocView& view = session.view();
    onFile(file, [&] {
        for (const ViewStep& step : options.steps) {
            if (!session.runTool(step.tool, findReferItemOrColor(session.document(), step.item)))
                throw Failure{"the tool " + step.tool + " cannot start"};
        }
    });
    if (name) writeFile(*name, onFile(file, [&] { return outputBytes(view, *name, picture); }));
    if (options.json) {
        nlohmann::ordered_json report = headOf(options.files, file);
        if (name && !report.empty()) report["output"] = *name;
        report.update(reportFilter(view));
        printJson(report);
    } else if (!name) {
        printShownForPeople(view, leadOf(options.files, file));
    }
    return 0;
}

}  // namespace

int runView(const ViewOptions& options) {
    const PictureOptions picture = readPictureOptions(options);
    std::vector<std::string> names;
    if (options.out) names = outputNames(options.files, *options.out);
    return onEachDrawing(options.files, options.json, [&](std::size_t i) {
        return showAndHide(options, picture, options.files[i], names.empty() ? nullptr : &names[i]);
    });
}

}  // namespace app
