// Pictures, pixel by pixel.
#include <memory>

#include "checktree/fixture.h"
#include "kzcore/device/device_mgr.h"
#include "kzcore/document/config.h"
#include "kzcore/document/refer_item.h"
#include "res/resource.h"
#include "support/pixels.h"

using test::CheckTree;
using test::Pixels;
using test::pixelsOf;

namespace {

constexpr COLORREF kOrange = RGB(255, 128, 0);
constexpr COLORREF kFace = RGB(200, 210, 220);

// System colours that are told apart: buttons' faces are never white.
class CheckTreePictures : public CheckTree {
protected:
    test::SystemColor window{COLOR_WINDOW, RGB(255, 255, 255)};
    test::SystemColor face{COLOR_3DFACE, kFace};

    HIMAGELIST pictures() { return tree.GetImageList(TVSIL_NORMAL); }
    HIMAGELIST boxes() { return tree.GetImageList(TVSIL_STATE); }
    Pixels shown(const char* path) { return pixelsOf(pictures(), image(path)); }
};

Pixels whiteReplaced(Pixels pixels, COLORREF by) {
    for (COLORREF& color : pixels.colors) {
        if (color == test::kWhite) color = by;
    }
    return pixels;
}

}  // namespace

TEST_F(CheckTreePictures, TheListsAreBuiltFromTheBitmaps) {
    EXPECT_EQ(ImageList_GetImageCount(boxes()), 7);
    EXPECT_EQ(ImageList_GetImageCount(pictures()), 6);
    EXPECT_EQ(ImageList_GetBkColor(boxes()), test::kWhite);
    EXPECT_EQ(ImageList_GetBkColor(pictures()), test::kWhite);
}

TEST_F(CheckTreePictures, TheListsHoldTwentyFourBitsAPixel) {
    for (const HIMAGELIST list : {pictures(), boxes()}) {
        IMAGEINFO info{};
        ASSERT_TRUE(ImageList_GetImageInfo(list, 1, &info));
        BITMAP shape{};
        ASSERT_NE(::GetObjectW(info.hbmImage, sizeof shape, &shape), 0);
        EXPECT_EQ(shape.bmBitsPixel, 24);
    }
}

TEST_F(CheckTreePictures, DisabledBoxesAreTheEnabledOnesOnTheFaceColor) {
    // 1 and 2 are one picture, 3 and 4 another, 5 and 6 the third.
    for (const int box : {1, 3, 5})
        EXPECT_EQ(pixelsOf(boxes(), box + 1), whiteReplaced(pixelsOf(boxes(), box), kFace)) << box;
    EXPECT_NE(pixelsOf(boxes(), 1), pixelsOf(boxes(), 3));
    EXPECT_NE(pixelsOf(boxes(), 3), pixelsOf(boxes(), 5));
}

TEST_F(CheckTreePictures, DisabledFoldersAreTheEnabledOnesOnTheFaceColor) {
    for (const int folder : {2, 4})
        EXPECT_EQ(pixelsOf(pictures(), folder + 1), whiteReplaced(pixelsOf(pictures(), folder), kFace))
            << folder;
    const Pixels drop = pixelsOf(pictures(), 0);
    const Pixels empty = pixelsOf(pictures(), 1);
    EXPECT_NE(empty, whiteReplaced(drop, kFace)) << "an empty frame instead of the drop, as users know it";
    EXPECT_EQ(empty.at(1, 2), test::kBlack);
    EXPECT_EQ(empty.at(7, 7), kFace);
}

TEST_F(CheckTreePictures, AColorSwatchCoversColumns3To15AndRows2To13) {
    insert("A", 1);
    tree.setItemColor(at("A"), kOrange);
    EXPECT_EQ(image("A"), 6);
    EXPECT_EQ(ImageList_GetImageCount(pictures()), 8);
    const Pixels enabled = pixelsOf(pictures(), 6);
    for (int y = 0; y < 16; ++y) {
        for (int x = 0; x < 16; ++x) {
            const bool inside = x >= 3 && y >= 2 && y <= 13;
            EXPECT_EQ(enabled.at(x, y), inside ? kOrange : test::kWhite) << x << "," << y;
        }
    }
    EXPECT_EQ(pixelsOf(pictures(), 7), whiteReplaced(enabled, kFace));
}

