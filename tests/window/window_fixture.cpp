#include "window/window_fixture.h"

#include <cstdlib>
#include <fstream>

#include "app/window/windows/pane.h"
#include "canvas/image.h"
#include "kzutil/preference_manager.h"
#include "kzutil/utf.h"
#include "platform/afx/creation.h"

namespace test {

using namespace app::window;

int AnsweringUser::chooseFrom(HWND, HMENU popup, POINT) {
    menu.clear();
    int chosen = 0;
    for (int i = 0; i < GetMenuItemCount(popup); ++i) {
        WCHAR text[300] = {};
        GetMenuStringW(popup, static_cast<UINT>(i), text, 300, MF_BYPOSITION);
        menu.push_back(plainCaption(kzutil::narrow(text)));
        if (menu.back() == choice) chosen = static_cast<int>(GetMenuItemID(popup, i));
    }
    return chosen;
}

WindowTest::WindowTest() {
    APreferenceManager::setFolder(folder.path() / "prefs");
}

WindowTest::~WindowTest() {
    window.DestroyWindow();
    MSG quit;
    while (PeekMessageW(&quit, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE)) {
    }
    APreferenceManager::setFolder({});
}

void WindowTest::createWindow() {
    ASSERT_TRUE(window.create());
    window.MoveWindow(0, 0, 900, 700);
    window.ShowWindow(SW_SHOW);
    window.canvas().SetFocus();
    settle();
}

void WindowTest::SetUp() {
    createWindow();
    ASSERT_TRUE(window.open(write("park.svg", kPark))) << user.told.back();
    window.lines().record().clear();
    window.canvas().SetFocus();
    settle();
}

std::string WindowTest::utf8(const std::filesystem::path& path) {
    const std::u8string text = path.u8string();
    return {text.begin(), text.end()};
}

std::vector<std::string> WindowTest::selected() {
    std::vector<std::string> names;
    for (const AObject* object : window.session().view().m_selection->getObjects())
        names.emplace_back(object->getNameUtf8());
    return names;
}

std::string WindowTest::status(int part) const {
    WCHAR text[300] = {};
    ::SendMessageW(window.statusBar(), SB_GETTEXTW, static_cast<WPARAM>(part),
                   reinterpret_cast<LPARAM>(text));
    return kzutil::narrow(text);
}

int WindowTest::hidden() {
    return std::atoi(status(3).c_str());
}

CPoint WindowTest::pixelOf(double x, double y) {
    const AFPoint pixel = window.canvas().place().toPixel({x, y});
    return {static_cast<LONG>(pixel.x), static_cast<LONG>(pixel.y)};
}

void WindowTest::drag(CPoint from, CPoint to, UINT flags) {
    const auto at = [](CPoint point) { return MAKELPARAM(point.x, point.y); };
    CWnd& canvas = window.canvas();
    canvas.SendMessage(WM_LBUTTONDOWN, MK_LBUTTON | flags, at(from));
    const CPoint middle((from.x + to.x) / 2, (from.y + to.y) / 2);
    canvas.SendMessage(WM_MOUSEMOVE, MK_LBUTTON | flags, at(middle));
    canvas.SendMessage(WM_MOUSEMOVE, MK_LBUTTON | flags, at(to));
    canvas.SendMessage(WM_LBUTTONUP, flags, at(to));
    settle();
}

void WindowTest::click(double x, double y, UINT flags) {
    drag(pixelOf(x, y), pixelOf(x, y), flags);
}

void WindowTest::band(double x0, double y0, double x1, double y1, UINT flags) {
    drag(pixelOf(x0, y0), pixelOf(x1, y1), flags);
}

void WindowTest::wheel(CPoint at, int notches, UINT flags) {
    window.canvas().ClientToScreen(&at);
    window.canvas().SendMessage(WM_MOUSEWHEEL, MAKEWPARAM(flags, notches * WHEEL_DELTA),
                                MAKELPARAM(at.x, at.y));
    settle();
}

void WindowTest::key(int key, const std::string& modifiers) {
    BYTE state[256] = {};
    const bool alt = modifiers.find("Alt") != modifiers.npos;
    if (modifiers.find("Ctrl") != modifiers.npos) state[VK_CONTROL] = 0x80;
    if (modifiers.find("Shift") != modifiers.npos) state[VK_SHIFT] = 0x80;
    if (alt) state[VK_MENU] = 0x80;
    SetKeyboardState(state);
    ::PostMessageW(::GetFocus(), alt ? WM_SYSKEYDOWN : WM_KEYDOWN, static_cast<WPARAM>(key),
                   alt ? 1 << 29 | 1 : 1);
    settle();
    const BYTE released[256] = {};
    SetKeyboardState(const_cast<BYTE*>(released));
    ::PostMessageW(::GetFocus(), alt ? WM_SYSKEYUP : WM_KEYUP, static_cast<WPARAM>(key), 1);
    settle();
}

void WindowTest::clickOn(HWND control, POINT at) {
    ::PostMessageW(control, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(at.x, at.y));
    ::PostMessageW(control, WM_LBUTTONUP, 0, MAKELPARAM(at.x, at.y));
    settle();
}

void WindowTest::pressButton(int command) {
    ToolBar& bar = command >= kFirstTool ? window.toolColumn() : window.commandBar();
    const RECT rect = bar.buttonRect(command);
    clickOn(bar, {(rect.left + rect.right) / 2, (rect.top + rect.bottom) / 2});
}

void WindowTest::settle() {
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        if (window.PreTranslateMessage(&message)) continue;
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
    AfxRethrowException();
}

void WindowTest::paint() {
    window.canvas().Invalidate(FALSE);
    window.canvas().UpdateWindow();  // which asks for the tiles
    window.canvas().picture().finish();
    settle();
    window.canvas().Invalidate(FALSE);
    window.canvas().UpdateWindow();
    settle();
}

AImage WindowTest::grab(HWND of, const RECT& area) {
    const CClientDC source(of);
    const int width = static_cast<int>(area.right - area.left),
              height = static_cast<int>(area.bottom - area.top);
    PaintBuffer buffer(source, width, height);
    ::BitBlt(buffer.context(), 0, 0, width, height, source, area.left, area.top, SRCCOPY);
    buffer.flush();
    AImage image(width, height);
    const auto* const pixels = static_cast<const std::uint32_t*>(buffer.pixels().bits);
    for (std::size_t i = 0; i < image.pixels().size(); ++i) image.pixels()[i] = pixels[i] | 0xff000000;
    return image;
}

AImage WindowTest::grabCanvas() {
    paint();
    RECT client;
    window.canvas().GetClientRect(&client);
    return grab(window.canvas(), client);
}

void WindowTest::keepPicture(const std::string& name) {
    const char* const pictures = std::getenv("KZ_WINDOW_PICTURES");
    if (!pictures) return;
    RECT rect;
    window.GetWindowRect(&rect);
    const std::string bytes = encodePng(grab(nullptr, rect));
    std::ofstream(std::filesystem::path(pictures) / (name + ".png"), std::ios::binary) << bytes;
}

int toolCommand(MainWindow& window, const std::string& className) {
    const auto& tools = window.session().plugIns().tools();
    for (std::size_t i = 0; i < tools.size(); ++i) {
        if (tools[i].className.toUtf8() == className) return kFirstTool + static_cast<int>(i);
    }
    return 0;
}

}  // namespace test
