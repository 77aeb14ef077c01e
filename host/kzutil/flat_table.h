// Hash tables in one block of memory: open addressing, never more than three quarters full.
//
//     AFlatTable numbers;  // from numbers to positive numbers
//     if (numbers.find(0xff8800) == 0) numbers.insert(0xff8800, 7);
//
// TFlatSlots is the block itself, for tables with slots of their own: a slot that equals Slot() is free. What
// is searched for stands between the slot that its hash gives and the next free one. Slots are never freed
// one by one: a table that removes something leaves a mark in its slot.
//
//     TFlatSlots<Slot> slots(64);
//     slots.makeRoom([](const Slot& slot) { return hashOf(slot.key); });
//     Slot& slot = slots.locate(hash, [&](const Slot& other) { return other.key == key; });
//     if (slot == Slot()) slots.take(slot, {key, value});
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "kzutil/text_hash.h"

template <class Slot>
class TFlatSlots {
public:
    // So many slots at first: none, or a power of two.
    explicit TFlatSlots(std::size_t count = 0) : m_slots(count) {}

    std::size_t size() const { return m_slots.size(); }
    std::size_t used() const { return m_used; }
    auto begin() { return m_slots.begin(); }
    auto end() { return m_slots.end(); }
    const Slot& at(std::uint64_t hash) const { return m_slots[hash & mask()]; }

    // The first slot on the way of the hash that `is` accepts, or else the free one where the way ends. The
    // table must have slots.
    template <class Is>
    const Slot& locate(std::uint64_t hash, Is is) const {
        for (std::size_t at = hash & mask();; at = (at + 1) & mask()) {
            if (m_slots[at] == Slot() || is(m_slots[at])) return m_slots[at];
        }
    }
    template <class Is>
    Slot& locate(std::uint64_t hash, Is is) {
        return const_cast<Slot&>(static_cast<const TFlatSlots&>(*this).locate(hash, is));
    }
    // Writes into a free slot for which room was made.
    void take(Slot& slot, const Slot& value) {
        slot = value;
        ++m_used;
    }
    // The same, into the free slot at the end of the way of the hash.
    void add(std::uint64_t hash, const Slot& value) {
        take(locate(hash, [](const Slot&) { return false; }), value);
    }

    bool hasRoom(std::size_t count) const { return (m_used + count) * 4 <= m_slots.size() * 3; }
    // Takes room for one more. A block that grows puts what is in it where `hashOf` says of each slot.
    template <class HashOf>
    void makeRoom(HashOf hashOf) {
        if (hasRoom(1)) return;
        resize(std::max<std::size_t>(64, m_slots.size() * 2), [&](const std::vector<Slot>& before) {
            for (const Slot& one : before) {
                if (!(one == Slot())) add(hashOf(one), one);
            }
        });
    }
    // Gives the block so many slots, a power of two, and puts what `refill` adds into them.
    template <class Refill>
    void resize(std::size_t count, Refill refill) {
        std::vector<Slot> before(count);
        before.swap(m_slots);
        m_used = 0;
        refill(before);
    }
    void clear() noexcept {
        m_slots.clear();
        m_used = 0;
    }

private:
    std::size_t mask() const { return m_slots.size() - 1; }

    std::vector<Slot> m_slots;
    std::size_t m_used = 0;  // with those that only mark what was removed
};

class AFlatTable {
    struct Slot {
        std::uint32_t key = 0;
        std::uint32_t value = 0;  // 0: free
        bool operator==(const Slot& other) const = default;
    };

    // Mixed, so that regular keys do not cluster.
    static std::uint64_t hashOf(std::uint32_t key) { return kzutil::mixBits(key ^ kzutil::hashSeed()); }

public:
    // 0 when the key is not there.
    std::uint32_t find(std::uint32_t key) const {
        return m_slots.locate(hashOf(key), [key](const Slot& slot) { return slot.key == key; }).value;
    }
    // Takes room for one more key.
    void makeRoom() {
        m_slots.makeRoom([](const Slot& slot) { return hashOf(slot.key); });
    }
    // A key that is not there yet; the value is not 0. Cannot fail when room was made.
    void insert(std::uint32_t key, std::uint32_t value) {
        makeRoom();
        m_slots.add(hashOf(key), {key, value});
    }

private:
    TFlatSlots<Slot> m_slots{64};
};
