#include "app/window/windows/dialog_recorder.h"

#include <new>
#include <utility>

#include "platform/afx/geometry.h"
#include "platform/afx/modal_loop.h"
#include "platform/driver/controls.h"

namespace app::window {

namespace {

DialogRecorder* recorder = nullptr;

// From the top down to the item, as the lines of scripts name it.
std::string pathOf(HWND tree, HTREEITEM item) {
    std::string path;
    while (item) {
        const std::string text = driver::textOf(tree, item);
        path = path.empty() ? text : text + '/' + path;
        item = reinterpret_cast<HTREEITEM>(
            SendMessageW(tree, TVM_GETNEXTITEM, TVGN_PARENT, reinterpret_cast<LPARAM>(item)));
    }
    return path;
}

// Null elsewhere.
HTREEITEM itemOfBoxAt(HWND tree, LPARAM position) {
    TVHITTESTINFO test = {};
    test.pt = CPoint(position);
    SendMessageW(tree, TVM_HITTEST, 0, reinterpret_cast<LPARAM>(&test));
    return (test.flags & TVHT_ONITEMSTATEICON) != 0 ? test.hItem : nullptr;
}

}  // namespace

DialogRecorder::DialogRecorder(Note note) : m_note(std::move(note)) {
    recorder = this;
    m_sent = SetWindowsHookExW(WH_CALLWNDPROC, watchSent, nullptr, GetCurrentThreadId());
    m_posted = SetWindowsHookExW(WH_GETMESSAGE, watchPosted, nullptr, GetCurrentThreadId());
}

DialogRecorder::~DialogRecorder() {
    UnhookWindowsHookEx(m_posted);
    UnhookWindowsHookEx(m_sent);
    recorder = nullptr;
}

LRESULT CALLBACK DialogRecorder::watchSent(int code, WPARAM wParam, LPARAM lParam) {
    if (code == HC_ACTION && recorder) {
        const auto& sent = *reinterpret_cast<const CWPSTRUCT*>(lParam);
        if (sent.message == WM_COMMAND || sent.message == WM_NOTIFY)
            recorder->see(sent.hwnd, sent.message, sent.wParam, sent.lParam);
    }
    return CallNextHookEx(nullptr, code, wParam, lParam);
}

LRESULT CALLBACK DialogRecorder::watchPosted(int code, WPARAM wParam, LPARAM lParam) {
    if (code == HC_ACTION && wParam == PM_REMOVE && recorder) {
        const auto& posted = *reinterpret_cast<const MSG*>(lParam);
        recorder->see(posted.hwnd, posted.message, posted.wParam, posted.lParam);
    }
    return CallNextHookEx(nullptr, code, wParam, lParam);
}

// Nothing is raised through the system.
void DialogRecorder::see(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    const CWnd* const modal = AfxGetModalWindow();
    if (!modal || !modal->m_hWnd || !window) return;
    if (window != modal->m_hWnd && !::IsChild(modal->m_hWnd, window)) return;
    try {
        if (message == WM_COMMAND) {
            seeCommand(window, wParam, lParam);
        } else if (message == WM_NOTIFY) {
            const auto& notice = *reinterpret_cast<const NMHDR*>(lParam);
            if (notice.code != TCN_SELCHANGE) return;
            const std::vector<std::string> titles = driver::titlesOf(notice.hwndFrom);
            const auto page = static_cast<std::size_t>(SendMessageW(notice.hwndFrom, TCM_GETCURSEL, 0, 0));
            if (page < titles.size()) m_note({"page", titles[page]});
        } else if (driver::classOf(window) == "SysTreeView32") {
            seeTree(window, message, lParam);
        }
    } catch (const std::bad_alloc&) {
    }
}

// A click on a button, or a key that stands for one. Escape names no control.
void DialogRecorder::seeCommand(HWND dialog, WPARAM wParam, LPARAM lParam) {
    if (HIWORD(wParam) != BN_CLICKED) return;
    HWND button = reinterpret_cast<HWND>(lParam);
    if (!button) button = ::GetDlgItem(dialog, LOWORD(wParam));
    if (button && driver::isButton(button)) m_note({"press", driver::captionOf(button)});
}

// Of a double click, each of the two messages is a click.
void DialogRecorder::seeTree(HWND tree, UINT message, LPARAM lParam) {
    if (message != WM_LBUTTONDOWN && message != WM_LBUTTONDBLCLK) return;
    const HTREEITEM item = ::IsWindowEnabled(tree) ? itemOfBoxAt(tree, lParam) : nullptr;
    if (item) m_note({"click", pathOf(tree, item)});
}

}  // namespace app::window
