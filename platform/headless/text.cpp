#include "platform/headless/text.h"

namespace headless {
namespace {

constexpr char32_t replacement = 0xfffd;

bool is_high_surrogate(char32_t c) {
    return c >= 0xd800 && c < 0xdc00;
}
bool is_low_surrogate(char32_t c) {
    return c >= 0xdc00 && c < 0xe000;
}

void append_utf8(std::string& result, char32_t c) {
    const auto tail = [&](int shift) { result += static_cast<char>(0x80 | ((c >> shift) & 0x3f)); };
    if (c < 0x80) {
        result += static_cast<char>(c);
    } else if (c < 0x800) {
        result += static_cast<char>(0xc0 | c >> 6);
        tail(0);
    } else if (c < 0x10000) {
        result += static_cast<char>(0xe0 | c >> 12);
        tail(6);
        tail(0);
    } else {
        result += static_cast<char>(0xf0 | c >> 18);
        tail(12);
        tail(6);
        tail(0);
    }
}

void append_utf16(std::u16string& result, char32_t c) {
    if (c < 0x10000) {
        result += static_cast<char16_t>(c);
    } else {
        result += static_cast<char16_t>(0xd800 + ((c - 0x10000) >> 10));
        result += static_cast<char16_t>(0xdc00 + ((c - 0x10000) & 0x3ff));
    }
}

// One character from the front of the bytes, which are not empty. A malformed sequence is one byte long.
char32_t take_character(std::string_view& bytes) {
    struct Form {
        unsigned char mask, lead;
        std::size_t length;
        char32_t least;  // smaller ones have a shorter form, which is the only right one
    };
    static constexpr Form forms[] = {
        {0x80, 0x00, 1, 0}, {0xe0, 0xc0, 2, 0x80}, {0xf0, 0xe0, 3, 0x800}, {0xf8, 0xf0, 4, 0x10000}};

    const auto lead = static_cast<unsigned char>(bytes[0]);
    for (const Form& form : forms) {
        if ((lead & form.mask) != form.lead) continue;
        if (bytes.size() < form.length) break;
        char32_t c = lead & static_cast<unsigned char>(~form.mask);
        bool well_formed = true;
        for (std::size_t i = 1; i < form.length; ++i) {
            const auto tail = static_cast<unsigned char>(bytes[i]);
            well_formed = well_formed && (tail & 0xc0) == 0x80;
            c = c << 6 | (tail & 0x3f);
        }
        if (!well_formed || c < form.least || c > 0x10ffff || is_high_surrogate(c) || is_low_surrogate(c))
            break;
        bytes.remove_prefix(form.length);
        return c;
    }
    bytes.remove_prefix(1);
    return replacement;
}

}  // namespace

std::string to_utf8(std::u16string_view text) {
    std::string result;
    result.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        char32_t c = text[i];
        if (is_high_surrogate(c) && i + 1 < text.size() && is_low_surrogate(text[i + 1])) {
            c = 0x10000 + ((c - 0xd800) << 10) + (text[++i] - 0xdc00);
        } else if (is_high_surrogate(c) || is_low_surrogate(c)) {
            c = replacement;
        }
        append_utf8(result, c);
    }
    return result;
}

std::u16string to_utf16(std::string_view utf8) {
    std::u16string result;
    result.reserve(utf8.size());
    while (!utf8.empty()) append_utf16(result, take_character(utf8));
    return result;
}

}  // namespace headless
