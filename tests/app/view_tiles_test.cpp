// The tiles of a view beside those of a fresh one, while tools change what it shows.
#include <gtest/gtest.h>

#include <random>

#include "app/script/refer_item_argument.h"
#include "app/session.h"
#include "kzcore/display/tiles.h"
#include "kzcore/view/view_display.h"
#include "process.h"
#include "sea.h"
#include "support/temp_folder.h"

namespace {

AImage shownBy(ATiles& tiles) {
    const RECT area{0, 0, 200, 160};
    tiles.want(2, area);
    tiles.finish();
    AImage image;
    EXPECT_TRUE(tiles.show(2, area, image));
    return image;
}

void changeFilter(app::Session& session, std::mt19937& random) {
    static constexpr const char* kColors[] = {"color:red", "color:blue", "color:black", "color:#123456",
                                              "fill:sun"};
    AReferItem* const item = app::findReferItem(session.document(), kColors[random() % 5]);
    switch (random() % 7) {
        case 0:
            session.view().getHistory().undo();
            break;
        case 1:
            session.view().getHistory().redo();
            break;
        case 2:
            session.runTool("AShowAllTool");
            break;
        case 3:
            session.runTool("AShowThisTool", item);
            break;
        case 4:
            session.runTool("AHideAllExceptTool", item);
            break;
        case 5:
            session.runTool("AShowAllExceptTool", item);
            break;
        default:
            session.runTool("AHideThisTool", item);
    }
}

}  // namespace

TEST(ViewTiles, AfterAnyToolsUndoAndRedoEqualThoseOfAFreshView) {
    test::TempFolder folder;
    app::Session session;
    session.open(test::utf8(folder.write("sea.svg", test::kSea)));
    AViewDisplay display(session.view());
    const ATiles::Options options{64, std::size_t{16} << 20, 2, {}};
    ATiles tiles(display.list(), display.shown(), options);
    std::mt19937 random(11);
    int different = 0;
    AImage before = shownBy(tiles);
    for (int i = 0; i < 60; ++i) {
        changeFilter(session, random);
        tiles.setShown(display.shown());
        AViewDisplay other(session.view());
        ATiles fresh(other.list(), other.shown(), options);
        AImage now = shownBy(tiles);
        ASSERT_EQ(now.pixels(), shownBy(fresh).pixels()) << "change " << i;
        different += now.pixels() == before.pixels() ? 0 : 1;
        before = std::move(now);
    }
    EXPECT_GT(different, 15);
}
