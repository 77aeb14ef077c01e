// MainWindow: its panes, where they stand, and what the two bars hold.
#include <algorithm>
#include <utility>

#include "app/report.h"
#include "app/window/icons.h"
#include "app/window/windows/main_window.h"

namespace app::window {

namespace {

enum PaneId : UINT { kCommandBarId = 1, kToolColumnId, kCanvasId, kStripId, kLayersId, kBadgeId, kStatusId };

constexpr int kLeastSideWidth = 206;
constexpr int kBadgeWidth = 128;
constexpr int kBadgeHeight = 24;
constexpr int kPaneGap = 6;

struct BarCommand {
    int command;
    const char* icon;
};
constexpr BarCommand kBarCommands[] = {
    {kOpen, "open"},   {kSave, "save"},     {0, ""},       {kUndo, "undo"},     {kRedo, "redo"}, {0, ""},
    {kZoomIn, "plus"}, {kZoomOut, "minus"}, {kFit, "fit"}, {kFullSize, "full"},
};

APath pill(const RECT& rect) {
    const double radius = (rect.bottom - rect.top) / 2.0;
    const double k = radius * 0.5523;  // of a quarter of a circle
    const double l = rect.left, t = rect.top, r = rect.right, b = rect.bottom;
    APath path;
    path.moveTo({l + radius, t});
    path.lineTo({r - radius, t});
    path.curveTo({r - radius + k, t}, {r, t + radius - k}, {r, t + radius});
    path.curveTo({r, b - radius + k}, {r - radius + k, b}, {r - radius, b});
    path.lineTo({l + radius, b});
    path.curveTo({l + radius - k, b}, {l, b - radius + k}, {l, b - radius});
    path.curveTo({l, t + radius - k}, {l + radius - k, t}, {l + radius, t});
    path.close();
    return path;
}

}  // namespace

void MainWindow::showIcon() {
    const HICON before = std::exchange(m_icon, makeProgramIcon(m_screen.scaled(32)));
    for (const WPARAM kind : {ICON_BIG, ICON_SMALL})
        SendMessage(WM_SETICON, kind, reinterpret_cast<LPARAM>(m_icon));
    if (before) DestroyIcon(before);
}

bool MainWindow::createPanes() {
    const INITCOMMONCONTROLSEX classes = {sizeof classes,
                                          ICC_BAR_CLASSES | ICC_PROGRESS_CLASS | ICC_WIN95_CLASSES};
    InitCommonControlsEx(&classes);
    m_badge =
        CreateWindowExW(0, L"Button", L"Filter on: clear it", WS_CHILD | BS_OWNERDRAW, 0, 0, 10, 10, m_hWnd,
                        reinterpret_cast<HMENU>(static_cast<UINT_PTR>(kBadgeId)), nullptr, nullptr);
    m_status =
        CreateWindowExW(0, STATUSCLASSNAMEW, L"", WS_CHILD | WS_VISIBLE | SBARS_SIZEGRIP, 0, 0, 10, 10,
                        m_hWnd, reinterpret_cast<HMENU>(static_cast<UINT_PTR>(kStatusId)), nullptr, nullptr);
    if (!m_badge || !m_status || !m_commandBar.create(*this, L"Drawing", kCommandBarId) ||
        !m_toolColumn.create(*this, L"Tools", kToolColumnId) ||
        !m_canvas.create(*this, L"Drawing", kCanvasId, WS_HSCROLL | WS_VSCROLL) ||
        !m_strip.create(*this, kStripId) || !m_layers.create(*this, L"Layers", kLayersId))
        return false;
    const nlohmann::ordered_json report = reportTools(m_session);
    for (const auto& tool : report["tools"]) {
        m_tools.push_back({tool["name"], false});
        m_toolTips.push_back(tool["description"]);
    }
    showBars();
    return true;
}

// Again on every screen of another density.
void MainWindow::showBars() {
    showIcon();
    ::SendMessageW(m_status, WM_SETFONT, reinterpret_cast<WPARAM>(m_screen.font()), FALSE);
    const std::vector<Menu> all = menus({});
    std::vector<BarButton> buttons;
    for (const BarCommand& one : kBarCommands) {
        const MenuEntry* const entry = one.command == 0 ? nullptr : findEntry(all, one.command);
        std::string name = entry ? plainCaption(entry->caption) : "";
        if (entry && !entry->keys.empty()) name += " (" + entry->keys + ")";
        buttons.push_back({one.command, one.icon, name, ""});
    }
    m_commandBar.show(std::move(buttons), m_screen);
    std::vector<BarButton> tools;
    const auto& entries = m_session.plugIns().tools();
    for (std::size_t i = 0; i < m_tools.size(); ++i) {
        tools.push_back({kFirstTool + static_cast<int>(i), entries[i].className.toUtf8(), m_tools[i].name,
                         m_toolTips[i]});
    }
    m_toolColumn.show(std::move(tools), m_screen);
}

void MainWindow::layOut() {
    if (!m_status) return;
    ::SendMessageW(m_status, WM_SIZE, 0, 0);
    RECT client, status;
    GetClientRect(&client);
    ::GetWindowRect(m_status, &status);
    const int gap = m_screen.scaled(kPaneGap);
    const int bottom = static_cast<int>(client.bottom - (status.bottom - status.top));
    const int sideWidth =
        std::max(m_screen.scaled(kLeastSideWidth), static_cast<int>(m_toolColumn.size().cx) + 2 * gap);
    const int side = m_showsLayers ? sideWidth : 0;
    const int barHeight = static_cast<int>(m_commandBar.size().cy) + gap;
    const int badgeWidth = m_screen.scaled(kBadgeWidth), badgeHeight = m_screen.scaled(kBadgeHeight);
    const int stripTop = bottom - m_strip.height();
    const int toolsHeight = static_cast<int>(m_toolColumn.size().cy) + gap;
    const auto length = [](int from, int to) { return to > from ? to - from : 0; };
    m_commandBar.MoveWindow(gap, gap / 2, length(3 * gap + badgeWidth, client.right), barHeight - gap / 2);
    ::MoveWindow(m_badge, client.right - badgeWidth - gap, (barHeight - badgeHeight) / 2, badgeWidth,
                 badgeHeight, TRUE);
    m_toolColumn.ShowWindow(m_showsLayers ? SW_SHOW : SW_HIDE);
    m_layers.ShowWindow(m_showsLayers ? SW_SHOW : SW_HIDE);
    m_toolColumn.MoveWindow(gap, barHeight, length(gap, side), toolsHeight);
    m_layers.MoveWindow(0, barHeight + toolsHeight, side, length(barHeight + toolsHeight, stripTop));
    m_canvas.MoveWindow(side, barHeight, length(side, client.right), length(barHeight, stripTop));
    m_strip.MoveWindow(0, stripTop, client.right, m_strip.height());
    const int part = m_screen.scaled(110);
    const int width = static_cast<int>(client.right);
    const int parts[] = {width - 4 * part - gap, width - 3 * part - gap, width - 2 * part - gap,
                         width - part - gap, -1};
    ::SendMessageW(m_status, SB_SETPARTS, std::size(parts), reinterpret_cast<LPARAM>(parts));
}

void MainWindow::OnSize(UINT, int, int) {
    layOut();
    showHead();
}

void MainWindow::OnGetMinMaxInfo(MINMAXINFO* sizes) {
    sizes->ptMinTrackSize = {m_screen.scaled(640), m_screen.scaled(520)};
}

// The badge.
LRESULT MainWindow::onDrawItem(WPARAM, LPARAM lParam) {
    const auto& item = *reinterpret_cast<const DRAWITEMSTRUCT*>(lParam);
    if (item.hwndItem != m_badge) return FALSE;
    const RECT& rect = item.rcItem;
    PaintBuffer buffer(item.hDC, rect.right, rect.bottom);
    buffer.fill(rect, GetSysColor(COLOR_BTNFACE));
    buffer.flush();
    const int side = m_screen.scaled(10);
    const double middle = rect.bottom / 2.0;
    {
        ACanvas canvas(buffer.pixels());
        const APath shape = pill({1, 1, rect.right - 1, rect.bottom - 1});
        AStrokeStyle pen;
        pen.width = (item.itemState & ODS_SELECTED) != 0 ? 2 : 1;
        canvas.fill(shape, AAffine(), {AColor(color::kBadge)}, EFillRule::nonZero);
        canvas.stroke(shape, AAffine(), {AColor(color::kBadgeEdge)}, pen);
        drawIcon(canvas, "close", {rect.right - 2.0 * side, middle - side / 2.0}, side, AColor(color::kIcon));
    }
    RECT text = rect;
    text.left += side;
    text.right -= 2 * side;
    buffer.text("Filter on", text, m_screen.boldFont(), color::kIcon);
    buffer.show(item.hDC);
    return TRUE;
}

}  // namespace app::window
