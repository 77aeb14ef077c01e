// What meets a set of conditions.
#include "select/criteria.h"

#include <algorithm>

#include "conditions/container_conditions.h"
#include "conditions/fill_condition.h"
#include "conditions/object_condition.h"
#include "conditions/refer_condition.h"
#include "conditions/stroke_condition.h"
#include "plain_rules.h"
#include "scene.h"
#include "select/object_walk.h"

using test::Names;
using test::RandomScene;
using test::Scene;

namespace {

Names namesOfObjects(const std::vector<AObject*>& objects) {
    Names names;
    for (const AObject* object : objects) names.push_back(std::string(object->getNameUtf8()));
    return names;
}

std::vector<AObject*> matched(const std::vector<ACondition*>& conditions,
                              const std::vector<AObject*>& candidates) {
    AObArray array;
    for (ACondition* condition : conditions) array.Add(condition);
    Criteria criteria(array);
    OutermostObjects outermost;
    std::vector<AObject*> result;
    for (AObject* object : candidates) {
        if (outermost.cover(object->getParent()) || !criteria.accepts(*object)) continue;
        outermost.take(*object);
        result.push_back(object);
    }
    return result;
}

}  // namespace

TEST(Criteria, OfNoConditionOrOnlyOfKindsThatTakeNoPartAreEmpty) {
    const auto red = test::makeColor(_T("red"), RGB(255, 0, 0));
    ACondition plainEntry(_T("Oval"), _T("AOval"));
    AReferCondition refer(_T("red"), red.get());
    AObArray conditions;
    EXPECT_TRUE(Criteria(conditions).isEmpty());
    conditions.Add(&plainEntry);
    conditions.Add(&refer);
    EXPECT_TRUE(Criteria(conditions).isEmpty());
    AObjectCondition object(_T("Oval"), _T("AOval"));
    conditions.Add(&object);
    EXPECT_FALSE(Criteria(conditions).isEmpty());
}

TEST(Criteria, OneKindIsAlternativesSeveralKindsHoldTogether) {
    Scene scene;
    ALayer* layer = scene.layer();
    AObject* redOval = scene.filled(layer, _T("AOval"), 0xff0000, "red oval");
    AObject* blueOval = scene.filled(layer, _T("AOval"), 0x0000ff, "blue oval");
    AObject* redText = scene.filled(layer, _T("AText"), 0xff0000, "red text");
    AObject* redFan = scene.filled(layer, _T("AFan"), 0xff0000, "red fan");
    const std::vector<AObject*> all{redOval, blueOval, redText, redFan};
    AObjectCondition ovals(_T("Oval"), _T("AOval"));
    AObjectCondition texts(_T("Text"), _T("AText"));
    AFillCondition red(_T("red"), redOval->getBrush()->getBrushItem());
    EXPECT_EQ(matched({&ovals, &texts}, all), (std::vector<AObject*>{redOval, blueOval, redText}));
    EXPECT_EQ(matched({&ovals, &texts, &red}, all), (std::vector<AObject*>{redOval, redText}));
}

TEST(Criteria, AContainerIsTakenWithoutWhatItHolds) {
    Scene scene;
    ALayer* layer = scene.layer();
    AParent* outer = scene.addParent(layer, _T("AGroup"), "outer");
    AParent* inner = scene.addParent(outer, _T("AGroup"), "inner");
    AObject* oval = scene.add(inner, _T("AOval"), "oval");
    AObject* beside = scene.add(layer, _T("AOval"), "beside");
    AFillCondition none(_T("No fill"), nullptr);
    EXPECT_EQ(matched({&none}, {outer, beside, inner, oval}), (std::vector<AObject*>{outer, beside}));
    EXPECT_EQ(matched({&none}, {beside, oval}), (std::vector<AObject*>{beside, oval}));
}

// Layers are no candidates; whoever asks about one gets what the conditions themselves say.
TEST(Criteria, ALayerIsOfItsOwnClassAndEndsTheSearchForEffects) {
    Scene scene;
    ALayer* layer = scene.layer();
    AObject* oval = scene.add(layer, _T("AOval"));
    ALayerCondition drawing(_T("Drawing"), _T("ALayer"));
    AEffectCondition layers(_T("Drawing"), _T("ALayer"));
    for (AObject* one : std::initializer_list<AObject*>{layer, oval}) {
        EXPECT_TRUE(drawing.isMatch(one));
        EXPECT_EQ(matched({&drawing}, {one}), std::vector<AObject*>{one});
        EXPECT_FALSE(layers.isMatch(one));
        EXPECT_EQ(matched({&layers}, {one}), std::vector<AObject*>{});
    }
}

TEST(Criteria, APenThatDrawsNothingIsNoStroke) {
    Scene scene;
    const auto red = test::makeColor(_T("red"), RGB(255, 0, 0));
    const auto hidden = test::makePen(red.get(), APenItem::kStyleNone);
    APen pen(hidden.get()), empty(nullptr);
    AObject* oval = scene.add(scene.layer(), _T("AOval"));
    AStrokeCondition none(_T("No stroke"), nullptr, nullptr);
    AStrokeCondition reds(_T("red"), _T("APenItem"), red.get());
    for (APen* one : {&pen, &empty}) {
        oval->setPen(one);
        EXPECT_EQ(matched({&none}, {oval}), std::vector<AObject*>{oval});
        EXPECT_EQ(matched({&reds}, {oval}), std::vector<AObject*>{});
    }
}

TEST(Criteria, ADeepDrawingIsWalkedOnce) {
    Scene scene;
    constexpr int kDepth = 20000;
    std::vector<AObject*> all;
    AParent* at = scene.layer();
    for (int i = 0; i < kDepth; ++i) {
        at = scene.addParent(at, i == 5 ? _T("AShadow") : _T("AGroup"));
        all.push_back(at);
    }
    all.push_back(scene.add(at, _T("AOval"), "oval"));
    AEffectCondition shadow(_T("Shadow"), _T("AShadow"));
    ALayerCondition drawing(_T("Drawing"), _T("ALayer"));
    AObjectCondition ovals(_T("Oval"), _T("AOval"));
    EXPECT_EQ(namesOfObjects(matched({&shadow, &drawing, &ovals}, all)), Names{"oval"});
    EXPECT_EQ(matched({&shadow}, all), std::vector<AObject*>{all[5]});
}

TEST(Criteria, RandomDrawingsFollowThePlainLoops) {
    std::mt19937 random(8);
    for (unsigned seed = 0; seed < 60; ++seed) {
        RandomScene scene(1000 + seed);
        const plain::Gathered gathered = plain::gather(scene.view);
        plain::Pages pages = plain::createPages();
        plain::fillPages(pages, gathered);
        for (int round = 0; round < 20; ++round) {
            std::vector<ACondition*> conditions;
            const unsigned rate = 1 + random() % 12;
            for (const auto& page : pages) {
                if (random() % 2) continue;
                for (const auto& one : page->conditions) {
                    if (random() % rate == 0) conditions.push_back(one.get());
                }
            }
            AObArray array;
            for (ACondition* condition : conditions) array.Add(condition);
            ASSERT_EQ(namesOfObjects(matched(conditions, gathered.candidates)),
                      namesOfObjects(plain::match(conditions, gathered.candidates)))
                << seed << ", " << round;
        }
    }
}
