#include "viewfilter/show_all_except_tool.h"

#include "viewfilter/color_tool.h"

const AString AShowAllExceptTool::className(_T("AShowAllExceptTool"));

// The selection stays, unlike in the tools whose name says that they hide.
int AShowAllExceptTool::onToolStart(const AFPoint&, void* data) {
    ADocView* view = ADocView::GetActiveView();
    AReferItem* item = viewfilter::chosenItem(data);
    if (!view || !item) return viewfilter::end(*this);
    viewfilter::FilterInWork filter(*view, viewfilter::makeFilterOrNull);
    if (!filter) return 0;
    const auto condition = viewfilter::conditionOn(item);
    filter->setUniform(1);
    filter->hideCondition(condition.get());
    filter.handOver();
    return viewfilter::endAndRedraw(*this);
}
