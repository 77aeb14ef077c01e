// Opening the View Filter dialog, headless: from the tool's start until the dialog waits for its user.
#include <benchmark/benchmark.h>

#include <chrono>
#include <string>

#include "kzcore/document/application.h"
#include "kzcore/document/document.h"
#include "kzcore/view/view.h"
#include "platform/driver/driver.h"
#include "viewfilter/view_filter_tool.h"

namespace {

using Clock = std::chrono::steady_clock;

// Ovals with a fill and a stroke each, in colours that take turns.
struct Drawing {
    AApplication application;
    ADocument document;
    ADocView view{document};

    Drawing(int objects, int colors) {
        ALayer* layer = document.createLayer(document.getDatabase(), *findClass(_T("ALayer")), _T("Layer"));
        document.reserve(static_cast<std::size_t>(objects));
        const auto color = [&](int number) { return static_cast<std::uint32_t>(number % colors) * 1657; };
        for (int i = 0; i < objects; ++i) {
            AObject* oval = document.createObject(*findClass(_T("AOval")), "oval-" + std::to_string(i));
            oval->setBrush(document.getPaint().rgbBrush(color(i)));
            oval->setPen(document.getPaint().rgbPen(color(i * 7 + 1)));
            layer->appendChild(oval);
        }
        application.setActiveView(&view);
    }
    ~Drawing() { application.setActiveView(nullptr); }
    Drawing(const Drawing&) = delete;
    Drawing& operator=(const Drawing&) = delete;
};

void open(benchmark::State& state, int objects, int colors) {
    const Drawing drawing(objects, colors);
    AViewFilterTool tool;
    std::size_t entries = 0;
    for (auto _ : state) {
        const Clock::time_point begin = Clock::now();
        driver::Driver user({[&](driver::Dialog& dialog) {
            state.SetIterationTime(std::chrono::duration<double>(Clock::now() - begin).count());
            entries = dialog.tree().at(0).children.size();
            dialog.press("Cancel");
        }});
        tool.onToolStart();
    }
    if (entries != static_cast<std::size_t>(colors)) state.SkipWithError("not every colour is listed");
}

void OpenOnObjects(benchmark::State& state) {
    open(state, static_cast<int>(state.range(0)), 20);
}
BENCHMARK(OpenOnObjects)->Arg(10000)->Arg(100000)->Arg(1000000)->UseManualTime()->Unit(benchmark::kSecond);

void OpenOnColors(benchmark::State& state) {
    open(state, 100000, static_cast<int>(state.range(0)));
}
BENCHMARK(OpenOnColors)->Arg(100)->Arg(1000)->Arg(10000)->UseManualTime()->Unit(benchmark::kSecond);

}  // namespace

BENCHMARK_MAIN();
