#include "kzcore/name_table.h"

#include <charconv>
#include <cstring>
#include <functional>

namespace {

std::uint64_t hashOf(std::string_view name) {
    return std::hash<std::string_view>()(name);
}

// The low bits choose the slot, so the tag is taken from the high ones.
std::uint32_t tagOf(std::uint64_t hash) {
    return static_cast<std::uint32_t>(hash >> 32);
}

}  // namespace

ANameTable::ANameTable() : m_slots(64) {}

// The slot that holds the name, or the free one where it belongs.
std::size_t ANameTable::slotOf(std::string_view name, std::uint64_t hash) const {
    const std::size_t mask = m_slots.size() - 1;
    const std::uint32_t tag = tagOf(hash);
    std::size_t slot = hash & mask;
    while (m_slots[slot].number != 0 && (m_slots[slot].tag != tag || get(m_slots[slot].number) != name)) {
        slot = (slot + 1) & mask;
    }
    return slot;
}

void ANameTable::grow(std::size_t slots) {
    std::vector<Slot> old(slots);
    old.swap(m_slots);
    for (const Slot& one : old) {
        if (one.number != 0) m_slots[slotOf(get(one.number), hashOf(get(one.number)))] = one;
    }
}

void ANameTable::reserve(std::size_t count) {
    m_names.reserve(count);
    std::size_t slots = m_slots.size();
    while (slots * 3 < count * 4) slots *= 2;
    if (slots != m_slots.size()) grow(slots);
}

std::uint32_t ANameTable::add(std::string_view name) {
    if (name.empty()) return 0;
    if ((m_names.size() + 1) * 4 > m_slots.size() * 3) grow(m_slots.size() * 2);
    const std::uint64_t hash = hashOf(name);
    Slot& slot = m_slots[slotOf(name, hash)];
    if (slot.number != 0) return 0;
    char* text = static_cast<char*>(m_text.allocate(name.size(), 1));
    std::memcpy(text, name.data(), name.size());
    m_names.emplace_back(text, name.size());
    slot = {static_cast<std::uint32_t>(m_names.size()), tagOf(hash)};
    return slot.number;
}

std::uint32_t ANameTable::addUnique(std::string_view stem, bool numbered) {
    if (stem.empty()) {
        stem = "object";
        numbered = true;
    }
    if (!numbered) {
        if (const std::uint32_t number = add(stem)) return number;
    }
    // The next suffix of each stem is remembered, so that a million like names do not search for theirs.
    std::uint32_t& next = m_nextSuffix.try_emplace(std::string(stem), numbered ? 1 : 2).first->second;
    std::string name(stem);
    name += '-';
    for (;;) {
        char digits[16];
        const auto end = std::to_chars(digits, digits + sizeof digits, next++).ptr;
        name.resize(stem.size() + 1);
        name.append(digits, end);
        if (const std::uint32_t number = add(name)) return number;
    }
}

std::uint32_t ANameTable::find(std::string_view name) const {
    return m_slots[slotOf(name, hashOf(name))].number;
}
