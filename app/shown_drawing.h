// ShownDrawing: the display list of the open drawing, and what the filter of its view shows of it, with a number
// that tells whether the picture is still the same.
//
//     ShownDrawing shown;
//     shown.follow(view);
//     AHits hits(*shown.list(), *shown.paint(), toPixels);
//     if (shown.refresh()) …   // a line has changed what there is to see
//
// Lists are made when they are first asked for. Raises bad_alloc.
#pragma once

#include <memory>

#include "kzcore/view/view_display.h"

namespace app {

class ShownDrawing {
public:
    // The view outlives it, or is followed no more. `list`: its document's, when that is made already.
    void follow(const ADocView& view, std::shared_ptr<const ADisplayList> list = nullptr);

    const std::shared_ptr<const ADisplayList>& list() { return m_display->list(); }
    const std::shared_ptr<const AShownPaint>& paint();

    // Asks the filter anew. True when the picture is another one than before.
    bool refresh();
    // Grows with every change that refresh() tells of.
    unsigned revision() const { return m_revision; }
    // How many objects have paint of which the filter shows nothing.
    std::size_t hiddenCount() const { return m_hidden; }

private:
    const ADocView* m_view = nullptr;
    std::unique_ptr<AViewDisplay> m_display;
    std::shared_ptr<const AShownPaint> m_paint;
    bool m_filtered = false;  // when it was last asked
    unsigned m_revision = 0;
    std::size_t m_hidden = 0;
};

}  // namespace app
