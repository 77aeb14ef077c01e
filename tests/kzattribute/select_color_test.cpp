#include <random>

#include "kzcore/tool/tool_runner.h"
#include "module.h"

using test::Drawing;
using Objects = std::vector<AObject*>;

namespace {

class SelectColor : public testing::Test {
protected:
    std::unique_ptr<APlugIn> plugIn = test::loadPlugIn();
    Drawing drawing;
    std::unique_ptr<ATool> tool = test::makeTool(*plugIn, _T("ASelectColorTool"));
    ALayer* layer = drawing.layer();
    APaintTable& paint = drawing.document.getPaint();

    ABrush* solid(std::uint32_t rgb) { return paint.solidBrush(paint.rgb(rgb)); }

    // An object with an extent, and a fill unless it is null.
    AObject* add(AParent* parent, ABrush* fill, const WCHAR* className = _T("ARectangle")) {
        AObject* object = drawing.add(parent, className);
        object->setBoundingRect({0, 0, 10, 10});
        object->setBrush(fill);
        return object;
    }

    Objects sameAs(AObject* reference) {
        drawing.select({reference});
        std::string error;
        EXPECT_EQ(runTool(*tool, nullptr, error), AToolOutcome::done) << error;
        return drawing.selected();
    }
};

// A group with a fill of its own, as a host may have.
class FilledGroup : public AGroup {
public:
    using AGroup::AGroup;
    ABrush* brush = nullptr;
    AFRect bounds{0, 0, 10, 10};
    ABrush* getBrush() const override { return brush; }
    void getBoundingRect(AFRect& rect) const override { rect = bounds; }
};

}  // namespace

TEST_F(SelectColor, FindsTheSameSolidFillInGroupsDepthFirst) {
    AParent* group = drawing.addParent(layer, _T("AGroup"));
    AParent* inner = drawing.addParent(group, _T("AMask"));
    AObject* deep = add(inner, solid(0xff0000));
    AObject* inGroup = add(group, solid(0xff0000));
    add(group, solid(0x00ff00));
    AObject* onTop = add(layer, solid(0xff0000), _T("AOval"));
    AObject* other = add(drawing.layer(), solid(0xff0000), _T("AText"));
    EXPECT_EQ(sameAs(onTop), (Objects{deep, inGroup, onTop, other}));
}

TEST_F(SelectColor, AsksForTheHandlesOnce) {
    AObject* red = add(layer, solid(0xff0000));
    AObject* other = add(layer, solid(0xff0000));
    const unsigned long long redraws = drawing.selection().getRedrawCount();
    EXPECT_EQ(sameAs(red), (Objects{red, other}));
    EXPECT_EQ(drawing.selection().getRedrawCount(), redraws + 1);
}

TEST_F(SelectColor, TheColorItemDecidesWhatIsTheSame) {
    APaintTable foreign;
    ABrush twin(foreign.solidBrush(foreign.rgb(0xff0000))->getBrushItem());
    AColorItem* cmyk = paint.color(*findClass(_T("ACMYKColorItem")), "red", {0, 1, 1, 0}, 0xff0000);
    AObject* red = add(layer, solid(0xff0000));
    AObject* equal = add(layer, &twin);
    add(layer, paint.solidBrush(cmyk));
    add(layer, solid(0xfe0000));
    EXPECT_EQ(sameAs(red), (Objects{red, equal}));
}

TEST_F(SelectColor, TheStrokeIsNeverLookedAt) {
    AObject* red = add(layer, solid(0xff0000));
    AObject* stroked = add(layer, nullptr);
    stroked->setPen(paint.pen(paint.rgb(0xff0000)));
    EXPECT_EQ(sameAs(red), Objects{red});
    drawing.select({stroked});
    EXPECT_EQ(tool->isValid(), 0);
}

TEST_F(SelectColor, AGroupStandsForItsFirstFilledDescendantBreadthFirst) {
    AParent* group = drawing.addParent(layer, _T("AGroup"));
    AParent* inner = drawing.addParent(group, _T("AGroup"));
    add(inner, solid(0x0000ff));
    AObject* plain = add(group, nullptr);
    AObject* hidden = add(group, solid(0xff0000));
    hidden->setObjectFlags(kObjectHidden, true);
    AObject* red = add(layer, solid(0xff0000));
    drawing.select({group});
    EXPECT_EQ(tool->isValid(), 1);
    EXPECT_EQ(sameAs(group), Objects{red})
        << "the first in breadth is the hidden one, which is not selected itself";
    EXPECT_FALSE(drawing.selection().contains(plain));
}

