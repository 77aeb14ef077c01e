#include "kzcore/document/name_table.h"

#include <charconv>
#include <cstring>

#include "kzutil/text_hash.h"

namespace {

std::uint32_t hashOf(std::string_view name) {
    return static_cast<std::uint32_t>(kzutil::hashText(name));
}

}  // namespace

// The slot that holds the name, or the free one where it belongs.
const std::uint32_t& ANameTable::slotOf(std::string_view name, std::uint32_t hash) const {
    const std::uint32_t low = mask();
    return m_slots.locate(hash, [=, this](std::uint32_t slot) {
        return ((slot ^ hash) & ~low) == 0 && get(slot & low) == name;
    });
}

void ANameTable::grow(std::size_t slots) {
    m_slots.resize(slots, [this](const auto&) {
        for (std::uint32_t number = 1; number <= m_names.size(); ++number) {
            const std::uint32_t hash = hashOf(get(number));
            m_slots.add(hash, (hash & ~mask()) | number);
        }
    });
}

void ANameTable::prefetch(std::string_view name) const {
    __builtin_prefetch(&m_slots.at(hashOf(name)));
}

void ANameTable::reserve(std::size_t count) {
    m_names.reserve(count);
    std::size_t slots = m_slots.size();
    while (slots * 3 < count * 4) slots *= 2;
    if (slots != m_slots.size()) grow(slots);
}

std::uint32_t ANameTable::add(std::string_view name) {
    if (name.empty()) return 0;
    if (!m_slots.hasRoom(1)) grow(m_slots.size() * 2);
    const std::uint32_t hash = hashOf(name);
    auto& slot = const_cast<std::uint32_t&>(slotOf(name, hash));
    if (slot != 0) return 0;
    char* text = static_cast<char*>(m_text.allocate(name.size(), 1));
    std::memcpy(text, name.data(), name.size());
    m_names.emplace_back(text, name.size());
    const auto number = static_cast<std::uint32_t>(m_names.size());
    m_slots.take(slot, (hash & ~mask()) | number);
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
    return slotOf(name, hashOf(name)) & mask();
}
