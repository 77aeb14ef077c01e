// What the tool gathers of a document and how its pages are filled.
#include <functional>

#include "conditions/class_tables.h"
#include "conditions/container_conditions.h"
#include "conditions/fill_condition.h"
#include "conditions/object_condition.h"
#include "conditions/stroke_condition.h"
#include "plain_rules.h"
#include "scene.h"
#include "select/page_filler.h"
#include "select/select_by_attr_sheet.h"
#include "select/select_by_attr_tool.h"
#include "select/select_page.h"

using test::Names;
using test::RandomScene;
using test::Scene;

namespace {

struct Filled {
    ASelectByAttrTool tool;
    ASelectByAttrSheet sheet{&tool, IDS_SELECT_BY_ATTRIBUTES_CAPTION, nullptr, 0};
    std::uint64_t start = ACondition(AString(), nullptr).getSerial();

    explicit Filled(Scene& scene) {
        tool.prepareSelectionData(scene.view);
        tool.createPages(sheet);
        tool.fillPages(sheet);
    }

    ASelectPage& page(const WCHAR* category) { return *sheet.findPage(category); }
    const ACondition* entry(const WCHAR* category, const std::string& path) {
        for (ARoot* one : page(category).getConditions()) {
            const auto* condition = static_cast<ACondition*>(one);
            if (condition->path.toUtf8() == path) return condition;
        }
        return nullptr;
    }
    // "10": used by the document, not by the selection; "-": there is no such entry.
    std::string flags(const WCHAR* category, const std::string& path) {
        const ACondition* one = entry(category, path);
        return one ? std::to_string(one->inDocument) + std::to_string(one->inSelection) : "-";
    }
    Names categories() {
        Names names;
        for (int i = 0; i < sheet.getSelectPageCount(); ++i)
            names.push_back(sheet.getSelectPage(i).getTitle().toUtf8());
        return names;
    }
};

template <class List>
Names namesIn(const List& list) {
    Names names;
    for (const ARoot* entry : list)
        names.push_back(std::string(static_cast<const AObject*>(entry)->getNameUtf8()));
    return names;
}

std::string lineOf(const ACondition& condition, std::uint64_t start) {
    // A fill without a name is called by its serial.
    std::string path = condition.path.toUtf8();
    if (path == "Gradient/brush" + std::to_string(condition.getSerial())) path = "Gradient/brush";
    std::string line = path + " " + std::to_string(condition.getSerial() - start) + " " +
                       std::to_string(condition.inDocument) + std::to_string(condition.inSelection) + " " +
                       typeid(condition).name();
    for (const std::string& name : test::namesOf(condition)) line += " " + name;
    return line;
}

}  // namespace

TEST(Gathering, CandidatesAreWhatIsOnEditableLayersBreadthFirst) {
    Scene scene;
    ALayer* first = scene.layer();
    AParent* group = scene.addParent(first, _T("AGroup"), "group");
    scene.add(group, _T("AOval"), "inner");
    scene.add(first, _T("AText"), "text");
    ALayer* locked = scene.layer();
    locked->setLocked(true);
    scene.add(locked, _T("AOval"), "on locked");
    scene.add(scene.layer(_T("AMasterLayer"), true), _T("AOval"), "master");
    Filled run(scene);
    EXPECT_EQ(namesIn(run.tool.getCandidateObjects()), (Names{"group", "text", "master", "inner"}));
    EXPECT_EQ(run.tool.getLayerPool().GetCount(), 3);
}

TEST(Gathering, LayersThatAreNotEditableAreOfferedAllTheSame) {
    Scene scene;
    ALayer* guides = scene.layer(_T("AGuideLayer"));
    guides->setLocked(true);
    scene.add(guides, _T("AOval"));
    Filled run(scene);
    EXPECT_EQ(run.tool.getCandidateObjects().GetSize(), 0);
    EXPECT_EQ(run.flags(_T("Layer"), "Guides"), "10");
    EXPECT_EQ(run.flags(_T("Layer"), "Drawing"), "00");
    EXPECT_EQ(run.flags(_T("Object"), "Oval"), "00");
}

