// Without a user and without a driver, a dialog would wait for ever.
#include "platform/afx/exceptions.h"
#include "tests/platform_ui/dialog_support.h"

TEST(NoInput, ADialogThatNobodyDrivesIsAnError) {
    TreeDialog dialog;
    EXPECT_THROW(dialog.DoModal(), AfxNoInputException);
    EXPECT_EQ(dialog.m_hWnd, nullptr);
}
