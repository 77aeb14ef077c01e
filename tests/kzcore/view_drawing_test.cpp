// What a view asks its filter and its painter while it draws, and in which order.
#include <gtest/gtest.h>

#include <set>

#include "kzcore/device/device.h"
#include "support/drawing.h"
#include "support/pixels.h"

namespace {

using Log = std::vector<std::string>;

std::string named(const AReferItem* item) {
    return item->getName().toUtf8();
}

// Notes what it is asked; refuses the items with certain names.
class AskedFilter : public AViewFilter {
public:
    AskedFilter(Log& log, std::set<std::string> refused) : m_log(log), m_refused(std::move(refused)) {}
    int isVisible(AReferItem* item) override {
        m_log.push_back("ask " + named(item));
        return m_refused.count(named(item)) == 0;
    }

private:
    Log& m_log;
    std::set<std::string> m_refused;
};

// Notes what it is told; enters all containers but one.
class NotingPainter : public AObjectPainter {
public:
    NotingPainter(Log& log, const AObject* closed, Log& behind)
        : m_log(log), m_closed(closed), m_behind(behind) {}

    bool enter(const AParent& container) override {
        m_log.push_back("enter " + nameOf(container));
        return &container != m_closed;
    }
    void leave(const AParent& container) override { m_log.push_back("leave " + nameOf(container)); }
    void paint(const AObject& object, APaintVisibility visible) override {
        m_log.push_back(nameOf(object) + (visible.fill ? " fill" : "") + (visible.stroke ? " stroke" : ""));
    }
    void finish() override { m_behind.push_back(m_log.empty() ? "nothing" : m_log.back()); }

private:
    static std::string nameOf(const AObject& object) {
        if (const auto* layer = dynamic_cast<const ALayer*>(&object)) return layer->getTitle().toUtf8();
        return object.getName().toUtf8();
    }

    Log& m_log;
    const AObject* m_closed;
    Log& m_behind;
};

class NotingSource : public AGeometrySource {
public:
    explicit NotingSource(Log& log) : m_log(log) {}
    AFRect computeBounds(const AObject&) const override { return {}; }
    std::unique_ptr<AObjectPainter> startPainting(ACanvas&, const AAffine&) const override {
        return std::make_unique<NotingPainter>(m_log, closed, behind);
    }

    const AObject* closed = nullptr;
    mutable Log behind;  // what came last before each finish

private:
    Log& m_log;
};

struct ViewDrawing : testing::Test {
    Log log;
    test::Drawing drawing;
    NotingSource* source = nullptr;

    void SetUp() override {
        auto owned = std::make_unique<NotingSource>(log);
        source = owned.get();
        drawing.document.setGeometrySource(std::move(owned));
    }

    APaintTable& paint() { return drawing.document.getPaint(); }

    AObject* add(AParent* parent, const WCHAR* className, const char* name) {
        AObject* object = drawing.document.createObject(*findClass(className), name);
        parent->appendChild(object);
        return object;
    }
    AParent* addParent(AParent* parent, const WCHAR* className, const char* name) {
        return add(parent, className, name)->asParent();
    }
    // With a fill, and a stroke of another colour.
    AObject* painted(AParent* parent, const char* name, std::uint32_t fill, std::uint32_t stroke) {
        AObject* object = add(parent, _T("ARectangle"), name);
        object->setBrush(paint().solidBrush(paint().rgb(fill)));
        object->setPen(paint().pen(paint().rgb(stroke)));
        return object;
    }
    void filter(std::set<std::string> refused) {
        drawing.view().setViewFilter(new AskedFilter(log, std::move(refused)));
    }
    std::string item(std::uint32_t fill) {
        return named(paint().solidBrush(paint().rgb(fill))->getBrushItem());
    }
    std::string penItem(std::uint32_t color) { return named(paint().pen(paint().rgb(color))->getPenItem()); }

    Log draw() {
        log.clear();
        CClientDC display(nullptr);
        CDC memory;
        CBitmap bitmap;
        memory.CreateCompatibleDC(&display);
        bitmap.CreateCompatibleBitmap(&display, 8, 8);
        CSelection target(memory, bitmap);
        ADevice device(memory, AScreenInfo(1.0));
        drawing.view().draw(device, AAffine());
        return log;
    }
};

constexpr std::uint32_t kRed = 0xff0000;
constexpr std::uint32_t kBlue = 0x0000ff;
constexpr std::uint32_t kLime = 0x00ff00;

}  // namespace

TEST_F(ViewDrawing, GoesThroughTheObjectsInDrawingOrder) {
    ALayer* layer = drawing.layer(_T("lower"));
    painted(layer, "a", kRed, kBlue);
    AParent* group = addParent(layer, _T("AGroup"), "g");
    painted(group, "b", kRed, kBlue);
    painted(layer, "c", kRed, kBlue);
    drawing.layer(_T("upper"));
    EXPECT_EQ(draw(), (Log{"enter lower", "a fill stroke", "enter g", "b fill stroke", "leave g",
                           "c fill stroke", "leave lower", "enter upper", "leave upper"}));
}

TEST_F(ViewDrawing, DrawsMasterLayersFirst) {
    painted(drawing.layer(_T("layer")), "a", kRed, kBlue);
    painted(drawing.masterLayer(_T("master")), "m", kRed, kBlue);
    EXPECT_EQ(draw(), (Log{"enter master", "m fill stroke", "leave master", "enter layer", "a fill stroke",
                           "leave layer"}));
}

TEST_F(ViewDrawing, FinishesOnceBehindTheLastObject) {
    draw();
    EXPECT_EQ(source->behind, (Log{"nothing"}));
    painted(drawing.layer(_T("layer")), "a", kRed, kBlue);
    draw();
    EXPECT_EQ(source->behind, (Log{"nothing", "leave layer"}));
}

