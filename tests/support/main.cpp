// The main routine of every test program: shuffled order, seed printed by GoogleTest.
#include <gtest/gtest.h>

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    if (testing::UnitTest::GetInstance()->total_test_count() == 0) return 2;
    return RUN_ALL_TESTS();
}
