#include "viewfilter/view_attr_filter.h"

#include <algorithm>
#include <typeinfo>
#include <utility>
#include <vector>

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

}  // namespace

// The lists and flags of a moment; the lists are shared with the filter.
class AViewAttrFilter::State : public AViewFilterState {
public:
    explicit State(const AViewAttrFilter& filter)
        : m_lists(filter.m_lists), m_uniform(filter.m_uniform), m_negative(filter.m_negative) {}

    bool isStateOf(const AViewFilter& filter) const override;
    std::unique_ptr<AViewFilter> make() const override;
    bool restore(AViewFilter& filter) const noexcept override;

private:
    Lists m_lists;
    BYTE m_uniform;
    BYTE m_negative;
};

namespace {

ConditionVersion withClones(const AObArray& sources) {
    ConditionVersion list;
    for (const ARoot* source : sources) {
        // What is no condition is not expected here, and left out.
        if (const auto* condition = dynamic_cast<const ACondition*>(source))
            list = list.with(std::shared_ptr<ACondition>(condition->clone()));
    }
    return list;
}

std::vector<const ACondition*> conditionsOf(const ConditionVersion& list) {
    std::vector<const ACondition*> conditions;
    conditions.reserve(list.size());
    visitDifferences(ConditionVersion(), list,
                     [&](ConditionVersion::Place, const ACondition*, const ACondition* condition) {
                         conditions.push_back(condition);
                         return true;
                     });
    return conditions;
}

// The same conditions in the same order.
bool isSameList(const ConditionVersion& a, const ConditionVersion& b) {
    if (a.isIdentical(b)) return true;
    return a.size() == b.size() &&
           std::ranges::equal(conditionsOf(a), conditionsOf(b), [](const ACondition* x, const ACondition* y) {
               return isSameCondition(*x, *y);
           });
}

}  // namespace

AViewAttrFilter::~AViewAttrFilter() = default;

void AViewAttrFilter::follow() const {
    m_shown.follow(m_lists.show);
    m_hidden.follow(m_lists.hide);
}

// All or nothing. The arrays follow at once, so that no question after a change that succeeded needs memory.
void AViewAttrFilter::become(Lists lists, BYTE uniform, BYTE negative) {
    std::swap(m_lists, lists);
    try {
        follow();
    } catch (...) {
        std::swap(m_lists, lists);
        throw;
    }
    m_uniform = uniform;
    m_negative = negative;
}

const AObArray& AViewAttrFilter::getShowConditions() const {
    follow();
    return m_showConditions;
}

const AObArray& AViewAttrFilter::getHideConditions() const {
    follow();
    return m_hideConditions;
}

// The uniform test comes before the null test: where everything gets one answer, nothing is asked.
int AViewAttrFilter::isVisible(AReferItem* item) {
    if (m_uniform) return !m_negative;
    if (!item) return 0;
    follow();
    item = unwrapped(item);
    if (anyMatch(m_shown.getIndex(), item)) return !m_negative;
    if (anyMatch(m_hidden.getIndex(), item)) return m_negative;
    return !m_negative;
}

void AViewAttrFilter::clearConditions() {
    become({}, m_uniform, m_negative);
}

void AViewAttrFilter::setUniform(int show) {
    become({}, 1, show == 0);
}

// In a uniform state there is nothing but the one condition to list, and in both modes the hide list is where
// it goes: in negative mode that is the list of what is shown.
void AViewAttrFilter::showCondition(const ACondition* condition) {
    if (!m_uniform)
        moveCondition(*condition, sideOfShown(), sideOfHidden());
    else if (m_negative)
        startLists(*condition);
}

void AViewAttrFilter::hideCondition(const ACondition* condition) {
    if (!m_uniform)
        moveCondition(*condition, sideOfHidden(), sideOfShown());
    else if (!m_negative)
        startLists(*condition);
}

void AViewAttrFilter::startLists(const ACondition& condition) {
    Lists lists;
    lists.hide = lists.hide.with(std::shared_ptr<ACondition>(condition.clone()));
    become(std::move(lists), 0, m_negative);
}

// The condition may be one of the lists: it lives until the new lists have taken their place.
void AViewAttrFilter::moveCondition(const ACondition& condition, Side to, Side from) {
    follow();
    const std::shared_ptr<ACondition> added(condition.clone());
    Lists lists = m_lists;
    const auto drop = [&](Side side, auto test) {
        listed(side).getIndex().findAbout(condition, [&](const ACondition& held) {
            if (test(held)) lists.*side = (lists.*side).without(listed(side).placeOf(held));
            return false;  // goes on to the next
        });
    };
    drop(from, [&](const ACondition& held) { return held.hasCommonClass(condition) != 0; });
    drop(to, [&](const ACondition& held) { return isSameCondition(held, *added); });
    lists.*to = (lists.*to).with(added);
    become(std::move(lists), m_uniform, m_negative);
}

void AViewAttrFilter::assign(const AObArray& show, const AObArray& hide, BYTE uniform, BYTE negative) {
    Lists lists;
    if (!uniform) {
        lists.show = withClones(show);
        lists.hide = withClones(hide);
    }
    become(std::move(lists), uniform != 0, negative != 0);
}

AViewAttrFilter* AViewAttrFilter::clone() const {
    auto copy = std::make_unique<AViewAttrFilter>();
    copy->assign(getShowConditions(), getHideConditions(), m_uniform, m_negative);
    return copy.release();
}

bool AViewAttrFilter::isSame(const AViewAttrFilter& other) const {
    return m_negative == other.m_negative && m_uniform == other.m_uniform &&
           isSameList(m_lists.show, other.m_lists.show) && isSameList(m_lists.hide, other.m_lists.hide);
}

std::unique_ptr<AViewFilterState> AViewAttrFilter::keep() const {
    return std::make_unique<State>(*this);
}

bool AViewAttrFilter::State::isStateOf(const AViewFilter& filter) const {
    const auto* ours = dynamic_cast<const AViewAttrFilter*>(&filter);
    return ours && m_negative == ours->m_negative && m_uniform == ours->m_uniform &&
           isSameList(m_lists.show, ours->m_lists.show) && isSameList(m_lists.hide, ours->m_lists.hide);
}

std::unique_ptr<AViewFilter> AViewAttrFilter::State::make() const {
    auto filter = std::make_unique<AViewAttrFilter>();
    restore(*filter);
    return filter;
}

// The arrays follow when the filter is asked next.
bool AViewAttrFilter::State::restore(AViewFilter& filter) const noexcept {
    auto* ours = dynamic_cast<AViewAttrFilter*>(&filter);
    if (!ours) return false;
    ours->m_lists = m_lists;
    ours->m_uniform = m_uniform;
    ours->m_negative = m_negative;
    return true;
}

void registerAttributeFilter() {
    registerViewFilter(
        typeid(AViewAttrFilter),
        {[](const AViewFilter& filter) -> AViewFilter* {
             return static_cast<const AViewAttrFilter&>(filter).clone();
         },
         [](const AViewFilter& a, const AViewFilter& b) {
             return static_cast<const AViewAttrFilter&>(a).isSame(static_cast<const AViewAttrFilter&>(b));
         },
         [](const AViewFilter& filter) { return static_cast<const AViewAttrFilter&>(filter).keep(); }});
}

void unregisterAttributeFilter() {
    unregisterViewFilter(typeid(AViewAttrFilter));
}
