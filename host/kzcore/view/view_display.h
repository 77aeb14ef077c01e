// AViewDisplay: the display list of a view's document, and what the view's filter shows of it.
//
//     AViewDisplay display(view);
//     AImage picture = drawTiled(*display.list(), *display.shown(), toPixels, width, height, 512);
//
// The list is made when it is first asked for, so that whoever draws nothing pays nothing.
#pragma once

#include "kzcore/display/hits.h"

class ADocView;

class AViewDisplay {
public:
    // The view outlives it. `list`: when it is made already.
    explicit AViewDisplay(const ADocView& view, std::shared_ptr<const ADisplayList> list = nullptr)
        : m_view(view), m_list(std::move(list)) {}

    // Raises bad_alloc.
    const std::shared_ptr<const ADisplayList>& list();
    // Asks the filter, once about every item. Raises bad_alloc, and what the filter raises.
    std::shared_ptr<const AShownPaint> shown();

private:
    const ADocView& m_view;
    std::shared_ptr<const ADisplayList> m_list;
};
