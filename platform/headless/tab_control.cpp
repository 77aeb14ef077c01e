// The tab control. Tabs stand in rows, the chosen one's next to the pages; rows are filled evenly and then
// widened to the control's width.
#include <algorithm>
#include <span>

#include "platform/headless/controls.h"
#include "platform/headless/desk.h"
#include "platform/headless/guard.h"
#include "platform/headless/include/winapi/tree_view.h"

using namespace headless;

namespace {

constexpr int tab_height = 18;
constexpr int least_width = 54;
constexpr int character_width = 6;
constexpr int text_padding = 6;
// Of the tabs from the control's edges, and of the pages' area from theirs.
constexpr int outer_gap = 2;
constexpr int page_gap = 4;

struct Tab {
    std::u16string text;
    LPARAM parameter = 0;
    int row = 0;  // 0: next to the pages
    int left = 0;
    int width = 0;
};

struct Tabs : ControlState {
    std::vector<Tab> tabs;
    int selected = -1;
    int rows = 0;
    WPARAM font = 0;
};

int natural_width(const Tab& tab) {
    return std::max(static_cast<int>(tab.text.size()) * character_width + 2 * text_padding, least_width);
}

int rows_needed(const Tabs& control, int room) {
    int rows = control.tabs.empty() ? 0 : 1;
    int right = 0;
    for (const Tab& tab : control.tabs) {
        if (right > 0 && right + natural_width(tab) > room) {
            ++rows;
            right = 0;
        }
        right += natural_width(tab);
    }
    return rows;
}

void place_row(std::span<Tab> tabs, int row, int room, bool widen) {
    int spare = room;
    for (const Tab& tab : tabs) spare -= natural_width(tab);
    const int extra = widen ? spare / static_cast<int>(tabs.size()) : 0;
    int left = outer_gap;
    for (Tab& tab : tabs) {
        tab.row = row;
        tab.left = left;
        tab.width = natural_width(tab) + extra;
        left += tab.width;
    }
    // The last one reaches the edge.
    if (widen) tabs.back().width += room + outer_gap - left;
}

void lay_out(const Window& window, Tabs& control) {
    const bool several = (window.style & TCS_MULTILINE) != 0;
    const int room = client_size(window).cx - 2 * outer_gap;
    control.rows =
        several ? rows_needed(control, room) : std::min<int>(static_cast<int>(control.tabs.size()), 1);
    const int count = static_cast<int>(control.tabs.size());
    std::span<Tab> rest = control.tabs;
    for (int row = 0; row < control.rows; ++row) {
        const int size = count / control.rows + (row < count % control.rows ? 1 : 0);
        place_row(rest.first(static_cast<std::size_t>(size)), row, room, control.rows > 1);
        rest = rest.subspan(static_cast<std::size_t>(size));
    }
    if (control.selected < 0 || control.selected >= count) return;
    const int chosen = control.tabs[static_cast<std::size_t>(control.selected)].row;
    for (Tab& tab : control.tabs) {
        if (tab.row == chosen)
            tab.row = 0;
        else if (tab.row < chosen)
            ++tab.row;
    }
}

Tab* tab_at(Tabs& control, WPARAM index) {
    return index < control.tabs.size() ? &control.tabs[index] : nullptr;
}

RECT rect_of(const Tabs& control, const Tab& tab) {
    const int top = outer_gap + (control.rows - 1 - tab.row) * tab_height;
    return {tab.left, top, tab.left + tab.width, top + tab_height};
}

int hit(const Tabs& control, POINT point) {
    for (std::size_t i = 0; i < control.tabs.size(); ++i) {
        const RECT rect = rect_of(control, control.tabs[i]);
        if (PtInRect(&rect, point)) return static_cast<int>(i);
    }
    return -1;
}

LRESULT insert(const Window& window, Tabs& control, WPARAM index, const TCITEMW& item) {
    return guarded([&]() -> LRESULT {
               Tab tab;
               if ((item.mask & TCIF_TEXT) && item.pszText) tab.text = item.pszText;
               if (item.mask & TCIF_PARAM) tab.parameter = item.lParam;
               const std::size_t place = std::min<std::size_t>(index, control.tabs.size());
               control.tabs.insert(control.tabs.begin() + static_cast<std::ptrdiff_t>(place), std::move(tab));
               if (control.selected < 0) control.selected = 0;
               lay_out(window, control);
               return static_cast<LRESULT>(place) + 1;
           }) -
           1;
}

LRESULT remove(const Window& window, Tabs& control, WPARAM index) {
    if (!tab_at(control, index)) return FALSE;
    control.tabs.erase(control.tabs.begin() + static_cast<std::ptrdiff_t>(index));
    control.selected = std::min(control.selected, static_cast<int>(control.tabs.size()) - 1);
    lay_out(window, control);
    return TRUE;
}

LRESULT get_item(Tabs& control, WPARAM index, TCITEMW& item) {
    const Tab* tab = tab_at(control, index);
    if (!tab) return FALSE;
    if (item.mask & TCIF_PARAM) item.lParam = tab->parameter;
    if ((item.mask & TCIF_TEXT) && item.pszText && item.cchTextMax > 0) {
        const std::size_t length = std::min(tab->text.size(), static_cast<std::size_t>(item.cchTextMax) - 1);
        std::copy_n(tab->text.data(), length, item.pszText);
        item.pszText[length] = 0;
    }
    return TRUE;
}

LRESULT select(const Window& window, Tabs& control, int index) {
    const int before = control.selected;
    if (index < -1 || index >= static_cast<int>(control.tabs.size())) return -1;
    control.selected = index;
    lay_out(window, control);
    return before;
}

LRESULT adjust(const Tabs& control, bool larger, RECT& rect) {
    const int top = control.rows * tab_height + page_gap;
    const int sign = larger ? -1 : 1;
    rect = {rect.left + sign * page_gap, rect.top + sign * top, rect.right - sign * page_gap,
            rect.bottom - sign * page_gap};
    return 0;
}

LRESULT tell_parent(const Window& window, UINT code) {
    NMHDR header = {window.handle, static_cast<UINT_PTR>(window.id), code};
    return SendMessageW(window.parent, WM_NOTIFY, header.idFrom, reinterpret_cast<LPARAM>(&header));
}

void press(const std::shared_ptr<Window>& window, Tabs& control, POINT point) {
    const HWND handle = window->handle;
    if (!(window->style & TCS_FOCUSNEVER)) SetFocus(handle);
    if (!IsWindow(handle)) return;
    const int index = hit(control, point);
    if (index < 0 || index == control.selected) return;
    if (tell_parent(*window, TCN_SELCHANGING) || !IsWindow(handle)) return;
    select(*window, control, index);
    tell_parent(*window, TCN_SELCHANGE);
}

}  // namespace

