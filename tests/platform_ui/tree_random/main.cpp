// Random operations on a tree view, and everything that they answer and cause, one line each.
//
//   tree_random FIRST_SEED SCENARIOS OPERATIONS [SEED.STEP]
//
// With a step, shows the rows before it on standard error.
// Which operations come depends on the seed alone, so that the same line of two logs tells of the same
// operation.
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <random>

#include "platform/driver/input.h"
#include "tests/platform_ui/recorder.h"

namespace {

class Scenario {
public:
    Scenario(unsigned seed, int operations, std::string shown_step);
    void run();

private:
    int pick(int count) { return static_cast<int>(random_() % static_cast<unsigned>(count)); }
    HTREEITEM any_item();
    LRESULT send(UINT message, WPARAM wParam, LPARAM lParam) {
        return SendMessageW(recorder_.tree(), message, wParam, lParam);
    }
    LRESULT send(UINT message, WPARAM wParam, HTREEITEM item) {
        return send(message, wParam, reinterpret_cast<LPARAM>(item));
    }
    std::string next(UINT relation, HTREEITEM item) {
        return recorder_.name(reinterpret_cast<HTREEITEM>(send(TVM_GETNEXTITEM, relation, item)));
    }

    std::string operate();
    std::string insert();
    std::string remove();
    std::string expand();
    std::string select();
    std::string click();
    std::string press();
    std::string scroll();
    std::string ask();
    std::string set_state();
    std::string resize();
    std::string rectangle(HTREEITEM item);
    std::string summary();
    void show_rows();

