#include "platform/driver/dialog.h"

#include <algorithm>

#include "platform/afx/wnd.h"
#include "platform/driver/controls.h"
#include "platform/driver/input.h"

namespace driver {

namespace {

constexpr int kUnchecked = 1;
constexpr int kChecked = 3;
// A click changes any state to unchecked or checked: two always reach the other one.
constexpr int kMostClicks = 3;

POINT middleOf(const RECT& rect) {
    return {(rect.left + rect.right) / 2, (rect.top + rect.bottom) / 2};
}

void collectPaths(HWND tree, HTREEITEM first, const std::string& above, std::vector<std::string>& paths) {
    for (HTREEITEM item = first; item; item = nextSibling(tree, item)) {
        const std::string path = above + textOf(tree, item);
        paths.push_back(path);
        collectPaths(tree, firstChild(tree, item), path + '/', paths);
    }
}

bool isExpanded(HWND tree, HTREEITEM item) {
    return stateOf(tree, item, TVIS_EXPANDED) != 0;
}

// Scrolls until the item can be seen.
void show(HWND tree, HTREEITEM item) {
    SendMessageW(tree, TVM_ENSUREVISIBLE, 0, reinterpret_cast<LPARAM>(item));
}

bool clickPart(HWND tree, HTREEITEM item, UINT part) {
    show(tree, item);
    return driver::click(tree, item, part);
}

}  // namespace

Dialog::Dialog(CWnd& window) : m_window(&window), m_handle(window.m_hWnd) {}

bool Dialog::isOpen() const {
    return IsWindow(m_handle) && CWnd::FromHandlePermanent(m_handle) == m_window && m_window->ContinueModal();
}

void Dialog::requireOpen() const {
    if (!isOpen()) throw Error("the dialog is closed");
}

void Dialog::page(std::string_view title) {
    requireOpen();
    const std::string name(title);
    const HWND tabs = tabsOf(m_handle);
    if (!tabs) throw Error("the dialog has no pages");
    const std::vector<std::string> titles = titlesOf(tabs);
    const auto found = std::ranges::find(titles, name);
    if (found == titles.end()) failToFind("page", name, titles);
    const auto index = static_cast<WPARAM>(found - titles.begin());
    RECT tab = {};
    SendMessageW(tabs, TCM_GETITEMRECT, index, reinterpret_cast<LPARAM>(&tab));
    driver::click(tabs, middleOf(tab));
    if (isOpen() && SendMessageW(tabs, TCM_GETCURSEL, 0, 0) != static_cast<LRESULT>(index))
        throw Error("the page \"" + name + "\" cannot be shown");
}

HWND Dialog::findButton(std::string_view caption) const {
    std::vector<std::string> captions;
    for (HWND control : visibleControls(m_handle)) {
        if (!isButton(control)) continue;
        captions.push_back(captionOf(control));
        if (captions.back() == caption) return control;
    }
    failToFind("button", std::string(caption), captions);
}

void Dialog::press(std::string_view caption) {
    requireOpen();
    const HWND button = findButton(caption);
    if (!IsWindowEnabled(button)) throw Error("the button \"" + std::string(caption) + "\" is disabled");
    RECT area = {};
    GetClientRect(button, &area);
    driver::click(button, middleOf(area));
}

HWND Dialog::enabledTree() const {
    requireOpen();
    const HWND tree = visibleTree(m_handle);
    if (!tree) throw Error("the dialog shows no tree");
    if (!IsWindowEnabled(tree)) throw Error("the tree is disabled");
    return tree;
}

HTREEITEM Dialog::findItem(HWND tree, std::string_view path) const {
    HTREEITEM found = nullptr;
    for (std::string_view rest = path;;) {
        const std::size_t end = std::min(rest.find('/'), rest.size());
        const std::string_view segment = rest.substr(0, end);
        HTREEITEM item = found ? firstChild(tree, found) : firstItem(tree);
        while (item && textOf(tree, item) != segment) item = nextSibling(tree, item);
        if (!item) break;
        if (end == rest.size()) return item;
        found = item;
        rest.remove_prefix(end + 1);
    }
    std::vector<std::string> paths;
    collectPaths(tree, firstItem(tree), {}, paths);
    failToFind("item", std::string(path), paths);
}

// Opens what is collapsed above the item.
HTREEITEM Dialog::reachItem(HWND tree, std::string_view path) const {
    for (std::size_t slash = path.find('/'); slash != std::string_view::npos;
         slash = path.find('/', slash + 1)) {
        findItem(tree, path);  // so that nothing is opened for an item that is not there
        const HTREEITEM group = findItem(tree, path.substr(0, slash));
        if (!isExpanded(tree, group)) clickPart(tree, group, TVHT_ONITEMBUTTON);
    }
    return findItem(tree, path);
}

void Dialog::click(std::string_view path) {
    const HWND tree = enabledTree();
    if (!clickPart(tree, reachItem(tree, path), TVHT_ONITEMSTATEICON))
        throw Error("the check box of \"" + std::string(path) + "\" cannot be seen");
}

void Dialog::checkUntil(std::string_view path, UINT state, const char* wish) {
    const HWND tree = enabledTree();
    const HTREEITEM item = reachItem(tree, path);
    for (int clicks = 0; checkOf(tree, item) != static_cast<int>(state); ++clicks) {
        if (clicks == kMostClicks) throw Error('"' + std::string(path) + "\" cannot be " + wish);
        click(path);
        if (!isOpen()) return;
    }
}

void Dialog::check(std::string_view path) {
    checkUntil(path, kChecked, "checked");
}

void Dialog::uncheck(std::string_view path) {
    checkUntil(path, kUnchecked, "unchecked");
}

void Dialog::toggle(std::string_view path, bool expanded) {
    const HWND tree = enabledTree();
    const HTREEITEM item = reachItem(tree, path);
    const std::string name(path);
    if (!firstChild(tree, item)) throw Error("the item \"" + name + "\" has nothing below it");
    if (isExpanded(tree, item) == expanded) return;
    if (!clickPart(tree, item, TVHT_ONITEMBUTTON) || isExpanded(tree, item) != expanded)
        throw Error("the item \"" + name + "\" cannot be " + (expanded ? "expanded" : "collapsed"));
}

void Dialog::expand(std::string_view path) {
    toggle(path, true);
}

void Dialog::collapse(std::string_view path) {
    toggle(path, false);
}

void Dialog::move(int x, int y) {
    requireOpen();
    SetWindowPos(m_handle, nullptr, x, y, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    settle();
}

void Dialog::size(int width, int height) {
    requireOpen();
    if (!(GetWindowLongW(m_handle, GWL_STYLE) & static_cast<LONG>(WS_THICKFRAME)))
        throw Error("the dialog has a fixed size");
    SetWindowPos(m_handle, nullptr, 0, 0, width, height, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    settle();
}

void Dialog::cancel() {
    requireOpen();
    const HWND button = GetDlgItem(m_handle, IDCANCEL);
    if (button && IsWindowVisible(button) && IsWindowEnabled(button))
        press(captionOf(button));
    else {
        PostMessageW(m_handle, WM_CLOSE, 0, 0);
        settle();
    }
    if (isOpen()) throw Error("the dialog cannot be cancelled");
}

}  // namespace driver
