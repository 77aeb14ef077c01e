// Conditions: what one question costs, in nanoseconds per object or item, beside the least that any of them
// has to do, which is to ask for the class name and compare it; and the memory of one condition.
#include <benchmark/benchmark.h>

#include <cstdlib>
#include <new>
#include <random>
#include <string>

#include "conditions/class_tables.h"
#include "conditions/container_conditions.h"
#include "conditions/fill_condition.h"
#include "conditions/refer_condition.h"
#include "conditions/stroke_condition.h"
#include "kzcore/document/application.h"
#include "kzcore/document/document.h"

namespace {

std::size_t bytesAsked = 0;

// Objects in groups of nineteen on fifty layers, ten thousand colours; every fifth object without paint.
struct Scene {
    AApplication application;
    ADocument document;
    std::vector<ARoot*> objects;
    std::vector<ARoot*> items;

    explicit Scene(int count) {
        std::mt19937 random(11);
        const WCHAR* const classes[] = {_T("ARectangle"), _T("AOval"), _T("AEditPath"), _T("ABitmap"),
                                        _T("AText")};
        std::vector<ALayer*> layers;
        for (int i = 0; i < 50; ++i)
            layers.push_back(
                document.createLayer(document.getDatabase(), *findClass(_T("ALayer")), _T("Layer")));
        AParent* group = nullptr;
        for (int i = 0; i < count; ++i) {
            const bool isGroup = i % 20 == 0;
            const AClassInfo& row =
                *findClass(isGroup ? _T("AGroup") : classes[random() % std::size(classes)]);
            AObject* object = document.createObject(row, "object-" + std::to_string(i));
            objects.push_back(object);
            if (isGroup) {
                layers[static_cast<std::size_t>(i) * 50 / static_cast<std::size_t>(count)]->appendChild(
                    object);
                group = object->asParent();
                continue;
            }
            group->appendChild(object);
            if (random() % 5 == 0) continue;
            AColorItem* color = document.getPaint().rgb(random() % 10000 * 1657);
            object->setBrush(document.getPaint().solidBrush(color));
            object->setPen(document.getPaint().pen(color));
        }
        const auto& colors = document.getPaint().getColors();
        for (int i = 0; i < count; ++i) items.push_back(colors[random() % colors.size()]);
    }

