// A view of the drawing that KZ_BENCH_DRAWINGS/OBJECTS.svg holds: opened, its list made, its tiles, its hits.
//
// Screens are 1920 by 1080 pixels; "near" is the zoom at which a screen shows about 500 objects.
#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdlib>
#include <memory>
#include <random>

#include "formats/svg/reader.h"
#include "kzcore/display/hits.h"
#include "kzcore/display/tiles.h"
#include "kzcore/document/refer_item.h"

namespace {

constexpr int kSide = 256;
constexpr RECT kScreen{0, 0, 1920, 1080};
// All screens of a run and more.
constexpr std::size_t kBudget = std::size_t{256} << 20;

std::unique_ptr<ADocument> read(std::int64_t objects) {
    const char* const folder = std::getenv("KZ_BENCH_DRAWINGS");
    std::string error;
    auto document =
        svg::readDrawing(std::string(folder ? folder : ".") + '/' + std::to_string(objects) + ".svg", error);
    if (!document) std::fprintf(stderr, "%s\n", error.c_str());
    return document;
}

// The drawing of a size, kept for the cases that follow.
struct Drawing {
    std::int64_t objects = 0;
    std::unique_ptr<ADocument> document;
    std::shared_ptr<const ADisplayList> list;
};

const Drawing& drawing(std::int64_t objects) {
    static Drawing kept;
    if (kept.objects != objects) {
        kept = {};
        kept.document = read(objects);
        kept.list = makeDisplayList(*kept.document);
        kept.objects = objects;
    }
    return kept;
}

double nearZoom(const Drawing& one) {
    const AFRect page = one.document->getPage();
    const double share = std::min(1.0, 500.0 / static_cast<double>(one.objects));
    const double pixels = kScreen.right * kScreen.bottom;
    return std::sqrt(pixels / (page.Width() * page.Height() * share));
}

double wholeZoom(const Drawing& one) {
    return 1024 / one.document->getPage().Width();
}

void open(benchmark::State& state) {
    for (auto _ : state) benchmark::DoNotOptimize(read(state.range(0)));
}

void makeList(benchmark::State& state) {
    const auto document = read(state.range(0));
    std::shared_ptr<const ADisplayList> list;
    for (auto _ : state) list = makeDisplayList(*document);
    const auto objects = static_cast<double>(state.range(0));
    state.counters["bytes"] = static_cast<double>(list->bytes()) / objects;
    state.counters["outlines"] = static_cast<double>(list->outlineBytes()) / objects;
}

void showKept(benchmark::State& state) {
    const Drawing& one = drawing(state.range(0));
    ATiles tiles(one.list, std::make_shared<AShownPaint>(), {kSide, kBudget, 0, {}});
    tiles.want(wholeZoom(one) * 2, kScreen);
    tiles.finish();
    AImage image;
    for (auto _ : state) {
        if (!tiles.show(wholeZoom(one) * 2, kScreen, image)) state.SkipWithError("a tile is missing");
    }
}

void newTile(benchmark::State& state) {
    const Drawing& one = drawing(state.range(0));
    const double zoom = nearZoom(one);
    const int tiles = static_cast<int>(one.document->getPage().Width() * zoom / kSide);
    const AShownPaint shown;
    std::mt19937 random(1);
    for (auto _ : state) {
        const int x = static_cast<int>(random() % static_cast<unsigned>(tiles));
        const int y = static_cast<int>(random() % static_cast<unsigned>(tiles));
        benchmark::DoNotOptimize(drawTile(*one.list, shown, AAffine::scaling(zoom), kSide, x, y));
    }
}

// The whole drawing on the screen, one colour hidden or shown again, until every tile is right.
void hideColor(benchmark::State& state) {
    const Drawing& one = drawing(state.range(0));
    const double zoom = wholeZoom(one);
    const RECT area{0, 0, 1024, 1024};
    ATiles tiles(one.list, std::make_shared<AShownPaint>(), {kSide, kBudget, 0, {}});
    tiles.want(zoom, area);
    tiles.finish();
    const AReferItem* const hidden =
        one.list->referItems()[one.list->fillItem(one.document->findObject("first")->getIndex()) - 1];
    bool hides = false;
    AImage image;
    for (auto _ : state) {
        hides = !hides;
        tiles.setShown(std::make_shared<AShownPaint>(
            *one.list, [&](AReferItem* item) { return !hides || item != hidden; }));
        tiles.want(zoom, area);
        tiles.finish();
        tiles.show(zoom, area, image);
    }
}

void hit(benchmark::State& state, bool near) {
    const Drawing& one = drawing(state.range(0));
    const double zoom = near ? nearZoom(one) : wholeZoom(one);
    const AShownPaint shown;
    AHits hits(*one.list, shown, AAffine::scaling(zoom));
    std::mt19937 random(1);
    const auto side = static_cast<unsigned>(one.document->getPage().Width() * zoom);
    for (auto _ : state) {
        const AFPoint at{static_cast<double>(random() % side), static_cast<double>(random() % side)};
        benchmark::DoNotOptimize(hits.topAt(at, 2));
    }
}

void hitNear(benchmark::State& state) {
    hit(state, true);
}
void hitWhole(benchmark::State& state) {
    hit(state, false);
}

}  // namespace

#define KZ_SIZES Arg(10'000)->Arg(100'000)->Arg(1'000'000)->UseRealTime()->Unit(benchmark::kMillisecond)
BENCHMARK(open)->KZ_SIZES;
BENCHMARK(makeList)->KZ_SIZES;
BENCHMARK(showKept)->KZ_SIZES;
BENCHMARK(newTile)->KZ_SIZES;
BENCHMARK(hideColor)->KZ_SIZES;
BENCHMARK(hitNear)->KZ_SIZES;
BENCHMARK(hitWhole)->KZ_SIZES;

BENCHMARK_MAIN();
