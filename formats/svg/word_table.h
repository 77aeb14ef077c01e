// A fixed vocabulary, looked up by a hash that is laid out when the program is compiled.
//
//     constexpr auto kWords = makeWordTable<Element>({{"rect", Element::rect}, {"g", Element::g}});
//     kWords.find("rect", Element::unknown)
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace svg {

template <class Id>
struct Word {
    std::string_view text;
    Id id;
};

template <class Id, std::size_t Count>
class WordTable {
public:
    constexpr explicit WordTable(const Word<Id> (&words)[Count]) {
        for (std::size_t i = 0; i < Count; ++i) {
            m_words[i] = words[i];
            std::size_t slot = hash(words[i].text);
            while (m_slots[slot] != 0) slot = (slot + 1) % kSlots;
            m_slots[slot] = static_cast<std::uint8_t>(i + 1);
        }
    }

    constexpr Id find(std::string_view text, Id missing) const {
        if (text.empty()) return missing;
        for (std::size_t slot = hash(text); m_slots[slot] != 0; slot = (slot + 1) % kSlots) {
            const Word<Id>& word = m_words[m_slots[slot] - 1];
            if (equal(word.text, text)) return word.id;
        }
        return missing;
    }

    constexpr const std::array<Word<Id>, Count>& words() const { return m_words; }

private:
    static constexpr std::size_t kSlots = 512;
    static_assert(Count < 250);

    static constexpr std::size_t hash(std::string_view text) {
        const auto at = [text](std::size_t i) { return static_cast<unsigned char>(text[i]); };
        return (text.size() + at(0) * 29U + at(text.size() / 2) * 113U + at(text.size() - 1) * 7U) % kSlots;
    }

    // Words are short: a loop is faster than a call.
    static constexpr bool equal(std::string_view a, std::string_view b) {
        if (a.size() != b.size()) return false;
        for (std::size_t i = 0; i < a.size(); ++i) {
            if (a[i] != b[i]) return false;
        }
        return true;
    }

    std::array<Word<Id>, Count> m_words{};
    std::array<std::uint8_t, kSlots> m_slots{};
};

template <class Id, std::size_t Count>
constexpr WordTable<Id, Count> makeWordTable(const Word<Id> (&words)[Count]) {
    return WordTable<Id, Count>(words);
}

}  // namespace svg
