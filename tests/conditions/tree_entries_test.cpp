// Conditions as entries of a check tree: places, data, expansion, pictures.
#include "checktree/fixture.h"
#include "conditions/container_conditions.h"
#include "conditions/fill_condition.h"
#include "conditions/object_condition.h"
#include "conditions/refer_condition.h"
#include "conditions/stroke_condition.h"
#include "support.h"
#include "support/drawing.h"
#include "support/pixels.h"

using test::CheckTree;
using test::cloneOf;
using test::makeColor;
using test::makeGradient;
using test::makePen;
using test::makeSolid;
using test::ofClasses;
using test::Pixels;
using test::pixelsOf;

namespace {

constexpr COLORREF kOrange = RGB(255, 128, 0);
constexpr UINT kSwatchFrame = 2050;
constexpr UINT kBlank = 2054;
constexpr int kBuiltInPictures = 6;

// A check tree within a running application, on colours that are told apart.
class TreeEntry : public CheckTree {
protected:
    test::SystemColor window{COLOR_WINDOW, RGB(250, 250, 240)};
    test::SystemColor face{COLOR_3DFACE, RGB(200, 210, 220)};
    AApplication application;
    test::Held<AColorItem> orange = makeColor(_T("orange"), kOrange);
    test::Held<ASolidBrushItem> orangeBrush = makeSolid(orange.get());
    test::Held<AGradientBrushItem> gradient = makeGradient(_T("g"));

    UINT iconOf(const WCHAR* className) { return application.getConfig().getClassIconID(className, 1); }

    int imageOf(HTREEITEM item) {
        int image = -99;
        int selected = -98;
        tree.GetItemImage(item, image, selected);
        EXPECT_EQ(image, selected);
        return image;
    }
    Pixels shownBy(HTREEITEM item) { return pixelsOf(tree.GetImageList(TVSIL_NORMAL), imageOf(item)); }
    int pictures() { return ImageList_GetImageCount(tree.GetImageList(TVSIL_NORMAL)); }
    bool isExpanded(HTREEITEM item) { return (tree.GetItemState(item, TVIS_EXPANDED) & TVIS_EXPANDED) != 0; }

    // What an item shows once one of the tree's own operations has given it its picture.
    template <class Give>
    Pixels shownAfter(Give give) {
        HTREEITEM item = insert("for comparison");
        give(item);
        return shownBy(item);
    }
    Pixels iconShown(const WCHAR* className) {
        return shownAfter([&](HTREEITEM item) { EXPECT_EQ(tree.setItemBitmap(item, iconOf(className)), 1); });
    }
    Pixels bitmapShown(UINT id) {
        return shownAfter([&](HTREEITEM item) { EXPECT_EQ(tree.setItemBitmap(item, id), 1); });
    }
    Pixels colorShown(COLORREF color) {
        return shownAfter([&](HTREEITEM item) { tree.setItemColor(item, color); });
    }
    Pixels swatchShown(const AReferItem* brush) {
        return shownAfter([&](HTREEITEM item) { tree.setItemSwatch(item, brush); });
    }
};

// One of each kind, with the path given; those on paint hold an item or not.
std::vector<std::unique_ptr<ACondition>> oneOfEachKind(const WCHAR* path, AColorItem* color,
                                                       ABrushItem* brush) {
    std::vector<std::unique_ptr<ACondition>> all;
    all.push_back(std::make_unique<ACondition>(path, _T("AOval")));
    all.push_back(std::make_unique<AObjectCondition>(path, _T("AOval")));
    all.push_back(std::make_unique<AEffectCondition>(path, _T("AShadow")));
    all.push_back(std::make_unique<ALayerCondition>(path, _T("ALayer")));
    all.push_back(std::make_unique<AFillCondition>(path, brush));
    all.push_back(std::make_unique<AStrokeCondition>(path, _T("APenItem"), color));
    all.push_back(std::make_unique<AReferCondition>(path, color));
    all.push_back(std::make_unique<AReferCondition>(path, brush));
    return all;
}

// A tree that takes no items.
class RefusingTree : public test::RecordedTree {
public:
    ~RefusingTree() override { DestroyWindow(); }

protected:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override {
        return message == TVM_INSERTITEMW ? 0 : RecordedTree::WindowProc(message, wParam, lParam);
    }
};

}  // namespace

