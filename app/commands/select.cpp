#include "app/commands/commands.h"
#include "app/report.h"
#include "kzcore/view.h"

namespace app {

namespace {

void printForPeople(ADocument& document) {
    const auto& selected = document.getView().m_selection->getObjects();
    printLine(std::to_string(selected.size()) + " of " + std::to_string(document.getObjectCount()) +
              (document.getObjectCount() == 1 ? " object selected" : " objects selected"));
    for (const AObject* object : selected) {
        std::string line = "  " + std::string(object->getNameUtf8());
        line.resize(std::max<std::size_t>(line.size() + 1, 26), ' ');
        line += displayName(object->getClassInfo());
        line.resize(std::max<std::size_t>(line.size() + 1, 44), ' ');
        printLine(line + layerTitle(*object));
    }
}

}  // namespace

int runSelect(const SelectOptions& options) {
    Session session;
    session.open(options.file);
    session.select({options.similarTo});
    if (!session.runTool("ASelectSimilarTool"))
        throw Failure{"Select Similar Objects cannot start on \"" + options.similarTo + "\""};
    if (options.json)
        printSelection(session.document());
    else
        printForPeople(session.document());
    return session.document().getView().m_selection->getCount() == 0 ? 1 : 0;
}

}  // namespace app