TEST_F(CheckTreePictures, AWhiteSwatchTurnsGreyWhenDisabled) {
    insert("A", 1);
    tree.setItemColor(at("A"), test::kWhite);
    tree.EnableWindow(FALSE);
    const Pixels disabled = shown("A");
    for (const COLORREF color : disabled.colors) EXPECT_EQ(color, kFace);
}

TEST_F(CheckTreePictures, ASwatchGivenWhileDisabledShowsItsDisabledForm) {
    insert("A", 1);
    tree.EnableWindow(FALSE);
    tree.setItemColor(at("A"), kOrange);
    EXPECT_EQ(image("A"), 7);
    tree.EnableWindow(TRUE);
    EXPECT_EQ(image("A"), 6);
}

TEST_F(CheckTreePictures, ABrushSwatchIsASampleInTheFrame) {
    auto* color = new AColorItem(*findClass(_T("ARGBColorItem")), _T("orange"), {1, 0.5F, 0, 0}, kOrange);
    auto* brush = new ASolidBrushItem(color);
    insert("A", 1);
    tree.setItemSwatch(at("A"), brush);
    const Pixels sample = shown("A");
    CBitmap frame;
    COLORMAP white{test::kWhite, test::kWhite};
    ASSERT_TRUE(frame.LoadMappedBitmap(2050, 0, &white, 1));
    const Pixels outline = pixelsOf(frame);
    for (int y = 0; y < 16; ++y) {
        for (int x = 0; x < 16; ++x) {
            const bool inside = x >= 3 && y >= 3 && y < 14;
            EXPECT_EQ(sample.at(x, y), inside ? kOrange : outline.at(x, y)) << x << "," << y;
        }
    }
    brush->releaseReference();
    color->releaseReference();
}

// A gradient shows where the sample begins: one pixel left of and above what is copied.
TEST_F(CheckTreePictures, AGradientSwatchIsDrawnFrom2And2AndShownFrom3And3) {
    auto* brush = new AGradientBrushItem(_T("glow"));
    insert("A", 1);
    tree.setItemSwatch(at("A"), brush);
    const Pixels swatch = shown("A");
    CDC display;
    ASSERT_TRUE(display.CreateDC(_T("DISPLAY"), nullptr, nullptr, nullptr));
    const AScreenInfo screen(1.0);
    const ADevice device(display, screen);
    CDC memory;
    CBitmap picture;
    ASSERT_TRUE(memory.CreateCompatibleDC(&display));
    ASSERT_TRUE(picture.CreateCompatibleBitmap(&display, 16, 16));
    const RECT area{2, 2, 16, 14};
    ADevice* offscreen = KzGetDeviceMgr()->GetOffscreenDevice(device, screen.screenToDrawing(area), 0);
    ASSERT_NE(offscreen, nullptr);
    {
        const CSelection selection(memory, picture);
        ADevice copy(memory, screen);
        brush->drawSample(*offscreen, area);
        copy.DrawStart();
        copy.CopyBits(screen.screenToDrawing(area), *offscreen, screen.screenToDrawing(area), SRCCOPY);
        copy.DrawEnd();
    }
    KzGetDeviceMgr()->ReleaseDevice(offscreen);
    const Pixels sample = pixelsOf(picture);
    EXPECT_NE(sample.at(3, 7), sample.at(4, 7)) << "or one column would do for another";
    for (int y = 3; y < 14; ++y) {
        for (int x = 3; x < 16; ++x) EXPECT_EQ(swatch.at(x, y), sample.at(x, y)) << x << "," << y;
    }
    brush->releaseReference();
}

TEST_F(CheckTreePictures, ASwatchOfNothingIsPlain) {
    insert("A", 1);
    tree.setItemSwatch(at("A"), nullptr);
    const Pixels plain = shown("A");
    for (int y = 3; y < 14; ++y) {
        for (int x = 3; x < 16; ++x) EXPECT_EQ(plain.at(x, y), test::kWhite) << x << "," << y;
    }
    EXPECT_EQ(plain.at(2, 3), test::kBlack);
}

TEST_F(CheckTreePictures, APenSwatchShowsItsStroke) {
    auto* color = new AColorItem(*findClass(_T("ARGBColorItem")), _T("orange"), {1, 0.5F, 0, 0}, kOrange);
    auto* pen = new APenItem(APenItem::kStyleSolid, color, nullptr);
    insert("A", 1);
    tree.setItemSwatch(at("A"), pen);
    const Pixels sample = shown("A");
    EXPECT_EQ(sample.at(9, 8), kOrange);
    EXPECT_EQ(sample.at(9, 4), test::kWhite);
    pen->releaseReference();
    color->releaseReference();
}

