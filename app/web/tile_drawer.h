// TileDrawer: draws squares of what a session shows, in threads, while the session goes on.
//
//     TileDrawer tiles([&](std::uint32_t call, std::optional<std::string> png) { … });
//     tiles.show({1, 4}, list, paint);           // from now on
//     tiles.want(call, "1 4 0.5 256 3 -2");      // answered once, in whichever thread
//
// A square of a picture that is not shown any more is answered with nothing; one that is not shown yet waits.
#pragma once

#include <compare>
#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "kzcore/display/tiled_picture.h"

namespace app::web {

// Which picture: the number of the drawing, and that of what is shown of it.
struct PictureNumber {
    unsigned drawing = 0;
    unsigned shown = 0;
    // NOLINTNEXTLINE(modernize-use-nullptr): a default comparison is taken for a 0.
    friend auto operator<=>(const PictureNumber&, const PictureNumber&) = default;
};

class TileDrawer {
public:
    using Answer = std::function<void(std::uint32_t call, std::optional<std::string> png)>;

    explicit TileDrawer(Answer answer);
    // Answers everything that is left with nothing.
    ~TileDrawer();
    TileDrawer(const TileDrawer&) = delete;
    TileDrawer& operator=(const TileDrawer&) = delete;

    void show(PictureNumber number, std::shared_ptr<const ADisplayList> list,
              std::shared_ptr<const AShownPaint> paint);
    // Shows nothing, and returns when nothing is being drawn: its document may go then.
    void showNothing();

    // "DRAWING SHOWN SCALE SIDE X Y": SCALE pixels to a unit, squares of SIDE pixels, counted from 0, 0.
    void want(std::uint32_t call, const std::string& tile);

private:
    struct Job {
        std::uint32_t call = 0;
        PictureNumber number;
        double scale = 0;
        int side = 0, x = 0, y = 0;
    };

    void work();
    bool takeJob(std::unique_lock<std::mutex>& lock, Job& job);
    void draw(std::unique_lock<std::mutex>& lock, const Job& job);

    const Answer m_answer;
    std::mutex m_mutex;  // guards what follows
    std::condition_variable m_changed;
    std::deque<Job> m_jobs;
    PictureNumber m_number;
    std::shared_ptr<const ADisplayList> m_list;  // null: nothing is shown
    std::shared_ptr<const AShownPaint> m_paint;
    int m_drawing = 0;  // threads that are
    bool m_ends = false;

    std::vector<std::thread> m_threads;
};

}  // namespace app::web
