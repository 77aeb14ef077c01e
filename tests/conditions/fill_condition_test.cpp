// Objects and brush items by their fill.
#include <gtest/gtest.h>

#include <map>

#include "conditions/fill_condition.h"
#include "conditions/stroke_condition.h"
#include "kzcore/document/object.h"
#include "support.h"

using test::cloneOf;
using test::Foreign;
using test::makeColor;
using test::makeGradient;
using test::makeSolid;
using test::Names;
using test::namesOf;

namespace {

constexpr COLORREF kRed = RGB(255, 0, 0);

// Every kind of fill, as brush items and as objects filled with them.
struct FillCondition : testing::Test {
    test::Held<AColorItem> redColor = makeColor(_T("red"), kRed);
    test::Held<AColorItem> sameColor = makeColor(_T("red"), kRed);
    test::Held<AColorItem> otherNameColor = makeColor(_T("rot"), kRed);
    test::Held<AColorItem> otherValueColor = makeColor(_T("red"), RGB(200, 0, 0));
    test::Held<AColorItem> spotColor = makeColor(_T("red"), kRed, _T("ASpotColorItem"));
    test::Held<AColorItem> otherCaseColor = makeColor(_T("Red"), kRed);
    test::Held<ASolidBrushItem> red = makeSolid(redColor.get());
    test::Held<ASolidBrushItem> again = makeSolid(redColor.get());
    test::Held<ASolidBrushItem> same = makeSolid(sameColor.get());
    test::Held<ASolidBrushItem> otherName = makeSolid(otherNameColor.get());
    test::Held<ASolidBrushItem> otherCase = makeSolid(otherCaseColor.get());
    test::Held<ASolidBrushItem> otherValue = makeSolid(otherValueColor.get());
    test::Held<ASolidBrushItem> spot = makeSolid(spotColor.get());
    test::Held<ASolidBrushItem> colorless = makeSolid(nullptr);
    test::Held<AGradientBrushItem> gradient = makeGradient(_T("red"));
    test::Held<AGradientBrushItem> gradientAgain = makeGradient(_T("red"));
    Foreign foreign{_T("ASolidBrushItem")};

    const std::vector<std::pair<std::string, ABrushItem*>> fills{
        {"red", red.get()},
        {"again", again.get()},
        {"same", same.get()},
        {"otherName", otherName.get()},
        {"otherCase", otherCase.get()},
        {"otherValue", otherValue.get()},
        {"spot", spot.get()},
        {"colorless", colorless.get()},
        {"gradient", gradient.get()},
        {"gradientAgain", gradientAgain.get()},
    };

    // The fills that the condition accepts, of objects and by themselves alike; "nothing" for the object
    // without fill, "empty" for the one whose fill has no brush item.
    Names acceptedBy(const ACondition& condition) {
        Names accepted;
        const auto ask = [&](const std::string& name, ABrush* fill) {
            AObject object(*findClass(_T("AOval")));
            object.setBrush(fill);
            const BOOL matches = condition.isMatch(&object);
            if (matches) accepted.push_back(name);
            return matches;
        };
        for (const auto& [name, item] : fills) {
            ABrush fill(item);
            EXPECT_EQ(condition.isMatch(item), ask(name, &fill)) << name;
        }
        ABrush empty(nullptr);
        ask("empty", &empty);
        ask("nothing", nullptr);
        EXPECT_FALSE(condition.isMatch(nullptr));
        EXPECT_FALSE(condition.isMatch(&foreign));
        EXPECT_FALSE(condition.isMatch(redColor.get()));
        return accepted;
    }
};

AFillCondition ofClass(const WCHAR* className) {
    AFillCondition condition(_T("Fill"), nullptr);
    condition.reset(_T("Fill"), className);
    return condition;
}

}  // namespace

TEST_F(FillCondition, NoFillAcceptsExactlyTheObjectsWithoutFill) {
    EXPECT_EQ(acceptedBy(AFillCondition(_T("No fill"), nullptr)), Names{"nothing"});
    AGroup group(*findClass(_T("AGroup")));
    EXPECT_TRUE(AFillCondition(_T("No fill"), nullptr).isMatch(&group)) << "a group has no fill of its own";
}

