// Where the conditions of a page stand, by their paths, and which numbered names are still free: a page of a
// hundred thousand conditions stays linear to fill.
//
//     if (index.find(path) < 0) index.add(path, place);
//     index.nextFree(_T("Gradient/g1"));  // 3 when Gradient/g1_1 and Gradient/g1_2 are held
//
// Paths are only ever added: the lists that it is about lose none.
#pragma once

#include <functional>
#include <memory>
#include <memory_resource>
#include <unordered_map>

#include "base/item_path.h"
#include "kzutil/flat_table.h"

namespace checkpage {

// The name that stands for `base` when its first numbers are taken: "base_3".
AItemPath numberedPath(const AString& base, int number);

class PathIndex {
public:
    // The place in the list; -1 when no condition has the path.
    int find(const AString& path) const;
    // A path that no condition has yet.
    void add(const AString& path, int place);
    // The smallest number from 1 on whose name no condition has.
    int nextFree(const AString& base);

private:
    struct Slot {
        std::uint64_t hash = 0;
        kzutil::WideView path;
        int number = 0;  // one more than the place
        bool operator==(const Slot& other) const { return number == other.number; }
    };
    // Of views, too, so that looking up copies no text.
    struct Hash {
        using is_transparent = void;
        std::size_t operator()(kzutil::WideView text) const;
    };

    const Slot& slotOf(kzutil::WideView path, std::uint64_t hash) const;

    // In one piece of memory, which the paths share.
    std::unique_ptr<std::pmr::monotonic_buffer_resource> m_texts =
        std::make_unique<std::pmr::monotonic_buffer_resource>();
    TFlatSlots<Slot> m_slots{64};
    std::unordered_map<kzutil::WideString, int, Hash, std::equal_to<>> m_free;  // numbers below are taken
};

}  // namespace checkpage
