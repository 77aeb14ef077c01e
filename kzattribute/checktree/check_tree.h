// ACheckTree: a tree control with three-state check boxes and pictures.
//
//     tree.initImageLists();                                        // first, and whenever it is filled anew
//     HTREEITEM red = tree.insertItem(_T("Solid/RGB Color/red"), 7);  // makes the groups on the way
//     tree.setItemColor(red, RGB(255, 0, 0));
//     tree.setCheck(red, 1);             // and its groups, as their children dictate
//     tree.getCheckedData(data, 1);      // appends 7
//
// Items are addressed by paths (item_path.h) and carry a data value that the owner chose; 0 means none, and
// groups made on the way carry it. Check values and the pictures of the boxes: check_values.h. A check flows
// down to all descendants and up through the ancestors.
//
// Item pictures come in pairs: even as drawn, odd for the disabled control. An item with children has the
// picture -1: the tree asks its owner (TVN_GETDISPINFO), who answers 2 or 3 when it is collapsed, 4 or 5 when
// it is expanded. A pair is drawn when the tree is first painted with it, or asked for its list: of ten
// thousand colours most are never seen.
#pragma once

#include <deque>
#include <map>
#include <memory>
#include <vector>

#include "checktree/tree_index.h"
#include "kzutil/arrays.h"
#include "platform/afx/image_list.h"
#include "platform/afx/tree_ctrl.h"

class ABrushItem;
class APenItem;
class AReferItem;

class ACheckTree : public CTreeCtrl {
public:
    // Called with an item and 1 or 0 when setCheck checks or unchecks it, and with null and 0 at the end of a
    // change by a click, setAllChecks or setChecks. The result is ignored.
    using CheckCallback = int (*)(ACheckTree* tree, HTREEITEM item, int checked, LPARAM value);

    ACheckTree() = default;
    ~ACheckTree() override;

    // As in the base. What happens to the items afterwards is not seen here, so the index forgets them.
    HWND Detach();
    HWND UnsubclassWindow();

    // Removes all items and pictures, and makes the pictures of the boxes and the built-in ones.
    void initImageLists();

    // Finds or makes the groups of the path and the leaf, and gives the leaf the data. Two leaves of one text
    // under one parent become one item with the data that came last; a group that the path passes through
    // gets the picture -1 again even if it had one of its own; a new leaf is unchecked whatever its parent
    // shows, and its parent's check is not computed anew. Null when the insertion fails.
    HTREEITEM insertItem(const WCHAR* path, DWORD data);

    // The first child of the parent (null: the top level) with the text, case-sensitive; null when
    // there is none.
    HTREEITEM findItemByText(const WCHAR* text, HTREEITEM parent);
    // The first item in pre-order with the data; null when there is none.
    HTREEITEM findItemByData(DWORD data);
    ULONG_PTR getItemData(HTREEITEM item) const { return GetItemData(item); }
    bool hasChildren(HTREEITEM item) const;

    // 1, 3 or 5.
    int getCheck(HTREEITEM item) const;
    // Stores a check value: no propagation, no callback.
    void setCheckImage(HTREEITEM item, int check);
    // Checks (non-zero) or unchecks the item and what the rule makes follow.
    void setCheck(HTREEITEM item, int check);
    void setAllChecks(int check);
    // 1 when every top-level item is checked, so also for an empty tree.
    int isAllChecked() const;
    // Checks and then unchecks the items of these data values; values without an item are ignored.
    void setChecks(const ADWordArray& toCheck, int uncheckAllFirst, const ADWordArray* toUncheck);

    // Append the data of checked (unchecked) items and return the list's size. With `stop`, an item that has
    // data stands for its subtree; else its descendants do. The walk climbs one level only where a run of
    // siblings ends, and owners rely on its order: what follows the last run of grandchildren is not visited.
    int getCheckedData(ADWordArray& data, int stopAtChecked) const;
    int getUncheckedData(ADWordArray& data, int stopAtUnchecked) const;
    // Brings a list of checked data up to date: values whose items are not checked leave, checked ones come
    // in, and values that the tree does not show stay. A disabled tree leaves the list as it is.
    void updateCheckedData(ADWordArray& data);

    // Expands or collapses every item and shows the first.
    void expandAll(int expand);

    // Give an item its picture, unless it has children: then it is -1.
    void setItemImage(HTREEITEM item, int image);
    // A bitmap resource. 0, with the built-in picture 0, when there is none of that id; 1 otherwise.
    int setItemBitmap(HTREEITEM item, UINT id);
    // A sample that the brush or pen item draws; null: a plain one. Holds a reference on it until then.
    void setItemSwatch(HTREEITEM item, const AReferItem* brushOrPen);
    void setItemColor(HTREEITEM item, COLORREF color);

    // A copy in which every pure white pixel of the columns first to end - 1 (-1: all from first on) has the
    // colour of buttons' faces. No other colour is touched.
    void makeDisabledBitmap(const CBitmap& source, CBitmap& target, int first, int end);

    // Public: owners may install them.
    CheckCallback m_checkCallback = nullptr;
    LPARAM m_callbackValue = 0;

protected:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;
    void PreSubclassWindow() override;
    void OnLButtonDown(UINT flags, CPoint point);
    void OnLButtonDblClk(UINT flags, CPoint point);
    void OnEnable(BOOL enable);
    DECLARE_MESSAGE_MAP()

private:
    struct ReleaseReference {
        void operator()(AReferItem* item) const;
    };
    // What a pair of pictures is to be drawn of.
    struct Picture {
        CBitmap* bitmap = nullptr;  // of m_bitmaps; null: a swatch
        bool isColor = false;       // a swatch of the colour, or else of the item
        COLORREF color = 0;
        std::unique_ptr<AReferItem, ReleaseReference> item;
    };

    HTREEITEM groupOf(kzutil::WideView path);
    HTREEITEM insertUnder(HTREEITEM parent, const WCHAR* text, int image, DWORD data);
    bool setItem(const TVITEMW& record);
    void setImages(HTREEITEM item, int image) { setImages(item, image, image); }
    void setImages(HTREEITEM item, int image, int selectedImage);
    void notifyCheck(HTREEITEM item, int checked);
    bool clickCheckBox(CPoint point);
    bool isWatched() const { return m_hWnd && m_watched == m_hWnd; }
    checktree::TreeIndex& index() const;
    int collectData(ADWordArray& data, int wanted, int stop) const;
    bool loadBitmap(UINT id, CBitmap& bitmap) const;
    void buildList(CImageList& list, UINT bitmapId, const int (&disabledColumns)[3], int which);
    CBitmap* findBitmap(UINT id);
    void addPicture(HTREEITEM item, Picture picture);
    bool drawSwatch(const AReferItem* brushOrPen, CBitmap& picture);
    bool drawColor(COLORREF color, CBitmap& picture);
    bool drawPicture(const Picture& picture);
    bool addPair(CBitmap& drawn);
    void drawPictures(int last);
    void drawVisiblePictures();

    CImageList m_stateImages;
    CImageList m_itemImages;
    std::deque<Picture> m_undrawn;  // belong behind those of m_itemImages
    int m_pictureCount = 0;         // with those
    std::map<UINT, CBitmap> m_bitmaps;
    mutable checktree::TreeIndex m_index;  // through index()
    HWND m_watched = nullptr;              // the window whose messages pass here
    bool m_ownChange = false;              // the message under way is the check tree's own
    // The groups of the path that went in last: known until a message comes from elsewhere.
    kzutil::WideString m_lastGroupPath;
    std::vector<HTREEITEM> m_lastGroups;
    bool m_areGroupsKnown = false;
};
