#include <limits>
#include <utility>

#include "platform/driver/input.h"
#include "tests/platform_ui/recorder.h"
#include "tests/platform_ui/support.h"

namespace {

Strings seen;

// The messages whose order is the same everywhere.
const std::pair<UINT, const char*> watched[] = {
    {WM_GETMINMAXINFO, "limits"}, {WM_NCCREATE, "nccreate"},   {WM_CREATE, "create"}, {WM_SIZE, "size"},
    {WM_DESTROY, "destroy"},      {WM_NCDESTROY, "ncdestroy"}, {WM_ENABLE, "enable"}, {WM_CLOSE, "close"},
    {WM_COMMAND, "command"},
};

bool record(HWND, UINT message, WPARAM wParam, LPARAM lParam, LRESULT&) {
    for (const auto& [known, name] : watched) {
        if (message != known) continue;
        std::string text = name;
        if (message == WM_SIZE)
            text += " " + std::to_string(LOWORD(lParam)) + "x" + std::to_string(HIWORD(lParam));
        if (message == WM_ENABLE) text += " " + std::to_string(wParam);
        if (message == WM_COMMAND)
            text += " " + std::to_string(LOWORD(wParam)) + " code " + std::to_string(HIWORD(wParam));
        seen.push_back(text);
    }
    return false;
}

Strings take() {
    return std::exchange(seen, {});
}

bool at_least_360(HWND, UINT message, WPARAM, LPARAM lParam, LRESULT&) {
    if (message == WM_GETMINMAXINFO) reinterpret_cast<MINMAXINFO*>(lParam)->ptMinTrackSize = {360, 200};
    return false;
}

SIZE size_of(HWND window) {
    RECT rect = {};
    GetWindowRect(window, &rect);
    return {rect.right - rect.left, rect.bottom - rect.top};
}

}  // namespace

TEST(Windows, AreAskedForTheirLimitsBeforeTheyAreCreated) {
    take();
    {
        TestWindow window(record, WS_POPUP | WS_THICKFRAME);
        EXPECT_EQ(take(), (Strings{"limits", "nccreate", "create", "size 194x94"}));
    }
    EXPECT_EQ(take(), (Strings{"destroy", "ncdestroy"}));
}

TEST(Windows, HaveCoordinatesOfSixteenBits) {
    constexpr int kLeast = std::numeric_limits<int>::min(), kMost = std::numeric_limits<int>::max();
    TestWindow window(record, WS_POPUP);
    MoveWindow(window, kLeast, kMost, kMost, kLeast, FALSE);
    RECT rect = {};
    GetWindowRect(window, &rect);
    EXPECT_EQ(rect.left, -32768);
    EXPECT_EQ(rect.top, 32767);
    EXPECT_EQ(size_of(window).cx, 32767);
    EXPECT_EQ(size_of(window).cy, 0);
    take();
}

TEST(Windows, AreNeverSmallerThanTheirLimits) {
    TestWindow window(at_least_360, WS_POPUP | WS_THICKFRAME, 353, 150);
    EXPECT_EQ(size_of(window).cx, 360);
    EXPECT_EQ(size_of(window).cy, 200);
    MoveWindow(window, 10, 10, 100, 300, TRUE);
    EXPECT_EQ(size_of(window).cx, 360);
    EXPECT_EQ(size_of(window).cy, 300);
}

TEST(Windows, TellTheSizeOfTheirClientAreaOnlyWhenItChanges) {
    TestWindow window(record, WS_POPUP | WS_BORDER);
    take();
    MoveWindow(window, 20, 20, 200, 100, TRUE);
    EXPECT_EQ(take(), Strings{});
    MoveWindow(window, 20, 20, 150, 80, TRUE);
    EXPECT_EQ(take(), Strings{"size 148x78"});
}

TEST(Windows, KeepTheirClassNameAsItWasRegistered) {
    TestWindow window;
    WCHAR name[32];
    EXPECT_EQ(GetClassNameW(window, name, 32), 10);
    EXPECT_EQ(std::basic_string<WCHAR>(name), _T("TestWindow"));
    HWND button =
        CreateWindowExW(0, _T("BUTTON"), nullptr, WS_CHILD, 0, 0, 10, 10, window, nullptr, nullptr, nullptr);
    GetClassNameW(button, name, 32);
    EXPECT_EQ(std::basic_string<WCHAR>(name), _T("Button"));
}

TEST(Windows, TellWhenTheyAreEnabledOnlyIfThatChanges) {
    TestWindow window(record);
    take();
    EXPECT_FALSE(EnableWindow(window, TRUE));
    EXPECT_EQ(take(), Strings{});
    EXPECT_FALSE(EnableWindow(window, FALSE));
    EXPECT_TRUE(EnableWindow(window, TRUE));
    EXPECT_EQ(take(), (Strings{"enable 0", "enable 1"}));
}

