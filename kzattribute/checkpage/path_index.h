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
    // Of views, too, so that looking up copies no text.
    struct Hash {
        using is_transparent = void;
        std::size_t operator()(kzutil::WideView text) const;
    };
    // In one piece of memory, which the paths share.
    struct Places {
        std::pmr::monotonic_buffer_resource memory;
        std::pmr::unordered_map<kzutil::WideView, int, Hash> byPath{&memory};
    };

    std::unique_ptr<Places> m_places = std::make_unique<Places>();
    std::unordered_map<kzutil::WideString, int, Hash, std::equal_to<>> m_free;  // numbers below are taken
};

}  // namespace checkpage
