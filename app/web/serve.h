// The command "serve".
#pragma once

#include <string>
#include <vector>

namespace app {

struct ServeOptions {
    std::vector<std::string> files;  // that the page may open; the first one is opened at once
    int port = 0;                    // 0: any
    bool opensPage = true;           // in the user's browser, where there is a desktop
};

// Serves the page until the program is told to end. Raises Failure; on Windows always.
int runServe(const ServeOptions& options);

// The process of one session, which the server starts.
int runServedSession(int socket, std::vector<std::string> files);

}  // namespace app
