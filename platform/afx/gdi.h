// Bitmaps, brushes and device contexts that own their handles.
//
//     CClientDC screen(nullptr);
//     CDC memory;
//     CBitmap bitmap;
//     if (!memory.CreateCompatibleDC(&screen) || !bitmap.CreateCompatibleBitmap(&screen, 16, 16)) return;
//     CSelection picture(memory, bitmap);
//     memory.PatBlt(0, 0, 16, 16, WHITENESS);
//
// A bitmap must not be selected into a context when it is deleted, copied out of or added to an image list:
// give a CSelection a block of its own, or declare it after what it selects. There are no temporary objects
// for foreign handles: where the API hands one out, the class hands out the handle.
#pragma once

#include "platform/afx/object.h"

class CDC;

class CGdiObject : public CObject {
public:
    CGdiObject() = default;
    CGdiObject(const CGdiObject&) = delete;
    CGdiObject& operator=(const CGdiObject&) = delete;
    ~CGdiObject() override;

    HGDIOBJ m_hObject = nullptr;

    HGDIOBJ GetSafeHandle() const { return m_hObject; }
    // Takes over the handle; the object must hold none. FALSE, with nothing taken, for a null handle.
    BOOL Attach(HGDIOBJ handle);
    HGDIOBJ Detach();
    // FALSE when it held none or when the object is still selected into a context; it lets go of the handle
    // either way.
    BOOL DeleteObject();
    int GetObject(int size, LPVOID buffer) const;
};

class CBitmap : public CGdiObject {
public:
    operator HBITMAP() const { return static_cast<HBITMAP>(m_hObject); }

    BOOL CreateCompatibleBitmap(CDC* model, int width, int height);
    // A bitmap resource of the resource chain, its colours mapped (CreateMappedBitmap).
    BOOL LoadMappedBitmap(UINT id, UINT flags = 0, LPCOLORMAP map = nullptr, int count = 0);
    BOOL GetBitmap(BITMAP* bitmap) const;
};

class CBrush : public CGdiObject {
public:
    CBrush() = default;
    explicit CBrush(COLORREF color) { CreateSolidBrush(color); }
    operator HBRUSH() const { return static_cast<HBRUSH>(m_hObject); }

    BOOL CreateSolidBrush(COLORREF color);
};

class CDC : public CObject {
public:
    CDC() = default;
    CDC(const CDC&) = delete;
    CDC& operator=(const CDC&) = delete;
    ~CDC() override;
    operator HDC() const { return m_hDC; }

    HDC m_hDC = nullptr;

    HDC GetSafeHdc() const { return m_hDC; }
    BOOL Attach(HDC handle);
    HDC Detach();
    BOOL DeleteDC();

    BOOL CreateDC(LPCWSTR driver, LPCWSTR device, LPCWSTR output, const void* mode);
    // Null: compatible with the display.
    BOOL CreateCompatibleDC(CDC* model);

    // Returns what was selected before, null on failure.
    HGDIOBJ SelectObject(HGDIOBJ object) { return ::SelectObject(m_hDC, object); }
    BOOL BitBlt(int x, int y, int width, int height, CDC* source, int sourceX, int sourceY, DWORD operation);
    BOOL PatBlt(int x, int y, int width, int height, DWORD operation);
    COLORREF GetPixel(int x, int y) const { return ::GetPixel(m_hDC, x, y); }
    COLORREF SetPixel(int x, int y, COLORREF color) { return ::SetPixel(m_hDC, x, y, color); }
};

// A window's context, the display's for null, until the end of the block.
class CClientDC : public CDC {
public:
    explicit CClientDC(HWND window) : m_hWnd(window) { m_hDC = ::GetDC(window); }
    ~CClientDC() override;

protected:
    HWND m_hWnd;
};

// An object selected into a context until the end of the block.
class CSelection {
public:
    CSelection(CDC& context, const CGdiObject& object)
        : m_context(context), m_before(context.SelectObject(object.m_hObject)) {}
    ~CSelection();
    CSelection(const CSelection&) = delete;
    CSelection& operator=(const CSelection&) = delete;

    // False when the object could not be selected.
    explicit operator bool() const { return m_before != nullptr; }

private:
    CDC& m_context;
    HGDIOBJ m_before;
};
