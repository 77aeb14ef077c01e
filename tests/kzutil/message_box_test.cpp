#include <gtest/gtest.h>

#include "kzutil/message_box.h"
#include "tests/kzutil/text_printing.h"

namespace {

std::vector<AString> presented;
UINT presentedFlags = 0;

int present(const AString& text, UINT flags) {
    presented.push_back(text);
    presentedFlags = flags;
    return 6;
}

class MessageBoxes : public testing::Test {
protected:
    MessageBoxes() {
        takeKeptMessages();
        presented.clear();
    }
    ~MessageBoxes() override { setMessagePresenter(nullptr); }
};

TEST_F(MessageBoxes, AreKeptInOrderWhereThereIsNoScreenAndAnsweredWithOk) {
    EXPECT_EQ(KzMessageBox(4160, 0x80000000), 1);
    EXPECT_EQ(KzMessageBox(4161, 0), 1);
    EXPECT_EQ(takeKeptMessages(), (std::vector<AString>{AString(_T("No object matches the criteria.")),
                                                        AString(_T("Gr\u00fc\u00dfe"))}));
    EXPECT_TRUE(takeKeptMessages().empty());
}

TEST_F(MessageBoxes, ShowTheNumberOfATextThatNoModuleHas) {
    KzMessageBox(65001, 0);
    EXPECT_EQ(takeKeptMessages(), std::vector<AString>{AString(_T("#65001"))});
}

TEST_F(MessageBoxes, GoToThePresenterWithTheirFlagsAndGiveItsAnswer) {
    setMessagePresenter(present);
    EXPECT_EQ(KzMessageBox(65001, 0x80000000), 6);
    EXPECT_EQ(presented, std::vector<AString>{AString(_T("#65001"))});
    EXPECT_EQ(presentedFlags, 0x80000000);
    EXPECT_TRUE(takeKeptMessages().empty());
    setMessagePresenter(nullptr);
    KzMessageBox(65002, 0);
    EXPECT_EQ(presented.size(), 1u);
    EXPECT_EQ(takeKeptMessages().size(), 1u);
}

}  // namespace
