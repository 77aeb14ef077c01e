#include "app/window/windows/menu_bar.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "kzutil/utf.h"

namespace app::window {

namespace {

bool takePrefix(std::string_view& text, std::string_view prefix) {
    if (!text.starts_with(prefix) || text == prefix) return false;
    text.remove_prefix(prefix.size());
    return true;
}

// The virtual keys of the text behind "Ctrl+": two where the number pad has one, too.
std::vector<WORD> virtualKeys(std::string_view key) {
    if (key == "+") return {VK_OEM_PLUS, VK_ADD};
    if (key == "-") return {VK_OEM_MINUS, VK_SUBTRACT};
    if (key.size() == 1 && key[0] >= '0' && key[0] <= '9')
        return {static_cast<WORD>(key[0]), static_cast<WORD>(VK_NUMPAD0 + key[0] - '0')};
    if (key.size() == 1) return {static_cast<WORD>(key[0])};
    if (key.size() == 2 && key[0] == 'F') return {static_cast<WORD>(VK_F1 + key[1] - '1')};
    return {};  // the panes' own, or the system's
}

void addKeys(std::vector<ACCEL>& keys, const MenuEntry& entry) {
    std::string_view text = entry.keys;
    BYTE modifiers = FVIRTKEY;
    if (takePrefix(text, "Ctrl+")) modifiers |= FCONTROL;
    if (takePrefix(text, "Alt+")) modifiers |= FALT;
    if (takePrefix(text, "Shift+")) modifiers |= FSHIFT;
    if (text == "F4") return;  // closes windows by itself
    for (const WORD key : virtualKeys(text)) {
        keys.push_back({modifiers, key, static_cast<WORD>(entry.command)});
        // Most keyboards have the plus above another character.
        if (text == "+")
            keys.push_back({static_cast<BYTE>(modifiers | FSHIFT), key, static_cast<WORD>(entry.command)});
    }
}

}  // namespace

MenuBar::~MenuBar() {
    if (m_keys) DestroyAcceleratorTable(m_keys);
}

void MenuBar::fill(HMENU popup, const Menu& menu) {
    while (GetMenuItemCount(popup) > 0) DeleteMenu(popup, 0, MF_BYPOSITION);
    for (const MenuEntry& entry : menu.entries) {
        if (entry.command == kNoCommand) {
            AppendMenuW(popup, MF_SEPARATOR, 0, nullptr);
            continue;
        }
        const std::string text = entry.caption + (entry.keys.empty() ? "" : '\t' + entry.keys);
        AppendMenuW(popup,
                    MF_STRING | (entry.isEnabled ? MF_ENABLED : MF_GRAYED) |
                        (entry.isChecked ? MF_CHECKED : MF_UNCHECKED),
                    static_cast<UINT_PTR>(entry.command), kzutil::widen(text).c_str());
    }
}

void MenuBar::makeKeys() {
    std::vector<ACCEL> keys;
    for (const Menu& menu : m_menus) {
        for (const MenuEntry& entry : menu.entries) addKeys(keys, entry);
    }
    const auto isSame = [](const ACCEL& a, const ACCEL& b) {
        return a.fVirt == b.fVirt && a.key == b.key && a.cmd == b.cmd;
    };
    if (std::ranges::equal(keys, m_keyList, isSame)) return;
    m_keyList = std::move(keys);
    if (m_keys) DestroyAcceleratorTable(m_keys);
    m_keys = CreateAcceleratorTableW(m_keyList.data(), static_cast<int>(m_keyList.size()));
}

void MenuBar::show(HWND window, std::vector<Menu> menus) {
    if (menus == m_menus) return;
    m_menus = std::move(menus);
    const bool isNew = !m_bar;
    if (isNew) {
        m_bar = CreateMenu();
        for (const Menu& menu : m_menus) {
            AppendMenuW(m_bar, MF_POPUP, reinterpret_cast<UINT_PTR>(CreatePopupMenu()),
                        kzutil::widen(menu.caption).c_str());
        }
    }
    for (std::size_t i = 0; i < m_menus.size(); ++i) fill(GetSubMenu(m_bar, static_cast<int>(i)), m_menus[i]);
    if (isNew) ::SetMenu(window, m_bar);
    makeKeys();
}

}  // namespace app::window
