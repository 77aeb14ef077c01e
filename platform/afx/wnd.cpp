#include "platform/afx/wnd.h"

#include "platform/afx/window_state.h"

namespace {

constexpr const WCHAR* plain_class = _T("AfxWnd");

BOOL register_plain_class() {
    WNDCLASSEXW description = {};
    description.cbSize = sizeof(description);
    description.style = CS_DBLCLKS;
    description.lpfnWndProc = DefWindowProcW;
    description.lpszClassName = plain_class;
    return RegisterClassExW(&description) || GetLastError() == ERROR_CLASS_ALREADY_EXISTS;
}

}  // namespace

CWnd::~CWnd() {
    if (!m_hWnd) return;
    // Nobody may call into the derived part any more.
    AfxWindowAccess::unsubclass(*this);
    ::DestroyWindow(Detach());
}

CWnd* CWnd::FromHandlePermanent(HWND window) {
    auto& permanent = AfxGetWindowState().permanent;
    auto found = permanent.find(window);
    return found == permanent.end() ? nullptr : found->second;
}

CWnd* CWnd::FromHandle(HWND window) {
    if (!window) return nullptr;
    if (CWnd* permanent = FromHandlePermanent(window)) return permanent;
    AfxWindowState& state = AfxGetWindowState();
    auto& temporary = state.temporary;
    if (temporary.size() >= state.temporary_limit) {
        std::erase_if(temporary, [](auto& entry) {
            if (::IsWindow(entry.first)) return false;
            entry.second->m_hWnd = nullptr;
            return true;
        });
        state.temporary_limit = 2 * temporary.size() + 64;
    }
    std::unique_ptr<CWnd>& entry = temporary[window];
    if (!entry) entry = std::make_unique<CWnd>();
    entry->m_hWnd = window;
    return entry.get();
}

BOOL CWnd::Attach(HWND window) {
    if (!window || m_hWnd || FromHandlePermanent(window)) return FALSE;
    AfxGetWindowState().permanent.emplace(window, this);
    m_hWnd = window;
    return TRUE;
}

HWND CWnd::Detach() {
    const HWND window = m_hWnd;
    AfxGetWindowState().permanent.erase(window);
    m_hWnd = nullptr;
    return window;
}

BOOL CWnd::Create(LPCWSTR className, LPCWSTR text, DWORD style, const RECT& rect, CWnd* parent, UINT id) {
    return CreateEx(0, className, text, style, rect, parent, id);
}

BOOL CWnd::CreateEx(DWORD extendedStyle, LPCWSTR className, LPCWSTR text, DWORD style, const RECT& rect,
                    CWnd* parent, UINT id, LPVOID parameter) {
    if (m_hWnd) return FALSE;
    if (!className) {
        if (!register_plain_class()) return FALSE;
        className = plain_class;
    }
    AfxWindowCreation creation(*this);
    const HWND window =
        CreateWindowExW(extendedStyle, className, text, style, rect.left, rect.top, rect.right - rect.left,
                        rect.bottom - rect.top, parent ? parent->m_hWnd : nullptr,
                        reinterpret_cast<HMENU>(static_cast<UINT_PTR>(id)), nullptr, parameter);
    // A window that was refused before its first message never sends its last one.
    if (!window && m_hWnd && !::IsWindow(m_hWnd)) AfxWindowAccess::finish(*this);
    AfxRethrowException();
    return window != nullptr;
}

BOOL CWnd::DestroyWindow() {
    return m_hWnd && ::DestroyWindow(m_hWnd);
}

BOOL CWnd::SubclassWindow(HWND window) {
    if (!::IsWindow(window) || !Attach(window)) return FALSE;
    AfxWindowAccess::subclass(*this);
    return TRUE;
}

BOOL CWnd::SubclassDlgItem(UINT id, CWnd* parent) {
    return SubclassWindow(::GetDlgItem(parent->m_hWnd, static_cast<int>(id)));
}

HWND CWnd::UnsubclassWindow() {
    AfxWindowAccess::unsubclass(*this);
    return Detach();
}

BOOL CWnd::ModifyStyle(DWORD remove, DWORD add) {
    const DWORD before = GetStyle();
    const DWORD after = (before & ~remove) | add;
    if (after == before) return FALSE;
    ::SetWindowLongW(m_hWnd, GWL_STYLE, static_cast<LONG>(after));
    return TRUE;
}

std::basic_string<WCHAR> CWnd::GetWindowText() const {
    std::basic_string<WCHAR> text(static_cast<std::size_t>(::GetWindowTextLengthW(m_hWnd)) + 1, WCHAR());
    text.resize(
        static_cast<std::size_t>(::GetWindowTextW(m_hWnd, text.data(), static_cast<int>(text.size()))));
    return text;
}

void CWnd::ScreenToClient(RECT* rect) const {
    POINT corners[] = {{rect->left, rect->top}, {rect->right, rect->bottom}};
    ::MapWindowPoints(nullptr, m_hWnd, corners, 2);
    *rect = {corners[0].x, corners[0].y, corners[1].x, corners[1].y};
}
