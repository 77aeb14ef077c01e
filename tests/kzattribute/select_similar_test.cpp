#include <random>

#include "kzcore/tool/tool_runner.h"
#include "module.h"

using test::Drawing;
using Objects = std::vector<AObject*>;

namespace {

class SelectSimilar : public testing::Test {
protected:
    std::unique_ptr<APlugIn> plugIn = test::loadPlugIn();
    Drawing drawing;
    std::unique_ptr<ATool> tool = test::makeTool(*plugIn, _T("ASelectSimilarTool"));

    // What is selected after the tool ran with these objects selected.
    Objects similarTo(std::initializer_list<AObject*> selected) {
        drawing.select(selected);
        std::string error;
        EXPECT_EQ(runTool(*tool, nullptr, error), AToolOutcome::done) << error;
        return drawing.selected();
    }
};

}  // namespace

TEST_F(SelectSimilar, FindsEveryObjectOfTheClassInGroupsToo) {
    ALayer* layer = drawing.layer();
    AParent* group = drawing.addParent(layer, _T("AGroup"));
    AObject* inGroup = drawing.add(group, _T("ARectangle"));
    AParent* effect = drawing.addParent(group, _T("AShadow"));
    AObject* inEffect = drawing.add(effect, _T("ARectangle"));
    drawing.add(layer, _T("AOval"));
    AObject* onTop = drawing.add(layer, _T("ARectangle"));
    AObject* onOther = drawing.add(drawing.layer(), _T("ARectangle"));
    EXPECT_EQ(similarTo({inGroup}), (Objects{onTop, onOther, inGroup, inEffect})) << "breadth-first";
}

TEST_F(SelectSimilar, OfAGroupDoesNotEnterTheGroupsItFinds) {
    ALayer* layer = drawing.layer();
    AParent* outer = drawing.addParent(layer, _T("AGroup"));
    AParent* inner = drawing.addParent(outer, _T("AGroup"));
    AParent* effect = drawing.addParent(layer, _T("AShadow"));
    AParent* inEffect = drawing.addParent(effect, _T("AGroup"));
    EXPECT_EQ(similarTo({outer}), (Objects{outer, inEffect}));
    EXPECT_EQ(similarTo({inner}), (Objects{outer, inEffect})) << "the reference itself is inside a match";
}

TEST_F(SelectSimilar, NeverTakesObjectsOfLayersThatAreNotEditable) {
    ALayer* editable = drawing.layer();
    ALayer* locked = drawing.layer();
    ALayer* hidden = drawing.layer();
    AObject* found = drawing.add(editable, _T("AOval"));
    AObject* reference = drawing.add(locked, _T("AOval"));
    drawing.add(hidden, _T("AOval"));
    locked->setLocked(true);
    hidden->setHidden(true);
    EXPECT_EQ(similarTo({reference}), Objects{found});
}

TEST_F(SelectSimilar, PassesOverLockedAndHiddenObjectsWithWhatTheyContain) {
    ALayer* layer = drawing.layer();
    AObject* reference = drawing.add(layer, _T("AOval"));
    AParent* locked = drawing.addParent(layer, _T("AGroup"));
    locked->setObjectFlags(kObjectLocked, true);
    drawing.add(locked, _T("AOval"));
    AParent* hidden = drawing.addParent(layer, _T("AGroup"));
    hidden->setObjectFlags(kObjectHidden, true);
    drawing.add(hidden, _T("AOval"));
    drawing.add(layer, _T("AOval"))->setObjectFlags(kObjectLocked, true);
    drawing.add(layer, _T("AOval"))->setObjectFlags(kObjectHidden, true);
    EXPECT_EQ(similarTo({reference}), Objects{reference});
}

TEST_F(SelectSimilar, DoesNotEnterClosedParents) {
    ALayer* layer = drawing.layer();
    AParent* composite = drawing.addParent(layer, _T("AComposite"));
    AObject* inside = drawing.add(composite, _T("AOval"));
    AObject* outside = drawing.add(layer, _T("AOval"));
    EXPECT_EQ(similarTo({inside}), Objects{outside});
}

TEST_F(SelectSimilar, ComparesClassNamesExactly) {
    static const AClassInfo shouting{_T("AOVAL"), 0, 0, AClassKind::leaf};
    static const AClassInfo twin{_T("AOval"), 0, 0, AClassKind::leaf};
    ALayer* layer = drawing.layer();
    AObject* oval = drawing.add(layer, _T("AOval"));
    AObject other(shouting);
    AObject same(twin);  // another row with an equal name: the text decides
    layer->appendChild(&other);
    layer->appendChild(&same);
    EXPECT_EQ(similarTo({oval}), (Objects{oval, &same}));
    EXPECT_EQ(similarTo({&other}), Objects{&other});
    drawing.selection().resetSelection(0);
}

TEST_F(SelectSimilar, AsksForTheHandlesOnce) {
    AObject* oval = drawing.add(drawing.layer(), _T("AOval"));
    AObject* other = drawing.add(drawing.layer(), _T("AOval"));
    const unsigned long long redraws = drawing.selection().getRedrawCount();
    EXPECT_EQ(similarTo({oval}), (Objects{oval, other}));
    EXPECT_EQ(drawing.selection().getRedrawCount(), redraws + 1);
}

TEST_F(SelectSimilar, SearchesTheMasterLayersBehindTheOthers) {
    AObject* master = drawing.add(drawing.masterLayer(), _T("AOval"));
    AObject* drawn = drawing.add(drawing.layer(), _T("AOval"));
    EXPECT_EQ(similarTo({master}), (Objects{drawn, master}));
}

