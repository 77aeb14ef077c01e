#include "app/window/windows/color_strip.h"

#include <algorithm>
#include <utility>

#include "kzutil/utf.h"

namespace app::window {

namespace {

constexpr int kSwatchSide = 28;
constexpr int kSwatchGap = 4;
constexpr int kStripMargin = 8;

APath rectangle(const RECT& rect) {
    return APath::rectangle({static_cast<double>(rect.left), static_cast<double>(rect.top),
                             static_cast<double>(rect.right), static_cast<double>(rect.bottom)});
}

void cross(ACanvas& canvas, const RECT& rect) {
    APath line;
    line.moveTo({rect.left + 3.0, rect.bottom - 3.0});
    line.lineTo({rect.right - 3.0, rect.top + 3.0});
    AStrokeStyle pen;
    pen.width = 5;
    canvas.stroke(line, AAffine(), {AColor(RGB(255, 255, 255))}, pen);
    pen.width = 2;
    canvas.stroke(line, AAffine(), {AColor(RGB(200, 0, 0))}, pen);
}

}  // namespace

BEGIN_MESSAGE_MAP(ColorStrip, Pane)
ON_WM_LBUTTONDOWN()
ON_WM_MOUSEMOVE()
ON_WM_KEYDOWN()
ON_MESSAGE(WM_MOUSEWHEEL, onWheel)
ON_MESSAGE(WM_CONTEXTMENU, onContextMenu)
ON_MESSAGE(WM_RBUTTONDOWN, onRightDown)
END_MESSAGE_MAP()

bool ColorStrip::create(CWnd& parent, UINT id) {
    if (!Pane::create(parent, L"Colors", id)) return false;
    m_tips = CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr, WS_POPUP | TTS_ALWAYSTIP | TTS_NOPREFIX,
                             0, 0, 0, 0, m_hWnd, nullptr, nullptr, nullptr);
    TTTOOLINFOW tool = {};
    tool.cbSize = TTTOOLINFOW_V1_SIZE;
    tool.uFlags = TTF_IDISHWND | TTF_SUBCLASS;
    tool.hwnd = parent;
    tool.uId = reinterpret_cast<UINT_PTR>(m_hWnd);
    tool.lpszText = LPSTR_TEXTCALLBACKW;
    ::SendMessageW(m_tips, TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
    return true;
}

const Swatch* ColorStrip::chosen() const {
    return m_chosen < 0 ? nullptr : &m_swatches[static_cast<std::size_t>(m_chosen)];
}

void ColorStrip::show(std::vector<Swatch> swatches, bool isOther) {
    const std::string before = !isOther && chosen() ? chosen()->item : "";
    m_swatches = std::move(swatches);
    const auto found = std::ranges::find(m_swatches, before, &Swatch::item);
    m_chosen =
        before.empty() || found == m_swatches.end() ? -1 : static_cast<int>(found - m_swatches.begin());
    scrollTo(isOther ? 0 : m_first);
    Invalidate(FALSE);
}

void ColorStrip::choose(int index) {
    m_chosen = index;
    if (index >= 0) scrollTo(std::clamp(m_first, index - shownCount() + 1, index));
    Invalidate(FALSE);
    m_events.choose();
}

int ColorStrip::shownCount() const {
    return std::max(
        1, static_cast<int>(client().Width() - 2 * scaled(kStripMargin)) / scaled(kSwatchSide + kSwatchGap));
}

void ColorStrip::scrollTo(int first) {
    m_first = std::clamp(first, 0, std::max(0, static_cast<int>(m_swatches.size()) - shownCount()));
    Invalidate(FALSE);
}

RECT ColorStrip::rectOf(int index) const {
    const int left = scaled(kStripMargin) + (index - m_first) * scaled(kSwatchSide + kSwatchGap);
    const int top = (height() - scaled(kSwatchSide)) / 2;
    return {left, top, left + scaled(kSwatchSide), top + scaled(kSwatchSide)};
}

int ColorStrip::indexAt(POINT point) const {
    const int step = scaled(kSwatchSide + kSwatchGap);
    const int index = m_first + static_cast<int>(point.x - scaled(kStripMargin)) / step;
    if (point.x < scaled(kStripMargin) || index >= static_cast<int>(m_swatches.size())) return -1;
    return index;
}

void ColorStrip::paintSwatch(PaintBuffer& buffer, int index) {
    const Swatch& swatch = m_swatches[static_cast<std::size_t>(index)];
    const RECT rect = rectOf(index);
    ACanvas canvas(buffer.pixels());
    AGradient gradient;
    gradient.from = {static_cast<double>(rect.left), 0};
    gradient.to = {static_cast<double>(rect.right), 0};
    for (const auto& [value, offset] : swatch.stops) gradient.stops.push_back({offset, value});
    // As the lists of the dialogs show what has no one colour.
    if (swatch.stops.empty())
        gradient.stops = {{0, AColor(RGB(0x22, 0x22, 0x22))}, {1, AColor(RGB(255, 255, 255))}};
    canvas.fill(rectangle(rect), AAffine(), {AColor(), &gradient}, EFillRule::nonZero);
    if (!swatch.isVisible) cross(canvas, rect);
}

void ColorStrip::paint(PaintBuffer& buffer) {
    buffer.fill({0, 0, buffer.width(), buffer.height()}, GetSysColor(COLOR_BTNFACE));
    buffer.fill({0, 0, buffer.width(), 1}, GetSysColor(COLOR_BTNSHADOW));
    buffer.flush();
    const int end = std::min(static_cast<int>(m_swatches.size()), m_first + shownCount() + 1);
    for (int i = m_first; i < end; ++i) {
        paintSwatch(buffer, i);
        RECT rect = rectOf(i);
        buffer.frame(rect, color::kEdge);
        if (i != m_chosen) continue;
        for (int ring = 1; ring <= scaled(2); ++ring) {
            InflateRect(&rect, 1, 1);
            buffer.frame(rect, hasFocus() ? color::kMark : color::kIcon);
        }
    }
}

void ColorStrip::OnLButtonDown(UINT, CPoint point) {
    SetFocus();
    const int index = indexAt(point);
    if (index >= 0) choose(index);
}

LRESULT ColorStrip::onRightDown(WPARAM, LPARAM position) {
    OnLButtonDown(0, CPoint(position));
    return 0;
}

void ColorStrip::OnMouseMove(UINT, CPoint point) {
    if (std::exchange(m_tipIndex, indexAt(point)) != m_tipIndex) ::SendMessageW(m_tips, TTM_POP, 0, 0);
    Default();
}

bool ColorStrip::giveTip(NMTTDISPINFOW& asked) {
    if (asked.hdr.hwndFrom != m_tips || m_tipIndex < 0 || m_tipIndex >= static_cast<int>(m_swatches.size()))
        return false;
    m_tip = kzutil::widen(m_swatches[static_cast<std::size_t>(m_tipIndex)].description());
    asked.lpszText = m_tip.data();
    return true;
}

LRESULT ColorStrip::onWheel(WPARAM wParam, LPARAM) {
    scrollTo(m_first - GET_WHEEL_DELTA_WPARAM(wParam) / (WHEEL_DELTA / 3));
    return 0;
}

// From the keyboard the place is (-1, -1): the menu then stands at the chosen colour.
LRESULT ColorStrip::onContextMenu(WPARAM, LPARAM position) {
    if (m_chosen < 0) return 0;
    CPoint at(position);
    if (at.x == -1 && at.y == -1) {
        const RECT rect = rectOf(m_chosen);
        at = CPoint(rect.left, rect.top);
        ClientToScreen(&at);
    }
    m_events.menu(at);
    return 0;
}

void ColorStrip::OnKeyDown(UINT key, UINT, UINT) {
    const int last = static_cast<int>(m_swatches.size()) - 1;
    int index = m_chosen;
    switch (key) {
        case VK_RIGHT:
        case VK_DOWN:
            ++index;
            break;
        case VK_LEFT:
        case VK_UP:
            --index;
            break;
        case VK_HOME:
            index = 0;
            break;
        case VK_END:
            index = last;
            break;
        case VK_RETURN:
        case VK_SPACE:
            onContextMenu(0, MAKELPARAM(-1, -1));
            return;
        case VK_ESCAPE:
            m_events.escape();
            return;
        default:
            Default();
            return;
    }
    if (last >= 0) choose(std::clamp(index, 0, last));
}

}  // namespace app::window
