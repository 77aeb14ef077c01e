// Drives the dialogs that open while it exists: whenever the innermost one waits for input, its author
// provides the next action. The one driver of scripts and of tests.
//
//     driver::Driver user({
//         [](driver::Dialog& sheet) { sheet.page("Fill"); sheet.check("No fill"); sheet.press("OK"); },
//     });
//     tool.onToolStart();               // opens the dialog, which the step above drives
//     EXPECT_TRUE(user.finished());
//
// A script is an author, too: it reads and runs its next line at each call. An action may open another
// dialog; the author is asked again for that one, before the action returns. When the author has nothing more
// while a dialog is open, that dialog is cancelled. What an author or an action raises closes the dialog and
// leaves DoModal.
//
// Without a driver, a dialog waits for the real user; headless, that is an error.
#pragma once

#include <functional>
#include <initializer_list>
#include <vector>

#include "platform/afx/modal_loop.h"
#include "platform/driver/dialog.h"

namespace driver {

// Acts on the dialog, and returns true; false when it has nothing more.
using Author = std::function<bool(Dialog& dialog)>;
using Step = std::function<void(Dialog& dialog)>;

// In place of the driver before, which is back at the end.
class Driver final : private AfxModalIdle {
public:
    explicit Driver(Author author);
    // One step each time a dialog waits.
    Driver(std::initializer_list<Step> steps);
    ~Driver();
    Driver(const Driver&) = delete;
    Driver& operator=(const Driver&) = delete;

    // How many dialogs were cancelled because the author had nothing more.
    int cancelled() const { return m_cancelled; }
    // All steps were taken, and no dialog was left over.
    bool finished() const { return m_next == m_steps.size() && m_cancelled == 0; }

private:
    bool OnModalIdle(CWnd& innermost) override;
    bool takeStep(Dialog& dialog);

    std::vector<Step> m_steps;
    std::size_t m_next = 0;
    Author m_author;
    AfxModalIdle* m_before;
    int m_cancelled = 0;
};

}  // namespace driver
