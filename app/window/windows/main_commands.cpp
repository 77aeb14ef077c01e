// MainWindow: what its commands do.
#include <charconv>
#include <filesystem>

#include "app/output.h"
#include "app/window/opening.h"
#include "app/window/windows/main_window.h"
#include "app/window/windows/progress_window.h"
#include "kzutil/utf.h"

namespace app::window {

namespace {

constexpr double kZoomStep = 1.4142135623730951;
constexpr char kShowAllTool[] = "AShowAllTool";

// The name of a file beside the drawing, with another extension.
std::string besideOf(const std::string& file, const char* extension) {
    const std::size_t dot = file.find_last_of('.');
    const bool isExtension = dot != file.npos && file.find_first_of("/\\", dot) == file.npos;
    return file.substr(0, isExtension ? dot : file.npos) + extension;
}

// Whether a tool is for the colour that is chosen in the strip: Show All may take one, but works without.
bool isForColor(const APlugInTool& tool) {
    return (tool.flags & kToolTakesItem) != 0 && tool.className.toUtf8() != kShowAllTool;
}

std::string textOf(double number) {
    char text[40];
    return {text, std::to_chars(text, text + sizeof text, number).ptr};
}

void copyText(HWND owner, const std::string& text) {
    const kzutil::WideString wide = kzutil::widen(text);
    const std::size_t bytes = (wide.size() + 1) * sizeof(WCHAR);
    if (!OpenClipboard(owner)) throw Failure{"another program uses the clipboard: try again"};
    EmptyClipboard();
    const HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, bytes);
    if (memory) {
        std::copy_n(wide.c_str(), wide.size() + 1, static_cast<WCHAR*>(GlobalLock(memory)));
        GlobalUnlock(memory);
        if (!SetClipboardData(CF_UNICODETEXT, memory)) GlobalFree(memory);
    }
    CloseClipboard();
}

}  // namespace

bool MainWindow::open(const std::string& file) {
    const std::string name = wholeName(file);
    const bool done = runLine({"open", name});
    std::error_code ignored;
    if (done)
        m_recent.add(name);
    else if (!std::filesystem::exists(std::u8string(name.begin(), name.end()), ignored))
        m_recent.remove(name);
    showHead();
    return done;
}

// The drawing before stays until the other one is there.
void MainWindow::readAndShow(const std::string& file) {
    Opening opening(file, [thread = GetCurrentThreadId()] { PostThreadMessageW(thread, WM_NULL, 0, 0); });
    if (!opening.waitFor(m_patience)) ProgressWindow(opening, file, m_screen).wait(*this);
    m_isCancelled = opening.isCancelled();
    if (m_isCancelled) throw Failure{file + ": opening it was cancelled"};
    Opened opened = opening.take();
    m_canvas.picture().showNothing();
    m_shownList = nullptr;
    m_session.open(std::move(opened.document), file, std::move(opened.list));
}

void MainWindow::perform(int command) {
    const std::vector<Menu> all = menus(menuState());
    const MenuEntry* const entry = findEntry(all, command);
    if (!entry || !entry->isEnabled) return;
    guarded([&] { performEnabled(command); });
    if (m_hWnd) showHead();
}

void MainWindow::performEnabled(int command) {
    if (command >= kFirstTool)
        return runTool(m_session.plugIns().tools().at(static_cast<std::size_t>(command - kFirstTool)));
    if (command >= kFirstRecent)
        return static_cast<void>(
            open(std::string(m_recent.files().at(static_cast<std::size_t>(command - kFirstRecent)))));
    switch (command) {
        case kOpen:
            return openByDialog();
        case kSave:
            return save(false);
        case kSaveShown:
            return save(true);
        case kExport:
            return exportPicture(false);
        case kExportSeen:
            return exportPicture(true);
        case kExit:
            return static_cast<void>(PostMessage(WM_CLOSE));
        case kUndo:
            return static_cast<void>(runLine({"undo"}));
        case kRedo:
            return static_cast<void>(runLine({"redo"}));
        case kSelectAll:
            return static_cast<void>(runLine({"select", "all"}));
        case kSelectNone:
            if (m_session.view().m_selection->getCount() > 0) runLine({"select", "none"});
            return;
        case kSelectMiddle:
            return m_canvas.clickMiddle(false);
        case kCopyScript:
            return copyScript();
        case kForgetScript:
            return m_lines.record().clear();
        case kZoomIn:
            return m_canvas.zoomBy(kZoomStep);
        case kZoomOut:
            return m_canvas.zoomBy(1 / kZoomStep);
        case kFit:
            return m_canvas.fit();
        case kFullSize:
            return m_canvas.showFullSize();
        case kShowAll:
            return static_cast<void>(runLine({"tool", kShowAllTool}));
        case kLayers:
            m_showsLayers = !m_showsLayers;
            return layOut();
        case kNextPane:
            return nextPane();
        case kAbout:
            return about();
        default:
            return;
    }
}

