// A map from numbers to positive numbers in one block of memory: open addressing, never more than three
// quarters full, with a hash in which regular keys do not cluster.
//
//     AFlatTable numbers;
//     if (numbers.find(0xff8800) == 0) numbers.insert(0xff8800, 7);
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "kzutil/text_hash.h"

class AFlatTable {
public:
    // 0 when the key is not there.
    std::uint32_t find(std::uint32_t key) const { return m_slots[slotOf(key)].value; }
    // Takes room for one more key.
    void makeRoom() {
        if ((m_used + 1) * 4 > m_slots.size() * 3) grow();
    }
    // A key that is not there yet; the value is not 0. Cannot fail when room was made.
    void insert(std::uint32_t key, std::uint32_t value) {
        makeRoom();
        m_slots[slotOf(key)] = {key, value};
        ++m_used;
    }

private:
    struct Slot {
        std::uint32_t key = 0;
        std::uint32_t value = 0;  // 0: free
    };

    // Where the key is, or belongs.
    std::size_t slotOf(std::uint32_t key) const {
        const std::size_t mask = m_slots.size() - 1;
        std::size_t slot = kzutil::mixBits(key ^ kzutil::hashSeed()) & mask;
        while (m_slots[slot].value != 0 && m_slots[slot].key != key) slot = (slot + 1) & mask;
        return slot;
    }
    void grow() {
        std::vector<Slot> old(m_slots.size() * 2);
        old.swap(m_slots);
        for (const Slot& one : old) {
            if (one.value != 0) m_slots[slotOf(one.key)] = one;
        }
    }

    std::vector<Slot> m_slots = std::vector<Slot>(64);
    std::size_t m_used = 0;
};