TEST_F(FillCondition, ABrushClassAcceptsAllItsItems) {
    EXPECT_EQ(acceptedBy(ofClass(_T("ASolidBrushItem"))),
              (Names{"red", "again", "same", "otherName", "otherCase", "otherValue", "spot", "colorless"}));
    EXPECT_EQ(acceptedBy(ofClass(_T("AGradientBrushItem"))), (Names{"gradient", "gradientAgain"}));
    EXPECT_EQ(acceptedBy(ofClass(_T("APatternBrushItem"))), Names{});
    EXPECT_EQ(acceptedBy(ofClass(_T("asolidbrushitem"))), Names{});
    EXPECT_EQ(acceptedBy(ofClass(_T(""))), Names{});
}

TEST_F(FillCondition, AColorClassAcceptsEverySolidFillOfIt) {
    EXPECT_EQ(acceptedBy(ofClass(_T("ARGBColorItem"))),
              (Names{"red", "again", "same", "otherName", "otherCase", "otherValue"}));
    EXPECT_EQ(acceptedBy(ofClass(_T("ASpotColorItem"))), Names{"spot"});
    EXPECT_EQ(acceptedBy(ofClass(_T("ACMYKColorItem"))), Names{});
}

TEST_F(FillCondition, OneFillAcceptsSolidFillsWhoseColorsHaveItsNameAndCompareEqual) {
    EXPECT_EQ(acceptedBy(AFillCondition(_T("red"), red.get())), (Names{"red", "again", "same"}));
    EXPECT_EQ(acceptedBy(AFillCondition(_T("red"), same.get())), (Names{"red", "again", "same"}));
    EXPECT_EQ(acceptedBy(AFillCondition(_T("red"), otherName.get())), Names{"otherName"});
    EXPECT_EQ(acceptedBy(AFillCondition(_T("red"), otherValue.get())), Names{"otherValue"});
    EXPECT_EQ(acceptedBy(AFillCondition(_T("red"), spot.get())), Names{"spot"});
}

TEST_F(FillCondition, AFillWithoutAColorAcceptsItselfAlone) {
    EXPECT_EQ(acceptedBy(AFillCondition(_T("red"), colorless.get())), Names{"colorless"});
    EXPECT_EQ(acceptedBy(AFillCondition(_T("red"), gradient.get())), Names{"gradient"});
}

TEST_F(FillCondition, AColorClassBesidesABrushItemAcceptsTheSolidFillsOfTheClassStill) {
    AFillCondition condition(_T("red"), gradient.get());
    condition.merge(ofClass(_T("ASpotColorItem")));
    EXPECT_EQ(acceptedBy(condition), (Names{"spot", "gradient"}));
}

TEST_F(FillCondition, ItHasTheClassOfItsBrushItem) {
    const AFillCondition solid(_T("red"), red.get());
    EXPECT_EQ(namesOf(solid), Names{"ASolidBrushItem"});
    EXPECT_EQ(solid.brushItem, red.get());
    EXPECT_EQ(solid.path.toUtf8(), "red");
    const AFillCondition none(_T("No fill"), nullptr);
    EXPECT_EQ(namesOf(none), Names{});
    EXPECT_EQ(none.brushItem, nullptr);
}

TEST_F(FillCondition, ResetTakesTheBrushItemAndItsClass) {
    AFillCondition condition(_T("a"), red.get());
    condition.inDocument = 1;
    condition.reset(_T("b"), gradient.get());
    EXPECT_EQ(condition.brushItem, gradient.get());
    EXPECT_EQ(namesOf(condition), Names{"AGradientBrushItem"});
    EXPECT_EQ(condition.path.toUtf8(), "b");
    EXPECT_EQ(condition.inDocument, 0);
    condition.reset(_T("c"), static_cast<ABrushItem*>(nullptr));
    EXPECT_EQ(condition.brushItem, nullptr);
    EXPECT_EQ(namesOf(condition), Names{});
}

TEST_F(FillCondition, ItCountsNoReference) {
    {
        AFillCondition condition(_T("a"), red.get());
        const AFillCondition copy(condition);
        const auto clone = cloneOf(condition);
        EXPECT_EQ(red->getReferenceCount(), 1);
        condition.reset(_T("a"), same.get());
        EXPECT_EQ(same->getReferenceCount(), 1);
    }
    EXPECT_EQ(red->getReferenceCount(), 1);
    EXPECT_EQ(same->getReferenceCount(), 1);
}

TEST_F(FillCondition, ACopyHasNoBrushItem) {
    const AFillCondition source(_T("red"), red.get());
    const AFillCondition copy(source);
    EXPECT_EQ(copy.brushItem, nullptr);
    EXPECT_EQ(copy.getSerial(), source.getSerial());
    EXPECT_EQ(namesOf(copy), Names{"ASolidBrushItem"});
}

