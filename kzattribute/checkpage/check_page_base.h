// ACheckPageBase: what a page or a dialog with a check tree and a list of conditions has in common.
//
//     class Page : public CPropertyPage, public ACheckPageBase { … ACheckTree* getTree() override; … };
//     page.addCondition(new AObjectCondition(_T("Oval"), _T("AOval")));  // takes it
//     page.fillTree(0);                        // what the document has; with showAll everything
//     page.getCheckedConditions(ticked, 1);    // what the user ticked; still the page's
//
// The deriving class forwards TVN_GETDISPINFO and TVN_SETDISPINFO to getItemDispInfo, or group items show no
// picture.
#pragma once

#include "checkpage/path_index.h"
#include "checktree/check_tree.h"
#include "conditions/condition.h"

class ACheckPageBase {
public:
    // Takes the condition and files it. Where the list holds one of the same path that has a class in common,
    // the held one takes in the new one, which is deleted; where it has none in common, the new one gets the
    // first name of path_1, path_2, … that is free or leads to a common class.
    virtual void addCondition(ACondition* newCondition);
    // The tree that the deriving class embeds.
    virtual ACheckTree* getTree() = 0;

    ACheckPageBase(const ACheckPageBase&) = delete;
    ACheckPageBase& operator=(const ACheckPageBase&) = delete;

    // In the order of their entries. Owned.
    const AObArray& getConditions() const { return conditions; }
    ACondition* getCondition(int place) const { return static_cast<ACondition*>(conditions[place]); }

    // Builds the tree anew from the conditions that the document, or with `selectionOnly` the selection,
    // makes use of. The checks stay: those of entries that are not shown are kept for later. Does nothing
    // while the tree has no window.
    void fillTree(int selectionOnly);
    // Append the conditions whose entries are checked (unchecked). With `stop`, a group that has a condition
    // stands for what is below it. While allTypes is set every condition counts as checked: appended is all of
    // the list, or nothing.
    void getCheckedConditions(AObArray& out, int stopAtChecked);
    void getUncheckedConditions(AObArray& out, int stopAtUnchecked);
    // Answers the tree's request for a group's picture: 4 when it is expanded, else 2; the next odd picture
    // while the tree is disabled.
    void getItemDispInfo(NMHDR* header, TVITEMW* item, LRESULT* result);
    // Puts the conditions into the order of the object class table. From the last class to the first, all of
    // the class are moved to the front, one after the other, so that each class ends up reversed; a condition
    // without a class moves along every time; those of other classes stay behind. Pages rely on exactly this
    // order.
    void sortConditions();
    // Puts a condition of the same path and classes into the place of another, which is deleted.
    void replaceCondition(int place, ACondition* replacement);
    // Adds the condition as addCondition does; the one that stands for it now, itself or one of the list.
    ACondition* fileCondition(ACondition* newCondition);
    // Grows when conditions change their places, or their classes by a merge.
    unsigned getRevision() const { return m_revision; }

protected:
    ACheckPageBase() = default;
    ~ACheckPageBase();

    // For deriving classes that file conditions by rules of their own. The first condition on the new one's
    // way through its names (path, path_1, path_2, …) that has a class in common with it; null when the way
    // ended at a free name, which the new one then has.
    ACondition* findCommonCondition(ACondition& newCondition);
    // For a new condition that has a class in common with none that is held: gives it the name at which its
    // way would end, without walking it.
    void takeFreePath(ACondition& newCondition);
    // Null when no condition has the path.
    ACondition* findCondition(const AString& path);
    // Takes a condition whose path is free.
    void appendCondition(ACondition* newCondition);

    int showAll = 0;
    int allTypes = 0;

private:
    checkpage::PathIndex& paths();
    void collect(ADWordArray& data, AObArray& out) const;

    AObArray conditions;

protected:
    ADWordArray checkedIds;  // serials of the entries that were checked when the tree was last asked

private:
    checkpage::PathIndex m_paths;  // through paths()
    bool m_arePathsKnown = true;
    unsigned m_revision = 0;
};
