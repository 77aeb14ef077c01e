#include <algorithm>

#include "platform/headless/tree/tree.h"

namespace headless {

namespace {

LRESULT send(Tree& tree, NMHDR& header, UINT code) {
    header = {tree.window.handle, static_cast<UINT_PTR>(tree.window.id), code};
    return SendMessageW(tree.window.parent, WM_NOTIFY, header.idFrom, reinterpret_cast<LPARAM>(&header));
}

TVITEMW record_of(const Item* item) {
    TVITEMW record = {};
    if (!item) return record;
    record.mask = TVIF_HANDLE | TVIF_STATE | TVIF_PARAM | TVIF_IMAGE | TVIF_SELECTEDIMAGE;
    record.hItem = item->handle;
    record.state = item->state;
    record.lParam = item->data;
    record.iImage = item->image;
    record.iSelectedImage = item->selected_image;
    return record;
}

}  // namespace

LRESULT notify(Tree& tree, UINT code) {
    NMHDR header;
    return send(tree, header, code);
}

LRESULT notify_change(Tree& tree, UINT code, UINT action, const Item* before, const Item* now) {
    NMTREEVIEWW notice = {};
    notice.action = action;
    notice.itemOld = record_of(before);
    notice.itemNew = record_of(now);
    return send(tree, notice.hdr, code);
}

LRESULT notify_key(Tree& tree, WPARAM key) {
    NMTVKEYDOWN notice = {};
    notice.wVKey = static_cast<WORD>(key);
    NMHDR header = {tree.window.handle, static_cast<UINT_PTR>(tree.window.id), TVN_KEYDOWN};
    notice.hdr = header;
    return SendMessageW(tree.window.parent, WM_NOTIFY, header.idFrom, reinterpret_cast<LPARAM>(&notice));
}

void ask_parent(Tree& tree, const Item& item, TVITEMW& record) {
    UINT wanted = 0;
    if ((record.mask & TVIF_TEXT) && item.text_callback) wanted |= TVIF_TEXT;
    if ((record.mask & TVIF_IMAGE) && item.image == I_IMAGECALLBACK) wanted |= TVIF_IMAGE;
    if ((record.mask & TVIF_SELECTEDIMAGE) && item.selected_image == I_IMAGECALLBACK)
        wanted |= TVIF_SELECTEDIMAGE;
    if ((record.mask & TVIF_CHILDREN) && item.children == I_CHILDRENCALLBACK) wanted |= TVIF_CHILDREN;
    if (!wanted) return;
    const HTREEITEM handle = item.handle;
    char16_t text[260] = {};
    NMTVDISPINFOW notice = {};
    notice.item.mask = wanted;
    notice.item.hItem = handle;
    notice.item.state = item.state;
    notice.item.lParam = item.data;
    notice.item.iImage = item.image;
    notice.item.iSelectedImage = item.selected_image;
    notice.item.cChildren = item.children;
    notice.item.pszText = text;
    notice.item.cchTextMax = 260;
    send(tree, notice.hdr, TVN_GETDISPINFOW);
    if (wanted & TVIF_IMAGE) record.iImage = notice.item.iImage;
    if (wanted & TVIF_SELECTEDIMAGE) record.iSelectedImage = notice.item.iSelectedImage;
    if (wanted & TVIF_CHILDREN) record.cChildren = notice.item.cChildren;
    if ((wanted & TVIF_TEXT) && record.pszText && record.cchTextMax > 0) {
        const std::u16string answer = notice.item.pszText ? notice.item.pszText : u"";
        const std::size_t length = std::min(answer.size(), static_cast<std::size_t>(record.cchTextMax - 1));
        std::copy_n(answer.data(), length, record.pszText);
        record.pszText[length] = 0;
    }
    // Asked once and for all, if the parent says so.
    Item* found = tree.items.find(handle);
    if (!found || !(notice.item.mask & TVIF_DI_SETITEM)) return;
    if (wanted & TVIF_IMAGE) found->image = notice.item.iImage;
    if (wanted & TVIF_SELECTEDIMAGE) found->selected_image = notice.item.iSelectedImage;
    if (wanted & TVIF_CHILDREN) found->children = notice.item.cChildren;
    if ((wanted & TVIF_TEXT) && notice.item.pszText) {
        found->text = notice.item.pszText;
        found->text_callback = false;
        measure(tree, *found);
    }
}

}  // namespace headless
