#include "viewfilter/listed_conditions.h"

#include <algorithm>

namespace {

// From so many differences on it is cheaper to start anew than to move what lies behind each of them.
constexpr std::size_t kManyDifferences = 32;

}  // namespace

ConditionVersion::Place ListedConditions::placeOf(const ACondition& condition) const {
    const auto at = std::find(m_array.begin(), m_array.end(), &condition);
    return m_places[static_cast<std::size_t>(at - m_array.begin())];
}

void ListedConditions::turnInto(const ConditionVersion& version) {
    if (version.isEmpty()) {
        clear();
        m_version = version;
        return;
    }
    try {
        takeDifferences(version);
    } catch (...) {
        clear();
        m_version = ConditionVersion();
        throw;
    }
    m_version = version;
}

void ListedConditions::takeDifferences(const ConditionVersion& version) {
    struct Difference {
        Place place;
        const ACondition* gone;
        ACondition* come;
    };
    std::vector<Difference> differences;
    const bool isAll =
        visitDifferences(m_version, version, [&](Place place, const ACondition* gone, ACondition* come) {
            differences.push_back({place, gone, come});
            return differences.size() < kManyDifferences;
        });
    if (!isAll) return startAnew(version);
    for (const Difference& one : differences) {
        if (one.gone) remove(one.place, *one.gone);
        if (one.come) insert(one.place, *one.come);
    }
}

void ListedConditions::startAnew(const ConditionVersion& version) {
    clear();
    visitDifferences(ConditionVersion(), version, [&](Place place, const ACondition*, ACondition* come) {
        m_array.Add(come);
        m_places.push_back(place);
        m_index.add(*come);
        return true;
    });
}

void ListedConditions::remove(Place place, const ACondition& condition) {
    const auto at = std::ranges::lower_bound(m_places, place);
    m_array.RemoveAt(static_cast<int>(at - m_places.begin()));
    m_places.erase(at);
    m_index.remove(condition);
}

void ListedConditions::insert(Place place, ACondition& condition) {
    const auto at = std::ranges::lower_bound(m_places, place);
    m_array.InsertAt(static_cast<int>(at - m_places.begin()), &condition);
    m_places.insert(at, place);
    m_index.add(condition);
}

void ListedConditions::clear() noexcept {
    m_array.RemoveAll();
    m_places.clear();
    m_index.clear();
}
