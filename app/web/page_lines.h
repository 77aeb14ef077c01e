// PageLines: a page as the author of a script, in the process of its session.
//
// What the page asks for is handed over by the thread that reads the socket, and answered one by one by the thread of
// the session. A line is answered when the session asks for the next one: it is done then, or its dialog waits for
// the page. The files that lines may open are those that the user named or dropped; none is written.
#pragma once

#include <condition_variable>
#include <deque>
#include <map>
#include <mutex>
#include <optional>
#include <vector>

#include "app/output.h"
#include "app/script/line_source.h"
#include "app/web/frame.h"
#include "app/web/tile_drawer.h"

namespace app::web {

class PageLines : public LineSource {
public:
    // Sends a frame to the page; from any thread.
    using Send = std::function<void(Frame frame)>;

    PageLines(Session& session, std::vector<std::string> files, Send send);

    // From another thread: what the page asks for, tiles included.
    void take(Frame frame);
    // From another thread: the page is gone.
    void end();

    bool next(std::string& line, driver::Dialog* dialog) override;
    bool goesOnAfter(const std::string& reason) override;
    void open(Session& session, const std::string& name) override;
    void write(const std::string& name, std::string_view bytes) override;

private:
    bool wait(Frame& frame);
    void answerLine(driver::Dialog* dialog);
    void showPicture();
    void answerOther(const Frame& frame);
    std::string fileFor(const Frame& frame);
    void drop(std::string payload);

    Session& m_session;
    const std::vector<std::string> m_files;
    const Send m_send;
    std::map<std::string, std::string> m_dropped;  // bytes by name

    std::uint32_t m_call = 0;  // of the line that runs; 0: none
    std::string m_output;      // what it has printed
    std::optional<PrintedText> m_capture;
    std::optional<std::string> m_reason;  // why it does not work

    std::mutex m_mutex;  // guards what follows
    std::condition_variable m_changed;
    std::deque<Frame> m_frames;
    bool m_ended = false;

    TileDrawer m_tiles;  // the last member: its threads end first
};

}  // namespace app::web
