#include "formats/svg/draw/filter/filters.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <optional>

#include "formats/svg/draw/context/pixel_area.h"
#include "formats/svg/draw/filter/filter_graph.h"

namespace svg {

namespace {

// Beyond this filters would cost more than they show: pixels kept at once, by all results of one filter.
constexpr std::size_t kMostKeptPixels = std::size_t{1} << 27;
// How far outside of what is seen a filter looks, at least; further only as far as the seen is large.
constexpr LONG kUsualMargin = 256;

RECT moved(const RECT& rect, POINT by) {
    return {rect.left - by.x, rect.top - by.y, rect.right - by.x, rect.bottom - by.y};
}

// One image in both colour spaces, each made when first asked for.
class Result {
public:
    Result(AImage image, bool linear, const RECT& area) : m_area(area) {
        (linear ? m_linear : m_srgb) = std::move(image);
    }
    const AImage& get(bool linear) {
        std::optional<AImage>& wanted = linear ? m_linear : m_srgb;
        if (!wanted) {
            wanted = linear ? m_srgb : m_linear;
            linear ? convertToLinear(*wanted) : convertToSrgb(*wanted);
        }
        return *wanted;
    }
    const RECT& area() const { return m_area; }
    std::size_t pixels() const {
        return (m_srgb ? m_srgb->pixels().size() : 0) + (m_linear ? m_linear->pixels().size() : 0);
    }

private:
    std::optional<AImage> m_srgb, m_linear;
    RECT m_area;
};

class FilterRun {
public:
    FilterRun(const FilterGraph& graph, AImage picture, POINT origin)
        : m_graph(graph),
          m_origin(origin),
          m_size{0, 0, picture.width(), picture.height()},
          m_region(intersection(moved(graph.region, origin), m_size)),
          m_results(graph.steps.size()) {
        cropImage(picture, m_region);
        m_source.emplace(std::move(picture), false, m_region);
        findLastUses();
    }

    AImage run() {
        if (m_graph.steps.empty() || isEmpty(m_region)) return blank();
        for (std::size_t i = 0; i < m_graph.steps.size(); ++i) {
            if (m_lastUse[i] == 0 && i + 1 != m_graph.steps.size()) continue;  // nobody asks for it
            if (!runStep(i)) return blank();
        }
        return m_results.back()->get(false);
    }

private:
    AImage blank() const { return AImage(m_size.right, m_size.bottom); }

    // A step's result is kept until the last step that takes it has run.
    void findLastUses() {
        const std::size_t count = m_graph.steps.size();
        m_lastUse.assign(count, 0);
        for (std::size_t i = count; i-- > 0;) {
            if (i + 1 != count && m_lastUse[i] == 0) continue;
            for (const int input : m_graph.steps[i].inputs) {
                if (input < 0) continue;
                std::size_t& last = m_lastUse[static_cast<std::size_t>(input)];
                last = std::max(last, i);
            }
        }
    }

    Result& resultOf(int input) {
        if (input >= 0) return *m_results[static_cast<std::size_t>(input)];
        if (input == kSourceGraphic) return *m_source;
        std::optional<Result>& special = input == kSourceAlpha ? m_alpha : m_blank;
        if (!special) {
            special.emplace(input == kSourceAlpha ? alphaOf(m_source->get(false)) : blank(), false, m_region);
        }
        return *special;
    }

    // False when too much is kept.
    bool runStep(std::size_t index) {
        const FilterStep& step = m_graph.steps[index];
        StepInputs inputs;
        inputs.origin = m_origin;
        inputs.area = intersection(moved(step.area, m_origin), m_size);
        for (const int input : step.inputs) {
            Result& result = resultOf(input);
            inputs.images.push_back(&result.get(step.linear));
            // What feTile repeats may reach beyond the picture, so its whole size counts.
            inputs.areas.push_back(input >= 0
                                       ? moved(m_graph.steps[static_cast<std::size_t>(input)].area, m_origin)
                                       : moved(m_graph.region, m_origin));
        }
        AImage image = step.apply(inputs);
        cropImage(image, inputs.area);
        m_results[index].emplace(std::move(image), step.linear, inputs.area);
        std::size_t kept = m_source->pixels();
        for (std::size_t i = 0; i <= index; ++i) {
            if (i != index && m_lastUse[i] <= index) m_results[i].reset();
            if (m_results[i]) kept += m_results[i]->pixels();
        }
        return kept <= kMostKeptPixels;
    }

    const FilterGraph& m_graph;
    POINT m_origin;
    RECT m_size;
    RECT m_region;
    std::optional<Result> m_source, m_alpha, m_blank;
    std::vector<std::optional<Result>> m_results;
    std::vector<std::size_t> m_lastUse;  // 0: never
};

}  // namespace

ElementFilter::ElementFilter() = default;
ElementFilter::~ElementFilter() = default;

bool ElementFilter::read(DrawContext& context, const FilterArea& area) {
    return readFilters(context, area, m_graphs);
}

RECT ElementFilter::bounds(const RECT& visible) const {
    if (isEmpty(visible)) return visible;
    const double most = std::max({visible.right - visible.left, visible.bottom - visible.top, kUsualMargin});
    RECT bounds = visible;
    for (std::size_t i = m_graphs.size(); i-- > 0;) {
        const FilterGraph& graph = m_graphs[i];
        bounds = intersection(bounds, graph.region);
        if (isEmpty(bounds) || graph.steps.empty()) return {};
        double reach = 0;
        for (const FilterStep& step : graph.steps) reach += step.reach;
        const int margin = wholePixels(std::ceil(std::min(std::isnan(reach) ? most : reach, most)));
        const RECT grown{bounds.left - margin, bounds.top - margin, bounds.right + margin,
                         bounds.bottom + margin};
        bounds = intersection(grown, graph.region);
    }
    const auto margin = static_cast<LONG>(most);
    return intersection(bounds, {visible.left - margin, visible.top - margin, visible.right + margin,
                                 visible.bottom + margin});
}

ABox ElementFilter::reach() const {
    ABox reach;
    for (const FilterGraph& graph : m_graphs) {
        const RECT& region = graph.region;
        reach.add(ABox::around({static_cast<double>(region.left), static_cast<double>(region.top),
                                static_cast<double>(region.right), static_cast<double>(region.bottom)}));
    }
    return reach;
}

void ElementFilter::apply(DrawContext& context, AImage& image, POINT origin) const {
    for (const FilterGraph& graph : m_graphs) {
        double steps = 0;
        for (const FilterStep& step : graph.steps)
            steps += step.cost + static_cast<double>(step.inputs.size());
        if (image.empty() || !context.spendPixels(steps * static_cast<double>(image.pixels().size()))) return;
        image = FilterRun(graph, std::move(image), origin).run();
    }
}

}  // namespace svg
