// The author style sheet of a drawing: the rules of all its style elements.
//
//     StyleSheet sheet(Vocabulary::drawing);
//     sheet.add(".wall { fill: #333 }");
//     std::vector<const Declaration*> declarations;
//     sheet.collect(element, "north", "wall", declarations);   // of <rect id="north" class="wall"/>
#pragma once

#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "formats/svg/style/declaration.h"
#include "formats/svg/style/selector.h"

namespace svg {

class StyleSheet {
public:
    explicit StyleSheet(Vocabulary vocabulary) : m_vocabulary(vocabulary) {}

    // Rules of a later call count as later in the sheet. Broken and unsupported parts are left out.
    void add(std::string_view text);
    bool isEmpty() const { return m_rules.empty(); }

    // The declarations for an element in rising order of weight, important ones not yet sorted out.
    void collect(pugi::xml_node element, std::string_view id, std::string_view classes,
                 std::vector<const Declaration*>& declarations);

private:
    struct Rule {
        Selector selector;
        std::size_t firstDeclaration;
        std::size_t endDeclaration;
        bool onlyKey;  // the key that it is listed under is all that it asks
    };
    // Rules by a key. Most elements' ids and types are no key: a filter of one bit for each kind of length
    // and end tells most of them apart before anything is hashed.
    class Index {
    public:
        std::vector<std::size_t>& operator[](std::string_view key) {
            m_filter |= bit(key);
            return m_rules[key];
        }
        // Null when there are no rules for the key.
        const std::vector<std::size_t>* find(std::string_view key) const {
            if (key.empty() || (m_filter & bit(key)) == 0) return nullptr;
            const auto found = m_rules.find(key);
            return found == m_rules.end() ? nullptr : &found->second;
        }
        bool isEmpty() const { return m_filter == 0; }

    private:
        static std::uint64_t bit(std::string_view key) {
            return std::uint64_t{1} << ((key.size() * 5 + static_cast<unsigned char>(key.front()) * 3U +
                                         static_cast<unsigned char>(key.back())) %
                                        64);
        }

        std::unordered_map<std::string_view, std::vector<std::size_t>> m_rules;
        std::uint64_t m_filter = 0;
    };

    void addRules(std::string_view text, int depth);
    void addRule(std::string_view selectors, std::string_view body);
    void collectFrom(const Index& index, std::string_view key, pugi::xml_node element);
    void collectFrom(const std::vector<std::size_t>& rules, pugi::xml_node element);

    Vocabulary m_vocabulary;
    std::deque<std::string> m_texts;  // what the views below point into
    std::vector<Declaration> m_declarations;
    std::vector<Rule> m_rules;
    // Rules by the most telling part of their subject.
    Index m_byId, m_byClass, m_byType;
    std::vector<std::size_t> m_universal;
    std::vector<std::size_t> m_found;  // scratch of collect
};

}  // namespace svg
