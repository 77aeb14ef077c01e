// MainWindow: the window of a session. Whatever it does is a script line that it runs (WindowLines), or moves what is
// seen; what it shows is what the session reports.
//
//     User user;
//     MainWindow window(user);
//     if (!window.create()) …
//     window.ShowWindow(SW_SHOWDEFAULT);
//     window.open("harbour.svg");
//     return window.run();                    // until it is closed
//
// One window in a process: a host has one active view.
#pragma once

#include <chrono>
#include <functional>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "app/window/menu_model.h"
#include "app/window/pointing.h"
#include "app/window/recent_files.h"
#include "app/window/window_lines.h"
#include "app/window/windows/canvas_window.h"
#include "app/window/windows/color_strip.h"
#include "app/window/windows/layer_list.h"
#include "app/window/windows/menu_bar.h"
#include "app/window/windows/tool_bar.h"
#include "app/window/windows/user.h"

namespace app::window {

class MainWindow : public CWnd {
public:
    // Raises bad_alloc. The user outlives it.
    explicit MainWindow(User& user);
    ~MainWindow() override;

    // Not shown yet.
    bool create();
    // Handles messages until it is closed. Returns the exit status.
    int run();

    // Runs a line; what does not work is told to the user: then false.
    bool runLine(const std::vector<std::string>& words);
    bool open(const std::string& file);
    // Does nothing when the command is not enabled.
    void perform(int command);

    Session& session() { return m_session; }
    WindowLines& lines() { return m_lines; }
    CanvasWindow& canvas() { return m_canvas; }
    ColorStrip& strip() { return m_strip; }
    LayerList& layers() { return m_layers; }
    ToolBar& commandBar() { return m_commandBar; }
    ToolBar& toolColumn() { return m_toolColumn; }
    HWND badge() const { return m_badge; }
    HWND statusBar() const { return m_status; }
    const MenuBar& menuBar() const { return m_menu; }
    // For how long a drawing may be read before a progress window shows.
    void setPatience(std::chrono::milliseconds patience) { m_patience = patience; }

    BOOL PreTranslateMessage(MSG* message) override;
    BOOL OnCommand(WPARAM wParam, LPARAM lParam) override;
    BOOL OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* result) override;

protected:
    int OnCreate(CREATESTRUCTW* creation);
    void OnDestroy();
    void OnSize(UINT type, int width, int height);
    void OnSetFocus(CWnd* before);
    void OnGetMinMaxInfo(MINMAXINFO* sizes);
    LRESULT onDropFiles(WPARAM drop, LPARAM);
    LRESULT onDpiChanged(WPARAM wParam, LPARAM rect);
    LRESULT onDrawItem(WPARAM, LPARAM item);
    LRESULT onMenuSelect(WPARAM wParam, LPARAM menu);
    DECLARE_MESSAGE_MAP()

private:
    // What goes wrong within is told to the user: then false.
    bool guarded(const std::function<void()>& act);
    static int presentMessage(const AString& text, UINT flags);
    void select(Names names);

    // main_commands.cpp
    void performEnabled(int command);
    void openByDialog();
    void save(bool asShown);
    void exportPicture(bool asSeen);
    void runTool(const APlugInTool& tool);
    void copyScript();
    void readAndShow(const std::string& file);
    void showColorMenu(POINT at);
    void nextPane();
    void about();

    // main_state.cpp
    void follow();
    void followDrawing(const nlohmann::ordered_json& state);
    void followSelection();
    void followColors(bool isOther);
    void followTools();
    void showHead();
    MenuState menuState() const;

    // main_layout.cpp
    void showIcon();
    bool createPanes();
    void showBars();
    void layOut();

    User& m_user;
    Screen m_screen;
    Session m_session;
    WindowLines m_lines;
    Pointing m_pointing;
    RecentFiles m_recent;
    std::chrono::milliseconds m_patience{200};

    MenuBar m_menu;
    ToolBar m_commandBar{ToolBar::Shape::row};
    ToolBar m_toolColumn{ToolBar::Shape::column};
    CanvasWindow m_canvas;
    ColorStrip m_strip;
    LayerList m_layers;
    HICON m_icon = nullptr;
    HWND m_badge = nullptr;
    HWND m_status = nullptr;
    bool m_showsLayers = true;
    std::vector<std::string> m_statusTexts;
    std::string m_hint;  // of the entry that a menu is at

    nlohmann::ordered_json m_seen;                    // the state when it was last followed
    std::shared_ptr<const ADisplayList> m_shownList;  // the canvas's
    std::vector<MenuTool> m_tools;                    // of the export tables
    std::vector<std::string> m_toolTips;              // of them
    bool m_isCancelled = false;                       // by the user, who need not be told
    bool m_isChanged = false;                         // by something else than a selection
};

}  // namespace app::window
