// ConditionVersion: one version of a list of conditions. A version never changes; the next one is made of it
// and shares with it all that stays the same, so that undo can keep a hundred versions of a long list for
// little more than the price of one.
//
//     ConditionVersion before;
//     ConditionVersion after = before.with(red);       // red at the end
//     visitDifferences(before, after, …);              // red came, at place 0
//     after.without(0);                                // what `before` was
//
// Conditions keep their place for good: places rise in the order of the list, with gaps where conditions have
// left. Adding, removing and each difference cost in proportion to the logarithm of the highest place.
//
// It is a tree of nodes with sixteen slots each: the digits of a place, the highest first, lead to it.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>

#include "conditions/condition.h"

class ConditionVersion {
public:
    using Place = std::uint64_t;

    std::size_t size() const { return m_size; }
    bool isEmpty() const { return m_size == 0; }
    // True for versions that share everything; false tells nothing.
    bool isIdentical(const ConditionVersion& other) const { return m_root == other.m_root; }

    // Both raise bad_alloc.
    ConditionVersion with(std::shared_ptr<ACondition> condition) const;
    // This version itself when there is nothing at the place.
    ConditionVersion without(Place place) const;

    // Calls visit(place, gone, come) for each place, in rising order, at which the versions differ, until it
    // returns false; one of the two conditions may be null. Costs nothing where they share nodes. False when
    // it was stopped.
    template <class Visit>
    friend bool visitDifferences(const ConditionVersion& before, const ConditionVersion& after,
                                 const Visit& visit) {
        const int height = before.m_height > after.m_height ? before.m_height : after.m_height;
        return visitSlots(before.rootAt(height), after.rootAt(height), height, 0, visit);
    }

private:
    static constexpr int kBits = 4;

    using Slot = std::shared_ptr<const void>;  // a node; below the last one, a condition
    struct Node {
        std::array<Slot, std::size_t{1} << kBits> slots;

        Node() = default;
        Node(const Node&) = default;
        Node& operator=(const Node&) = delete;
        // From the first on: conditions are deleted in the order of their list.
        ~Node() {
            for (Slot& slot : slots) slot.reset();
        }
    };

    static const Node* nodeOf(const Slot& slot) { return static_cast<const Node*>(slot.get()); }
    static std::size_t digit(Place place, int height) {
        return (place >> (kBits * (height - 1))) & ((std::size_t{1} << kBits) - 1);
    }
    static Slot replaced(const Slot& slot, int height, Place place, Slot condition);

    // The root as a tree of that height has it.
    Slot rootAt(int height) const;

    template <class Visit>
    static bool visitSlots(const Slot& before, const Slot& after, int height, Place place,
                           const Visit& visit) {
        if (before == after) return true;
        if (height == 0) {
            const auto condition = [](const Slot& slot) {
                return const_cast<ACondition*>(static_cast<const ACondition*>(slot.get()));
            };
            return visit(place, condition(before), condition(after));
        }
        const Node* a = nodeOf(before);
        const Node* b = nodeOf(after);
        const Slot none;
        for (std::size_t i = 0; i < (std::size_t{1} << kBits); ++i) {
            if (!visitSlots(a ? a->slots[i] : none, b ? b->slots[i] : none, height - 1, (place << kBits) | i,
                            visit))
                return false;
        }
        return true;
    }

    Slot m_root;
    int m_height = 0;  // of the tree, in nodes
    Place m_next = 0;  // the place of what is added next
    std::size_t m_size = 0;
};
