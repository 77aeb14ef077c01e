// The tools alone, in nanoseconds per object, on drawings of 10,000 to 1,000,000 objects.
#include <benchmark/benchmark.h>

#include <random>
#include <string>

#include "kzcore/document/application.h"
#include "kzcore/document/document.h"
#include "kzcore/tool/tool.h"
#include "kzcore/view/view.h"
#include "plug_in.h"

namespace {

// Fifty layers, groups of nineteen, ten thousand colours.
void fill(ADocument& document, int objects) {
    std::mt19937 random(11);
    const WCHAR* const classes[] = {_T("ARectangle"), _T("AOval"), _T("AEditPath"), _T("APolygon"),
                                    _T("AText")};
    std::vector<ALayer*> layers;
    for (int i = 0; i < 50; ++i)
        layers.push_back(document.createLayer(document.getDatabase(), *findClass(_T("ALayer")), _T("Layer")));
    document.getNames().reserve(static_cast<std::size_t>(objects));
    AParent* group = nullptr;
    for (int i = 0; i < objects; ++i) {
        const bool isGroup = i % 20 == 0;
        const AClassInfo& row = *findClass(isGroup ? _T("AGroup") : classes[random() % std::size(classes)]);
        AObject* object = document.createObject(row, "object-" + std::to_string(i));
        if (isGroup) {
            layers[static_cast<std::size_t>(i) * 50 / static_cast<std::size_t>(objects)]->appendChild(object);
            group = object->asParent();
            continue;
        }
        group->appendChild(object);
        const double x = random() % 4000;
        object->setBoundingRect({x, x, x + 10, x + 10});
        object->setBrush(document.getPaint().solidBrush(document.getPaint().rgb(random() % 10000 * 1657)));
    }
}

void runTool(benchmark::State& state, const WCHAR* className) {
    AApplication application;
    ADocument document;
    fill(document, static_cast<int>(state.range(0)));
    ADocView view(document);
    application.setActiveView(&view);
    ASelection& selection = *view.m_selection;
    const std::unique_ptr<ATool> tool(plugIn().findTool(className)->factory());
    AObject* reference = document.getObject(2);
    for (auto _ : state) {
        state.PauseTiming();
        selection.resetSelection(0);
        selection.addSelection(reference);
        state.ResumeTiming();
        benchmark::DoNotOptimize(tool->onToolStart());
    }
    state.counters["selected"] = selection.getCount();
    state.counters["ns/object"] =
        benchmark::Counter(static_cast<double>(state.range(0)) * 1e-9,
                           benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
    application.setActiveView(nullptr);
}

void SelectSimilar(benchmark::State& state) {
    runTool(state, _T("ASelectSimilarTool"));
}
void SelectColor(benchmark::State& state) {
    runTool(state, _T("ASelectColorTool"));
}

BENCHMARK(SelectSimilar)->Arg(10000)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMicrosecond);
BENCHMARK(SelectColor)->Arg(10000)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMicrosecond);

}  // namespace

BENCHMARK_MAIN();
