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

HTREEITEM ACheckTree::insertItem(const WCHAR* path, DWORD data) {
    const AItemPath items(path);
    const int last = items.getSegmentCount() - 1;
    HTREEITEM parent = nullptr;
    AString text;
    for (int i = 0; i < last; ++i) {
        items.getSegment(i, text);
        HTREEITEM group = findItemByText(text, parent);
        if (group)
            setImages(group, I_IMAGECALLBACK);
        else
            group = insertUnder(parent, text, I_IMAGECALLBACK, 0);
        if (!group) return nullptr;
        parent = group;
    }
    items.getSegment(last, text);
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
        const int check = getCheck(item);
        const ULONG_PTR value = getItemData(item);
        HTREEITEM child = nullptr;
        if (check == wanted && value != 0) {
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
    forEachItem(m_hWnd, [this, expand](HTREEITEM item) { Expand(item, expand ? TVE_EXPAND : TVE_COLLAPSE); });
    SelectSetFirstVisible(GetRootItem());
}
