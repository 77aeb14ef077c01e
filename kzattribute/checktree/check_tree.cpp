#include "checktree/check_tree.h"

#include <algorithm>
#include <unordered_set>

#include "base/item_path.h"
#include "checktree/check_values.h"

using namespace checktree;

// While the pictures and the index are still there.
ACheckTree::~ACheckTree() {
    DestroyWindow();
}

bool ACheckTree::setItem(const TVITEMW& record) {
    m_ownChange = true;
    const BOOL done = SetItem(&record);
    m_ownChange = false;
    return done != 0;
}

void ACheckTree::setImages(HTREEITEM item, int image, int selectedImage) {
    TVITEMW record{};
    record.mask = TVIF_IMAGE | TVIF_SELECTEDIMAGE | TVIF_HANDLE;
    record.hItem = item;
    record.iImage = image;
    record.iSelectedImage = selectedImage;
    setItem(record);
}

HTREEITEM ACheckTree::insertUnder(HTREEITEM parent, const WCHAR* text, int image, DWORD data) {
    TVINSERTSTRUCTW record{};
    record.hParent = parent ? parent : TVI_ROOT;
    record.hInsertAfter = TVI_LAST;
    record.item.mask = TVIF_TEXT | TVIF_STATE | TVIF_IMAGE | TVIF_SELECTEDIMAGE | TVIF_PARAM;
    record.item.pszText = const_cast<WCHAR*>(text);
    record.item.state = stateOfCheck(kUnchecked, true);
    record.item.stateMask = kStateMask;
    record.item.iImage = image;
    record.item.iSelectedImage = image;
    record.item.lParam = static_cast<LPARAM>(data);
    m_ownChange = true;
    HTREEITEM item = InsertItem(&record);
    m_ownChange = false;
    if (item) index().inserted(item, parent, text);
    return item;
}

// Finds or makes the groups of a path that ends with a separator; null when one cannot be made. Entries come
// group by group, and while nothing else happens to the tree the groups are those of the path before.
HTREEITEM ACheckTree::groupOf(kzutil::WideView path) {
    if (m_areGroupsKnown && isWatched() && path == m_lastGroupPath) {
        for (HTREEITEM group : m_lastGroups) setImages(group, I_IMAGECALLBACK);
        return m_lastGroups.back();
    }
    m_areGroupsKnown = false;
    m_lastGroups.clear();
    HTREEITEM parent = nullptr;
    for (std::size_t start = 0; start < path.size();) {
        const std::size_t end = path.find(AItemPath::kSeparator, start);
        const AString text(path.substr(start, end - start));
        HTREEITEM group = findItemByText(text, parent);
        if (group)
            setImages(group, I_IMAGECALLBACK);
        else
            group = insertUnder(parent, text, I_IMAGECALLBACK, 0);
        if (!group) return nullptr;
        m_lastGroups.push_back(group);
        parent = group;
        start = end + 1;
    }
    m_lastGroupPath = path;
    m_areGroupsKnown = true;
    return parent;
}

HTREEITEM ACheckTree::insertItem(const WCHAR* path, DWORD data) {
    const kzutil::WideView items(path);
    const std::size_t groups = items.rfind(AItemPath::kSeparator) + 1;  // 0: none
    const AString text(items.substr(groups));
    HTREEITEM parent = nullptr;
    if (groups > 0 && !(parent = groupOf(items.substr(0, groups)))) return nullptr;
    HTREEITEM leaf = findItemByText(text, parent);
    if (!leaf) return insertUnder(parent, text, IsWindowEnabled() ? 0 : 1, data);
    TVITEMW record{};
    record.mask = TVIF_PARAM | TVIF_HANDLE;
    record.hItem = leaf;
    record.lParam = static_cast<LPARAM>(data);
    setItem(record);
    index().dataChanged();
    return leaf;
}

HTREEITEM ACheckTree::findItemByText(const WCHAR* text, HTREEITEM parent) {
    return index().findChild(parent, text);
}

HTREEITEM ACheckTree::findItemByData(DWORD data) {
    return index().findData(data);
}

// Asks the index only where it need not learn all items for the answer.
bool ACheckTree::hasChildren(HTREEITEM item) const {
    return isWatched() ? index().hasChildren(item) : GetChildItem(item) != nullptr;
}

int ACheckTree::getCheck(HTREEITEM item) const {
    return checkOfState(GetItemState(item, kStateMask));
}

