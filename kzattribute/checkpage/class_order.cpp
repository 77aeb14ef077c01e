#include "checkpage/class_order.h"

#include <algorithm>
#include <array>
#include <unordered_map>

#include "conditions/class_tables.h"
#include "conditions/condition.h"

namespace checkpage {

namespace {

constexpr int kNoClass = -1;  // moves along with every class of the table
constexpr int kUnlisted = static_cast<int>(kObjectClasses.size());

int rankOf(const ACondition& condition) {
    static const auto ranks = [] {
        std::unordered_map<kzutil::WideView, int> byName;
        for (int rank = 0; rank < kUnlisted; ++rank)
            byName.emplace(kObjectClasses[static_cast<std::size_t>(rank)], rank);
        return byName;
    }();
    if (condition.getClassNames().IsEmpty()) return kNoClass;
    const auto found = ranks.find(condition.getClassNames()[0].view());
    return found == ranks.end() ? kUnlisted : found->second;
}

// Takes the conditions without a class out of the moved ones; in the order of the list, whose front is at the
// end of `moved`.
std::vector<ARoot*> takeClassless(std::vector<ARoot*>& moved) {
    std::vector<ARoot*> classless;
    const auto isClassless = [](ARoot* entry) {
        return static_cast<ACondition*>(entry)->getClassNames().IsEmpty();
    };
    std::copy_if(moved.rbegin(), moved.rend(), std::back_inserter(classless), isClassless);
    std::erase_if(moved, isClassless);
    return classless;
}

}  // namespace

// What has been moved to the front is kept the other way round, so that moving to the front is appending. In
// every pass but the first, the conditions without a class stand before those that the pass is about.
std::vector<ARoot*> inClassOrder(const AObArray& conditions) {
    std::array<std::vector<ARoot*>, kUnlisted> ofClass;
    std::vector<ARoot*> behind;
    std::vector<ARoot*> moved;
    bool anyClassless = false;
    for (ARoot* entry : conditions) {
        const int rank = rankOf(*static_cast<ACondition*>(entry));
        if (rank == kUnlisted)
            behind.push_back(entry);
        else if (rank == kNoClass || rank == kUnlisted - 1)
            moved.push_back(entry);  // the first pass
        else
            ofClass[static_cast<std::size_t>(rank)].push_back(entry);
        anyClassless = anyClassless || rank == kNoClass;
    }
    for (std::size_t rank = ofClass.size() - 1; rank-- > 0;) {
        if (anyClassless) {
            for (ARoot* entry : takeClassless(moved)) moved.push_back(entry);
        }
        moved.insert(moved.end(), ofClass[rank].begin(), ofClass[rank].end());
    }
    std::vector<ARoot*> sorted(moved.rbegin(), moved.rend());
    sorted.insert(sorted.end(), behind.begin(), behind.end());
    return sorted;
}

}  // namespace checkpage
