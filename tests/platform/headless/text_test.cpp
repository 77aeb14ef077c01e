#include "platform/headless/text.h"

#include <gtest/gtest.h>

namespace {

using headless::to_utf16;
using headless::to_utf8;

TEST(HeadlessText, GoesBothWaysUnchanged) {
    for (const char32_t c :
         {U'a', U'\u00e9', U'\u07ff', U'\u0800', U'\ufffd', U'\U00010000', U'\U0010ffff'}) {
        const std::u16string text = c < 0x10000 ? std::u16string(1, static_cast<char16_t>(c))
                                                : std::u16string{static_cast<char16_t>(0xd7c0 + (c >> 10)),
                                                                 static_cast<char16_t>(0xdc00 + (c & 0x3ff))};
        EXPECT_EQ(to_utf16(to_utf8(text)), text);
    }
    EXPECT_EQ(to_utf8(u"Gr\u00f6\u00dfe \U0001f600"),
              "Gr\xc3\xb6\xc3\x9f"
              "e \xf0\x9f\x98\x80");
}

TEST(HeadlessText, ReplacesLoneSurrogates) {
    EXPECT_EQ(to_utf8({u"a\xd800", 2}), "a\xef\xbf\xbd");
    EXPECT_EQ(to_utf8({u"\xdc00z", 2}), "\xef\xbf\xbdz");
    EXPECT_EQ(to_utf8({u"\xd800\xd800\xdc00", 3}), "\xef\xbf\xbd\xf0\x90\x80\x80");
}

TEST(HeadlessText, ReplacesMalformedBytesOneByOne) {
    EXPECT_EQ(to_utf16("\x80z"), u"\ufffdz");                              // a tail without a lead
    EXPECT_EQ(to_utf16("\xc3"), u"\ufffd");                                // a lead without its tail
    EXPECT_EQ(to_utf16("\xc0\xaf"), u"\ufffd\ufffd");                      // longer than it need be
    EXPECT_EQ(to_utf16("\xed\xa0\x80"), u"\ufffd\ufffd\ufffd");            // a surrogate
    EXPECT_EQ(to_utf16("\xf4\x90\x80\x80"), u"\ufffd\ufffd\ufffd\ufffd");  // beyond the last character
    EXPECT_EQ(to_utf16("\xff"), u"\ufffd");
}

}  // namespace