TEST_F(TreeEntry, EveryKindInsertsItsItemAtItsPathWithItsSerial) {
    int number = 0;
    for (const auto& condition : oneOfEachKind(_T("Group/Entry"), orange.get(), orangeBrush.get())) {
        const std::string path = "Group/Entry " + std::to_string(++number);
        condition->path = AItemPath(AString::fromUtf8(path));
        HTREEITEM item = condition->addToTree(tree);
        ASSERT_NE(item, nullptr);
        EXPECT_EQ(item, at(path));
        EXPECT_EQ(tree.getItemData(item), static_cast<DWORD>(condition->getSerial()));
        EXPECT_EQ(tree.findItemByData(static_cast<DWORD>(condition->getSerial())), item);
    }
    EXPECT_EQ(tree.getItemData(at("Group")), 0u);
}

TEST_F(TreeEntry, AClonesItemHasTheDataOfItsSource) {
    for (const auto& condition : oneOfEachKind(_T("Entry"), orange.get(), orangeBrush.get())) {
        condition->addToTree(tree);
        EXPECT_EQ(cloneOf(*condition)->addToTree(tree), at("Entry")) << "copy and source share an item";
        EXPECT_EQ(tree.getItemData(at("Entry")), static_cast<DWORD>(condition->getSerial()));
    }
}

TEST_F(TreeEntry, ATreeThatTakesNoItemIsAskedForNothingElse) {
    RefusingTree refusing;
    ASSERT_TRUE(refusing.Create(WS_CHILD, CRect(0, 0, 10, 10), &owner, 1060));
    refusing.initImageLists();
    refusing.recording = true;
    for (const auto& condition : oneOfEachKind(_T("Group/Entry"), orange.get(), orangeBrush.get()))
        EXPECT_EQ(condition->addToTree(refusing), nullptr);
    EXPECT_EQ(refusing.messages, std::vector<std::string>{});
    EXPECT_EQ(ImageList_GetImageCount(refusing.GetImageList(TVSIL_NORMAL)), kBuiltInPictures);
}

TEST_F(TreeEntry, TheItemIsToldToExpandOrCollapseRightAfterItsInsertion) {
    for (const DWORD flags : {DWORD{0}, kTreeItemExpanded, DWORD{1}, DWORD{3}}) {
        for (const auto& condition : oneOfEachKind(_T("Entry"), orange.get(), orangeBrush.get())) {
            tree.DeleteAllItems();
            tree.messages.clear();
            tree.recording = true;
            condition->treeFlags = flags;
            condition->addToTree(tree);
            tree.recording = false;
            ASSERT_GE(tree.messages.size(), 2u);
            EXPECT_EQ(tree.messages[0].substr(0, 10), "INSERTITEM");
            EXPECT_EQ(tree.messages[1], (flags & 2) != 0 ? "EXPAND 2" : "EXPAND 1");
        }
    }
}

TEST_F(TreeEntry, AnEntryThatHasChildrenAlreadyIsExpandedOrCollapsedForAll) {
    ACondition condition(_T("Group"), nullptr);
    insert("Group/child", 1);
    condition.treeFlags = kTreeItemExpanded;
    condition.addToTree(tree);
    EXPECT_TRUE(isExpanded(at("Group")));
    condition.treeFlags = 0;
    condition.addToTree(tree);
    EXPECT_FALSE(isExpanded(at("Group")));
}

TEST_F(TreeEntry, NamesThatAreEmptyOrHoldTheSeparatorMakeTheSegmentsThatTheyHold) {
    const ACondition unnamed(_T("RGB Color/"), nullptr);
    const ACondition split(_T("RGB Color/sea/green"), nullptr);
    const ACondition pathless(_T(""), nullptr);
    for (const ACondition* condition : {&unnamed, &split, &pathless})
        ASSERT_NE(condition->addToTree(tree), nullptr);
    const auto shown = [&](const ACondition& condition) {
        return text(tree.findItemByData(static_cast<DWORD>(condition.getSerial())));
    };
    EXPECT_EQ(shown(unnamed), "");
    EXPECT_EQ(shown(split), "green");
    EXPECT_EQ(shown(pathless), "");
    EXPECT_EQ(text(tree.GetParentItem(at("RGB Color/sea/green"))), "sea");
}

