#include "app/guarded_author.h"

#include "app/session.h"

namespace app {

// False, so that the dialog is cancelled, from the first failure on.
bool GuardedAuthor::act(driver::Dialog& dialog) {
    if (m_failure) return false;
    try {
        return m_author(dialog);
    } catch (...) {
        m_failure = std::current_exception();
        return false;
    }
}

void GuardedAuthor::rethrow() {
    if (!m_failure) return;
    try {
        std::rethrow_exception(std::exchange(m_failure, nullptr));
    } catch (const driver::Error& error) {
        throw Failure{error.what()};
    }
}

}  // namespace app
