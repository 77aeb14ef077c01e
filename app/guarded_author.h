// Acts on the dialogs of a tool, and keeps what goes wrong until the tool has ended: nothing is raised through
// a plug-in.
//
//     GuardedAuthor author([&](driver::Dialog& dialog) { …; return true; });
//     driver::Driver user(author.asAuthor());
//     session.runTool("ASelectByAttrTool");
//     author.rethrow();  // the dialog was cancelled then
#pragma once

#include <exception>
#include <utility>

#include "platform/driver/driver.h"

namespace app {

class GuardedAuthor {
public:
    explicit GuardedAuthor(driver::Author author) : m_author(std::move(author)) {}

    driver::Author asAuthor() {
        return [this](driver::Dialog& dialog) { return act(dialog); };
    }
    // Raises what went wrong: Failure for what the driver tells.
    void rethrow();

private:
    bool act(driver::Dialog& dialog);

    driver::Author m_author;
    std::exception_ptr m_failure;
};

}  // namespace app
