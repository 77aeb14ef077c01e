#include "app/window/opening.h"

#include "app/session.h"

namespace app::window {

Opening::Opening(const std::string& file, std::function<void()> done)
    : m_done(std::move(done)), m_thread([this, path = filePath(file)] { read(path); }) {}

Opening::~Opening() {
    cancel();
    m_thread.join();
}

void Opening::read(const std::filesystem::path& file) {
    try {
        m_opened.document = svg::readDrawing(file, m_error, &m_reading);
        if (m_opened.document && !isCancelled()) m_opened.list = makeDisplayList(*m_opened.document);
    } catch (...) {
        m_failure = std::current_exception();
    }
    {
        const std::lock_guard lock(m_mutex);
        m_isDone = true;
    }
    m_changed.notify_all();
    if (m_done) m_done();
}

bool Opening::waitFor(std::chrono::milliseconds time) {
    std::unique_lock lock(m_mutex);
    return m_changed.wait_for(lock, time, [this] { return m_isDone; });
}

Opened Opening::take() {
    if (m_failure) std::rethrow_exception(m_failure);
    if (!m_opened.document) throw Failure{m_error};
    return std::move(m_opened);
}

}  // namespace app::window
