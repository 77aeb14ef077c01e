// Message maps: which member function of a window class handles which message.
//
//     class Panel : public CWnd {
//     protected:
//         void OnLButtonDown(UINT flags, CPoint point);
//         void onApply();
//         DECLARE_MESSAGE_MAP()
//     };
//
//     BEGIN_MESSAGE_MAP(Panel, CWnd)
//         ON_WM_LBUTTONDOWN()
//         ON_BN_CLICKED(1061, onApply)
//     END_MESSAGE_MAP()
//
// An entry is a function that unpacks the message and calls the handler on the class that the map belongs to.
// A handler of another signature does not compile; an inherited or virtual one works, one of a second base
// class, too. A class without an entry for a message falls back to its base's map; what no map knows goes to
// DefWindowProc. A handler that wants that as well calls the base's handler, or Default().
#pragma once

#include <type_traits>

#include "platform/afx/geometry.h"

class CWnd;

using AfxMessageHandler = LRESULT (*)(CWnd& window, WPARAM wParam, LPARAM lParam);

struct AFX_MSGMAP_ENTRY {
    UINT nMessage;
    UINT nCode;                 // of WM_COMMAND and WM_NOTIFY
    UINT nID;                   // the first and
    UINT nLastID;               // the last control of WM_COMMAND and WM_NOTIFY
    AfxMessageHandler handler;  // null ends the map
};

struct AFX_MSGMAP {
    const AFX_MSGMAP* (*base)();  // null in CWnd's
    const AFX_MSGMAP_ENTRY* entries;
};

// The entry of the class or of one of its bases; null when there is none.
const AFX_MSGMAP_ENTRY* AfxFindMessageEntry(const AFX_MSGMAP* map, UINT message, UINT code, UINT id);

// A handler's answer as a message result: 0 for a handler that answers nothing.
template <class Call>
LRESULT AfxResultOf(Call call) {
    if constexpr (std::is_void_v<decltype(call())>) {
        call();
        return 0;
    } else {
        return static_cast<LRESULT>(call());
    }
}

#define DECLARE_MESSAGE_MAP()                     \
protected:                                        \
    static const AFX_MSGMAP* GetThisMessageMap(); \
    const AFX_MSGMAP* GetMessageMap() const override;

#define BEGIN_MESSAGE_MAP(Class, Base)                                                       \
    const AFX_MSGMAP* Class::GetMessageMap() const {                                         \
        return GetThisMessageMap();                                                          \
    }                                                                                        \
    const AFX_MSGMAP* Class::GetThisMessageMap() {                                           \
        using ThisClass = Class;                                                             \
        static const AFX_MSGMAP* (*const base)() = [] { return Base::GetThisMessageMap(); }; \
        static const AFX_MSGMAP_ENTRY entries[] = {
#define END_MESSAGE_MAP()                          \
    { 0, 0, 0, 0, nullptr }                        \
    }                                              \
    ;                                              \
    static const AFX_MSGMAP map = {base, entries}; \
    return &map;                                   \
    }

// Parameters are the handler's types, arguments what the message gives it. The cast holds the handler
// to its signature; the call goes by name, since sanitizers misjudge calls through a pointer to a
// second base's member.
#define AFX_ENTRY(message, code, id, last, Result, Parameters, name, arguments)                    \
    {message, code, static_cast<UINT>(id), static_cast<UINT>(last),                                \
     [](CWnd& window, [[maybe_unused]] WPARAM wParam, [[maybe_unused]] LPARAM lParam) -> LRESULT { \
         static_cast<void>(static_cast<Result(ThisClass::*) Parameters>(&ThisClass::name));        \
         return AfxResultOf([&] { return static_cast<ThisClass&>(window).name arguments; });       \
     }},

#define ON_WM_CREATE() \
    AFX_ENTRY(WM_CREATE, 0, 0, 0, int, (CREATESTRUCTW*), OnCreate, (reinterpret_cast<CREATESTRUCTW*>(lParam)))
