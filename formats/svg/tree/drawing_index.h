// What has to be known of a whole drawing before its first object is made: paint servers and other elements
// that are referred to, and style elements; and, for drawings that ask for it, ids that look like made names.
#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include <pugixml.hpp>

#include "formats/svg/values/text_map.h"
#include "formats/svg/xml/vocabulary.h"

namespace svg {

constexpr int kDeepestNesting = 1000;
// What an element says is looked at again and again, by style sheets and by what stands in it.
constexpr std::size_t kMostAttributes = 1000;

// Words that made names start with: every element's name, and the shadow made around an object.
constexpr std::size_t kShadowStem = static_cast<std::size_t>(Element::count);
constexpr std::size_t kStemCount = kShadowStem + 1;

class DrawingIndex {
public:
    // Walks the drawing once. Null, or why it is refused: `culprit` is nested too deep, or has too many
    // attributes.
    const char* build(pugi::xml_node root, pugi::xml_node& culprit);

    std::size_t elementCount() const { return m_elementCount; }
    const std::vector<pugi::xml_node>& styles() const { return m_styles; }

    // A gradient, pattern, mask, clip path, filter or symbol.
    pugi::xml_node findResource(std::string_view id) const;
    // Any element. The first call walks the drawing again.
    pugi::xml_node findAny(std::string_view id);

    // The numbers n of ids "stem-n", ascending: made names leave them out.
    // The first call walks the drawing again: most drawings name all their objects and never ask.
    const std::vector<std::uint32_t>& takenNumbers(std::size_t stem) {
        if (!m_takenBuilt) collectTaken();
        return m_taken[stem];
    }

private:
    using Nodes = TextMap<pugi::xml_node>;

    void collectTaken();
    void noteId(std::string_view id);

    std::size_t m_elementCount = 0;
    std::vector<pugi::xml_node> m_styles;
    Nodes m_resources;
    Nodes m_all;
    pugi::xml_node m_root;
    bool m_allBuilt = false;
    bool m_takenBuilt = false;
    std::array<std::vector<std::uint32_t>, kStemCount> m_taken;
};

// The next element or text in document order within `root`; null at the end. Keeps `depth` up to date.
pugi::xml_node nextNode(pugi::xml_node node, pugi::xml_node root, int& depth, bool enterChildren = true);

}  // namespace svg
