// CanvasWindow: the drawing on the screen, to be zoomed, panned and pointed at.
//
// The wheel zooms at the pointer, with Shift it pans; the middle button, or the left one with Space held, drags the
// drawing. The left button clicks, or draws a rubber band.
#pragma once

#include <atomic>
#include <functional>

#include "app/window/canvas_picture.h"
#include "app/window/windows/pane.h"

namespace app::window {

class CanvasWindow : public Pane {
public:
    // What a user did, in user units. Raise nothing.
    struct Events {
        std::function<void(AFPoint point, double reach, bool adds)> click;
        std::function<void(AFPoint from, AFPoint to, bool adds)> band;
        std::function<void()> escape;
        std::function<void()> move;  // zoomed or panned
    };

    CanvasWindow(const Screen& screen, Events events);
    ~CanvasWindow() override { DestroyWindow(); }

    CanvasPicture& picture() { return m_picture; }
    const Viewport& place() const { return m_place; }
    // Shows the whole page, in user units; `scale`: pixels to a unit at full size, on a screen of 96 dpi.
    void setPage(const AFRect& page, double scale);
    void screenChanged();

    void fit();
    void showFullSize();
    void zoomBy(double factor);
    // Clicks on what is in the middle.
    void clickMiddle(bool adds);

protected:
    void paint(PaintBuffer& buffer) override;

    void OnSize(UINT type, int width, int height);
    void OnLButtonDown(UINT flags, CPoint point);
    void OnLButtonUp(UINT flags, CPoint point);
    void OnMouseMove(UINT flags, CPoint point);
    void OnKeyDown(UINT key, UINT repeat, UINT flags);
    LRESULT onKeyUp(WPARAM key, LPARAM);
    LRESULT onMiddleDown(WPARAM, LPARAM position);
    LRESULT onMiddleUp(WPARAM, LPARAM);
    LRESULT onWheel(WPARAM wParam, LPARAM position);
    LRESULT onSidewaysWheel(WPARAM wParam, LPARAM);
    LRESULT onScrollAcross(WPARAM wParam, LPARAM);
    LRESULT onScrollDown(WPARAM wParam, LPARAM);
    LRESULT onCaptureChanged(WPARAM, LPARAM);
    LRESULT onSetCursor(WPARAM wParam, LPARAM lParam);
    LRESULT onTile(WPARAM, LPARAM);
    DECLARE_MESSAGE_MAP()

private:
    enum class Drag { none, pan, select };

    void startDrag(Drag drag, CPoint point);
    void endDrag();
    void moved();
    void showScrollBars();
    void scroll(int bar, WORD request);
    bool isBand() const;

    const Events m_events;
    Viewport m_place;
    double m_scale = 1;
    std::atomic<HWND> m_target = nullptr;  // of the messages that threads post
    std::atomic<bool> m_isPosted = false;
    Drag m_drag = Drag::none;
    CPoint m_from, m_to;
    bool m_adds = false;
    bool m_isSpaceDown = false;
    bool m_isSettingBars = false;
    CanvasPicture m_picture;  // the last member: its threads end first
};

}  // namespace app::window
