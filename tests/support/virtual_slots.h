// Where operations stand in a class's virtual table, which modules built elsewhere rely on.
#pragma once

#include <gtest/gtest.h>

#include <cstddef>
#include <cstring>

namespace test {

// In the Itanium ABI a pointer to a virtual member holds one plus the slot's byte offset in its first word.
template <class Member>
std::ptrdiff_t slotOf(Member member) {
    std::ptrdiff_t word;
    std::memcpy(&word, &member, sizeof word);
    EXPECT_EQ(word % 8, 1) << "not a virtual operation";
    return (word - 1) / 8;
}

}  // namespace test
