// The tools on a drawing with red, green, blue and black, whose view has one of six filters.
#pragma once

#include <array>

#include "support.h"
#include "support/drawing.h"
#include "viewfilter/color_tools.h"

namespace test {

inline constexpr const char* kTools[] = {"AShowAllTool", "AShowAllExceptTool", "AShowThisTool",
                                         "AHideThisTool", "AHideAllExceptTool"};

// Of a class that is not the plug-in's; shows everything.
struct ForeignFilter : AViewFilter {
    ForeignFilter() { ++alive; }
    ~ForeignFilter() override { --alive; }
    static inline int alive = 0;
};

enum class State { none, foreign, allShown, noneShown, normal, negative };
inline constexpr State kStates[] = {State::none,      State::foreign, State::allShown,
                                    State::noneShown, State::normal,  State::negative};
inline std::array<std::string, 6> toldStates() {
    return {"none",
            "foreign",
            "all shown",
            "none shown",
            "normal show: blue hide: red,green",
            "negative show: green hide: red,blue"};
}

struct ToolTest : testing::Test {
    Drawing drawing;
    AObject* object = drawing.add(drawing.layer(), _T("AOval"));

    AColorItem* color(const std::string& name) {
        APaintTable& paint = drawing.document.getPaint();
        if (name == "red") return paint.rgb(0xff0000);
        if (name == "green") return paint.rgb(0x008000);
        return paint.rgb(name == "blue" ? 0x0000ff : 0x000000);
    }

    void set(State state) { drawing.view().setViewFilter(makeFilter(state).release()); }
    std::unique_ptr<AViewFilter> makeFilter(State state) {
        if (state == State::none) return nullptr;
        if (state == State::foreign) return std::make_unique<ForeignFilter>();
        auto filter = std::make_unique<AViewAttrFilter>();
        if (state == State::noneShown) filter->setUniform(0);
        if (state == State::normal) list(*filter, {"blue"}, {"red", "green"}, 0);
        if (state == State::negative) list(*filter, {"green"}, {"red", "blue"}, 1);
        return filter;
    }
    AViewAttrFilter& ours() { return dynamic_cast<AViewAttrFilter&>(*drawing.view().m_viewFilter); }

    std::unique_ptr<ATool> make(const std::string& name) {
        if (name == "AShowAllTool") return std::make_unique<AShowAllTool>();
        if (name == "AShowAllExceptTool") return std::make_unique<AShowAllExceptTool>();
        if (name == "AShowThisTool") return std::make_unique<AShowThisTool>();
        if (name == "AHideThisTool") return std::make_unique<AHideThisTool>();
        return std::make_unique<AHideAllExceptTool>();
    }
    int start(ATool& tool, AReferItem* item) {
        if (tool.getClassName() == _T("AShowAllTool")) return tool.onToolStart();
        return tool.onToolStart(AFPoint(1, 2), item);
    }
    int start(const std::string& name, AReferItem* item) { return start(*make(name), item); }

    // The visible ones of the four colours.
    std::string visible() {
        std::string names;
        AViewFilter* filter = drawing.view().m_viewFilter;
        for (const char* name : {"red", "green", "blue", "black"}) {
            if (!filter || filter->isVisible(color(name))) names += std::string(" ") + name;
        }
        return names;
    }

private:
    void list(AViewAttrFilter& filter, const std::vector<const char*>& show,
              const std::vector<const char*>& hide, BYTE negative) {
        AObArray shown;
        AObArray hidden;
        std::vector<Condition> conditions;
        for (const char* name : show) shown.Add(conditions.emplace_back(on(color(name))).get());
        for (const char* name : hide) hidden.Add(conditions.emplace_back(on(color(name))).get());
        filter.assign(shown, hidden, 0, negative);
    }
};

}  // namespace test
