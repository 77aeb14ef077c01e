// The main routine of every test program: shuffled order, seed printed by GoogleTest.
#include <gtest/gtest.h>

#include <memory>

#include "tests/support/temp_folder.h"
#include "tests/support/user_folder.h"

namespace {

// Each test finds an empty folder in the place of the user's own: neither it nor the programs that it starts
// read or write what the user who runs the tests has.
class EmptyUserFolder : public testing::EmptyTestEventListener {
public:
    EmptyUserFolder() { test::setUserFolder(m_folder.path() / "config"); }
    void OnTestEnd(const testing::TestInfo&) override {
        std::error_code ignored;
        std::filesystem::remove_all(m_folder.path() / "config", ignored);
    }

private:
    test::TempFolder m_folder;
};

}  // namespace

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    if (testing::UnitTest::GetInstance()->total_test_count() == 0) return 2;
    testing::UnitTest::GetInstance()->listeners().Append(new EmptyUserFolder);
    return RUN_ALL_TESTS();
}
