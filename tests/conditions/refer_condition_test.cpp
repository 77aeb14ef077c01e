// Colour and brush items, and the references that are counted on them.
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <random>

#include "conditions/refer_condition.h"
#include "kzcore/document/object.h"
#include "support.h"

using test::cloneOf;
using test::Foreign;
using test::makeColor;
using test::makeGradient;
using test::makePen;
using test::makeSolid;
using test::Names;
using test::namesOf;

namespace {

constexpr COLORREF kRed = RGB(255, 0, 0);

struct ReferCondition : testing::Test {
    test::Held<AColorItem> red = makeColor(_T("red"), kRed);
    test::Held<AColorItem> same = makeColor(_T("red"), kRed);
    test::Held<AColorItem> otherName = makeColor(_T("rot"), kRed);
    test::Held<AColorItem> otherCase = makeColor(_T("Red"), kRed);
    test::Held<AColorItem> otherValue = makeColor(_T("red"), RGB(200, 0, 0));
    test::Held<AColorItem> spot = makeColor(_T("red"), kRed, _T("ASpotColorItem"));
    test::Held<AColorItem> equalSpot = makeColor(_T("red"), kRed, _T("ASpotColorItem"));
    test::Held<ASolidBrushItem> solid = makeSolid(red.get());
    test::Held<AGradientBrushItem> gradient = makeGradient(_T("g"));
    test::Held<AGradientBrushItem> gradientAgain = makeGradient(_T("g"));
    test::Held<AGradientBrushItem> unnamed = makeGradient(_T(""));
    test::Held<APenItem> pen = makePen(red.get());
    Foreign foreign{_T("ARGBColorItem")};

    const std::vector<std::pair<std::string, AReferItem*>> items{
        {"red", red.get()},
        {"same", same.get()},
        {"otherName", otherName.get()},
        {"otherCase", otherCase.get()},
        {"otherValue", otherValue.get()},
        {"spot", spot.get()},
        {"equalSpot", equalSpot.get()},
        {"solid", solid.get()},
        {"gradient", gradient.get()},
        {"gradientAgain", gradientAgain.get()},
        {"unnamed", unnamed.get()},
        {"pen", pen.get()},
    };

    Names acceptedBy(const ACondition& condition) {
        Names accepted;
        for (const auto& [name, item] : items) {
            if (condition.isMatch(item)) accepted.push_back(name);
        }
        if (condition.isMatch(&foreign)) accepted.emplace_back("foreign");
        EXPECT_FALSE(condition.isMatch(nullptr));
        AObject oval(*findClass(_T("AOval")));
        EXPECT_FALSE(condition.isMatch(&oval));
        return accepted;
    }
};

// Tells when it goes.
class Watched : public AColorItem {
public:
    Watched(bool& gone)
        : AColorItem(*findClass(_T("ARGBColorItem")), _T("red"), {1, 0, 0, 0}, kRed), m_gone(gone) {}

protected:
    ~Watched() override { m_gone = true; }

private:
    bool& m_gone;
};

// An item whose equality test says the same of every item.
class Opinionated : public AReferItem {
public:
    Opinionated(const WCHAR* name, int equal)
        : AReferItem(*findClass(_T("APatternBrushItem")), name), m_equal(equal) {}
    int isEqual(const AReferItem*) const override { return m_equal; }

private:
    int m_equal;
};
test::Held<Opinionated> makeOpinionated(const WCHAR* name, int equal) {
    return test::Held<Opinionated>(new Opinionated(name, equal));
}

}  // namespace

TEST_F(ReferCondition, TheVerySameItemIsNotCompared) {
    const auto item = makeOpinionated(_T("a"), 0);
    const AReferCondition condition(nullptr, item.get());
    EXPECT_TRUE(condition.isMatch(item.get()));
    EXPECT_TRUE(condition.hasCommonClass(AReferCondition(nullptr, item.get())));
}

