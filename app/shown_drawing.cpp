#include "app/shown_drawing.h"

#include "kzcore/view/view.h"

namespace app {

namespace {

std::size_t countHidden(const ADisplayList& list, const AShownPaint& paint) {
    std::size_t hidden = 0;
    for (std::uint32_t object = 1; object < list.objectCount(); ++object)
        hidden += paint.shows(object) ? 0 : 1;
    return hidden;
}

}  // namespace

void ShownDrawing::follow(const ADocView& view, std::shared_ptr<const ADisplayList> list) {
    m_view = &view;
    m_display = std::make_unique<AViewDisplay>(view, std::move(list));
    m_paint = std::make_shared<AShownPaint>();
    m_filtered = false;
    m_hidden = 0;
    ++m_revision;
}

const std::shared_ptr<const AShownPaint>& ShownDrawing::paint() {
    refresh();
    return m_paint;
}

// Without a filter before and now there is nothing to compare, and no list is made for it.
bool ShownDrawing::refresh() {
    if (!m_view->m_viewFilter && !m_filtered) return false;
    m_filtered = m_view->m_viewFilter != nullptr;
    const std::shared_ptr<const AShownPaint> paint = m_display->shown();
    if (paint->changes(*list(), *m_paint).empty()) return false;
    m_paint = paint;
    m_hidden = countHidden(*list(), *m_paint);
    ++m_revision;
    return true;
}

}  // namespace app
