// A hash of short texts: names, ids, paint as written. Eight characters at a time, mixed by multiplication,
// so that names which differ in one digit spread over a table whose size is a power of two.
//
//     std::size_t slot = kzutil::hashText(name) & (slots - 1);
//
// It differs from run to run, so that no drawing can be written whose names all collide: nothing may be kept
// in its order.
#pragma once

#include <cstdint>
#include <cstring>
#include <string_view>

namespace kzutil {

// Every bit of the value takes part in the low bits of the result.
inline std::uint64_t mixBits(std::uint64_t value) {
    value *= 0x9E3779B97F4A7C15U;
    return value ^ value >> 32;
}

// Where the system placed the program, which it chooses anew for each run.
inline std::uint64_t hashSeed() {
    static const char place = 0;
    return reinterpret_cast<std::uintptr_t>(&place);
}

inline std::uint64_t hashText(std::string_view text) {
    const auto load = []<class Word>(const char* from, Word word) {
        std::memcpy(&word, from, sizeof word);
        return std::uint64_t{word};
    };
    std::uint64_t hash = mixBits(hashSeed() ^ text.size());
    const char* at = text.data();
    std::size_t left = text.size();
    for (; left > 8; at += 8, left -= 8) hash = mixBits(hash ^ load(at, std::uint64_t{}));
    std::uint64_t last = 0;
    if (left >= 4) {  // two halves, which may overlap
        last = load(at, std::uint32_t{}) << 32 | load(at + left - 4, std::uint32_t{});
    } else if (left > 0) {
        const auto byte = [at](std::size_t i) { return std::uint64_t{static_cast<unsigned char>(at[i])}; };
        last = byte(0) << 16 | byte(left / 2) << 8 | byte(left - 1);
    }
    return mixBits(mixBits(hash ^ last));
}

// Of a run of plain values, such as wide characters: what is equal has to have the same bytes.
template <class Values>
std::uint64_t hashValues(const Values& values) {
    return hashText({reinterpret_cast<const char*>(values.data()), values.size() * sizeof *values.data()});
}

}  // namespace kzutil
