// What the four tools that show or hide one colour have in common: the filter that they work on, and the
// condition that describes the colour.
//
//     ADocView* view = ADocView::GetActiveView();
//     if (!view || !data) return end(*this);
//     FilterInWork filter(*view, makeFilter);
//     filter->hideCondition(conditionOn(data).get());
//     filter.handOver();
//     return endAndRedraw(*this);
//
// The host starts these tools on an active view with the item that the user chose. Without a view or an item
// there is nothing to do: a tool then ends and leaves view and selection alone, unless it says otherwise.
#pragma once

#include <memory>
#include <new>
#include <utility>

#include "conditions/refer_condition.h"
#include "kzcore/tool/tool.h"
#include "kzcore/view/view.h"
#include "viewfilter/view_attr_filter.h"

namespace viewfilter {

// The view's filter when it is one of ours; null for any other and for none.
inline AViewAttrFilter* attributeFilterOf(const ADocView& view) {
    return dynamic_cast<AViewAttrFilter*>(view.m_viewFilter);
}

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

    // Gives a new filter to the view, in the place of one of another class.
    void handOver() {
        if (!attributeFilterOf(m_view)) m_view.setViewFilter(m_made.release());
    }

private:
    ADocView& m_view;
    std::unique_ptr<AViewAttrFilter> m_made;
    AViewAttrFilter* m_filter;
};

// Two tools return 0 when there is no memory for a filter; the others let bad_alloc reach the host.
inline std::unique_ptr<AViewAttrFilter> makeFilter() {
    return std::make_unique<AViewAttrFilter>();
}
inline std::unique_ptr<AViewAttrFilter> makeFilterOrNull() {
    return std::unique_ptr<AViewAttrFilter>(new (std::nothrow) AViewAttrFilter);
}

// The host's data pointer is the item that the user chose.
inline AReferItem* chosenItem(void* data) {
    return static_cast<AReferItem*>(data);
}

// Without a path: it is never an entry of a tree.
inline std::unique_ptr<AReferCondition> conditionOn(AReferItem* item) {
    return std::make_unique<AReferCondition>(AString(), item);
}

// For the tools that hide: hidden objects do not stay selected.
void resetSelection();

// What a start operation returns: 1.
int end(ATool& tool);
int endAndRedraw(ATool& tool);

}  // namespace viewfilter
