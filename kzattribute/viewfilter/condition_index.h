// ConditionIndex: answers for a list of conditions what walking the list would answer, without walking it.
//
//     ConditionIndex index;
//     index.add(*condition);                 // of the list; not owned
//     if (index.anyMatch(*item)) …           // some condition's isMatch says yes
//
// An AReferCondition is filed under what an item that it accepts must have: a class name, or the identity or
// the name (and colour) of its item. Candidates are then asked themselves, so the index decides nothing.
// Whatever is not exactly an AReferCondition is kept aside and asked always.
//
// Neither a condition nor its item's class, name and colour may change while the condition is in the index.
#pragma once

#include <cstddef>
#include <vector>

#include "conditions/condition.h"

class AReferItem;

class ConditionIndex {
public:
    // All or nothing when memory runs out.
    void add(const ACondition& condition);
    void remove(const ACondition& condition) noexcept;
    void clear() noexcept;

    // Makes nothing but the name of a colour that has none yet.
    bool anyMatch(AReferItem& item) const;
    // A condition that the test accepts, of those whose hasCommonClass with the other may be TRUE. Makes no
    // more than anyMatch does.
    template <class Test>
    const ACondition* findAbout(const ACondition& other, Test test) const;

private:
    using Key = std::size_t;
    struct Slot {
        Key key = 0;                            // 0: never used, the end of a search
        const ACondition* condition = nullptr;  // null in a used slot: removed
    };
    using Keys = std::vector<Key>;

    static Keys keysOf(const ACondition& condition);
    // The key at the index, of those under which conditions about the same may be filed; 0 behind the last.
    static Key candidateKey(const ACondition& other, int index);
    void makeRoom(std::size_t count);
    void insert(Slot slot);

    // The first condition under the key that the test accepts.
    template <class Test>
    const ACondition* find(Key key, Test test) const {
        const std::size_t mask = m_slots.size() - 1;
        for (std::size_t at = key & mask; m_slots[at].key != 0; at = (at + 1) & mask) {
            const Slot& slot = m_slots[at];
            if (slot.key == key && slot.condition && test(*slot.condition)) return slot.condition;
        }
        return nullptr;
    }

    std::vector<Slot> m_slots;  // none, or a power of two, of which at least a quarter is never used
    std::size_t m_used = 0;
    std::vector<const ACondition*> m_rest;
};

template <class Test>
const ACondition* ConditionIndex::findAbout(const ACondition& other, Test test) const {
    if (m_used > 0) {
        Key key = 0;
        for (int i = 0; (key = candidateKey(other, i)) != 0; ++i) {
            if (const ACondition* found = find(key, test)) return found;
        }
    }
    for (const ACondition* condition : m_rest) {
        if (test(*condition)) return condition;
    }
    return nullptr;
}
