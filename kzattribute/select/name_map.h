// A map from texts that outlive it, such as the names of a document's colours, to values that stay where they
// are.
//
//     NameMap<Entries> byColor;
//     byColor[color->getName().view()].add(place);
#pragma once

#include <deque>

#include "kzutil/flat_table.h"
#include "kzutil/utf.h"

template <class Value>
class NameMap {
public:
    // Made when it is not there.
    Value& operator[](kzutil::WideView name) {
        const std::uint64_t hash = kzutil::hashValues(name);
        const auto isName = [&](const Slot& slot) { return slot.hash == hash && slot.name == name; };
        if (const Slot& slot = m_slots.locate(hash, isName); slot.value) return *slot.value;
        m_slots.makeRoom([](const Slot& slot) { return slot.hash; });
        Value& value = m_values.emplace_back();
        m_slots.add(hash, {hash, name, &value});
        return value;
    }

private:
    struct Slot {
        std::uint64_t hash = 0;
        kzutil::WideView name;
        Value* value = nullptr;
        bool operator==(const Slot& other) const { return value == other.value; }
    };

    TFlatSlots<Slot> m_slots{16};
    std::deque<Value> m_values;
};
