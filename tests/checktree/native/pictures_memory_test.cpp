// Pictures without memory for what draws them.
#include <memory>

#include "checktree/fixture.h"
#include "kzcore/document/refer_item.h"
#include "platform/afx/creation.h"
#include "support/failing_new.h"
#include "support/pixels.h"

using test::CheckTree;

TEST_F(CheckTree, APictureThatCannotBeDrawnKeepsItsPlace) {
    constexpr COLORREF kOrange = RGB(255, 128, 0);
    const std::unique_ptr<AGradientBrushItem, void (*)(AReferItem*)> brush(
        new AGradientBrushItem(_T("")), [](AReferItem* one) { one->releaseReference(); });
    bool happened = true;
    for (int n = 1; happened; ++n) {
        tree.initImageLists();
        for (const char* path : {"A", "B", "C"}) insert(path);
        tree.setItemSwatch(at("A"), brush.get());
        tree.setItemColor(at("B"), kOrange);
        tree.setItemColor(at("C"), kOrange);
        {
            const AllocationFailure failing = failAllocation(n);
            tree.GetImageList(TVSIL_NORMAL);
            happened = failing.happened();
        }
        AfxDropException();  // which a handler left
        const HIMAGELIST pictures = tree.GetImageList(TVSIL_NORMAL);
        ASSERT_EQ(ImageList_GetImageCount(pictures), 12) << n;
        ASSERT_EQ(test::pixelsOf(pictures, image("C")).at(5, 5), kOrange) << n;
    }
}
