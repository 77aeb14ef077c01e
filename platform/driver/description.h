// What a dialog shows, read from its controls. Texts are UTF-8.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "platform/winapi.h"

namespace driver {

struct ControlDescription {
    int id = 0;
    std::string className;  // as registered: "Button", "SysTreeView32"
    std::string text;
    bool enabled = false;
    std::optional<bool> checked;  // of check boxes only
    RECT rect = {};               // in the dialog's client area
};

struct DialogDescription {
    std::string title;
    RECT rect = {};                            // on the screen
    std::optional<std::string> page;           // the title of the page shown; none without pages
    std::vector<std::string> pages;            // all titles, in order
    std::vector<ControlDescription> controls;  // all that can be seen, the page's among them
};

struct TreeItem {
    std::string text;
    int check = 0;  // the number of its state picture: 1 unchecked, 3 checked, 5 partly; plus 1 when disabled
    int image = 0;
    bool expanded = false;
    std::vector<TreeItem> children;
};

// The pictures of a tree's items, by their numbers.
struct TreeImages {
    int width = 0, height = 0;
    std::vector<std::vector<std::uint32_t>> pictures;  // 0xffRRGGBB, top row first
};

}  // namespace driver
