// ListedConditions: a version of a list as an array for everybody to read, with an index that answers for it.
// Follows from version to version by what differs between them.
#pragma once

#include <memory>
#include <vector>

#include "viewfilter/condition_index.h"
#include "viewfilter/condition_version.h"

class ListedConditions {
public:
    // The array gets the conditions, in their order; they belong to the version.
    explicit ListedConditions(AObArray& array) : m_array(array) {}

    // Raises bad_alloc, and is empty then until it follows again. Needs no memory for an empty version.
    void follow(const ConditionVersion& version) {
        if (!m_version.isIdentical(version)) turnInto(version);
    }

    const ConditionIndex& getIndex() const { return m_index; }
    // Of a condition of the array.
    ConditionVersion::Place placeOf(const ACondition& condition) const;

private:
    using Place = ConditionVersion::Place;

    void turnInto(const ConditionVersion& version);
    void takeDifferences(const ConditionVersion& version);
    void startAnew(const ConditionVersion& version);
    void remove(Place place, const ACondition& condition);
    void insert(Place place, ACondition& condition);
    void clear() noexcept;

    AObArray& m_array;
    std::vector<Place> m_places;  // side by side with the array
    ConditionIndex m_index;
    ConditionVersion m_version;
};