TEST_F(SelectSimilar, TakesTheClassOfTheFirstSelectedObject) {
    ALayer* layer = drawing.layer();
    AObject* a = drawing.add(layer, _T("AOval"));
    AObject* b = drawing.add(layer, _T("AOval"));
    EXPECT_EQ(similarTo({b, a}), (Objects{a, b}));
    AObject* text = drawing.add(layer, _T("AText"));
    drawing.select({text, a});
    EXPECT_EQ(tool->onToolStart(), 1) << "the start operation itself asks nobody";
    EXPECT_EQ(drawing.selected(), Objects{text});
}

TEST_F(SelectSimilar, IsNotValidWithAnEmptyOrMixedSelection) {
    ALayer* layer = drawing.layer();
    AObject* oval = drawing.add(layer, _T("AOval"));
    AObject* text = drawing.add(layer, _T("AText"));
    EXPECT_EQ(tool->isValid(), 0);
    drawing.select({oval, text});
    EXPECT_EQ(tool->isValid(), 0);
    drawing.select({oval});
    EXPECT_EQ(tool->isValid(), 1);
    drawing.application.setActiveView(nullptr);
    EXPECT_EQ(tool->isValid(), 0);
}

TEST_F(SelectSimilar, LeavesNothingSelectedWhenNothingIsReached) {
    AObject* alone = drawing.add(drawing.layer(), _T("AOval"));
    static_cast<ALayer*>(alone->getParent())->setLocked(true);
    EXPECT_EQ(similarTo({alone}), Objects{});
    EXPECT_TRUE(drawing.view().getHistory().undo());
    EXPECT_EQ(drawing.selected(), Objects{alone});
}

TEST_F(SelectSimilar, WithoutASelectionItEndsAndChangesNothing) {
    drawing.add(drawing.layer(), _T("AOval"));
    EXPECT_EQ(tool->onToolStart(), 1);
    EXPECT_TRUE(tool->hasEnded());
    EXPECT_TRUE(drawing.selected().empty());
}

namespace {

// The walk as the rule tells it: a list that is only appended to.
Objects plainWalk(Drawing& drawing, const AString& className) {
    std::vector<AObject*> work;
    const auto append = [&work](AParent& parent) {
        for (ARoot* child : parent.children) work.push_back(static_cast<AObject*>(child));
    };
    std::vector<ALayer*> layers;
    for (ADatabase* database : {&drawing.document.getDatabase(), drawing.document.getSecondaryDatabase()}) {
        for (ARoot* layer : database->children) layers.push_back(static_cast<ALayer*>(layer));
    }
    for (ALayer* layer : layers) {
        if (layer->IsLayerEditable()) append(*layer);
    }
    Objects found;
    for (std::size_t i = 0; i < work.size(); ++i) {
        AObject* object = work[i];
        if (object->isUnselectable() || object->getObjectFlags(kObjectHidden)) continue;
        if (object->getClassName() == className) {
            found.push_back(object);
            continue;
        }
        auto* parent = dynamic_cast<AParent*>(object);
        if (parent && parent->hasOption(0x200) == 0) append(*parent);
    }
    return found;
}

// A random drawing: layers in both databases, some not editable, objects of few classes nested at random.
// `chain` makes long chains of single children likely, which is where the work list is emptied.
void fillAtRandom(Drawing& drawing, std::mt19937& random, bool chain) {
    const auto below = [&random](unsigned n) { return random() % n; };
    std::vector<AParent*> parents;
    for (unsigned i = 0, count = 1 + below(4); i < count; ++i) {
        ALayer* layer = below(3) == 0 ? drawing.masterLayer() : drawing.layer();
        layer->setLocked(below(5) == 0);
        layer->setHidden(below(5) == 0);
        parents.push_back(layer);
    }
    const WCHAR* const classes[] = {_T("AOval"),   _T("AText"),  _T("AGroup"),    _T("AMask"),
                                    _T("AShadow"), _T("AGroup"), _T("AComposite")};
    for (unsigned i = 0, count = below(120); i < count; ++i) {
        AParent* parent =
            chain && below(8) != 0 ? parents.back() : parents[below(static_cast<unsigned>(parents.size()))];
        AObject* object = drawing.add(parent, classes[below(std::size(classes))]);
        object->setObjectFlags(kObjectLocked, below(12) == 0);
        object->setObjectFlags(kObjectHidden, below(12) == 0);
        if (AParent* container = object->asParent()) parents.push_back(container);
    }
}

}  // namespace

TEST(SelectSimilarWalk, GivesTheOrderOfThePlainWalkOnRandomDrawings) {
    const auto plugIn = test::loadPlugIn();
    std::mt19937 random(20260917);
    int compared = 0;
    for (int round = 0; round < 2000; ++round) {
        Drawing drawing;
        fillAtRandom(drawing, random, round % 2 == 0);
        const auto tool = test::makeTool(*plugIn, _T("ASelectSimilarTool"));
        for (std::uint32_t index = 1; index <= drawing.document.getObjectCount(); index += 7) {
            AObject* reference = drawing.document.getObject(index);
            const Objects expected = plainWalk(drawing, reference->getClassName());
            drawing.select({reference});
            ASSERT_EQ(tool->onToolStart(), 1);
            ASSERT_EQ(drawing.selected(), expected) << "round " << round << ", object " << index;
            ++compared;
        }
    }
    EXPECT_GT(compared, 5000);
}