TEST_F(ViewDrawing, LeavesOutHiddenLayersAndHiddenObjects) {
    ALayer* shown = drawing.layer(_T("shown"));
    ALayer* hidden = drawing.layer(_T("hidden"));
    ALayer* master = drawing.masterLayer(_T("master"));
    hidden->setHidden(true);
    master->setHidden(true);
    painted(hidden, "in hidden", kRed, kBlue);
    painted(master, "in master", kRed, kBlue);
    painted(shown, "hidden too", kRed, kBlue)->setObjectFlags(kObjectHidden, true);
    painted(shown, "seen", kRed, kBlue);
    filter({});
    EXPECT_EQ(draw(), (Log{"enter shown", "ask " + item(kRed), "ask " + penItem(kBlue), "seen fill stroke",
                           "leave shown"}));
}

TEST_F(ViewDrawing, AsksWithTheBrushItemThenWithThePenItem) {
    ALayer* layer = drawing.layer(_T("layer"));
    painted(layer, "a", kRed, kBlue);
    painted(layer, "b", kLime, kRed);
    filter({});
    EXPECT_EQ(draw(), (Log{"enter layer", "ask " + item(kRed), "ask " + penItem(kBlue), "a fill stroke",
                           "ask " + item(kLime), "ask " + penItem(kRed), "b fill stroke", "leave layer"}));
}

TEST_F(ViewDrawing, AsksForAGradientStrokeWithItsBrush) {
    AObject* object = add(drawing.layer(_T("layer")), _T("ARectangle"), "a");
    ABrushItem* gradient = paint().gradientBrush("g1")->getBrushItem();
    object->setPen(paint().brushPen(gradient));
    filter({named(gradient)});
    // It has no other paint, so nothing is left to draw.
    EXPECT_EQ(draw(), (Log{"enter layer", "ask " + named(gradient), "leave layer"}));
}

TEST_F(ViewDrawing, DoesNotPaintWhatIsRefused) {
    ALayer* layer = drawing.layer(_T("layer"));
    ABrushItem* red = paint().gradientBrush("refused fill")->getBrushItem();
    AObject* object = add(layer, _T("ARectangle"), "a");
    object->setBrush(paint().gradientBrush("refused fill"));
    object->setPen(paint().brushPen(paint().gradientBrush("stroke")->getBrushItem()));
    filter({named(red)});
    EXPECT_EQ(draw(), (Log{"enter layer", "ask refused fill", "ask stroke", "a stroke", "leave layer"}));
    filter({"stroke"});
    EXPECT_EQ(draw(), (Log{"enter layer", "ask refused fill", "ask stroke", "a fill", "leave layer"}));
    filter({"refused fill", "stroke"});
    EXPECT_EQ(draw(), (Log{"enter layer", "ask refused fill", "ask stroke", "leave layer"}));
}

TEST_F(ViewDrawing, NeverAsksForBitmapsGroupsAndObjectsWithoutPaint) {
    ALayer* layer = drawing.layer(_T("layer"));
    AParent* group = addParent(layer, _T("AGroup"), "g");
    AObject* bitmap = add(group, _T("ABitmap"), "picture");
    add(layer, _T("ARectangle"), "bare");
    // Even when somebody gave them paint.
    bitmap->setBrush(paint().solidBrush(paint().rgb(kRed)));
    group->setBrush(paint().solidBrush(paint().rgb(kRed)));
    filter({item(kRed)});
    EXPECT_EQ(draw(), (Log{"enter layer", "enter g", "picture fill stroke", "leave g", "bare fill stroke",
                           "leave layer"}));
}

TEST_F(ViewDrawing, PassesOverAContainerThatThePainterDoesNotEnter) {
    ALayer* layer = drawing.layer(_T("layer"));
    AParent* group = addParent(layer, _T("AGroup"), "closed");
    painted(group, "inside", kRed, kBlue);
    painted(layer, "behind", kRed, kBlue);
    source->closed = group;
    EXPECT_EQ(draw(), (Log{"enter layer", "enter closed", "behind fill stroke", "leave layer"}));
}

TEST_F(ViewDrawing, GoesDownAThousandContainers) {
    AParent* inner = drawing.layer(_T("layer"));
    for (int depth = 0; depth < 1'000; ++depth) inner = drawing.addParent(inner, _T("AGroup"));
    painted(inner, "deepest", kRed, kBlue);
    const Log seen = draw();
    ASSERT_EQ(seen.size(), 2 * 1'001U + 1);
    EXPECT_EQ(seen[1'001], "deepest fill stroke");
    EXPECT_EQ(seen.back(), "leave layer");
}

TEST(ViewDrawingWithoutFormat, ShowsTheBoxesOfTheObjects) {
    test::Drawing drawing;
    ALayer* layer = drawing.layer();
    APaintTable& paint = drawing.document.getPaint();
    AObject* object = drawing.add(layer, _T("ARectangle"));
    object->setBoundingRect({1, 1, 5, 3});
    object->setBrush(paint.solidBrush(paint.rgb(kRed)));
    CClientDC display(nullptr);
    CDC memory;
    CBitmap bitmap;
    memory.CreateCompatibleDC(&display);
    test::paint(bitmap, "wwwwww\nwwwwww\nwwwwww\nwwwwww\n");
    {
        CSelection target(memory, bitmap);
        ADevice device(memory, AScreenInfo(1.0));
        drawing.view().draw(device, AAffine());
    }
    EXPECT_EQ(test::picture(bitmap), "wwwwww\nwrrrrw\nwrrrrw\nwwwwww\n");
}
