// A host in a hundred lines: opens a drawing, loads the plug-in, selects an object, runs Select Similar Color, and prints
// what is selected then.
//
//     same_color DRAWING ID
#include <cstdio>
#include <filesystem>
#include <memory>
#include <string>

#include "formats/svg/reader.h"
#include "kzcore/document/application.h"
#include "kzcore/document/document.h"
#include "kzcore/tool/plugin_loader.h"
#include "kzcore/tool/tool.h"
#include "kzcore/tool/tool_runner.h"
#include "kzcore/view/view.h"

namespace {

int fail(const std::string& reason) {
    std::fprintf(stderr, "same_color: %s\n", reason.c_str());
    return 2;
}

// Where the plug-ins are: in the folder "Plugins" of the base folder, and each reads its texts from there, too.
AFilePath plugInFile(const char* name) {
    const std::filesystem::path plugIns(PLUGINS);
    AFilePath::setBaseFolder(AString::fromUtf8(plugIns.parent_path().string()));
    AFilePath path;
    path += AString::fromUtf8(plugIns.filename().string());
    path += AString::fromUtf8(name);
    return path;
}

// The view that tools work on, for as long as this lives.
class ActiveView {
public:
    ActiveView(AApplication& application, ADocView& view) : m_application(application) {
        m_application.setActiveView(&view);
    }
    ~ActiveView() { m_application.setActiveView(nullptr); }
    ActiveView(const ActiveView&) = delete;
    ActiveView& operator=(const ActiveView&) = delete;

private:
    AApplication& m_application;
};

// Makes the tool, runs it and destroys it: a tool is made anew for every run.
std::string run(const APlugInTool& entry) {
    const std::unique_ptr<ATool> tool(entry.factory());
    if (!tool) return "there is no memory for the tool";
    std::string error;
    switch (runTool(*tool, nullptr, error)) {
        case AToolOutcome::done:
            return {};
        case AToolOutcome::notValid:
            return "the tool cannot start on this selection";
        case AToolOutcome::refused:
        case AToolOutcome::notEnded:
            return "the tool did not do its work";
        case AToolOutcome::failed:
            return "the tool failed: " + error;
    }
    return {};
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 3) return fail("usage: same_color DRAWING ID");

    // The application comes first and goes last: plug-ins look it up when they are loaded.
    AApplication application;

    std::string error;
    const std::unique_ptr<APlugIn> plugIn = APlugIn::load(plugInFile("kzattribute.so"), error);
    if (!plugIn) return fail(error);
    const APlugInTool* const entry = plugIn->findTool(_T("ASelectColorTool"));
    if (!entry) return fail("the plug-in has no tool ASelectColorTool");

    const std::unique_ptr<ADocument> document = svg::readDrawing(argv[1], error);
    if (!document) return fail(error);
    AObject* const reference = document->findObject(argv[2]);
    if (!reference) return fail(std::string("there is no object ") + argv[2]);

    // The view holds the selection, the filter and the history. It goes before the plug-in does: its filter may be made by the
    // plug-in's code.
    ADocView view(*document);
    const ActiveView active(application, view);
    view.m_selection->addSelection(reference);

    const std::string problem = run(*entry);
    if (!problem.empty()) return fail(problem);
    for (const AObject* object : view.m_selection->getObjects())
        std::printf("%s\n", std::string(object->getNameUtf8()).c_str());

    // The run was one step of the view's history.
    view.getHistory().undo();
    std::printf("%d before\n", view.m_selection->getCount());
    return 0;
}
