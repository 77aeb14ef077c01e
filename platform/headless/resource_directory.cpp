// Layout, all little-endian. Offsets in the headers count from the start of the image, offsets in the tables
// from the root table; only a data entry's address is an RVA, an address in the loaded image.
//
//   DOS header     0 "MZ" · 60 u32 offset of the NT header
//   NT header      0 "PE\0\0" · 6 u16 number of sections · 20 u16 size of the optional header · 24 optional
//   header optional       0 u16 0x10b (PE32) or 0x20b (PE32+) · 92 or 108 u32 number of data directories
//                  96 or 112 data directories: u32 RVA, u32 size; the third is the resources'
//   section        8 u32 size in memory · 12 u32 RVA · 16 u32 size in the file · 20 u32 offset in the file
//   table          12 u16 named entries · 14 u16 numbered entries · 16 entries
//   entry          0 u32 number, or 0x80000000 + offset of a name · 4 u32 data entry, or 0x80000000 + offset
//   of a table name           0 u16 length · 2 UTF-16 code units data entry     0 u32 RVA · 4 u32 size
#include "platform/headless/resource_directory.h"

#include <algorithm>

namespace headless {
namespace {

constexpr std::size_t section_header_size = 40;
constexpr std::size_t max_sections = 96;  // what the Windows loader accepts
constexpr DWORD flag = 0x80000000;        // a name rather than a number, a table rather than a data entry

bool holds(Bytes bytes, std::size_t offset, std::size_t size) {
    return offset <= bytes.size() && size <= bytes.size() - offset;
}

WORD word_at(Bytes bytes, std::size_t offset) {
    return static_cast<WORD>(bytes[offset] | bytes[offset + 1] << 8);
}

DWORD dword_at(Bytes bytes, std::size_t offset) {
    return word_at(bytes, offset) | static_cast<DWORD>(word_at(bytes, offset + 2)) << 16;
}

// The bytes of the image from an RVA to the end of its section, as far as the file holds them; none outside
// of all sections.
std::optional<Bytes> bytes_from(Bytes image, Bytes sections, DWORD rva) {
    for (std::size_t at = 0; at < sections.size(); at += section_header_size) {
        const DWORD memory_size = dword_at(sections, at + 8);
        const DWORD address = dword_at(sections, at + 12);
        const DWORD file_size = dword_at(sections, at + 16);
        const DWORD file_offset = dword_at(sections, at + 20);
        // Alignment in the file makes the file's size the larger one, zeros at the end the memory's.
        const DWORD size = memory_size == 0 ? file_size : std::min(memory_size, file_size);
        if (rva < address || rva - address >= size) continue;
        if (!holds(image, file_offset, size)) return std::nullopt;
        return image.subspan(file_offset, size).subspan(rva - address);
    }
    return std::nullopt;
}

char16_t lower(char16_t c) {
    return c >= u'A' && c <= u'Z' ? static_cast<char16_t>(c + 32) : c;
}

bool same_text(Bytes root, std::size_t offset, std::u16string_view text) {
    if (!holds(root, offset, 2) || word_at(root, offset) != text.size()) return false;
    if (!holds(root, offset + 2, text.size() * 2)) return false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (lower(word_at(root, offset + 2 + i * 2)) != lower(text[i])) return false;
    }
    return true;
}

ResourceName number_behind_hash(ResourceName name) {
    if (name.text.size() < 2 || name.text[0] != u'#') return name;
    DWORD number = 0;
    for (const char16_t c : name.text.substr(1)) {
        if (c < u'0' || c > u'9') return name;
        number = number * 10 + (c - u'0');
        if (number > 0xffff) return name;
    }
    return {static_cast<WORD>(number), {}};
}

// The entries of a table, cut to those that the bytes hold.
Bytes entries_of(Bytes root, std::size_t table) {
    if (!holds(root, table, 16)) return {};
    const std::size_t count = std::size_t{word_at(root, table + 12)} + word_at(root, table + 14);
    const std::size_t held = (root.size() - table - 16) / 8;
    return root.subspan(table + 16, std::min(count, held) * 8);
}

// What the table's entry of this name points at; the flag tells a table. Searched from the first to the last,
// since nobody vouches for the order.
std::optional<DWORD> find_entry(Bytes root, std::size_t table, ResourceName name) {
    const Bytes entries = entries_of(root, table);
    for (std::size_t at = 0; at < entries.size(); at += 8) {
        const DWORD key = dword_at(entries, at);
        const bool is_named = (key & flag) != 0;
        const bool matches =
            name.text.empty() ? key == name.number : is_named && same_text(root, key & ~flag, name.text);
        if (matches) return dword_at(entries, at + 4);
    }
    return std::nullopt;
}

}  // namespace