TEST_F(ReferCondition, ItsOwnItemIsAskedAndOnlyForItemsOfTheSameName) {
    struct Case {
        const WCHAR* mine;
        int equal;
        const WCHAR* others;
        BOOL matches;
    };
    const Case cases[] = {
        {_T("a"), 1, _T("a"), TRUE}, {_T("a"), 0, _T("a"), FALSE}, {_T("a"), 1, _T("A"), FALSE},
        {_T(""), 1, _T(""), TRUE},   {_T(""), 1, _T("a"), FALSE},  {_T("a"), 1, _T(""), FALSE},
    };
    for (const Case& test : cases) {
        const auto mine = makeOpinionated(test.mine, test.equal);
        const auto other = makeOpinionated(test.others, !test.equal);
        const AReferCondition condition(nullptr, mine.get());
        EXPECT_EQ(condition.isMatch(other.get()), test.matches) << &test - cases;
        EXPECT_EQ(condition.hasCommonClass(AReferCondition(nullptr, other.get())), test.matches)
            << &test - cases;
    }
}

TEST_F(ReferCondition, AClassThatIsNotTheItemsOwnAcceptsOnlyWhatTheItemIsEqualTo) {
    AReferCondition condition(nullptr, red.get());
    condition.merge(AReferCondition(nullptr, _T("ASpotColorItem")));
    EXPECT_EQ(acceptedBy(condition), (Names{"red", "same"}));
}

TEST_F(ReferCondition, AClassAcceptsEveryItemOfIt) {
    EXPECT_EQ(acceptedBy(AReferCondition(_T("a"), _T("ARGBColorItem"))),
              (Names{"red", "same", "otherName", "otherCase", "otherValue", "foreign"}));
    EXPECT_EQ(acceptedBy(AReferCondition(_T("a"), _T("AGradientBrushItem"))),
              (Names{"gradient", "gradientAgain", "unnamed"}));
    EXPECT_EQ(acceptedBy(AReferCondition(_T("a"), _T("APenItem"))), Names{"pen"});
    EXPECT_EQ(acceptedBy(AReferCondition(_T("a"), _T("argbcoloritem"))), Names{});
    EXPECT_EQ(acceptedBy(AReferCondition(_T("a"), _T(""))), Names{});
    EXPECT_EQ(acceptedBy(AReferCondition(_T("a"), static_cast<const WCHAR*>(nullptr))), Names{});
}

TEST_F(ReferCondition, AnItemAcceptsItselfAndEqualItemsOfItsName) {
    const std::map<std::string, Names> accepted{
        {"red", {"red", "same"}},
        {"same", {"red", "same"}},
        {"otherName", {"otherName"}},
        {"otherCase", {"otherCase"}},
        {"otherValue", {"otherValue"}},
        {"spot", {"spot", "equalSpot"}},
        {"equalSpot", {"spot", "equalSpot"}},
        {"solid", {"solid"}},
        {"gradient", {"gradient"}},
        {"gradientAgain", {"gradientAgain"}},
        {"unnamed", {"unnamed"}},
        {"pen", {"pen"}},
    };
    for (const auto& [name, item] : items)
        EXPECT_EQ(acceptedBy(AReferCondition(nullptr, item)), accepted.at(name)) << name;
}

TEST_F(ReferCondition, HasCommonClassOfItemsIsAsStrictAsMatching) {
    for (const auto& [name, item] : items) {
        const AReferCondition condition(nullptr, item);
        for (const auto& [otherItemsName, other] : items) {
            EXPECT_EQ(condition.hasCommonClass(AReferCondition(nullptr, other)) != 0,
                      condition.isMatch(other) != 0)
                << name << " and " << otherItemsName;
        }
    }
}

TEST_F(ReferCondition, HasCommonClassOfAClassAsksForAnotherClass) {
    const AReferCondition colors(_T("a"), _T("ARGBColorItem"));
    const AReferCondition one(_T("a"), red.get());
    EXPECT_TRUE(colors.hasCommonClass(AReferCondition(_T("b"), _T("ARGBColorItem"))));
    EXPECT_FALSE(colors.hasCommonClass(AReferCondition(_T("a"), _T("ASpotColorItem"))));
    EXPECT_FALSE(colors.hasCommonClass(one));
    EXPECT_FALSE(one.hasCommonClass(colors));
    EXPECT_FALSE(colors.hasCommonClass(ACondition(_T("a"), _T("ARGBColorItem")))) << "of another kind";
}

