// ATiles: what a view shows, as square pictures drawn by threads and kept up to a budget.
//
//     ATiles tiles(list, shown, {256, 64 << 20});
//     tiles.want(zoom, area);                     // drawn from now on, nearest to the middle first
//     bool complete = tiles.show(zoom, area, image);   // what is there; the rest from other zoom levels, scaled
//     tiles.setShown(other);                      // forgets the tiles that the change touches
//
// Pixels of a zoom level are those of the drawing's coordinates times the zoom. All calls come from one thread; the
// listener is called from the others.
#pragma once

#include <atomic>
#include <condition_variable>
#include <map>
#include <mutex>
#include <thread>

#include "kzcore/display/tiled_picture.h"

class ATiles {
public:
    struct Options {
        int side = 256;
        std::size_t budget = std::size_t{64} << 20;  // bytes of all pictures; at least one tile's are taken
        unsigned threads = 0;                        // 0: as many as there are cores
        std::function<void()> listener;              // a tile is there
    };

    ATiles(std::shared_ptr<const ADisplayList> list, std::shared_ptr<const AShownPaint> shown,
           Options options);
    // Cancels what is being drawn.
    ~ATiles();
    ATiles(const ATiles&) = delete;
    ATiles& operator=(const ATiles&) = delete;

    void setShown(std::shared_ptr<const AShownPaint> shown);

    // Nothing else is wanted any more; what is being drawn for nobody is cancelled.
    void want(double zoom, const RECT& area);
    // Fills the image, as large as the area. True when every tile was there.
    bool show(double zoom, const RECT& area, AImage& image);
    // Returns when everything wanted that the budget holds is there.
    void finish();

    // Of pictures kept and being drawn.
    std::size_t bytes() const;
    std::size_t tileCount() const;
    // How many were drawn to the end.
    std::size_t drawnCount() const;

private:
    struct Key {
        double zoom;
        int x, y;
        friend auto operator<=>(const Key&, const Key&) = default;
    };
    struct Tile {
        AImage image;
        std::uint64_t used = 0;
    };
    struct Job {
        Key key;
        std::shared_ptr<const AShownPaint> shown;
        std::atomic<bool> cancelled{false};
    };

    void work();
    void drawNext(std::unique_lock<std::mutex>& lock);
    bool makeRoom();
    std::size_t capacity() const;
    void cancelUnwanted();
    bool isWanted(const Key& key) const;
    template <class Use>
    void forEachTile(double zoom, const RECT& area, Use use) const;

    const std::shared_ptr<const ADisplayList> m_list;
    const Options m_options;

    mutable std::mutex m_mutex;  // guards what follows
    std::condition_variable m_changed;
    std::shared_ptr<const AShownPaint> m_shown;
    std::map<Key, Tile> m_tiles;
    std::vector<Key> m_wanted;  // the nearest to the middle last
    std::vector<std::shared_ptr<Job>> m_running;
    double m_wantedZoom = 0;
    RECT m_wantedTiles{0, 0, 0, 0};
    std::uint64_t m_time = 0;
    std::size_t m_drawn = 0;
    bool m_ends = false;

    std::vector<std::thread> m_threads;
};
