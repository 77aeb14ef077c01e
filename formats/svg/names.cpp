#include "formats/svg/names.h"

#include <charconv>

#include "formats/svg/encoding.h"
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

}  // namespace

std::string_view cleanName(std::string_view text, std::string& buffer) {
    bool slash = false;
    bool wide = false;
    for (const char c : text) {
        slash |= c == '/';
        wide |= static_cast<unsigned char>(c) >= 0x80;
    }
    if (wide && !isValidUtf8(text)) {
        buffer = kzutil::narrow(kzutil::widen(text));
    } else if (slash) {
        buffer = text;
    } else {
        return text;
    }
    constexpr std::string_view kDivisionSlash = "\xE2\x88\x95";
    for (std::size_t at = 0; (at = buffer.find('/', at)) != buffer.npos; at += kDivisionSlash.size()) {
        buffer.replace(at, 1, kDivisionSlash);
    }
    return buffer;
}

std::string_view NameMaker::fromId(std::string_view id) {
    const std::string_view name = cleanName(id, m_clean);
    if (m_names.find(name) == 0) return name;
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
