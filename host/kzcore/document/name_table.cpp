#include "kzcore/document/name_table.h"

#include <charconv>
#include <cstring>

#include "kzutil/text_hash.h"

namespace {

std::uint32_t hashOf(std::string_view name) {
    return static_cast<std::uint32_t>(kzutil::hashText(name));
}

}  // namespace

ANameTable::ANameTable() : m_slots(64) {}

// The slot that holds the name, or the free one where it belongs.
std::size_t ANameTable::slotOf(std::string_view name, std::uint32_t hash) const {
    const std::uint32_t low = mask();
    for (std::uint32_t index = hash & low;; index = (index + 1) & low) {
        const std::uint32_t slot = m_slots[index];
        if (slot == 0 || (((slot ^ hash) & ~low) == 0 && get(slot & low) == name)) return index;
    }
}

void ANameTable::grow(std::size_t slots) {
    std::vector<std::uint32_t> fresh(slots);
    fresh.swap(m_slots);
    const std::uint32_t low = mask();
    for (std::uint32_t number = 1; number <= m_names.size(); ++number) {
        const std::uint32_t hash = hashOf(get(number));
        std::uint32_t index = hash & low;
        while (m_slots[index] != 0) index = (index + 1) & low;
        m_slots[index] = (hash & ~low) | number;
    }
}

void ANameTable::prefetch(std::string_view name) const {
    __builtin_prefetch(&m_slots[hashOf(name) & mask()]);
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
    const std::uint32_t hash = hashOf(name);
    std::uint32_t& slot = m_slots[slotOf(name, hash)];
    if (slot != 0) return 0;
    char* text = static_cast<char*>(m_text.allocate(name.size(), 1));
    std::memcpy(text, name.data(), name.size());
    m_names.emplace_back(text, name.size());
    const auto number = static_cast<std::uint32_t>(m_names.size());
    slot = (hash & ~mask()) | number;
    return number;
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
    return m_slots[slotOf(name, hashOf(name))] & mask();
}
