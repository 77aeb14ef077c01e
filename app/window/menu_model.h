// What the window's menus hold: every command once, with its keys, and whether it can be given now.
//
//     for (const Menu& menu : menus(state)) …
//     const MenuEntry* entry = findEntry(menus(state), kUndo);
//
// The menu bar, the toolbar and the keyboard all go by this.
#pragma once

#include <string>
#include <vector>

namespace app::window {

enum CommandId : int {
    kNoCommand = 0,  // a line between others
    kOpen = 100,
    kSave,
    kSaveShown,
    kExport,
    kExportSeen,
    kExit,
    kUndo,
    kRedo,
    kSelectAll,
    kSelectNone,
    kSelectMiddle,
    kCopyScript,
    kForgetScript,
    kZoomIn,
    kZoomOut,
    kFit,
    kFullSize,
    kShowAll,
    kLayers,
    kNextPane,
    kAbout,
    kFirstRecent = 200,
    kFirstTool = 300,
};

struct MenuTool {
    std::string name;
    bool isValid = false;
    friend bool operator==(const MenuTool&, const MenuTool&) = default;
};

// What decides about menus.
struct MenuState {
    bool isOpen = false;  // a drawing
    bool canUndo = false, canRedo = false;
    bool isFiltered = false;
    bool hasScript = false;
    bool showsLayers = true;
    std::vector<MenuTool> tools;
    std::vector<std::string> recent;
    friend bool operator==(const MenuState&, const MenuState&) = default;
};

struct MenuEntry {
    int command = kNoCommand;
    std::string caption;  // with "&" in front of its access key, "&&" for one that is shown
    std::string keys;     // "Ctrl+Shift+S", or nothing
    bool isEnabled = true;
    bool isChecked = false;
    friend bool operator==(const MenuEntry&, const MenuEntry&) = default;
};

struct Menu {
    std::string caption;
    std::vector<MenuEntry> entries;
    friend bool operator==(const Menu&, const Menu&) = default;
};

std::vector<Menu> menus(const MenuState& state);
// Null when there is none.
const MenuEntry* findEntry(const std::vector<Menu>& menus, int command);
// Puts "&" in front of a letter of each caption that has none yet, no letter twice as long as there are others. A
// caption without a free letter, one in another script mostly, gets "(&1)" at its end.
void giveAccessKeys(std::vector<MenuEntry>& entries);
// The caption as a user reads it.
std::string plainCaption(const std::string& caption);

}  // namespace app::window
