#include "app/window/windows/main_window.h"

#include <shellapi.h>

#include <new>

#include "app/window/windows/dialog_recorder.h"
#include "kzutil/message_box.h"
#include "kzutil/utf.h"
#include "platform/afx/creation.h"
#include "platform/afx/modal_loop.h"

namespace app::window {

namespace {

MainWindow* theWindow = nullptr;  // whose user is told the plug-in's messages

// Most of the screen, in its middle.
RECT firstPlace() {
    RECT work;
    SystemParametersInfoW(SPI_GETWORKAREA, 0, &work, 0);
    InflateRect(&work, -(work.right - work.left) / 12, -(work.bottom - work.top) / 12);
    return work;
}

}  // namespace

BEGIN_MESSAGE_MAP(MainWindow, CWnd)
ON_WM_CREATE()
ON_WM_DESTROY()
ON_WM_SIZE()
ON_WM_SETFOCUS()
ON_WM_GETMINMAXINFO()
ON_MESSAGE(WM_DROPFILES, onDropFiles)
ON_MESSAGE(WM_DPICHANGED, onDpiChanged)
ON_MESSAGE(WM_DRAWITEM, onDrawItem)
ON_MESSAGE(WM_MENUSELECT, onMenuSelect)
END_MESSAGE_MAP()

MainWindow::MainWindow(User& user)
    : m_user(user),
      m_lines(m_session, [this](const std::string& file) { readAndShow(file); }),
      m_pointing(m_session),
      m_canvas(m_screen, {[this](AFPoint point, double reach, bool adds) {
                              guarded([&] {
                                  if (auto names = m_pointing.click(point, reach, adds))
                                      select(std::move(*names));
                              });
                          },
                          [this](AFPoint from, AFPoint to, bool adds) {
                              guarded([&] {
                                  if (auto names = m_pointing.band(from, to, adds)) select(std::move(*names));
                              });
                          },
                          [this] { perform(kSelectNone); }, [this] { showHead(); }}),
      m_strip(m_screen, {[this] { showHead(); }, [this](POINT at) { showColorMenu(at); },
                         [this] { m_canvas.SetFocus(); }}),
      m_layers(m_screen, {[this](const std::string& name, const char* change) {
                              runLine({"layer", name, change});
                          },
                          [this] { m_canvas.SetFocus(); }}) {
    m_recent.read();
    theWindow = this;
    setMessagePresenter(presentMessage);
}

MainWindow::~MainWindow() {
    DestroyWindow();
    m_canvas.picture().showNothing();
    if (m_icon) DestroyIcon(m_icon);
    setMessagePresenter(nullptr);
    theWindow = nullptr;
}

int MainWindow::presentMessage(const AString& text, UINT flags) {
    CWnd* const modal = AfxGetModalWindow();
    theWindow->m_user.tell(modal ? modal->m_hWnd : theWindow->m_hWnd, text.toUtf8(),
                           (flags & kMessageInforms) == 0);
    return IDOK;
}

bool MainWindow::guarded(const std::function<void()>& act) {
    std::string reason;
    try {
        act();
        return true;
    } catch (const Failure& failure) {
        reason = failure.reason;
    } catch (const std::bad_alloc&) {
        reason = "not enough memory";
    } catch (const std::exception& error) {
        reason = error.what();
    }
    if (!std::exchange(m_isCancelled, false)) m_user.tell(m_hWnd, reason, true);
    return false;
}

bool MainWindow::runLine(const std::vector<std::string>& words) {
    const bool done = guarded([&] {
        if (words[0] == "tool") {
            const DialogRecorder recorder(
                [this](const std::vector<std::string>& noted) { m_lines.note(noted); });
            m_lines.run(words);
        } else {
            m_lines.run(words);
        }
    });
    m_isChanged = m_isChanged || words[0] != "select";
    guarded([this] { follow(); });
    return done;
}

void MainWindow::select(Names names) {
    if (names.empty()) names.push_back("none");
    names.insert(names.begin(), "select");
    runLine(names);
}

bool MainWindow::create() {
    WNDCLASSEXW description = {};
    description.cbSize = sizeof description;
    description.lpfnWndProc = ::DefWindowProcW;
    description.lpszClassName = L"kzdraw";
    description.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    description.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1);
    if (!RegisterClassExW(&description) && GetLastError() != ERROR_CLASS_ALREADY_EXISTS) return false;
    const RECT place = firstPlace();
    return CreateEx(WS_EX_ACCEPTFILES, L"kzdraw", L"kzdraw", WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, place,
                    nullptr, 0) != FALSE;
}

