#include "tests/platform_ui/support.h"

#include <utility>

namespace {

// Of the window that is being created, and later of each window in its user data.
TestWindow::Handler creating = nullptr;

LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    auto handler = reinterpret_cast<TestWindow::Handler>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (!handler) handler = creating;
    LRESULT result = 0;
    if (handler && handler(window, message, wParam, lParam, result)) return result;
    return DefWindowProcW(window, message, wParam, lParam);
}

}  // namespace

TestWindow::TestWindow(Handler handler, DWORD style, int width, int height) {
    WNDCLASSEXW description = {};
    description.cbSize = sizeof(description);
    description.lpfnWndProc = procedure;
    description.cbWndExtra = 16;
    description.lpszClassName = _T("TestWindow");
    RegisterClassExW(&description);
    creating = handler;
    window_ = CreateWindowExW(0, _T("testwindow"), _T("Test"), style, 0, 0, width, height, nullptr, nullptr,
                              nullptr, nullptr);
    creating = nullptr;
    SetWindowLongPtrW(window_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(handler));
}

TestWindow::~TestWindow() {
    if (IsWindow(window_)) DestroyWindow(window_);
}
