#include <gtest/gtest.h>

#include "support/drawing.h"

using test::Drawing;

TEST(Document, EveryDrawingClassIsMadeAsItsKind) {
    Drawing drawing;
    ALayer* layer = drawing.layer();
    for (const AClassInfo& row : databaseClasses()) {
        if (row.kind == AClassKind::brushItem || row.kind == AClassKind::penItem ||
            row.kind == AClassKind::layer) {
            EXPECT_THROW(drawing.document.createObject(row, row.name.toUtf8()), std::invalid_argument);
            continue;
        }
        AObject* object = drawing.add(layer, row.name);
        EXPECT_EQ(object->getClassName(), row.name);
        EXPECT_EQ(dynamic_cast<AParent*>(object), object->asParent());
        EXPECT_EQ(object->asParent() != nullptr,
                  row.kind != AClassKind::leaf && row.kind != AClassKind::bitmap);
        EXPECT_EQ(object->asLayer(), nullptr);
        EXPECT_EQ(dynamic_cast<AEffect*>(object) != nullptr, row.kind == AClassKind::effect);
        EXPECT_EQ(dynamic_cast<AGroup*>(object) != nullptr, row.kind == AClassKind::group);
        EXPECT_EQ(dynamic_cast<ABitmap*>(object) != nullptr, row.kind == AClassKind::bitmap);
    }
    EXPECT_EQ(layer->asLayer(), layer);
}

TEST(Document, OnlyACompositeIsClosed) {
    Drawing drawing;
    ALayer* layer = drawing.layer();
    for (const WCHAR* name : {_T("AGroup"), _T("AMask"), _T("AShadow"), _T("ARectangle")})
        EXPECT_EQ(drawing.add(layer, name)->hasOption(0x200), 0);
    EXPECT_NE(drawing.add(layer, _T("AComposite"))->hasOption(0x200), 0);
    EXPECT_EQ(drawing.add(layer, _T("AComposite"))->hasOption(0x100), 0);
    EXPECT_EQ(layer->hasOption(0x200), 0);
}

TEST(Document, AnObjectIsTheParentsOfWhatContainsIt) {
    Drawing drawing;
    ALayer* layer = drawing.layer();
    AParent* group = drawing.addParent(layer, _T("AGroup"));
    AParent* inner = drawing.addParent(group, _T("AShadow"));
    AObject* leaf = drawing.add(inner, _T("AOval"));
    AObject* other = drawing.add(layer, _T("AOval"));
    EXPECT_TRUE(leaf->isParent(inner));
    EXPECT_TRUE(leaf->isParent(group));
    EXPECT_FALSE(leaf->isParent(leaf));
    EXPECT_FALSE(leaf->isParent(other));
    EXPECT_FALSE(group->isParent(leaf));
    EXPECT_EQ(leaf->getParent(), inner);
    EXPECT_EQ(AObject::getParent(layer), &drawing.document.getDatabase());
    EXPECT_EQ(AObject::getParent(&drawing.document.getDatabase()), nullptr);
}

TEST(Document, ADatabaseIsEmptyUntilALayerHoldsAnObject) {
    Drawing drawing;
    ADatabase& database = drawing.document.getDatabase();
    EXPECT_TRUE(database.isEmpty());
    ALayer* first = drawing.layer();
    ALayer* second = drawing.layer();
    EXPECT_TRUE(database.isEmpty());
    drawing.add(drawing.masterLayer(), _T("AOval"));
    EXPECT_TRUE(database.isEmpty());
    drawing.add(second, _T("AOval"));
    EXPECT_FALSE(database.isEmpty());
    EXPECT_TRUE(first->children.IsEmpty());
}

TEST(Document, AllObjectsAreThoseOfTheMainDatabaseDepthFirst) {
    Drawing drawing;
    ALayer* layer = drawing.layer();
    AParent* group = drawing.addParent(layer, _T("AGroup"));
    AObject* hidden = drawing.add(group, _T("AOval"));
    hidden->setObjectFlags(kObjectHidden, true);
    AParent* closed = drawing.addParent(group, _T("AComposite"));
    AObject* inClosed = drawing.add(closed, _T("AText"));
    AObject* last = drawing.add(layer, _T("AText"));
    last->setObjectFlags(kObjectLocked, true);
    drawing.add(drawing.masterLayer(), _T("AText"));
    AObList all;
    drawing.document.getDatabase().getAllObjects(all, 0);
    EXPECT_EQ(std::vector<ARoot*>(all.begin(), all.end()),
              (std::vector<ARoot*>{group, hidden, closed, inClosed, last}));
}

TEST(Document, AHiddenOrLockedLayerIsNotEditable) {
    Drawing drawing;
    ALayer* layer = drawing.layer();
    EXPECT_TRUE(layer->IsLayerEditable());
    layer->setLocked(true);
    EXPECT_FALSE(layer->IsLayerEditable());
    layer->setLocked(false);
    layer->setHidden(true);
    EXPECT_FALSE(layer->IsLayerEditable());
}

TEST(Document, ContainersAndBitmapsHaveNoPaint) {
    Drawing drawing;
    ALayer* layer = drawing.layer();
    APaintTable& paint = drawing.document.getPaint();
    for (const WCHAR* name : {_T("AGroup"), _T("AShadow"), _T("ABitmap"), _T("AComposite")}) {
        AObject* object = drawing.add(layer, name);
        object->setBrush(paint.solidBrush(paint.rgb(0xff0000)));
        object->setPen(paint.pen(paint.rgb(0xff0000)));
        EXPECT_EQ(object->getBrush(), nullptr);
        EXPECT_EQ(object->getPen(), nullptr);
    }
}

