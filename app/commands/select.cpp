#include "app/commands/commands.h"
#include "app/commands/drawings.h"
#include "app/commands/on_file.h"
#include "app/guarded_author.h"
#include "app/report.h"
#include "kzcore/view/view.h"

namespace app {

namespace {

void printForPeople(const ADocView& view, const std::string& lead) {
    const ADocument& document = *view.getDocument();
    const auto& selected = view.m_selection->getObjects();
    printText(lead + std::to_string(selected.size()) + " of " + std::to_string(document.getObjectCount()) +
              (document.getObjectCount() == 1 ? " object selected" : " objects selected"));
    for (const AObject* object : selected) {
        std::string line = "  " + std::string(object->getNameUtf8());
        fillUp(line, 26);
        line += displayName(object->getClassInfo());
        fillUp(line, 44);
        printText(line + layerTitle(*object));
    }
}

// Ticks what is asked for, as a user does.
void tick(driver::Dialog& sheet, const SelectOptions& options) {
    if (!options.within.empty()) sheet.press("Selection only");
    for (const std::string& entry : options.where) {
        const std::size_t slash = entry.find('/');
        if (slash == std::string::npos)
            throw Failure{inQuotes(entry) + " is no entry of a page: it is written PAGE/PATH"};
        sheet.page(entry.substr(0, slash));
        sheet.check(entry.substr(slash + 1));
    }
    sheet.press("OK");
}

void selectByAttributes(Session& session, const SelectOptions& options) {
    if (!options.within.empty()) session.select(options.within);
    GuardedAuthor author([&options](driver::Dialog& sheet) {
        tick(sheet, options);
        return true;
    });
    {
        const driver::Driver user(author.asAuthor());
        if (!session.runTool("ASelectByAttrTool")) throw Failure{"there is no object to select"};
    }
    author.rethrow();
}

void selectByObject(Session& session, const SelectOptions& options) {
    const bool byColor = options.by == SelectBy::color;
    session.select({options.reference});
    if (!session.runTool(byColor ? "ASelectColorTool" : "ASelectSimilarTool")) {
        throw Failure{byColor ? inQuotes(options.reference) + " has no fill to go by"
                              : "Select Similar Objects cannot start on " + inQuotes(options.reference)};
    }
}

int select(const SelectOptions& options, const std::string& file) {
    Session session;
    session.open(file);
    onFile(file, [&] {
        if (options.by == SelectBy::attributes)
            selectByAttributes(session, options);
        else
            selectByObject(session, options);
    });
    if (options.json)
        printSelection(session.view(), headOf(options.files, file));
    else
        printForPeople(session.view(), leadOf(options.files, file));
    return session.view().m_selection->getCount() == 0 ? 1 : 0;
}

}  // namespace

int runSelect(const SelectOptions& options) {
    return onEachDrawing(options.files, options.json,
                         [&](std::size_t i) { return select(options, options.files[i]); });
}

}  // namespace app
