#include "app/window/windows/layer_list.h"

#include <algorithm>
#include <cstdlib>

#include "app/window/icons.h"

namespace app::window {

namespace {

constexpr int kRow = 26;
constexpr int kHead = 26;  // the title above the rows
constexpr int kIcon = 18;
constexpr int kListMargin = 8;

}  // namespace

BEGIN_MESSAGE_MAP(LayerList, Pane)
ON_WM_LBUTTONDOWN()
ON_WM_KEYDOWN()
ON_MESSAGE(WM_MOUSEWHEEL, onWheel)
END_MESSAGE_MAP()

void LayerList::show(std::vector<LayerRow> rows) {
    m_rows = std::move(rows);
    m_chosen = std::clamp(m_chosen, 0, std::max(0, static_cast<int>(m_rows.size()) - 1));
    scrollTo(m_first);
}

RECT LayerList::rectOf(int row) const {
    const int top = scaled(kHead) + (row - m_first) * scaled(kRow);
    return {0, top, client().right, top + scaled(kRow)};
}

int LayerList::shownCount() const {
    return std::max(1, static_cast<int>(client().Height() - scaled(kHead)) / scaled(kRow));
}

void LayerList::scrollTo(int first) {
    m_first = std::clamp(first, 0, std::max(0, static_cast<int>(m_rows.size()) - shownCount()));
    Invalidate(FALSE);
}

void LayerList::choose(int row) {
    m_chosen = row;
    scrollTo(std::clamp(m_first, row - shownCount() + 1, row));
}

POINT LayerList::eyeOf(int row) const {
    return {scaled(kListMargin) + scaled(kIcon) / 2, rectOf(row).top + scaled(kRow) / 2};
}

POINT LayerList::lockOf(int row) const {
    const POINT eye = eyeOf(row);
    return {eye.x + scaled(kIcon + kListMargin / 2), eye.y};
}

void LayerList::turnEye(int row) {
    const LayerRow layer = m_rows[static_cast<std::size_t>(row)];
    m_events.change(layer.name, layer.isHidden ? "show" : "hide");
}

void LayerList::turnLock(int row) {
    const LayerRow layer = m_rows[static_cast<std::size_t>(row)];
    m_events.change(layer.name, layer.isLocked ? "unlock" : "lock");
}

void LayerList::paintRow(PaintBuffer& buffer, int row) {
    const LayerRow& layer = m_rows[static_cast<std::size_t>(row)];
    RECT rect = rectOf(row);
    const bool isChosen = row == m_chosen && hasFocus();
    if (isChosen) buffer.fill(rect, GetSysColor(COLOR_HIGHLIGHT));
    const COLORREF ink = isChosen                           ? GetSysColor(COLOR_HIGHLIGHTTEXT)
                         : layer.isHidden || layer.isLocked ? GetSysColor(COLOR_GRAYTEXT)
                                                            : GetSysColor(COLOR_BTNTEXT);
    buffer.flush();
    {
        ACanvas canvas(buffer.pixels());
        const double half = scaled(kIcon) / 2.0;
        const auto icon = [&](POINT at, const char* name) {
            drawIcon(canvas, name, {at.x - half, at.y - half}, 2 * half, AColor(ink));
        };
        icon(eyeOf(row), layer.isHidden ? "hidden" : "shown");
        icon(lockOf(row), layer.isLocked ? "locked" : "unlocked");
    }
    const std::string count = std::to_string(layer.objects);
    rect.right -= scaled(kListMargin);
    buffer.text(count, rect, screen().font(), isChosen ? ink : GetSysColor(COLOR_GRAYTEXT), DT_RIGHT);
    rect.left = lockOf(row).x + scaled(kIcon) / 2 + scaled(kListMargin);
    rect.right -= scaled(7) * static_cast<int>(count.size()) + scaled(kListMargin);
    buffer.text(layer.isMaster ? layer.name + " (master)" : layer.name, rect, screen().font(), ink);
}

void LayerList::paint(PaintBuffer& buffer) {
    buffer.fill({0, 0, buffer.width(), buffer.height()}, GetSysColor(COLOR_BTNFACE));
    buffer.fill({0, 0, buffer.width(), 1}, GetSysColor(COLOR_BTNSHADOW));
    buffer.text("Layers", {scaled(kListMargin), 0, buffer.width(), scaled(kHead)}, screen().boldFont(),
                GetSysColor(COLOR_BTNTEXT));
    const int end = std::min(static_cast<int>(m_rows.size()), m_first + shownCount() + 1);
    for (int row = m_first; row < end; ++row) paintRow(buffer, row);
}

void LayerList::OnLButtonDown(UINT, CPoint point) {
    SetFocus();
    const int row = m_first + static_cast<int>(point.y - scaled(kHead)) / scaled(kRow);
    if (point.y < scaled(kHead) || row >= static_cast<int>(m_rows.size())) return;
    choose(row);
    const int reach = scaled(kIcon + kListMargin / 2) / 2;
    if (std::abs(point.x - eyeOf(row).x) < reach) return turnEye(row);
    if (std::abs(point.x - lockOf(row).x) < reach) turnLock(row);
}

void LayerList::OnKeyDown(UINT key, UINT, UINT) {
    const int last = static_cast<int>(m_rows.size()) - 1;
    if (key == VK_ESCAPE) return m_events.escape();
    if (last < 0) return;
    switch (key) {
        case VK_UP:
            choose(std::max(0, m_chosen - 1));
            break;
        case VK_DOWN:
            choose(std::min(last, m_chosen + 1));
            break;
        case VK_HOME:
            choose(0);
            break;
        case VK_END:
            choose(last);
            break;
        case VK_SPACE:
        case VK_RETURN:
            turnEye(m_chosen);
            break;
        case 'L':
            turnLock(m_chosen);
            break;
        default:
            Default();
    }
}

LRESULT LayerList::onWheel(WPARAM wParam, LPARAM) {
    scrollTo(m_first - GET_WHEEL_DELTA_WPARAM(wParam) / (WHEEL_DELTA / 3));
    return 0;
}

}  // namespace app::window
