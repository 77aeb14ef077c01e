// A message's way: window procedure, object, message map, handler, and the window's procedure from before.
#include "platform/afx/window_state.h"

const AFX_MSGMAP* CWnd::GetThisMessageMap() {
    static const AFX_MSGMAP_ENTRY entries[] = {{0, 0, 0, 0, nullptr}};
    static const AFX_MSGMAP map = {nullptr, entries};
    return &map;
}

const AFX_MSGMAP* CWnd::GetMessageMap() const {
    return GetThisMessageMap();
}

const AFX_MSGMAP_ENTRY* AfxFindMessageEntry(const AFX_MSGMAP* map, UINT message, UINT code, UINT id) {
    for (; map; map = map->base ? map->base() : nullptr) {
        for (const AFX_MSGMAP_ENTRY* entry = map->entries; entry->handler; ++entry) {
            if (entry->nMessage == message && entry->nCode == code && entry->nID <= id &&
                id <= entry->nLastID)
                return entry;
        }
    }
    return nullptr;
}

LRESULT CWnd::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    LRESULT result = 0;
    return OnWndMsg(message, wParam, lParam, &result) ? result : DefWindowProc(message, wParam, lParam);
}

BOOL CWnd::OnWndMsg(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) {
    if (message == WM_COMMAND) return OnCommand(wParam, lParam);
    if (message == WM_NOTIFY) return OnNotify(wParam, lParam, result);
    const AFX_MSGMAP_ENTRY* entry = AfxFindMessageEntry(GetMessageMap(), message, 0, 0);
    if (!entry) return FALSE;
    *result = entry->handler(*this, wParam, lParam);
    return TRUE;
}

BOOL CWnd::OnCommand(WPARAM wParam, LPARAM lParam) {
    const AFX_MSGMAP_ENTRY* entry =
        AfxFindMessageEntry(GetMessageMap(), WM_COMMAND, HIWORD(wParam), LOWORD(wParam));
    if (!entry) return FALSE;
    entry->handler(*this, wParam, lParam);
    return TRUE;
}

BOOL CWnd::OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* result) {
    const auto& header = *reinterpret_cast<const NMHDR*>(lParam);
    const AFX_MSGMAP_ENTRY* entry =
        AfxFindMessageEntry(GetMessageMap(), WM_NOTIFY, header.code, static_cast<UINT>(header.idFrom));
    if (!entry) return FALSE;
    *result = entry->handler(*this, wParam, lParam);
    return TRUE;
}

LRESULT CWnd::DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    return m_pfnSuper ? CallWindowProcW(m_pfnSuper, m_hWnd, message, wParam, lParam)
                      : DefWindowProcW(m_hWnd, message, wParam, lParam);
}

LRESULT CWnd::Default() {
    const MSG message = AfxGetWindowState().message;
    return DefWindowProc(message.message, message.wParam, message.lParam);
}

namespace {

LRESULT call_orphan(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    auto& orphans = AfxGetWindowState().orphans;
    auto found = orphans.find(window);
    if (found == orphans.end()) return DefWindowProcW(window, message, wParam, lParam);
    const WNDPROC procedure = found->second;
    if (message == WM_NCDESTROY) orphans.erase(found);
    return CallWindowProcW(procedure, window, message, wParam, lParam);
}

}  // namespace

LRESULT CALLBACK AfxWndProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    CWnd* object = CWnd::FromHandlePermanent(window);
    if (!object) return call_orphan(window, message, wParam, lParam);
    AfxWindowState& state = AfxGetWindowState();
    const MSG outer = state.message;
    state.message = {window, message, wParam, lParam, 0, {0, 0}};
    LRESULT result = 0;
    try {
        result = object->WindowProc(message, wParam, lParam);
    } catch (...) {
        AfxKeepException();
        result = message == WM_CREATE ? -1 : 0;
    }
    state.message = outer;
    if (message == WM_NCDESTROY) {
        // A handler may have detached the object or deleted it.
        if (CWnd* still = CWnd::FromHandlePermanent(window)) AfxWindowAccess::finish(*still);
    }
    return result;
}
