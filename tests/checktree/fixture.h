// A check tree in a window whose owner answers for the pictures of groups, as pages and dialogs do.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "checktree/check_tree.h"
#include "kzutil/astring.h"
#include "platform/driver/input.h"

namespace test {

// Writes down what the check tree asks of the control, once told to.
class RecordedTree : public ACheckTree {
public:
    ~RecordedTree() override { DestroyWindow(); }

    bool recording = false;
    std::vector<std::string> messages;
    int refusedItems = 0;  // the next ones, as a control without memory does

protected:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;
};

class Owner : public CWnd {
public:
    ~Owner() override { DestroyWindow(); }
    CWnd* tree = nullptr;
    int clicks = 0;       // NM_CLICK from the tree
    int fixedImage = -1;  // what every group gets, and 2 more as its selected image; -1: by its state

protected:
    BOOL OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* result) override;
};

class CheckTree : public testing::Test {
protected:
    Owner owner;
    RecordedTree tree;
    std::vector<std::string> calls;  // of the check callback: "name 1", "name 0", "end"

    explicit CheckTree(int height = 400) : m_height(height) {}

    void SetUp() override;

    HTREEITEM insert(const char* path, DWORD data = 0);
    // The item at a path, null when there is none.
    HTREEITEM at(const std::string& path);
    std::string text(HTREEITEM item) const { return toUtf8(tree.GetItemText(item)); }
    int image(const std::string& path);
    UINT stateImage(const std::string& path) { return tree.GetItemState(at(path), 0xF000) >> 12; }

    // The whole tree as text, an item a line: indentation, text, check, data, picture.
    std::string dump();
    // Data of the collected items.
    std::vector<DWORD> checkedData(int stop) { return collected(&ACheckTree::getCheckedData, stop); }
    std::vector<DWORD> uncheckedData(int stop) { return collected(&ACheckTree::getUncheckedData, stop); }
    void installCallback();
    std::vector<std::string> takeCalls() { return std::exchange(calls, {}); }

    static std::string toUtf8(const std::basic_string<WCHAR>& wide) { return AString(wide.c_str()).toUtf8(); }
    static ADWordArray list(std::initializer_list<DWORD> values);
    static std::vector<DWORD> values(const ADWordArray& list) { return {list.begin(), list.end()}; }

private:
    std::vector<DWORD> collected(int (ACheckTree::*collect)(ADWordArray&, int) const, int stop);
    int m_height;
};

}  // namespace test
