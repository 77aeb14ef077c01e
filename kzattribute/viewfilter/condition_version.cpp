#include "viewfilter/condition_version.h"

#include <algorithm>
#include <utility>

// The slot with the condition (null: none) at the place. Nodes that hold nothing any more become null.
ConditionVersion::Slot ConditionVersion::replaced(const Slot& slot, int height, Place place, Slot condition) {
    if (height == 0) return condition;
    const Node* before = nodeOf(slot);
    auto node = before ? std::make_shared<Node>(*before) : std::make_shared<Node>();
    Slot& inner = node->slots[digit(place, height)];
    inner = replaced(inner, height - 1, place, std::move(condition));
    if (!inner && std::ranges::none_of(node->slots, [](const Slot& other) { return other != nullptr; }))
        return nullptr;
    return node;
}

ConditionVersion::Slot ConditionVersion::rootAt(int height) const {
    Slot root = m_root;
    for (int i = m_height; i < height && root; ++i) {
        auto above = std::make_shared<Node>();
        above->slots[0] = std::move(root);
        root = std::move(above);
    }
    return root;
}

ConditionVersion ConditionVersion::with(std::shared_ptr<ACondition> condition) const {
    ConditionVersion next;
    next.m_height = m_height;
    while (m_next >> (kBits * next.m_height) != 0 || next.m_height == 0) ++next.m_height;
    next.m_root = replaced(rootAt(next.m_height), next.m_height, m_next, std::move(condition));
    next.m_next = m_next + 1;
    next.m_size = m_size + 1;
    return next;
}

ConditionVersion ConditionVersion::without(Place place) const {
    bool isThere = place < m_next;
    const Slot* slot = &m_root;
    for (int height = m_height; isThere && height > 0; --height) {
        const Node* node = nodeOf(*slot);
        isThere = node && node->slots[digit(place, height)];
        if (isThere) slot = &node->slots[digit(place, height)];
    }
    if (!isThere) return *this;
    ConditionVersion next(*this);
    next.m_root = replaced(m_root, m_height, place, nullptr);
    --next.m_size;
    return next;
}
