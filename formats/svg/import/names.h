// The names of objects: their ids, made unique, and made names for those without.
#pragma once

#include <array>
#include <string>
#include <string_view>

#include "formats/svg/tree/drawing_index.h"
#include "formats/svg/values/text_map.h"
#include "kzcore/document/name_table.h"

namespace svg {

// A name as the model takes it: "/" separates the parts of paths that users see, so it becomes the division
// slash U+2215; malformed UTF-8 becomes U+FFFD. Gives `text` itself, or a view into `buffer`.
std::string_view cleanName(std::string_view text, std::string& buffer);

class NameMaker {
public:
    NameMaker(DrawingIndex& index, const ANameTable& names) : m_index(index), m_names(names) {}

    // The name for an element whose id, made clean, is the name of an object already: "id-2", "id-3", ….
    std::string_view another(std::string_view name);
    // The next free name of "rect-1", "rect-2", …, which no id of the drawing has either.
    std::string_view make(std::size_t stem, std::string_view word);

private:
    DrawingIndex& m_index;
    const ANameTable& m_names;
    std::array<std::uint32_t, kStemCount> m_last{};       // number of the last name made
    std::array<std::size_t, kStemCount> m_takenBehind{};  // how many taken numbers are not above it
    StringMap<std::uint32_t> m_nextSuffix;
    std::string m_buffer;
};

}  // namespace svg