TEST(Gathering, HiddenAndLockedObjectsAreNeitherTakenNorEntered) {
    Scene scene;
    ALayer* layer = scene.layer();
    AParent* group = scene.addParent(layer, _T("AGroup"), "locked group");
    group->setObjectFlags(kObjectLocked, true);
    scene.add(group, _T("AOval"), "inner");
    scene.add(layer, _T("AOval"), "hidden")->setObjectFlags(kObjectHidden, true);
    AParent* composite = scene.addParent(layer, _T("AComposite"), "composite");
    scene.add(composite, _T("AOval"), "closed in");
    AParent* shadow = scene.addParent(layer, _T("AShadow"), "shadow");
    scene.add(shadow, _T("AOval"), "shaded");
    Filled run(scene);
    EXPECT_EQ(namesIn(run.tool.getCandidateObjects()), (Names{"composite", "shadow", "shaded"}));
}

TEST(Gathering, SelectedObjectsAreTheSelectionWithWhatIsInItNoneTwice) {
    Scene scene;
    ALayer* layer = scene.layer();
    AParent* outer = scene.addParent(layer, _T("AGroup"), "outer");
    AParent* inner = scene.addParent(outer, _T("AGroup"), "inner");
    AObject* oval = scene.add(inner, _T("AOval"), "oval");
    AObject* locked = scene.add(outer, _T("AOval"), "locked");
    locked->setObjectFlags(kObjectLocked, true);
    scene.add(layer, _T("AOval"), "other");
    scene.select({oval, outer});
    Filled run(scene);
    EXPECT_EQ(namesIn(run.tool.getSelectedObjects()), (Names{"oval", "outer", "inner", "locked"}));
    EXPECT_TRUE(run.tool.isSelectedObject(*oval));
    EXPECT_TRUE(run.tool.isSelectedObject(*locked));
    EXPECT_FALSE(run.tool.isSelectedObject(*scene.document.findObject("other")));
}

TEST(Gathering, ASelectedObjectOnALockedLayerCountsAsSelected) {
    Scene scene;
    ALayer* layer = scene.layer();
    layer->setLocked(true);
    AObject* oval = scene.add(layer, _T("AOval"));
    scene.select({oval});
    Filled run(scene);
    EXPECT_TRUE(run.tool.isSelectedObject(*oval));
    EXPECT_TRUE(run.tool.isSelectedLayer(*layer));
    EXPECT_EQ(run.flags(_T("Layer"), "Drawing"), "11");
}

TEST(Gathering, ALayerThatIsFoundAsTheLastOfTheSelectedOnesIsAppendedOnceMore) {
    Scene scene;
    ALayer* a = scene.layer();
    ALayer* b = scene.layer();
    std::vector<AObject*> ofA, ofB;
    for (int i = 0; i < 3; ++i) ofA.push_back(scene.add(a, _T("AOval")));
    for (int i = 0; i < 3; ++i) ofB.push_back(scene.add(b, _T("AOval")));
    scene.select({ofA[0], ofB[0], ofA[1], ofB[1], ofB[2], ofA[2]});
    Filled run(scene);
    const std::vector<ARoot*> layers(run.tool.getSelectedLayers().begin(),
                                     run.tool.getSelectedLayers().end());
    EXPECT_EQ(layers, (std::vector<ARoot*>{a, b, b}));
    scene.select({ofA[0], ofA[1], ofA[2]});
    run.tool.prepareSelectionData(scene.view);
    EXPECT_EQ(run.tool.getSelectedLayers().GetCount(), 2);
}

TEST(Gathering, NothingIsKept) {
    Scene scene;
    AObject* oval = scene.add(scene.layer(), _T("AOval"));
    scene.select({oval});
    Filled run(scene);
    run.tool.releaseSelectionData();
    EXPECT_EQ(run.tool.getCandidateObjects().GetSize() + run.tool.getSelectedObjects().GetSize(), 0);
    EXPECT_EQ(run.tool.getLayerPool().GetCount() + run.tool.getSelectedLayers().GetCount(), 0);
    EXPECT_FALSE(run.tool.isSelectedObject(*oval));
}

TEST(Gathering, StartsAnewEachTime) {
    Scene scene;
    ALayer* layer = scene.layer();
    AObject* oval = scene.add(layer, _T("AOval"));
    scene.add(scene.layer(), _T("AOval"));
    scene.select({oval});
    Filled run(scene);
    const std::size_t runs = run.tool.getCandidateRuns().size();
    scene.select({});
    run.tool.prepareSelectionData(scene.view);
    EXPECT_EQ(run.tool.getCandidateRuns().size(), runs);
    EXPECT_FALSE(run.tool.isSelectedLayer(*layer));
}

