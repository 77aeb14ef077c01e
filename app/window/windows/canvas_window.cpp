#include "app/window/windows/canvas_window.h"

#include <cmath>
#include <cstring>
#include <optional>
#include <utility>

namespace app::window {

namespace {

constexpr UINT kTile = WM_APP + 1;
constexpr int kReach = 4;            // pixels that a click may miss by, and a hand may shake
constexpr double kWheelStep = 1.25;  // of one notch
constexpr int kArrowStep = 40;

AFPoint at(CPoint point) {
    return {static_cast<double>(point.x), static_cast<double>(point.y)};
}

const CanvasColors kColors{AColor(color::kSurround), AColor(color::kEdge), AColor(color::kMark)};

}  // namespace

BEGIN_MESSAGE_MAP(CanvasWindow, Pane)
ON_WM_SIZE()
ON_WM_LBUTTONDOWN()
ON_WM_LBUTTONUP()
ON_WM_MOUSEMOVE()
ON_WM_KEYDOWN()
ON_MESSAGE(WM_KEYUP, onKeyUp)
ON_MESSAGE(WM_MBUTTONDOWN, onMiddleDown)
ON_MESSAGE(WM_MBUTTONUP, onMiddleUp)
ON_MESSAGE(WM_MOUSEWHEEL, onWheel)
ON_MESSAGE(WM_MOUSEHWHEEL, onSidewaysWheel)
ON_MESSAGE(WM_HSCROLL, onScrollAcross)
ON_MESSAGE(WM_VSCROLL, onScrollDown)
ON_MESSAGE(WM_CAPTURECHANGED, onCaptureChanged)
ON_MESSAGE(WM_SETCURSOR, onSetCursor)
ON_MESSAGE(kTile, onTile)
END_MESSAGE_MAP()

// One message is on its way at a time, however many tiles come.
CanvasWindow::CanvasWindow(const Screen& screen, Events events)
    : Pane(screen), m_events(std::move(events)), m_picture([this] {
          const HWND target = m_target;
          if (target && !m_isPosted.exchange(true)) ::PostMessageW(target, kTile, 0, 0);
      }) {}

LRESULT CanvasWindow::onTile(WPARAM, LPARAM) {
    m_isPosted = false;
    Invalidate(FALSE);
    return 0;
}

void CanvasWindow::setPage(const AFRect& page, double scale) {
    endDrag();
    m_scale = scale;
    m_place.setPage(page, scale * screen().dpi() / 96);
    moved();
}

void CanvasWindow::screenChanged() {
    m_place.setFullSize(m_scale * screen().dpi() / 96);
    moved();
}

void CanvasWindow::fit() {
    m_place.fit();
    moved();
}

void CanvasWindow::showFullSize() {
    m_place.showFullSize();
    moved();
}

void CanvasWindow::zoomBy(double factor) {
    m_place.zoomBy(factor, m_place.middle());
    moved();
}

void CanvasWindow::clickMiddle(bool adds) {
    if (!m_picture.isShown()) return;
    m_events.click(m_place.toDrawing(m_place.middle()), scaled(kReach) / m_place.zoom(), adds);
}

void CanvasWindow::moved() {
    m_target = m_hWnd;
    showScrollBars();
    Invalidate(FALSE);
    m_events.move();
}

// Bars that come and go change the window's size, which asks for them again.
void CanvasWindow::showScrollBars() {
    if (m_isSettingBars || !m_hWnd) return;
    m_isSettingBars = true;
    for (const int bar : {SB_HORZ, SB_VERT}) {
        const ScrollRange range = bar == SB_HORZ ? m_place.across() : m_place.down();
        SCROLLINFO info = {};
        info.cbSize = sizeof info;
        info.fMask = SIF_RANGE | SIF_PAGE | SIF_POS | SIF_DISABLENOSCROLL;
        info.nMin = range.from;
        info.nMax = range.to - 1;
        info.nPage = static_cast<UINT>(range.length);
        info.nPos = range.position;
        SetScrollInfo(m_hWnd, bar, &info, TRUE);
    }
    m_isSettingBars = false;
}

void CanvasWindow::scroll(int bar, WORD request) {
    SCROLLINFO info = {};
    info.cbSize = sizeof info;
    info.fMask = SIF_ALL;
    GetScrollInfo(m_hWnd, bar, &info);
    const RECT area = m_place.area();
    const int page = static_cast<int>(info.nPage);
    int position = bar == SB_HORZ ? area.left : area.top;
    switch (request) {
        case SB_LINEUP:
            position -= scaled(kArrowStep);
            break;
        case SB_LINEDOWN:
            position += scaled(kArrowStep);
            break;
        case SB_PAGEUP:
            position -= page * 9 / 10;
            break;
        case SB_PAGEDOWN:
            position += page * 9 / 10;
            break;
        case SB_THUMBTRACK:
        case SB_THUMBPOSITION:
            position = info.nTrackPos;
            break;
        default:
            return;
    }
    if (bar == SB_HORZ)
        m_place.scrollTo(position, area.top);
    else
        m_place.scrollTo(area.left, position);
    moved();
}

LRESULT CanvasWindow::onScrollAcross(WPARAM wParam, LPARAM) {
    scroll(SB_HORZ, LOWORD(wParam));
    return 0;
}

LRESULT CanvasWindow::onScrollDown(WPARAM wParam, LPARAM) {
    scroll(SB_VERT, LOWORD(wParam));
    return 0;
}

void CanvasWindow::OnSize(UINT, int width, int height) {
    m_place.resize(width, height);
    moved();
}

void CanvasWindow::paint(PaintBuffer& buffer) {
    std::optional<RubberBand> band;
    if (isBand()) band = RubberBand{at(m_from), at(m_to)};
    AImage image;
    m_picture.draw(m_place, band, kColors, image);
    if (image.width() == buffer.width() && image.height() == buffer.height())
        std::memcpy(buffer.pixels().bits, image.pixels().data(),
                    image.pixels().size() * sizeof(std::uint32_t));
}

bool CanvasWindow::isBand() const {
    return m_drag == Drag::select && std::hypot(m_to.x - m_from.x, m_to.y - m_from.y) > scaled(kReach);
}

void CanvasWindow::startDrag(Drag drag, CPoint point) {
    SetFocus();
    endDrag();
    if (!m_picture.isShown()) return;
    m_drag = drag;
    m_from = m_to = point;
    ::SetCapture(m_hWnd);
}

void CanvasWindow::endDrag() {
    if (m_drag == Drag::none) return;
    m_drag = Drag::none;
    if (::GetCapture() == m_hWnd) ::ReleaseCapture();
    Invalidate(FALSE);
}

void CanvasWindow::OnLButtonDown(UINT flags, CPoint point) {
    m_adds = (flags & MK_SHIFT) != 0;
    startDrag(m_isSpaceDown ? Drag::pan : Drag::select, point);
}

void CanvasWindow::OnMouseMove(UINT, CPoint point) {
    if (m_drag == Drag::none) return;
    const CPoint before = std::exchange(m_to, point);
    if (m_drag == Drag::pan) {
        m_place.panBy(before.x - point.x, before.y - point.y);
        moved();
    }
    Invalidate(FALSE);
}

void CanvasWindow::OnLButtonUp(UINT, CPoint point) {
    if (m_drag == Drag::none) return;
    m_to = point;
    const Drag drag = m_drag;
    const bool drewBand = isBand();
    endDrag();
    if (drag != Drag::select) return;
    if (drewBand)
        m_events.band(m_place.toDrawing(at(m_from)), m_place.toDrawing(at(m_to)), m_adds);
    else
        m_events.click(m_place.toDrawing(at(m_from)), scaled(kReach) / m_place.zoom(), m_adds);
}

LRESULT CanvasWindow::onMiddleDown(WPARAM, LPARAM position) {
    startDrag(Drag::pan, CPoint(position));
    return 0;
}

LRESULT CanvasWindow::onMiddleUp(WPARAM, LPARAM) {
    if (m_drag == Drag::pan) endDrag();
    return 0;
}

LRESULT CanvasWindow::onCaptureChanged(WPARAM, LPARAM) {
    if (m_drag != Drag::none) {
        m_drag = Drag::none;
        Invalidate(FALSE);
    }
    return 0;
}

LRESULT CanvasWindow::onWheel(WPARAM wParam, LPARAM position) {
    const double notches = static_cast<double>(GET_WHEEL_DELTA_WPARAM(wParam)) / WHEEL_DELTA;
    if ((GET_KEYSTATE_WPARAM(wParam) & MK_SHIFT) != 0) {
        m_place.panBy(-notches * 2 * scaled(kArrowStep), 0);
    } else {
        CPoint point(position);  // on the screen
        ScreenToClient(&point);
        m_place.zoomBy(std::pow(kWheelStep, notches), at(point));
    }
    moved();
    return 0;
}

LRESULT CanvasWindow::onSidewaysWheel(WPARAM wParam, LPARAM) {
    const double notches = static_cast<double>(GET_WHEEL_DELTA_WPARAM(wParam)) / WHEEL_DELTA;
    m_place.panBy(notches * 2 * scaled(kArrowStep), 0);
    moved();
    return 0;
}

void CanvasWindow::OnKeyDown(UINT key, UINT, UINT) {
    const double step = scaled(kArrowStep);
    switch (key) {
        case VK_LEFT:
            m_place.panBy(-step, 0);
            break;
        case VK_RIGHT:
            m_place.panBy(step, 0);
            break;
        case VK_UP:
            m_place.panBy(0, -step);
            break;
        case VK_DOWN:
            m_place.panBy(0, step);
            break;
        case VK_PRIOR:
            m_place.panBy(0, -m_place.height() * 0.9);
            break;
        case VK_NEXT:
            m_place.panBy(0, m_place.height() * 0.9);
            break;
        case VK_SPACE:
            m_isSpaceDown = true;
            return;
        case VK_RETURN:
            return clickMiddle((GetKeyState(VK_SHIFT) & 0x8000) != 0);
        case VK_ESCAPE:
            if (m_drag != Drag::none) return endDrag();
            return m_events.escape();
        default:
            Default();
            return;
    }
    moved();
}

LRESULT CanvasWindow::onKeyUp(WPARAM key, LPARAM) {
    if (key == VK_SPACE) m_isSpaceDown = false;
    return 0;
}

LRESULT CanvasWindow::onSetCursor(WPARAM, LPARAM lParam) {
    if (LOWORD(lParam) != HTCLIENT) return Default();
    const bool pans = m_drag == Drag::pan || m_isSpaceDown;
    ::SetCursor(LoadCursorW(nullptr, pans ? IDC_SIZEALL : IDC_ARROW));
    return TRUE;
}

}  // namespace app::window
