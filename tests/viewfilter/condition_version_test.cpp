// Versions of a list of conditions, compared with copies of the list.
#include <map>
#include <random>

#include "support.h"
#include "viewfilter/condition_version.h"

using namespace test;

namespace {

using Place = ConditionVersion::Place;
using Plain = std::map<Place, const ACondition*>;

std::shared_ptr<ACondition> condition() {
    return std::make_shared<ACondition>(AString(), _T("ARGBColorItem"));
}

Plain told(const ConditionVersion& version) {
    Plain conditions;
    visitDifferences(ConditionVersion(), version, [&](Place place, const ACondition* gone, ACondition* come) {
        EXPECT_EQ(gone, nullptr);
        conditions.emplace(place, come);
        return true;
    });
    return conditions;
}

}  // namespace

TEST(ConditionVersion, StaysWhatItIsWhenOthersAreMadeOfIt) {
    const ConditionVersion none;
    const auto a = condition();
    const auto b = condition();
    const ConditionVersion one = none.with(a);
    const ConditionVersion two = one.with(b);
    const ConditionVersion second = two.without(0);
    EXPECT_TRUE(none.isEmpty());
    EXPECT_EQ(told(one), (Plain{{0, a.get()}}));
    EXPECT_EQ(told(two), (Plain{{0, a.get()}, {1, b.get()}}));
    EXPECT_EQ(told(second), (Plain{{1, b.get()}}));
    EXPECT_EQ(two.size(), 2U);
    EXPECT_EQ(second.size(), 1U);
    EXPECT_EQ(second.without(1).size(), 0U);
}

TEST(ConditionVersion, IsItselfWithoutWhatIsNotThere) {
    const ConditionVersion one = ConditionVersion().with(condition());
    EXPECT_TRUE(one.without(1).isIdentical(one));
    EXPECT_TRUE(one.without(1'000'000).isIdentical(one));
    EXPECT_TRUE(ConditionVersion().without(0).isEmpty());
    EXPECT_TRUE(one.without(0).without(0).isEmpty());
}

TEST(ConditionVersion, DifferencesAreThoseOfPlainLists) {
    std::mt19937 random(std::random_device{}());
    std::vector<ConditionVersion> versions{ConditionVersion()};
    std::vector<Plain> plain{{}};
    Place next = 0;
    for (int i = 0; i < 2000; ++i) {
        ConditionVersion version = versions.back();
        Plain list = plain.back();
        if (random() % 3 != 0 || list.empty()) {
            const auto added = condition();
            version = version.with(added);
            list.emplace(next++, added.get());
        } else {
            const auto gone = std::next(list.begin(), static_cast<long>(random() % list.size()));
            version = version.without(gone->first);
            list.erase(gone);
        }
        ASSERT_EQ(version.size(), list.size());
        versions.push_back(version);
        plain.push_back(list);
        const std::size_t other = random() % versions.size();
        Plain rebuilt = plain[other];
        visitDifferences(versions[other], version,
                         [&](Place place, const ACondition* gone, ACondition* come) {
                             EXPECT_EQ(rebuilt.contains(place) ? rebuilt[place] : nullptr, gone);
                             rebuilt.erase(place);
                             if (come) rebuilt.emplace(place, come);
                             return true;
                         });
        ASSERT_EQ(rebuilt, list) << "from version " << other << " to " << i;
    }
    EXPECT_EQ(told(versions.back()), plain.back());
}

TEST(ConditionVersion, VisitingEndsWhenItIsToldTo) {
    ConditionVersion version;
    for (int i = 0; i < 100; ++i) version = version.with(condition());
    int visited = 0;
    EXPECT_FALSE(visitDifferences(ConditionVersion(), version,
                                  [&](Place, const ACondition*, ACondition*) { return ++visited < 7; }));
    EXPECT_EQ(visited, 7);
}