TEST_F(CheckTreePictures, ABitmapResourceBecomesAPicture) {
    insert("A", 1);
    EXPECT_EQ(tree.setItemBitmap(at("A"), 2050), 1);
    EXPECT_EQ(image("A"), 6);
    EXPECT_EQ(shown("A").at(2, 3), test::kBlack);
    EXPECT_EQ(pixelsOf(pictures(), 7), whiteReplaced(pixelsOf(pictures(), 6), kFace));
}

TEST_F(CheckTreePictures, EveryClassIconBecomesAPictureThatDiffersFromItsDisabledForm) {
    const AConfig config;
    for (int i = 0; i < config.getDBClassTableSize(); ++i) {
        const AString name = config.getDBClassNameByIndex(i);
        const std::string path = name.toUtf8();
        insert(path.c_str(), static_cast<DWORD>(i + 1));
        EXPECT_EQ(tree.setItemBitmap(at(path), config.getClassIconID(name, 1)), 1) << path;
        const int picture = image(path);
        EXPECT_EQ(picture, 6 + 2 * i) << path;
        const Pixels enabled = pixelsOf(pictures(), picture);
        EXPECT_EQ(enabled.at(0, 0), test::kWhite) << path;
        EXPECT_EQ(pixelsOf(pictures(), picture + 1), whiteReplaced(enabled, kFace)) << path;
    }
}

TEST_F(CheckTreePictures, AMissingBitmapFallsBackToTheBuiltInPicture) {
    insert("A", 1);
    tree.setItemColor(at("A"), kOrange);
    EXPECT_EQ(tree.setItemBitmap(at("A"), 4711), 0);
    EXPECT_EQ(image("A"), 0);
    EXPECT_EQ(tree.setItemBitmap(at("A"), 0), 0);
    EXPECT_EQ(image("A"), 0);
    tree.EnableWindow(FALSE);
    EXPECT_EQ(tree.setItemBitmap(at("A"), 0), 0);
    EXPECT_EQ(image("A"), 1);
}

TEST_F(CheckTreePictures, GroupsLeaveTheirPictureToTheOwner) {
    insert("G/x", 1);
    const int before = ImageList_GetImageCount(pictures());
    tree.setItemColor(at("G"), kOrange);
    tree.setItemSwatch(at("G"), nullptr);
    EXPECT_EQ(tree.setItemBitmap(at("G"), 2050), 1);
    EXPECT_EQ(tree.setItemBitmap(at("G"), 4711), 1);
    tree.setItemImage(at("G"), 0);
    EXPECT_EQ(image("G"), 2);
    EXPECT_EQ(ImageList_GetImageCount(pictures()), before);
}

TEST_F(CheckTreePictures, AnItemsPictureIsTheEvenOneOfItsPair) {
    insert("A", 1);
    for (const auto& [given, taken] : {std::pair{5, 4}, {4, 4}, {1, 0}, {0, 0}, {3, 2}}) {
        tree.setItemImage(at("A"), given);
        EXPECT_EQ(image("A"), taken) << given;
    }
    tree.EnableWindow(FALSE);
    tree.setItemImage(at("A"), 4);
    EXPECT_EQ(image("A"), 5);
}

TEST_F(CheckTreePictures, FillingAnewForgetsThePicturesOfBefore) {
    insert("A", 1);
    tree.setItemColor(at("A"), kOrange);
    tree.initImageLists();
    EXPECT_EQ(tree.GetCount(), 0U);
    EXPECT_EQ(ImageList_GetImageCount(pictures()), 6);
    EXPECT_EQ(tree.findItemByText(_T("A"), nullptr), nullptr);
}

namespace {

// Brushes, each on an item of its own; the tree holds a reference on those that are not drawn yet.
class ManySwatches : public CheckTreePictures {
protected:
    static constexpr int kCount = 100;
    std::vector<std::unique_ptr<AGradientBrushItem, void (*)(AReferItem*)>> brushes;

    ManySwatches() {
        for (int i = 0; i < kCount; ++i)
            brushes.emplace_back(new AGradientBrushItem(_T("")),
                                 [](AReferItem* one) { one->releaseReference(); });
    }
    void fill() {
        for (std::size_t i = 0; i < brushes.size(); ++i)
            tree.setItemSwatch(insert(std::to_string(i).c_str()), brushes[i].get());
    }
    bool isDrawn(std::size_t place) { return brushes[place]->getReferenceCount() == 1; }
};

}  // namespace

