// Modal loops. They are the framework's own, so that they work alike with real and headless controls and that
// somebody can act in them.
//
//     if (!AfxRunModal(dialog, parent, [&](HWND owner) { return create(owner); })) return -1;
//
// Whenever the queue is empty, the idle object is asked to act on the innermost modal window. Without one, or
// when it has nothing to do, the loop waits for the user; off Windows there is none, so it raises
// AfxNoInputException instead of waiting for ever. What leaves a handler or the idle object leaves the loop.
#pragma once

#include <functional>

#include "platform/afx/wnd.h"

class AfxModalIdle {
public:
    // True: it acted, or posted something. False: it has nothing to do.
    virtual bool OnModalIdle(CWnd& innermost) = 0;

protected:
    ~AfxModalIdle() = default;
};

// Null takes it off. Returns the one before.
AfxModalIdle* AfxSetModalIdle(AfxModalIdle* idle);

// The window of the innermost modal loop; null when none runs.
CWnd* AfxGetModalWindow();

// A modal window from its creation to its end. Its owner takes no input meanwhile: the parent's top-level
// window, else the innermost modal window, else the active one, or none. The loop runs until ContinueModal()
// is FALSE or the window is gone; then the window is destroyed. False when `create` says so: it must have left
// nothing behind. Raises what left a handler or the idle object.
bool AfxRunModal(CWnd& window, CWnd* parent, const std::function<bool(HWND owner)>& create);

// Handles all that is posted, as the innermost modal loop would. Raises what left a handler.
void AfxHandleMessages();
