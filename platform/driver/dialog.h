// A dialog in the hands of a user: acts on its controls, real or headless, and reads them.
//
//     dialog.page("Fill");
//     dialog.check("Solid/RGB Color/red");
//     dialog.press("OK");
//
// Pages, buttons, check boxes and tree items are named by what they show; a tree item by the texts from the
// top down to it, joined by "/". Texts are UTF-8. "&" in a caption is not part of its name. What a user could
// not do fails: a name that is not there, a disabled control, a dialog that is closed. Failures are Errors.
//
// An action returns when its messages are handled: the dialog may be closed then (isOpen), or another one may
// have opened before it, been driven, and closed again.
#pragma once

#include <string_view>

#include "platform/driver/description.h"
#include "platform/driver/error.h"

class CWnd;

namespace driver {

class Dialog {
public:
    explicit Dialog(CWnd& window);

    bool isOpen() const;
    HWND window() const { return m_handle; }

    // Clicks on the page's tab.
    void page(std::string_view title);
    // Clicks on a button or check box.
    void press(std::string_view caption);

    // --- the tree that can be seen; collapsed branches above an item are opened first ---
    // One click on the item's check box.
    void click(std::string_view path);
    // Click until the item is checked (state picture 3), or unchecked (1).
    void check(std::string_view path);
    void uncheck(std::string_view path);
    // Clicks on the button in front of the item, unless it is as wished.
    void expand(std::string_view path);
    void collapse(std::string_view path);

    // On the screen; a dialog bounds its own size. Only a dialog with a sizing frame can be sized.
    void move(int x, int y);
    void size(int width, int height);
    // Closes the dialog as its Cancel button does; fails when it stays open.
    void cancel();

    DialogDescription describe() const;
    // Empty without a tree.
    std::vector<TreeItem> tree() const;
    // Empty without a tree, and for one without pictures. Raises bad_alloc.
    TreeImages treeImages() const;

private:
    HWND findButton(std::string_view caption) const;
    HWND enabledTree() const;
    HTREEITEM findItem(HWND tree, std::string_view path) const;
    HTREEITEM reachItem(HWND tree, std::string_view path) const;
    void checkUntil(std::string_view path, UINT state, const char* wish);
    void toggle(std::string_view path, bool expanded);
    void requireOpen() const;

    CWnd* m_window;
    HWND m_handle;
};

}  // namespace driver
