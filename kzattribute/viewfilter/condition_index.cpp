#include "viewfilter/condition_index.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <typeinfo>

#include "conditions/refer_condition.h"
#include "kzcore/document/refer_item.h"
#include "kzutil/text_hash.h"

namespace {

// One multiplier for each kind of key, so that a class and an item of one name do not meet.
enum class KeyKind : std::uint64_t { className = 1, identity = 3, name = 5, color = 7 };

std::uint64_t hashOf(const AString& text) {
    return kzutil::hashValues(text.view());
}

// Never 0.
std::size_t keyOf(KeyKind kind, std::uint64_t hash) {
    const std::uint64_t key = kzutil::mixBits(hash * static_cast<std::uint64_t>(kind));
    return static_cast<std::size_t>(key) | std::size_t{1} << 63;
}

std::size_t classKey(const AString& className) {
    return keyOf(KeyKind::className, hashOf(className));
}

std::size_t identityKey(const AReferItem* item) {
    return keyOf(KeyKind::identity, reinterpret_cast<std::uintptr_t>(item) ^ kzutil::hashSeed());
}

std::size_t nameKey(std::uint64_t nameHash) {
    return keyOf(KeyKind::name, nameHash);
}

// Colours compare equal by class and components. The name is taken in too: all spot colours have the same
// components, and many swatches may have the same name.
std::size_t colorKey(const AColorItem& color, std::uint64_t nameHash) {
    std::uint64_t hash = nameHash ^ reinterpret_cast<std::uintptr_t>(&color.getClassInfo());
    for (const float component : color.getComponents()) {
        const float unsignedZero = component + 0.0F;  // the two zeros compare equal
        hash = kzutil::mixBits(hash ^ std::bit_cast<std::uint32_t>(unsignedZero));
    }
    return keyOf(KeyKind::color, hash);
}

// Under any of these a condition that accepts the item by being about it, or an equal one, may be filed. The
// identity comes first, for it needs no name.
template <class Visit>
bool anyItemKey(const AReferItem& item, Visit visit) {
    if (visit(identityKey(&item))) return true;
    const std::uint64_t nameHash = hashOf(item.getName());
    const auto* color = dynamic_cast<const AColorItem*>(&item);
    return (color && visit(colorKey(*color, nameHash))) || visit(nameKey(nameHash));
}

const AReferCondition* asIndexed(const ACondition& condition) {
    return typeid(condition) == typeid(AReferCondition) ? static_cast<const AReferCondition*>(&condition)
                                                        : nullptr;
}

}  // namespace

// Only of the host's own colours is known what they compare; the name alone serves for every other item.
ConditionIndex::Keys ConditionIndex::keysOf(const ACondition& condition) {
    Keys keys;
    const AReferItem* item = static_cast<const AReferCondition&>(condition).getReferItem();
    if (!item) {
        for (const AString& name : condition.getClassNames()) keys.push_back(classKey(name));
        return keys;
    }
    keys.push_back(identityKey(item));
    const std::uint64_t nameHash = hashOf(item->getName());
    keys.push_back(typeid(*item) == typeid(AColorItem)
                       ? colorKey(static_cast<const AColorItem&>(*item), nameHash)
                       : nameKey(nameHash));
    return keys;
}

ConditionIndex::Key ConditionIndex::candidateKey(const ACondition& other, int index) {
    const auto* refers = dynamic_cast<const AReferCondition*>(&other);
    if (!refers) return 0;
    const AReferItem* item = refers->getReferItem();
    if (!item) {
        const AStringArray& names = other.getClassNames();
        return index < names.GetSize() ? classKey(names[index]) : 0;
    }
    Key found = 0;
    anyItemKey(*item, [&](Key key) {
        found = index == 0 ? key : 0;
        return index-- == 0;
    });
    return found;
}

void ConditionIndex::add(const ACondition& condition) {
    if (!asIndexed(condition)) {
        m_rest.push_back(&condition);
        return;
    }
    const Keys keys = keysOf(condition);
    makeRoom(keys.size());
    for (const Key key : keys) m_slots.add(key, {key, &condition});
}

void ConditionIndex::remove(const ACondition& condition) {
    if (!asIndexed(condition)) {
        std::erase(m_rest, &condition);
        return;
    }
    for (const Key key : keysOf(condition)) {
        Slot& slot =
            m_slots.locate(key, [&](const Slot& s) { return s.key == key && s.condition == &condition; });
        slot.condition = nullptr;
    }
}

void ConditionIndex::clear() noexcept {
    m_slots.clear();
    m_rest.clear();
}

bool ConditionIndex::anyMatch(AReferItem& item) const {
    const auto matches = [&item](const ACondition& condition) { return condition.isMatch(&item) != 0; };
    const auto matchesUnder = [&](Key key) { return find(key, matches) != nullptr; };
    if (m_slots.used() > 0 && (matchesUnder(classKey(item.getClassName())) || anyItemKey(item, matchesUnder)))
        return true;
    return std::any_of(m_rest.begin(), m_rest.end(),
                       [&](const ACondition* condition) { return matches(*condition); });
}

// Twice as many slots as keys, without those that were removed.
void ConditionIndex::makeRoom(std::size_t count) {
    if (m_slots.hasRoom(count)) return;
    const auto living = static_cast<std::size_t>(
        std::count_if(m_slots.begin(), m_slots.end(), [](const Slot& slot) { return slot.condition; }));
    m_slots.resize(std::bit_ceil((living + count) * 2 + 1), [this](const std::vector<Slot>& before) {
        for (const Slot& slot : before) {
            if (slot.condition) m_slots.add(slot.key, slot);
        }
    });
}
