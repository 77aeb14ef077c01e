#include "viewfilter/color_tools.h"

#include <memory>
#include <new>

#include "conditions/refer_condition.h"
#include "viewfilter/tool_steps.h"

using viewfilter::attributeFilterOf;
using viewfilter::end;
using viewfilter::endAndRedraw;
using viewfilter::resetSelection;

namespace {

// The view's own filter, changed in place, or a new one that is the view's once it is handed over.
class FilterInWork {
public:
    // `make` gives a new filter, or null, and is called only when the view has none of ours.
    template <class Make>
    FilterInWork(ADocView& view, Make make) : m_view(view), m_filter(attributeFilterOf(view)) {
        if (m_filter) return;
        m_made = make();
        m_filter = m_made.get();
    }

    // False when there was no memory for a new filter.
    explicit operator bool() const { return m_filter != nullptr; }
    AViewAttrFilter* operator->() const { return m_filter; }

    // Gives a new filter to the view, in the place of one of another class. The view is asked again: it may
    // have got one of ours meanwhile.
    void handOver() {
        if (!attributeFilterOf(m_view)) m_view.setViewFilter(m_made.release());
    }

private:
    ADocView& m_view;
    std::unique_ptr<AViewAttrFilter> m_made;
    AViewAttrFilter* m_filter;
};

// The tools that hide let bad_alloc reach the host, the others return 0.
std::unique_ptr<AViewAttrFilter> makeFilter() {
    return std::make_unique<AViewAttrFilter>();
}
std::unique_ptr<AViewAttrFilter> makeFilterOrNull() {
    return std::unique_ptr<AViewAttrFilter>(new (std::nothrow) AViewAttrFilter);
}

// The host's data pointer is the item that the user chose.
AReferItem* chosenItem(void* data) {
    return static_cast<AReferItem*>(data);
}

// Without a path: it is never an entry of a tree.
std::unique_ptr<AReferCondition> conditionOn(AReferItem* item) {
    return std::make_unique<AReferCondition>(AString(), item);
}

}  // namespace

int AShowAllTool::onToolStart() {
    ADocView* view = ADocView::GetActiveView();
    if (!view) return end(*this);
    view->setViewFilter(nullptr);
    return endAndRedraw(*this);
}

int AShowAllExceptTool::onToolStart(const AFPoint&, void* data) {
    ADocView* view = ADocView::GetActiveView();
    AReferItem* item = chosenItem(data);
    if (!view || !item) return end(*this);
    FilterInWork filter(*view, makeFilterOrNull);
    if (!filter) return 0;
    auto condition = conditionOn(item);
    filter->setUniform(1);
    filter->hideCondition(condition.get());
    condition.reset();
    filter.handOver();
    return endAndRedraw(*this);
}

// A colour that is visible already changes nothing, but the view is drawn anew; a filter that was made to ask
// it is not the view's then.
int AShowThisTool::onToolStart(const AFPoint&, void* data) {
    ADocView* view = ADocView::GetActiveView();
    AReferItem* item = chosenItem(data);
    if (!view || !item) return end(*this);
    FilterInWork filter(*view, makeFilterOrNull);
    if (!filter) return 0;
    if (!filter->isVisible(item)) {
        filter->showCondition(conditionOn(item).get());
        filter.handOver();
    }
    return endAndRedraw(*this);
}

// A colour that is hidden already leaves the filter as it is; the selection goes all the same.
int AHideThisTool::onToolStart(const AFPoint&, void* data) {
    ADocView* view = ADocView::GetActiveView();
    if (!view) return 0;
    AReferItem* item = chosenItem(data);
    if (!item) return end(*this);
    FilterInWork filter(*view, makeFilter);
    if (filter->isVisible(item)) {
        filter->hideCondition(conditionOn(item).get());
        filter.handOver();
    }
    resetSelection();
    return endAndRedraw(*this);
}

int AHideAllExceptTool::onToolStart(const AFPoint&, void* data) {
    ADocView* view = ADocView::GetActiveView();
    AReferItem* item = chosenItem(data);
    if (!view || !item) return end(*this);
    FilterInWork filter(*view, makeFilter);
    auto condition = conditionOn(item);
    filter->setUniform(0);
    filter->showCondition(condition.get());
    condition.reset();
    filter.handOver();
    resetSelection();
    return endAndRedraw(*this);
}
