#include "app/window/windows/pane.h"

#include <algorithm>
#include <new>

#include "kzutil/utf.h"

namespace app::window {

PaintBuffer::PaintBuffer(HDC target, int width, int height)
    : m_width(std::max(1, width)), m_height(std::max(1, height)) {
    BITMAPINFO info = {};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = m_width;
    info.bmiHeader.biHeight = -m_height;  // top row first
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    m_context.Attach(CreateCompatibleDC(target));
    m_bitmap.Attach(CreateDIBSection(target, &info, DIB_RGB_COLORS, &m_bits, nullptr, 0));
    if (!m_context.m_hDC || !m_bitmap.m_hObject) throw std::bad_alloc();
    m_before = m_context.SelectObject(m_bitmap.m_hObject);
    SetBkMode(m_context, TRANSPARENT);
}

PaintBuffer::~PaintBuffer() {
    m_context.SelectObject(m_before);
}

void PaintBuffer::fill(const RECT& area, COLORREF color) {
    const CBrush brush(color);
    FillRect(m_context, &area, brush);
}

void PaintBuffer::frame(const RECT& area, COLORREF color) {
    const CBrush brush(color);
    FrameRect(m_context, &area, brush);
}

void PaintBuffer::text(const std::string& text, RECT area, HFONT font, COLORREF color, UINT format) {
    const HGDIOBJ before = m_context.SelectObject(font);
    SetTextColor(m_context, color);
    const kzutil::WideString wide = kzutil::widen(text);
    DrawTextW(m_context, wide.c_str(), static_cast<int>(wide.size()), &area,
              DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX | DT_END_ELLIPSIS | format);
    m_context.SelectObject(before);
}

void PaintBuffer::show(HDC target) {
    flush();
    ::BitBlt(target, 0, 0, m_width, m_height, m_context, 0, 0, SRCCOPY);
}

BEGIN_MESSAGE_MAP(Pane, CWnd)
ON_WM_PAINT()
ON_WM_SIZE()
ON_WM_SETFOCUS()
ON_WM_KILLFOCUS()
ON_MESSAGE(WM_ERASEBKGND, onEraseBackground)
END_MESSAGE_MAP()

bool Pane::create(CWnd& parent, LPCWSTR name, UINT id, DWORD style) {
    return Create(nullptr, name, WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS | style, CRect(0, 0, 10, 10),
                  &parent, id);
}

CRect Pane::client() const {
    CRect rect;
    GetClientRect(rect);
    return rect;
}

void Pane::OnPaint() {
    PAINTSTRUCT painting;
    const HDC target = BeginPaint(m_hWnd, &painting);
    try {
        PaintBuffer buffer(target, client().Width(), client().Height());
        paint(buffer);
        buffer.show(target);
    } catch (const std::bad_alloc&) {
        // Stays as it was; the next painting may find memory.
    }
    EndPaint(m_hWnd, &painting);
}

void Pane::OnSize(UINT, int, int) {
    Invalidate(FALSE);
}

void Pane::OnSetFocus(CWnd*) {
    Invalidate(FALSE);
}

void Pane::OnKillFocus(CWnd*) {
    Invalidate(FALSE);
}

}  // namespace app::window
