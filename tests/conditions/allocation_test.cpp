// Conditions when memory runs out: no leak, no reference too many or too few, nothing half done.
#include <gtest/gtest.h>

#include <functional>
#include <new>

#include "conditions/class_tables.h"
#include "conditions/container_conditions.h"
#include "conditions/fill_condition.h"
#include "conditions/refer_condition.h"
#include "conditions/stroke_condition.h"
#include "kzcore/document/application.h"
#include "support.h"
#include "support/failing_new.h"

using test::makeColor;
using test::makeSolid;
using test::Names;
using test::namesOf;
using test::ofClasses;

namespace {

const AString kLongPath(_T("Solid/RGB Color/a colour with a name that does not fit into a string itself"));

// Runs the attempt with its first, second, … allocation failing, until it gets through; `check` after each
// failure. Returns how many allocations it takes.
int failEveryAllocation(const std::function<void()>& attempt, const std::function<void()>& check) {
    for (int n = 1;; ++n) {
        bool failed = false;
        {
            const AllocationFailure failing = failAllocation(n);
            try {
                attempt();
            } catch (const std::bad_alloc&) {
                failed = true;
            }
            if (!failing.happened()) return n - 1;
        }
        EXPECT_TRUE(failed) << "allocation " << n << " failed unnoticed";
        check();
    }
}

struct ConditionAllocation : testing::Test {
    AApplication application;
    test::Held<AColorItem> red = makeColor(_T("red"), RGB(255, 0, 0));
    test::Held<AColorItem> blue = makeColor(_T("blue"), RGB(0, 0, 255));
    test::Held<ASolidBrushItem> brush = makeSolid(blue.get());

    int redCount() const { return red->getReferenceCount(); }
    int blueCount() const { return blue->getReferenceCount(); }
};

}  // namespace

TEST_F(ConditionAllocation, ConstructorsThrowAndHoldNothing) {
    const std::function<std::unique_ptr<ACondition>()> constructors[] = {
        [] { return std::make_unique<ACondition>(kLongPath, _T("ASolidBrushItem")); },
        [] { return std::make_unique<AObjectCondition>(kLongPath, _T("ASolidBrushItem")); },
        [] { return std::make_unique<AEffectCondition>(kLongPath, _T("ASolidBrushItem")); },
        [] { return std::make_unique<ALayerCondition>(kLongPath, _T("ASolidBrushItem")); },
        [this] { return std::make_unique<AFillCondition>(kLongPath, brush.get()); },
        [this] { return std::make_unique<AStrokeCondition>(kLongPath, _T("APenItem"), red.get()); },
        [this] { return std::make_unique<AReferCondition>(kLongPath, red.get()); },
        [this] { return std::make_unique<AReferCondition>(kLongPath, _T("ARGBColorItem")); },
    };
    for (const auto& construct : constructors) {
        const int allocations =
            failEveryAllocation([&] { construct(); }, [this] { EXPECT_EQ(redCount(), 1); });
        EXPECT_GE(allocations, 3) << "object, path and class names";
        EXPECT_EQ(redCount(), 1);
        EXPECT_EQ(brush->getReferenceCount(), 1);
    }
}

TEST_F(ConditionAllocation, ClonesAndCopiesThrowAndHoldNothing) {
    const AReferCondition refer(kLongPath, red.get());
    const AFillCondition fill(kLongPath, brush.get());
    const std::function<void()> check = [this] { EXPECT_EQ(redCount(), 2); };
    for (const ACondition* source : std::initializer_list<const ACondition*>{&refer, &fill}) {
        EXPECT_GE(failEveryAllocation([&] { test::cloneOf(*source); }, check), 3);
        EXPECT_EQ(redCount(), 2);
    }
    EXPECT_GE(failEveryAllocation([&] { AFillCondition copy(fill); }, check), 2);
}

