#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "kzutil/utf.h"

namespace {

using kzutil::narrow;
using kzutil::widen;
using kzutil::WideString;

// Shows a wide text in a failure.
std::u32string unitsOf(const WideString& text) {
    return {text.begin(), text.end()};
}

TEST(Utf, MalformedSequencesBecomeOneReplacementForEveryMaximalPart) {
    const struct {
        std::string utf8;
        const WCHAR* expected;
    } cases[] = {
        {"\x80", _T("\ufffd")},
        {"\xbf\x80", _T("\ufffd\ufffd")},
        {"\xc0\xaf", _T("\ufffd\ufffd")},  // overlong
        {"\xc1\x81", _T("\ufffd\ufffd")},
        {"\xe0\x9f\xbf", _T("\ufffd\ufffd\ufffd")},            // overlong
        {"\xf0\x8f\xbf\xbf", _T("\ufffd\ufffd\ufffd\ufffd")},  // overlong
        {"\xed\xa0\x80", _T("\ufffd\ufffd\ufffd")},            // a surrogate
        {"\xf4\x90\x80\x80", _T("\ufffd\ufffd\ufffd\ufffd")},  // beyond U+10FFFF
        {"\xf5\x80", _T("\ufffd\ufffd")},
        {"\xff", _T("\ufffd")},
        {"\xc3", _T("\ufffd")},
        {"\xe2\x82", _T("\ufffd")},
        {"\xf0\x9f\x98", _T("\ufffd")},
        {"\xf0\x9f\x98x", _T("\ufffdx")},
        {"\xe2\x82\xc3\xa4", _T("\ufffd\u00e4")},
        {"\xc3\xc3\xa4", _T("\ufffd\u00e4")},
        {"a\xf1\x80\x80\xe1\x80\xc2"
         "b\x80"
         "c\x80\xbf"
         "d",
         _T("a\ufffd\ufffd\ufffdb\ufffdc\ufffd\ufffdd")},
        {"\xef\xbf\xbd", _T("\ufffd")},
        {"\xf4\x8f\xbf\xbf", _T("\U0010ffff")},
        {"\xed\x9f\xbf\xee\x80\x80", _T("\ud7ff\ue000")},
    };
    for (const auto& row : cases)
        EXPECT_EQ(unitsOf(widen(row.utf8)), unitsOf(row.expected)) << testing::PrintToString(row.utf8);
}

TEST(Utf, LoneSurrogatesBecomeReplacements) {
    const std::string replacement = "\xef\xbf\xbd";
    const WCHAR high = WCHAR(0xd83d), low = WCHAR(0xde00);
    EXPECT_EQ(narrow(WideString{high, low}), "\xf0\x9f\x98\x80");
    EXPECT_EQ(narrow(WideString{high}), replacement);
    EXPECT_EQ(narrow(WideString{low}), replacement);
    EXPECT_EQ(narrow(WideString{low, high}), replacement + replacement);
    EXPECT_EQ(narrow(WideString{high, high, low}), replacement + "\xf0\x9f\x98\x80");
    EXPECT_EQ(narrow(WideString{high, WCHAR('a')}), replacement + "a");
}

TEST(Utf, NulsAndAsciiOfAnyLengthPassUnchanged) {
    std::string utf8(1, '\0');
    WideString wide(1, WCHAR());
    for (char letter = 1; letter < 60; ++letter) {
        EXPECT_EQ(unitsOf(widen(utf8)), unitsOf(wide));
        EXPECT_EQ(narrow(wide), utf8);
        // The same with one character at the end that is not ASCII.
        EXPECT_EQ(unitsOf(widen(utf8 + "\xc3\xa4")), unitsOf(wide + WCHAR(0xe4)));
        EXPECT_EQ(narrow(wide + WCHAR(0xe4)), utf8 + "\xc3\xa4");
        utf8 += letter;
        wide += static_cast<WCHAR>(letter);
    }
    EXPECT_TRUE(widen("").empty());
    EXPECT_TRUE(narrow({}).empty());
}

// The encodings by arithmetic, for one character.
std::string utf8Of(unsigned c) {
    if (c < 0x80) return {char(c)};
    if (c < 0x800) return {char(0xc0 + c / 64), char(0x80 + c % 64)};
    if (c < 0x10000) return {char(0xe0 + c / 4096), char(0x80 + c / 64 % 64), char(0x80 + c % 64)};
    return {char(0xf0 + c / 262144), char(0x80 + c / 4096 % 64), char(0x80 + c / 64 % 64),
            char(0x80 + c % 64)};
}

WideString wideOf(unsigned c) {
    if (c < 0x10000) return {WCHAR(c)};
    return {WCHAR(0xd800 + (c - 0x10000) / 1024), WCHAR(0xdc00 + (c - 0x10000) % 1024)};
}

TEST(Utf, EveryCharacterGoesBothWays) {
    for (unsigned c = 0; c <= 0x10ffff; ++c) {
        if (c == 0xd800) c = 0xe000;
        ASSERT_TRUE(widen(utf8Of(c)) == wideOf(c)) << c;
        ASSERT_TRUE(narrow(wideOf(c)) == utf8Of(c)) << c;
    }
}

// All well-formed sequences begin like one of these does: what may still become a character.
bool beginsACharacter(const std::string& part) {
    if (part.size() > 3) return false;
    // Every well-formed sequence that starts with these bytes ends in continuation bytes, so trying the
    // lowest and the highest ones at each place reaches the lowest and the highest character.
    for (std::size_t length = part.size() + 1; length <= 4; ++length) {
        for (unsigned choice = 0; choice < 1u << (4 - part.size()); ++choice) {
            std::string whole = part;
            for (std::size_t i = part.size(); i < length; ++i)
                whole += choice >> (i - part.size()) & 1 ? '\xbf' : '\x80';
            unsigned c = static_cast<unsigned char>(whole[0]) & (0x7fu >> length);
            for (std::size_t i = 1; i < length; ++i) c = c * 64 + (static_cast<unsigned char>(whole[i]) & 63);
            if (c <= 0x10ffff && (c < 0xd800 || c > 0xdfff) && utf8Of(c) == whole) return true;
        }
    }
    return false;
}

// The rule as it is told: at each place the character that stands there, or else one replacement for the
// longest part that begins one, or else one for the byte.
WideString widenedByTheRule(const std::string& utf8) {
    WideString wide;
    for (std::size_t at = 0; at < utf8.size();) {
        std::size_t taken = 0;
        for (std::size_t length = 1; length <= 4 && at + length <= utf8.size() && taken == 0; ++length) {
            const std::string part = utf8.substr(at, length);
            unsigned c = static_cast<unsigned char>(part[0]) & (length == 1 ? 0x7fu : 0x7fu >> length);
            for (std::size_t i = 1; i < length; ++i) c = c * 64 + (static_cast<unsigned char>(part[i]) & 63);
            if (c > 0x10ffff || (c >= 0xd800 && c < 0xe000) || utf8Of(c) != part) continue;
            wide += wideOf(c);
            taken = length;
        }
        if (taken == 0) {
            wide += WCHAR(0xfffd);
            for (taken = 1; taken < 3 && at + taken < utf8.size(); ++taken)
                if (!beginsACharacter(utf8.substr(at, taken + 1))) break;
        }
        at += taken;
    }
    return wide;
}

TEST(Utf, RandomBytesAreReadAsTheRuleTellsIt) {
    std::mt19937 random(7);
    const std::string likely =
        "\x7f\x80\x8f\x90\x9f\xa0\xbf\xc1\xc2\xdf\xe0\xe1\xed\xee\xf0\xf1\xf4\xf5"
        "a";
    for (int round = 0; round < 20000; ++round) {
        std::string utf8;
        for (std::size_t i = 0, length = random() % 12; i < length; ++i)
            utf8 += random() % 4 == 0 ? static_cast<char>(random()) : likely[random() % likely.size()];
        const WideString wide = widen(utf8);
        ASSERT_EQ(unitsOf(wide), unitsOf(widenedByTheRule(utf8))) << testing::PrintToString(utf8);
        // What was read is well-formed, and so survives the way there and back.
        ASSERT_TRUE(widen(narrow(wide)) == wide);
    }
}

TEST(Utf, RandomTextsComeBackUnchanged) {
    std::mt19937 random(11);
    for (int round = 0; round < 5000; ++round) {
        std::string utf8;
        WideString wide;
        for (std::size_t i = 0, length = random() % 40; i < length; ++i) {
            const unsigned bits = random() % 22;
            unsigned c = random() % (1u << bits);
            if (c > 0x10ffff || (c >= 0xd800 && c < 0xe000)) c = 0x20ac;
            utf8 += utf8Of(c);
            wide += wideOf(c);
        }
        ASSERT_TRUE(widen(utf8) == wide);
        ASSERT_EQ(narrow(wide), utf8);
    }
}

}  // namespace
