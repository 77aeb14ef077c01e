#include "app/web/sessions.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <random>

#include "app/session.h"

namespace app::web {

namespace {

constexpr int kMostListeners = 3;
// A stream that is idle says something that often, so that a page that is gone is noticed.
constexpr std::chrono::milliseconds kIdle{250};
// For a closed tab to be noticed.
constexpr std::chrono::milliseconds kClosing{1000};
// For a new page to listen.
constexpr std::chrono::seconds kFirst{15};
// What takes longer is told.
constexpr std::chrono::milliseconds kUnnoticed{200};

}  // namespace

std::string randomName(std::size_t digits) {
    std::random_device random;
    std::string name;
    while (name.size() < digits) name += "0123456789abcdef"[random() & 15];
    return name;
}

Answer PageSession::run(const std::string& line) {
    {
        const std::lock_guard lock(m_mutex);
        m_running = line;
        m_runningSince = Clock::now();
    }
    Answer answer = m_process.call('L', line);
    {
        const std::lock_guard lock(m_mutex);
        m_running.clear();
        if (!line.starts_with("print")) ++m_changes;
    }
    m_changed.notify_all();
    return answer;
}

void PageSession::close() {
    {
        const std::lock_guard lock(m_mutex);
        m_closed = true;
        if (!m_running.empty()) m_process.kill();  // nobody waits for what it does
    }
    m_changed.notify_all();
}

bool PageSession::isDeserted(Clock::duration grace) {
    const std::lock_guard lock(m_mutex);
    return m_listeners == 0 && Clock::now() - m_desertedSince >= (m_wasListenedTo ? grace : kFirst);
}

std::unique_ptr<PageSession::Listener> PageSession::Listener::make(std::shared_ptr<PageSession> session) {
    const std::lock_guard lock(session->m_mutex);
    if (session->m_listeners >= kMostListeners) return nullptr;
    ++session->m_listeners;
    session->m_wasListenedTo = true;
    return std::unique_ptr<Listener>(new Listener(session));
}

PageSession::Listener::~Listener() {
    const std::lock_guard lock(m_session->m_mutex);
    --m_session->m_listeners;
    m_session->m_desertedSince = Clock::now();
}

bool PageSession::Listener::wait(std::string& event) {
    if (m_session->m_process.hasEnded()) return false;
    std::unique_lock lock(m_session->m_mutex);
    PageSession& session = *m_session;
    session.m_changed.wait_for(lock, kIdle, [&] { return session.m_closed || session.m_changes != m_seen; });
    if (session.m_closed) return false;
    const bool runsLong = !session.m_running.empty() && Clock::now() - session.m_runningSince >= kUnnoticed;
    if (session.m_changes != m_seen) {
        m_seen = session.m_changes;
        event = "event: change\ndata: " + std::to_string(m_seen) + "\n\n";
    } else if (runsLong || m_toldProgress) {
        nlohmann::json progress = nullptr;
        if (runsLong) {
            const std::chrono::duration<double> seconds = Clock::now() - session.m_runningSince;
            progress = {{"line", session.m_running.substr(0, 200)}, {"seconds", seconds.count()}};
        }
        m_toldProgress = runsLong;
        event = "event: progress\ndata: " +
                progress.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace) + "\n\n";
    } else {
        event = ":\n\n";
    }
    return true;
}

Sessions::Sessions(Options options) : m_options(std::move(options)), m_janitor([this] { endDeserted(); }) {}

Sessions::~Sessions() {
    closeAll();
    {
        const std::lock_guard lock(m_mutex);
        m_ends = true;
    }
    m_changed.notify_all();
    m_janitor.join();
}

void Sessions::closeAll() {
    const std::lock_guard lock(m_mutex);
    for (const auto& [name, session] : m_sessions) session->close();
}

// Waits, not for long, for a tab that has just been closed: its session gives way before its time.
bool Sessions::makeRoom() {
    const Clock::time_point deadline = Clock::now() + kClosing;
    std::unique_lock lock(m_mutex);
    while (m_sessions.size() >= m_options.most) {
        const auto deserted = std::ranges::find_if(
            m_sessions, [](const auto& entry) { return entry.second->isDeserted(Clock::duration::zero()); });
        if (deserted != m_sessions.end()) {
            const std::shared_ptr<PageSession> session = deserted->second;
            m_sessions.erase(deserted);
            lock.unlock();
            session->close();
            lock.lock();
        } else if (m_changed.wait_until(lock, std::min(deadline, Clock::now() + kIdle)) ==
                       std::cv_status::timeout &&
                   Clock::now() >= deadline) {
            return false;
        }
    }
    return true;
}

std::string Sessions::start() {
    if (!makeRoom()) return {};
    auto session = std::make_shared<PageSession>(m_options.program, m_options.files);
    const std::string name = randomName(16);
    {
        const std::lock_guard lock(m_mutex);
        if (m_sessions.size() >= m_options.most) return {};
        m_sessions[name] = std::move(session);
    }
    m_changed.notify_all();
    return name;
}

std::shared_ptr<PageSession> Sessions::find(const std::string& name) {
    const std::lock_guard lock(m_mutex);
    const auto found = m_sessions.find(name);
    return found == m_sessions.end() ? nullptr : found->second;
}

std::size_t Sessions::count() {
    const std::lock_guard lock(m_mutex);
    return m_sessions.size();
}

// Ending a process may take a moment, so it happens here and without the lock.
void Sessions::endDeserted() {
    std::unique_lock lock(m_mutex);
    while (!m_ends) {
        m_changed.wait_for(lock, kIdle);
        std::vector<std::shared_ptr<PageSession>> over;
        for (auto i = m_sessions.begin(); i != m_sessions.end();) {
            const bool isOver = i->second->isDeserted(m_options.grace) || i->second->process().hasEnded();
            if (isOver) over.push_back(i->second);
            i = isOver ? m_sessions.erase(i) : std::next(i);
        }
        lock.unlock();
        for (const auto& session : over) session->close();
        over.clear();
        lock.lock();
    }
    m_sessions.clear();
}

}  // namespace app::web
