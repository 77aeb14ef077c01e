#include "platform/afx/tree_ctrl.h"

#include <cstring>

namespace {

LPARAM parameter(const void* pointer) {
    return reinterpret_cast<LPARAM>(pointer);
}

TVITEMW record_of(HTREEITEM item, UINT mask) {
    TVITEMW record = {};
    record.mask = mask | TVIF_HANDLE;
    record.hItem = item;
    return record;
}

}  // namespace

BOOL CTreeCtrl::Create(DWORD style, const RECT& rect, CWnd* parent, UINT id) {
    const INITCOMMONCONTROLSEX classes = {sizeof(classes), ICC_TREEVIEW_CLASSES};
    return InitCommonControlsEx(&classes) && CWnd::Create(WC_TREEVIEWW, nullptr, style, rect, parent, id);
}

HTREEITEM CTreeCtrl::InsertItem(TVINSERTSTRUCTW* insert) const {
    return reinterpret_cast<HTREEITEM>(SendMessage(TVM_INSERTITEMW, 0, parameter(insert)));
}

HTREEITEM CTreeCtrl::InsertItem(LPCWSTR text, HTREEITEM parent, HTREEITEM after) const {
    TVINSERTSTRUCTW insert = {};
    insert.hParent = parent;
    insert.hInsertAfter = after;
    insert.item.mask = TVIF_TEXT;
    insert.item.pszText = const_cast<LPWSTR>(text);
    return InsertItem(&insert);
}

BOOL CTreeCtrl::DeleteItem(HTREEITEM item) const {
    return SendMessage(TVM_DELETEITEM, 0, parameter(item)) != 0;
}

BOOL CTreeCtrl::GetItem(TVITEMW* record) const {
    return SendMessage(TVM_GETITEMW, 0, parameter(record)) != 0;
}

BOOL CTreeCtrl::SetItem(const TVITEMW* record) const {
    return SendMessage(TVM_SETITEMW, 0, parameter(record)) != 0;
}

BOOL CTreeCtrl::SetItem(HTREEITEM item, UINT mask, LPCWSTR text, int image, int selectedImage, UINT state,
                        UINT stateMask, LPARAM data) const {
    TVITEMW record = record_of(item, mask);
    record.pszText = const_cast<LPWSTR>(text);
    record.iImage = image;
    record.iSelectedImage = selectedImage;
    record.state = state;
    record.stateMask = stateMask;
    record.lParam = data;
    return SetItem(&record);
}

std::basic_string<WCHAR> CTreeCtrl::GetItemText(HTREEITEM item) const {
    // The message cuts without a word: a text that fills the buffer may be longer.
    for (std::size_t size = 128;; size *= 2) {
        std::basic_string<WCHAR> text(size, WCHAR());
        TVITEMW record = record_of(item, TVIF_TEXT);
        record.pszText = text.data();
        record.cchTextMax = static_cast<int>(size);
        if (!GetItem(&record)) return {};
        const LPWSTR answer = record.pszText;
        const std::size_t length = std::char_traits<WCHAR>::length(answer);
        if (length + 1 < size) return {answer, length};
    }
}

BOOL CTreeCtrl::SetItemText(HTREEITEM item, LPCWSTR text) const {
    return SetItem(item, TVIF_TEXT, text, 0, 0, 0, 0, 0);
}

BOOL CTreeCtrl::GetItemImage(HTREEITEM item, int& image, int& selectedImage) const {
    TVITEMW record = record_of(item, TVIF_IMAGE | TVIF_SELECTEDIMAGE);
    const BOOL found = GetItem(&record);
    image = record.iImage;
    selectedImage = record.iSelectedImage;
    return found;
}

BOOL CTreeCtrl::SetItemImage(HTREEITEM item, int image, int selectedImage) const {
    return SetItem(item, TVIF_IMAGE | TVIF_SELECTEDIMAGE, nullptr, image, selectedImage, 0, 0, 0);
}

UINT CTreeCtrl::GetItemState(HTREEITEM item, UINT mask) const {
    return static_cast<UINT>(
        SendMessage(TVM_GETITEMSTATE, reinterpret_cast<WPARAM>(item), static_cast<LPARAM>(mask)));
}

BOOL CTreeCtrl::SetItemState(HTREEITEM item, UINT state, UINT mask) const {
    return SetItem(item, TVIF_STATE, nullptr, 0, 0, state, mask, 0);
}

DWORD_PTR CTreeCtrl::GetItemData(HTREEITEM item) const {
    TVITEMW record = record_of(item, TVIF_PARAM);
    return GetItem(&record) ? static_cast<DWORD_PTR>(record.lParam) : 0;
}

BOOL CTreeCtrl::SetItemData(HTREEITEM item, DWORD_PTR data) const {
    return SetItem(item, TVIF_PARAM, nullptr, 0, 0, 0, 0, static_cast<LPARAM>(data));
}

BOOL CTreeCtrl::ItemHasChildren(HTREEITEM item) const {
    TVITEMW record = record_of(item, TVIF_CHILDREN);
    return GetItem(&record) && record.cChildren != 0;
}

BOOL CTreeCtrl::Expand(HTREEITEM item, UINT action) const {
    return SendMessage(TVM_EXPAND, action, parameter(item)) != 0;
}

BOOL CTreeCtrl::Select(HTREEITEM item, UINT what) const {
    return SendMessage(TVM_SELECTITEM, what, parameter(item)) != 0;
}

BOOL CTreeCtrl::EnsureVisible(HTREEITEM item) const {
    return SendMessage(TVM_ENSUREVISIBLE, 0, parameter(item)) != 0;
}

BOOL CTreeCtrl::GetItemRect(HTREEITEM item, RECT* rect, BOOL textOnly) const {
    // The question travels in the answer's place.
    std::memcpy(rect, &item, sizeof(item));
    return SendMessage(TVM_GETITEMRECT, static_cast<WPARAM>(textOnly), parameter(rect)) != 0;
}

HTREEITEM CTreeCtrl::HitTest(TVHITTESTINFO* test) const {
    return reinterpret_cast<HTREEITEM>(SendMessage(TVM_HITTEST, 0, parameter(test)));
}

HTREEITEM CTreeCtrl::HitTest(CPoint point, UINT* flags) const {
    TVHITTESTINFO test = {};
    test.pt = point;
    const HTREEITEM item = HitTest(&test);
    if (flags) *flags = test.flags;
    return item;
}

HIMAGELIST CTreeCtrl::SetImageList(const CImageList* images, int kind) const {
    return reinterpret_cast<HIMAGELIST>(SendMessage(TVM_SETIMAGELIST, static_cast<WPARAM>(kind),
                                                    parameter(images ? images->m_hImageList : nullptr)));
}
