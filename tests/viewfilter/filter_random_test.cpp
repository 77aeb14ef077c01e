// Random filters and items: the indexed answers and the told loops agree.
#include <algorithm>
#include <random>

#include "conditions/fill_condition.h"
#include "support.h"

using namespace test;

namespace {

// Items whose comparisons are not the host's own: equal to everything, whatever it is.
class LooseItem : public AReferItem {
public:
    explicit LooseItem(const WCHAR* name) : AReferItem(*findClass(_T("ARGBColorItem")), name) {}
    int isEqual(const AReferItem*) const override { return 1; }
};
class LooseColor : public AColorItem {
public:
    explicit LooseColor(const WCHAR* name)
        : AColorItem(*findClass(_T("ACMYKColorItem")), name, {0.5F, 0, 0, 0}, RGB(1, 2, 3)) {}
    int isSameColor(const AColorItem*) const override { return 1; }
};

// A kind of reference that is not exactly AReferCondition: it matches what that does not.
class NotThis : public AReferCondition {
public:
    using AReferCondition::AReferCondition;
    ACondition* clone() const override {
        return new NotThis(AString(), const_cast<AReferItem*>(getReferItem()));
    }
    BOOL isMatch(ARoot* item) const override { return item && !AReferCondition::isMatch(item); }
};

// Shared, equal and differently classed colours, signed zeros, and what is no colour.
struct Pool {
    std::vector<Held<AReferItem>> items;
    std::vector<AReferItem*> referable;

    Pool() {
        const WCHAR* const names[] = {_T(""), _T("a"), _T("a name longer than short ones")};
        const COLORREF values[] = {RGB(0, 0, 0), RGB(255, 0, 0), RGB(254, 0, 0)};
        for (const AClassInfo& row : colorItemClasses()) {
            for (const WCHAR* name : names) {
                for (const COLORREF value : values) add(makeColor(name, value, row.name).release());
            }
        }
        for (int twice = 0; twice < 2; ++twice) {
            add(new AColorItem(*findClass(_T("AGrayColorItem")), _T("a"), {-0.0F, 0, 0, 0}, RGB(0, 0, 0)));
            add(new AGradientBrushItem(_T("a")));
            add(new APatternBrushItem(_T("b")));
            add(new LooseItem(_T("a")));
            add(new LooseColor(_T("a")));
            for (const COLORREF value : values) add(makeColor(_T(""), value).release());
        }
        const std::size_t plain = items.size();
        for (std::size_t i = 0; i < plain; i += 3) {
            auto* color = dynamic_cast<AColorItem*>(items[i].get());
            add(new ASolidBrushItem(color));
            add(new APenItem(APenItem::kStyleSolid, color, nullptr));
        }
        add(new ASolidBrushItem(nullptr));
    }
    void add(AReferItem* item) {
        items.emplace_back(item);
        referable.push_back(item);
    }
};

using List = std::vector<Condition>;

class Random {
public:
    explicit Random(unsigned seed) : m_engine(seed) {}
    unsigned below(std::size_t n) { return static_cast<unsigned>(m_engine() % n); }

    AReferItem* item() { return pool.referable[below(pool.referable.size())]; }
    Condition condition() {
        switch (below(12)) {
            case 0:
                return onClass(kClasses[below(std::size(kClasses))]);
            case 1: {
                auto classes = ofClasses<AReferCondition>({"AGrayColorItem", "APatternBrushItem"});
                return classes;
            }
            case 2:
                return std::make_unique<ACondition>(AString(), kClasses[below(std::size(kClasses))]);
            case 3:
                return std::make_unique<AFillCondition>(AString(), dynamic_cast<ABrushItem*>(item()));
            case 4:
                return below(4) ? on(item()) : std::make_unique<NotThis>(AString(), item());
            case 5:
                return below(4) ? on(item()) : std::make_unique<AllBut>(_T("ACMYKColorItem"), item());
            case 6: {  // an item's condition that accepts other classes than the item's
                Condition other = on(item());
                other->merge(*onClass(kClasses[below(std::size(kClasses))]));
                return other;
            }
            default:
                return on(item());
        }
    }

    List conditions(unsigned most) {
        List list;
        for (unsigned left = below(most + 1); left > 0; --left) list.push_back(condition());
        return list;
    }

