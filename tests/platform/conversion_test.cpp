// Texts between UTF-8 and UTF-16, on both builds.
#include <gtest/gtest.h>

#include <string>

#include "platform/winapi.h"

TEST(Conversions, TellTheSizeAndThenConvert) {
    const char text[] = "gr\xC3\xBCn \xF0\x9F\x8E\xA8";
    const int size = MultiByteToWideChar(CP_UTF8, 0, text, -1, nullptr, 0);
    ASSERT_EQ(size, 8) << "with the NUL; the last character takes two places";
    std::basic_string<WCHAR> wide(static_cast<std::size_t>(size), WCHAR());
    EXPECT_EQ(MultiByteToWideChar(CP_UTF8, 0, text, -1, wide.data(), size), size);
    EXPECT_EQ(wide[2], 0xFC);
    EXPECT_EQ(wide.back(), 0);
    char back[16] = {};
    EXPECT_EQ(WideCharToMultiByte(CP_UTF8, 0, wide.data(), size - 1, back, 16, nullptr, nullptr),
              static_cast<int>(sizeof(text)) - 1);
    EXPECT_STREQ(back, text);
}

TEST(Conversions, FailWhenTheTargetIsTooSmall) {
    WCHAR wide[2];
    EXPECT_EQ(MultiByteToWideChar(CP_UTF8, 0, "abc", 3, wide, 2), 0);
    EXPECT_EQ(GetLastError(), DWORD{ERROR_INSUFFICIENT_BUFFER});
    char narrow[2];
    EXPECT_EQ(WideCharToMultiByte(CP_UTF8, 0, _T("abc"), 3, narrow, 2, nullptr, nullptr), 0);
    EXPECT_EQ(GetLastError(), DWORD{ERROR_INSUFFICIENT_BUFFER});
}

TEST(Conversions, ReplaceWhatIsMalformed) {
    WCHAR wide[4] = {};
    ASSERT_EQ(MultiByteToWideChar(CP_UTF8, 0, "a\xFF", 2, wide, 4), 2);
    EXPECT_EQ(wide[1], 0xFFFD);
}
