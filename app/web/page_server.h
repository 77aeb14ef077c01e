// PageServer: the page and its sessions, for the browser of this machine's user alone.
//
//     PageServer server({program, files});
//     std::cout << server.address() << '\n';   // http://127.0.0.1:PORT/?secret=…
//     server.run();                             // until stop(), from another thread
//
// Only connections of this machine are taken. Whoever knows the secret of the address gets a cookie; without one, with
// another Host (another name that leads here) or another Origin (another page), a request is refused with 403.
//
//     GET /                                    the page; /app.js, /app.css, /icon.svg
//     POST /sessions                           a new session: {"session":NAME,"files":[…]}; 503: there are too many
//     GET /sessions/NAME/events                server-sent events: "change", "progress"; while it is read, the session
//                                              lives
//     POST /sessions/NAME/lines                {"lines":[…]}, run up to the first that does not work:
//                                              {"answers":[{"output":[…],"error":…,"state":{…}}]}
//     POST /sessions/NAME/files?name=NAME      the bytes of a file, which lines can open then
//     GET /sessions/NAME/tiles/DRAWING/SHOWN/SCALE/SIDE/X/Y.png
//     GET /sessions/NAME/drawing.svg           the whole drawing; with ?shown, what is shown of it
//     GET /sessions/NAME/picture.png?width=N   what is shown
#pragma once

#include "app/web/bounded_server.h"
#include "app/web/sessions.h"

namespace app::web {

class PageServer : private BoundedServer {
public:
    struct Options {
        Sessions::Options sessions;
        Limits limits;
        int port = 0;  // 0: any that is free
    };

    // Takes the port. Raises Failure.
    explicit PageServer(const Options& options);

    int port() const { return m_port; }
    const std::string& secret() const { return m_secret; }
    std::string address() const;
    Sessions& sessions() { return m_sessions; }

    using BoundedServer::isRunning;
    // Answers requests until stop() is called, be it before.
    void run();
    void stop();

private:
    HandlerResponse guard(const httplib::Request& request, httplib::Response& response);
    int refusalOf(const httplib::Request& request) const;
    bool isOurOrigin(const std::string& origin) const;
    bool hasCookie(const httplib::Request& request) const;
    HandlerResponse letIn(const httplib::Request& request, httplib::Response& response);

    void route();
    void startSession(httplib::Response& response);
    void runLines(PageSession& session, const httplib::Request& request, httplib::Response& response);
    void takeFile(PageSession& session, const httplib::Request& request, httplib::Response& response);
    void sendEvents(const std::shared_ptr<PageSession>& session, httplib::Response& response);
    void sendTile(PageSession& session, const httplib::Request& request, httplib::Response& response);

    const std::string m_secret;
    int m_port = 0;
    std::string m_cookie;  // its name: cookies know no ports
    Sessions m_sessions;
};

}  // namespace app::web