TEST_F(SelectColor, TheReferenceSearchEntersGroupsOnlyAndLongChainsToo) {
    AParent* group = drawing.addParent(layer, _T("AGroup"));
    AParent* effect = drawing.addParent(group, _T("AShadow"));
    add(effect, solid(0xff0000));
    drawing.select({group});
    EXPECT_EQ(tool->isValid(), 0) << "what is inside an effect is not reached";
    AParent* chain = group;
    for (int i = 0; i < 500; ++i) chain = drawing.addParent(chain, _T("AGroup"));
    add(chain, solid(0x00ff00));
    EXPECT_EQ(tool->isValid(), 1);
}

TEST_F(SelectColor, ABrushWithoutItemMakesTheToolInvalid) {
    ABrush empty(nullptr);
    AObject* object = add(layer, &empty);
    drawing.select({object});
    EXPECT_EQ(tool->isValid(), 0);
    AParent* group = drawing.addParent(layer, _T("AGroup"));
    add(group, &empty);
    add(group, solid(0xff0000));
    drawing.select({group->asParent()});
    EXPECT_EQ(tool->isValid(), 0) << "the first brush ends the search, item or not";
}

TEST_F(SelectColor, IsNotValidWithoutAFillToGoBy) {
    EXPECT_EQ(tool->isValid(), 0) << "nothing selected";
    AObject* plain = add(layer, nullptr);
    drawing.select({plain});
    EXPECT_EQ(tool->isValid(), 0);
    AParent* group = drawing.addParent(layer, _T("AGroup"));
    drawing.select({group});
    EXPECT_EQ(tool->isValid(), 0);
    AParent* composite = drawing.addParent(layer, _T("AComposite"));
    add(composite, solid(0xff0000));
    drawing.select({composite});
    EXPECT_EQ(tool->isValid(), 0) << "a composite is no group";
    AObject* red = add(layer, solid(0xff0000));
    drawing.select({red, plain});
    EXPECT_EQ(tool->isValid(), 1) << "the first decides";
    drawing.application.setActiveView(nullptr);
    EXPECT_EQ(tool->isValid(), 0);
}

TEST_F(SelectColor, AnEmptyExtentIsPassedOverWithItsMembers) {
    AObject* red = add(layer, solid(0xff0000));
    AObject* flat = add(layer, solid(0xff0000));
    flat->setBoundingRect({5, 5, 20, 5});
    FilledGroup group(*findClass(_T("AGroup")));
    group.brush = solid(0x0000ff);
    group.bounds = AFRect();
    layer->appendChild(&group);
    AObject* member = add(&group, solid(0xff0000));
    EXPECT_EQ(sameAs(red), Objects{red});
    group.bounds = {0, 0, 1, 1};
    EXPECT_EQ(sameAs(red), (Objects{red, member})) << "a group that does not match is entered";
    group.brush = solid(0xff0000);
    EXPECT_EQ(sameAs(red), (Objects{red, &group})) << "one that matches is taken whole";
    drawing.selection().resetSelection(0);
}

TEST_F(SelectColor, AFillThatIsNotSolidMatchesByIdentityOnly) {
    ABrush* gradient = paint.gradientBrush("g");
    auto* copy = new AGradientBrushItem(_T("g"));
    ABrush copied(copy);
    AObject* first = add(layer, gradient);
    AObject* second = add(layer, gradient);
    add(layer, &copied);
    AObject* red = add(layer, solid(0xff0000));
    EXPECT_EQ(sameAs(first), (Objects{first, second}));
    EXPECT_EQ(sameAs(red), Objects{red}) << "with a solid reference, gradients are passed over";
    drawing.selection().resetSelection(0);
    copy->releaseReference();
}

TEST_F(SelectColor, LockedAndHiddenObjectsAndLayersAreNotSearched) {
    AObject* red = add(layer, solid(0xff0000));
    add(layer, solid(0xff0000))->setObjectFlags(kObjectHidden, true);
    add(layer, solid(0xff0000))->setObjectFlags(kObjectLocked, true);
    AParent* locked = drawing.addParent(layer, _T("AGroup"));
    locked->setObjectFlags(kObjectLocked, true);
    add(locked, solid(0xff0000));
    ALayer* closed = drawing.layer();
    AObject* onClosed = add(closed, solid(0xff0000));
    closed->setLocked(true);
    EXPECT_EQ(sameAs(red), Objects{red});
    EXPECT_EQ(sameAs(onClosed), Objects{red}) << "not even when it is the reference";
}

TEST_F(SelectColor, ParentsThatAreNoGroupsAreNotEntered) {
    AObject* red = add(layer, solid(0xff0000));
    add(drawing.addParent(layer, _T("AShadow")), solid(0xff0000));
    add(drawing.addParent(layer, _T("AComposite")), solid(0xff0000));
    EXPECT_EQ(sameAs(red), Objects{red});
}

