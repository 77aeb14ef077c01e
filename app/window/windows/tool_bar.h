// A bar of buttons with icons: commands in a row, or tools below each other with their names.
#pragma once

#include <string>
#include <vector>

#include "app/window/windows/screen.h"
#include "platform/afx/wnd.h"

namespace app::window {

struct BarButton {
    int command = 0;  // 0: a gap
    std::string icon;
    std::string name;  // of its tip; shown beside the icon in a column
    std::string tip;   // more of the tip, or nothing
};

class ToolBar : public CWnd {
public:
    enum class Shape { row, column };

    explicit ToolBar(Shape shape) : m_shape(shape) {}
    ~ToolBar() override;

    bool create(CWnd& parent, LPCWSTR name, UINT id);
    // In place of those before, for this screen.
    void show(std::vector<BarButton> buttons, const Screen& screen);
    const std::vector<BarButton>& buttons() const { return m_buttons; }
    void enable(int command, bool isEnabled);
    bool isEnabled(int command) const;

    // What the buttons take.
    SIZE size() const;
    // In the bar's client area.
    RECT buttonRect(int command) const;
    // Answers the tip's request for its text.
    bool giveTip(NMTTDISPINFOW& asked);
    HWND tips() const { return reinterpret_cast<HWND>(SendMessage(TB_GETTOOLTIPS)); }

private:
    HIMAGELIST drawIcons(const Screen& screen, COLORREF color) const;
    int columnWidth(const Screen& screen) const;
    void destroyIcons();

    const Shape m_shape;
    std::vector<BarButton> m_buttons;
    HIMAGELIST m_icons = nullptr, m_disabledIcons = nullptr;
    std::basic_string<WCHAR> m_tip;  // as long as it is shown
};

}  // namespace app::window