    unsigned seed_;
    int operations_;
    std::string shown_step_;
    std::mt19937 random_;
    Recorder recorder_;
    std::vector<HTREEITEM> items_;
};

const DWORD styles[] = {
    TVS_HASBUTTONS | TVS_HASLINES | TVS_LINESATROOT | TVS_DISABLEDRAGDROP | TVS_SHOWSELALWAYS,
    TVS_HASBUTTONS | TVS_HASLINES | TVS_LINESATROOT | TVS_DISABLEDRAGDROP | TVS_SHOWSELALWAYS | WS_BORDER,
    TVS_HASBUTTONS | TVS_DISABLEDRAGDROP,
    TVS_LINESATROOT | TVS_HASLINES | TVS_DISABLEDRAGDROP,
};

Scenario::Scenario(unsigned seed, int operations, std::string shown_step)
    : seed_(seed),
      operations_(operations),
      shown_step_(std::move(shown_step)),
      random_(seed),
      recorder_(styles[seed % 4], {300, 40 + static_cast<int>(seed * 37 % 160)}) {}

HTREEITEM Scenario::any_item() {
    const int choice = pick(1 << 20);
    if (items_.empty()) return nullptr;
    // Recent items more often than old ones.
    std::size_t index = static_cast<std::size_t>(choice) % items_.size();
    HTREEITEM item = items_[index];
    // Handles come back: a deleted item's may belong to another one by now.
    return recorder_.name(item) == "i" + std::to_string(index) ? item : nullptr;
}

std::string Scenario::insert() {
    HTREEITEM parent = pick(3) ? any_item() : nullptr;
    const int place = pick(6);
    const bool callback = pick(3) == 0;
    HTREEITEM after = place == 0 ? TVI_FIRST : TVI_LAST;
    if (place == 1 && parent) after = reinterpret_cast<HTREEITEM>(send(TVM_GETNEXTITEM, TVGN_CHILD, parent));
    if (!after) after = TVI_LAST;
    const std::string name = "i" + std::to_string(items_.size());
    const std::string below = recorder_.name(parent);
    HTREEITEM item = recorder_.insert(name, parent, after, callback ? I_IMAGECALLBACK : 0);
    items_.push_back(item);
    return "insert " + name + " below " + below + " place " + std::to_string(place) + (item ? "" : " FAILS");
}

std::string Scenario::remove() {
    const int everything = pick(12);
    HTREEITEM item = everything == 0 ? TVI_ROOT : any_item();
    if (!item) return "nothing";
    const std::string name = everything == 0 ? "everything" : recorder_.name(item);
    const LRESULT result = send(TVM_DELETEITEM, 0, item);
    return "delete " + name + " = " + std::to_string(result);
}

std::string Scenario::expand() {
    static const UINT actions[] = {TVE_EXPAND,   TVE_EXPAND, TVE_EXPAND,
                                   TVE_COLLAPSE, TVE_TOGGLE, TVE_COLLAPSE | TVE_COLLAPSERESET};
    const UINT action = actions[pick(pick(8) ? 5 : 6)];
    recorder_.refuse_expanding = pick(25) == 0;
    HTREEITEM item = any_item();
    if (!item) return "nothing";
    const std::string name = recorder_.name(item);
    const LRESULT result = send(TVM_EXPAND, action, item);
    return "expand " + name + " action " + std::to_string(action) +
           (recorder_.refuse_expanding ? " refused" : "") + " = " + std::to_string(result != 0);
}

std::string Scenario::select() {
    const bool none = pick(15) == 0;
    recorder_.refuse_selecting = pick(15) == 0;
    HTREEITEM item = any_item();
    if (none) item = nullptr;
    const LRESULT result = send(TVM_SELECTITEM, TVGN_CARET, item);
    return "select " + recorder_.name(item) + (recorder_.refuse_selecting ? " refused" : "") + " = " +
           std::to_string(result);
}

std::string Scenario::click() {
    static const UINT parts[] = {TVHT_ONITEMBUTTON,    TVHT_ONITEMLABEL,  TVHT_ONITEMICON,
                                 TVHT_ONITEMSTATEICON, TVHT_ONITEMINDENT, TVHT_ONITEMRIGHT};
    const UINT part = parts[pick(6)];
    const bool twice = pick(3) == 0;
    recorder_.refuse_expanding = pick(10) == 0;
    recorder_.refuse_selecting = pick(10) == 0;
    HTREEITEM item = any_item();
    if (!item) return "nothing";
    const std::string name = recorder_.name(item);
    const bool hit = twice ? driver::doubleClick(recorder_.tree(), item, part)
                           : driver::click(recorder_.tree(), item, part);
    return std::string(twice ? "double click " : "click ") + name + " part " + std::to_string(part) +
           (hit ? "" : " unseen");
}

std::string Scenario::press() {
    static const int keys[] = {VK_UP,    VK_DOWN,     VK_DOWN, VK_LEFT,   VK_RIGHT,
                               VK_RIGHT, VK_HOME,     VK_END,  VK_PRIOR,  VK_NEXT,
                               VK_ADD,   VK_SUBTRACT, VK_BACK, VK_RETURN, VK_MULTIPLY};
    const int key = keys[pick(15)];
    recorder_.refuse_expanding = pick(10) == 0;
    recorder_.refuse_selecting = pick(10) == 0;
    driver::pressKey(recorder_.tree(), key);
    return "press " + std::to_string(key);
}

std::string Scenario::scroll() {
    const int how = pick(4);
    HTREEITEM item = any_item();
    if (how == 0) {
        const int code = pick(4);
        send(WM_VSCROLL, static_cast<WPARAM>(code), LPARAM(0));
        return "scroll " + std::to_string(code);
    }
    if (!item) return "nothing";
    const std::string name = recorder_.name(item);
    if (how == 1) {
        // A known gap: the real control does not scroll to what is selected already.
        if (recorder_.name(item) == next(TVGN_CARET, nullptr)) return "nothing";
        const LRESULT result = send(TVM_SELECTITEM, TVGN_FIRSTVISIBLE, item);
        return "top " + name + " = " + std::to_string(result);
    }
    const LRESULT result = send(TVM_ENSUREVISIBLE, 0, item);
    return "ensure " + name + " = " + std::to_string(result);
}

std::string Scenario::rectangle(HTREEITEM item) {
    std::string text;
    for (int text_only = 0; text_only < 2; ++text_only) {
        RECT rect = {};
        std::memcpy(&rect, &item, sizeof(item));
        if (!send(TVM_GETITEMRECT, static_cast<WPARAM>(text_only), reinterpret_cast<LPARAM>(&rect)))
            return text + " none";
        text += " " + std::to_string(rect.left) + "," + std::to_string(rect.top) + "," +
                (text_only ? std::string() : std::to_string(rect.right)) + "," + std::to_string(rect.bottom);
    }
    // Where each part begins; texts are not equally wide everywhere.
    RECT client;
    GetClientRect(recorder_.tree(), &client);
    UINT before = 0;
    TVHITTESTINFO test = {};
    RECT row = {};
    std::memcpy(&row, &item, sizeof(item));
    send(TVM_GETITEMRECT, FALSE, reinterpret_cast<LPARAM>(&row));
    test.pt.y = row.top + 8;
    for (test.pt.x = 0; test.pt.x < client.right; ++test.pt.x) {
        send(TVM_HITTEST, 0, reinterpret_cast<LPARAM>(&test));
        if (test.flags != before) {
            text += " " + std::to_string(test.flags);
            if (test.flags != TVHT_ONITEMRIGHT) text += "@" + std::to_string(test.pt.x);
        }
        before = test.flags;
    }
    return text;
}

std::string Scenario::ask() {
    HTREEITEM item = any_item();
    const int what = pick(2);
    if (!item) return "nothing";
    std::string text = "ask " + recorder_.name(item) + ":";
    if (what == 0) return text + rectangle(item);
    for (UINT relation :
         {TVGN_NEXT, TVGN_PREVIOUS, TVGN_PARENT, TVGN_CHILD, TVGN_NEXTVISIBLE, TVGN_PREVIOUSVISIBLE})
        text += " " + next(relation, item);
    TVITEMW record = {};
    record.mask = TVIF_HANDLE | TVIF_STATE | TVIF_IMAGE | TVIF_SELECTEDIMAGE | TVIF_CHILDREN;
    record.stateMask = TVIS_STATEIMAGEMASK;
    record.hItem = item;
    const LRESULT result = send(TVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&record));
    char numbers[120];
    snprintf(
        numbers, sizeof(numbers), " = %d state %x images %d %d children %d masked %x",
        static_cast<int>(result), record.state, record.iImage, record.iSelectedImage, record.cChildren,
        static_cast<unsigned>(SendMessageW(recorder_.tree(), TVM_GETITEMSTATE, reinterpret_cast<WPARAM>(item),
                                           TVIS_STATEIMAGEMASK | TVIS_EXPANDED)));
    return text + numbers;
}

