#include "app/window/windows/tool_bar.h"

#include <algorithm>

#include "app/window/icons.h"
#include "app/window/windows/pane.h"
#include "kzutil/utf.h"

namespace app::window {

namespace {

constexpr int kIconSide = 20;
constexpr int kColumnWidth = 190;  // at least
constexpr int kWidestColumn = 320;
constexpr int kBesideName = 44;  // of a button's width: its icon, and the edges
constexpr int kColumnRow = 28;

}  // namespace

ToolBar::~ToolBar() {
    DestroyWindow();
    destroyIcons();
}

void ToolBar::destroyIcons() {
    if (m_icons) ImageList_Destroy(m_icons);
    if (m_disabledIcons) ImageList_Destroy(m_disabledIcons);
    m_icons = m_disabledIcons = nullptr;
}

bool ToolBar::create(CWnd& parent, LPCWSTR name, UINT id) {
    const DWORD shape = m_shape == Shape::column ? TBSTYLE_LIST : 0;
    const DWORD style = WS_CHILD | WS_VISIBLE | TBSTYLE_FLAT | TBSTYLE_TOOLTIPS | CCS_NODIVIDER |
                        CCS_NORESIZE | CCS_NOPARENTALIGN | shape;
    const HWND window = CreateWindowExW(0, TOOLBARCLASSNAMEW, name, style, 0, 0, 10, 10, parent,
                                        reinterpret_cast<HMENU>(static_cast<UINT_PTR>(id)), nullptr, nullptr);
    if (!window || !SubclassWindow(window)) return false;
    SendMessage(TB_BUTTONSTRUCTSIZE, sizeof(TBBUTTON));
    return true;
}

// On the colour of a button's face: not every Windows draws transparent icons in a bar.
HIMAGELIST ToolBar::drawIcons(const Screen& screen, COLORREF color) const {
    const int side = screen.scaled(kIconSide);
    const HIMAGELIST icons = ImageList_Create(side, side, ILC_COLOR32, static_cast<int>(m_buttons.size()), 1);
    const CClientDC context(m_hWnd);
    for (const BarButton& button : m_buttons) {
        if (button.command == 0) continue;
        HBITMAP bitmap = CreateCompatibleBitmap(context, side, side);
        PaintBuffer buffer(context, side, side);
        buffer.fill({0, 0, side, side}, GetSysColor(COLOR_BTNFACE));
        buffer.flush();
        {
            ACanvas canvas(buffer.pixels());
            drawIcon(canvas, button.icon, {0, 0}, side, AColor(color));
        }
        CDC target;
        target.CreateCompatibleDC(nullptr);
        const HGDIOBJ before = target.SelectObject(bitmap);
        buffer.show(target);
        target.SelectObject(before);
        ImageList_Add(icons, bitmap, nullptr);
        ::DeleteObject(bitmap);
    }
    return icons;
}

// Wide enough for every name: in other languages some are longer.
int ToolBar::columnWidth(const Screen& screen) const {
    const CClientDC context(m_hWnd);
    const HGDIOBJ before = ::SelectObject(context, screen.font());
    int width = screen.scaled(kColumnWidth);
    for (const BarButton& button : m_buttons) {
        const kzutil::WideString name = kzutil::widen(button.name);
        SIZE size = {};
        GetTextExtentPoint32W(context, name.c_str(), static_cast<int>(name.size()), &size);
        width = std::max(width, static_cast<int>(size.cx) + screen.scaled(kBesideName));
    }
    ::SelectObject(context, before);
    return std::min(width, screen.scaled(kWidestColumn));
}

void ToolBar::show(std::vector<BarButton> buttons, const Screen& screen) {
    while (SendMessage(TB_DELETEBUTTON, 0)) {
    }
    m_buttons = std::move(buttons);
    destroyIcons();
    m_icons = drawIcons(screen, color::kIcon);
    m_disabledIcons = drawIcons(screen, color::kFaint);
    SendMessage(TB_SETIMAGELIST, 0, reinterpret_cast<LPARAM>(m_icons));
    SendMessage(TB_SETDISABLEDIMAGELIST, 0, reinterpret_cast<LPARAM>(m_disabledIcons));
    SendMessage(WM_SETFONT, reinterpret_cast<WPARAM>(screen.font()), FALSE);
    int image = 0;
    for (const BarButton& button : m_buttons) {
        TBBUTTON description = {};
        description.idCommand = button.command;
        const kzutil::WideString name = kzutil::widen(button.name);
        if (button.command == 0) {
            description.fsStyle = BTNS_SEP;
        } else {
            description.iBitmap = image++;
            description.fsState = TBSTATE_ENABLED | (m_shape == Shape::column ? TBSTATE_WRAP : 0);
            description.fsStyle = BTNS_BUTTON | BTNS_NOPREFIX;
            if (m_shape == Shape::column) description.iString = reinterpret_cast<INT_PTR>(name.c_str());
        }
        SendMessage(TB_ADDBUTTONSW, 1, reinterpret_cast<LPARAM>(&description));
    }
    const int side = screen.scaled(kIconSide);
    if (m_shape == Shape::row) {
        SendMessage(TB_SETBUTTONSIZE, 0, MAKELPARAM(side + screen.scaled(10), side + screen.scaled(10)));
        return;
    }
    const int width = columnWidth(screen);
    SendMessage(TB_SETBUTTONWIDTH, 0, MAKELPARAM(width, width));
    SendMessage(TB_SETBUTTONSIZE, 0, MAKELPARAM(width, screen.scaled(kColumnRow)));
}

void ToolBar::enable(int command, bool isEnabled) {
    if (this->isEnabled(command) != isEnabled)
        SendMessage(TB_ENABLEBUTTON, static_cast<WPARAM>(command), MAKELPARAM(isEnabled, 0));
}

bool ToolBar::isEnabled(int command) const {
    return SendMessage(TB_ISBUTTONENABLED, static_cast<WPARAM>(command)) != 0;
}

SIZE ToolBar::size() const {
    SIZE size = {0, 0};
    for (std::size_t i = 0; i < m_buttons.size(); ++i) {
        RECT rect = {};
        SendMessage(TB_GETITEMRECT, i, reinterpret_cast<LPARAM>(&rect));
        size.cx = std::max(size.cx, rect.right);
        size.cy = std::max(size.cy, rect.bottom);
    }
    return size;
}

RECT ToolBar::buttonRect(int command) const {
    RECT rect = {};
    SendMessage(TB_GETRECT, static_cast<WPARAM>(command), reinterpret_cast<LPARAM>(&rect));
    return rect;
}

bool ToolBar::giveTip(NMTTDISPINFOW& asked) {
    const auto found = std::ranges::find(m_buttons, static_cast<int>(asked.hdr.idFrom), &BarButton::command);
    if (asked.hdr.hwndFrom != tips() || found == m_buttons.end()) return false;
    // In a column the name stands beside the icon already.
    const bool isNamed = m_shape == Shape::column && !found->tip.empty();
    m_tip = kzutil::widen(isNamed              ? found->tip
                          : found->tip.empty() ? found->name
                                               : found->name + ": " + found->tip);
    asked.lpszText = m_tip.data();
    return true;
}

}  // namespace app::window
