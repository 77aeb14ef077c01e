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
#include <vector>

#include "formats/svg/style/declaration.h"
#include "formats/svg/style/selector.h"
#include "formats/svg/values/text_map.h"

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

    // Whether matching took more steps than the elements asked for justify: from then on no rule matches.
    bool isSpent() const { return m_steps > m_allowed; }

private:
    static constexpr std::size_t kStepsAtLeast = 5'000'000;
    static constexpr std::size_t kStepsPerElement = 500;

    // A rule's declarations, and the number of its layer; 0: none.
    struct Block {
        std::size_t first;
        std::size_t end;
        std::uint32_t layer;
        std::uint64_t lastElement = 0;  // that took them
    };
    // One selector of a rule.
    struct Rule {
        Selector selector;
        std::uint32_t block = 0;
        bool onlyKey = false;  // the key that it is listed under is all that it asks
    };
    // Rules that share a key.
    struct Bucket {
        std::vector<std::size_t> rules;
        std::uint64_t lastElement = 0;  // for which they were looked at
    };
    // Rules by a key. Most elements' ids and types are no key: a filter of one bit for each kind of length
    // and end tells most of them apart before anything is hashed.
    class Index {
    public:
        Bucket& operator[](std::string_view key) {
            m_filter |= bit(key);
            return m_buckets[key];
        }
        // Null when there are no rules for the key.
        Bucket* find(std::string_view key) {
            if (key.empty() || (m_filter & bit(key)) == 0) return nullptr;
            const auto found = m_buckets.find(key);
            return found == m_buckets.end() ? nullptr : &found->second;
        }
        bool isEmpty() const { return m_filter == 0; }

    private:
        static std::uint64_t bit(std::string_view key) {
            return std::uint64_t{1} << ((key.size() * 5 +
                                         static_cast<unsigned char>(key.front()) * std::size_t{3} +
                                         static_cast<unsigned char>(key.back())) %
                                        64);
        }

        TextMap<Bucket> m_buckets;
        std::uint64_t m_filter = 0;
    };

    void addRules(std::string_view text, int depth, const std::string& layer);
    void addBlock(std::string_view head, std::string_view body, int depth, const std::string& layer);
    void addRule(std::string_view selectors, std::string_view body, const std::string& layer);
    void nameLayers(std::string_view names, const std::string& around);
    // Layers count in the order in which they are first named. `layer`: ".outer.inner".
    std::uint32_t layerNumber(const std::string& layer);
    void collectFrom(Index& index, std::string_view key, pugi::xml_node element);
    void collectFrom(Bucket& bucket, pugi::xml_node element);
    void sortFound();

    Vocabulary m_vocabulary;
    std::deque<std::string> m_texts;  // what the declarations' views point into
    std::vector<Declaration> m_declarations;
    std::vector<Block> m_blocks;
    std::deque<Rule> m_rules;  // the keys below are views into their selectors
    std::vector<std::string> m_layers;
    // Rules by the most telling part of their subject.
    Index m_byId, m_byClass, m_byType;
    Bucket m_universal;
    std::vector<std::size_t> m_found;  // scratch of collect
    std::uint64_t m_element = 0;       // that is asked for, counted
    std::size_t m_steps = 0;
    std::size_t m_allowed = kStepsAtLeast;
};

}  // namespace svg
