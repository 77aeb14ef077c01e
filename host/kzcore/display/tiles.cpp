#include "kzcore/display/tiles.h"

#include <algorithm>
#include <cmath>
#include <new>
#include <system_error>

#include "kzcore/display/display_drawing.h"
#include "kzutil/rect_math.h"

namespace {

int tileOf(LONG pixel, int side) {
    return static_cast<int>(std::floor(static_cast<double>(pixel) / side));
}

// In tiles, the last ones included.
RECT tilesOf(const RECT& area, int side) {
    return {tileOf(area.left, side), tileOf(area.top, side), tileOf(area.right - 1, side),
            tileOf(area.bottom - 1, side)};
}

void copyPart(const AImage& tile, LONG left, LONG top, AImage& image) {
    const auto width = static_cast<LONG>(image.width());
    const LONG from = std::max<LONG>(0, left);
    const LONG to = std::min<LONG>(width, left + tile.width());
    for (LONG y = std::max<LONG>(0, top); y < std::min<LONG>(image.height(), top + tile.height()); ++y) {
        const std::uint32_t* const row = tile.row(static_cast<int>(y - top));
        std::copy(row + (from - left), row + (to - left), image.row(static_cast<int>(y)) + from);
    }
}

}  // namespace

ATiles::ATiles(std::shared_ptr<const ADisplayList> list, std::shared_ptr<const AShownPaint> shown,
               Options options)
    : m_list(std::move(list)), m_options(std::move(options)), m_shown(std::move(shown)) {
    const unsigned count =
        m_options.threads != 0 ? m_options.threads : std::max(1U, std::thread::hardware_concurrency());
    try {
        for (unsigned i = 0; i < count; ++i) m_threads.emplace_back([this] { work(); });
    } catch (const std::system_error&) {
        if (m_threads.empty()) throw;
    }
}

ATiles::~ATiles() {
    {
        const std::lock_guard lock(m_mutex);
        m_ends = true;
        for (const auto& job : m_running) job->cancelled = true;
    }
    m_changed.notify_all();
    for (std::thread& thread : m_threads) thread.join();
}

template <class Use>
void ATiles::forEachTile(double zoom, const RECT& area, Use use) const {
    if (isEmpty(area) || !(zoom > 0) || !std::isfinite(zoom)) return;
    const RECT tiles = tilesOf(area, m_options.side);
    for (LONG y = tiles.top; y <= tiles.bottom; ++y) {
        for (LONG x = tiles.left; x <= tiles.right; ++x)
            use(Key{zoom, static_cast<int>(x), static_cast<int>(y)});
    }
}

std::size_t ATiles::capacity() const {
    const auto side = static_cast<std::size_t>(m_options.side);
    return std::max<std::size_t>(1, m_options.budget / (side * side * sizeof(std::uint32_t)));
}

bool ATiles::isWanted(const Key& key) const {
    return key.zoom == m_wantedZoom && key.x >= m_wantedTiles.left && key.x <= m_wantedTiles.right &&
           key.y >= m_wantedTiles.top && key.y <= m_wantedTiles.bottom;
}

void ATiles::cancelUnwanted() {
    for (const auto& job : m_running) {
        if (!isWanted(job->key)) job->cancelled = true;
    }
}

void ATiles::want(double zoom, const RECT& area) {
    {
        const std::lock_guard lock(m_mutex);
        ++m_time;
        m_wanted.clear();
        m_wantedZoom = zoom;
        m_wantedTiles = isEmpty(area) ? RECT{0, 0, -1, -1} : tilesOf(area, m_options.side);
        cancelUnwanted();
        std::vector<Key> all;
        forEachTile(zoom, area, [&](const Key& key) { all.push_back(key); });
        const double middleX = (static_cast<double>(area.left) + area.right) / 2 / m_options.side - 0.5;
        const double middleY = (static_cast<double>(area.top) + area.bottom) / 2 / m_options.side - 0.5;
        const auto distance = [&](const Key& key) { return std::hypot(key.x - middleX, key.y - middleY); };
        std::stable_sort(all.begin(), all.end(),
                         [&](const Key& a, const Key& b) { return distance(a) < distance(b); });
        // What the budget cannot hold is not drawn: it would push out what is nearer.
        if (all.size() > capacity()) all.resize(capacity());
        for (std::size_t i = all.size(); i-- > 0;) {
            const auto found = m_tiles.find(all[i]);
            if (found != m_tiles.end()) {
                found->second.used = m_time;
                continue;
            }
            const bool isRunning = std::ranges::any_of(
                m_running, [&](const auto& job) { return job->key == all[i] && !job->cancelled; });
            if (!isRunning) m_wanted.push_back(all[i]);
        }
    }
    m_changed.notify_all();
}

