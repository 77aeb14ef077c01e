// What the View Filter dialog lists, and which of it opens ticked.
#include <algorithm>
#include <typeinfo>
#include <unordered_map>
#include <unordered_set>

#include "conditions/brush_names.h"
#include "conditions/refer_condition.h"
#include "kzcore/document/application.h"
#include "kzcore/document/object.h"
#include "kzcore/document/refer_item.h"
#include "kzcore/view/view.h"
#include "viewfilter/view_filter_dialog.h"

namespace {

constexpr unsigned kPaint = 0x2003;  // of getAllReferItems: the host's

std::unique_ptr<AReferCondition> emptyCondition() {
    return std::make_unique<AReferCondition>(AString(), static_cast<const WCHAR*>(nullptr));
}

AString displayStructure(const AString& className) {
    AString structure;
    if (AApplication* application = AApplication::GetApplication())
        application->getConfig().getClassDisplayStructure(className, structure, 1);
    return structure;
}

// An entry for all items of a class, not for one of them.
bool isClassEntry(const ACondition& condition) {
    const auto* refers = dynamic_cast<const AReferCondition*>(&condition);
    return refers && !refers->getReferItem();
}

DWORD dataOf(const ACondition& condition) {
    return static_cast<DWORD>(condition.getSerial());
}

}  // namespace

void AViewFilterDialog::addColorClasses() {
    AApplication* application = AApplication::GetApplication();
    if (!application) return;
    const AConfig& config = application->getConfig();
    for (int i = 0; i < config.getColorItemClassTableSize(); ++i) {
        const AString name = config.getColorItemClassNameByIndex(i);
        const AString path = displayStructure(name);
        if (!path.IsEmpty()) addClass(path, name);
    }
    const AString& solid = ASolidBrushItem::stgetClassName();
    AString brushes;
    AItemPath(displayStructure(solid)).getSegment(0, brushes);
    for (int i = 0; i < config.getDBClassTableSize(); ++i) {
        const AString name = config.getDBClassNameByIndex(i);
        if (config.getClassNameID(name, 1) == 0 || name.CompareNoCase(solid) == 0) continue;
        AItemPath path(displayStructure(name));
        AString category;
        path.getSegment(0, category);
        if (category.CompareNoCase(brushes) != 0) continue;
        path.removeFirstSegment();
        addClass(path, name);
    }
}

void AViewFilterDialog::addClass(const AString& path, const WCHAR* className) {
    auto condition = emptyCondition();
    condition->reset(path, className);
    addCondition(condition.release());
}

// What has been found out while the items of a document's objects are added: a million objects share a few
// items.
struct AViewFilterDialog::KnownItems {
    // Whether any entry is about a class; those that are have been marked. By the name's place: the class's.
    std::unordered_map<const AString*, bool> classes;
    // Items that would add nothing more.
    std::unordered_set<const ARoot*> items;
};

void AViewFilterDialog::addDocumentColors() {
    const ADocView* view = ADocView::GetActiveView();
    if (view && view->m_database) {
        KnownItems known;
        AObList objects(0, 10);
        AObList items(0, 10);
        view->m_database->getAllObjects(objects, 0);
        for (const ARoot* object : objects) {
            items.RemoveAll();
            static_cast<const AObject*>(object)->getAllReferItems(items, kPaint);
            for (ARoot* item : items) addReferItem(item, known);
        }
    }
    sortConditions();
}

// 1 when an entry is about the item's class. Every colour and brush that is offered takes a serial, also one
// whose entry is held already. A brush without a name is called after its entry's serial, and so gets an
// entry from every object that it paints.
int AViewFilterDialog::addReferItem(ARoot* offered, KnownItems& known) {
    if (known.items.contains(offered)) {
        ACondition::consumeSerials();
        return 1;
    }
    auto* item = dynamic_cast<AReferItem*>(offered);
    if (!item || !markClass(item->getClassName(), known)) return 0;
    AItemPath path(displayStructure(item->getClassName()));
    if (dynamic_cast<AColorItem*>(item)) {
        addItem(*item, path);
        known.items.insert(item);
    } else if (dynamic_cast<ABrushItem*>(item)) {
        path.removeFirstSegment();
        addItem(*item, path);
        if (!item->getName().IsEmpty()) known.items.insert(item);
    }
    return 1;
}

