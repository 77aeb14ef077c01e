// Where the parts of items lie, and what is scrolled into view. Text widths differ between fonts: no test
// depends on one.
#include <cstring>

#include "platform/driver/input.h"
#include "tests/platform_ui/recorder.h"
#include "tests/platform_ui/support.h"

namespace {

constexpr DWORD with_lines_at_root = TVS_HASBUTTONS | TVS_HASLINES | TVS_LINESATROOT | TVS_DISABLEDRAGDROP;

TVHITTESTINFO hit(const Recorder& recorder, LONG x, LONG y) {
    TVHITTESTINFO test = {};
    test.pt = {x, y};
    SendMessageW(recorder.tree(), TVM_HITTEST, 0, reinterpret_cast<LPARAM>(&test));
    return test;
}

// The flags from left to right with the pixel where each begins, up to the text.
Strings parts(const Recorder& recorder, LONG y) {
    Strings found;
    UINT before = 0;
    for (LONG x = 0; x < 200 && before != TVHT_ONITEMLABEL; ++x) {
        const UINT flags = hit(recorder, x, y).flags;
        if (flags != before) found.push_back(std::to_string(flags) + " from " + std::to_string(x));
        before = flags;
    }
    return found;
}

bool rect_of(const Recorder& recorder, HTREEITEM item, bool text_only, RECT& rect) {
    std::memcpy(&rect, &item, sizeof(item));
    return SendMessageW(recorder.tree(), TVM_GETITEMRECT, text_only, reinterpret_cast<LPARAM>(&rect)) != 0;
}

// Twenty leaves i0 … i19 in a window of five rows.
class LongTree : public testing::Test {
protected:
    LongTree() : recorder_(with_lines_at_root, {200, 80}) {
        for (int i = 0; i < 20; ++i) items_.push_back(recorder_.insert("i" + std::to_string(i), nullptr));
    }
    std::string top() {
        return recorder_.name(reinterpret_cast<HTREEITEM>(
            SendMessageW(recorder_.tree(), TVM_GETNEXTITEM, TVGN_FIRSTVISIBLE, 0)));
    }
    LRESULT send(UINT message, WPARAM wParam, HTREEITEM item) {
        return SendMessageW(recorder_.tree(), message, wParam, reinterpret_cast<LPARAM>(item));
    }

    Recorder recorder_;
    std::vector<HTREEITEM> items_;
};

}  // namespace

TEST(TreeGeometry, AnItemHasButtonCheckBoxPictureAndText) {
    Recorder recorder(with_lines_at_root, {200, 80});
    recorder.attach_images(true, true);
    HTREEITEM group = recorder.insert("group", nullptr);
    recorder.insert("leaf", group);
    SendMessageW(recorder.tree(), TVM_EXPAND, TVE_EXPAND, reinterpret_cast<LPARAM>(group));
    EXPECT_EQ(parts(recorder, 8), (Strings{"16 from 0", "64 from 19", "2 from 35", "4 from 51"}));
    EXPECT_EQ(parts(recorder, 24),
              (Strings{"8 from 0", "16 from 19", "64 from 38", "2 from 54", "4 from 70"}));
    EXPECT_EQ(hit(recorder, 199, 8).flags, UINT{TVHT_ONITEMRIGHT});
}

TEST(TreeGeometry, WithoutStateImageThePictureComesRightAfterTheButton) {
    Recorder recorder(with_lines_at_root, {200, 80});
    recorder.attach_images(true, true);
    TVITEMW record = {};
    record.mask = TVIF_HANDLE | TVIF_STATE;
    record.hItem = recorder.insert("leaf", nullptr);
    record.stateMask = TVIS_STATEIMAGEMASK;
    SendMessageW(recorder.tree(), TVM_SETITEMW, 0, reinterpret_cast<LPARAM>(&record));
    EXPECT_EQ(parts(recorder, 8), (Strings{"16 from 0", "2 from 19", "4 from 35"}));
}

TEST(TreeGeometry, WithoutLinesAtRootTopItemsBeginAtTheEdge) {
    Recorder recorder(TVS_HASBUTTONS | TVS_DISABLEDRAGDROP, {200, 80});
    recorder.insert("leaf", nullptr);
    EXPECT_EQ(parts(recorder, 8), Strings{"4 from 0"});
}

