// A window as an object: its messages arrive at virtual functions and message maps.
//
//     class Panel : public CWnd { … };
//     Panel panel;
//     panel.Create(nullptr, _T("Panel"), WS_CHILD | WS_VISIBLE, CRect(0, 0, 200, 100), &frame, 7);
//
// Who owns what: an object that created or subclassed its window (Create, SubclassWindow, Attach) belongs to
// it until the window is destroyed or Detach; deleting the object first destroys the window. A class whose
// handlers touch its own members calls DestroyWindow() in its destructor: when CWnd's runs, the derived part
// is gone, and the window's last messages reach nobody. Objects from FromHandle for foreign windows are
// temporary: use them at once.
//
// An exception that leaves a handler must not cross the API: it is kept, the message answers 0 (creation
// fails), and whoever called from outside (Create, a modal loop) throws it on with AfxRethrowException().
#pragma once

#include <string>

#include "platform/afx/message_map.h"
#include "platform/afx/object.h"

class CDataExchange;

class CWnd : public CObject {
public:
    CWnd() = default;
    ~CWnd() override;
    CWnd(const CWnd&) = delete;
    CWnd& operator=(const CWnd&) = delete;

    HWND m_hWnd = nullptr;

    operator HWND() const { return m_hWnd; }
    HWND GetSafeHwnd() const { return m_hWnd; }

    // The object of a window; a temporary one for a window without. Null for null.
    static CWnd* FromHandle(HWND window);
    static CWnd* FromHandlePermanent(HWND window);
    // Without taking over its messages.
    BOOL Attach(HWND window);
    HWND Detach();

    // A null class name stands for a plain window.
    virtual BOOL Create(LPCWSTR className, LPCWSTR text, DWORD style, const RECT& rect, CWnd* parent,
                        UINT id);
    BOOL CreateEx(DWORD extendedStyle, LPCWSTR className, LPCWSTR text, DWORD style, const RECT& rect,
                  CWnd* parent, UINT id, LPVOID parameter = nullptr);
    virtual BOOL DestroyWindow();
    // Takes over the messages of an existing window.
    BOOL SubclassWindow(HWND window);
    BOOL SubclassDlgItem(UINT id, CWnd* parent);
    HWND UnsubclassWindow();

