#include "viewfilter/show_this_tool.h"

#include "viewfilter/color_tool.h"

const AString AShowThisTool::className(_T("AShowThisTool"));

// A colour that is visible already changes nothing, but the view is drawn anew; a filter that was made to ask
// it is not the view's then.
int AShowThisTool::onToolStart(const AFPoint&, void* data) {
    ADocView* view = ADocView::GetActiveView();
    AReferItem* item = viewfilter::chosenItem(data);
    if (!view || !item) return viewfilter::end(*this);
    viewfilter::FilterInWork filter(*view, viewfilter::makeFilterOrNull);
    if (!filter) return 0;
    if (!filter->isVisible(item)) {
        filter->showCondition(viewfilter::conditionOn(item).get());
        filter.handOver();
    }
    return viewfilter::endAndRedraw(*this);
}
