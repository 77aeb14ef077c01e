// User: what the window asks and tells with dialogs of the system. Tests answer in its place.
#pragma once

#include <optional>
#include <string>

#include "platform/winapi.h"

namespace app::window {

enum class FileKind { drawing, picture };

class User {
public:
    virtual ~User() = default;
    // Names are UTF-8. Nothing: the user gave up.
    virtual std::optional<std::string> fileToOpen(HWND owner);
    virtual std::optional<std::string> fileToWrite(HWND owner, FileKind kind, const std::string& suggestion);
    // The command that is chosen of a menu at this place of the screen; 0: none.
    virtual int chooseFrom(HWND owner, HMENU popup, POINT at);
    // Returns when it is read. `isError`: something did not work.
    virtual void tell(HWND owner, const std::string& text, bool isError);
};

}  // namespace app::window