void ACheckTree::setCheckImage(HTREEITEM item, int check) {
    TVITEMW record{};
    record.mask = TVIF_STATE | TVIF_HANDLE;
    record.hItem = item;
    record.state = stateOfCheck(check, IsWindowEnabled() != 0);
    record.stateMask = kStateMask;
    if (setItem(record)) index().checkChanged(item, checkOfState(record.state));
}

void ACheckTree::notifyCheck(HTREEITEM item, int checked) {
    if (m_checkCallback) m_checkCallback(this, item, checked, m_callbackValue);
}

void ACheckTree::setCheck(HTREEITEM item, int check) {
    const int target = check ? kChecked : kUnchecked;
    for (;;) {
        setCheckImage(item, target);
        notifyCheck(item, check ? 1 : 0);
        if (!index().allChildrenAre(item, target)) {
            for (HTREEITEM child = GetChildItem(item); child; child = GetNextSiblingItem(child)) {
                if (getCheck(child) != target) setCheck(child, check);
            }
        }
        HTREEITEM parent = GetParentItem(item);
        if (!parent || getCheck(parent) == target) return;
        if (!index().allChildrenAre(parent, target)) {
            for (; parent; parent = GetParentItem(parent)) setCheckImage(parent, kPartly);
            return;
        }
        item = parent;
    }
}

void ACheckTree::setAllChecks(int check) {
    for (HTREEITEM item = GetRootItem(); item; item = GetNextSiblingItem(item)) setCheck(item, check);
    notifyCheck(nullptr, 0);
}

int ACheckTree::isAllChecked() const {
    for (HTREEITEM item = GetRootItem(); item; item = GetNextSiblingItem(item)) {
        if (getCheck(item) != kChecked) return 0;
    }
    return 1;
}

void ACheckTree::setChecks(const ADWordArray& toCheck, int uncheckAllFirst, const ADWordArray* toUncheck) {
    if (uncheckAllFirst) setAllChecks(0);
    for (const DWORD data : toCheck) {
        if (HTREEITEM item = findItemByData(data)) setCheck(item, 1);
    }
    if (toUncheck) {
        for (const DWORD data : *toUncheck) {
            if (HTREEITEM item = findItemByData(data)) setCheck(item, 0);
        }
    }
    notifyCheck(nullptr, 0);
}

int ACheckTree::collectData(ADWordArray& data, int wanted, int stop) const {
    const int skipped = wanted == kChecked ? kUnchecked : kChecked;
    for (HTREEITEM item = GetRootItem(); item;) {
        const int check = isWatched() ? index().checkOf(item) : getCheck(item);
        const ULONG_PTR value = check == wanted ? getItemData(item) : 0;
        HTREEITEM child = nullptr;
        if (value != 0) {
            if (!stop) child = GetChildItem(item);
            if (!child) data.SetAtGrow(data.GetSize(), static_cast<DWORD>(value));
        } else if (check != skipped) {
            child = GetChildItem(item);
        }
        if (child) {
            item = child;
            continue;
        }
        // One level up only; see getCheckedData.
        HTREEITEM following = GetNextSiblingItem(item);
        if (!following) {
            const HTREEITEM parent = GetParentItem(item);
            following = parent ? GetNextSiblingItem(parent) : nullptr;
        }
        item = following;
    }
    return data.GetSize();
}

int ACheckTree::getCheckedData(ADWordArray& data, int stopAtChecked) const {
    return collectData(data, kChecked, stopAtChecked);
}

int ACheckTree::getUncheckedData(ADWordArray& data, int stopAtUnchecked) const {
    return collectData(data, kUnchecked, stopAtUnchecked);
}

void ACheckTree::updateCheckedData(ADWordArray& data) {
    if (!IsWindowEnabled()) return;
    ADWordArray kept;
    std::unordered_set<DWORD> known;
    for (const DWORD value : data) {
        HTREEITEM item = findItemByData(value);
        if (item && getCheck(item) != kChecked) continue;
        kept.Add(value);
        known.insert(value);
    }
    ADWordArray checked;
    getCheckedData(checked, 1);
    for (const DWORD value : checked) {
        if (known.insert(value).second) kept.Add(value);
    }
    data = kept;
}

void ACheckTree::expandAll(int expand) {
    for (HTREEITEM item = GetRootItem(); item;) {
        Expand(item, expand ? TVE_EXPAND : TVE_COLLAPSE);
        HTREEITEM following = hasChildren(item) ? GetChildItem(item) : nullptr;
        while (!following && item) {
            following = GetNextSiblingItem(item);
            if (!following) item = GetParentItem(item);
        }
        item = following;
    }
    SelectSetFirstVisible(GetRootItem());
}
