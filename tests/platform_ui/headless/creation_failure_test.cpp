// Dialogs and sheets when memory runs out while they are made.
#include <memory>

#include "platform/afx/property_sheet.h"
#include "tests/platform_ui/dialog_support.h"
#include "tests/support/failing_new.h"

namespace {

constexpr int kMostAllocations = 20000;

// Creates a new one with the nth allocation failing, for every n, until one is enough for all of it.
template <class Dialog>
int createWithFailures(void (*create)(Dialog& dialog)) {
    int failures = 0;
    for (int n = 1; n < kMostAllocations; ++n) {
        auto dialog = std::make_unique<Dialog>();
        bool failed = false;
        {
            const AllocationFailure failing = failAllocation(n);
            try {
                create(*dialog);
            } catch (const std::bad_alloc&) {
            }
            failed = failing.happened();
        }
        const HWND window = dialog->m_hWnd;
        dialog.reset();
        EXPECT_FALSE(window && IsWindow(window)) << n;
        EXPECT_EQ(GetActiveWindow(), nullptr) << n;
        if (!failed) return failures;
        ++failures;
    }
    ADD_FAILURE() << "never got through";
    return failures;
}

}  // namespace

TEST(CreationFailures, LeaveNothingOfADialog) {
    EXPECT_GT(createWithFailures<CDialog>([](CDialog& dialog) { dialog.Create(IDD_RESIZABLE); }), 10);
}

namespace {

class OnePageSheet : public CPropertySheet {
public:
    OnePageSheet() : CPropertySheet(IDS_SHEET_CAPTION), m_page(IDD_PAGE) { AddPage(&m_page); }
    ~OnePageSheet() override { DestroyWindow(); }

private:
    CPropertyPage m_page;
};

// Closes whatever opens.
class Closing : public AfxModalIdle {
public:
    Closing() : m_before(AfxSetModalIdle(this)) {}
    virtual ~Closing() { AfxSetModalIdle(m_before); }
    bool OnModalIdle(CWnd& innermost) override {
        innermost.DestroyWindow();
        return true;
    }

private:
    AfxModalIdle* m_before;
};

}  // namespace

TEST(CreationFailures, LeaveNothingOfASheet) {
    const Closing closing;
    EXPECT_GT(createWithFailures<OnePageSheet>([](OnePageSheet& sheet) { sheet.DoModal(); }), 10);
}
