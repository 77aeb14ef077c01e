// A map from addresses to small values in one block of memory, for what is asked for every object of a
// drawing.
//
//     PointerTable<bool> seen;
//     if (!std::exchange(seen[object], true)) …
//
// A reference to a value holds until the next value is made. Null is no key.
//
// PointerMap is the same for values of many bytes, or such as have to stay where they are: a table is at most
// half full, and what it does not hold costs as much memory as what it does.
#pragma once

#include <algorithm>
#include <bit>
#include <cstdint>
#include <deque>
#include <utility>
#include <vector>

#include "kzutil/text_hash.h"

template <class Value>
class PointerTable {
public:
    // With room for so many keys.
    explicit PointerTable(std::size_t room = 0)
        : m_slots(std::bit_ceil(std::max<std::size_t>(16, room * 2))) {}

    // Null when the key is not there.
    Value* find(const void* key) {
        Slot& slot = m_slots[slotOf(key)];
        return slot.key ? &slot.value : nullptr;
    }
    const Value* find(const void* key) const { return const_cast<PointerTable*>(this)->find(key); }
    bool contains(const void* key) const { return find(key) != nullptr; }
    // A default value when the key is not there.
    const Value& get(const void* key) const { return m_slots[slotOf(key)].value; }

    // Made when it is not there.
    Value& operator[](const void* key) {
        const std::size_t slot = slotOf(key);
        return m_slots[slot].key ? m_slots[slot].value : insert(key);
    }

    bool isEmpty() const { return m_used == 0; }
    void clear() { *this = PointerTable(); }

private:
    struct Slot {
        const void* key = nullptr;
        Value value{};
    };

    // Where the key is, or belongs.
    std::size_t slotOf(const void* key) const {
        const std::size_t mask = m_slots.size() - 1;
        std::size_t slot = kzutil::mixBits(reinterpret_cast<std::uintptr_t>(key) >> 3) & mask;
        while (m_slots[slot].key && m_slots[slot].key != key) slot = (slot + 1) & mask;
        return slot;
    }
    Value& insert(const void* key) {
        if ((m_used + 1) * 2 > m_slots.size()) grow();
        Slot& slot = m_slots[slotOf(key)];
        slot.key = key;
        ++m_used;
        return slot.value;
    }
    void grow() {
        std::vector<Slot> old(m_slots.size() * 2);
        old.swap(m_slots);
        for (Slot& one : old) {
            if (one.key) m_slots[slotOf(one.key)] = std::move(one);
        }
    }

    std::vector<Slot> m_slots;
    std::size_t m_used = 0;
};

template <class Value>
class PointerMap {
public:
    // Null when the key is not there.
    Value* find(const void* key) {
        const std::uint32_t* number = m_numbers.find(key);
        return number ? &m_values[*number - 1] : nullptr;
    }
    // Made when it is not there.
    Value& operator[](const void* key) {
        std::uint32_t& number = m_numbers[key];
        if (number == 0) {
            m_values.emplace_back();
            number = static_cast<std::uint32_t>(m_values.size());
        }
        return m_values[number - 1];
    }

private:
    PointerTable<std::uint32_t> m_numbers;  // from 1 on
    std::deque<Value> m_values;
};
