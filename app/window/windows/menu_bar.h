// The window's menu bar and its keys, made of the menu model.
#pragma once

#include "app/window/menu_model.h"
#include "platform/winapi.h"

namespace app::window {

class MenuBar {
public:
    MenuBar() = default;
    ~MenuBar();
    MenuBar(const MenuBar&) = delete;
    MenuBar& operator=(const MenuBar&) = delete;

    // Shows these menus in the window, which owns them from then on.
    void show(HWND window, std::vector<Menu> menus);
    const std::vector<Menu>& menus() const { return m_menus; }
    HACCEL keys() const { return m_keys; }

private:
    void fill(HMENU popup, const Menu& menu);
    void makeKeys();

    HMENU m_bar = nullptr;
    HACCEL m_keys = nullptr;
    std::vector<ACCEL> m_keyList;  // of the table
    std::vector<Menu> m_menus;
};

}  // namespace app::window