#define ON_WM_DESTROY() AFX_ENTRY(WM_DESTROY, 0, 0, 0, void, (), OnDestroy, ())
#define ON_WM_CLOSE() AFX_ENTRY(WM_CLOSE, 0, 0, 0, void, (), OnClose, ())
#define ON_WM_PAINT() AFX_ENTRY(WM_PAINT, 0, 0, 0, void, (), OnPaint, ())
#define ON_WM_ENABLE() AFX_ENTRY(WM_ENABLE, 0, 0, 0, void, (BOOL), OnEnable, (static_cast<BOOL>(wParam)))
#define ON_WM_SHOWWINDOW()                                              \
    AFX_ENTRY(WM_SHOWWINDOW, 0, 0, 0, void, (BOOL, UINT), OnShowWindow, \
              (static_cast<BOOL>(wParam), static_cast<UINT>(lParam)))
#define ON_WM_SIZE()                                            \
    AFX_ENTRY(WM_SIZE, 0, 0, 0, void, (UINT, int, int), OnSize, \
              (static_cast<UINT>(wParam), LOWORD(lParam), HIWORD(lParam)))
#define ON_WM_MOVE()                                      \
    AFX_ENTRY(WM_MOVE, 0, 0, 0, void, (int, int), OnMove, \
              (static_cast<short>(LOWORD(lParam)), static_cast<short>(HIWORD(lParam))))
#define ON_WM_GETMINMAXINFO()                                                  \
    AFX_ENTRY(WM_GETMINMAXINFO, 0, 0, 0, void, (MINMAXINFO*), OnGetMinMaxInfo, \
              (reinterpret_cast<MINMAXINFO*>(lParam)))
#define ON_WM_SETFOCUS()                                       \
    AFX_ENTRY(WM_SETFOCUS, 0, 0, 0, void, (CWnd*), OnSetFocus, \
              (CWnd::FromHandle(reinterpret_cast<HWND>(wParam))))
#define ON_WM_KILLFOCUS()                                        \
    AFX_ENTRY(WM_KILLFOCUS, 0, 0, 0, void, (CWnd*), OnKillFocus, \
              (CWnd::FromHandle(reinterpret_cast<HWND>(wParam))))
#define AFX_MOUSE_ENTRY(message, name) \
    AFX_ENTRY(message, 0, 0, 0, void, (UINT, CPoint), name, (static_cast<UINT>(wParam), CPoint(lParam)))
#define ON_WM_LBUTTONDOWN() AFX_MOUSE_ENTRY(WM_LBUTTONDOWN, OnLButtonDown)
#define ON_WM_LBUTTONUP() AFX_MOUSE_ENTRY(WM_LBUTTONUP, OnLButtonUp)
#define ON_WM_LBUTTONDBLCLK() AFX_MOUSE_ENTRY(WM_LBUTTONDBLCLK, OnLButtonDblClk)
#define ON_WM_MOUSEMOVE() AFX_MOUSE_ENTRY(WM_MOUSEMOVE, OnMouseMove)
#define AFX_KEY_ENTRY(message, name)                            \
    AFX_ENTRY(message, 0, 0, 0, void, (UINT, UINT, UINT), name, \
              (static_cast<UINT>(wParam), LOWORD(lParam), HIWORD(lParam)))
#define ON_WM_KEYDOWN() AFX_KEY_ENTRY(WM_KEYDOWN, OnKeyDown)
#define ON_WM_CHAR() AFX_KEY_ENTRY(WM_CHAR, OnChar)

// LRESULT name(WPARAM, LPARAM)
#define ON_MESSAGE(message, name) \
    AFX_ENTRY(message, 0, 0, 0, LRESULT, (WPARAM, LPARAM), name, (wParam, lParam))
// void name()
#define ON_CONTROL(code, id, name) AFX_ENTRY(WM_COMMAND, code, id, id, void, (), name, ())
#define ON_COMMAND(id, name) ON_CONTROL(0, id, name)
#define ON_BN_CLICKED(id, name) ON_CONTROL(BN_CLICKED, id, name)
#define ON_BN_DOUBLECLICKED(id, name) ON_CONTROL(BN_DOUBLECLICKED, id, name)
// void name(NMHDR*, LRESULT* result)
#define ON_NOTIFY(code, id, name)                                                                 \
    {WM_NOTIFY, code, static_cast<UINT>(id), static_cast<UINT>(id),                               \
     [](CWnd& window, WPARAM, LPARAM lParam) -> LRESULT {                                         \
         static_cast<void>(static_cast<void (ThisClass::*)(NMHDR*, LRESULT*)>(&ThisClass::name)); \
         LRESULT result = 0;                                                                      \
         static_cast<ThisClass&>(window).name(reinterpret_cast<NMHDR*>(lParam), &result);         \
         return result;                                                                           \
     }},