TEST(Gathering, ClassesAreListedAnewEachTime) {
    AStringArray names;
    ASelectByAttrTool::getSelectableClassNames(names);
    const int count = names.GetSize();
    ASelectByAttrTool::getSelectableClassNames(names);
    EXPECT_EQ(names.GetSize(), count);
}

TEST(Gathering, WhatUsersAreNotShownIsEnteredButNotTaken) {
    const AClassInfo helper{_T("AHelper"), 0, 0, AClassKind::group};
    Scene scene;
    AObject* inner = scene.document.createObject(helper, "helper");
    scene.layer()->appendChild(inner);
    AObject* oval = scene.add(inner->asParent(), _T("AOval"), "oval");
    scene.select({inner});
    Filled run(scene);
    EXPECT_EQ(namesIn(run.tool.getCandidateObjects()), Names{"oval"});
    EXPECT_EQ(namesIn(run.tool.getSelectedObjects()), Names{"oval"});
    EXPECT_TRUE(run.tool.isSelectedObject(*oval));
}

TEST(Pages, ThereIsOneForEachCategoryOfTheClassesThatUsersSee) {
    Scene scene;
    Filled run(scene);
    EXPECT_EQ(run.categories(), (Names{"Object", "Dimension", "Effect", "Fill", "Stroke", "Layer"}));
    run.sheet.addPages();
    EXPECT_EQ(run.categories(), (Names{"Object", "Dimension", "Fill", "Stroke", "Effect", "Layer"}));
}

TEST(Pages, CategoriesAreOrderedWithoutRegardToCaseOthersStayBehind) {
    Scene scene;
    ASelectByAttrTool tool;
    ASelectByAttrSheet sheet(&tool, IDS_SELECT_BY_ATTRIBUTES_CAPTION, nullptr, 0);
    for (const char* name : {"Zebra", "COLOR", "layer", "Object", "Alpha", "fill", "object"})
        sheet.createPage(AString::fromUtf8(name));
    sheet.addPages();
    Names order;
    for (int i = 0; i < sheet.getSelectPageCount(); ++i)
        order.push_back(sheet.getSelectPage(i).getTitle().toUtf8());
    EXPECT_EQ(order, (Names{"object", "Object", "fill", "layer", "COLOR", "Zebra", "Alpha"}));
    EXPECT_EQ(sheet.findPage(_T("Object")), &sheet.getSelectPage(1));
    EXPECT_EQ(sheet.findPage(_T("OBJECT")), nullptr);
    EXPECT_THROW(sheet.getSelectPage(7), CInvalidArgException);
    EXPECT_THROW(sheet.getSelectPage(-1), CInvalidArgException);
}

TEST(Pages, EntriesStandThereWhateverTheDocumentHolds) {
    Scene scene;
    Filled run(scene);
    for (const char* path : {"Rectangle", "Bitmap", "Bitmap/RGB Bitmap", "Bitmap/LAB Bitmap"})
        EXPECT_EQ(run.flags(_T("Object"), path), "00") << path;
    for (const char* path :
         {"Gradient", "Pattern", "Solid", "No fill", "Solid/RGB Color", "Solid/Spot Color"})
        EXPECT_EQ(run.flags(_T("Fill"), path), "00") << path;
    EXPECT_EQ(run.flags(_T("Stroke"), "Pen"), "00");
    EXPECT_EQ(run.flags(_T("Stroke"), "No stroke"), "00");
    EXPECT_EQ(run.flags(_T("Stroke"), "No fill"), "-");
    EXPECT_EQ(run.flags(_T("Object"), "Registration Mark/RGB Color"), "-");
}

TEST(Filling, AnObjectMarksItsClassItsFillAndItsStroke) {
    Scene scene;
    ALayer* layer = scene.layer();
    AObject* oval = scene.filled(layer, _T("AOval"), 0xff0000);
    oval->setPen(scene.document.getPaint().rgbPen(0x0000ff));
    Filled run(scene);
    EXPECT_EQ(run.flags(_T("Object"), "Oval"), "10");
    EXPECT_EQ(run.flags(_T("Object"), "Rectangle"), "00");
    EXPECT_EQ(run.flags(_T("Fill"), "Solid"), "10");
    EXPECT_EQ(run.flags(_T("Fill"), "Solid/RGB Color"), "00");
    EXPECT_EQ(run.flags(_T("Fill"), "Solid/RGB Color/red"), "10");
    EXPECT_EQ(run.flags(_T("Fill"), "No fill"), "00");
    EXPECT_EQ(run.flags(_T("Stroke"), "Pen"), "10");
    EXPECT_EQ(run.flags(_T("Stroke"), "Pen/RGB Color/blue"), "10");
    EXPECT_EQ(run.flags(_T("Stroke"), "No stroke"), "00");
    EXPECT_EQ(run.flags(_T("Layer"), "Drawing"), "10");
}

