#include "app/commands/commands.h"
#include "app/commands/on_file.h"
#include "app/report.h"
#include "kzcore/view/view.h"

namespace app {

namespace {

void printForPeople(const ADocView& view) {
    const ADocument& document = *view.getDocument();
    const auto& selected = view.m_selection->getObjects();
    printLine(std::to_string(selected.size()) + " of " + std::to_string(document.getObjectCount()) +
              (document.getObjectCount() == 1 ? " object selected" : " objects selected"));
    for (const AObject* object : selected) {
        std::string line = "  " + std::string(object->getNameUtf8());
        fillUp(line, 26);
        line += displayName(object->getClassInfo());
        fillUp(line, 44);
        printText(line + layerTitle(*object));
    }
}

}  // namespace

int runSelect(const SelectOptions& options) {
    const bool byColor = options.by == SelectBy::color;
    Session session;
    session.open(options.file);
    onFile(options.file, [&] {
        session.select({options.reference});
        if (!session.runTool(byColor ? "ASelectColorTool" : "ASelectSimilarTool")) {
            throw Failure{byColor ? inQuotes(options.reference) + " has no fill to go by"
                                  : "Select Similar Objects cannot start on " + inQuotes(options.reference)};
        }
    });
    if (options.json)
        printSelection(session.view());
    else
        printForPeople(session.view());
    return session.view().m_selection->getCount() == 0 ? 1 : 0;
}

}  // namespace app