void ATiles::setShown(std::shared_ptr<const AShownPaint> shown) {
    {
        const std::lock_guard lock(m_mutex);
        const std::vector<ABox> boxes = m_shown->changes(*m_list, *shown);
        m_shown = std::move(shown);
        const ABoxTree changed(boxes);
        std::vector<std::uint32_t> found;
        const auto touches = [&](const Key& key) {
            const LONG side = m_options.side;
            const RECT area{key.x * side, key.y * side, key.x * side + side, key.y * side + side};
            changed.find(boxOfPixels(area, AAffine::scaling(key.zoom)), found);
            return !found.empty() || m_list->isOnePicture();
        };
        std::erase_if(m_tiles, [&](const auto& tile) { return touches(tile.first); });
        for (const auto& job : m_running) {
            if (job->cancelled) continue;
            job->cancelled = true;
            if (isWanted(job->key)) m_wanted.push_back(job->key);
        }
    }
    m_changed.notify_all();
}

// The oldest of what is not wanted goes; false when all that is kept is wanted.
bool ATiles::makeRoom() {
    while (m_tiles.size() + m_running.size() >= capacity()) {
        auto oldest = m_tiles.end();
        for (auto at = m_tiles.begin(); at != m_tiles.end(); ++at) {
            const bool isOlder = oldest == m_tiles.end() || at->second.used < oldest->second.used;
            if (isOlder && at->second.used < m_time) oldest = at;
        }
        if (oldest == m_tiles.end()) return false;
        m_tiles.erase(oldest);
    }
    return true;
}

void ATiles::work() {
    std::unique_lock lock(m_mutex);
    for (;;) {
        m_changed.wait(lock, [this] { return m_ends || (!m_wanted.empty() && makeRoom()); });
        if (m_ends) return;
        drawNext(lock);
    }
}

void ATiles::drawNext(std::unique_lock<std::mutex>& lock) {
    const auto job = std::make_shared<Job>();
    job->key = m_wanted.back();
    job->shown = m_shown;
    m_wanted.pop_back();
    m_running.push_back(job);
    lock.unlock();
    AImage image;
    try {
        image = drawTile(*m_list, *job->shown, AAffine::scaling(job->key.zoom), m_options.side, job->key.x,
                         job->key.y, [&] { return job->cancelled.load(); });
    } catch (const std::bad_alloc&) {
        // The place stays empty until it is wanted anew.
    }
    lock.lock();
    std::erase(m_running, job);
    const bool isNew = !job->cancelled && !image.empty();
    if (isNew) {
        m_tiles[job->key] = {std::move(image), m_time};
        ++m_drawn;
    }
    m_changed.notify_all();
    if (!isNew || !m_options.listener) return;
    lock.unlock();
    m_options.listener();
    lock.lock();
}

void ATiles::finish() {
    std::unique_lock lock(m_mutex);
    m_changed.wait(lock, [this] { return m_running.empty() && m_wanted.empty(); });
}

bool ATiles::show(double zoom, const RECT& area, AImage& image) {
    image = AImage(std::max<LONG>(0, area.right - area.left), std::max<LONG>(0, area.bottom - area.top));
    std::fill(image.pixels().begin(), image.pixels().end(), 0xffffffff);
    const std::lock_guard lock(m_mutex);
    bool complete = true;
    forEachTile(zoom, area, [&](const Key& key) { complete = complete && m_tiles.contains(key); });
    if (!complete) {
        // The nearest level comes last, on top of the others.
        std::vector<std::pair<double, const std::pair<const Key, Tile>*>> others;
        for (const auto& tile : m_tiles) {
            const double distance = std::fabs(std::log(tile.first.zoom / zoom));
            if (tile.first.zoom != zoom) others.emplace_back(distance, &tile);
        }
        std::ranges::sort(others, std::greater());
        ACanvas canvas(pixelsOf(image));
        for (const auto& [distance, tile] : others) {
            const double scale = zoom / tile->first.zoom;
            const double side = m_options.side * scale;
            const AFPoint at{tile->first.x * side - area.left, tile->first.y * side - area.top};
            canvas.drawImage(tile->second.image, {scale, 0, 0, scale, at.x, at.y}, 1, true);
        }
    }
    forEachTile(zoom, area, [&](const Key& key) {
        const auto found = m_tiles.find(key);
        if (found == m_tiles.end()) return;
        found->second.used = m_time;
        copyPart(found->second.image, key.x * static_cast<LONG>(m_options.side) - area.left,
                 key.y * static_cast<LONG>(m_options.side) - area.top, image);
    });
    return complete;
}

std::size_t ATiles::bytes() const {
    const std::lock_guard lock(m_mutex);
    const auto side = static_cast<std::size_t>(m_options.side);
    return (m_tiles.size() + m_running.size()) * side * side * sizeof(std::uint32_t);
}

std::size_t ATiles::tileCount() const {
    const std::lock_guard lock(m_mutex);
    return m_tiles.size();
}

std::size_t ATiles::drawnCount() const {
    const std::lock_guard lock(m_mutex);
    return m_drawn;
}
