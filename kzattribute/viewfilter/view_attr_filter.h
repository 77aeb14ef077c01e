// AViewAttrFilter: what a view shows, decided by lists of conditions on colours and brushes.
//
// state          | m_uniform | m_negative | lists | visible
// all shown      | 1         | 0          | empty | everything: how a filter is made
// none shown     | 1         | 1          | empty | nothing
// normal lists   | 0         | 0          |       | what matches a show condition, or no hide condition
// negative lists | 0         | 1          |       | what matches a hide condition, but no show condition
//
//     auto* filter = new AViewAttrFilter;
//     filter->hideCondition(&red);      // from all shown: everything but red
//     filter->setUniform(0);
//     filter->showCondition(&red);      // from none shown: red and nothing else
//     view->setViewFilter(filter);      // the view owns it now
//
// In negative lists every answer is inverted, so that the hide list holds what is shown. The show list wins
// over the hide list. Operations that run out of memory raise bad_alloc and leave the filter as it was.
#pragma once

#include <memory>

#include "conditions/condition.h"
#include "kzcore/view/view_filter.h"
#include "viewfilter/listed_conditions.h"

class AViewAttrFilter : public AViewFilter {
public:
    AViewAttrFilter() = default;
    AViewAttrFilter(const AViewAttrFilter&) = delete;  // see clone
    AViewAttrFilter& operator=(const AViewAttrFilter&) = delete;
    ~AViewAttrFilter() override;

    // Whether what is painted with the item is drawn: 1 or 0. A solid brush and a pen count by their
    // colour; without one, and as a pen of a gradient, they match nothing. Costs the same however many
    // colours are listed.
    //
    // Null is hidden, but visible to a filter that shows everything: it asks no further.
    int isVisible(AReferItem* item) override;

    // Deletes all conditions; the flags stay.
    void clearConditions();
    // Everything is shown (non-zero), or nothing.
    void setUniform(int show);
    // Makes visible what the condition matches, or hidden; the condition stays with the caller, the filter
    // takes a clone. Conditions that have a class in common with it leave the side that it is opposed to, and
    // the same condition leaves its own side: a filter never holds it twice.
    //
    // Does nothing while everything is visible (hidden): there is nothing to add to that.
    void showCondition(const ACondition* condition);
    void hideCondition(const ACondition* condition);
    // Takes clones of the conditions, unless uniform; the lists may be this filter's own.
    void assign(const AObArray& show, const AObArray& hide, BYTE uniform, BYTE negative);
    // To the caller.
    AViewAttrFilter* clone() const;

    // Whether the two are in the same state and list the same conditions in the same order. What a condition
    // carries for the check tree (path, serial, presence) does not count: it decides nothing that is seen.
    bool isSame(const AViewAttrFilter& other) const;

    // For undo: what the filter is now. Costs the same however many conditions it lists.
    std::unique_ptr<AViewFilterState> keep() const;

    const AObArray& getShowConditions() const;
    const AObArray& getHideConditions() const;
    bool isNegative() const { return m_negative != 0; }
    bool isUniform() const { return m_uniform != 0; }

private:
    class State;
    struct Lists {
        ConditionVersion hide;
        ConditionVersion show;  // behind the other, so that its conditions are deleted first
    };
    using Side = ConditionVersion Lists::*;

    Side sideOfShown() const { return m_negative ? &Lists::hide : &Lists::show; }
    Side sideOfHidden() const { return m_negative ? &Lists::show : &Lists::hide; }
    void startLists(const ACondition& condition);
    void moveCondition(const ACondition& condition, Side to, Side from);
    void become(Lists lists, BYTE uniform, BYTE negative);
    // Lets the arrays and their indexes follow the lists. Every answer starts with it: undo changes
    // the lists alone.
    void follow() const;
    ListedConditions& listed(Side side) const { return side == &Lists::show ? m_shown : m_hidden; }

    mutable AObArray m_showConditions;  // of ACondition, owned by m_lists
    mutable AObArray m_hideConditions;
    BYTE m_negative = 0;
    BYTE m_uniform = 1;
    Lists m_lists;
    mutable ListedConditions m_shown{m_showConditions};
    mutable ListedConditions m_hidden{m_hideConditions};
};

// Tells the host how to copy and compare these filters, which its undo needs; once for the loaded module.
// Raises bad_alloc.
void registerAttributeFilter();
void unregisterAttributeFilter();