TEST(Windows, ADisabledOneLosesTheFocusAndTakesNone) {
    TestWindow window;
    HWND button = CreateWindowExW(0, _T("BUTTON"), nullptr, WS_CHILD | WS_VISIBLE, 0, 0, 10, 10, window,
                                  nullptr, nullptr, nullptr);
    SetFocus(button);
    EXPECT_EQ(GetFocus(), button);
    EnableWindow(button, FALSE);
    EXPECT_NE(GetFocus(), button);
    SetFocus(button);
    EXPECT_NE(GetFocus(), button);
}

TEST(Windows, AreVisibleOnlyWithAllTheirParents) {
    TestWindow window;
    HWND child = CreateWindowExW(0, _T("STATIC"), nullptr, WS_CHILD | WS_VISIBLE, 0, 0, 10, 10, window,
                                 nullptr, nullptr, nullptr);
    EXPECT_TRUE(IsWindowVisible(child));
    ShowWindow(window, SW_HIDE);
    EXPECT_FALSE(IsWindowVisible(child));
}

TEST(Windows, FindTheirControlsById) {
    TestWindow window;
    HWND child = CreateWindowExW(0, _T("STATIC"), _T("text"), WS_CHILD, 0, 0, 10, 10, window,
                                 control_id(1061), nullptr, nullptr);
    EXPECT_EQ(GetDlgItem(window, 1061), child);
    EXPECT_EQ(GetDlgItem(window, 1060), nullptr);
    EXPECT_EQ(GetDlgCtrlID(child), 1061);
    EXPECT_EQ(GetParent(child), window);
    EXPECT_EQ(GetWindow(window, GW_CHILD), child);
    EXPECT_EQ(GetWindow(child, GW_HWNDNEXT), nullptr);
}

TEST(Windows, MapPointsThroughTheirParents) {
    TestWindow window(nullptr, WS_POPUP | WS_BORDER);
    MoveWindow(window, 100, 50, 200, 100, TRUE);
    HWND child = CreateWindowExW(0, _T("STATIC"), nullptr, WS_CHILD, 10, 20, 30, 40, window, nullptr, nullptr,
                                 nullptr);
    POINT point = {1, 2};
    ClientToScreen(child, &point);
    EXPECT_EQ(point.x, 112);
    EXPECT_EQ(point.y, 73);
    ScreenToClient(child, &point);
    EXPECT_EQ(point.x, 1);
    RECT rect = {};
    GetWindowRect(child, &rect);
    EXPECT_EQ(rect.left, 111);
    EXPECT_EQ(rect.bottom, 111);
}

TEST(Windows, HoldTheNumbersThatTheyAreGiven) {
    TestWindow window;
    SetWindowLongPtrW(window, 8, 0x123456789);
    EXPECT_EQ(GetWindowLongPtrW(window, 8), 0x123456789);
    EXPECT_EQ(SetWindowLongPtrW(window, 16, 1), 0) << "behind the bytes of the class";
    SetWindowLongPtrW(window, GWLP_ID, 77);
    EXPECT_EQ(GetWindowLongPtrW(window, GWLP_ID), 77);
}

TEST(Windows, CutTheirTextToTheBuffer) {
    TestWindow window;
    SetWindowTextW(window, _T("Attributes"));
    EXPECT_EQ(GetWindowTextLengthW(window), 10);
    WCHAR text[5];
    EXPECT_EQ(GetWindowTextW(window, text, 5), 4);
    EXPECT_EQ(std::basic_string<WCHAR>(text), _T("Attr"));
}

TEST(Windows, TakeTheirChildrenAlong) {
    HWND child = nullptr;
    HWND grandchild = nullptr;
    {
        TestWindow window;
        child = CreateWindowExW(0, _T("STATIC"), nullptr, WS_CHILD, 0, 0, 9, 9, window, nullptr, nullptr,
                                nullptr);
        grandchild =
            CreateWindowExW(0, _T("STATIC"), nullptr, WS_CHILD, 0, 0, 9, 9, child, nullptr, nullptr, nullptr);
        EXPECT_TRUE(IsChild(window, grandchild));
    }
    EXPECT_FALSE(IsWindow(child));
    EXPECT_FALSE(IsWindow(grandchild));
}