TEST(Filling, ASelectedObjectMarksThemAsSelected) {
    Scene scene;
    ALayer* layer = scene.layer();
    AObject* oval = scene.filled(layer, _T("AOval"), 0xff0000);
    scene.filled(layer, _T("AText"), 0xff0000);
    scene.filled(layer, _T("AText"), 0x0000ff);
    scene.select({oval});
    Filled run(scene);
    EXPECT_EQ(run.flags(_T("Object"), "Oval"), "11");
    EXPECT_EQ(run.flags(_T("Object"), "Text"), "10");
    EXPECT_EQ(run.flags(_T("Fill"), "Solid/RGB Color/red"), "11");
    EXPECT_EQ(run.flags(_T("Fill"), "Solid/RGB Color/blue"), "10");
    EXPECT_EQ(run.flags(_T("Stroke"), "No stroke"), "11");
    EXPECT_EQ(run.flags(_T("Layer"), "Drawing"), "11");
}

TEST(Filling, ASelectedPenMarksTheColorsOfAllPensBeforeIt) {
    Scene scene;
    ALayer* layer = scene.layer();
    std::vector<AObject*> ovals;
    for (const std::uint32_t color : {0xff0000u, 0x0000ffu, 0x00ff00u}) {
        ovals.push_back(scene.add(layer, _T("AOval")));
        ovals.back()->setPen(scene.document.getPaint().rgbPen(color));
    }
    scene.select({ovals[1]});
    Filled run(scene);
    EXPECT_EQ(run.flags(_T("Stroke"), "Pen/RGB Color/red"), "11");
    EXPECT_EQ(run.flags(_T("Stroke"), "Pen/RGB Color/blue"), "11");
    EXPECT_EQ(run.flags(_T("Stroke"), "Pen/RGB Color/lime"), "10");
}

// However often the pen was offered before.
TEST(Filling, ASelectedPenMarksAlsoTheColorsAddedSinceItWasOffered) {
    Scene scene;
    ALayer* layer = scene.layer();
    std::vector<AObject*> selected;
    for (const std::uint32_t color : {0x0000ffu, 0x0000ffu, 0x0000ffu, 0x00ff00u, 0x0000ffu}) {
        AObject* oval = scene.add(layer, _T("AOval"));
        oval->setPen(scene.document.getPaint().rgbPen(color));
        if (color == 0x0000ff) selected.push_back(oval);
    }
    scene.select(selected);
    Filled run(scene);
    EXPECT_EQ(run.flags(_T("Stroke"), "Pen/RGB Color/lime"), "11");
}

namespace {

class SometimesClosed : public AEffect {
public:
    explicit SometimesClosed(bool isClosed) : AEffect(*findClass(_T("AShadow"))), m_isClosed(isClosed) {}
    int hasOption(int option) const override { return m_isClosed ? option & kOptionClosed : 0; }

private:
    bool m_isClosed;
};

}  // namespace

TEST(NameMap, FindsWhatItHoldsHoweverManyItHolds) {
    std::vector<AString> names;
    for (int i = 0; i < 1000; ++i) names.push_back(AString::fromUtf8("color " + std::to_string(i)));
    NameMap<int> map;
    for (int i = 0; i < 1000; ++i) map[names[static_cast<std::size_t>(i)].view()] = i;
    for (int i = 0; i < 1000; ++i) EXPECT_EQ(map[names[static_cast<std::size_t>(i)].view()], i);
}

// An entry follows the kind of what was offered last.
TEST(Filling, AClosedEffectIsAnObjectOfItsClass) {
    SometimesClosed open(false), closed(true);
    EXPECT_EQ(kindOf(&closed), ItemKind::object);
    EXPECT_EQ(kindOf(&open), ItemKind::effect);
    test::AnyPage page;
    page.addCondition(new ACondition(_T("Shadow"), _T("AShadow")));
    PageFiller filler({&page});
    for (const bool isClosed : {false, false, false, true, false, true, true, true, false}) {
        filler.offerObject(isClosed ? closed : open, false);
        EXPECT_EQ(dynamic_cast<AObjectCondition*>(page.getCondition(0)) != nullptr, isClosed);
    }
}

