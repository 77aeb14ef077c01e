#include "kzcore/view/view_display.h"

#include "kzcore/view/view.h"

const std::shared_ptr<const ADisplayList>& AViewDisplay::list() {
    if (!m_list) m_list = makeDisplayList(*m_view.getDocument());
    return m_list;
}

std::shared_ptr<const AShownPaint> AViewDisplay::shown() {
    AViewFilter* const filter = m_view.m_viewFilter;
    if (!filter) return std::make_shared<AShownPaint>();
    return std::make_shared<AShownPaint>(*list(),
                                         [&](AReferItem* item) { return filter->isVisible(item) != 0; });
}
