#include "app/script/words.h"

#include <gtest/gtest.h>

using Words = std::vector<std::string>;

TEST(Words, AreSplitAsAShellDoes) {
    const struct {
        const char* line;
        Words words;
    } table[] = {
        {"", {}},
        {" \t \r", {}},
        {"a", {"a"}},
        {"  a \t b\r", {"a", "b"}},
        {"a b # c", {"a", "b"}},
        {"# a b", {}},
        {"a#b c", {"a#b", "c"}},
        {"color:#ff0000", {"color:#ff0000"}},
        {"''#", {"#"}},
        {"'#' a", {"#", "a"}},
        {"\"#\" a", {"#", "a"}},
        {"\\# a", {"#", "a"}},
        {"'a b' c", {"a b", "c"}},
        {"\"a b\" c", {"a b", "c"}},
        {"a'b c'd", {"ab cd"}},
        {"''", {""}},
        {"\"\" a ''", {"", "a", ""}},
        {"a\\ b", {"a b"}},
        {"\\'a\\\"", {"'a\""}},
        {"'a\\'", {"a\\"}},
        {"'a\"b'", {"a\"b"}},
        {"\"a'b\"", {"a'b"}},
        {"\"a\\\"b\"", {"a\"b"}},
        {"\"a\\\\b\"", {"a\\b"}},
        {"\"C:\\new\"", {"C:\\new"}},
        {"\"\\$\\`\"", {"$`"}},
        {"$HOME *", {"$HOME", "*"}},
        {"M\xC3\xB6we \xFF", {"M\xC3\xB6we", "\xFF"}},
    };
    for (const auto& row : table) {
        Words words{"left over"};
        std::string error;
        EXPECT_TRUE(app::splitWords(row.line, words, error)) << row.line;
        EXPECT_EQ(words, row.words) << row.line;
    }
}

TEST(Words, CannotBeSplitWhenAQuoteOrABackslashIsLeftOpen) {
    const struct {
        const char* line;
        const char* error;
    } table[] = {
        {"a 'b", "a single quote is not closed"},      {"a \"b", "a double quote is not closed"},
        {"'a\\'b'", "a single quote is not closed"},   {"\"a\\\"", "a double quote is not closed"},
        {"a\\", "a backslash at the end of the line"}, {"a 'b # c", "a single quote is not closed"},
    };
    for (const auto& row : table) {
        Words words;
        std::string error;
        EXPECT_FALSE(app::splitWords(row.line, words, error)) << row.line;
        EXPECT_EQ(error, row.error) << row.line;
    }
}

TEST(Words, HaveNoNulCharacter) {
    Words words;
    std::string error;
    EXPECT_FALSE(app::splitWords(std::string_view("a\0b c", 5), words, error));
    EXPECT_EQ(error, "the line holds a NUL character");
}
