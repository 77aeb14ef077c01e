// The order in which the squares of a picture are drawn.
#include <gtest/gtest.h>

#include <algorithm>

#include "app/session.h"
#include "app/web/tile_drawer.h"

namespace {

constexpr char kHull[] = R"svg(<svg xmlns="http://www.w3.org/2000/svg" width="100" height="80">
  <rect id="hull" width="90" height="40" fill="red"/>
</svg>)svg";
constexpr std::uint32_t kEach = 40;
constexpr std::uint32_t kMostThreads = 4;

class TileOrder : public testing::Test {
protected:
    std::mutex mutex;
    std::condition_variable changed;
    std::vector<std::uint32_t> answered;  // guarded by the mutex
    app::Session session;
    app::web::TileDrawer tiles{[this](std::uint32_t call, std::optional<std::string> png) {
        const std::lock_guard lock(mutex);
        answered.push_back(png ? call : ~0U);
        changed.notify_all();
    }};

    void SetUp() override { session.openBytes(kHull, "sea.svg"); }
    void want(std::uint32_t first, const char* scale) {
        for (std::uint32_t i = 0; i < kEach; ++i)
            tiles.want(first + i, "1 1 " + std::string(scale) + " 64 " + std::to_string(i % 4) + " 0");
    }
    void expectAll(std::size_t count) {
        std::unique_lock lock(mutex);
        changed.wait(lock, [&] { return answered.size() == count; });
    }
};

}  // namespace

TEST_F(TileOrder, TheScaleThatWasAskedForLastComesFirst) {
    want(0, "1");
    want(kEach, "2");
    tiles.show({1, 1}, session.shown().list(), session.shown().paint());
    expectAll(2 * kEach);
    const auto early =
        std::ranges::find_if(answered, [](std::uint32_t call) { return call < kEach; }) - answered.begin();
    EXPECT_GE(early, kEach - kMostThreads) << "as many as there are threads may still be on their way";
    std::ranges::sort(answered);
    for (std::uint32_t i = 0; i < 2 * kEach; ++i) EXPECT_EQ(answered[i], i) << "each is answered once, drawn";
}