TEST_F(TreeEntry, ItsPictureIsTheIconOfItsClass) {
    const ACondition condition(_T("Oval"), _T("AOval"));
    HTREEITEM item = condition.addToTree(tree);
    EXPECT_EQ(imageOf(item), kBuiltInPictures);
    EXPECT_EQ(pictures(), kBuiltInPictures + 2);
    EXPECT_EQ(shownBy(item), iconShown(_T("AOval")));
}

TEST_F(TreeEntry, ItsClassesAreTriedInOrderUntilOneHasAnIcon) {
    tree.recording = true;
    HTREEITEM item = ofClasses({"ANoSuchClass", "AOval", "ABitmap"})->addToTree(tree);
    tree.recording = false;
    const std::vector<std::string> expected{"SETITEM image 0 selected 0",   // no such class
                                            "SETITEM image 6 selected 6"};  // the third is not asked
    ASSERT_GE(tree.messages.size(), 2u);
    EXPECT_EQ(std::vector<std::string>(tree.messages.begin() + 2, tree.messages.end()), expected);
    EXPECT_EQ(shownBy(item), iconShown(_T("AOval")));
}

TEST_F(TreeEntry, AnEntryWithoutClassesKeepsTheTreesDefaultPicture) {
    EXPECT_EQ(imageOf(ACondition(_T("a"), nullptr).addToTree(tree)), 0);
    EXPECT_EQ(imageOf(ACondition(_T("b"), _T("ANoSuchClass")).addToTree(tree)), 0);
    EXPECT_EQ(imageOf(ACondition(_T("c"), _T("")).addToTree(tree)), 0);
    EXPECT_EQ(pictures(), kBuiltInPictures);
}

TEST_F(TreeEntry, AnObjectsEntryShowsWhatThePlainOneShows) {
    EXPECT_EQ(shownBy(AObjectCondition(_T("Oval"), _T("AOval")).addToTree(tree)), iconShown(_T("AOval")));
    EXPECT_EQ(shownBy(AEffectCondition(_T("Shadow"), _T("AShadow")).addToTree(tree)),
              iconShown(_T("AShadow")));
    EXPECT_EQ(shownBy(ALayerCondition(_T("Layer"), _T("ALayer")).addToTree(tree)), iconShown(_T("ALayer")));
}

TEST_F(TreeEntry, AFillShowsASampleOfItsBrush) {
    HTREEITEM item = AFillCondition(_T("orange"), orangeBrush.get()).addToTree(tree);
    EXPECT_EQ(shownBy(item), swatchShown(orangeBrush.get()));
    EXPECT_EQ(shownBy(item).at(8, 8), kOrange);
    EXPECT_EQ(shownBy(AFillCondition(_T("g"), gradient.get()).addToTree(tree)), swatchShown(gradient.get()));
    EXPECT_NE(swatchShown(gradient.get()), swatchShown(orangeBrush.get()));
}

TEST_F(TreeEntry, AFillOfAClassShowsThePictureOfColors) {
    AFillCondition condition(_T("Solid"), nullptr);
    condition.reset(_T("Solid"), _T("ARGBColorItem"));
    EXPECT_EQ(imageOf(condition.addToTree(tree)), 2);
}

TEST_F(TreeEntry, NoFillShowsTheEmptyFrame) {
    const Pixels shown = shownBy(AFillCondition(_T("No fill"), nullptr).addToTree(tree));
    EXPECT_EQ(shown, bitmapShown(kSwatchFrame));
    EXPECT_EQ(shown.at(2, 3), test::kBlack);
    EXPECT_EQ(shown.at(8, 8), RGB(250, 250, 240));
}

TEST_F(TreeEntry, AStrokeShowsItsColor) {
    HTREEITEM item = AStrokeCondition(_T("Pen"), _T("APenItem"), orange.get()).addToTree(tree);
    EXPECT_EQ(shownBy(item), colorShown(kOrange));
    EXPECT_EQ(shownBy(item).at(8, 8), kOrange);
}

TEST_F(TreeEntry, AStrokeOfAClassShowsThePictureOfColors) {
    EXPECT_EQ(imageOf(AStrokeCondition(_T("Pen"), _T("APenItem"), nullptr).addToTree(tree)), 2);
}