TEST_F(ReferCondition, ItHasTheClassOfItsItem) {
    const AReferCondition condition(nullptr, gradient.get());
    EXPECT_EQ(namesOf(condition), Names{"AGradientBrushItem"});
    EXPECT_EQ(condition.getReferItem(), gradient.get());
    EXPECT_EQ(condition.path.toUtf8(), "");
    const AReferCondition none(_T("a"), static_cast<AReferItem*>(nullptr));
    EXPECT_EQ(namesOf(none), Names{});
    EXPECT_EQ(none.getReferItem(), nullptr);
}

TEST_F(ReferCondition, ResetSetsPathClassAndItem) {
    AReferCondition condition(nullptr, static_cast<const WCHAR*>(nullptr));
    condition.inDocument = 1;
    condition.inSelection = 1;
    const std::uint64_t serial = condition.getSerial();
    condition.reset(_T("RGB Color/red"), red.get());
    EXPECT_EQ(condition.path.toUtf8(), "RGB Color/red");
    EXPECT_EQ(namesOf(condition), Names{"ARGBColorItem"});
    EXPECT_EQ(condition.getReferItem(), red.get());
    EXPECT_EQ(condition.inDocument, 0);
    EXPECT_EQ(condition.inSelection, 1);
    EXPECT_EQ(condition.getSerial(), serial);
    condition.reset(_T("Spot Color"), _T("ASpotColorItem"));
    EXPECT_EQ(condition.path.toUtf8(), "Spot Color");
    EXPECT_EQ(namesOf(condition), Names{"ASpotColorItem"});
    EXPECT_EQ(condition.getReferItem(), nullptr);
}

TEST_F(ReferCondition, ItsCloneMatchesAsItDoesAndConsumesASerial) {
    AReferCondition source(_T("RGB Color/red"), red.get());
    source.inDocument = 1;
    source.inSelection = 1;
    source.treeFlags = kTreeItemExpanded;
    const auto clone = cloneOf(source);
    EXPECT_EQ(typeid(*clone), typeid(AReferCondition));
    EXPECT_EQ(acceptedBy(*clone), (Names{"red", "same"}));
    EXPECT_EQ(clone->path.toUtf8(), "RGB Color/red");
    EXPECT_EQ(clone->getSerial(), source.getSerial());
    EXPECT_EQ(clone->inDocument, 1);
    EXPECT_EQ(clone->inSelection, 1);
    EXPECT_EQ(clone->treeFlags, 0u);
    EXPECT_EQ(ACondition(nullptr, nullptr).getSerial(), source.getSerial() + 2);
}

TEST_F(ReferCondition, TheCloneOfAClassConditionMatchesItsClass) {
    const auto clone = cloneOf(AReferCondition(_T("a"), _T("ASpotColorItem")));
    EXPECT_EQ(acceptedBy(*clone), (Names{"spot", "equalSpot"}));
}

TEST_F(ReferCondition, EveryConditionCountsOneReferenceWhileItHoldsTheItem) {
    AColorItem* const other = otherName.get();
    {
        AReferCondition condition(nullptr, same.get());
        EXPECT_EQ(same->getReferenceCount(), 2);
        {
            const auto clone = cloneOf(condition);
            const auto second = cloneOf(*clone);
            EXPECT_EQ(same->getReferenceCount(), 4);
        }
        EXPECT_EQ(same->getReferenceCount(), 2);
        condition.reset(nullptr, same.get());
        EXPECT_EQ(same->getReferenceCount(), 2) << "the same item again";
        condition.reset(nullptr, other);
        EXPECT_EQ(same->getReferenceCount(), 1);
        EXPECT_EQ(other->getReferenceCount(), 2);
        condition.reset(nullptr, _T("ARGBColorItem"));
        EXPECT_EQ(other->getReferenceCount(), 1);
        condition.reset(nullptr, _T("ARGBColorItem"));
        EXPECT_EQ(other->getReferenceCount(), 1) << "nothing left to release";
        condition.reset(nullptr, same.get());
        condition.reset(nullptr, static_cast<AReferItem*>(nullptr));
        EXPECT_EQ(same->getReferenceCount(), 1);
        condition.reset(nullptr, same.get());
        condition.merge(AReferCondition(nullptr, other));
        EXPECT_EQ(condition.getReferItem(), same.get()) << "merging keeps the condition's own item";
        EXPECT_EQ(other->getReferenceCount(), 1);
        condition.assignBase(AReferCondition(nullptr, other));
        EXPECT_EQ(condition.getReferItem(), same.get());
    }
    EXPECT_EQ(same->getReferenceCount(), 1);
    EXPECT_EQ(other->getReferenceCount(), 1);
}