TEST_F(ManySwatches, AreDrawnWhenTheyAreSeen) {
    fill();
    ::SendMessageW(tree, WM_PAINT, 0, 0);
    EXPECT_TRUE(isDrawn(0));
    EXPECT_FALSE(isDrawn(kCount - 1));
    tree.EnsureVisible(at("99"));
    ::SendMessageW(tree, WM_PAINT, 0, 0);
    EXPECT_TRUE(isDrawn(kCount - 1));
}

TEST_F(ManySwatches, AreAllThereForWhoeverAsksForTheList) {
    fill();
    EXPECT_EQ(ImageList_GetImageCount(pictures()), 6 + 2 * kCount);
    EXPECT_TRUE(isDrawn(kCount - 1));
    EXPECT_EQ(image("99"), 6 + 2 * (kCount - 1));
}

TEST_F(ManySwatches, AreAllThereWhenTheControlIsGivenAway) {
    fill();
    const HWND control = tree.UnsubclassWindow();
    EXPECT_TRUE(isDrawn(kCount - 1));
    tree.SubclassWindow(control);
    tree.initImageLists();
    fill();
    EXPECT_FALSE(isDrawn(kCount - 1));
    tree.Detach();
    EXPECT_TRUE(isDrawn(kCount - 1));
    tree.Attach(control);
}

TEST_F(ManySwatches, ThatWereNotDrawnAreForgottenWhenTheTreeIsFilledAnew) {
    fill();
    tree.initImageLists();
    EXPECT_TRUE(isDrawn(kCount - 1)) << "nothing is held any more";
    EXPECT_EQ(ImageList_GetImageCount(pictures()), 6);
    fill();
    EXPECT_EQ(image("0"), 6);
}

TEST_F(CheckTreePictures, FillingAnewTakesTheColorsOfTheSystemAnew) {
    constexpr COLORREF kOther = RGB(1, 2, 3);
    insert("A");
    EXPECT_EQ(tree.setItemBitmap(at("A"), IDB_BLANK), 1);
    EXPECT_EQ(shown("A").at(0, 0), test::kWhite);
    const test::SystemColor other{COLOR_WINDOW, kOther};
    tree.initImageLists();
    insert("A");
    EXPECT_EQ(tree.setItemBitmap(at("A"), IDB_BLANK), 1);
    EXPECT_EQ(shown("A").at(0, 0), kOther);
}

TEST_F(CheckTreePictures, OnAWindowThatIsNotWhiteDisabledFormsEqualTheEnabledOnes) {
    const test::SystemColor cream(COLOR_WINDOW, RGB(255, 250, 230));
    tree.initImageLists();
    insert("A", 1);
    tree.setItemColor(at("A"), kOrange);
    for (const int box : {1, 3, 5}) EXPECT_EQ(pixelsOf(boxes(), box), pixelsOf(boxes(), box + 1));
    for (const int picture : {2, 4, 6})
        EXPECT_EQ(pixelsOf(pictures(), picture), pixelsOf(pictures(), picture + 1));
    EXPECT_EQ(pixelsOf(boxes(), 1).at(0, 0), RGB(255, 250, 230));
    tree.EnableWindow(FALSE);
    EXPECT_EQ(stateImage("A"), 2U) << "only the index changes";
}

TEST_F(CheckTreePictures, OnlyPureWhiteOfTheColumnsAskedForIsReplaced) {
    CBitmap source;
    test::paint(source, "wrww\nwwbw\n");
    CBitmap target;
    tree.makeDisabledBitmap(source, target, 1, 3);
    const Pixels made = pixelsOf(target);
    EXPECT_EQ(made.at(0, 0), test::kWhite);
    EXPECT_EQ(made.at(1, 0), test::kRed);
    EXPECT_EQ(made.at(2, 0), kFace);
    EXPECT_EQ(made.at(3, 0), test::kWhite);
    EXPECT_EQ(made.at(1, 1), kFace);
    EXPECT_EQ(made.at(2, 1), test::kBlue);
    tree.makeDisabledBitmap(source, target, 0, -1);
    EXPECT_EQ(pixelsOf(target), whiteReplaced(pixelsOf(source), kFace));
}