    LRESULT SendMessage(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const {
        return ::SendMessageW(m_hWnd, message, wParam, lParam);
    }
    BOOL PostMessage(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const {
        return ::PostMessageW(m_hWnd, message, wParam, lParam);
    }

    DWORD GetStyle() const { return static_cast<DWORD>(::GetWindowLongW(m_hWnd, GWL_STYLE)); }
    DWORD GetExStyle() const { return static_cast<DWORD>(::GetWindowLongW(m_hWnd, GWL_EXSTYLE)); }
    BOOL ModifyStyle(DWORD remove, DWORD add);
    int GetDlgCtrlID() const { return ::GetDlgCtrlID(m_hWnd); }
    CWnd* GetDlgItem(int id) const { return FromHandle(::GetDlgItem(m_hWnd, id)); }
    CWnd* GetParent() const { return FromHandle(::GetParent(m_hWnd)); }
    BOOL EnableWindow(BOOL enable = TRUE) { return ::EnableWindow(m_hWnd, enable); }
    BOOL IsWindowEnabled() const { return ::IsWindowEnabled(m_hWnd); }
    BOOL ShowWindow(int command) { return ::ShowWindow(m_hWnd, command); }
    BOOL IsWindowVisible() const { return ::IsWindowVisible(m_hWnd); }
    CWnd* SetFocus() { return FromHandle(::SetFocus(m_hWnd)); }
    static CWnd* GetFocus() { return FromHandle(::GetFocus()); }
    void SetWindowText(LPCWSTR text) { ::SetWindowTextW(m_hWnd, text); }
    std::basic_string<WCHAR> GetWindowText() const;
    void MoveWindow(int x, int y, int width, int height, BOOL repaint = TRUE) {
        ::MoveWindow(m_hWnd, x, y, width, height, repaint);
    }
    void MoveWindow(const RECT& rect, BOOL repaint = TRUE) {
        MoveWindow(rect.left, rect.top, rect.right - rect.left, rect.bottom - rect.top, repaint);
    }
    BOOL SetWindowPos(HWND after, int x, int y, int width, int height, UINT flags) {
        return ::SetWindowPos(m_hWnd, after, x, y, width, height, flags);
    }
    void GetClientRect(RECT* rect) const { ::GetClientRect(m_hWnd, rect); }
    void GetWindowRect(RECT* rect) const { ::GetWindowRect(m_hWnd, rect); }
    void ClientToScreen(POINT* point) const { ::ClientToScreen(m_hWnd, point); }
    void ScreenToClient(POINT* point) const { ::ScreenToClient(m_hWnd, point); }
    void ScreenToClient(RECT* rect) const;
    void Invalidate(BOOL erase = TRUE) { ::InvalidateRect(m_hWnd, nullptr, erase); }
    void UpdateWindow() { ::UpdateWindow(m_hWnd); }
    void SetRedraw(BOOL redraw = TRUE) { SendMessage(WM_SETREDRAW, static_cast<WPARAM>(redraw)); }

    // Carries values between the controls and the members: into the members when nonzero (data_exchange.h).
    BOOL UpdateData(BOOL saveAndValidate = TRUE);

    // FALSE ends the window's modal loop (modal_loop.h).
    virtual BOOL ContinueModal() { return FALSE; }
    // A modal loop offers what is posted for the window and its children. Nonzero: handled.
    virtual BOOL PreTranslateMessage(MSG*) { return FALSE; }

    // --- what messages pass through, outermost first ---
    virtual LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam);
    // Nonzero: handled, with this result.
    virtual BOOL OnWndMsg(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result);
    // Nonzero: handled.
    virtual BOOL OnCommand(WPARAM wParam, LPARAM lParam);
    virtual BOOL OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* result);
    // To the window's own procedure, as it was before this object took over.
    virtual LRESULT DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam);

protected:
    static const AFX_MSGMAP* GetThisMessageMap();
    virtual const AFX_MSGMAP* GetMessageMap() const;

    virtual void DoDataExchange(CDataExchange*) {}
    // DefWindowProc for the message that is being handled.
    LRESULT Default();
    // The object has its window, which has seen no message yet (Create) or all of its creation
    // (SubclassWindow).
    virtual void PreSubclassWindow() {}
    // The window is gone and the object detached; may delete it.
    virtual void PostNcDestroy() {}

    int OnCreate(CREATESTRUCTW*) { return static_cast<int>(Default()); }
    void OnDestroy() { Default(); }
    void OnClose() { Default(); }
    void OnPaint() { Default(); }
    void OnEnable(BOOL) { Default(); }
    void OnShowWindow(BOOL, UINT) { Default(); }
    void OnSize(UINT, int, int) { Default(); }
    void OnMove(int, int) { Default(); }
    void OnGetMinMaxInfo(MINMAXINFO*) { Default(); }
    void OnSetFocus(CWnd*) { Default(); }
    void OnKillFocus(CWnd*) { Default(); }
    void OnLButtonDown(UINT, CPoint) { Default(); }
    void OnLButtonUp(UINT, CPoint) { Default(); }
    void OnLButtonDblClk(UINT, CPoint) { Default(); }
    void OnMouseMove(UINT, CPoint) { Default(); }
    void OnKeyDown(UINT, UINT, UINT) { Default(); }
    void OnChar(UINT, UINT, UINT) { Default(); }

private:
    friend struct AfxWindowAccess;
    WNDPROC m_pfnSuper = nullptr;  // null when the object does not see the messages
};
