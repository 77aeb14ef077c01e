#include "checkpage/check_page_base.h"

#include <memory>
#include <typeinfo>
#include <unordered_set>

#include "checkpage/class_order.h"
#include "conditions/fill_condition.h"
#include "kzcore/document/object_paint.h"

namespace {

// True for a condition that has a class in common with no other, so that its way through the names need not
// be walked: a fill that is not a colour, of which every object brings its own entry, and "No fill".
bool combinesWithNone(const ACondition& condition) {
    if (typeid(condition) != typeid(AFillCondition)) return false;
    const auto& fill = static_cast<const AFillCondition&>(condition);
    return fill.getClassNames().IsEmpty() || (fill.brushItem && !colorOf(fill.brushItem));
}

// No window is redrawn while a tree is filled: a thousand items would be drawn a thousand times.
class WithoutRedraw {
public:
    explicit WithoutRedraw(ACheckTree& tree) : m_tree(tree) { m_tree.SetRedraw(FALSE); }
    ~WithoutRedraw() {
        m_tree.SetRedraw(TRUE);
        m_tree.Invalidate();
    }
    WithoutRedraw(const WithoutRedraw&) = delete;
    WithoutRedraw& operator=(const WithoutRedraw&) = delete;

private:
    ACheckTree& m_tree;
};

}  // namespace

ACheckPageBase::~ACheckPageBase() {
    for (ARoot* condition : conditions) delete condition;
}

void ACheckPageBase::addCondition(ACondition* newCondition) {
    fileCondition(newCondition);
}

ACondition* ACheckPageBase::fileCondition(ACondition* newCondition) {
    std::unique_ptr<ACondition> added(newCondition);
    ACondition* held = findCommonCondition(*added);
    if (!held) {
        appendCondition(added.release());
        return newCondition;
    }
    const int classes = held->getClassNames().GetSize();
    held->merge(*added);
    if (held->getClassNames().GetSize() != classes) ++m_revision;
    return held;
}

ACondition* ACheckPageBase::findCommonCondition(ACondition& newCondition) {
    if (combinesWithNone(newCondition)) return takeFreePath(newCondition), nullptr;
    int place = paths().find(newCondition.path);
    if (place < 0) return nullptr;
    const AString base = newCondition.path;
    for (int number = 1; place >= 0; ++number) {
        if (newCondition.hasCommonClass(*getCondition(place))) return getCondition(place);
        newCondition.path = checkpage::numberedPath(base, number);
        place = paths().find(newCondition.path);
    }
    return nullptr;
}

void ACheckPageBase::takeFreePath(ACondition& newCondition) {
    const AString base = newCondition.path;
    if (paths().find(base) >= 0) newCondition.path = checkpage::numberedPath(base, paths().nextFree(base));
}

ACondition* ACheckPageBase::findCondition(const AString& path) {
    const int place = paths().find(path);
    return place < 0 ? nullptr : getCondition(place);
}

void ACheckPageBase::appendCondition(ACondition* newCondition) {
    std::unique_ptr<ACondition> added(newCondition);
    paths().add(added->path, conditions.GetSize());
    conditions.Add(added.get());
    added.release();
}

void ACheckPageBase::replaceCondition(int place, ACondition* replacement) {
    delete conditions[place];
    conditions[place] = replacement;
}

// A page that is only shown after it was sorted needs none.
checkpage::PathIndex& ACheckPageBase::paths() {
    if (m_arePathsKnown) return m_paths;
    checkpage::PathIndex places;
    for (int place = 0; place < conditions.GetSize(); ++place) places.add(getCondition(place)->path, place);
    m_paths = std::move(places);
    m_arePathsKnown = true;
    return m_paths;
}

void ACheckPageBase::fillTree(int selectionOnly) {
    ACheckTree& tree = *getTree();
    if (!tree.GetSafeHwnd()) return;
    const WithoutRedraw quiet(tree);
    if (tree.IsWindowEnabled()) tree.updateCheckedData(checkedIds);
    tree.initImageLists();
    for (ARoot* entry : conditions) {
        const auto* condition = static_cast<ACondition*>(entry);
        if (showAll || (selectionOnly ? condition->inSelection : condition->inDocument))
            condition->addToTree(tree);
    }
    if (tree.IsWindowEnabled())
        tree.setChecks(checkedIds, 1, nullptr);
    else
        tree.setAllChecks(1);
    // Everything ends expanded, whatever the conditions asked for when they went in.
    tree.expandAll(1);
}

// A serial is compared with all of its 64 bits, so that one beyond 32 bits is never found among the data.
void ACheckPageBase::collect(ADWordArray& data, AObArray& out) const {
    const std::unordered_set<std::uint64_t> wanted(data.begin(), data.end());
    for (ARoot* entry : conditions) {
        if (wanted.contains(static_cast<ACondition*>(entry)->getSerial())) out.Add(entry);
    }
}

void ACheckPageBase::getCheckedConditions(AObArray& out, int stopAtChecked) {
    if (allTypes) {
        for (ARoot* condition : conditions) out.Add(condition);
        return;
    }
    ADWordArray data;
    if (getTree()->GetSafeHwnd()) getTree()->getCheckedData(data, stopAtChecked);
    collect(data, out);
}

void ACheckPageBase::getUncheckedConditions(AObArray& out, int stopAtUnchecked) {
    if (allTypes) return;
    ADWordArray data;
    if (getTree()->GetSafeHwnd()) getTree()->getUncheckedData(data, stopAtUnchecked);
    collect(data, out);
}

void ACheckPageBase::getItemDispInfo(NMHDR*, TVITEMW* item, LRESULT*) {
    ACheckTree& tree = *getTree();
    const bool expanded = (tree.GetItemState(item->hItem, TVIS_EXPANDED) & TVIS_EXPANDED) != 0;
    const int image = (expanded ? 4 : 2) + (tree.IsWindowEnabled() ? 0 : 1);
    if (item->mask & TVIF_IMAGE) item->iImage = image;
    if (item->mask & TVIF_SELECTEDIMAGE) item->iSelectedImage = image;
}

void ACheckPageBase::sortConditions() {
    AObArray sorted;
    for (ARoot* condition : checkpage::inClassOrder(conditions)) sorted.Add(condition);
    conditions = std::move(sorted);
    m_paths = {};
    m_arePathsKnown = false;
    ++m_revision;
}
