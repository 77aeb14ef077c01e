// What a view's filter costs for each item that is about to be drawn, with 1, 100 and 10,000 hidden colours.
//
// Ten thousand items are asked in each case, so that the items themselves cost the same memory in all.
#include <benchmark/benchmark.h>

#include <vector>

#include "kzcore/document/application.h"
#include "kzcore/document/document.h"
#include "kzcore/tool/tool.h"
#include "kzcore/view/view.h"
#include "plug_in.h"

namespace {

constexpr std::uint32_t kItems = 10000;

// The hidden colours are the even values, the others the odd ones.
std::uint32_t hiddenValue(std::uint32_t index) {
    return index * 1657 * 2 & 0xffffff;
}
std::uint32_t visibleValue(std::uint32_t index) {
    return hiddenValue(index) | 1;
}

// A view in which so many colours were hidden, one after the other, by the tool.
struct FilteredView {
    AApplication application;
    ADocument document;
    ADocView view{document};

    explicit FilteredView(std::uint32_t hidden) {
        application.setActiveView(&view);
        const std::unique_ptr<ATool> tool(plugIn().findTool(_T("AHideThisTool"))->factory());
        for (std::uint32_t i = 0; i < hidden; ++i)
            tool->onToolStart(AFPoint(), document.getPaint().rgb(hiddenValue(i)));
    }
    ~FilteredView() { application.setActiveView(nullptr); }
    AViewFilter& filter() { return *view.m_viewFilter; }
};

using Make = AReferItem* (*)(APaintTable& paint, std::uint32_t value);

AReferItem* makeBrush(APaintTable& paint, std::uint32_t value) {
    return paint.rgbBrush(value)->getBrushItem();
}
AReferItem* makePen(APaintTable& paint, std::uint32_t value) {
    return paint.rgbPen(value)->getPenItem();
}

// The items come from `paint`: that of the view's own document, or of another, whose colours are equal ones.
void ask(benchmark::State& state, bool hits, Make make, bool shared, bool first) {
    const auto hidden = static_cast<std::uint32_t>(state.range(0));
    FilteredView view(hidden);
    AViewFilter& filter = view.filter();
    auto other = std::make_unique<APaintTable>();
    std::vector<AReferItem*> items;
    const auto collect = [&](APaintTable& paint) {
        items.clear();
        for (std::uint32_t i = 0; i < kItems; ++i)
            items.push_back(make(paint, hits ? hiddenValue(i % hidden) : visibleValue(i)));
    };
    collect(shared ? view.document.getPaint() : *other);
    std::uint32_t visible = 0;
    for (auto _ : state) {
        if (first) {
            state.PauseTiming();
            other = std::make_unique<APaintTable>();
            collect(*other);
            state.ResumeTiming();
        }
        visible = 0;
        for (AReferItem* item : items) visible += filter.isVisible(item) != 0;
        benchmark::DoNotOptimize(visible);
    }
    if (visible != (hits ? 0 : kItems)) state.SkipWithError("the filter's answers are wrong");
    state.counters["ns/question"] = benchmark::Counter(
        kItems * 1e-9, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

struct Case {
    const char* name;
    bool hits;
    Make make;
    bool shared;
    bool first;
};
constexpr Case kCases[] = {
    {"hidden brush", true, makeBrush, true, false},
    {"hidden pen", true, makePen, true, false},
    {"equal brush", true, makeBrush, false, false},
    {"equal pen", true, makePen, false, false},
    {"visible brush", false, makeBrush, true, false},
    {"visible pen", false, makePen, true, false},
    {"visible brush asked for the first time", false, makeBrush, false, true},
};

const bool registered = [] {
    for (const Case& one : kCases) {
        benchmark::RegisterBenchmark(
            one.name,
            [one](benchmark::State& state) { ask(state, one.hits, one.make, one.shared, one.first); })
            ->Arg(1)
            ->Arg(100)
            ->Arg(10000);
    }
    return true;
}();

}  // namespace

BENCHMARK_MAIN();