TEST(TreeGeometry, OutsideAllItemsIsToldFromOutsideTheWindow) {
    Recorder recorder(with_lines_at_root, {200, 80});
    recorder.insert("leaf", nullptr);
    const struct {
        LONG x, y;
        UINT flags;
    } places[] = {
        {50, 40, TVHT_NOWHERE}, {-1, 8, TVHT_TOLEFT}, {210, 8, TVHT_TORIGHT},
        {50, -1, TVHT_ABOVE},   {50, 90, TVHT_BELOW}, {-1, -1, TVHT_TOLEFT | TVHT_ABOVE},
    };
    for (const auto& place : places) {
        const TVHITTESTINFO test = hit(recorder, place.x, place.y);
        EXPECT_EQ(test.flags, place.flags) << place.x << "," << place.y;
        EXPECT_EQ(test.hItem, nullptr);
    }
}

TEST(TreeGeometry, OnlyShownItemsHaveARectangle) {
    Recorder recorder(with_lines_at_root, {200, 80});
    HTREEITEM group = recorder.insert("group", nullptr);
    HTREEITEM leaf = recorder.insert("leaf", group);
    RECT rect = {};
    EXPECT_FALSE(rect_of(recorder, leaf, false, rect));
    SendMessageW(recorder.tree(), TVM_EXPAND, TVE_EXPAND, reinterpret_cast<LPARAM>(group));
    ASSERT_TRUE(rect_of(recorder, leaf, true, rect));
    EXPECT_EQ(rect.left, 38);
    EXPECT_EQ(rect.top, 16);
    EXPECT_EQ(rect.bottom, 31);
}

TEST(TreeGeometry, AScrollBarTakesItsRoomFromTheRows) {
    Recorder recorder(with_lines_at_root, {200, 47});
    RECT client;
    for (int i = 0; i < 3; ++i) recorder.insert("leaf", nullptr);
    GetClientRect(recorder.tree(), &client);
    EXPECT_EQ(client.right, 200) << "the last row needs 15 pixels only";
    recorder.insert("leaf", nullptr);
    GetClientRect(recorder.tree(), &client);
    EXPECT_EQ(client.right, 183);
}

TEST_F(LongTree, ItemsBelowTheWindowStillHaveARectangle) {
    RECT rect = {};
    ASSERT_TRUE(rect_of(recorder_, items_[10], false, rect));
    EXPECT_EQ(rect.top, 160);
}

TEST_F(LongTree, NeverScrollsPastTheLastPage) {
    send(TVM_SELECTITEM, TVGN_FIRSTVISIBLE, items_[7]);
    EXPECT_EQ(top(), "i7");
    send(TVM_SELECTITEM, TVGN_FIRSTVISIBLE, items_[19]);
    EXPECT_EQ(top(), "i15");
}

TEST_F(LongTree, EnsuringThatAnItemIsVisibleScrollsNoFurtherThanNeeded) {
    EXPECT_EQ(send(TVM_ENSUREVISIBLE, 0, items_[4]), 0) << "seen already";
    EXPECT_EQ(send(TVM_ENSUREVISIBLE, 0, items_[9]), 1);
    EXPECT_EQ(top(), "i5");
    EXPECT_EQ(send(TVM_ENSUREVISIBLE, 0, items_[2]), 1);
    EXPECT_EQ(top(), "i2");
}

TEST_F(LongTree, ExpandingScrollsTheChildrenIntoView) {
    HTREEITEM leaf = nullptr;
    for (int i = 0; i < 3; ++i) leaf = recorder_.insert("leaf", items_[4]);
    send(TVM_EXPAND, TVE_EXPAND, items_[4]);
    EXPECT_EQ(top(), "i3") << "the last child is the last row";
    for (int i = 0; i < 10; ++i) recorder_.insert("leaf", items_[6]);
    send(TVM_EXPAND, TVE_EXPAND, items_[6]);
    EXPECT_EQ(top(), "i6") << "but the parent stays";
    EXPECT_NE(leaf, nullptr);
}

TEST_F(LongTree, KeysTurnPages) {
    SetFocus(recorder_.tree());
    driver::pressKey(recorder_.tree(), VK_NEXT);
    driver::pressKey(recorder_.tree(), VK_NEXT);
    EXPECT_EQ(top(), "i6");
    driver::pressKey(recorder_.tree(), VK_END);
    EXPECT_EQ(top(), "i15");
    driver::pressKey(recorder_.tree(), VK_HOME);
    EXPECT_EQ(top(), "i0");
}

TEST_F(LongTree, AClickReachesTheRowThatIsScrolledThere) {
    send(TVM_SELECTITEM, TVGN_FIRSTVISIBLE, items_[10]);
    EXPECT_EQ(hit(recorder_, 30, 20).hItem, items_[11]);
}
