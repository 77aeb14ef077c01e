#include "app/window/menu_model.h"

#include <algorithm>
#include <set>
#include <string_view>

namespace app::window {

namespace {

char upper(char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

bool isLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
}

// Names come from plug-ins and files.
std::string shown(const std::string& name) {
    std::string text;
    for (const char c : name) text += c == '&' ? "&&" : std::string(1, c);
    return text;
}

// Where the access key is; npos without one.
std::size_t accessKey(const std::string& caption) {
    for (std::size_t i = 0; i + 1 < caption.size(); ++i) {
        if (caption[i] != '&') continue;
        if (caption[i + 1] != '&') return i + 1;
        ++i;
    }
    return caption.npos;
}

Menu fileMenu(const MenuState& state) {
    Menu menu{"&File",
              {{kOpen, "&Open...", "Ctrl+O"},
               {kSave, "&Save As...", "Ctrl+S", state.isOpen},
               {kSaveShown, "Save As S&hown...", "", state.isOpen && state.isFiltered},
               {},
               {kExport, "&Export Picture...", "Ctrl+E", state.isOpen},
               {kExportSeen, "Export Picture as See&n...", "Ctrl+Shift+E", state.isOpen},
               {}}};
    int number = 0;
    for (const std::string& file : state.recent) {
        const std::string digit = std::to_string(number + 1);
        menu.entries.push_back({kFirstRecent + number, "&" + digit + "  " + shown(file), ""});
        ++number;
    }
    if (number > 0) menu.entries.emplace_back();
    menu.entries.push_back({kExit, "E&xit", "Alt+F4"});
    return menu;
}

Menu editMenu(const MenuState& state) {
    return {"&Edit",
            {{kUndo, "&Undo", "Ctrl+Z", state.canUndo},
             {kRedo, "&Redo", "Ctrl+Y", state.canRedo},
             {},
             {kSelectAll, "Select &All", "Ctrl+A", state.isOpen},
             {kSelectNone, "Select &None", "Esc", state.isOpen},
             {kSelectMiddle, "Select What Is in the &Middle", "Enter", state.isOpen},
             {},
             {kCopyScript, "&Copy as Script", "Ctrl+Shift+C", state.hasScript},
             {kForgetScript, "&Forget the Script", "", state.hasScript}}};
}

Menu viewMenu(const MenuState& state) {
    return {"&View",
            {{kZoomIn, "Zoom &In", "+", state.isOpen},
             {kZoomOut, "Zoom &Out", "-", state.isOpen},
             {kFit, "Show the &Whole Page", "0", state.isOpen},
             {kFullSize, "&100 %", "1", state.isOpen},
             {},
             {kShowAll, "&Clear the View Filter", "Ctrl+Shift+F", state.isFiltered},
             {},
             {kLayers, "&Layers", "F7", true, state.showsLayers},
             {kNextPane, "Next &Pane", "F6"}}};
}

Menu toolsMenu(const MenuState& state) {
    Menu menu{"&Tools", {}};
    int number = 0;
    for (const MenuTool& tool : state.tools) {
        menu.entries.push_back({kFirstTool + number, shown(tool.name),
                                number < 9 ? "Alt+" + std::to_string(number + 1) : "", tool.isValid});
        ++number;
    }
    giveAccessKeys(menu.entries);
    return menu;
}

// For a caption without a free letter of its own, one in another script mostly: "すべて表示(&1)".
void addAccessKey(std::string& caption, std::set<char>& taken) {
    for (const char key : std::string_view("123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ0")) {
        if (!taken.insert(key).second) continue;
        const std::size_t end = caption.ends_with("...") ? caption.size() - 3 : caption.size();
        caption.insert(end, std::string("(&") + key + ")");
        return;
    }
}

}  // namespace

void giveAccessKeys(std::vector<MenuEntry>& entries) {
    std::set<char> taken;
    for (const MenuEntry& entry : entries) {
        const std::size_t at = accessKey(entry.caption);
        if (at != entry.caption.npos) taken.insert(upper(entry.caption[at]));
    }
    for (MenuEntry& entry : entries) {
        if (entry.command == kNoCommand || accessKey(entry.caption) != entry.caption.npos) continue;
        const auto key = std::ranges::find_if(
            entry.caption, [&](char c) { return isLetter(c) && taken.insert(upper(c)).second; });
        if (key != entry.caption.end())
            entry.caption.insert(key, '&');
        else
            addAccessKey(entry.caption, taken);
    }
}

std::string plainCaption(const std::string& caption) {
    std::string text;
    for (std::size_t i = 0; i < caption.size(); ++i) {
        if (caption[i] == '&' && ++i == caption.size()) break;
        text += caption[i];
    }
    return text;
}

std::vector<Menu> menus(const MenuState& state) {
    return {fileMenu(state),
            editMenu(state),
            viewMenu(state),
            toolsMenu(state),
            {"&Help", {{kAbout, "&About kzdraw...", "F1"}}}};
}

const MenuEntry* findEntry(const std::vector<Menu>& menus, int command) {
    for (const Menu& menu : menus) {
        for (const MenuEntry& entry : menu.entries) {
            if (entry.command == command) return &entry;
        }
    }
    return nullptr;
}

}  // namespace app::window
