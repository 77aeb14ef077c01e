#include "viewfilter/hide_this_tool.h"

#include "viewfilter/color_tool.h"

const AString AHideThisTool::className(_T("AHideThisTool"));

// The only one of the tools that refuses to start without a view. A colour that is hidden already leaves the
// filter as it is; the selection goes all the same.
int AHideThisTool::onToolStart(const AFPoint&, void* data) {
    ADocView* view = ADocView::GetActiveView();
    if (!view) return 0;
    AReferItem* item = viewfilter::chosenItem(data);
    if (!item) return viewfilter::end(*this);
    viewfilter::FilterInWork filter(*view, viewfilter::makeFilter);
    if (filter->isVisible(item)) {
        filter->hideCondition(viewfilter::conditionOn(item).get());
        filter.handOver();
    }
    viewfilter::resetSelection();
    return viewfilter::endAndRedraw(*this);
}
