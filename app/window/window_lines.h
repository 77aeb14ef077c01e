// WindowLines: the window as the author of a script. What a user does becomes a line, and the line is run.
//
//     WindowLines lines(session, [&](const std::string& file) { … });
//     lines.run({"select", "roof-1"});       // as a script does
//     lines.record().text();                  // "select roof-1\n"
//
// The user acts on the dialogs of tools, so a line is done when its dialog is closed; what was done there is noted
// behind it, by whoever watches the dialog.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "app/script/line_source.h"
#include "app/window/script_record.h"

namespace app::window {

class WindowLines : public LineSource {
public:
    // Opens a file in the session. Raises Failure.
    using Open = std::function<void(const std::string& file)>;

    WindowLines(Session& session, Open open) : m_session(session), m_open(std::move(open)) {}

    // Returns what the line printed. Raises Failure, also while another line waits for its dialog, and bad_alloc; a
    // line that does not work is not recorded.
    std::string run(const std::vector<std::string>& words);
    // In the dialog of the line that runs.
    void note(const std::vector<std::string>& words);
    bool isRunning() const { return m_isRunning; }

    ScriptRecord& record() { return m_record; }
    const ScriptRecord& record() const { return m_record; }

    bool next(std::string& line, driver::Dialog* dialog) override;
    bool goesOnAfter(const std::string&) override { return false; }
    void open(Session&, const std::string& name) override { m_open(name); }
    void write(const std::string& name, std::string_view bytes) override;
    bool drivesDialogs() const override { return false; }

private:
    Session& m_session;
    const Open m_open;
    ScriptRecord m_record;
    std::string m_line;  // to be run
    bool m_hasLine = false;
    bool m_isRunning = false;
};

}  // namespace app::window
