#include "platform/headless/desk.h"

#include <algorithm>

#include "platform/headless/controls.h"

namespace headless {

Desk& desk() {
    // Never destroyed: objects that outlive main may still destroy their windows.
    static Desk* the_desk = new Desk;
    return *the_desk;
}

Desk::Desk() {
    for (const ControlClass& control : control_classes) {
        auto entry = std::make_shared<WindowClass>();
        entry->name = control.name;
        entry->procedure = control.procedure;
        entry->style = CS_DBLCLKS;
        entry->extra_bytes = control.extra_bytes;
        entry->atom = control.atom ? control.atom : ++last_atom;
        classes.push_back(std::move(entry));
    }
}

namespace {

// Null when there is no such window. Messages come in runs for one window, so the last one is remembered.
const std::shared_ptr<Window>* look_up(HWND handle) {
    Desk& all = desk();
    if (all.last_found && (*all.last_found)->handle == handle) return all.last_found;
    auto found = all.windows.find(handle);
    if (found != all.windows.end()) return all.last_found = &found->second;
    SetLastError(ERROR_INVALID_WINDOW_HANDLE);
    return nullptr;
}

}  // namespace

std::shared_ptr<Window> hold(HWND handle) {
    const std::shared_ptr<Window>* found = look_up(handle);
    return found ? *found : nullptr;
}

Window* find_window(HWND handle) {
    const std::shared_ptr<Window>* found = look_up(handle);
    return found ? found->get() : nullptr;
}

bool is_within(HWND window, HWND ancestor) {
    while (window) {
        if (window == ancestor) return true;
        Window* found = find_window(window);
        if (!found) return false;
        window = found->parent;
    }
    return false;
}

}  // namespace headless

using namespace headless;

BOOL IsWindow(HWND window) {
    return desk().windows.count(window) != 0;
}

HWND GetParent(HWND window) {
    Window* found = find_window(window);
    if (!found) return nullptr;
    if (is_child(*found)) return found->parent;
    return found->style & WS_POPUP ? found->owner : nullptr;
}

HWND GetAncestor(HWND window, UINT kind) {
    Window* found = find_window(window);
    if (!found) return nullptr;
    if (kind == GA_PARENT) return found->parent;
    while (found->parent) found = find_window(found->parent);
    return found->handle;
}

HWND SetParent(HWND window, HWND parent) {
    std::shared_ptr<Window> moved = hold(window);
    if (!moved || (parent && !IsWindow(parent)) || is_within(parent, window)) return nullptr;
    HWND before = moved->parent;
    auto& from = before ? find_window(before)->children : desk().top_level;
    from.erase(std::find(from.begin(), from.end(), window));
    auto& to = parent ? find_window(parent)->children : desk().top_level;
    to.push_back(window);
    moved->parent = parent;
    return before;
}

BOOL IsChild(HWND parent, HWND window) {
    return window != parent && IsWindow(parent) && is_within(window, parent);
}

HWND GetDlgItem(HWND parent, int id) {
    Window* found = find_window(parent);
    if (!found) return nullptr;
    for (HWND child : found->children)
        if (find_window(child)->id == id) return child;
    SetLastError(ERROR_CONTROL_ID_NOT_FOUND);
    return nullptr;
}

int GetDlgCtrlID(HWND window) {
    Window* found = find_window(window);
    return found ? static_cast<int>(found->id) : 0;
}

HWND GetWindow(HWND window, UINT relation) {
    Window* found = find_window(window);
    if (!found) return nullptr;
    if (relation == GW_OWNER) return found->owner;
    if (relation == GW_CHILD) return found->children.empty() ? nullptr : found->children.front();
    const auto& siblings = found->parent ? find_window(found->parent)->children : desk().top_level;
    auto place = std::find(siblings.begin(), siblings.end(), window);
    switch (relation) {
        case GW_HWNDFIRST:
            return siblings.front();
        case GW_HWNDLAST:
            return siblings.back();
        case GW_HWNDNEXT:
            return ++place == siblings.end() ? nullptr : *place;
        case GW_HWNDPREV:
            return place == siblings.begin() ? nullptr : *--place;
        default:
            SetLastError(ERROR_INVALID_PARAMETER);
            return nullptr;
    }
}

namespace {

bool enumerate(HWND parent, WNDENUMPROC function, LPARAM parameter) {
    Window* found = find_window(parent);
    if (!found) return true;
    const std::vector<HWND> children = found->children;  // the function may destroy some
    for (HWND child : children) {
        if (!IsWindow(child)) continue;
        if (!function(child, parameter) || !enumerate(child, function, parameter)) return false;
    }
    return true;
}

}  // namespace

BOOL EnumChildWindows(HWND parent, WNDENUMPROC function, LPARAM parameter) {
    return find_window(parent) && enumerate(parent, function, parameter);
}

LRESULT SendDlgItemMessageW(HWND parent, int id, UINT message, WPARAM wParam, LPARAM lParam) {
    HWND control = GetDlgItem(parent, id);
    return control ? SendMessageW(control, message, wParam, lParam) : 0;
}
