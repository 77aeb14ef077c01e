#include "viewfilter/hide_all_except_tool.h"

#include "viewfilter/color_tool.h"

const AString AHideAllExceptTool::className(_T("AHideAllExceptTool"));

int AHideAllExceptTool::onToolStart(const AFPoint&, void* data) {
    ADocView* view = ADocView::GetActiveView();
    AReferItem* item = viewfilter::chosenItem(data);
    if (!view || !item) return viewfilter::end(*this);
    viewfilter::FilterInWork filter(*view, viewfilter::makeFilter);
    const auto condition = viewfilter::conditionOn(item);
    filter->setUniform(0);
    filter->showCondition(condition.get());
    filter.handOver();
    viewfilter::resetSelection();
    return viewfilter::endAndRedraw(*this);
}