TEST_F(SelectColor, SearchesTheMasterLayersToo) {
    AObject* red = add(layer, solid(0xff0000));
    AObject* master = add(drawing.masterLayer(), solid(0xff0000));
    EXPECT_EQ(sameAs(red), (Objects{red, master}));
}

namespace {

// The rule as it is told, recursive.
void plainCollect(const AObList& list, ABrushItem* reference, Objects& found) {
    auto* wanted = dynamic_cast<ASolidBrushItem*>(reference);
    for (ARoot* entry : list) {
        auto* object = static_cast<AObject*>(entry);
        if (object->isUnselectable() || object->getObjectFlags(kObjectHidden)) continue;
        if (ABrush* brush = object->getBrush()) {
            AFRect bounds;
            object->getBoundingRect(bounds);
            if (bounds.IsRectEmpty()) continue;
            auto* solid = dynamic_cast<ASolidBrushItem*>(brush->getBrushItem());
            const bool same = solid && wanted
                                  ? solid->getColorItem()->isSameColor(wanted->getColorItem()) != 0
                                  : brush->getBrushItem() == reference;
            if (same) {
                found.push_back(object);
                continue;
            }
        }
        if (auto* group = dynamic_cast<AGroup*>(object)) plainCollect(group->children, reference, found);
    }
}

}  // namespace

TEST(SelectColorWalk, GivesWhatTheRecursiveRuleGivesOnRandomDrawings) {
    const auto plugIn = test::loadPlugIn();
    std::mt19937 random(31);
    const auto below = [&random](unsigned n) { return random() % n; };
    int compared = 0;
    for (int round = 0; round < 400; ++round) {
        Drawing drawing;
        APaintTable& paint = drawing.document.getPaint();
        const auto tool = test::makeTool(*plugIn, _T("ASelectColorTool"));
        std::vector<AParent*> parents;
        for (unsigned i = 0, count = 1 + below(3); i < count; ++i) {
            ALayer* layer = below(4) == 0 ? drawing.masterLayer() : drawing.layer();
            layer->setLocked(below(5) == 0);
            parents.push_back(layer);
        }
        const WCHAR* const classes[] = {_T("AOval"), _T("AText"),   _T("AGroup"),
                                        _T("AMask"), _T("AShadow"), _T("AComposite")};
        for (unsigned i = 0; i < 100; ++i) {
            AObject* object = drawing.add(parents[below(static_cast<unsigned>(parents.size()))],
                                          classes[below(std::size(classes))]);
            object->setObjectFlags(kObjectLocked, below(12) == 0);
            object->setObjectFlags(kObjectHidden, below(12) == 0);
            const double right = below(6) == 0 ? 0 : 10;
            object->setBoundingRect({0, 0, right, 10});
            switch (below(4)) {
                case 0:
                    break;
                case 1:
                    object->setBrush(paint.gradientBrush(below(2) == 0 ? "g" : "h"));
                    break;
                default:
                    object->setBrush(paint.solidBrush(paint.rgb(below(3))));
                    break;
            }
            if (AParent* container = object->asParent()) parents.push_back(container);
        }
        AObList top;
        for (ADatabase* database :
             {&drawing.document.getDatabase(), drawing.document.getSecondaryDatabase()}) {
            for (ARoot* layer : database->children) {
                if (static_cast<ALayer*>(layer)->IsLayerEditable())
                    top.AddTail(&static_cast<ALayer*>(layer)->children);
            }
        }
        for (std::uint32_t index = 1; index <= drawing.document.getObjectCount(); ++index) {
            AObject* reference = drawing.document.getObject(index);
            if (!reference->getBrush()) continue;
            Objects expected;
            plainCollect(top, reference->getBrush()->getBrushItem(), expected);
            drawing.select({reference});
            ASSERT_EQ(tool->onToolStart(), 1);
            ASSERT_EQ(drawing.selected(), expected) << "round " << round << ", object " << index;
            ++compared;
        }
    }
    EXPECT_GT(compared, 5000);
}

// The tool is not valid then; a host that starts it all the same gets an empty selection.
TEST_F(SelectColor, WithoutAReferenceFillTakesNobodyNotEvenObjectsWithoutAnItem) {
    ABrush empty(nullptr);
    AObject* withoutItem = add(layer, &empty);
    add(layer, &empty);
    AObject* red = add(layer, solid(0xff0000));
    drawing.select({withoutItem});
    EXPECT_EQ(tool->isValid(), 0);
    EXPECT_EQ(tool->onToolStart(), 1);
    EXPECT_EQ(drawing.selected(), Objects{});
    drawing.select({});
    EXPECT_EQ(tool->onToolStart(), 1);
    EXPECT_EQ(drawing.selected(), Objects{});
    EXPECT_EQ(sameAs(red), Objects{red});
}
