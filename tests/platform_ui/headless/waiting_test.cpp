// What only the headless windows answer.
#include <gtest/gtest.h>

#include "platform/winapi.h"

TEST(HeadlessMessages, AWaitThatNobodyEndsFails) {
    SetLastError(0);
    EXPECT_FALSE(WaitMessage());
    EXPECT_EQ(GetLastError(), ERROR_NO_INPUT);
    MSG message;
    SetLastError(0);
    EXPECT_EQ(GetMessageW(&message, nullptr, 0, 0), -1);
    EXPECT_EQ(GetLastError(), ERROR_NO_INPUT);
}

TEST(HeadlessWindows, HandlesAreNeverGivenTwice) {
    HWND first =
        CreateWindowExW(0, _T("STATIC"), nullptr, WS_POPUP, 0, 0, 9, 9, nullptr, nullptr, nullptr, nullptr);
    DestroyWindow(first);
    HWND second =
        CreateWindowExW(0, _T("STATIC"), nullptr, WS_POPUP, 0, 0, 9, 9, nullptr, nullptr, nullptr, nullptr);
    EXPECT_NE(first, second);
    EXPECT_FALSE(DestroyWindow(first));
    EXPECT_TRUE(DestroyWindow(second));
}
