// Changes to a text, made in one pass.
#pragma once

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace svg {

// Replaces `length` bytes.
struct TextEdit {
    std::size_t at = 0;
    std::size_t length = 0;
    std::string text;
};

// Calls keep(from, to) for every stretch that stays and put(text) for what is put in. At the same
// place, insertions come first; an edit that starts inside a range that is already replaced is dropped.
inline void applyEdits(std::vector<TextEdit>& edits, std::size_t begin, std::size_t end, auto keep,
                       auto put) {
    std::ranges::stable_sort(edits, {},
                             [](const TextEdit& edit) { return std::pair(edit.at, edit.length != 0); });
    std::size_t at = begin;
    for (const TextEdit& edit : edits) {
        if (edit.at < at) continue;
        keep(at, edit.at);
        put(edit.text);
        at = edit.at + edit.length;
    }
    keep(at, end);
}

}  // namespace svg