TEST(Document, ReferItemsAreTheFillsColorAndThePensColor) {
    Drawing drawing;
    APaintTable& paint = drawing.document.getPaint();
    AObject* object = drawing.add(drawing.layer(), _T("ARectangle"));
    const auto items = [object] {
        AObList list;
        object->getAllReferItems(list, 0x2003);
        return std::vector<ARoot*>(list.begin(), list.end());
    };
    EXPECT_TRUE(items().empty());
    object->setBrush(paint.solidBrush(paint.rgb(0xff0000)));
    object->setPen(paint.pen(paint.rgb(0x0000ff)));
    EXPECT_EQ(items(), (std::vector<ARoot*>{paint.rgb(0xff0000), paint.rgb(0x0000ff)}));
    ABrushItem* gradient = paint.gradientBrush("g")->getBrushItem();
    object->setBrush(paint.gradientBrush("g"));
    object->setPen(paint.brushPen(gradient));
    EXPECT_EQ(items(), (std::vector<ARoot*>{gradient, gradient}));
    ABrush noItem(nullptr);
    APen noPenItem(nullptr);
    object->setBrush(&noItem);
    object->setPen(&noPenItem);
    EXPECT_TRUE(items().empty());
}

namespace {

struct CountingSource : AGeometrySource {
    mutable int asked = 0;
    AFRect computeBounds(const AObject& object) const override {
        ++asked;
        return {0, 0, double(object.getSourceIndex()), 1};
    }
};

}  // namespace

TEST(Document, PendingBoundsAreAskedOnceOfTheGeometrySource) {
    Drawing drawing;
    AObject* object = drawing.add(drawing.layer(), _T("AEditPath"));
    object->setSourceIndex(7);
    object->setObjectFlags(kObjectBoundsPending, true);
    auto source = std::make_unique<CountingSource>();
    const CountingSource& counting = *source;
    drawing.document.setGeometrySource(std::move(source));
    AFRect bounds;
    object->getBoundingRect(bounds);
    object->getBoundingRect(bounds);
    EXPECT_EQ(bounds, (AFRect{0, 0, 7, 1}));
    EXPECT_EQ(counting.asked, 1);
}

TEST(Document, AContainersBoundsAreTheUnionOfItsChildrens) {
    Drawing drawing;
    AParent* group = drawing.addParent(drawing.layer(), _T("AGroup"));
    AFRect bounds{1, 2, 3, 4};
    group->getBoundingRect(bounds);
    EXPECT_EQ(bounds, AFRect());
    drawing.add(group, _T("AOval"))->setBoundingRect({10, 10, 20, 30});
    drawing.add(group, _T("AText"));  // without geometry
    drawing.add(group, _T("AOval"))->setBoundingRect({-5, 15, 12, 16});
    group->getBoundingRect(bounds);
    EXPECT_EQ(bounds, (AFRect{-5, 10, 20, 30}));
}

TEST(Document, ObjectsAreFoundByNameAndAnswerTheirDocument) {
    Drawing drawing;
    AParent* group = drawing.addParent(drawing.layer(), _T("AGroup"));
    AObject* object = drawing.document.createObject(*findClass(_T("AOval")), "größe");
    EXPECT_EQ(object->getDocument(), nullptr);
    group->appendChild(object);
    EXPECT_EQ(object->getDocument(), &drawing.document);
    EXPECT_EQ(drawing.document.findObject("größe"), object);
    EXPECT_EQ(object->getName(), AString::fromUtf8("größe"));
    EXPECT_EQ(drawing.document.findObject("Größe"), nullptr);
    EXPECT_EQ(drawing.document.findObject(""), nullptr);
    EXPECT_THROW(drawing.document.createObject(*findClass(_T("AOval")), "größe"), std::invalid_argument);
}

TEST(NameTable, MadeNamesNeverClash) {
    ANameTable names;
    EXPECT_EQ(names.add("rect-2"), 1U);
    EXPECT_EQ(names.add("rect-2"), 0U);
    EXPECT_EQ(names.add(""), 0U);
    EXPECT_EQ(names.get(names.addUnique("rect", true)), "rect-1");
    EXPECT_EQ(names.get(names.addUnique("rect", true)), "rect-3");
    EXPECT_EQ(names.get(names.addUnique("door", false)), "door");
    EXPECT_EQ(names.get(names.addUnique("door", false)), "door-2");
    EXPECT_EQ(names.get(names.addUnique("", false)), "object-1");
    EXPECT_EQ(names.find("rect-3"), 3U);
    EXPECT_EQ(names.find("rect-4"), 0U);
}

TEST(NameTable, FindsEachOfManyNames) {
    ANameTable names;
    names.reserve(1000);
    for (int i = 0; i < 20000; ++i)
        ASSERT_EQ(names.add("n" + std::to_string(i)), static_cast<std::uint32_t>(i + 1));
    for (int i = 0; i < 20000; ++i)
        ASSERT_EQ(names.find("n" + std::to_string(i)), static_cast<std::uint32_t>(i + 1));
    EXPECT_EQ(names.find("n20000"), 0U);
}
