#include "formats/svg/xml/encoding.h"

#include <cstdint>

#include "formats/svg/values/text_scan.h"

namespace svg {

void appendUtf8(std::string& out, char32_t c) {
    constexpr char32_t kReplacement = 0xFFFD;
    if (c > 0x10FFFF || (c >= 0xD800 && c < 0xE000)) c = kReplacement;
    if (c < 0x80) {
        out += static_cast<char>(c);
        return;
    }
    const int more = c < 0x800 ? 1 : c < 0x10000 ? 2 : 3;
    constexpr unsigned kLead[] = {0, 0xC0, 0xE0, 0xF0};
    out += static_cast<char>(kLead[more] | (c >> (6 * more)));
    for (int shift = 6 * (more - 1); shift >= 0; shift -= 6)
        out += static_cast<char>(0x80 | ((c >> shift) & 0x3F));
}

namespace {

struct WideEncoding {
    int unit = 0;  // bytes per code unit; 0: bytes as they are
    bool bigEndian = false;
    std::size_t mark = 0;  // length of the byte order mark
};

WideEncoding detect(std::string_view b) {
    const auto starts = [b](std::string_view prefix) { return b.starts_with(prefix); };
    using namespace std::string_view_literals;
    if (starts("\0\0\xFE\xFF"sv)) return {4, true, 4};
    if (starts("\xFF\xFE\0\0"sv)) return {4, false, 4};
    if (starts("\xFE\xFF"sv)) return {2, true, 2};
    if (starts("\xFF\xFE"sv)) return {2, false, 2};
    if (starts("\0\0\0<"sv)) return {4, true, 0};
    if (starts("<\0\0\0"sv)) return {4, false, 0};
    if (starts("\0<"sv)) return {2, true, 0};
    if (starts("<\0"sv)) return {2, false, 0};
    return {};
}

std::string fromWide(std::string_view bytes, const WideEncoding& encoding) {
    std::string out;
    out.reserve(bytes.size() / 2);
    const std::size_t size = static_cast<std::size_t>(encoding.unit);
    const auto unitAt = [&](std::size_t at) {
        char32_t value = 0;
        for (std::size_t i = 0; i < size; ++i) {
            const std::size_t from = at + (encoding.bigEndian ? i : size - 1 - i);
            value = value << 8 | static_cast<unsigned char>(bytes[from]);
        }
        return value;
    };
    for (std::size_t at = encoding.mark; at + size <= bytes.size(); at += size) {
        char32_t c = unitAt(at);
        if (size == 2 && c >= 0xD800 && c < 0xDC00 && at + 4 <= bytes.size()) {
            const char32_t low = unitAt(at + 2);
            if (low >= 0xDC00 && low < 0xE000) {
                c = 0x10000 + ((c - 0xD800) << 10) + (low - 0xDC00);
                at += 2;
            }
        }
        appendUtf8(out, c);
    }
    return out;
}

// The place of the encoding's name in the XML declaration; empty when there is none.
std::string_view declaredEncoding(std::string_view bytes) {
    if (!bytes.starts_with("<?xml")) return {};
    const std::string_view declaration = bytes.substr(0, bytes.find("?>"));
    const std::size_t word = declaration.find("encoding");
    if (word == declaration.npos) return {};
    const std::size_t open = declaration.find_first_of("\"'", word);
    if (open == declaration.npos) return {};
    const std::size_t close = declaration.find(declaration[open], open + 1);
    return close == declaration.npos ? std::string_view() : declaration.substr(open + 1, close - open - 1);
}

bool isLatin1(std::string_view name) {
    for (const std::string_view known : {"iso-8859-1", "iso_8859-1", "latin1", "latin-1", "iso8859-1"}) {
        if (equalsNoCase(name, known)) return true;
    }
    return false;
}

}  // namespace

void convertToUtf8(std::string& bytes) {
    const WideEncoding wide = detect(bytes);
    bool converted = wide.unit != 0;
    if (converted) {
        bytes = fromWide(bytes, wide);
    } else if (bytes.starts_with("\xEF\xBB\xBF")) {
        bytes.erase(0, 3);  // the mark was right where the declaration says something else
        converted = isLatin1(declaredEncoding(bytes));
    } else if (isLatin1(declaredEncoding(bytes))) {
        converted = true;
        std::string out;
        out.reserve(bytes.size() + bytes.size() / 8);
        for (const char c : bytes) appendUtf8(out, static_cast<unsigned char>(c));
        bytes = std::move(out);
    }
    if (!converted) return;
    const std::string_view name = declaredEncoding(bytes);
    if (!name.empty())
        bytes.replace(static_cast<std::size_t>(name.data() - bytes.data()), name.size(), "UTF-8");
}

bool isValidUtf8(std::string_view text) {
    for (std::size_t i = 0; i < text.size();) {
        const auto byte = [&](std::size_t at) {
            return at < text.size() ? static_cast<unsigned char>(text[at]) : 0U;
        };
        const unsigned lead = byte(i);
        if (lead < 0x80) {
            ++i;
            continue;
        }
        const std::size_t more = lead >= 0xF0 ? 3 : lead >= 0xE0 ? 2 : 1;
        if (lead < 0xC2 || lead > 0xF4) return false;
        const unsigned second = byte(i + 1);
        if ((lead == 0xE0 && second < 0xA0) || (lead == 0xED && second > 0x9F) ||
            (lead == 0xF0 && second < 0x90) || (lead == 0xF4 && second > 0x8F)) {
            return false;
        }
        for (std::size_t k = 1; k <= more; ++k) {
            if ((byte(i + k) & 0xC0) != 0x80) return false;
        }
        i += more + 1;
    }
    return true;
}

}  // namespace svg