// The pages of the sheet do none of this between two offers; whoever fills others may.
TEST(Filling, EntriesThatThePageGetsOrMovesMeanwhileAreAsked) {
    test::AnyPage page;
    const auto add = [&](const WCHAR* path, const WCHAR* className) {
        page.addCondition(new ACondition(path, className));
    };
    const auto marked = [&](const WCHAR* path) { return page.findCondition(path)->inDocument != 0; };
    add(_T("oval"), _T("AOval"));
    PageEntries entries(page);
    AObject oval(*findClass(_T("AOval"))), fan(*findClass(_T("AFan"))), text(*findClass(_T("AText")));
    EXPECT_TRUE(entries.take(&oval, ItemKind::object, false));
    EXPECT_FALSE(entries.take(&fan, ItemKind::object, false));
    add(_T("fan"), _T("AFan"));
    EXPECT_TRUE(entries.take(&fan, ItemKind::object, false));
    EXPECT_TRUE(marked(_T("fan")));
    auto both = test::ofClasses({"AOval", "AText"});
    both->path = AItemPath(_T("oval"));
    page.addCondition(both.release());
    EXPECT_TRUE(entries.take(&text, ItemKind::object, false)) << "a merge gave it the class";
    add(_T("rectangle"), _T("ARectangle"));
    page.sortConditions();
    AObject rectangle(*findClass(_T("ARectangle")));
    EXPECT_TRUE(entries.take(&rectangle, ItemKind::object, false));
    EXPECT_TRUE(marked(_T("rectangle")));
}

TEST(Filling, EntriesThatMovedAreAskedWhereTheyAreNow) {
    test::AnyPage page;
    page.addCondition(new ACondition(_T("oval"), _T("AOval")));
    page.addCondition(new ACondition(_T("rectangle"), _T("ARectangle")));
    PageEntries entries(page);
    AObject oval(*findClass(_T("AOval")));
    EXPECT_TRUE(entries.take(&oval, ItemKind::object, false));
    page.sortConditions();
    EXPECT_EQ(page.getCondition(1)->path.toUtf8(), "oval");
    EXPECT_TRUE(entries.take(&oval, ItemKind::object, true));
    EXPECT_TRUE(page.findCondition(_T("oval"))->inSelection);
    EXPECT_FALSE(page.findCondition(_T("rectangle"))->inDocument);
}

namespace {

// A page that gets entries while items are taken into it.
struct GrowingPage {
    test::AnyPage page;
    Unsettled unsettled;
    PageEntries entries{page, &unsettled};

    void add(ACondition* entry, bool isInDocument = false) {
        entry->path = AItemPath(AString::fromUtf8(std::to_string(page.getConditions().GetSize())));
        entry->inDocument = isInDocument;
        page.addCondition(entry);
        entries.catchUp();
    }
    // How often items of the kind became unsettled: those that are not selected, those that are.
    template <class Act>
    std::string news(ItemKind kind, Act act) {
        const std::uint32_t before[] = {unsettled.count(kind, false), unsettled.count(kind, true)};
        act();
        return std::to_string(unsettled.count(kind, false) - before[0]) +
               std::to_string(unsettled.count(kind, true) - before[1]);
    }
};

}  // namespace

TEST(Filling, AnObjectIsUnsettledByAnEntryThatItsClassGets) {
    GrowingPage grown;
    AObject oval(*findClass(_T("AOval")));
    const auto take = [&] { grown.entries.take(&oval, ItemKind::object, false); };
    const auto isSettled = [&] { return grown.entries.isSettled(&oval, ItemKind::object, false); };
    const auto addOval = [&](bool isInDocument) {
        grown.add(new ACondition(AString(), _T("AOval")), isInDocument);
    };
    addOval(false);
    EXPECT_EQ(grown.news(ItemKind::object, take), "11") << "an entry was replaced";
    EXPECT_TRUE(isSettled());
    EXPECT_EQ(grown.news(ItemKind::object, [&] { addOval(false); }), "11");
    EXPECT_FALSE(isSettled());
    take();
    EXPECT_TRUE(isSettled());
    addOval(true);
    take();
    EXPECT_TRUE(dynamic_cast<AObjectCondition*>(grown.page.getCondition(2))) << "as used as it was";
}