TEST_F(ReferCondition, ACloneKeepsTheItemAliveWithoutItsDocument) {
    bool gone = false;
    auto* item = new Watched(gone);
    auto source = std::make_unique<AReferCondition>(nullptr, item);
    auto clone = cloneOf(*source);
    item->releaseReference();
    source.reset();
    ASSERT_FALSE(gone);
    EXPECT_EQ(acceptedBy(*clone), (Names{"red", "same"}));
    clone.reset();
    EXPECT_TRUE(gone);
}

TEST_F(ReferCondition, ResetToTheItemThatOnlyTheConditionHoldsKeepsIt) {
    bool gone = false;
    auto* item = new Watched(gone);
    AReferCondition condition(nullptr, item);
    item->releaseReference();
    condition.reset(_T("again"), item);
    ASSERT_FALSE(gone);
    EXPECT_EQ(condition.getReferItem(), item);
    condition.reset(_T("class"), item->getClassName());
    EXPECT_TRUE(gone);
    EXPECT_EQ(namesOf(condition), Names{"ARGBColorItem"});
}

TEST_F(ReferCondition, ResetToAnItemThatOnlyTheOldOneHoldsKeepsIt) {
    bool gone = false;
    auto* color = new Watched(gone);
    auto* brush = new ASolidBrushItem(color);
    color->releaseReference();
    AReferCondition condition(nullptr, brush);
    brush->releaseReference();
    condition.reset(nullptr, brush->getColorItem());
    ASSERT_FALSE(gone);
    EXPECT_EQ(condition.getReferItem()->getReferenceCount(), 1);
    EXPECT_EQ(acceptedBy(condition), (Names{"red", "same"}));
    condition.reset(nullptr, _T(""));
    EXPECT_TRUE(gone);
}

TEST_F(ReferCondition, RandomTakingAndDroppingNeverMiscounts) {
    std::mt19937 random(21);
    AReferItem* const pool[] = {red.get(), same.get(), solid.get(), gradient.get()};
    int before[4];
    for (std::size_t i = 0; i < 4; ++i) before[i] = pool[i]->getReferenceCount();
    std::vector<std::unique_ptr<ACondition>> held;
    for (int round = 0; round < 5000; ++round) {
        AReferItem* item = pool[random() % 4];
        auto* some =
            held.empty() ? nullptr : static_cast<AReferCondition*>(held[random() % held.size()].get());
        switch (random() % 6) {
            case 0:
                held.push_back(std::make_unique<AReferCondition>(nullptr, item));
                break;
            case 1:
                if (some) held.push_back(cloneOf(*some));
                break;
            case 2:
                if (some) some->reset(nullptr, item);
                break;
            case 3:
                if (some) some->reset(nullptr, _T("ARGBColorItem"));
                break;
            case 4:
                if (some) some->merge(AReferCondition(nullptr, item));
                break;
            default:
                if (some) held.erase(held.begin() + static_cast<std::ptrdiff_t>(random() % held.size()));
        }
        for (std::size_t i = 0; i < 4; ++i) {
            const auto holders = std::count_if(held.begin(), held.end(), [&](const auto& condition) {
                return static_cast<AReferCondition&>(*condition).getReferItem() == pool[i];
            });
            ASSERT_EQ(pool[i]->getReferenceCount(), before[i] + holders) << round;
        }
    }
    held.clear();
    for (std::size_t i = 0; i < 4; ++i) EXPECT_EQ(pool[i]->getReferenceCount(), before[i]);
}
