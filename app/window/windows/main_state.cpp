// MainWindow: shows what the session tells to be another than before.
#include <cmath>
#include <utility>

#include "app/picture.h"
#include "app/place_report.h"
#include "app/report.h"
#include "app/state_report.h"
#include "app/window/windows/main_window.h"
#include "kzutil/utf.h"

namespace app::window {

namespace {

using Json = nlohmann::ordered_json;

bool isOther(const Json& before, const Json& now, std::initializer_list<const char*> names) {
    for (const char* name : names) {
        if (before.is_null() || before[name] != now[name]) return true;
    }
    return false;
}

// With a comma between thousands.
std::string grouped(const Json& number) {
    std::string text = std::to_string(number.get<std::size_t>());
    for (std::size_t at = text.size(); at > 3;) text.insert(at -= 3, ",");
    return text;
}

std::string fileNameOf(const std::string& path) {
    return path.substr(path.find_last_of("/\\") + 1);
}

// Where the page has no extent, what the objects cover.
AFRect pageOf(ADocument& document) {
    try {
        return shownArea(document);
    } catch (const Failure&) {
        return {0, 0, 100, 100};
    }
}

}  // namespace

void MainWindow::follow() {
    const Json before = std::exchange(m_seen, reportState(m_session, nullptr)["state"]);
    const bool isChanged = std::exchange(m_isChanged, false);
    if (m_session.hasDocument()) {
        const bool isOtherDrawing = isOther(before, m_seen, {"drawing"});
        if (isOther(before, m_seen, {"drawing", "shown"})) followDrawing(before);
        if (isChanged || isOther(before, m_seen, {"drawing", "shown", "filter"}))
            followColors(isOtherDrawing);
        if (isChanged || isOther(before, m_seen, {"drawing", "selection"})) followSelection();
        if (isChanged || isOtherDrawing) m_layers.show(layersOf(m_session));
    }
    followTools();
    showHead();
}

void MainWindow::followDrawing(const Json& before) {
    ShownDrawing& shown = m_session.shown();
    const auto paint = shown.paint();
    if (isOther(before, m_seen, {"drawing"})) {
        ADocument& document = m_session.document();
        m_canvas.setPage(pageOf(document), document.getPageScale());
        m_shownList = nullptr;
    }
    if (m_shownList != shown.list()) {
        m_canvas.picture().show(shown.list(), paint);
        m_shownList = shown.list();
        followSelection();
    } else {
        m_canvas.picture().showPaint(paint);
    }
    m_canvas.Invalidate(FALSE);
}

void MainWindow::followSelection() {
    std::vector<AFRect> marks;
    const Json report = reportExtents(m_session)["extents"];
    for (const Json& box : report["boxes"]) {
        const double x = box[0], y = box[1], width = box[2], height = box[3];
        marks.push_back({x, y, x + width, y + height});
    }
    m_canvas.picture().setMarks(std::move(marks));
    m_canvas.Invalidate(FALSE);
}

void MainWindow::followColors(bool isOtherDrawing) {
    std::vector<Swatch> swatches = swatchesOf(m_session);
    if (isOtherDrawing || swatches != m_strip.swatches()) m_strip.show(std::move(swatches), isOtherDrawing);
}

void MainWindow::followTools() {
    std::size_t i = 0;
    const Json report = reportTools(m_session);
    for (const Json& tool : report["tools"]) {
        m_tools[i].isValid = tool["valid"];
        m_toolColumn.enable(kFirstTool + static_cast<int>(i), m_tools[i].isValid);
        ++i;
    }
}

MenuState MainWindow::menuState() const {
    MenuState state;
    state.showsLayers = m_showsLayers;
    state.tools = m_tools;
    state.recent = m_recent.files();
    if (m_seen.is_null() || m_seen["file"].is_null()) return state;
    state.isOpen = true;
    state.canUndo = m_seen["undo"];
    state.canRedo = m_seen["redo"];
    state.isFiltered = m_seen["filter"];
    state.hasScript = !m_lines.record().isEmpty();
    return state;
}

// The menus, the bar, the title, the badge and the status bar.
void MainWindow::showHead() {
    if (!m_status) return;
    const MenuState state = menuState();
    m_menu.show(m_hWnd, menus(state));
    for (const BarButton& button : m_commandBar.buttons()) {
        if (button.command != 0)
            m_commandBar.enable(button.command, findEntry(m_menu.menus(), button.command)->isEnabled);
    }
    ::ShowWindow(m_badge, state.isFiltered ? SW_SHOW : SW_HIDE);
    const std::string title =
        state.isOpen ? fileNameOf(m_seen["file"]) + " \xE2\x80\x93 kzdraw" : std::string("kzdraw");
    if (kzutil::narrow(GetWindowText()) != title) SetWindowText(kzutil::widen(title).c_str());
    const Swatch* const chosen = m_strip.chosen();
    std::vector<std::string> parts(5);
    parts[0] = !m_hint.empty() ? m_hint
               : chosen        ? chosen->description()
               : !state.isOpen ? "Drop an SVG drawing here, or open one."
                               : "";
    if (state.isOpen) {
        parts[1] = grouped(m_seen["objects"]) + (m_seen["objects"] == 1 ? " object" : " objects");
        parts[2] = grouped(m_seen["selected"]) + " selected";
        parts[3] = grouped(m_seen["hidden"]) + " hidden";
        parts[4] = std::to_string(std::lround(m_canvas.place().percent())) + " %";
    }
    m_statusTexts.resize(parts.size());
    for (std::size_t i = 0; i < parts.size(); ++i) {
        if (m_statusTexts[i] == parts[i]) continue;  // else it would flicker
        m_statusTexts[i] = parts[i];
        ::SendMessageW(m_status, SB_SETTEXTW, i, reinterpret_cast<LPARAM>(kzutil::widen(parts[i]).c_str()));
    }
}

}  // namespace app::window
