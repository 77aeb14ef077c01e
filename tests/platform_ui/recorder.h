// A frame window with one tree view in it that writes down what the tree tells its parent.
//
//     Recorder recorder(TVS_HASBUTTONS, {200, 100});
//     HTREEITEM fill = recorder.insert("Fill", nullptr);
//     recorder.take();  // what happened so far, forgotten
//     SendMessageW(recorder.tree(), TVM_SELECTITEM, TVGN_CARET, reinterpret_cast<LPARAM>(fill));
//     EXPECT_EQ(recorder.take(), (std::vector<std::string>{"selecting - > Fill by 0", "selected - > Fill by
//     0"}));
//
// TVN_GETDISPINFO is answered (picture 4 for expanded items, 2 for others) but not written down: painting
// asks too, as often as it likes.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "platform/winapi.h"

class Recorder {
public:
    Recorder(DWORD style, SIZE size);
    ~Recorder();
    Recorder(const Recorder&) = delete;
    Recorder& operator=(const Recorder&) = delete;

    HWND frame() const { return frame_; }
    HWND tree() const { return tree_; }

    // With that text, below the parent (null: at the top) as its last child, or after the given sibling.
    // Gives the tree check boxes, item pictures, or both: squares of 16 pixels.
    void attach_images(bool state, bool normal);

    HTREEITEM insert(const std::string& name, HTREEITEM parent, HTREEITEM after = TVI_LAST, int image = 0);

    // "-" for none.
    std::string name(HTREEITEM item) const;
    // Whether the tree has not told of the item's deletion.
    bool exists(HTREEITEM item) const { return names_.count(item) != 0; }

    std::vector<std::string> take();

    bool refuse_expanding = false;
    bool refuse_collapsing = false;
    bool refuse_selecting = false;

private:
    static LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT notice(const NMHDR& header);

    HWND frame_ = nullptr;
    HWND tree_ = nullptr;
    std::vector<HIMAGELIST> images_;
    std::map<HTREEITEM, std::string> names_;
    std::vector<std::string> notices_;
};

// Of ASCII texts.
std::basic_string<WCHAR> wide(const std::string& text);
