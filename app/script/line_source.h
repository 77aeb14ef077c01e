// LineSource: where the lines of a script come from, and what becomes of the files that they name.
//
// One line is run at a time. While the dialog of a tool waits, the lines that follow the tool's act on it, so that
// next() is asked for them from within the dialog's modal loop.
#pragma once

#include <string>
#include <string_view>

#include "app/session.h"
#include "platform/driver/dialog.h"

namespace app {

class LineSource {
public:
    virtual ~LineSource() = default;

    // The next line, without its line feed; false at the end. The line before is done, or its dialog waits:
    // `dialog` is the innermost one that is open, else null.
    virtual bool next(std::string& line, driver::Dialog* dialog) = 0;
    // The line handed over last does not work. True: the next one is asked for. False: the script ends.
    virtual bool goesOnAfter(const std::string& reason) = 0;

    // Opens the file in the session, or writes it as a whole. Both raise Failure.
    virtual void open(Session& session, const std::string& name) = 0;
    virtual void write(const std::string& name, std::string_view bytes) = 0;

    // False: nobody but the user acts on dialogs, and a line is done when its dialog is closed.
    virtual bool drivesDialogs() const { return true; }
};

}  // namespace app
