#include "platform/afx/gdi.h"

#include <utility>

#include "platform/afx/extension_module.h"

CGdiObject::~CGdiObject() {
    DeleteObject();
}

BOOL CGdiObject::Attach(HGDIOBJ handle) {
    if (handle == nullptr || m_hObject != nullptr) return FALSE;
    m_hObject = handle;
    return TRUE;
}

HGDIOBJ CGdiObject::Detach() {
    return std::exchange(m_hObject, nullptr);
}

BOOL CGdiObject::DeleteObject() {
    HGDIOBJ handle = Detach();
    return handle != nullptr && ::DeleteObject(handle);
}

int CGdiObject::GetObject(int size, LPVOID buffer) const {
    return ::GetObjectW(m_hObject, size, buffer);
}

BOOL CBitmap::CreateCompatibleBitmap(CDC* model, int width, int height) {
    return m_hObject == nullptr && Attach(::CreateCompatibleBitmap(model->m_hDC, width, height));
}

BOOL CBitmap::LoadMappedBitmap(UINT id, UINT flags, LPCOLORMAP map, int count) {
    if (m_hObject != nullptr) return FALSE;
    HMODULE module = AfxFindResourceHandle(MAKEINTRESOURCEW(id), RT_BITMAP);
    return Attach(::CreateMappedBitmap(module, static_cast<INT_PTR>(id), flags, map, count));
}

BOOL CBitmap::GetBitmap(BITMAP* bitmap) const {
    return GetObject(sizeof *bitmap, bitmap) == sizeof *bitmap;
}

BOOL CBrush::CreateSolidBrush(COLORREF color) {
    return m_hObject == nullptr && Attach(::CreateSolidBrush(color));
}

CDC::~CDC() {
    DeleteDC();
}

BOOL CDC::Attach(HDC handle) {
    if (handle == nullptr || m_hDC != nullptr) return FALSE;
    m_hDC = handle;
    return TRUE;
}

HDC CDC::Detach() {
    return std::exchange(m_hDC, nullptr);
}

BOOL CDC::DeleteDC() {
    HDC handle = Detach();
    return handle != nullptr && ::DeleteDC(handle);
}

BOOL CDC::CreateDC(LPCWSTR driver, LPCWSTR device, LPCWSTR output, const void* mode) {
    return m_hDC == nullptr &&
           Attach(::CreateDCW(driver, device, output, static_cast<const DEVMODEW*>(mode)));
}

BOOL CDC::CreateCompatibleDC(CDC* model) {
    return m_hDC == nullptr && Attach(::CreateCompatibleDC(model != nullptr ? model->m_hDC : nullptr));
}

BOOL CDC::BitBlt(int x, int y, int width, int height, CDC* source, int sourceX, int sourceY,
                 DWORD operation) {
    HDC from = source != nullptr ? source->m_hDC : nullptr;
    return ::BitBlt(m_hDC, x, y, width, height, from, sourceX, sourceY, operation);
}

BOOL CDC::PatBlt(int x, int y, int width, int height, DWORD operation) {
    return ::PatBlt(m_hDC, x, y, width, height, operation);
}

CClientDC::~CClientDC() {
    ::ReleaseDC(m_hWnd, Detach());
}

CSelection::~CSelection() {
    if (m_before != nullptr) m_context.SelectObject(m_before);
}