std::string Scenario::set_state() {
    HTREEITEM item = any_item();
    const UINT state = INDEXTOSTATEIMAGEMASK(static_cast<UINT>(pick(7)));
    if (!item) return "nothing";
    TVITEMW record = {};
    record.mask = TVIF_HANDLE | TVIF_STATE;
    record.hItem = item;
    record.state = state;
    record.stateMask = TVIS_STATEIMAGEMASK;
    const LRESULT result = send(TVM_SETITEMW, 0, reinterpret_cast<LPARAM>(&record));
    return "state " + recorder_.name(item) + " " + std::to_string(state) + " = " + std::to_string(result);
}

std::string Scenario::resize() {
    const int height = 30 + pick(200);
    const int kind = pick(3);
    if (kind == 0) {
        EnableWindow(recorder_.tree(), !IsWindowEnabled(recorder_.tree()));
        return "enable";
    }
    if (kind == 1) {
        SetFocus(pick(2) ? recorder_.frame() : recorder_.tree());
        return "focus";
    }
    MoveWindow(recorder_.tree(), 0, 0, 300, height, TRUE);
    return "resize " + std::to_string(height);
}

std::string Scenario::operate() {
    recorder_.refuse_expanding = false;
    recorder_.refuse_selecting = false;
    const int choice = pick(100);
    if (choice < 30) return insert();
    if (choice < 34) return remove();
    if (choice < 50) return expand();
    if (choice < 56) return select();
    if (choice < 66) return click();
    if (choice < 76) return press();
    if (choice < 84) return scroll();
    if (choice < 94) return ask();
    if (choice < 97) return set_state();
    return resize();
}

std::string Scenario::summary() {
    RECT client;
    GetClientRect(recorder_.tree(), &client);
    int rows = 0;
    for (LRESULT item = send(TVM_GETNEXTITEM, TVGN_ROOT, LPARAM(0)); item; ++rows)
        item = send(TVM_GETNEXTITEM, TVGN_NEXTVISIBLE, item);
    return " | rows " + std::to_string(rows) + " count " + std::to_string(send(TVM_GETCOUNT, 0, LPARAM(0))) +
           " top " + next(TVGN_FIRSTVISIBLE, nullptr) + " caret " + next(TVGN_CARET, nullptr) + " last " +
           next(TVGN_LASTVISIBLE, nullptr) + " client " + std::to_string(client.right) + "x" +
           std::to_string(client.bottom) + " page " + std::to_string(send(TVM_GETVISIBLECOUNT, 0, LPARAM(0)));
}

void Scenario::show_rows() {
    fprintf(stderr, "top %s\n", next(TVGN_FIRSTVISIBLE, nullptr).c_str());
    for (LRESULT item = send(TVM_GETNEXTITEM, TVGN_ROOT, LPARAM(0)); item;
         item = send(TVM_GETNEXTITEM, TVGN_NEXTVISIBLE, item)) {
        for (LRESULT up = item; up; up = send(TVM_GETNEXTITEM, TVGN_PARENT, up)) fputs("  ", stderr);
        fprintf(stderr, "%s\n", recorder_.name(reinterpret_cast<HTREEITEM>(item)).c_str());
    }
}

void Scenario::run() {
    recorder_.attach_images(seed_ / 4 % 2, seed_ / 8 % 2);
    for (int step = 0; step < operations_; ++step) {
        const std::string place = std::to_string(seed_) + "." + std::to_string(step);
        if (place == shown_step_) show_rows();
        std::string line = place + " " + operate();
        for (const std::string& notice : recorder_.take()) line += " [" + notice + "]";
        puts((line + summary()).c_str());
    }
    fflush(stdout);
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 4 && argc != 5) {
        fputs("usage: tree_random FIRST_SEED SCENARIOS OPERATIONS [SEED.STEP]\n", stderr);
        return 2;
    }
    const auto first = static_cast<unsigned>(std::atoi(argv[1]));
    const auto count = static_cast<unsigned>(std::atoi(argv[2]));
    for (unsigned seed = first; seed < first + count; ++seed)
        Scenario(seed, std::atoi(argv[3]), argc == 5 ? argv[4] : "").run();
    return 0;
}
