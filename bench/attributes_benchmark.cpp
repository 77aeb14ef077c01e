// Select by Attributes without its windows, in nanoseconds per object: opening the sheet (gathering, filling
// the pages, putting them in order) and applying one page with everything on it ticked: that selects the groups,
// which have no fill. Beside them, applying all but "No fill", which selects what is in them, and looking at each
// object once.
#include <benchmark/benchmark.h>

#include <random>
#include <string>

#include "kzcore/document/application.h"
#include "kzcore/document/document.h"
#include "kzcore/view/view.h"
#include "select/object_walk.h"
#include "select/select_by_attr_sheet.h"
#include "select/select_by_attr_tool.h"
#include "select/select_page.h"

namespace {

// Objects in groups of nineteen on fifty layers; of a hundred, `gradients` are filled by one of ten.
struct Scene {
    AApplication application;
    ADocument document;
    ADocView view{document};

    Scene(int objects, unsigned colors, unsigned gradients) {
        application.setActiveView(&view);
        std::mt19937 random(11);
        const WCHAR* const classes[] = {_T("ARectangle"), _T("AOval"), _T("AEditPath"), _T("APolygon"),
                                        _T("AText")};
        std::vector<ALayer*> layers;
        for (int i = 0; i < 50; ++i)
            layers.push_back(
                document.createLayer(document.getDatabase(), *findClass(_T("ALayer")), _T("Layer")));
        document.reserve(static_cast<std::size_t>(objects));
        AParent* group = nullptr;
        for (int i = 0; i < objects; ++i) {
            const bool isGroup = i % 20 == 0;
            AObject* object = document.createObject(
                *findClass(isGroup ? _T("AGroup") : classes[random() % 5]), "object-" + std::to_string(i));
            if (isGroup) {
                layers[static_cast<std::size_t>(i) * 50 / static_cast<std::size_t>(objects)]->appendChild(
                    object);
                group = object->asParent();
                continue;
            }
            group->appendChild(object);
            paint(*object, random, colors, gradients);
        }
    }

    void paint(AObject& object, std::mt19937& random, unsigned colors, unsigned gradients) {
        APaintTable& paint = document.getPaint();
        if (random() % 100 < gradients)
            object.setBrush(paint.gradientBrush("gradient-" + std::to_string(random() % 10)));
        else
            object.setBrush(paint.rgbBrush(random() % colors * 1657));
        if (random() % 2) object.setPen(paint.rgbPen(random() % colors * 1657));
    }

    static Scene& of(const benchmark::State& state) {
        static std::unique_ptr<Scene> scene;
        static std::vector<std::int64_t> made;
        const std::vector<std::int64_t> wanted{state.range(0), state.range(1), state.range(2)};
        if (made != wanted) {
            scene.reset();
            scene = std::make_unique<Scene>(static_cast<int>(wanted[0]), static_cast<unsigned>(wanted[1]),
                                            static_cast<unsigned>(wanted[2]));
            made = wanted;
        }
        return *scene;
    }
};

struct Opened {
    ASelectByAttrTool tool;
    ASelectByAttrSheet sheet{&tool, IDS_SELECT_BY_ATTRIBUTES_CAPTION, nullptr, 0};

    explicit Opened(Scene& scene) {
        tool.prepareSelectionData(scene.view);
        tool.createPages(sheet);
        tool.fillPages(sheet);
        sheet.addPages();
    }
};

void report(benchmark::State& state) {
    state.counters["ns/object"] =
        benchmark::Counter(static_cast<double>(state.range(0)) * 1e-9,
                           benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

void Open(benchmark::State& state) {
    Scene& scene = Scene::of(state);
    int entries = 0;
    for (auto _ : state) {
        const Opened opened(scene);
        entries = opened.sheet.findPage(_T("Fill"))->getConditions().GetSize();
    }
    state.counters["entries"] = entries;
    report(state);
}

void apply(benchmark::State& state, bool withNoFill) {
    Scene& scene = Scene::of(state);
    scene.view.m_selection->resetSelection(0);
    Opened opened(scene);
    AObArray ticked;
    for (ARoot* entry : opened.sheet.findPage(_T("Fill"))->getConditions()) {
        if (withNoFill || !static_cast<ACondition*>(entry)->getClassNames().IsEmpty()) ticked.Add(entry);
    }
    for (auto _ : state) {
        opened.sheet.applyConditions(ticked);
        state.counters["selected"] = scene.view.m_selection->getCount();
    }
    report(state);
}

void Apply(benchmark::State& state) {
    apply(state, true);
}

void ApplyColors(benchmark::State& state) {
    apply(state, false);
}

void Look(benchmark::State& state) {
    Scene& scene = Scene::of(state);
    scene.view.m_selection->resetSelection(0);
    Opened opened(scene);
    for (auto _ : state) {
        std::uintptr_t seen = 0;
        forEachObject(opened.tool.getCandidateObjects(), [&](const AObject& object) {
            seen += reinterpret_cast<std::uintptr_t>(brushOf(object)) + object.getObjectFlags(kObjectHidden);
        });
        benchmark::DoNotOptimize(seen);
    }
    report(state);
}

}  // namespace

int main(int argc, char** argv) {
    struct Row {
        const char* name;
        int objects, colors, gradients;
    };
    for (const Row& row :
         {Row{"20 colors", 10000, 20, 0}, Row{"20 colors", 100000, 20, 0}, Row{"20 colors", 1000000, 20, 0},
          Row{"20 colors with gradients", 10000, 20, 5}, Row{"20 colors with gradients", 100000, 20, 5},
          Row{"20 colors with gradients", 1000000, 20, 5}, Row{"10,000 colors", 100000, 10000, 0},
          Row{"10,000 colors", 1000000, 10000, 0}}) {
        for (const auto& [verb, run] : {std::pair<const char*, void (*)(benchmark::State&)>{"look, ", Look},
                                        {"open, ", Open},
                                        {"apply, ", Apply},
                                        {"apply all but No fill, ", ApplyColors}}) {
            benchmark::RegisterBenchmark((std::string(verb) + row.name).c_str(), run)
                ->Args({row.objects, row.colors, row.gradients})
                ->MinTime(0.1)
                ->Unit(benchmark::kMillisecond);
        }
    }
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