TEST_F(FillCondition, ItsCloneIsAPlainEntryThatMatchesNothing) {
    for (ABrushItem* brush : {static_cast<ABrushItem*>(red.get()), static_cast<ABrushItem*>(nullptr)}) {
        const AFillCondition source(_T("Solid/RGB Color/red"), brush);
        const auto clone = cloneOf(source);
        EXPECT_EQ(typeid(*clone), typeid(ACondition));
        EXPECT_EQ(acceptedBy(*clone), Names{});
        EXPECT_EQ(clone->getSerial(), source.getSerial());
        EXPECT_EQ(namesOf(*clone), namesOf(source));
        EXPECT_EQ(clone->path.toUtf8(), "Solid/RGB Color/red");
    }
}

TEST_F(FillCondition, TwoFillsHaveAClassInCommonWhenTheirColorsAgree) {
    const std::map<std::string, Names> partners{
        {"red", {"red", "again", "same"}},
        {"again", {"red", "again", "same"}},
        {"same", {"red", "again", "same"}},
        {"otherName", {"otherName"}},
        {"otherCase", {"otherCase"}},
        {"otherValue", {"otherValue"}},
        {"spot", {"spot"}},
        // Not even with themselves: only colours are compared.
        {"colorless", {}},
        {"gradient", {}},
        {"gradientAgain", {}},
    };
    for (const auto& [name, item] : fills) {
        Names common;
        for (const auto& [partner, other] : fills) {
            if (AFillCondition(_T("a"), item).hasCommonClass(AFillCondition(_T("a"), other)))
                common.push_back(partner);
        }
        EXPECT_EQ(common, partners.at(name)) << name;
    }
}

TEST_F(FillCondition, WithoutABrushItemOnlyThoseWithoutOneHaveAClassInCommon) {
    const AFillCondition solids = ofClass(_T("ASolidBrushItem"));
    const AFillCondition one(_T("a"), red.get());
    EXPECT_TRUE(solids.hasCommonClass(ofClass(_T("ASolidBrushItem"))));
    EXPECT_FALSE(solids.hasCommonClass(ofClass(_T("AGradientBrushItem"))));
    EXPECT_FALSE(solids.hasCommonClass(one));
    EXPECT_FALSE(one.hasCommonClass(solids));
}

TEST_F(FillCondition, TwoNoFillEntriesHaveNothingInCommon) {
    EXPECT_FALSE(
        AFillCondition(_T("No fill"), nullptr).hasCommonClass(AFillCondition(_T("No fill"), nullptr)));
}

TEST_F(FillCondition, OtherKindsHaveNothingInCommonWithIt) {
    const AFillCondition solids = ofClass(_T("ASolidBrushItem"));
    EXPECT_FALSE(solids.hasCommonClass(ACondition(_T("Fill"), _T("ASolidBrushItem"))));
    EXPECT_FALSE(solids.hasCommonClass(AStrokeCondition(_T("Fill"), _T("ASolidBrushItem"), nullptr)));
    EXPECT_TRUE(ACondition(_T("Fill"), _T("ASolidBrushItem")).hasCommonClass(solids))
        << "the base asks no kind";
}

namespace {

// Notes whom it was compared with; equal to every colour.
class Asked : public AColorItem {
public:
    explicit Asked(const char* label)
        : AColorItem(*findClass(_T("ARGBColorItem")), _T("red"), {}, 0), m_label(label) {}
    int isSameColor(const AColorItem* other) const override {
        questions.push_back(std::string(m_label) + " whether " + static_cast<const Asked*>(other)->m_label);
        return 1;
    }
    static inline std::vector<std::string> questions;

private:
    const char* m_label;
};

}  // namespace

TEST(FillEquality, IsAskedOfTheConditionsOwnColor) {
    const test::Held<Asked> own(new Asked("own"));
    const test::Held<Asked> other(new Asked("other"));
    const auto ownBrush = makeSolid(own.get());
    const auto otherBrush = makeSolid(other.get());
    AFillCondition condition(_T(""), ownBrush.get());
    Asked::questions.clear();
    EXPECT_TRUE(condition.isMatch(otherBrush.get()));
    EXPECT_EQ(Asked::questions, Names{"own whether other"});
    Asked::questions.clear();
    EXPECT_TRUE(condition.hasCommonClass(AFillCondition(_T(""), otherBrush.get())));
    EXPECT_EQ(Asked::questions, Names{"own whether other"});
}
