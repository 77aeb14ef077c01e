#include "app/web/page_server.h"

#include <algorithm>

#include "app/session.h"
#include "app/web/page_file.h"

namespace app::web {

namespace {

constexpr std::size_t kLongestTarget = 1024;

// Nothing but the page's own files runs or is shown, no other page may hold it, and nothing of it is kept.
const httplib::Headers kHeaders = {
    {"Content-Security-Policy",
     "default-src 'none'; script-src 'self'; style-src 'self'; img-src 'self' data: blob:; connect-src "
     "'self'; "
     "base-uri 'none'; form-action 'none'; frame-ancestors 'none'"},
    {"X-Content-Type-Options", "nosniff"},
    {"X-Frame-Options", "DENY"},
    {"Referrer-Policy", "no-referrer"},
    {"Cross-Origin-Opener-Policy", "same-origin"},
    {"Cross-Origin-Resource-Policy", "same-origin"},
    {"Permissions-Policy", "camera=(), geolocation=(), microphone=()"},
};

// Takes as long for a wrong guess as for the right one.
bool isSame(const std::string& a, const std::string& b) {
    if (a.size() != b.size()) return false;
    unsigned difference = 0;
    for (std::size_t i = 0; i < a.size(); ++i) difference |= static_cast<unsigned char>(a[i] ^ b[i]);
    return difference == 0;
}

}  // namespace

PageServer::PageServer(const Options& options)
    : BoundedServer(options.limits), m_secret(randomName(32)), m_sessions(options.sessions) {
    const char* const kHost = "127.0.0.1";
    const bool bound =
        options.port == 0 ? (m_port = bind_to_any_port(kHost)) > 0 : bind_to_port(kHost, options.port);
    if (!bound) {
        throw Failure{options.port == 0 ? "no port is free"
                                        : "the port " + std::to_string(options.port) + " cannot be taken"};
    }
    if (options.port != 0) m_port = options.port;
    widenQueue();
    m_cookie = "kzdraw_" + std::to_string(m_port);
    set_default_headers(kHeaders);
    set_pre_routing_handler([this](const auto& request, auto& response) { return guard(request, response); });
    set_exception_handler([](const auto&, auto& response, std::exception_ptr) {
        response.status = 503;
        response.set_content("{\"error\":\"not enough memory\"}", "application/json");
    });
    route();
}

std::string PageServer::address() const {
    return "http://127.0.0.1:" + std::to_string(m_port) + "/?secret=" + m_secret;
}

void PageServer::run() {
    listen_after_bind();
}

void PageServer::stop() {
    m_sessions.closeAll();
    BoundedServer::stop();
}

bool PageServer::isOurOrigin(const std::string& origin) const {
    const std::string port = ":" + std::to_string(m_port);
    return origin == "http://127.0.0.1" + port || origin == "http://localhost" + port;
}

bool PageServer::hasCookie(const httplib::Request& request) const {
    const std::string cookies = request.get_header_value("Cookie");
    for (std::size_t begin = 0; begin < cookies.size();) {
        const std::size_t end = std::min(cookies.find(';', begin), cookies.size());
        const std::size_t name = cookies.find_first_not_of(' ', begin);
        if (name < end && isSame(cookies.substr(name, end - name), m_cookie + '=' + m_secret)) return true;
        begin = end + 1;
    }
    return false;
}

// The status that refuses a request whoever sends it; 0: none.
int PageServer::refusalOf(const httplib::Request& request) const {
    if (request.get_header_value_count("Host") != 1 ||
        !isOurOrigin("http://" + request.get_header_value("Host")))
        return 403;
    const bool changes = request.method != "GET" && request.method != "HEAD";
    if ((changes || request.has_header("Origin")) && !isOurOrigin(request.get_header_value("Origin")))
        return 403;
    if (request.target.size() > kLongestTarget) return 414;
    // Without a length that is known beforehand, and packed, a body could grow without end.
    if (request.has_header("Transfer-Encoding")) return 411;
    if (request.has_header("Content-Encoding") || request.is_multipart_form_data()) return 415;
    if (request.get_header_value_count("Content-Length") > 1) return 400;
    return bodySize(request) > limits().bodyBytes ? 413 : 0;
}

// The secret leaves the address, and the history of the browser, once it is a cookie.
BoundedServer::HandlerResponse PageServer::letIn(const httplib::Request& request,
                                                 httplib::Response& response) {
    if (isSame(request.get_param_value("secret"), m_secret)) {
        response.set_header("Set-Cookie", m_cookie + '=' + m_secret + "; Path=/; HttpOnly; SameSite=Strict");
        response.set_redirect("/", 303);
    } else {
        response.status = 403;
        response.set_content("The address is not complete: kzdraw serve prints it.\n",
                             "text/plain; charset=utf-8");
    }
    return HandlerResponse::Handled;
}

BoundedServer::HandlerResponse PageServer::guard(const httplib::Request& request,
                                                 httplib::Response& response) {
    response.set_header("Cache-Control", "no-store");
    if (const int status = refusalOf(request)) {
        response.status = status;
        return HandlerResponse::Handled;
    }
    if (request.path == "/" && (request.has_param("secret") || !hasCookie(request)))
        return letIn(request, response);
    if (hasCookie(request)) return HandlerResponse::Unhandled;
    response.status = 403;
    return HandlerResponse::Handled;
}

}  // namespace app::web
