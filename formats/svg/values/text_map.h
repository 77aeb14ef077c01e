// Hash tables by text. The hash is seeded: a drawing cannot be written whose ids all collide.
#pragma once

#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

#include "kzutil/text_hash.h"

namespace svg {

struct TextHash {
    using is_transparent = void;
    std::size_t operator()(std::string_view text) const { return kzutil::hashText(text); }
};

// The keys are views: what they point into outlives the table.
template <class T>
using TextMap = std::unordered_map<std::string_view, T, TextHash>;
using TextSet = std::unordered_set<std::string_view, TextHash>;
// The keys are the table's own.
template <class T>
using StringMap = std::unordered_map<std::string, T, TextHash, std::equal_to<>>;

}  // namespace svg
