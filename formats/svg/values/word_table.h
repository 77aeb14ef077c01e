// A fixed vocabulary, looked up by a hash that is laid out when the program is compiled.
//
//     constexpr auto kWords = makeWordTable<Element>({{"rect", Element::rect}, {"g", Element::g}});
//     kWords.find("rect", Element::unknown)
#pragma once

#include <algorithm>
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
    constexpr explicit WordTable(const std::array<Word<Id>, Count>& words) : m_words(words) {
        for (std::size_t i = 0; i < Count; ++i) {
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

    // A table of these words and more.
    template <std::size_t More>
    constexpr WordTable<Id, Count + More> with(const Word<Id> (&more)[More]) const {
        std::array<Word<Id>, Count + More> words{};
        std::copy(std::begin(more), std::end(more), std::copy(m_words.begin(), m_words.end(), words.begin()));
        return WordTable<Id, Count + More>(words);
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
    return WordTable<Id, Count>(std::to_array(words));
}

// The characters of a name in one number, the first in the highest byte that is used. Nearly every name of a
// drawing fits, and two that fit are the same name when their numbers are equal.
constexpr std::size_t kLongestPackedWord = 8;

// Takes up to eight characters of a terminated text, which afterwards points at what is left.
constexpr std::uint64_t packWord(const char*& text) {
    std::uint64_t key = 0;
    for (const char* const end = text + kLongestPackedWord; text != end && *text != '\0'; ++text) {
        key = key << 8 | static_cast<unsigned char>(*text);
    }
    return key;
}

// The short words of a vocabulary by their packed characters: one multiplication and one comparison.
template <class Id>
class PackedWordTable {
public:
    template <std::size_t Count>
    constexpr explicit PackedWordTable(const WordTable<Id, Count>& table) {
        for (const Word<Id>& word : table.words()) {
            if (word.text.size() > kLongestPackedWord) continue;
            std::uint64_t key = 0;
            for (const char c : word.text) key = key << 8 | static_cast<unsigned char>(c);
            std::size_t slot = hash(key);
            while (m_slots[slot].key != 0) slot = (slot + 1) % kSlots;
            m_slots[slot] = {key, word.id};
        }
    }

    constexpr Id find(std::uint64_t key, Id missing) const {
        for (std::size_t slot = hash(key); m_slots[slot].key != 0; slot = (slot + 1) % kSlots) {
            if (m_slots[slot].key == key) return m_slots[slot].id;
        }
        return missing;
    }

private:
    struct Slot {
        std::uint64_t key = 0;
        Id id{};
    };
    static constexpr int kSlotBits = 8;
    static constexpr std::size_t kSlots = std::size_t{1} << kSlotBits;

    static constexpr std::size_t hash(std::uint64_t key) {
        return key * 0x9E3779B97F4A7C15U >> (64 - kSlotBits);
    }

    std::array<Slot, kSlots> m_slots{};
};

}  // namespace svg