TEST_F(ConditionAllocation, ResetChangesEverythingOrNothing) {
    AReferCondition condition(kLongPath, red.get());
    condition.inDocument = 1;
    const AString newPath(_T("another path that is longer than a string holds in itself"));
    const std::function<void()> resets[] = {
        [&] { condition.reset(newPath, blue.get()); },
        [&] { condition.reset(newPath, _T("ASpotColorItem")); },
    };
    for (const auto& reset : resets) {
        condition.reset(kLongPath, red.get());
        condition.inDocument = 1;
        failEveryAllocation(reset, [&] {
            EXPECT_EQ(condition.path, kLongPath);
            EXPECT_EQ(namesOf(condition), Names{"ARGBColorItem"});
            EXPECT_EQ(condition.getReferItem(), red.get());
            EXPECT_EQ(condition.inDocument, 1);
            EXPECT_EQ(redCount(), 2);
            EXPECT_EQ(blueCount(), 2) << "its maker's and the brush's";
        });
        EXPECT_EQ(condition.path, newPath);
        EXPECT_EQ(redCount(), 1);
    }
    EXPECT_EQ(blueCount(), 2);
}

TEST_F(ConditionAllocation, ResetToASubKindKeepsTheOldOneWhenItFails) {
    bool threw = false;
    for (int n = 1;; ++n) {
        AObjectCondition condition(kLongPath, _T("AOval"));
        const AllocationFailure failing = failAllocation(n);
        try {
            condition.reset(_T("ABitmap"), kBitmapKinds[0].nameId, bitmapColorModelId);
            EXPECT_EQ(condition.expectedId, kBitmapKinds[0].nameId);
        } catch (const std::bad_alloc&) {
            threw = true;
            EXPECT_EQ(condition.classifier, nullptr);
            EXPECT_EQ(condition.expectedId, 0u);
            EXPECT_EQ(condition.path, kLongPath);
            EXPECT_EQ(namesOf(condition), Names{"AOval"});
        }
        if (!failing.happened()) {
            EXPECT_EQ(condition.path, _T("Bitmap/Black and White Bitmap"));
            break;
        }
    }
    EXPECT_TRUE(threw);
}

TEST_F(ConditionAllocation, AssigningTheBaseChangesEverythingOrNothing) {
    const auto source = ofClasses({"AVeryLongClassName", "AnotherLongClassName"});
    source->path = AItemPath(kLongPath);
    ACondition condition(_T("short"), _T("AOval"));
    const std::uint64_t serial = condition.getSerial();
    failEveryAllocation([&] { condition.assignBase(*source); },
                        [&] {
                            EXPECT_EQ(condition.getSerial(), serial);
                            EXPECT_EQ(condition.path, _T("short"));
                            EXPECT_EQ(namesOf(condition), Names{"AOval"});
                        });
    EXPECT_EQ(condition.getSerial(), source->getSerial());
}

TEST_F(ConditionAllocation, AMergeThatFailsLeavesNoDuplicates) {
    const auto other = ofClasses({"AVeryLongClassName", "AOval", "AnotherLongClassName"});
    other->inDocument = 1;
    const auto condition = ofClasses({"AOval"});
    failEveryAllocation([&] { condition->merge(*other); },
                        [&] {
                            const Names names = namesOf(*condition);
                            EXPECT_EQ(names.front(), "AOval");
                            EXPECT_LE(names.size(), 3u);
                            EXPECT_EQ(condition->inDocument, 0);
                        });
    EXPECT_EQ(namesOf(*condition), (Names{"AOval", "AVeryLongClassName", "AnotherLongClassName"}));
    EXPECT_EQ(condition->inDocument, 1);
}

TEST_F(ConditionAllocation, MatchingByClassNamesTakesNoMemory) {
    const AReferCondition colors(kLongPath, _T("ARGBColorItem"));
    const AReferCondition one(kLongPath, red.get());
    AFillCondition fills(kLongPath, nullptr);
    fills.reset(kLongPath, _T("ASolidBrushItem"));
    const AllocationFailure failing = failAllocation(1);
    EXPECT_TRUE(colors.isMatch(red.get()));
    EXPECT_FALSE(colors.isMatch(brush.get()));
    EXPECT_TRUE(one.isMatch(red.get()));
    EXPECT_FALSE(one.isMatch(blue.get())) << "another colour: the names are not asked";
    EXPECT_TRUE(fills.isMatch(brush.get()));
    EXPECT_TRUE(colors.hasClass(_T("ARGBColorItem")));
    EXPECT_FALSE(failing.happened());
}
