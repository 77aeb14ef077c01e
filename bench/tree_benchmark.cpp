// The check tree, headless: filling, checking, collecting, swatches.
#include <benchmark/benchmark.h>

#include <string>

#include "checktree/check_tree.h"
#include "kzcore/document/refer_item.h"

namespace {

struct Page {
    CWnd frame;
    ACheckTree tree;
    Page() {
        frame.CreateEx(0, nullptr, _T("frame"), WS_POPUP | WS_VISIBLE, CRect(0, 0, 400, 400), nullptr, 0);
        tree.Create(WS_CHILD | WS_VISIBLE | TVS_HASBUTTONS | TVS_HASLINES | TVS_LINESATROOT,
                    CRect(0, 0, 400, 400), &frame, 1059);
        tree.initImageLists();
    }
};

// Groups of a hundred leaves.
std::vector<AString> paths(int leaves) {
    std::vector<AString> all;
    for (int i = 0; i < leaves; ++i)
        all.push_back(AString::fromUtf8("group " + std::to_string(i / 100) + "/leaf " + std::to_string(i)));
    return all;
}

// What a page does: fill, check all, expand, read back by data.
void FillCheckCollect(benchmark::State& state) {
    const std::vector<AString> all = paths(static_cast<int>(state.range(0)));
    Page page;
    for (auto _ : state) {
        page.tree.initImageLists();
        DWORD data = 0;
        for (const AString& path : all) page.tree.insertItem(path, ++data);
        page.tree.setAllChecks(1);
        page.tree.expandAll(1);
        ADWordArray collected;
        page.tree.getCheckedData(collected, 1);
        page.tree.setChecks(collected, 1, nullptr);
        if (collected.GetSize() != state.range(0)) state.SkipWithError("not every leaf was collected");
    }
    state.counters["ns/item"] =
        benchmark::Counter(static_cast<double>(state.range(0)) * 1e-9,
                           benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}
BENCHMARK(FillCheckCollect)->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

// One swatch for each leaf.
void Swatches(benchmark::State& state) {
    const std::vector<AString> all = paths(static_cast<int>(state.range(0)));
    Page page;
    for (auto _ : state) {
        page.tree.initImageLists();
        DWORD data = 0;
        for (const AString& path : all) {
            HTREEITEM item = page.tree.insertItem(path, ++data);
            page.tree.setItemColor(item, data * 1657 % 0x1000000);
        }
    }
    state.counters["ns/item"] =
        benchmark::Counter(static_cast<double>(state.range(0)) * 1e-9,
                           benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}
BENCHMARK(Swatches)->Arg(100)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