TEST(Filling, AFillIsUnsettledByAnEntryForIt) {
    GrowingPage grown;
    const auto red = test::makeColor(_T("red"), 1), blue = test::makeColor(_T("blue"), 2);
    const auto redFill = test::makeSolid(red.get()), blueFill = test::makeSolid(blue.get());
    const auto take = [&](const auto& fill, bool selected) {
        return grown.entries.take(fill.get(), ItemKind::fill, selected);
    };
    const auto isSettled = [&](const auto& fill, bool selected) {
        return grown.entries.isSettled(fill.get(), ItemKind::fill, selected);
    };
    const auto addBlue = [&] { grown.add(new AFillCondition(AString(), blueFill.get())); };
    grown.add(new ACondition(AString(), _T("ASolidBrushItem")));
    take(redFill, true);
    take(blueFill, false);
    EXPECT_TRUE(isSettled(redFill, true));
    EXPECT_TRUE(isSettled(blueFill, false));
    EXPECT_EQ(grown.news(ItemKind::fill, addBlue), "00");
    EXPECT_FALSE(isSettled(blueFill, false));
    take(blueFill, false);
    EXPECT_TRUE(isSettled(blueFill, false));
    EXPECT_FALSE(isSettled(blueFill, true));
    EXPECT_EQ(grown.news(ItemKind::fill, addBlue), "11")
        << "other fills of the color may have found the first";
}

TEST(Filling, AFillIsAcceptedByItsOwnEntryThatThePageGotAsUsed) {
    GrowingPage grown;
    const auto red = test::makeColor(_T("red"), 1), blue = test::makeColor(_T("blue"), 2);
    const auto redFill = test::makeSolid(red.get()), blueFill = test::makeSolid(blue.get());
    grown.add(new AFillCondition(AString(), blueFill.get()));
    EXPECT_FALSE(grown.entries.take(redFill.get(), ItemKind::fill, false));
    grown.add(new AFillCondition(AString(), redFill.get()), true);
    EXPECT_TRUE(grown.entries.take(redFill.get(), ItemKind::fill, false));
}

TEST(Filling, AnObjectWithoutAFillMarksNoFill) {
    Scene scene;
    scene.add(scene.layer(), _T("AOval"));
    Filled run(scene);
    EXPECT_EQ(run.flags(_T("Fill"), "No fill"), "10");
    EXPECT_EQ(run.flags(_T("Stroke"), "No stroke"), "10");
    EXPECT_EQ(run.flags(_T("Fill"), "Solid"), "00");
}

TEST(Filling, APenWithoutAColorMarksNoStroke) {
    Scene scene;
    APaintTable& paint = scene.document.getPaint();
    AObject* oval = scene.add(scene.layer(), _T("AOval"));
    oval->setPen(paint.brushPen(paint.gradientBrush("g")->getBrushItem()));
    Filled run(scene);
    EXPECT_EQ(run.flags(_T("Stroke"), "No stroke"), "10");
    EXPECT_EQ(run.flags(_T("Stroke"), "Pen"), "10") << "the pen item was offered, too";
}

TEST(Filling, EveryObjectWithAGradientAddsAnEntry) {
    Scene scene;
    ALayer* layer = scene.layer();
    for (int i = 0; i < 3; ++i)
        scene.add(layer, _T("AOval"))->setBrush(scene.document.getPaint().gradientBrush("g"));
    Filled run(scene);
    EXPECT_EQ(run.flags(_T("Fill"), "Gradient/g"), "10");
    EXPECT_EQ(run.flags(_T("Fill"), "Gradient/g_2"), "10");
    EXPECT_EQ(run.flags(_T("Fill"), "Gradient/g_3"), "-");
}

TEST(Filling, AFillWithoutANameIsNumberedByItsEntry) {
    Scene scene;
    const auto gradient = test::makeGradient(_T(""));
    ABrush brush(gradient.get());
    scene.add(scene.layer(), _T("AOval"))->setBrush(&brush);
    Filled run(scene);
    const ACondition* last =
        run.page(_T("Fill")).getCondition(run.page(_T("Fill")).getConditions().GetSize() - 1);
    EXPECT_EQ(last->path.toUtf8(), "Gradient/brush" + std::to_string(last->getSerial()));
}

TEST(Filling, AFillWithoutANameIsNumberedByTheLow32BitsOfItsSerial) {
    Scene scene;
    const auto gradient = test::makeGradient(_T(""));
    ABrush brush(gradient.get());
    scene.add(scene.layer(), _T("AOval"))->setBrush(&brush);
    const test::LaterSerials later(test::kBeyond32Bits);
    Filled run(scene);
    const ACondition* last =
        run.page(_T("Fill")).getCondition(run.page(_T("Fill")).getConditions().GetSize() - 1);
    EXPECT_EQ(last->path.toUtf8(),
              "Gradient/brush" + std::to_string(last->getSerial() - test::kBeyond32Bits));
}