LRESULT headless::tab_procedure(HWND handle, UINT message, WPARAM wParam, LPARAM lParam) {
    const std::shared_ptr<Window> window = hold(handle);
    if (!window) return 0;
    if (message == WM_NCCREATE) window->state = guarded([] { return std::make_unique<Tabs>(); });
    auto* control = dynamic_cast<Tabs*>(window->state.get());
    if (!control) return message == WM_NCCREATE ? FALSE : DefWindowProcW(handle, message, wParam, lParam);
    switch (message) {
        case TCM_GETITEMCOUNT:
            return static_cast<LRESULT>(control->tabs.size());
        case TCM_INSERTITEMW:
            return insert(*window, *control, wParam, *reinterpret_cast<const TCITEMW*>(lParam));
        case TCM_DELETEITEM:
            return remove(*window, *control, wParam);
        case TCM_GETITEMW:
            return get_item(*control, wParam, *reinterpret_cast<TCITEMW*>(lParam));
        case TCM_GETITEMRECT: {
            const Tab* tab = tab_at(*control, wParam);
            if (tab) *reinterpret_cast<RECT*>(lParam) = rect_of(*control, *tab);
            return tab != nullptr;
        }
        case TCM_GETCURSEL:
            return control->selected;
        case TCM_SETCURSEL:
            return select(*window, *control, static_cast<int>(wParam));
        case TCM_HITTEST: {
            auto& test = *reinterpret_cast<TCHITTESTINFO*>(lParam);
            const int index = hit(*control, test.pt);
            test.flags = index < 0 ? TCHT_NOWHERE : TCHT_ONITEM;
            return index;
        }
        case TCM_ADJUSTRECT:
            return adjust(*control, wParam != 0, *reinterpret_cast<RECT*>(lParam));
        case TCM_GETROWCOUNT:
            return control->rows;
        case WM_LBUTTONDOWN:
        case WM_LBUTTONDBLCLK:
            press(window, *control,
                  {static_cast<std::int16_t>(LOWORD(lParam)), static_cast<std::int16_t>(HIWORD(lParam))});
            return 0;
        case WM_LBUTTONUP:
            tell_parent(*window, NM_CLICK);
            return 0;
        case WM_SIZE:
            lay_out(*window, *control);
            return 0;
        case WM_GETDLGCODE:
            return DLGC_WANTARROWS | DLGC_WANTCHARS;
        case WM_SETFONT:
            control->font = wParam;
            return 0;
        case WM_GETFONT:
            return static_cast<LRESULT>(control->font);
        default:
            return DefWindowProcW(handle, message, wParam, lParam);
    }
}
