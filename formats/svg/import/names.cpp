#include "formats/svg/import/names.h"

#include <algorithm>
#include <charconv>
#include <cstring>

#include "formats/svg/xml/encoding.h"
#include "kzutil/utf.h"

namespace svg {

namespace {

void setNumbered(std::string& out, std::string_view stem, std::uint32_t number) {
    char digits[16];
    char* const end = std::to_chars(digits, digits + sizeof digits, number).ptr;
    out.assign(stem);
    out += '-';
    out.append(digits, static_cast<std::size_t>(end - digits));
}

constexpr std::uint64_t kEveryByte = 0x0101010101010101U;
constexpr std::uint64_t kHighBits = kEveryByte * 0x80;

// Whether all is ASCII and nothing is a slash, eight characters at a time.
bool isPlain(std::string_view text) {
    std::uint64_t odd = 0;
    for (std::size_t at = 0; at < text.size(); at += 8) {
        std::uint64_t word = 0;
        std::memcpy(&word, text.data() + at, std::min<std::size_t>(8, text.size() - at));
        const std::uint64_t noSlash = word ^ kEveryByte * '/';
        // A borrow marks the byte that was zero; above it other bytes may be marked too, never without it.
        odd |= word | (noSlash - kEveryByte);
    }
    return (odd & kHighBits) == 0;
}

bool hasWide(std::string_view text) {
    return std::any_of(text.begin(), text.end(),
                       [](char c) { return static_cast<unsigned char>(c) >= 0x80; });
}

}  // namespace

std::string_view cleanName(std::string_view text, std::string& buffer) {
    if (isPlain(text)) return text;
    if (hasWide(text) && !isValidUtf8(text)) {
        buffer = kzutil::narrow(kzutil::widen(text));
    } else {
        buffer = text;
    }
    constexpr std::string_view kDivisionSlash = "\xE2\x88\x95";
    const auto slashes = static_cast<std::size_t>(std::count(buffer.begin(), buffer.end(), '/'));
    std::string clean;
    clean.reserve(buffer.size() + slashes * (kDivisionSlash.size() - 1));
    for (const char c : buffer) {
        if (c == '/') {
            clean += kDivisionSlash;
        } else {
            clean += c;
        }
    }
    buffer = std::move(clean);
    return buffer;
}

std::string_view NameMaker::another(std::string_view name) {
    std::uint32_t& next = m_nextSuffix.try_emplace(std::string(name), 2).first->second;
    do {
        setNumbered(m_buffer, name, next++);
    } while (m_names.find(m_buffer) != 0 || m_index.findAny(m_buffer));
    return m_buffer;
}

std::string_view NameMaker::make(std::size_t stem, std::string_view word) {
    const std::vector<std::uint32_t>& taken = m_index.takenNumbers(stem);
    std::uint32_t& number = m_last[stem];
    std::size_t& behind = m_takenBehind[stem];
    for (;;) {
        ++number;
        while (behind < taken.size() && taken[behind] < number) ++behind;
        if (behind < taken.size() && taken[behind] == number) continue;
        setNumbered(m_buffer, word, number);
        if (m_names.find(m_buffer) == 0) return m_buffer;
    }
}

}  // namespace svg
