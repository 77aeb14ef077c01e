// The process of one session: a host with its plug-in, that a page talks to. The server starts it.
#pragma once

#include <string>
#include <vector>

namespace app::web {

// Speaks frames (frame.h) on the socket until the other side closes it; a dialog that is open then is cancelled.
// `files`: those that the page may open. Returns the exit status.
int runSession(int socket, std::vector<std::string> files);

}  // namespace app::web