TEST(Filling, BitmapsMarkTheKindOfTheirColorModel) {
    Scene scene;
    auto* bitmap = dynamic_cast<ABitmap*>(scene.add(scene.layer(), _T("ABitmap")));
    bitmap->setColorModel(ABitmap::grayscale);
    Filled run(scene);
    EXPECT_EQ(run.flags(_T("Object"), "Bitmap"), "10");
    EXPECT_EQ(run.flags(_T("Object"), "Bitmap/Grayscale Bitmap"), "10");
    EXPECT_EQ(run.flags(_T("Object"), "Bitmap/RGB Bitmap"), "00");
}

TEST(Filling, RandomDrawingsFollowThePlainRules) {
    for (unsigned seed = 0; seed < 150; ++seed) {
        RandomScene scene(seed);
        Filled run(scene);
        const std::uint64_t start = ACondition(AString(), nullptr).getSerial();
        const plain::Gathered gathered = plain::gather(scene.view);
        plain::Pages pages = plain::createPages();
        plain::fillPages(pages, gathered);
        ASSERT_EQ(namesIn(run.tool.getCandidateObjects()), namesIn(gathered.candidates)) << seed;
        ASSERT_EQ(namesIn(run.tool.getSelectedObjects()), namesIn(gathered.selected)) << seed;
        ASSERT_EQ(
            std::vector<ARoot*>(run.tool.getSelectedLayers().begin(), run.tool.getSelectedLayers().end()),
            std::vector<ARoot*>(gathered.selectedLayers.begin(), gathered.selectedLayers.end()))
            << seed;
        ASSERT_EQ(run.sheet.getSelectPageCount(), static_cast<int>(pages.size()));
        for (int i = 0; i < run.sheet.getSelectPageCount(); ++i) {
            const plain::Page& expected = *pages[static_cast<std::size_t>(i)];
            const AObArray& conditions = run.sheet.getSelectPage(i).getConditions();
            Names got, wanted;
            for (ARoot* one : conditions) got.push_back(lineOf(*static_cast<ACondition*>(one), run.start));
            for (const auto& one : expected.conditions) wanted.push_back(lineOf(*one, start));
            ASSERT_EQ(got, wanted) << "seed " << seed << ", " << expected.category.toUtf8();
        }
    }
}

namespace {

// Pages that the sheet never makes, of entries of every kind, and what is offered to them: whatever order objects
// come in, however often.
class RandomPages {
public:
    explicit RandomPages(unsigned seed) : m_random(seed), m_scene(seed, 25) {
        const unsigned pages = 1 + m_random() % 3;
        for (unsigned i = 0; i < pages; ++i) {
            m_entries.emplace_back();
            for (unsigned left = m_random() % 12; left > 0; --left) m_entries.back().push_back(entry(i == 0));
        }
        std::vector<AObject*> objects = m_scene.objects;
        for (SometimesClosed* effect : {&m_open, &m_closed}) objects.insert(objects.end(), 3, effect);
        gathered = plain::gather(m_scene.view);
        gathered.candidates.clear();
        for (int i = 0; i < 80; ++i) gathered.candidates.push_back(one(objects));
        gathered.selected.clear();
        for (AObject* object : objects) {
            if (m_random() % 3 == 0) gathered.selected.push_back(object);
        }
    }

    // The entries, made anew.
    plain::Pages plainPages() const {
        plain::Pages pages;
        for (const auto& entries : m_entries) {
            pages.push_back(std::make_unique<plain::Page>());
            for (const Make& make : entries) pages.back()->add(make());
        }
        return pages;
    }
    std::vector<std::unique_ptr<test::AnyPage>> pages() const {
        std::vector<std::unique_ptr<test::AnyPage>> pages;
        for (const auto& entries : m_entries) {
            pages.push_back(std::make_unique<test::AnyPage>());
            for (const Make& make : entries) pages.back()->addCondition(make().release());
        }
        return pages;
    }

    plain::Gathered gathered;

private:
    using Make = std::function<std::unique_ptr<ACondition>()>;

    template <class T>
    T& one(std::vector<T>& of) {
        return of[m_random() % of.size()];
    }

