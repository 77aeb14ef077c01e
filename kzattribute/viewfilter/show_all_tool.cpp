#include "viewfilter/show_all_tool.h"

#include "kzcore/view/view.h"
#include "viewfilter/color_tool.h"

const AString AShowAllTool::className(_T("AShowAllTool"));

// Whatever class the filter is of.
int AShowAllTool::onToolStart() {
    ADocView* view = ADocView::GetActiveView();
    if (!view) return viewfilter::end(*this);
    view->setViewFilter(nullptr);
    return viewfilter::endAndRedraw(*this);
}
