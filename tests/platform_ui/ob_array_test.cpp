#include "platform/afx/ob_array.h"

#include <gtest/gtest.h>

namespace {

class Thing : public CObject {};

}  // namespace

TEST(ObjectArrays, KeepTheirPointersInOrder) {
    Thing one;
    Thing two;
    Thing three;
    CObArray array;
    EXPECT_TRUE(array.IsEmpty());
    EXPECT_EQ(array.Add(&one), 0);
    EXPECT_EQ(array.Add(&three), 1);
    array.InsertAt(1, &two);
    EXPECT_EQ(array.GetSize(), 3);
    EXPECT_EQ(array[1], &two);
    array.SetAt(0, &three);
    EXPECT_EQ(array.GetAt(0), &three);
    array.RemoveAt(0, 2);
    EXPECT_EQ(array.GetUpperBound(), 0);
    EXPECT_EQ(array[0], &three);
    array.RemoveAll();
    EXPECT_EQ(array.GetCount(), 0);
}

TEST(ObjectArrays, AnIndexOutsideIsAnInvalidArgument) {
    Thing thing;
    CObArray array;
    array.Add(&thing);
    EXPECT_THROW(array.GetAt(1), CInvalidArgException);
    EXPECT_THROW(array.GetAt(-1), CInvalidArgException);
    EXPECT_THROW(array[7], CInvalidArgException);
    EXPECT_THROW(array.SetAt(1, &thing), CInvalidArgException);
    EXPECT_THROW(array.InsertAt(2, &thing), CInvalidArgException);
    EXPECT_THROW(array.RemoveAt(0, 2), CInvalidArgException);
    EXPECT_EQ(array.GetSize(), 1);
}