    Make entry(bool isForPaint) {
        const Make made = ofSomeKind(isForPaint);
        std::vector<const char*> paths{"a", "b", "Solid/RGB Color/red", "Gradient/g", "Pen/RGB Color/red"};
        const AItemPath path(AString::fromUtf8(one(paths)));
        const unsigned marks = m_random() % 6;
        return [=] {
            std::unique_ptr<ACondition> condition = made();
            condition->path = path;
            condition->inDocument = marks == 1 || marks == 2;
            condition->inSelection = marks == 2;
            return condition;
        };
    }

    // As in the sheet, one page alone takes fills, and one strokes; an entry is about paint or about objects.
    Make ofSomeKind(bool isForPaint) {
        std::vector<const char*> paint{"APenItem", "ASolidBrushItem", "ASolidBrushItem",
                                       "AGradientBrushItem"};
        std::vector<const char*> objects{"AOval", "AText", "ABitmap", "AShadow", "AGroup", "ALayer"};
        const bool isPaint = isForPaint && m_random() % 2 == 0;
        Names names;
        for (unsigned left = 1 + m_random() % 3; left > 0; --left)
            names.push_back(one(isPaint ? paint : objects));
        AObject& object = *one(m_scene.objects);
        ABrushItem* brush = object.getBrush() ? object.getBrush()->getBrushItem() : nullptr;
        switch (m_random() % (isPaint ? 8 : 5)) {
            case 0:
                return [=] { return test::ofClasses(names); };
            case 1:
                return [=] { return test::ofClasses<AObjectCondition>(names); };
            case 2:
                return [=, kind = kBitmapKinds[m_random() % kBitmapKinds.size()]] {
                    auto condition = std::make_unique<AObjectCondition>(AString(), nullptr);
                    condition->reset(kind.className, kind.nameId, kind.classifier);
                    return condition;
                };
            case 3:
                return [=, isNone = m_random() % 2 == 0] {
                    const AString name = AString::fromUtf8(names[0]);
                    return std::make_unique<AStrokeCondition>(
                        AString(), isNone ? nullptr : static_cast<const WCHAR*>(name), nullptr);
                };
            case 4:
                return [=] { return test::ofClasses<AEffectCondition>(names); };
            case 5:
                return [=] { return std::make_unique<AFillCondition>(AString(), brush); };
            case 6:
                return [=] {  // a fill among several classes
                    auto condition = std::make_unique<AFillCondition>(AString(), brush);
                    condition->merge(*test::ofClasses(names));
                    return condition;
                };
            default:
                return [=] {
                    auto condition = std::make_unique<AFillCondition>(AString(), nullptr);
                    condition->ACondition::reset(AString(), AString::fromUtf8(names[0]));
                    return condition;
                };
        }
    }

    std::mt19937 m_random;
    test::RandomScene m_scene;
    SometimesClosed m_open{false};
    SometimesClosed m_closed{true};
    std::vector<std::vector<Make>> m_entries;
};

}  // namespace

TEST(Filling, PagesOfAnyEntriesFollowThePlainRules) {
    for (unsigned seed = 0; seed < 800; ++seed) {
        const RandomPages random(seed);
        const auto pages = random.pages();
        const std::uint64_t start = ACondition(AString(), nullptr).getSerial();
        {
            PageFiller filler({[&] {
                std::vector<ACheckPageBase*> filled;
                for (const auto& page : pages) filled.push_back(page.get());
                return filled;
            }()});
            const auto holds = [](const auto& list, auto* one) {
                return std::ranges::find(list, one) != list.end();
            };
            for (ALayer* layer : random.gathered.pool)
                filler.offerLayer(*layer, holds(random.gathered.selectedLayers, layer));
            for (AObject* object : random.gathered.candidates)
                filler.offerObject(*object, holds(random.gathered.selected, object));
        }
        const std::uint64_t end = ACondition(AString(), nullptr).getSerial();
        plain::Pages expected = random.plainPages();
        const std::uint64_t plainStart = ACondition(AString(), nullptr).getSerial();
        plain::fillPages(expected, random.gathered);
        const std::uint64_t plainEnd = ACondition(AString(), nullptr).getSerial();
        for (std::size_t i = 0; i < pages.size(); ++i) {
            Names got, wanted;
            for (ARoot* one : pages[i]->getConditions())
                got.push_back(lineOf(*static_cast<ACondition*>(one), start));
            for (const auto& one : expected[i]->conditions) wanted.push_back(lineOf(*one, plainStart));
            ASSERT_EQ(got, wanted) << "seed " << seed << ", page " << i;
        }
        ASSERT_EQ(end - start, plainEnd - plainStart) << seed;
    }
}
