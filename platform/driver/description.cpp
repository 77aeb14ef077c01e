#include "platform/driver/description.h"

#include "platform/driver/controls.h"
#include "platform/driver/dialog.h"

namespace driver {

namespace {

ControlDescription describeControl(HWND dialog, HWND control) {
    ControlDescription description;
    description.id = GetDlgCtrlID(control);
    description.className = classOf(control);
    description.text = captionOf(control);
    description.enabled = IsWindowEnabled(control) != FALSE;
    if (isCheckBox(control))
        description.checked = SendMessageW(control, BM_GETCHECK, 0, 0) == static_cast<LRESULT>(BST_CHECKED);
    GetWindowRect(control, &description.rect);
    MapWindowPoints(nullptr, dialog, reinterpret_cast<POINT*>(&description.rect), 2);
    return description;
}

int imageOf(HWND tree, HTREEITEM item) {
    TVITEMW record = {};
    record.mask = TVIF_IMAGE;
    record.hItem = item;
    SendMessageW(tree, TVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&record));
    return record.iImage;
}

std::vector<TreeItem> describeItems(HWND tree, HTREEITEM first) {
    std::vector<TreeItem> items;
    for (HTREEITEM item = first; item; item = nextSibling(tree, item)) {
        TreeItem& entry = items.emplace_back();
        entry.text = textOf(tree, item);
        entry.check = checkOf(tree, item);
        entry.image = imageOf(tree, item);
        entry.expanded = stateOf(tree, item, TVIS_EXPANDED) != 0;
        entry.children = describeItems(tree, firstChild(tree, item));
    }
    return items;
}

}  // namespace

DialogDescription Dialog::describe() const {
    requireOpen();
    DialogDescription description;
    description.title = textOf(m_handle);
    GetWindowRect(m_handle, &description.rect);
    if (const HWND tabs = tabsOf(m_handle)) {
        description.pages = titlesOf(tabs);
        const LRESULT shown = SendMessageW(tabs, TCM_GETCURSEL, 0, 0);
        if (shown >= 0 && shown < static_cast<LRESULT>(description.pages.size()))
            description.page = description.pages[static_cast<std::size_t>(shown)];
    }
    for (HWND control : visibleControls(m_handle))
        description.controls.push_back(describeControl(m_handle, control));
    return description;
}

std::vector<TreeItem> Dialog::tree() const {
    requireOpen();
    const HWND tree = visibleTree(m_handle);
    return tree ? describeItems(tree, firstItem(tree)) : std::vector<TreeItem>();
}

}  // namespace driver
