// A drawing's text parsed for a picture, and its elements by their place in the text and by id.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include <pugixml.hpp>

#include "formats/svg/tree/drawing_index.h"
#include "kzutil/large_memory.h"

namespace svg {

class DrawingTree {
public:
    // `text` was read by the importer: UTF-8 with its entities replaced. It stays the caller's.
    explicit DrawingTree(const std::string& text);

    pugi::xml_node root() const { return m_root; }
    const std::vector<pugi::xml_node>& styles() const { return m_index.styles(); }
    std::size_t elementCount() const { return m_index.elementCount(); }

    // The element whose name stands at this offset; null when there is none. Neighbours are found fastest.
    pugi::xml_node at(std::size_t offset);
    // Elements that others refer to (DrawingIndex::findResource, findAny); null when there is none.
    pugi::xml_node findResource(std::string_view id) const { return m_index.findResource(id); }
    pugi::xml_node findAny(std::string_view id) { return m_index.findAny(id); }

    // Whether white space stands right before the element's start tag. The tree leaves out texts of nothing
    // but white space, which counts between two parts of a text.
    bool hasSpaceBefore(pugi::xml_node element) const;

private:
    struct Free {
        void operator()(char* block) const { kzutil::freeLarge(block); }
    };

    const std::string& m_text;
    std::unique_ptr<char[], Free> m_buffer;  // the library cuts it into pieces
    pugi::xml_document m_document;
    pugi::xml_node m_root;
    DrawingIndex m_index;
    struct Entry {
        std::size_t offset;
        pugi::xml_node node;
    };
    std::vector<Entry> m_elements;  // by offset
    std::size_t m_last = 0;         // the one found last
};

// The id that a gradient, pattern or other element takes its content from; empty when there is none.
std::string_view referenceOf(pugi::xml_node element);

}  // namespace svg