void MainWindow::openByDialog() {
    if (const auto file = m_user.fileToOpen(m_hWnd)) open(*file);
}

void MainWindow::save(bool asShown) {
    const auto file = m_user.fileToWrite(m_hWnd, FileKind::drawing, m_session.fileName());
    if (!file) return;
    if (asShown)
        runLine({"save", *file, "shown"});
    else
        runLine({"save", *file});
}

void MainWindow::exportPicture(bool asSeen) {
    const auto file = m_user.fileToWrite(m_hWnd, FileKind::picture, besideOf(m_session.fileName(), ".png"));
    if (!file) return;
    if (!asSeen) return static_cast<void>(runLine({"render", *file}));
    const Viewport& place = m_canvas.place();
    const AFRect seen = place.visible();
    runLine({"render", *file, std::to_string(place.width()) + 'x' + std::to_string(place.height()),
             textOf(seen.left) + ',' + textOf(seen.top) + ',' + textOf(seen.Width()) + ',' +
                 textOf(seen.Height())});
}

void MainWindow::runTool(const APlugInTool& tool) {
    const std::string name = tool.className.toUtf8();
    if (!isForColor(tool)) return static_cast<void>(runLine({"tool", name}));
    const Swatch* const chosen = m_strip.chosen();
    if (!chosen) return m_user.tell(m_hWnd, "Choose a color in the strip first.", false);
    runLine({"tool", name, chosen->item});
}

void MainWindow::showColorMenu(POINT at) {
    const HMENU popup = CreatePopupMenu();
    if (!popup) return;
    AppendMenuW(popup, MF_STRING | MF_DISABLED, 0, kzutil::widen(m_strip.chosen()->description()).c_str());
    AppendMenuW(popup, MF_SEPARATOR, 0, nullptr);
    const auto& tools = m_session.plugIns().tools();
    std::vector<MenuEntry> entries;
    for (std::size_t i = 0; i < tools.size(); ++i) {
        if (isForColor(tools[i]))
            entries.push_back({kFirstTool + static_cast<int>(i), m_tools[i].name, "", m_tools[i].isValid});
    }
    giveAccessKeys(entries);
    for (const MenuEntry& entry : entries) {
        AppendMenuW(popup, MF_STRING | (entry.isEnabled ? MF_ENABLED : MF_GRAYED),
                    static_cast<UINT_PTR>(entry.command), kzutil::widen(entry.caption).c_str());
    }
    const int command = m_user.chooseFrom(m_hWnd, popup, at);
    DestroyMenu(popup);
    if (command != 0) perform(command);
}

void MainWindow::copyScript() {
    copyText(m_hWnd, m_lines.record().text());
}

void MainWindow::nextPane() {
    const CWnd* const focus = GetFocus();
    if (focus == &m_canvas)
        m_strip.SetFocus();
    else if (focus == &m_strip && m_showsLayers)
        m_layers.SetFocus();
    else
        m_canvas.SetFocus();
}

void MainWindow::about() {
    m_user.tell(
        m_hWnd,
        "kzdraw " KZ_VERSION
        "\n\nSelects the objects of a drawing by their attributes and shows or hides "
        "them by color.\n\nClick selects, Shift adds, dragging draws a rubber band: to the right what lies "
        "within, to the left also what reaches in. The wheel zooms; the middle button, or Space, pans. F6 or "
        "Tab leads to the colors and the layers: there the arrow keys choose, Space shows and hides a layer, "
        "L locks it, Enter opens the menu of a color.",
        false);
}

}  // namespace app::window
