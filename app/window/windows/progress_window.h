// ProgressWindow: tells how far the opening of a drawing is, and offers to cancel it.
#pragma once

#include "app/window/opening.h"
#include "app/window/windows/screen.h"
#include "platform/afx/wnd.h"

namespace app::window {

class ProgressWindow : public CWnd {
public:
    ProgressWindow(Opening& opening, const std::string& file, const Screen& screen)
        : m_opening(opening), m_file(file), m_screen(screen) {}
    ~ProgressWindow() override { DestroyWindow(); }

    // Returns when the opening is done, or cancelled and over.
    void wait(CWnd& parent);

    BOOL ContinueModal() override { return !m_opening.waitFor(std::chrono::milliseconds(0)); }
    BOOL PreTranslateMessage(MSG* message) override { return ::IsDialogMessageW(m_hWnd, message); }

protected:
    void onCancel();
    void OnClose() { onCancel(); }
    LRESULT onTimer(WPARAM, LPARAM);
    LRESULT onEraseBackground(WPARAM context, LPARAM);
    DECLARE_MESSAGE_MAP()

private:
    bool create(HWND owner);
    HWND addControl(LPCWSTR className, LPCWSTR text, DWORD style, const CRect& place, int id);

    Opening& m_opening;
    const std::string m_file;
    const Screen& m_screen;
    HWND m_bar = nullptr;
};

}  // namespace app::window
