#include "kzutil/utf.h"

#include <cstdint>
#include <cstring>

namespace kzutil {
namespace {

constexpr char32_t kReplacement = 0xfffd;

// Names are nearly always plain ASCII, and millions of them are converted: eight bytes are looked at
// in one step.
bool isAscii(std::string_view text) {
    const char* at = text.data();
    std::size_t left = text.size();
    for (; left >= 8; at += 8, left -= 8) {
        std::uint64_t block;
        std::memcpy(&block, at, 8);
        if ((block & 0x8080808080808080u) != 0) return false;
    }
    for (; left > 0; ++at, --left)
        if (static_cast<unsigned char>(*at) >= 0x80) return false;
    return true;
}

bool isAscii(WideView text) {
    unsigned all = 0;
    for (const WCHAR unit : text) all |= unit;
    return all < 0x80;
}

// What may follow a lead byte: the range of the second byte, and how many bytes follow in all.
// Further ones are 80..BF. The ranges leave out overlong forms, surrogates and what lies beyond
// U+10FFFF. No row: malformed.
struct Lead {
    unsigned char first, last;
    unsigned char low, high;
    int following;
};
constexpr Lead kLeads[] = {
    {0xc2, 0xdf, 0x80, 0xbf, 1}, {0xe0, 0xe0, 0xa0, 0xbf, 2}, {0xe1, 0xec, 0x80, 0xbf, 2},
    {0xed, 0xed, 0x80, 0x9f, 2}, {0xee, 0xef, 0x80, 0xbf, 2}, {0xf0, 0xf0, 0x90, 0xbf, 3},
    {0xf1, 0xf3, 0x80, 0xbf, 3}, {0xf4, 0xf4, 0x80, 0x8f, 3},
};

// The character at `at`, which moves behind it. Of a malformed sequence it moves behind the longest part that
// could have begun a character, at least one byte: every such part becomes one U+FFFD, as Unicode recommends.
char32_t next(std::string_view utf8, std::size_t& at) {
    const auto lead = static_cast<unsigned char>(utf8[at++]);
    if (lead < 0x80) return lead;
    for (const Lead& row : kLeads) {
        if (lead < row.first || lead > row.last) continue;
        char32_t character = lead & (0x3fu >> row.following);
        unsigned char low = row.low, high = row.high;
        for (int i = 0; i < row.following; ++i) {
            if (at == utf8.size()) return kReplacement;
            const auto byte = static_cast<unsigned char>(utf8[at]);
            if (byte < low || byte > high) return kReplacement;
            character = character << 6 | (byte & 0x3fu);
            low = 0x80, high = 0xbf;
            ++at;
        }
        return character;
    }
    return kReplacement;
}

bool isSurrogate(char32_t unit) {
    return unit >= 0xd800 && unit < 0xe000;
}
bool isHighSurrogate(char32_t unit) {
    return unit >= 0xd800 && unit < 0xdc00;
}

char32_t next(WideView text, std::size_t& at) {
    const char32_t unit = text[at++];
    if (!isSurrogate(unit)) return unit;
    if (!isHighSurrogate(unit) || at == text.size()) return kReplacement;
    const char32_t low = text[at];
    if (low < 0xdc00 || low > 0xdfff) return kReplacement;
    ++at;
    return 0x10000 + ((unit - 0xd800) << 10) + (low - 0xdc00);
}

void append(WideString& text, char32_t character) {
    if (character < 0x10000) {
        text += static_cast<WCHAR>(character);
        return;
    }
    text += static_cast<WCHAR>(0xd800 + ((character - 0x10000) >> 10));
    text += static_cast<WCHAR>(0xdc00 + ((character - 0x10000) & 0x3ff));
}

void append(std::string& text, char32_t character) {
    if (character < 0x80) {
        text += static_cast<char>(character);
        return;
    }
    const int following = character < 0x800 ? 1 : character < 0x10000 ? 2 : 3;
    constexpr unsigned kMarks[] = {0, 0xc0, 0xe0, 0xf0};
    text += static_cast<char>(kMarks[following] | character >> (6 * following));
    for (int i = following - 1; i >= 0; --i) text += static_cast<char>(0x80 | (character >> (6 * i) & 0x3f));
}

// How much room the result takes: exact for well-formed text, a first guess for the rest.
std::size_t room(std::string_view utf8) {
    std::size_t units = 0;
    for (const char byte : utf8) {
        const auto value = static_cast<unsigned char>(byte);
        units += (value & 0xc0) != 0x80;
        units += value >= 0xf0;
    }
    return units;
}

std::size_t room(WideView text) {
    std::size_t bytes = 0;
    for (const WCHAR unit : text) bytes += unit < 0x80 ? 1 : unit < 0x800 || isSurrogate(unit) ? 2 : 3;
    return bytes;
}

template <class To, class From>
To convert(From text) {
    if (isAscii(text)) return To(text.begin(), text.end());
    To result;
    result.reserve(room(text));
    for (std::size_t at = 0; at < text.size();) append(result, next(text, at));
    return result;
}

}  // namespace

WideString widen(std::string_view utf8) {
    return convert<WideString>(utf8);
}

std::string narrow(WideView text) {
    return convert<std::string>(text);
}

}  // namespace kzutil
