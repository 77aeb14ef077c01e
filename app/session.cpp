#include "app/session.h"

#include <mutex>
#include <system_error>

#include "app/output.h"
#include "app/place_report.h"
#include "formats/svg/reader.h"
#include "kzcore/tool/tool_runner.h"
#include "kzcore/view/view.h"

namespace app {

std::filesystem::path filePath(const std::string& name) {
    if (name.empty()) throw Failure{"the name of a file is empty"};
    try {
        // Made from char8_t, a path takes the text as UTF-8 on every build.
        return std::filesystem::path(std::u8string(name.begin(), name.end()));
    } catch (const std::system_error&) {
        throw Failure{name + ": no file can have this name"};
    }
}

Session::Session() : m_plugIns(PlugIns::loaded()) {
    static std::once_flag told;
    std::call_once(told, [this] {
        for (const std::string& problem : m_plugIns->problems()) printError(problem);
    });
}

Session::~Session() {
    m_application.setActiveView(nullptr);
}

void Session::open(const std::string& file) {
    std::string error;
    std::unique_ptr<ADocument> document = svg::readDrawing(filePath(file), error);
    if (!document) throw Failure{error};
    open(std::move(document), file, nullptr);
}

void Session::openBytes(std::string bytes, const std::string& name) {
    std::string error;
    std::unique_ptr<ADocument> document = svg::readDrawingBytes(std::move(bytes), name, error);
    if (!document) throw Failure{error};
    open(std::move(document), name, nullptr);
}

void Session::open(std::unique_ptr<ADocument> document, const std::string& name,
                   std::shared_ptr<const ADisplayList> list) {
    std::string fileName = name;
    auto shown = std::make_unique<ShownDrawing>();
    auto view = std::make_unique<ADocView>(*document);
    shown->follow(*view, std::move(list));
    m_application.setActiveView(view.get());
    m_shown = std::move(shown);
    m_view = std::move(view);
    m_document = std::move(document);
    m_fileName = std::move(fileName);
    ++m_openCount;
}

ADocument& Session::document() {
    if (!m_document) throw Failure{"no drawing is open"};
    return *m_document;
}

ADocView& Session::view() {
    document();
    return *m_view;
}

ShownDrawing& Session::shown() {
    document();
    return *m_shown;
}

const APlugInTool& Session::toolEntry(const std::string& className) const {
    const APlugInTool* entry = m_plugIns->findTool(AString::fromUtf8(className));
    if (!entry) throw Failure{"there is no tool " + inQuotes(className)};
    return *entry;
}

std::unique_ptr<ATool> Session::makeTool(const std::string& className) const {
    std::unique_ptr<ATool> tool(toolEntry(className).factory());
    if (!tool) throw Failure{"not enough memory for the tool " + className};
    return tool;
}

bool Session::runTool(const std::string& className, AReferItem* item) {
    document();
    const std::unique_ptr<ATool> tool = makeTool(className);
    const bool lacksItem = !item && (toolEntry(className).flags & kToolTakesItem) != 0;
    std::string error;
    switch (::runTool(*tool, item, error)) {
        case AToolOutcome::notValid:
            return false;
        case AToolOutcome::done:
            return true;
        case AToolOutcome::refused:
            throw Failure{"the tool " + className + " could not start" +
                          (lacksItem ? " without an item" : "")};
        case AToolOutcome::notEnded:
            throw Failure{"the tool " + className + " did not end"};
        case AToolOutcome::failed:
            throw Failure{"the tool " + className + " failed: " + error};
    }
    return false;
}

void Session::select(const std::vector<std::string>& names) {
    AObList objects(0, 10);
    for (const std::string& name : names) {
        AObject* object = document().findObject(name);
        if (!object) throw Failure{"there is no object " + inQuotes(name)};
        objects.AddTail(object);
    }
    replaceSelection(objects);
}

void Session::selectAll() {
    AObList objects(0, 10);
    for (AObject* object : selectableObjects(*this)) objects.AddTail(object);
    replaceSelection(objects);
}

void Session::replaceSelection(AObList& objects) {
    ASelection& selection = *view().m_selection;
    selection.resetSelection(0);
    selection.addSelection(&objects, 0, 1);
}

void Session::changeLayer(const std::string& title, const std::string& change) {
    const bool eye = change == "show" || change == "hide";
    if (!eye && change != "lock" && change != "unlock")
        throw Failure{inQuotes(change) + " is no change of a layer: it is show, hide, lock or unlock"};
    const bool on = change == "hide" || change == "lock";
    bool isKnown = false;
    for (ADatabase* database : {document().getSecondaryDatabase(), &document().getDatabase()}) {
        for (ARoot* entry : database->children) {
            auto* const layer = static_cast<ALayer*>(entry);
            if (layer->getTitle().toUtf8() != title) continue;
            isKnown = true;
            if (eye)
                layer->setHidden(on);
            else
                layer->setLocked(on);
        }
    }
    if (!isKnown) throw Failure{"there is no layer " + inQuotes(title)};
    AObList leaving(0, 10);
    for (AObject* object : view().m_selection->getObjects()) {
        if (!canBeSelected(*object)) leaving.AddTail(object);
    }
    if (!leaving.IsEmpty()) view().m_selection->addSelection(&leaving, 1, 1);
    if (eye) m_shown->follow(*m_view);
}

}  // namespace app
