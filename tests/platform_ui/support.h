// What the tests of windows share.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/winapi.h"

using Strings = std::vector<std::string>;

// A window of a procedure that the test brings along; destroyed with the object.
class TestWindow {
public:
    using Handler = bool (*)(HWND window, UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result);

    explicit TestWindow(Handler handler = nullptr, DWORD style = WS_POPUP | WS_VISIBLE, int width = 200,
                        int height = 100);
    ~TestWindow();
    TestWindow(const TestWindow&) = delete;
    TestWindow& operator=(const TestWindow&) = delete;

    operator HWND() const { return window_; }

private:
    HWND window_;
};

inline HMENU control_id(int id) {
    return reinterpret_cast<HMENU>(static_cast<INT_PTR>(id));
}
