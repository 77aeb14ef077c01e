// What the framework keeps of windows, one per process. Not for use outside platform/afx.
#pragma once

#include <exception>
#include <memory>
#include <unordered_map>

#include "platform/afx/creation.h"

struct AfxWindowState {
    std::unordered_map<HWND, CWnd*> permanent;
    std::unordered_map<HWND, std::unique_ptr<CWnd>> temporary;
    std::size_t temporary_limit = 64;
    // The procedures of windows that lost their object while somebody else's procedure
    // still calls AfxWndProc.
    std::unordered_map<HWND, WNDPROC> orphans;
    AfxWindowCreation* creation = nullptr;
    MSG message = {};  // being handled
    std::exception_ptr exception;
};

AfxWindowState& AfxGetWindowState();

// CWnd's way in for the window procedure and the creation hook.
struct AfxWindowAccess {
    // Takes over the messages of a window that the object is attached to.
    static void subclass(CWnd& window);
    // Gives the messages back.
    static void unsubclass(CWnd& window);
    // After the window's last message.
    static void finish(CWnd& window);
};
