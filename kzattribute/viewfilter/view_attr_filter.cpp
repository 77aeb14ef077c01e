#include "viewfilter/view_attr_filter.h"

#include <algorithm>
#include <typeinfo>
#include <utility>

#include "conditions/refer_condition.h"
#include "kzcore/document/refer_item.h"

namespace {

// A pen without a colour has nothing to match by, like a solid brush without one: null.
AReferItem* unwrapped(AReferItem* item) {
    if (const auto* solid = dynamic_cast<const ASolidBrushItem*>(item)) item = solid->getColorItem();
    if (const auto* pen = dynamic_cast<const APenItem*>(item)) item = pen->getColorItem();
    return item;
}

bool anyMatch(const ConditionIndex& index, AReferItem* item) {
    return item && index.anyMatch(*item);
}

// Whether one can stand for the other in whatever a filter does.
bool isSameCondition(const ACondition& a, const ACondition& b) {
    if (typeid(a) != typeid(b)) return false;
    if (!std::equal(a.getClassNames().begin(), a.getClassNames().end(), b.getClassNames().begin(),
                    b.getClassNames().end())) {
        return false;
    }
    const auto* first = dynamic_cast<const AReferCondition*>(&a);
    const auto* second = dynamic_cast<const AReferCondition*>(&b);
    if (!first || first->getReferItem() == second->getReferItem()) return true;
    return first->hasCommonClass(*second) != 0;
}

bool isSameElement(const ARoot* a, const ARoot* b) {
    return isSameCondition(dynamic_cast<const ACondition&>(*a), dynamic_cast<const ACondition&>(*b));
}

void deleteConditions(AObArray& conditions) noexcept {
    for (const ARoot* condition : conditions) delete condition;
    conditions.RemoveAll();
}

}  // namespace

struct AViewAttrFilter::Side {
    AObArray& conditions;
    ConditionIndex& index;

    // All or nothing.
    ACondition& append(std::unique_ptr<ACondition> condition) {
        conditions.Add(condition.get());
        try {
            index.add(*condition);
        } catch (...) {
            conditions.RemoveAt(conditions.GetSize() - 1);
            throw;
        }
        return *condition.release();
    }

    // What is no condition is not expected here, and left out.
    void appendClones(const AObArray& sources) {
        for (const ARoot* source : sources) {
            if (const auto* condition = dynamic_cast<const ACondition*>(source))
                append(std::unique_ptr<ACondition>(condition->clone()));
        }
    }

    // Takes a condition that the test accepts out of the list; null when there is none. Of those about the
    // given one, that is: see ConditionIndex::findAbout.
    template <class Test>
    std::unique_ptr<ACondition> takeAbout(const ACondition& condition, Test test) {
        auto* const found = const_cast<ACondition*>(index.findAbout(condition, test));
        if (!found) return nullptr;
        index.remove(*found);
        const auto at = std::find(conditions.begin(), conditions.end(), found);
        conditions.RemoveAt(static_cast<int>(at - conditions.begin()));
        return std::unique_ptr<ACondition>(found);
    }
};

AViewAttrFilter::~AViewAttrFilter() {
    clearConditions();
}

AViewAttrFilter::Side AViewAttrFilter::showSide() {
    return {m_showConditions, m_showIndex};
}

AViewAttrFilter::Side AViewAttrFilter::hideSide() {
    return {m_hideConditions, m_hideIndex};
}

// The uniform test deliberately comes before the null test.
int AViewAttrFilter::isVisible(AReferItem* item) {
    if (m_uniform) return !m_negative;
    if (!item) return 0;
    item = unwrapped(item);
    if (anyMatch(m_showIndex, item)) return !m_negative;
    if (anyMatch(m_hideIndex, item)) return m_negative;
    return !m_negative;
}

void AViewAttrFilter::clearConditions() {
    m_showIndex.clear();
    m_hideIndex.clear();
    deleteConditions(m_showConditions);
    deleteConditions(m_hideConditions);
}

void AViewAttrFilter::setUniform(int show) {
    m_uniform = 1;
    m_negative = show == 0;
    clearConditions();
}

// In a uniform state there is nothing but the one condition to list, and in both modes the hide list is where
// it goes: in negative mode that is the list of what is shown.
void AViewAttrFilter::showCondition(const ACondition* condition) {
    if (!m_uniform)
        moveCondition(*condition, m_negative ? hideSide() : showSide(), m_negative ? showSide() : hideSide());
    else if (m_negative)
        startLists(*condition);
}

void AViewAttrFilter::hideCondition(const ACondition* condition) {
    if (!m_uniform)
        moveCondition(*condition, m_negative ? showSide() : hideSide(), m_negative ? hideSide() : showSide());
    else if (!m_negative)
        startLists(*condition);
}

void AViewAttrFilter::startLists(const ACondition& condition) {
    std::unique_ptr<ACondition> copy(condition.clone());
    clearConditions();
    hideSide().append(std::move(copy));
    m_uniform = 0;
}

// The clone first, as only that can fail. In which order conditions leave does not show: the others keep
// theirs.
void AViewAttrFilter::moveCondition(const ACondition& condition, Side to, Side from) {
    const ACondition& added = to.append(std::unique_ptr<ACondition>(condition.clone()));
    std::unique_ptr<ACondition> itself;  // the condition may be one of the lists: it goes last
    const auto drop = [&](Side side, auto test) {
        while (std::unique_ptr<ACondition> taken = side.takeAbout(condition, test)) {
            if (taken.get() == &condition) itself = std::move(taken);
        }
    };
    drop(from, [&](const ACondition& held) { return held.hasCommonClass(condition) != 0; });
    drop(to, [&](const ACondition& held) { return &held != &added && isSameCondition(held, added); });
}

void AViewAttrFilter::assign(const AObArray& show, const AObArray& hide, BYTE uniform, BYTE negative) {
    AViewAttrFilter next;
    next.m_uniform = uniform != 0;
    next.m_negative = negative != 0;
    if (!next.m_uniform) {
        next.showSide().appendClones(show);
        next.hideSide().appendClones(hide);
    }
    std::swap(m_showConditions, next.m_showConditions);
    std::swap(m_hideConditions, next.m_hideConditions);
    std::swap(m_showIndex, next.m_showIndex);
    std::swap(m_hideIndex, next.m_hideIndex);
    m_negative = next.m_negative;
    m_uniform = next.m_uniform;
}

AViewAttrFilter* AViewAttrFilter::clone() const {
    auto copy = std::make_unique<AViewAttrFilter>();
    copy->assign(m_showConditions, m_hideConditions, m_uniform, m_negative);
    return copy.release();
}

bool AViewAttrFilter::isSame(const AViewAttrFilter& other) const {
    const auto sameList = [](const AObArray& a, const AObArray& b) {
        return std::equal(a.begin(), a.end(), b.begin(), b.end(), isSameElement);
    };
    return m_negative == other.m_negative && m_uniform == other.m_uniform &&
           sameList(m_showConditions, other.m_showConditions) &&
           sameList(m_hideConditions, other.m_hideConditions);
}

void registerAttributeFilter() {
    registerViewFilter(
        typeid(AViewAttrFilter),
        {[](const AViewFilter& filter) -> AViewFilter* {
             return static_cast<const AViewAttrFilter&>(filter).clone();
         },
         [](const AViewFilter& a, const AViewFilter& b) {
             return static_cast<const AViewAttrFilter&>(a).isSame(static_cast<const AViewAttrFilter&>(b));
         }});
}

void unregisterAttributeFilter() {
    unregisterViewFilter(typeid(AViewAttrFilter));
}
