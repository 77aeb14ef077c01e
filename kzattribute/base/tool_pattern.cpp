#include "base/tool_pattern.h"

#include "kzcore/view/view.h"

int viewHasObjects(ATool& tool) {
    if (!tool.ATool::isValid()) return 0;
    const ADatabase* database = ADocView::GetActiveView()->m_database;
    return database && !database->isEmpty();
}