    Pool pool;

private:
    static constexpr const WCHAR* kClasses[] = {_T("ARGBColorItem"), _T("ASpotColorItem"),
                                                _T("AGradientBrushItem"), _T("APenItem"), _T("a")};
    std::mt19937 m_engine;
};

::testing::AssertionResult answersAsTold(AViewAttrFilter& filter, Pool& pool) {
    for (AReferItem* item : pool.referable) {
        if (filter.isVisible(item) != plainlyVisible(filter, item)) {
            return ::testing::AssertionFailure() << item->getClassName().toUtf8() << ' '
                                                 << item->getName().toUtf8() << " in " << told(&filter);
        }
    }
    return ::testing::AssertionSuccess();
}

void assignLists(AViewAttrFilter& filter, const List& show, const List& hide, BYTE negative) {
    AObArray shown;
    AObArray hidden;
    for (const Condition& condition : show) shown.Add(condition.get());
    for (const Condition& condition : hide) hidden.Add(condition.get());
    filter.assign(shown, hidden, 0, negative);
}

// Whether a list that gets the clone would hold the same condition twice.
bool isTwice(const ACondition& held, const ACondition& clone) {
    if (typeid(held) != typeid(clone) || namesOf(held) != namesOf(clone)) return false;
    const auto* refers = dynamic_cast<const AReferCondition*>(&clone);
    return !refers || held.hasCommonClass(clone) || namesOf(held).empty();
}

}  // namespace

TEST(RandomFilter, AnswersAsThePlainLoopsDo) {
    Random random(41);
    for (int round = 0; round < 150; ++round) {
        const List show = random.conditions(7);
        const List hide = random.conditions(11);
        AViewAttrFilter filter;
        assignLists(filter, show, hide, static_cast<BYTE>(random.below(2)));
        ASSERT_TRUE(answersAsTold(filter, random.pool)) << "round " << round;
        ASSERT_EQ(filter.isVisible(nullptr), 0);
    }
}

TEST(RandomFilter, AnswersAsThePlainLoopsDoWhileItsListsChange) {
    Random random(42);
    for (int round = 0; round < 12; ++round) {
        AViewAttrFilter filter;
        if (round % 2) filter.setUniform(0);
        for (int step = 0; step < 60; ++step) {
            const Condition condition = random.condition();
            if (random.below(2))
                filter.showCondition(condition.get());
            else
                filter.hideCondition(condition.get());
            if (random.below(40) == 0) filter.clearConditions();
            ASSERT_TRUE(answersAsTold(filter, random.pool)) << "round " << round << ", step " << step;
        }
    }
}

// What leaves and what stays, by walking the lists as told.
TEST(RandomFilter, MovesConditionsAsThePlainWalkDoes) {
    Random random(43);
    for (int round = 0; round < 400; ++round) {
        const List show = random.conditions(5);
        const List hide = random.conditions(5);
        AViewAttrFilter filter;
        const bool negative = random.below(2) != 0;
        assignLists(filter, show, hide, negative);
        const Condition condition = random.condition();
        const bool shows = random.below(2) != 0;
        const bool toShowList = shows != negative;
        const AObArray& from = toShowList ? filter.getHideConditions() : filter.getShowConditions();
        const AObArray& to = toShowList ? filter.getShowConditions() : filter.getHideConditions();
        std::vector<const ARoot*> stay;
        for (const ARoot* held : from) {
            if (!dynamic_cast<const ACondition*>(held)->hasCommonClass(*condition)) stay.push_back(held);
        }
        const Condition clone = cloneOf(*condition);
        std::vector<const ARoot*> own;
        for (const ARoot* held : to) {
            if (!isTwice(dynamic_cast<const ACondition&>(*held), *clone)) own.push_back(held);
        }
        shows ? filter.showCondition(condition.get()) : filter.hideCondition(condition.get());
        ASSERT_EQ(std::vector<const ARoot*>(from.begin(), from.end()), stay) << "round " << round;
        ASSERT_EQ(std::vector<const ARoot*>(to.begin(), to.end() - 1), own) << "round " << round;
        const auto* added = dynamic_cast<const ACondition*>(to[to.GetSize() - 1]);
        ASSERT_EQ(namesOf(*added), namesOf(*condition));
        ASSERT_EQ(typeid(*added), typeid(*clone));
        ASSERT_TRUE(answersAsTold(filter, random.pool)) << "round " << round;
    }
}

TEST(RandomFilter, StaysRightWithManyConditionsThatComeAndGo) {
    AViewAttrFilter filter;
    std::vector<Held<AColorItem>> colors;
    for (unsigned i = 0; i < 600; ++i) colors.push_back(makeColor(_T(""), i * 7919));
    std::vector<bool> hidden(colors.size());
    Random random(44);
    for (int step = 0; step < 3000; ++step) {
        const unsigned at = random.below(colors.size());
        hidden[at] = random.below(3) != 0;
        const Condition condition = on(colors[at].get());
        hidden[at] ? filter.hideCondition(condition.get()) : filter.showCondition(condition.get());
        if (step % 100 != 99) continue;
        for (std::size_t i = 0; i < colors.size(); ++i)
            ASSERT_EQ(filter.isVisible(colors[i].get()) == 0, bool{hidden[i]}) << i << " after " << step;
    }
}