int MainWindow::OnCreate(CREATESTRUCTW*) {
    m_screen.setDpi(Screen::dpiOf(m_hWnd));
    if (!createPanes()) return -1;
    follow();
    return 0;
}

void MainWindow::OnDestroy() {
    m_canvas.picture().showNothing();
    PostQuitMessage(0);
}

int MainWindow::run() {
    MSG message;
    while (GetMessageW(&message, nullptr, 0, 0) > 0) {
        if (!PreTranslateMessage(&message)) {
            TranslateMessage(&message);
            DispatchMessageW(&message);
        }
        guarded([] { AfxRethrowException(); });
    }
    return static_cast<int>(message.wParam);
}

BOOL MainWindow::PreTranslateMessage(MSG* message) {
    if (!m_hWnd || !IsWindowEnabled()) return FALSE;
    if (message->message == WM_KEYDOWN && message->wParam == VK_TAB) {
        perform(kNextPane);
        return TRUE;
    }
    return m_menu.keys() && TranslateAcceleratorW(m_hWnd, m_menu.keys(), message) != 0;
}

BOOL MainWindow::OnCommand(WPARAM wParam, LPARAM lParam) {
    if (lParam != 0 && reinterpret_cast<HWND>(lParam) == m_badge) {
        m_canvas.SetFocus();
        perform(kShowAll);
    } else {
        perform(LOWORD(wParam));
    }
    return TRUE;
}

BOOL MainWindow::OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* result) {
    auto& notice = *reinterpret_cast<NMHDR*>(lParam);
    if (notice.code != TTN_GETDISPINFOW) return CWnd::OnNotify(wParam, lParam, result);
    auto& asked = *reinterpret_cast<NMTTDISPINFOW*>(lParam);
    *result = 0;
    return m_commandBar.giveTip(asked) || m_toolColumn.giveTip(asked) || m_strip.giveTip(asked);
}

LRESULT MainWindow::onDropFiles(WPARAM wParam, LPARAM) {
    const auto drop = reinterpret_cast<HDROP>(wParam);
    kzutil::WideString name(DragQueryFileW(drop, 0, nullptr, 0) + 1, L'\0');
    name.resize(DragQueryFileW(drop, 0, name.data(), static_cast<UINT>(name.size())));
    DragFinish(drop);
    if (IsWindowEnabled()) open(kzutil::narrow(name));
    return 0;
}

LRESULT MainWindow::onDpiChanged(WPARAM wParam, LPARAM rect) {
    m_screen.setDpi(HIWORD(wParam));
    showBars();
    const RECT& place = *reinterpret_cast<const RECT*>(rect);
    MoveWindow(place);
    layOut();
    m_canvas.screenChanged();
    return 0;
}

// What a menu's entry does stands in the status bar.
LRESULT MainWindow::onMenuSelect(WPARAM wParam, LPARAM) {
    const auto tool = static_cast<std::size_t>(LOWORD(wParam)) - kFirstTool;
    m_hint = LOWORD(wParam) >= kFirstTool && tool < m_toolTips.size() ? m_toolTips[tool] : "";
    showHead();
    return 0;
}

void MainWindow::OnSetFocus(CWnd*) {
    m_canvas.SetFocus();
}

}  // namespace app::window