std::optional<ResourceDirectory> open_resources(Bytes image) {
    if (!holds(image, 0, 64) || word_at(image, 0) != 0x5a4d) return std::nullopt;
    const std::size_t nt = dword_at(image, 60);
    if (!holds(image, nt, 24) || dword_at(image, nt) != 0x4550) return std::nullopt;

    const std::size_t section_count = word_at(image, nt + 6);
    const std::size_t optional_size = word_at(image, nt + 20);
    const std::size_t sections = nt + 24 + optional_size;
    if (section_count > max_sections || !holds(image, sections, section_count * section_header_size)) {
        return std::nullopt;
    }

    const Bytes optional = image.subspan(nt + 24, optional_size);
    if (optional.size() < 2) return std::nullopt;
    const WORD magic = word_at(optional, 0);
    if (magic != 0x10b && magic != 0x20b) return std::nullopt;
    const std::size_t directories = magic == 0x10b ? 96 : 112;
    if (optional.size() < directories) return std::nullopt;

    ResourceDirectory result{image, image.subspan(sections, section_count * section_header_size), {}};
    if (dword_at(optional, directories - 4) < 3 || !holds(optional, directories, 24)) return result;
    const DWORD root = dword_at(optional, directories + 16);
    if (root != 0) result.root = bytes_from(image, result.sections, root).value_or(Bytes{});
    return result;
}

std::optional<Bytes> resource_bytes(const ResourceDirectory& directory, DWORD entry) {
    if (!holds(directory.root, entry, 16)) return std::nullopt;
    const DWORD rva = dword_at(directory.root, entry);
    const DWORD size = dword_at(directory.root, entry + 4);
    const auto bytes = bytes_from(directory.image, directory.sections, rva);
    if (!bytes || size > bytes->size()) return std::nullopt;
    return bytes->first(size);
}

FoundResource find_resource(const ResourceDirectory& directory, ResourceName type, ResourceName name) {
    const Bytes root = directory.root;
    const auto names = find_entry(root, 0, number_behind_hash(type));
    if (!names) return {ERROR_RESOURCE_TYPE_NOT_FOUND, {}};
    if ((*names & flag) == 0) return {ERROR_RESOURCE_DATA_NOT_FOUND, {}};

    const auto languages = find_entry(root, *names & ~flag, number_behind_hash(name));
    if (!languages) return {ERROR_RESOURCE_NAME_NOT_FOUND, {}};
    if ((*languages & flag) == 0) return {ERROR_RESOURCE_DATA_NOT_FOUND, {}};

    const Bytes first = entries_of(root, *languages & ~flag);
    if (first.empty()) return {ERROR_RESOURCE_DATA_NOT_FOUND, {}};
    const DWORD entry = dword_at(first, 4);
    const auto bytes = (entry & flag) == 0 ? resource_bytes(directory, entry) : std::nullopt;
    if (!bytes) return {ERROR_RESOURCE_DATA_NOT_FOUND, {}};
    return {ERROR_SUCCESS, {entry, *bytes}};
}

std::optional<Bytes> find_string(const ResourceDirectory& directory, WORD id) {
    const FoundResource block = find_resource(directory, {6}, {static_cast<WORD>(id / 16 + 1)});
    if (block.error != ERROR_SUCCESS) return std::nullopt;
    const Bytes bytes = block.resource.bytes;
    std::size_t at = 0;
    for (int place = id % 16;; --place) {
        if (!holds(bytes, at, 2)) return std::nullopt;
        const std::size_t size = std::size_t{word_at(bytes, at)} * 2;
        at += 2;
        if (!holds(bytes, at, size)) return std::nullopt;
        if (place == 0) return bytes.subspan(at, size);
        at += size;
    }
}

}  // namespace headless
