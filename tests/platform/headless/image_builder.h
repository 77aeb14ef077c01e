// PE images made by hand, to lie in ways that no resource compiler does.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "platform/headless/resource_directory.h"

using Image = std::vector<std::uint8_t>;

constexpr DWORD section_address = 0x1000;
constexpr DWORD table_flag = 0x80000000;

inline void put_word(Image& image, std::size_t at, WORD value) {
    image.at(at) = static_cast<std::uint8_t>(value);
    image.at(at + 1) = static_cast<std::uint8_t>(value >> 8);
}

inline void put_dword(Image& image, std::size_t at, DWORD value) {
    put_word(image, at, LOWORD(value));
    put_word(image, at + 2, HIWORD(value));
}

// The content of a resource section, appended piece by piece; every piece answers where it stands.
class SectionBuilder {
public:
    struct Entry {
        DWORD key, target;
    };

    DWORD table(const std::vector<Entry>& entries) {
        const DWORD at = append(16 + entries.size() * 8);
        put_word(bytes, at + 14, static_cast<WORD>(entries.size()));
        for (std::size_t i = 0; i < entries.size(); ++i) {
            put_dword(bytes, at + 16 + i * 8, entries[i].key);
            put_dword(bytes, at + 20 + i * 8, entries[i].target);
        }
        return at;
    }
    DWORD name(std::u16string_view text) {
        const DWORD at = append(2 + text.size() * 2);
        put_word(bytes, at, static_cast<WORD>(text.size()));
        for (std::size_t i = 0; i < text.size(); ++i) put_word(bytes, at + 2 + i * 2, text[i]);
        return at;
    }
    DWORD data_entry(DWORD address, DWORD size) {
        const DWORD at = append(16);
        put_dword(bytes, at, address);
        put_dword(bytes, at + 4, size);
        return at;
    }
    DWORD data(std::string_view content) {
        const DWORD at = append(content.size());
        std::copy(content.begin(), content.end(), bytes.begin() + at);
        return at;
    }

    Image bytes;

private:
    DWORD append(std::size_t size) {
        const std::size_t at = bytes.size();
        bytes.resize(at + size);
        return static_cast<DWORD>(at);
    }
};

enum class Form { pe32, pe32_plus };

// Where the fields stand that tests falsify.
constexpr std::size_t nt_at = 0x40;
constexpr std::size_t section_count_at = nt_at + 6;
constexpr std::size_t optional_at = nt_at + 24;

struct BuiltImage {
    Image bytes;
    std::size_t directories_at, section_header_at, section_at;
};

inline BuiltImage build_image(const Image& section, Form form = Form::pe32_plus) {
    const std::size_t directories = form == Form::pe32 ? 96 : 112;
    BuiltImage built;
    built.directories_at = optional_at + directories;
    built.section_header_at = built.directories_at + 16 * 8;
    built.section_at = built.section_header_at + 40;
    Image& image = built.bytes;
    image.resize(built.section_at);
    put_word(image, 0, 0x5a4d);
    put_dword(image, 60, nt_at);
    put_dword(image, nt_at, 0x4550);
    put_word(image, section_count_at, 1);
    put_word(image, nt_at + 20, static_cast<WORD>(directories + 16 * 8));
    put_word(image, optional_at, form == Form::pe32 ? 0x10b : 0x20b);
    put_dword(image, built.directories_at - 4, 16);
    put_dword(image, built.directories_at + 16, section_address);
    put_dword(image, built.directories_at + 20, static_cast<DWORD>(section.size()));
    put_dword(image, built.section_header_at + 8, static_cast<DWORD>(section.size()));
    put_dword(image, built.section_header_at + 12, section_address);
    put_dword(image, built.section_header_at + 16, static_cast<DWORD>(section.size()));
    put_dword(image, built.section_header_at + 20, static_cast<DWORD>(built.section_at));
    image.insert(image.end(), section.begin(), section.end());
    return built;
}

// Type 10, name 1, one language, and these three bytes.
struct SmallSection {
    SectionBuilder builder;
    DWORD entry = 0;

    SmallSection() {
        constexpr DWORD table_size = 24;
        builder.table({{10, table_flag | table_size}});
        builder.table({{1, table_flag | (2 * table_size)}});
        builder.table({{0x409, 3 * table_size}});
        entry = builder.data_entry(section_address + 3 * table_size + 16, 3);
        builder.data("abc");
    }
};
