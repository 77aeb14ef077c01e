#include "app/state_report.h"

#include "kzcore/view/view.h"

namespace app {

using Json = nlohmann::ordered_json;

Json reportState(Session& session, const driver::Dialog* dialog) {
    if (!session.hasDocument()) {
        return {{"state",
                 {{"file", nullptr},
                  {"drawing", session.openCount()},
                  {"page", nullptr},
                  {"scale", nullptr},
                  {"objects", nullptr},
                  {"selected", nullptr},
                  {"hidden", nullptr},
                  {"selection", nullptr},
                  {"shown", nullptr},
                  {"filter", nullptr},
                  {"undo", nullptr},
                  {"redo", nullptr},
                  {"dialog", nullptr}}}};
    }
    const ADocument& document = session.document();
    ADocView& view = session.view();
    ShownDrawing& shown = session.shown();
    shown.refresh();
    const AFRect& page = document.getPage();
    return {{"state",
             {{"file", session.fileName()},
              {"drawing", session.openCount()},
              {"page", {page.left, page.top, page.Width(), page.Height()}},
              {"scale", document.getPageScale()},
              {"objects", document.getObjectCount()},
              {"selected", view.m_selection->getCount()},
              {"hidden", shown.hiddenCount()},
              {"selection", view.m_selection->getRevision()},
              {"shown", shown.revision()},
              {"filter", view.m_viewFilter != nullptr},
              {"undo", view.getHistory().canUndo()},
              {"redo", view.getHistory().canRedo()},
              {"dialog", dialog ? Json(dialog->describe().title) : Json()}}}};
}

}  // namespace app
