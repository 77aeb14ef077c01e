#include "viewfilter/color_tool.h"

namespace viewfilter {

void resetSelection() {
    if (const ADocView* view = ADocView::GetActiveView()) view->m_selection->resetSelection(1);
}

int end(ATool& tool) {
    tool.notifyEnd(nullptr);
    return 1;
}

int endAndRedraw(ATool& tool) {
    tool.redrawView(0, nullptr);
    return end(tool);
}

}  // namespace viewfilter
