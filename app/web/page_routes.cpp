// What the server answers, once the guard has let a request in.
#include <nlohmann/json.hpp>

#include "app/session.h"
#include "app/web/page_file.h"
#include "app/web/page_server.h"

namespace app::web {

namespace {

using Json = nlohmann::ordered_json;
using httplib::Request;
using httplib::Response;

constexpr char kJson[] = "application/json";
constexpr std::size_t kMostLines = 1000;
constexpr std::size_t kMostLineBytes = std::size_t{64} << 20;
constexpr std::size_t kLongestName = 255;
constexpr std::chrono::seconds kPatienceForTile{20};

void fail(Response& response, int status, const std::string& reason) {
    response.status = status;
    response.set_content(Json{{"error", reason}}.dump(-1, ' ', false, Json::error_handler_t::replace), kJson);
}

// False, with the response made, when there is no answer.
bool isDone(const Answer& answer, Response& response) {
    switch (answer.kind) {
        case Answer::Kind::done:
            return true;
        case Answer::Kind::refused:
            fail(response, 409, answer.text);
            break;
        case Answer::Kind::busy:
            fail(response, 503, "the session is busy");
            break;
        case Answer::Kind::ended:
            fail(response, 410, answer.text.empty() ? "the session has ended" : answer.text);
            break;
    }
    return false;
}

// The lines of a body. Raises Failure.
std::vector<std::string> readLines(const std::string& body) {
    constexpr int kDepth = 2;  // an object with an array: what lies deeper ends the reading
    const auto keep = [](int depth, Json::parse_event_t, const Json&) {
        if (depth > kDepth) throw Failure{"the body is not JSON"};
        return true;
    };
    const Json json = Json::parse(body, keep, false);
    if (json.is_discarded()) throw Failure{"the body is not JSON"};
    if (!json.is_object() || !json.contains("lines") || !json["lines"].is_array())
        throw Failure{"the body has no \"lines\""};
    if (json["lines"].size() > kMostLines) throw Failure{"there are too many lines"};
    std::vector<std::string> lines;
    for (const Json& line : json["lines"]) {
        if (!line.is_string()) throw Failure{"a line is not a string"};
        lines.push_back(line.get<std::string>());
        if (lines.back().find_first_of(std::string_view("\n\r\0", 3)) != std::string::npos)
            throw Failure{"a line has a line feed in it"};
    }
    return lines;
}

bool isFileName(const std::string& name) {
    return !name.empty() && name.size() <= kLongestName &&
           std::ranges::none_of(name, [](unsigned char c) { return c < 0x20 || c == 0x7f; });
}

// The page knows what the file is to be called.
void sendFile(Response& response, const Answer& answer, const char* type) {
    if (!isDone(answer, response)) return;
    response.set_header("Content-Disposition", "attachment");
    response.set_content(answer.text, type);
}

}  // namespace

void PageServer::route() {
    for (const PageFile& file : pageFiles()) {
        Get(file.path == "/" ? "/" : std::string(file.path), [file](const Request&, Response& response) {
            response.set_content(file.bytes.data(), file.bytes.size(), std::string(file.type));
        });
    }
    Post("/sessions", [this](const Request&, Response& response) { startSession(response); });
    const auto of = [this](auto act) {
        return [this, act](const Request& request, Response& response) {
            const auto session = m_sessions.find(request.matches[1]);
            if (session)
                act(session, request, response);
            else
                fail(response, 410, "the session has ended");
        };
    };
    const std::string session = "/sessions/([0-9a-f]{16})";
    Get(session + "/events",
        of([this](const auto& found, const Request&, Response& response) { sendEvents(found, response); }));
    Post(session + "/lines", of([this](const auto& found, const Request& request, Response& response) {
             runLines(*found, request, response);
         }));
    Post(session + "/files", of([this](const auto& found, const Request& request, Response& response) {
             takeFile(*found, request, response);
         }));
    Get(session + R"(/tiles/(\d{1,9})/(\d{1,9})/([0-9.e+-]{1,30})/(\d{1,4})/(-?\d{1,8})/(-?\d{1,8})\.png)",
        of([this](const auto& found, const Request& request, Response& response) {
            sendTile(*found, request, response);
        }));
    Get(session + "/drawing\\.svg", of([](const auto& found, const Request& request, Response& response) {
            sendFile(response, found->call('D', request.has_param("shown") ? "shown" : "all"),
                     "image/svg+xml");
        }));
    Get(session + "/picture\\.png", of([](const auto& found, const Request& request, Response& response) {
            sendFile(response, found->call('P', request.get_param_value("width")), "image/png");
        }));
}

void PageServer::startSession(Response& response) {
    try {
        const std::string name = m_sessions.start();
        if (name.empty()) {
            fail(response, 503, "as many drawings are open as there may be: close a tab");
            return;
        }
        response.set_content(Json{{"session", name}, {"files", m_sessions.options().files}}.dump(
                                 -1, ' ', false, Json::error_handler_t::replace),
                             kJson);
    } catch (const Failure& failure) {
        fail(response, 503, failure.reason);
    }
}

// Their output is JSON already, and may be large.
void PageServer::runLines(PageSession& session, const Request& request, Response& response) {
    if (request.get_header_value("Content-Type") != kJson) return fail(response, 415, "the body is not JSON");
    if (request.body.size() > kMostLineBytes) return fail(response, 413, "the lines are too long");
    std::vector<std::string> lines;
    try {
        lines = readLines(request.body);
    } catch (const Failure& failure) {
        return fail(response, 400, failure.reason);
    }
    std::string answers;
    for (const std::string& line : lines) {
        const Answer answer = session.run(line);
        if (!isDone(answer, response)) return;
        answers += (answers.empty() ? "" : ",") + answer.text;
        if (answer.text.find("\"error\":null,\"state\"") == std::string::npos) break;
    }
    response.set_content("{\"answers\":[" + answers + "]}", kJson);
}

void PageServer::takeFile(PageSession& session, const Request& request, Response& response) {
    const std::string name = request.get_param_value("name");
    if (!isFileName(name)) return fail(response, 400, "the file has no proper name");
    const Answer answer = session.call('F', name + '\n' + request.body);
    if (isDone(answer, response)) response.set_content("{}", kJson);
}

void PageServer::sendEvents(const std::shared_ptr<PageSession>& session, Response& response) {
    std::shared_ptr<PageSession::Listener> listener = PageSession::Listener::make(session);
    if (!listener) return fail(response, 503, "too many pages listen to this session");
    response.set_chunked_content_provider(
        "text/event-stream", [listener](std::size_t, httplib::DataSink& sink) {
            std::string event;
            if (!listener->wait(event)) {
                sink.done();
                return true;
            }
            return sink.is_writable() && sink.write(event.data(), event.size());
        });
}

// Another picture has another address, so that a browser may keep a tile.
void PageServer::sendTile(PageSession& session, const Request& request, Response& response) {
    std::string tile;
    for (std::size_t i = 2; i <= 7; ++i) tile += (i == 2 ? "" : " ") + request.matches[i].str();
    const Answer answer = session.call('T', std::move(tile), kPatienceForTile);
    if (answer.kind == Answer::Kind::refused) return fail(response, 404, answer.text);
    if (!isDone(answer, response)) return;
    response.headers.erase("Cache-Control");
    response.set_header("Cache-Control", "private, max-age=86400, immutable");
    response.set_content(answer.text, "image/png");
}

}  // namespace app::web