// True when any entry is about the class: all of them are then marked as used by the document. Asked once:
// entries added later are about classes that are marked, and are marked themselves.
bool AViewFilterDialog::markClass(const AString& className, KnownItems& known) {
    const auto [place, isNew] = known.classes.try_emplace(&className, false);
    if (!isNew) return place->second;
    for (ARoot* entry : getConditions()) {
        auto* condition = static_cast<ACondition*>(entry);
        if (!condition->hasClass(className)) continue;
        condition->inDocument = 1;
        place->second = true;
    }
    return place->second;
}

void AViewFilterDialog::addItem(AReferItem& item, AItemPath path) {
    auto condition = emptyCondition();
    const bool isBrush = dynamic_cast<ABrushItem*>(&item) != nullptr;
    path.appendSegment(isBrush ? conditions::nameForEntry(item, *condition) : item.getName());
    condition->reset(path, &item);
    condition->inDocument = 1;
    if (isBrush) condition->treeFlags |= kTreeItemExpanded;
    addCondition(condition.release());
}

void AViewFilterDialog::addCondition(ACondition* newCondition) {
    std::unique_ptr<ACondition> added(newCondition);
    const ACondition& appended = *added;
    if (isClassEntry(appended)) {
        if (ACondition* held = findCondition(added->path)) {
            m_index.remove(*held);
            held->merge(*added);
            return m_index.add(*held);
        }
    } else {
        const auto isCommon = [&](const ACondition& held) { return added->hasCommonClass(held) != 0; };
        // Where no entry at all has a class in common, none on the way through the names has: most often.
        if (typeid(appended) == typeid(AReferCondition) && !m_index.findAbout(*added, isCommon))
            takeFreePath(*added);
        else if (findCommonCondition(*added))
            return;
    }
    appendCondition(added.release());
    m_index.add(appended);
}

// Of a filter that shows nothing at all, everything opens ticked; of a negative one only what it excepts does
// not: what the lists mean beyond that cannot be told by ticks.
void AViewFilterDialog::loadFilter(const AViewAttrFilter* filter) {
    m_savedFilter.reset(filter ? filter->clone() : nullptr);
    checkAllItems();
    if (!filter || (filter->isUniform() && !filter->isNegative())) return;
    uncheck(filter->isNegative() ? filter->getShowConditions() : filter->getHideConditions());
}

void AViewFilterDialog::checkAllItems() {
    std::unordered_set<DWORD> checked(checkedIds.begin(), checkedIds.end());
    for (ARoot* entry : getConditions()) {
        const auto& condition = *static_cast<ACondition*>(entry);
        if (!isClassEntry(condition) && checked.insert(dataOf(condition)).second)
            checkedIds.Add(dataOf(condition));
    }
}

// For each exception every entry that has a class in common with it, in the order of the entries. What is no
// condition takes all ticks away.
void AViewFilterDialog::uncheck(const AObArray& exceptions) {
    std::unordered_map<const ACondition*, int> places;
    for (int place = 0; place < getConditions().GetSize(); ++place) places[getCondition(place)] = place;
    std::unordered_set<DWORD> unchecked;
    for (const ARoot* entry : exceptions) {
        const auto* exception = dynamic_cast<const ACondition*>(entry);
        if (!exception) {
            checkedIds.RemoveAll();
            continue;
        }
        std::vector<int> found;
        m_index.findAbout(*exception, [&](const ACondition& held) {
            if (held.hasCommonClass(*exception)) found.push_back(places.at(&held));
            return false;  // goes on to the next
        });
        std::ranges::sort(found);
        found.erase(std::unique(found.begin(), found.end()), found.end());
        for (const int place : found) {
            m_uncheckedIds.Add(dataOf(*getCondition(place)));
            unchecked.insert(dataOf(*getCondition(place)));
        }
    }
    ADWordArray left;
    for (const DWORD data : checkedIds) {
        if (!unchecked.contains(data)) left.Add(data);
    }
    checkedIds = std::move(left);
}