    static Scene& of(int count) {
        static std::unique_ptr<Scene> scene;
        if (!scene || scene->objects.size() != static_cast<std::size_t>(count))
            scene = std::make_unique<Scene>(count);
        return *scene;
    }
};

void report(benchmark::State& state, int matched) {
    state.counters["matched"] = matched;
    state.counters["ns/question"] =
        benchmark::Counter(static_cast<double>(state.range(0)) * 1e-9,
                           benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

void ask(benchmark::State& state, const std::vector<ARoot*>& asked, const ACondition& condition) {
    int matched = 0;
    for (auto _ : state) {
        matched = 0;
        for (ARoot* item : asked) matched += condition.isMatch(item);
        benchmark::DoNotOptimize(matched);
    }
    report(state, matched);
}

void compareNames(benchmark::State& state, const std::vector<ARoot*>& asked, const WCHAR* className) {
    const AString name(className);
    int matched = 0;
    for (auto _ : state) {
        matched = 0;
        for (ARoot* item : asked) matched += item->getClassName() == name;
        benchmark::DoNotOptimize(matched);
    }
    report(state, matched);
}

std::vector<ARoot*>& objects(const benchmark::State& state) {
    return Scene::of(static_cast<int>(state.range(0))).objects;
}
std::vector<ARoot*>& items(const benchmark::State& state) {
    return Scene::of(static_cast<int>(state.range(0))).items;
}
AColorItem* someColor(const benchmark::State& state) {
    return static_cast<AColorItem*>(items(state).front());
}

void ObjectsByClassName(benchmark::State& state) {
    compareNames(state, objects(state), _T("AOval"));
}
void ObjectClass(benchmark::State& state) {
    ask(state, objects(state), AObjectCondition(_T("Oval"), _T("AOval")));
}
void BitmapsByColorModel(benchmark::State& state) {
    AObjectCondition condition(_T(""), nullptr);
    condition.reset(_T("ABitmap"), kBitmapKinds[3].nameId, bitmapColorModelId);
    ask(state, objects(state), condition);
}
void Effect(benchmark::State& state) {
    ask(state, objects(state), AEffectCondition(_T("Shadow"), _T("AShadow")));
}
void Layer(benchmark::State& state) {
    ask(state, objects(state), ALayerCondition(_T("Drawing"), _T("ALayer")));
}
void NoFill(benchmark::State& state) {
    ask(state, objects(state), AFillCondition(_T("No fill"), nullptr));
}
void FillsOfAColorClass(benchmark::State& state) {
    AFillCondition condition(_T(""), nullptr);
    condition.reset(_T("Solid/RGB Color"), _T("ARGBColorItem"));
    ask(state, objects(state), condition);
}
void FillsOfAColor(benchmark::State& state) {
    Scene& scene = Scene::of(static_cast<int>(state.range(0)));
    ABrush* brush = scene.document.getPaint().solidBrush(someColor(state));
    ask(state, objects(state), AFillCondition(_T("red"), brush->getBrushItem()));
}
void StrokesOfAColor(benchmark::State& state) {
    ask(state, objects(state), AStrokeCondition(_T("red"), _T("APenItem"), someColor(state)));
}
void ItemsByClassName(benchmark::State& state) {
    compareNames(state, items(state), _T("ARGBColorItem"));
}
void ItemsOfAClass(benchmark::State& state) {
    ask(state, items(state), AReferCondition(_T("RGB Color"), _T("ARGBColorItem")));
}
void OneItem(benchmark::State& state) {
    ask(state, items(state), AReferCondition(nullptr, someColor(state)));
}

// The bytes that a condition asks for: the object, its path, its class names.
template <class Make>
void memory(benchmark::State& state, Make make) {
    for (auto _ : state) {
        const std::size_t before = bytesAsked;
        ACondition* condition = make();
        state.counters["bytes"] = static_cast<double>(bytesAsked - before);
        delete condition;
    }
}

void MemoryOfAnObjectClass(benchmark::State& state) {
    memory(state, [] { return new AObjectCondition(_T("Oval"), _T("AOval")); });
}
void MemoryOfAColor(benchmark::State& state) {
    AColorItem* color = Scene::of(static_cast<int>(state.range(0))).document.getPaint().rgb(0x00ff00);
    const AString path(_T("RGB Color/lime"));
    memory(state, [&] { return new AReferCondition(path, color); });
}
void MemoryOfAClone(benchmark::State& state) {
    AColorItem* color = Scene::of(static_cast<int>(state.range(0))).document.getPaint().rgb(0x00ff00);
    const AReferCondition source(_T("RGB Color/lime"), color);
    memory(state, [&] { return source.clone(); });
}

}  // namespace

void* operator new(std::size_t size) {
    bytesAsked += size;
    if (void* memory = std::malloc(size > 0 ? size : 1)) return memory;
    throw std::bad_alloc();
}
void operator delete(void* memory) noexcept {
    std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}

int main(int argc, char** argv) {
    const std::pair<const char*, void (*)(benchmark::State&)> questions[] = {
        {"ObjectsByClassName", ObjectsByClassName},
        {"ObjectClass", ObjectClass},
        {"BitmapsByColorModel", BitmapsByColorModel},
        {"Effect", Effect},
        {"Layer", Layer},
        {"NoFill", NoFill},
        {"FillsOfAColorClass", FillsOfAColorClass},
        {"FillsOfAColor", FillsOfAColor},
        {"StrokesOfAColor", StrokesOfAColor},
        {"ItemsByClassName", ItemsByClassName},
        {"ItemsOfAClass", ItemsOfAClass},
        {"OneItem", OneItem},
    };
    // Size by size, so that each scene is made once.
    for (const int count : {10000, 1000000}) {
        for (const auto& [name, question] : questions)
            benchmark::RegisterBenchmark(name, question)
                ->Arg(count)
                ->MinTime(0.1)
                ->Unit(benchmark::kMicrosecond);
    }
    benchmark::RegisterBenchmark("MemoryOfAnObjectClass", MemoryOfAnObjectClass)->Arg(10000);
    benchmark::RegisterBenchmark("MemoryOfAColor", MemoryOfAColor)->Arg(10000);
    benchmark::RegisterBenchmark("MemoryOfAClone", MemoryOfAClone)->Arg(10000);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
