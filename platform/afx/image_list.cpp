#include "platform/afx/image_list.h"

#include <utility>

CImageList::~CImageList() {
    DeleteImageList();
}

BOOL CImageList::Create(int width, int height, UINT flags, int initial, int grow) {
    return m_hImageList == nullptr && Attach(::ImageList_Create(width, height, flags, initial, grow));
}

BOOL CImageList::Attach(HIMAGELIST list) {
    if (list == nullptr || m_hImageList != nullptr) return FALSE;
    m_hImageList = list;
    return TRUE;
}

HIMAGELIST CImageList::Detach() {
    return std::exchange(m_hImageList, nullptr);
}

BOOL CImageList::DeleteImageList() {
    HIMAGELIST list = Detach();
    return list != nullptr && ::ImageList_Destroy(list);
}

int CImageList::Add(CBitmap* image, CBitmap* mask) {
    HBITMAP maskHandle = mask != nullptr ? static_cast<HBITMAP>(*mask) : nullptr;
    return ::ImageList_Add(m_hImageList, image != nullptr ? static_cast<HBITMAP>(*image) : nullptr,
                           maskHandle);
}

BOOL CImageList::GetImageInfo(int index, IMAGEINFO* info) const {
    return ::ImageList_GetImageInfo(m_hImageList, index, info);
}

BOOL CImageList::Draw(CDC* context, int index, POINT at, UINT style) {
    return ::ImageList_Draw(m_hImageList, index, *context, at.x, at.y, style);
}
