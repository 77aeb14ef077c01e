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
#include "kzutil/flat_table.h"

class AReferItem;

class ConditionIndex {
public:
    // Both raise bad_alloc, and change nothing then.
    void add(const ACondition& condition);
    void remove(const ACondition& condition);
    void clear() noexcept;

    // Makes nothing but the name of a colour that has none yet.
    bool anyMatch(AReferItem& item) const;
    // A condition that the test accepts, of those whose hasCommonClass with the other may be TRUE; some of them
    // are offered more than once. A test that accepts none sees them all. Makes no more than anyMatch does.
    template <class Test>
    const ACondition* findAbout(const ACondition& other, Test test) const;

private:
    using Key = std::size_t;
    struct Slot {
        Key key = 0;                            // 0: never used, the end of a search
        const ACondition* condition = nullptr;  // null in a used slot: removed
        bool operator==(const Slot&) const = default;
    };
    using Keys = std::vector<Key>;

    static Keys keysOf(const ACondition& condition);
    // The key at the index, of those under which conditions about the same may be filed; 0 behind the last.
    static Key candidateKey(const ACondition& other, int index);
    void makeRoom(std::size_t count);

    // The first condition under the key that the test accepts; null when it accepts none. There are slots.
    template <class Test>
    const ACondition* find(Key key, Test test) const {
        return m_slots
            .locate(
                key,
                [&](const Slot& slot) { return slot.key == key && slot.condition && test(*slot.condition); })
            .condition;
    }

    TFlatSlots<Slot> m_slots;
    std::vector<const ACondition*> m_rest;
};

template <class Test>
const ACondition* ConditionIndex::findAbout(const ACondition& other, Test test) const {
    if (m_slots.used() > 0) {
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
