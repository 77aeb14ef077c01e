// The tree view control: thin over its messages.
//
//     CTreeCtrl tree;
//     tree.Create(WS_CHILD | WS_VISIBLE | TVS_HASBUTTONS, CRect(0, 0, 200, 100), &panel, 1059);
//     HTREEITEM fill = tree.InsertItem(_T("Fill"));
//     tree.Expand(fill, TVE_EXPAND);
#pragma once

#include "platform/afx/image_list.h"
#include "platform/afx/wnd.h"

class CTreeCtrl : public CWnd {
public:
    ~CTreeCtrl() override { DestroyWindow(); }

    BOOL Create(DWORD style, const RECT& rect, CWnd* parent, UINT id);
    using CWnd::Create;

    // --- items ---
    HTREEITEM InsertItem(TVINSERTSTRUCTW* insert) const;
    HTREEITEM InsertItem(LPCWSTR text, HTREEITEM parent = TVI_ROOT, HTREEITEM after = TVI_LAST) const;
    BOOL DeleteItem(HTREEITEM item) const;
    BOOL DeleteAllItems() const { return DeleteItem(TVI_ROOT); }
    UINT GetCount() const { return static_cast<UINT>(SendMessage(TVM_GETCOUNT)); }

    BOOL GetItem(TVITEMW* record) const;
    BOOL SetItem(const TVITEMW* record) const;
    BOOL SetItem(HTREEITEM item, UINT mask, LPCWSTR text, int image, int selectedImage, UINT state,
                 UINT stateMask, LPARAM data) const;
    std::basic_string<WCHAR> GetItemText(HTREEITEM item) const;
    BOOL SetItemText(HTREEITEM item, LPCWSTR text) const;
    // As the tree's parent answers for an item whose picture it keeps for itself (I_IMAGECALLBACK).
    BOOL GetItemImage(HTREEITEM item, int& image, int& selectedImage) const;
    BOOL SetItemImage(HTREEITEM item, int image, int selectedImage) const;
    UINT GetItemState(HTREEITEM item, UINT mask) const;
    BOOL SetItemState(HTREEITEM item, UINT state, UINT mask) const;
    DWORD_PTR GetItemData(HTREEITEM item) const;
    BOOL SetItemData(HTREEITEM item, DWORD_PTR data) const;
    BOOL ItemHasChildren(HTREEITEM item) const;

    // --- relations; null when there is none ---
    HTREEITEM GetNextItem(HTREEITEM item, UINT relation) const {
        return reinterpret_cast<HTREEITEM>(
            SendMessage(TVM_GETNEXTITEM, relation, reinterpret_cast<LPARAM>(item)));
    }
    HTREEITEM GetRootItem() const { return GetNextItem(nullptr, TVGN_ROOT); }
    HTREEITEM GetChildItem(HTREEITEM item) const { return GetNextItem(item, TVGN_CHILD); }
    HTREEITEM GetNextSiblingItem(HTREEITEM item) const { return GetNextItem(item, TVGN_NEXT); }
    HTREEITEM GetPrevSiblingItem(HTREEITEM item) const { return GetNextItem(item, TVGN_PREVIOUS); }
    HTREEITEM GetParentItem(HTREEITEM item) const { return GetNextItem(item, TVGN_PARENT); }
    HTREEITEM GetFirstVisibleItem() const { return GetNextItem(nullptr, TVGN_FIRSTVISIBLE); }
    HTREEITEM GetNextVisibleItem(HTREEITEM item) const { return GetNextItem(item, TVGN_NEXTVISIBLE); }
    HTREEITEM GetPrevVisibleItem(HTREEITEM item) const { return GetNextItem(item, TVGN_PREVIOUSVISIBLE); }
    HTREEITEM GetSelectedItem() const { return GetNextItem(nullptr, TVGN_CARET); }

    // --- showing ---
    BOOL Expand(HTREEITEM item, UINT action) const;
    BOOL Select(HTREEITEM item, UINT what) const;
    BOOL SelectItem(HTREEITEM item) const { return Select(item, TVGN_CARET); }
    BOOL SelectSetFirstVisible(HTREEITEM item) const { return Select(item, TVGN_FIRSTVISIBLE); }
    BOOL EnsureVisible(HTREEITEM item) const;
    UINT GetVisibleCount() const { return static_cast<UINT>(SendMessage(TVM_GETVISIBLECOUNT)); }
    BOOL GetItemRect(HTREEITEM item, RECT* rect, BOOL textOnly) const;
    UINT GetIndent() const { return static_cast<UINT>(SendMessage(TVM_GETINDENT)); }
    void SetIndent(UINT indent) const { SendMessage(TVM_SETINDENT, indent); }

    // The item at a point of the client area, with the part of it (TVHT_…); null beside all items.
    HTREEITEM HitTest(CPoint point, UINT* flags = nullptr) const;
    HTREEITEM HitTest(TVHITTESTINFO* test) const;

    // Null takes the list off. Returns the list before. The tree does not own its lists.
    HIMAGELIST SetImageList(const CImageList* images, int kind) const;
    HIMAGELIST GetImageList(int kind) const {
        return reinterpret_cast<HIMAGELIST>(SendMessage(TVM_GETIMAGELIST, static_cast<WPARAM>(kind)));
    }
};
