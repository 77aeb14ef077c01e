// Where the real control of the tests, Wine's, behaves otherwise than documented, and the headless one
// follows the documentation. A gap that closes fails here: take it out then.
#include "tests/platform_ui/recorder.h"
#include "tests/platform_ui/support.h"

namespace {

LRESULT send(Recorder& recorder, UINT message, WPARAM wParam, HTREEITEM item) {
    return SendMessageW(recorder.tree(), message, wParam, reinterpret_cast<LPARAM>(item));
}

std::string top(Recorder& recorder) {
    return recorder.name(
        reinterpret_cast<HTREEITEM>(send(recorder, TVM_GETNEXTITEM, TVGN_FIRSTVISIBLE, nullptr)));
}

// The parent may refuse a collapse.
std::string refuse_a_collapse(Recorder& recorder) {
    HTREEITEM group = recorder.insert("group", nullptr);
    recorder.insert("leaf", group);
    TVITEMW record = {};
    record.mask = TVIF_HANDLE | TVIF_STATE;
    record.hItem = group;
    record.state = record.stateMask = TVIS_EXPANDED;
    SendMessageW(recorder.tree(), TVM_SETITEMW, 0, reinterpret_cast<LPARAM>(&record));
    recorder.refuse_collapsing = true;
    send(recorder, TVM_EXPAND, TVE_COLLAPSE, group);
    const LRESULT state =
        SendMessageW(recorder.tree(), TVM_GETITEMSTATE, reinterpret_cast<WPARAM>(group), TVIS_EXPANDED);
    return state ? "stays expanded" : "collapses";
}

// Scrolling to an item does not depend on the selection.
std::string scroll_to_the_selected_item(Recorder& recorder) {
    std::vector<HTREEITEM> items;
    for (int i = 0; i < 20; ++i) items.push_back(recorder.insert("i" + std::to_string(i), nullptr));
    send(recorder, TVM_SELECTITEM, TVGN_CARET, items[2]);
    send(recorder, TVM_SELECTITEM, TVGN_FIRSTVISIBLE, items[2]);
    return "top " + top(recorder);
}

std::string use_a_class_that_does_not_exist(Recorder& recorder) {
    HWND window = CreateWindowExW(0, _T("NoSuchClass"), nullptr, WS_CHILD, 0, 0, 9, 9, recorder.frame(),
                                  nullptr, nullptr, nullptr);
    return window ? "a window" : "error " + std::to_string(GetLastError());
}

const struct {
    const char* name;
    std::string (*act)(Recorder& recorder);
    const char* documented;
    const char* real;
} gaps[] = {
    {"a refused collapse", refuse_a_collapse, "stays expanded", "collapses"},
    {"scrolling to the selected item", scroll_to_the_selected_item, "top i2", "top i0"},
    {"a class that does not exist", use_a_class_that_does_not_exist, "error 1407", "error 1411"},
};

}  // namespace

TEST(TreeKnownGaps, AreAsListed) {
    for (const auto& gap : gaps) {
        Recorder recorder(TVS_HASBUTTONS | TVS_DISABLEDRAGDROP, {200, 80});
        EXPECT_EQ(gap.act(recorder), KZ_REAL_CONTROLS ? gap.real : gap.documented) << gap.name;
    }
}
