// A running host: the application, its plug-ins and the open drawing.
#pragma once

#include <filesystem>
#include <memory>
#include <string>

#include "app/plug_ins.h"
#include "app/shown_drawing.h"
#include "kzcore/document/application.h"
#include "kzcore/document/document.h"
#include "kzcore/tool/tool.h"
#include "kzcore/view/view.h"

namespace app {

// What the user is told, as one line; the program ends with status 2.
struct Failure {
    std::string reason;
};

// The path of a name in UTF-8. Raises Failure when the name is empty or no path can be made of it.
std::filesystem::path filePath(const std::string& name);

class Session {
public:
    // Loads the plug-ins; tells on standard error which cannot be used, once in a process.
    Session();
    ~Session();
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    // Opens a drawing in place of the one before. Raises Failure, and then the one before stays open.
    void open(const std::string& file);
    // The same from memory; `name` stands for the file.
    void openBytes(std::string bytes, const std::string& name);
    // The same for what was read before; `list`: its display list, or null.
    void open(std::unique_ptr<ADocument> document, const std::string& name,
              std::shared_ptr<const ADisplayList> list);
    // What the open drawing was opened as; empty when none is open.
    const std::string& fileName() const { return m_fileName; }
    // Grows with every drawing that is opened, so that two of one name can be told apart.
    unsigned openCount() const { return m_openCount; }
    // What the view shows of the open drawing. Raises Failure when none is open.
    ShownDrawing& shown();
    bool hasDocument() const { return m_document != nullptr; }
    // Both raise Failure when no drawing is open.
    ADocument& document();
    ADocView& view();

    const PlugIns& plugIns() const { return *m_plugIns; }
    // Of an export table. Raises Failure for an unknown class.
    const APlugInTool& toolEntry(const std::string& className) const;
    // A new tool of an export table. Raises Failure for an unknown class and when there is no memory for it.
    std::unique_ptr<ATool> makeTool(const std::string& className) const;

    // Runs a tool of an export table on the open drawing: false when it is not valid. Raises Failure when
    // the tool fails.
    bool runTool(const std::string& className, AReferItem* item = nullptr);

    // Replaces the selection. Raises Failure, and changes nothing, when there is no object of one of the
    // names.
    void select(const std::vector<std::string>& names);
    // Selects whatever a user can point at.
    void selectAll();

    // Shows, hides, locks or unlocks the layers of this title, in the session alone: files keep what they say. What
    // cannot be selected any more leaves the selection. `change` is show, hide, lock or unlock. Raises Failure.
    void changeLayer(const std::string& title, const std::string& change);

private:
    // The new selection; takes what the list holds.
    void replaceSelection(AObList& objects);

    AApplication m_application;
    std::shared_ptr<const PlugIns> m_plugIns;
    std::unique_ptr<ADocument> m_document;
    std::unique_ptr<ADocView> m_view;  // gone before the plug-ins are: its filter may be one's
    std::unique_ptr<ShownDrawing> m_shown;
    std::string m_fileName;
    unsigned m_openCount = 0;
};

}  // namespace app
