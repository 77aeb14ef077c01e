#include "viewfilter/view_filter_tool.h"

#include <new>

#include "viewfilter/tool_steps.h"
#include "viewfilter/view_filter_dialog.h"

using viewfilter::attributeFilterOf;

int AViewFilterTool::onToolStart() {
    const ADocView* view = ADocView::GetActiveView();
    AViewFilterDialog dialog(this, view ? attributeFilterOf(*view) : nullptr, nullptr);
    dialog.DoModal();
    viewfilter::resetSelection();
    return viewfilter::endAndRedraw(*this);
}

void AViewFilterTool::applyFilter(const AObArray& show, const AObArray& hide, int uniform, int negative) {
    ADocView* view = ADocView::GetActiveView();
    if (!view) return;
    if (uniform && !negative) return view->setViewFilter(nullptr);
    AViewAttrFilter* filter = attributeFilterOf(*view);
    if (!filter) {
        filter = new (std::nothrow) AViewAttrFilter;
        view->setViewFilter(filter);
        if (!filter) return;
    }
    filter->assign(show, hide, uniform != 0, negative != 0);
}

void AViewFilterTool::replaceFilter(AViewFilter* filter) {
    ADocView* view = ADocView::GetActiveView();
    if (view)
        view->setViewFilter(filter);
    else
        delete filter;
    redrawView(0, nullptr);
}
