#include "app/window/windows/progress_window.h"

#include "kzutil/utf.h"
#include "platform/afx/modal_loop.h"

namespace app::window {

namespace {

constexpr UINT_PTR kTimer = 1;
constexpr UINT kTimerPeriod = 50;  // ms
constexpr int kSteps = 1000;
constexpr int kWidth = 380, kHeight = 104;

}  // namespace

BEGIN_MESSAGE_MAP(ProgressWindow, CWnd)
ON_WM_CLOSE()
ON_MESSAGE(WM_TIMER, onTimer)
ON_MESSAGE(WM_ERASEBKGND, onEraseBackground)
ON_BN_CLICKED(IDCANCEL, onCancel)
END_MESSAGE_MAP()

void ProgressWindow::wait(CWnd& parent) {
    AfxRunModal(*this, &parent, [this](HWND owner) { return create(owner); });
    m_opening.waitFor(std::chrono::hours(1));  // when there could be no window
}

HWND ProgressWindow::addControl(LPCWSTR className, LPCWSTR text, DWORD style, const CRect& place, int id) {
    const HWND control = CreateWindowExW(
        0, className, text, WS_CHILD | WS_VISIBLE | style, m_screen.scaled(place.left),
        m_screen.scaled(place.top), m_screen.scaled(place.Width()), m_screen.scaled(place.Height()), m_hWnd,
        reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), nullptr, nullptr);
    ::SendMessageW(control, WM_SETFONT, reinterpret_cast<WPARAM>(m_screen.font()), FALSE);
    return control;
}

bool ProgressWindow::create(HWND owner) {
    RECT around;
    ::GetWindowRect(owner, &around);
    RECT rect = {0, 0, m_screen.scaled(kWidth), m_screen.scaled(kHeight)};
    const DWORD style = WS_POPUP | WS_CAPTION | WS_SYSMENU;
    AdjustWindowRectEx(&rect, style, FALSE, WS_EX_DLGMODALFRAME);
    OffsetRect(&rect, (around.left + around.right - (rect.right - rect.left)) / 2 - rect.left,
               (around.top + around.bottom - (rect.bottom - rect.top)) / 2 - rect.top);
    if (!CreateEx(WS_EX_DLGMODALFRAME, nullptr, L"Opening a drawing", style, rect, CWnd::FromHandle(owner),
                  0))
        return false;
    addControl(L"Static", kzutil::widen(m_file).c_str(), SS_PATHELLIPSIS | SS_NOPREFIX,
               CRect(14, 12, 366, 30), -1);
    m_bar = addControl(PROGRESS_CLASSW, L"", 0, CRect(14, 36, 366, 54), 1);
    ::SendMessageW(m_bar, PBM_SETRANGE32, 0, kSteps);
    ::SetFocus(
        addControl(L"Button", L"Cancel", WS_TABSTOP | BS_DEFPUSHBUTTON, CRect(276, 66, 366, 92), IDCANCEL));
    ::SetTimer(m_hWnd, kTimer, kTimerPeriod, nullptr);
    return true;
}

LRESULT ProgressWindow::onTimer(WPARAM, LPARAM) {
    ::SendMessageW(m_bar, PBM_SETPOS, static_cast<WPARAM>(kSteps * m_opening.progress()), 0);
    return 0;
}

LRESULT ProgressWindow::onEraseBackground(WPARAM context, LPARAM) {
    RECT client;
    GetClientRect(&client);
    ::FillRect(reinterpret_cast<HDC>(context), &client, GetSysColorBrush(COLOR_BTNFACE));
    return 1;
}

void ProgressWindow::onCancel() {
    m_opening.cancel();
}

}  // namespace app::window
