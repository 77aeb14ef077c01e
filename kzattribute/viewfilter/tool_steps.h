// The steps that the tools which change a view's filter have in common.
#pragma once

#include "kzcore/tool/tool.h"
#include "kzcore/view/view.h"
#include "viewfilter/view_attr_filter.h"

namespace viewfilter {

// The view's filter when it is one of ours; null for any other and for none.
inline AViewAttrFilter* attributeFilterOf(const ADocView& view) {
    return dynamic_cast<AViewAttrFilter*>(view.m_viewFilter);
}

// Of the view that is active now: handing a filter over may have closed the one before.
inline void resetSelection() {
    if (const ADocView* view = ADocView::GetActiveView()) view->m_selection->resetSelection(1);
}

// What a start operation returns: 1.
inline int end(ATool& tool) {
    tool.notifyEnd(nullptr);
    return 1;
}
inline int endAndRedraw(ATool& tool) {
    tool.redrawView(0, nullptr);
    return end(tool);
}

}  // namespace viewfilter
