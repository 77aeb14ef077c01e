// The depth of the image lists, which headless pictures do not have.
#include "checktree/fixture.h"

using test::CheckTree;

TEST_F(CheckTree, TheImageListsHoldTwentyFourBitsAPixel) {
    for (const int kind : {TVSIL_STATE, TVSIL_NORMAL}) {
        IMAGEINFO info{};
        ASSERT_TRUE(ImageList_GetImageInfo(tree.GetImageList(kind), 1, &info));
        BITMAP shape{};
        ASSERT_NE(::GetObjectW(info.hbmImage, sizeof shape, &shape), 0);
        EXPECT_EQ(shape.bmBitsPixel, 24);
    }
}
