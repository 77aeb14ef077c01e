#include "app/web/tile_drawer.h"

#include <sys/resource.h>

#include <algorithm>
#include <cmath>
#include <new>
#include <sstream>

#include "canvas/image.h"

namespace app::web {

namespace {

constexpr unsigned kMostThreads = 4;
constexpr std::size_t kMostWaiting = 256;
constexpr int kNiceness = 10;  // the browser, which moves what it has, goes first
constexpr int kLongestSide = 1024;
constexpr int kFarthest = 1 << 20;  // in squares: pixels have to stay within an int

}  // namespace

TileDrawer::TileDrawer(Answer answer) : m_answer(std::move(answer)) {
    const unsigned threads = std::clamp(std::thread::hardware_concurrency(), 1U, kMostThreads);
    for (unsigned i = 0; i < threads; ++i) m_threads.emplace_back([this] { work(); });
}

TileDrawer::~TileDrawer() {
    {
        const std::lock_guard lock(m_mutex);
        m_ends = true;
    }
    m_changed.notify_all();
    for (std::thread& thread : m_threads) thread.join();
    for (const Job& job : m_jobs) m_answer(job.call, std::nullopt);
}

void TileDrawer::show(PictureNumber number, std::shared_ptr<const ADisplayList> list,
                      std::shared_ptr<const AShownPaint> paint) {
    {
        const std::lock_guard lock(m_mutex);
        m_number = number;
        m_list = std::move(list);
        m_paint = std::move(paint);
    }
    m_changed.notify_all();
}

void TileDrawer::showNothing() {
    std::unique_lock lock(m_mutex);
    m_list = nullptr;
    m_paint = nullptr;
    m_changed.wait(lock, [this] { return m_drawing == 0; });
}

void TileDrawer::want(std::uint32_t call, const std::string& tile) {
    Job job;
    job.call = call;
    std::istringstream text(tile);
    text.imbue(std::locale::classic());
    text >> job.number.drawing >> job.number.shown >> job.scale >> job.side >> job.x >> job.y;
    const bool sensible = text && std::isfinite(job.scale) && job.scale > 0 && job.side > 0 &&
                          job.side <= kLongestSide && std::abs(job.x) <= kFarthest &&
                          std::abs(job.y) <= kFarthest;
    {
        const std::lock_guard lock(m_mutex);
        if (sensible && !m_ends && m_jobs.size() < kMostWaiting) {
            m_jobs.push_back(job);
            m_changed.notify_all();
            return;
        }
    }
    m_answer(call, std::nullopt);
}

// Those of pictures that are gone are taken, too, to be answered. Of the others those of the scale that was asked for
// last go first, in their order: who zooms on has left the scales before.
bool TileDrawer::takeJob(std::unique_lock<std::mutex>& lock, Job& job) {
    auto next = m_jobs.end();
    m_changed.wait(lock, [&] {
        const auto canBeTaken = [this](const Job& waiting) {
            return waiting.number < m_number || (m_list && waiting.number == m_number);
        };
        next = std::ranges::find_if(m_jobs, [&](const Job& waiting) {
            return waiting.scale == m_jobs.back().scale && canBeTaken(waiting);
        });
        if (next == m_jobs.end()) next = std::ranges::find_if(m_jobs, canBeTaken);
        return m_ends || next != m_jobs.end();
    });
    if (m_ends) return false;
    job = *next;
    m_jobs.erase(next);
    return true;
}

void TileDrawer::draw(std::unique_lock<std::mutex>& lock, const Job& job) {
    std::optional<std::string> png;
    if (m_list && job.number == m_number) {
        const auto list = m_list;
        const auto paint = m_paint;
        ++m_drawing;
        lock.unlock();
        try {
            const auto stops = [this, &job] {
                const std::lock_guard guard(m_mutex);
                return m_ends || !m_list || job.number != m_number;
            };
            const AImage image =
                drawTile(*list, *paint, AAffine::scaling(job.scale), job.side, job.x, job.y, stops);
            if (!image.empty()) png = encodePng(image);
        } catch (const std::bad_alloc&) {
            png.reset();
        }
        lock.lock();
    } else {
        ++m_drawing;
    }
    lock.unlock();
    m_answer(job.call, std::move(png));
    lock.lock();
    --m_drawing;
    m_changed.notify_all();
}

void TileDrawer::work() {
    setpriority(PRIO_PROCESS, 0, kNiceness);  // of this thread alone, on Linux
    std::unique_lock lock(m_mutex);
    for (Job job; takeJob(lock, job);) draw(lock, job);
}

}  // namespace app::web
