#include <gtest/gtest.h>

#include <limits>
#include <stdexcept>
#include <string>

#include "kzutil/arrays.h"
#include "tests/kzutil/text_printing.h"

namespace {

using Numbers = ATArray<int>;

Numbers numbers(std::initializer_list<int> values) {
    Numbers array;
    for (const int value : values) array.Add(value);
    return array;
}

std::string textOf(const Numbers& array) {
    std::string text;
    for (const int value : array) text += std::to_string(value) + " ";
    return text;
}

TEST(Array, GrowsAtItsEnd) {
    Numbers array(0);
    EXPECT_TRUE(array.IsEmpty());
    EXPECT_EQ(array.Add(7), 0);
    EXPECT_EQ(array.Add(8), 1);
    EXPECT_EQ(array.GetSize(), 2);
    EXPECT_EQ(textOf(array), "7 8 ");
}

TEST(Array, ItsHintOfGrowthGivesItNoElements) {
    EXPECT_EQ(AObArray(10).GetSize(), 0);
}

TEST(Array, IsFilledWithZerosWhenItsSizeIsSet) {
    Numbers array = numbers({1});
    array.SetSize(3);
    EXPECT_EQ(textOf(array), "1 0 0 ");
    array.SetSize(0);
    EXPECT_TRUE(array.IsEmpty());
    EXPECT_THROW(array.SetSize(-1), std::length_error);
}

TEST(Array, SetAtGrowReachesBehindTheEnd) {
    Numbers array = numbers({1});
    array.SetAtGrow(3, 4);
    array.SetAtGrow(0, 9);
    EXPECT_EQ(textOf(array), "9 0 0 4 ");
    EXPECT_THROW(array.SetAtGrow(-1, 0), std::out_of_range);
}

TEST(Array, AppendsAnotherAndItself) {
    Numbers array = numbers({1, 2});
    EXPECT_EQ(array.Append(numbers({3})), 2);
    EXPECT_EQ(array.Append(array), 3);
    EXPECT_EQ(textOf(array), "1 2 3 1 2 3 ");
}

TEST(Array, AddsAnElementOfItsOwn) {
    AStringArray array;
    array.Add(AString(_T("a text that is too long to lie in the object itself")));
    for (int i = 0; i < 20; ++i) array.Add(array[0]);
    EXPECT_EQ(array[20], array[0]);
}

TEST(Array, InsertsAndRemovesAnywhere) {
    Numbers array = numbers({2});
    array.InsertAt(0, 1);
    array.InsertAt(2, 3);
    EXPECT_EQ(textOf(array), "1 2 3 ");
    array.RemoveAt(1);
    EXPECT_EQ(textOf(array), "1 3 ");
    array.RemoveAt(0, 2);
    EXPECT_TRUE(array.IsEmpty());
    array.RemoveAt(0, 0);
    EXPECT_TRUE(array.IsEmpty());
}

TEST(Array, AnIndexOutsideRaisesAndChangesNothing) {
    constexpr int kMost = std::numeric_limits<int>::max(), kLeast = std::numeric_limits<int>::min();
    Numbers array = numbers({1, 2, 3});
    for (const int index : {-1, 3, kMost, kLeast}) {
        EXPECT_THROW(array.GetAt(index), std::out_of_range) << index;
        EXPECT_THROW(array[index] = 5, std::out_of_range) << index;
        EXPECT_THROW(array.SetAt(index, 5), std::out_of_range) << index;
        EXPECT_THROW(array.RemoveAt(index), std::out_of_range) << index;
    }
    EXPECT_THROW(array.InsertAt(4, 5), std::out_of_range);
    EXPECT_THROW(array.InsertAt(-1, 5), std::out_of_range);
    const struct {
        int index, count;
    } ranges[] = {{0, 4}, {2, 2}, {0, -1}, {3, -1}, {0, kLeast}, {0, kMost}, {kMost, kMost}};
    for (const auto& range : ranges)
        EXPECT_THROW(array.RemoveAt(range.index, range.count), std::out_of_range)
            << range.index << ", " << range.count;
    EXPECT_EQ(textOf(array), "1 2 3 ");
}

struct Held {
    AObArray objects;
    AStringArray names;
};

TEST(Array, MayBeAMemberThatIsInitialisedWithEmptyBraces) {
    const Held held = {};
    EXPECT_TRUE(held.objects.IsEmpty());
    EXPECT_TRUE(held.names.IsEmpty());
}

}  // namespace