TEST(Windows, AClosedOneIsGoneAndItsHandleStale) {
    TestWindow window(record);
    take();
    SendMessageW(window, WM_CLOSE, 0, 0);
    EXPECT_EQ(take(), (Strings{"close", "destroy", "ncdestroy"}));
    EXPECT_FALSE(IsWindow(window));
    EXPECT_FALSE(PostMessageW(window, WM_NULL, 0, 0));
    EXPECT_EQ(GetLastError(), DWORD{ERROR_INVALID_WINDOW_HANDLE});
}

TEST(Messages, ArriveInTheOrderInWhichTheyWerePosted) {
    TestWindow window(record);
    driver::settle();
    take();
    PostMessageW(window, WM_COMMAND, MAKEWPARAM(1, 0), 0);
    PostMessageW(window, WM_COMMAND, MAKEWPARAM(2, 0), 0);
    SendMessageW(window, WM_COMMAND, MAKEWPARAM(3, 0), 0);
    EXPECT_EQ(take(), Strings{"command 3 code 0"});
    driver::settle();
    EXPECT_EQ(take(), (Strings{"command 1 code 0", "command 2 code 0"}));
}

TEST(Messages, PostedToADestroyedWindowAreDropped) {
    {
        TestWindow window(record);
        PostMessageW(window, WM_COMMAND, 1, 0);
        SetWindowLongPtrW(window, GWLP_USERDATA, 0);
    }
    take();
    driver::settle();
    EXPECT_EQ(take(), Strings{});
}

TEST(Messages, TheEndIsToldWhenNothingElseIsLeft) {
    TestWindow window(record);
    driver::settle();
    take();
    PostQuitMessage(7);
    PostMessageW(window, WM_COMMAND, 1, 0);
    MSG message;
    ASSERT_EQ(GetMessageW(&message, window, WM_COMMAND, WM_COMMAND), TRUE);
    EXPECT_EQ(message.message, UINT{WM_COMMAND});
    EXPECT_EQ(GetMessageW(&message, nullptr, 0, 0), FALSE);
    EXPECT_EQ(message.wParam, 7u);
}

TEST(Buttons, TellTheirParentOfAClick) {
    TestWindow window(record);
    HWND button = CreateWindowExW(0, _T("BUTTON"), _T("OK"), WS_CHILD | WS_VISIBLE, 0, 0, 50, 20, window,
                                  control_id(1), nullptr, nullptr);
    take();
    SendMessageW(button, BM_CLICK, 0, 0);
    driver::settle();
    EXPECT_EQ(take(), Strings{"command 1 code 0"});
    driver::click(button, POINT{5, 5});
    EXPECT_EQ(take(), Strings{"command 1 code 0"});
    PostMessageW(button, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(5, 5));
    PostMessageW(button, WM_LBUTTONUP, 0, MAKELPARAM(5, 500));
    driver::settle();
    EXPECT_EQ(take(), Strings{}) << "let go beside the button";
    driver::pressKey(button, VK_SPACE);
    EXPECT_EQ(take(), Strings{"command 1 code 0"});
}

TEST(Buttons, AnAutomaticCheckBoxChangesBeforeItTells) {
    TestWindow window(record);
    HWND box = CreateWindowExW(0, _T("BUTTON"), _T("Show all"), WS_CHILD | WS_VISIBLE | BS_AUTOCHECKBOX, 0, 0,
                               50, 20, window, control_id(1061), nullptr, nullptr);
    take();
    SendMessageW(box, BM_CLICK, 0, 0);
    EXPECT_EQ(take(), Strings{"command 1061 code 0"});
    EXPECT_EQ(SendMessageW(box, BM_GETCHECK, 0, 0), LRESULT{BST_CHECKED});
    SendMessageW(box, BM_CLICK, 0, 0);
    EXPECT_EQ(SendMessageW(box, BM_GETCHECK, 0, 0), LRESULT{BST_UNCHECKED});
    take();
    SendMessageW(box, BM_SETCHECK, BST_CHECKED, 0);
    EXPECT_EQ(take(), Strings{}) << "the program's own change";
    EXPECT_EQ(SendMessageW(box, BM_GETCHECK, 0, 0), LRESULT{BST_CHECKED});
}

TEST(Buttons, APlainCheckBoxIsTheOwnersToChange) {
    TestWindow window(record);
    HWND box = CreateWindowExW(0, _T("BUTTON"), nullptr, WS_CHILD | WS_VISIBLE | BS_CHECKBOX, 0, 0, 50, 20,
                               window, control_id(5), nullptr, nullptr);
    take();
    SendMessageW(box, BM_CLICK, 0, 0);
    EXPECT_EQ(take(), Strings{"command 5 code 0"});
    EXPECT_EQ(SendMessageW(box, BM_GETCHECK, 0, 0), LRESULT{BST_UNCHECKED});
}
