// An image list that owns its handle.
//
//     CImageList pictures;
//     pictures.Create(16, 16, ILC_COLOR24, 10, 10);
//     int first = pictures.Add(&strip, nullptr);
//
// A control that shows the list does not own it: the list must outlive the control or be taken off it first.
#pragma once

#include "platform/afx/gdi.h"

class CImageList : public CObject {
public:
    CImageList() = default;
    CImageList(const CImageList&) = delete;
    CImageList& operator=(const CImageList&) = delete;
    ~CImageList() override;
    operator HIMAGELIST() const { return m_hImageList; }

    HIMAGELIST m_hImageList = nullptr;

    HIMAGELIST GetSafeHandle() const { return m_hImageList; }
    // FALSE when the object holds a list already.
    BOOL Create(int width, int height, UINT flags, int initial, int grow);
    BOOL Attach(HIMAGELIST list);
    HIMAGELIST Detach();
    // FALSE when it held none.
    BOOL DeleteImageList();

    int GetImageCount() const { return ::ImageList_GetImageCount(m_hImageList); }
    // The index of the first picture of the strip, -1 when none was added.
    int Add(CBitmap* image, CBitmap* mask);
    BOOL Remove(int index) { return ::ImageList_Remove(m_hImageList, index); }
    COLORREF SetBkColor(COLORREF color) { return ::ImageList_SetBkColor(m_hImageList, color); }
    COLORREF GetBkColor() const { return ::ImageList_GetBkColor(m_hImageList); }
    BOOL GetImageInfo(int index, IMAGEINFO* info) const;
    BOOL Draw(CDC* context, int index, POINT at, UINT style);
};