TEST_F(TreeEntry, NoStrokeShowsTheBlankPicture) {
    const Pixels shown = shownBy(AStrokeCondition(_T("No stroke"), nullptr, nullptr).addToTree(tree));
    EXPECT_EQ(shown, bitmapShown(kBlank));
    for (const COLORREF color : shown.colors) EXPECT_EQ(color, RGB(250, 250, 240));
}

TEST_F(TreeEntry, AReferenceShowsItsItem) {
    EXPECT_EQ(shownBy(AReferCondition(_T("orange"), orange.get()).addToTree(tree)), colorShown(kOrange));
    EXPECT_EQ(shownBy(AReferCondition(_T("g"), gradient.get()).addToTree(tree)), swatchShown(gradient.get()));
    EXPECT_EQ(shownBy(AReferCondition(_T("solid"), orangeBrush.get()).addToTree(tree)),
              swatchShown(orangeBrush.get()));
    EXPECT_EQ(imageOf(AReferCondition(_T("RGB Color"), _T("ARGBColorItem")).addToTree(tree)), 2);
}

TEST_F(TreeEntry, AReferenceToAnotherItemShowsItsClassIcon) {
    const auto pen = makePen(orange.get());
    EXPECT_EQ(shownBy(AReferCondition(_T("pen"), pen.get()).addToTree(tree)), iconShown(_T("APenItem")));
}

TEST_F(TreeEntry, TheClonesOfFillAndStrokeShowClassIconsAlone) {
    const AFillCondition fill(_T("fill"), orangeBrush.get());
    const AStrokeCondition stroke(_T("stroke"), _T("APenItem"), orange.get());
    EXPECT_EQ(shownBy(cloneOf(fill)->addToTree(tree)), iconShown(_T("ASolidBrushItem")));
    EXPECT_EQ(shownBy(cloneOf(stroke)->addToTree(tree)), iconShown(_T("APenItem")));
    const AFillCondition noFill(_T("No fill"), nullptr);
    EXPECT_EQ(imageOf(cloneOf(noFill)->addToTree(tree)), 0);
}

TEST_F(TreeEntry, TheCloneOfAReferenceShowsItsItem) {
    const AReferCondition source(_T("orange"), orange.get());
    EXPECT_EQ(shownBy(cloneOf(source)->addToTree(tree)), colorShown(kOrange));
}

TEST_F(TreeEntry, InADisabledTreePicturesAreInTheirDisabledForm) {
    tree.EnableWindow(FALSE);
    EXPECT_EQ(imageOf(AStrokeCondition(_T("Pen"), _T("APenItem"), nullptr).addToTree(tree)), 3);
    EXPECT_EQ(imageOf(AReferCondition(_T("RGB Color"), _T("ARGBColorItem")).addToTree(tree)), 3);
    EXPECT_EQ(imageOf(ACondition(_T("a"), nullptr).addToTree(tree)), 1);
    HTREEITEM item = AReferCondition(_T("orange"), orange.get()).addToTree(tree);
    EXPECT_EQ(imageOf(item), pictures() - 1) << "the colour's picture came last, its disabled form behind it";
    EXPECT_EQ(imageOf(item) % 2, 1);
    EXPECT_EQ(shownBy(item).at(8, 8), kOrange);
}

TEST_F(TreeEntry, AnEntryWithChildrenShowsAFolderWhateverItsKind) {
    for (const auto& condition : oneOfEachKind(_T("Group"), orange.get(), orangeBrush.get())) {
        tree.DeleteAllItems();
        insert("Group/child", 1);
        condition->treeFlags = kTreeItemExpanded;
        HTREEITEM item = condition->addToTree(tree);
        EXPECT_EQ(imageOf(item), 4) << "as an expanded group";
        condition->treeFlags = 0;
        condition->addToTree(tree);
        EXPECT_EQ(imageOf(item), 2) << "as a collapsed one";
    }
    EXPECT_EQ(pictures(), kBuiltInPictures) << "no picture was made";
}

TEST_F(CheckTree, WithoutAnApplicationAnEntryKeepsTheDefaultPicture) {
    ASSERT_EQ(AApplication::GetApplication(), nullptr);
    ASSERT_NE(ACondition(_T("Oval"), _T("AOval")).addToTree(tree), nullptr);
    EXPECT_EQ(image("Oval"), 0);
}
