// Which of the host's virtual operations each tool overrides: those that the pattern names, and no other.
#include <gtest/gtest.h>

#include <set>

#include "select/select_by_attr_tool.h"
#include "select/select_color_tool.h"
#include "select/select_similar_tool.h"
#include "support/virtual_slots.h"
#include "viewfilter/color_tools.h"
#include "viewfilter/view_filter_tool.h"

using test::slotOf;
using Slots = std::set<std::ptrdiff_t>;

namespace {

// Overrides nothing but the destructor, whose two slots are 1 and 2.
struct PlainTool : ATool {};

template <class Tool>
const void* const* tableOf(const Tool& tool) {
    return *reinterpret_cast<const void* const* const*>(&tool);
}

template <class Tool>
Slots overridden() {
    const Tool tool;
    const PlainTool plain;
    Slots slots;
    for (std::ptrdiff_t i = 0; i <= slotOf(&ATool::listenMessage); ++i) {
        if (tableOf(tool)[i] != tableOf(plain)[i]) slots.insert(i);
    }
    return slots;
}

Slots expected(std::initializer_list<std::ptrdiff_t> own) {
    Slots slots{1,
                2,
                slotOf(&ATool::getClassName),
                slotOf(&ATool::getDisplayNameID),
                slotOf(&ATool::getDisplayIconID),
                slotOf(&ATool::createInstance),
                slotOf(&ATool::getVersion)};
    slots.insert(own);
    return slots;
}

}  // namespace

TEST(Overrides, AreThoseOfThePatternTheStartOperationAndTheOwnValidity) {
    const auto start = slotOf(static_cast<int (ATool::*)()>(&ATool::onToolStart));
    const auto startOnItem = slotOf(static_cast<int (ATool::*)(const AFPoint&, void*)>(&ATool::onToolStart));
    const auto isValid = slotOf(&ATool::isValid);
    EXPECT_EQ(overridden<AViewFilterTool>(), expected({isValid, start}));
    EXPECT_EQ(overridden<ASelectByAttrTool>(), expected({isValid, start}));
    EXPECT_EQ(overridden<ASelectSimilarTool>(), expected({isValid, start}));
    EXPECT_EQ(overridden<ASelectColorTool>(), expected({isValid, start}));
    EXPECT_EQ(overridden<AShowAllTool>(), expected({isValid, start}));
    EXPECT_EQ(overridden<AShowAllExceptTool>(), expected({startOnItem}));
    EXPECT_EQ(overridden<AShowThisTool>(), expected({startOnItem}));
    EXPECT_EQ(overridden<AHideThisTool>(), expected({startOnItem}));
    EXPECT_EQ(overridden<AHideAllExceptTool>(), expected({startOnItem}));
}
