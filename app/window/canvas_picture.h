// CanvasPicture: what the window's canvas shows, as pixels: tiles that threads draw, what lies beside the page dimmed,
// selected objects marked, the rubber band.
//
//     CanvasPicture picture([&] { … });            // from any thread: a tile is there
//     picture.show(list, paint, page);
//     bool complete = picture.draw(place, image);
//
// Tiles that are not there yet are shown from other zooms, scaled. All calls come from one thread.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "app/window/viewport.h"
#include "kzcore/display/tiles.h"

namespace app::window {

struct CanvasColors {
    AColor surround, edge, mark;
};

// From one pixel to the other, as it was drawn.
struct RubberBand {
    AFPoint from, to;
};

class CanvasPicture {
public:
    explicit CanvasPicture(std::function<void()> listener) : m_listener(std::move(listener)) {}

    void show(std::shared_ptr<const ADisplayList> list, std::shared_ptr<const AShownPaint> paint);
    void showPaint(std::shared_ptr<const AShownPaint> paint);
    // Nothing is being drawn any more when it returns: the document may go.
    void showNothing() { m_tiles.reset(); }
    bool isShown() const { return m_tiles != nullptr; }

    // Boxes of selected objects, in user units.
    void setMarks(std::vector<AFRect> marks) { m_marks = std::move(marks); }

    // Fills the image, as large as the window. True when every tile was there. Raises bad_alloc.
    bool draw(const Viewport& place, const std::optional<RubberBand>& band, const CanvasColors& colors,
              AImage& image);
    // Returns when every tile that draw() asked for is there.
    void finish();

private:
    void drawSurround(ACanvas& canvas, const Viewport& place, const CanvasColors& colors) const;
    void drawMarks(ACanvas& canvas, const Viewport& place, const CanvasColors& colors) const;

    const std::function<void()> m_listener;
    std::unique_ptr<ATiles> m_tiles;
    std::vector<AFRect> m_marks;
};

}  // namespace app::window
