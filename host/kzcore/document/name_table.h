// The names of a document's objects: unique, UTF-8, found in constant time.
//
// Built for a million of them: the text lies in an arena, and the index of a name is its number in
// order of addition.
#pragma once

#include <cstdint>
#include <memory_resource>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "kzutil/flat_table.h"

class ANameTable {
public:
    // The new name's number, from 1 on; 0 when the name is taken or empty.
    std::uint32_t add(std::string_view name);
    // Adds the name, or the first of name-2, name-3, … that is free; an empty stem counts as "object". With
    // `numbered`, the first of stem-1, stem-2, …. Returns the number.
    std::uint32_t addUnique(std::string_view stem, bool numbered);
    // The number of a name, 0 when there is none.
    std::uint32_t find(std::string_view name) const;
    // Prefetches the slot of a name that is about to be added or looked for; do other work before that.
    void prefetch(std::string_view name) const;
    std::string_view get(std::uint32_t number) const { return m_names[number - 1]; }
    std::size_t size() const { return m_names.size(); }
    // Takes room for so many names at once.
    void reserve(std::size_t count);

private:
    const std::uint32_t& slotOf(std::string_view name, std::uint32_t hash) const;
    std::uint32_t mask() const { return static_cast<std::uint32_t>(m_slots.size()) - 1; }
    void grow(std::size_t slots);

    std::pmr::monotonic_buffer_resource m_text;
    std::vector<std::string_view> m_names;
    // The low bits of a slot are a name's number, 0: free; the bits that numbers do not need are those of the
    // name's hash, so that the text of another name is hardly ever looked at. Slots are small because every
    // object costs an access to a random one.
    TFlatSlots<std::uint32_t> m_slots{64};
    std::unordered_map<std::string, std::uint32_t> m_nextSuffix;  // by stem
};
