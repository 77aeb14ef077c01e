// A window with a drawing open, and a user who acts on it: with messages, never with the real mouse.
#pragma once

#include <gtest/gtest.h>

#include "app/window/windows/main_window.h"
#include "platform/driver/driver.h"
#include "support/temp_folder.h"

namespace test {

// Answers what the window asks, and keeps what it tells.
class AnsweringUser : public app::window::User {
public:
    std::optional<std::string> file;  // that is chosen, to open or to write
    std::string suggestion;           // of the name to write to
    std::string choice;               // what is chosen of a menu, as it reads; empty: nothing
    std::vector<std::string> menu;    // what there was to choose from
    std::vector<std::string> told;
    bool wasError = false;  // what was told last

    std::optional<std::string> fileToOpen(HWND) override { return file; }
    std::optional<std::string> fileToWrite(HWND, app::window::FileKind, const std::string& name) override {
        suggestion = name;
        return file;
    }
    int chooseFrom(HWND, HMENU popup, POINT) override;
    void tell(HWND, const std::string& text, bool isError) override {
        told.push_back(text);
        wasError = isError;
    }
};

class WindowTest : public testing::Test {
protected:
    WindowTest();
    ~WindowTest() override;
    // With kPark open.
    void SetUp() override;
    void createWindow();

    // Returns the whole name. Both are UTF-8.
    std::string write(const std::string& name, const std::string& bytes) {
        return utf8(folder.write(std::u8string(name.begin(), name.end()), bytes));
    }
    static std::string utf8(const std::filesystem::path& path);

    std::vector<std::string> selected();
    std::string recorded() { return window.lines().record().text(); }
    int hidden();  // objects, as the status bar tells
    std::string status(int part) const;
    // Where a place of the drawing is on the canvas.
    CPoint pixelOf(double x, double y);

    // Flags are those of mouse messages: MK_SHIFT.
    void click(double x, double y, UINT flags = 0);
    void drag(CPoint from, CPoint to, UINT flags = 0);
    void band(double x0, double y0, double x1, double y1, UINT flags = 0);
    void wheel(CPoint at, int notches, UINT flags = 0);
    void key(int key, const std::string& modifiers = "");
    void clickOn(HWND control, POINT at);
    void pressButton(int command);  // of one of the two bars
    // Handles all that is posted, as the window's own loop does.
    void settle();

    // Waits for all tiles, then paints.
    void paint();
    // What stands on the screen, in a window's client area.
    AImage grab(HWND of, const RECT& area);
    AImage grabCanvas();
    // Writes a picture of the whole screen's part where somebody asked for pictures: KZ_WINDOW_PICTURES names a folder.
    void keepPicture(const std::string& name);

    TempFolder folder;
    AnsweringUser user;
    app::window::MainWindow window{user};
};

// The command of a tool, by its class; 0: there is none.
int toolCommand(app::window::MainWindow& window, const std::string& className);

inline constexpr char kPark[] = R"svg(<svg xmlns="http://www.w3.org/2000/svg" width="100" height="80"
     xmlns:inkscape="http://www.inkscape.org/namespaces/inkscape">
  <defs><linearGradient id="dawn"><stop offset="0" stop-color="white"/><stop offset="1" stop-color="gold"/>
    </linearGradient></defs>
  <g inkscape:groupmode="layer" inkscape:label="Ground">
    <rect id="lawn" y="40" width="100" height="40" fill="green"/>
    <rect id="wall" x="10" y="50" width="20" height="20" fill="red"/>
    <rect id="door" x="16" y="58" width="6" height="12" fill="url(#dawn)"/>
    <rect id="kiosk" x="60" y="50" width="10" height="10" fill="red"/>
  </g>
  <g inkscape:groupmode="layer" inkscape:label="Air">
    <circle id="sun" cx="50" cy="10" r="5" fill="gold"/>
  </g>
</svg>
)svg";

}  // namespace test
