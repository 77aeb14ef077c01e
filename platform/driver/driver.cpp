#include "platform/driver/driver.h"

#include <utility>

namespace driver {

Driver::Driver(Author author) : m_author(std::move(author)), m_before(AfxSetModalIdle(this)) {}

Driver::Driver(std::initializer_list<Step> steps)
    : m_steps(steps),
      m_author([this](Dialog& dialog) { return takeStep(dialog); }),
      m_before(AfxSetModalIdle(this)) {}

Driver::~Driver() {
    AfxSetModalIdle(m_before);
}

bool Driver::takeStep(Dialog& dialog) {
    if (m_next == m_steps.size()) return false;
    m_steps[m_next++](dialog);
    return true;
}

bool Driver::OnModalIdle(CWnd& innermost) {
    Dialog dialog(innermost);
    if (m_author(dialog)) return true;
    ++m_cancelled;
    if (dialog.isOpen()) dialog.cancel();
    return true;
}

}  // namespace driver
