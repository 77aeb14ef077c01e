// Pane: a part of the window that paints itself, without flicker.
#pragma once

#include <string>

#include "app/window/windows/screen.h"
#include "canvas/canvas.h"
#include "platform/afx/wnd.h"

namespace app::window {

// The pixels of one painting. Outlines go through a canvas on pixels(), texts through the context; flush() stands between
// the two.
class PaintBuffer {
public:
    // Raises bad_alloc.
    PaintBuffer(HDC target, int width, int height);
    ~PaintBuffer();
    PaintBuffer(const PaintBuffer&) = delete;
    PaintBuffer& operator=(const PaintBuffer&) = delete;

    HDC context() const { return m_context; }
    APixels pixels() const { return {m_bits, m_width, m_height, false}; }
    int width() const { return m_width; }
    int height() const { return m_height; }

    void fill(const RECT& area, COLORREF color);
    void frame(const RECT& area, COLORREF color);
    // One line, cut with an ellipsis. `format`: more of DrawText's.
    void text(const std::string& text, RECT area, HFONT font, COLORREF color, UINT format = 0);
    void flush() { GdiFlush(); }
    // Onto the target.
    void show(HDC target);

private:
    CDC m_context;
    CGdiObject m_bitmap;
    HGDIOBJ m_before = nullptr;
    void* m_bits = nullptr;
    int m_width, m_height;
};

class Pane : public CWnd {
public:
    explicit Pane(const Screen& screen) : m_screen(screen) {}

    // `name`: what the pane is, for programs that read the screen to its user.
    bool create(CWnd& parent, LPCWSTR name, UINT id, DWORD style = 0);

protected:
    virtual void paint(PaintBuffer& buffer) = 0;

    const Screen& screen() const { return m_screen; }
    int scaled(int length) const { return m_screen.scaled(length); }
    bool hasFocus() const { return ::GetFocus() == m_hWnd; }
    CRect client() const;

    void OnPaint();
    void OnSize(UINT type, int width, int height);
    void OnSetFocus(CWnd* before);
    void OnKillFocus(CWnd* next);
    LRESULT onEraseBackground(WPARAM, LPARAM) { return 1; }
    DECLARE_MESSAGE_MAP()

private:
    const Screen& m_screen;
};

}  // namespace app::window
