#include "app/web/page_lines.h"

#include <algorithm>
#include <charconv>
#include <new>

#include "app/picture.h"
#include "app/state_report.h"
#include "app/written_drawing.h"
#include "kzcore/view/view.h"

namespace app::web {

namespace {

constexpr std::size_t kMostDropped = 4;

// What a line printed, one JSON value a line, as an array.
std::string asArray(std::string printed) {
    if (printed.ends_with('\n')) printed.pop_back();
    std::ranges::replace(printed, '\n', ',');
    return '[' + printed + ']';
}

}  // namespace

PageLines::PageLines(Session& session, std::vector<std::string> files, Send send)
    : m_session(session),
      m_files(std::move(files)),
      m_send(std::move(send)),
      m_tiles([this](std::uint32_t call, std::optional<std::string> png) {
          if (png)
              m_send({call, '+', std::move(*png)});
          else
              m_send({call, '-', "this picture is not shown any more"});
      }) {}

void PageLines::take(Frame frame) {
    if (frame.kind == 'T') {
        m_tiles.want(frame.call, frame.payload);
        return;
    }
    {
        const std::lock_guard lock(m_mutex);
        m_frames.push_back(std::move(frame));
    }
    m_changed.notify_all();
}

void PageLines::end() {
    {
        const std::lock_guard lock(m_mutex);
        m_ended = true;
    }
    m_changed.notify_all();
}

bool PageLines::wait(Frame& frame) {
    std::unique_lock lock(m_mutex);
    m_changed.wait(lock, [this] { return m_ended || !m_frames.empty(); });
    if (m_ended) return false;
    frame = std::move(m_frames.front());
    m_frames.pop_front();
    return true;
}

bool PageLines::next(std::string& line, driver::Dialog* dialog) {
    answerLine(dialog);
    for (Frame frame; wait(frame);) {
        if (frame.kind != 'L') {
            answerOther(frame);
            continue;
        }
        m_call = frame.call;
        m_output.clear();
        m_reason.reset();
        m_capture.emplace(m_output);
        line = std::move(frame.payload);
        return true;
    }
    return false;
}

bool PageLines::goesOnAfter(const std::string& reason) {
    m_reason = reason;
    return true;
}

// Pictures of the new drawing are made after the answer: the list that they are drawn from takes time.
void PageLines::answerLine(driver::Dialog* dialog) {
    m_capture.reset();
    if (m_call == 0) return;
    const std::uint32_t call = std::exchange(m_call, 0);
    std::string answer;
    try {
        const nlohmann::ordered_json state = reportState(m_session, dialog);
        const auto replace = nlohmann::ordered_json::error_handler_t::replace;
        answer = "{\"output\":" + asArray(std::move(m_output)) + ",\"error\":" +
                 (m_reason ? nlohmann::ordered_json(*m_reason).dump(-1, ' ', false, replace) : "null") + ',' +
                 state.dump(-1, ' ', false, replace).substr(1);
    } catch (const std::bad_alloc&) {
        m_send({call, '-', "not enough memory"});
        return;
    }
    m_output = {};
    m_send({call, '+', std::move(answer)});
    try {
        showPicture();
    } catch (const std::bad_alloc&) {
        m_tiles.showNothing();
    }
}

void PageLines::showPicture() {
    if (!m_session.hasDocument()) return;
    ShownDrawing& shown = m_session.shown();
    const auto list = shown.list();
    const auto paint = shown.paint();
    m_tiles.show({m_session.openCount(), shown.revision()}, list, paint);
}

void PageLines::open(Session& session, const std::string& name) {
    const auto dropped = m_dropped.find(name);
    const bool isNamed = std::ranges::find(m_files, name) != m_files.end();
    if (dropped == m_dropped.end() && !isNamed) {
        throw Failure{"the page knows no file " + inQuotes(name) +
                      ": drop it onto the page, or name it when you start kzdraw serve"};
    }
    m_tiles.showNothing();  // the drawing before goes away
    if (dropped != m_dropped.end())
        session.openBytes(dropped->second, name);
    else
        session.open(name);
}

void PageLines::write(const std::string& name, std::string_view) {
    throw Failure{"a page writes no file " + inQuotes(name) + ": download the drawing or the picture"};
}

void PageLines::drop(std::string payload) {
    const std::size_t end = payload.find('\n');
    const std::string name = payload.substr(0, end);
    payload.erase(0, end == std::string::npos ? end : end + 1);
    if (m_dropped.size() >= kMostDropped && !m_dropped.contains(name)) m_dropped.erase(m_dropped.begin());
    m_dropped[name] = std::move(payload);
}

// The bytes that were asked for. Raises Failure.
std::string PageLines::fileFor(const Frame& frame) {
    ADocView& view = m_session.view();
    if (frame.kind == 'D')
        return drawingBytes(m_session.document(), frame.payload == "shown" ? view.m_viewFilter : nullptr);
    PictureSize size;
    if (!frame.payload.empty()) size = readPictureSize(frame.payload);
    return drawPng(view, {.size = size});
}

void PageLines::answerOther(const Frame& frame) {
    try {
        if (frame.kind == 'F') {
            drop(frame.payload);
            m_send({frame.call, '+', {}});
        } else {
            m_send({frame.call, '+', fileFor(frame)});
        }
    } catch (const Failure& failure) {
        m_send({frame.call, '-', failure.reason});
    } catch (const std::bad_alloc&) {
        m_send({frame.call, '-', "not enough memory"});
    }
}

}  // namespace app::web
