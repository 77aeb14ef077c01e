// Tools when memory runs out.
#include <gtest/gtest.h>

#include <new>

#include "select/select_similar_tool.h"
#include "support/drawing.h"
#include "support/failing_new.h"

using test::Drawing;

TEST(ToolAllocation, CreateInstanceGivesNullWhenThereIsNoMemoryForTheTool) {
    const ASelectSimilarTool tool;
    const AllocationFailure failing = failAllocation(1);
    EXPECT_EQ(tool.createInstance(), nullptr);
    EXPECT_TRUE(failing.happened());
}

TEST(ToolAllocation, SelectSimilarLeavesTheSelectionWhenTheWalkRunsOutOfMemory) {
    Drawing drawing;
    ALayer* layer = drawing.layer();
    for (int i = 0; i < 40; ++i) drawing.add(drawing.addParent(layer, _T("AGroup")), _T("AOval"));
    AObject* reference = drawing.document.getObject(2);
    int failures = 0;
    for (int n = 1;; ++n) {
        drawing.select({reference});
        ASelectSimilarTool tool;
        const AllocationFailure failing = failAllocation(n);
        try {
            tool.onToolStart();
        } catch (const std::bad_alloc&) {
            ++failures;
            EXPECT_LE(drawing.selection().getCount(), 1);
        }
        if (!failing.happened()) break;
    }
    EXPECT_GT(failures, 0);
    EXPECT_EQ(drawing.selection().getCount(), 40);
}
