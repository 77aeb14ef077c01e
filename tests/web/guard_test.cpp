// Who gets in, and what is refused whoever sends it.
#include "browser.h"

namespace {

class Guard : public testing::Test {
protected:
    test::RunningServer server{test::RunningServer::options()};
    test::Tab tab{server};
    httplib::Client client{"127.0.0.1", server->port()};

    int statusOf(const std::string& path, httplib::Headers headers = {}) {
        const auto answer = client.Get(path, headers);
        return answer ? answer->status : -1;
    }
    httplib::Headers with(const std::string& name, const std::string& value) {
        httplib::Headers headers = tab.headers();
        headers.erase(name);
        headers.emplace(name, value);
        return headers;
    }
    std::string port() { return std::to_string(server->port()); }
};

}  // namespace

TEST_F(Guard, GivesTheCookieForTheSecretOfTheAddressAndTakesItOutOfTheAddress) {
    const auto answer = client.Get("/?secret=" + server->secret());
    ASSERT_TRUE(answer);
    EXPECT_EQ(answer->status, 303);
    EXPECT_EQ(answer->get_header_value("Location"), "/");
    EXPECT_EQ(answer->get_header_value("Set-Cookie"),
              "kzdraw_" + port() + "=" + server->secret() + "; Path=/; HttpOnly; SameSite=Strict");
    EXPECT_EQ(server->address(), "http://127.0.0.1:" + port() + "/?secret=" + server->secret());
}

TEST_F(Guard, ShowsThePageToTheCookieAlone) {
    EXPECT_EQ(statusOf("/", tab.headers()), 200);
    EXPECT_EQ(statusOf("/app.js", tab.headers()), 200);
    for (const char* path : {"/", "/app.js", "/app.css", "/sessions", "/nothing"})
        EXPECT_EQ(statusOf(path), 403) << path;
    EXPECT_EQ(statusOf("/?secret=0123"), 403);
    EXPECT_EQ(statusOf("/?secret=" + std::string(32, '0')), 403);
    EXPECT_EQ(statusOf("/?secret=0", tab.headers()), 403);
    EXPECT_EQ(statusOf("/", with("Cookie", "kzdraw_" + port() + "=" + std::string(32, '0'))), 403);
    EXPECT_EQ(statusOf("/", with("Cookie", ";;; kzdraw_" + port())), 403);
}

TEST_F(Guard, RefusesOtherNamesOfThisMachine) {
    for (const char* host : {"evil.example", "127.0.0.1", "127.0.0.1:1", "localhost.evil.example"})
        EXPECT_EQ(statusOf("/", with("Host", host)), 403) << host;
    EXPECT_EQ(statusOf("/", with("Host", "localhost:" + port())), 200);
}

TEST_F(Guard, RefusesOtherPages) {
    for (const std::string& origin :
         {std::string("http://evil.example"), std::string("null"), "https://127.0.0.1:" + port(),
          "http://127.0.0.1:" + port() + ".evil.example"}) {
        EXPECT_EQ(statusOf("/", with("Origin", origin)), 403) << origin;
        const auto answer = client.Post("/sessions", with("Origin", origin), "{}", "application/json");
        ASSERT_TRUE(answer);
        EXPECT_EQ(answer->status, 403) << origin;
    }
    httplib::Headers none = tab.headers();
    none.erase("Origin");
    EXPECT_EQ(statusOf("/", none), 200) << "somebody follows a link";
    const auto answer = client.Post("/sessions", none, "{}", "application/json");
    ASSERT_TRUE(answer);
    EXPECT_EQ(answer->status, 403) << "what changes something tells where it comes from";
    EXPECT_EQ(server->sessions().count(), 0U);
}

TEST_F(Guard, LetsThePageLoadNothingFromElsewhere) {
    for (const char* path : {"/", "/app.js", "/nothing"}) {
        const auto answer = tab.get(path);
        ASSERT_TRUE(answer);
        const std::string policy = answer->get_header_value("Content-Security-Policy");
        EXPECT_TRUE(policy.starts_with("default-src 'none'; script-src 'self'; style-src 'self';")) << path;
        EXPECT_EQ(policy.find("unsafe"), std::string::npos);
        EXPECT_NE(policy.find("frame-ancestors 'none'"), std::string::npos);
        EXPECT_EQ(answer->get_header_value("X-Content-Type-Options"), "nosniff");
        EXPECT_EQ(answer->get_header_value("Referrer-Policy"), "no-referrer");
        EXPECT_EQ(answer->get_header_value_count("Cache-Control"), 1U);
    }
}

TEST_F(Guard, ServesNoFileOfTheMachine) {
    for (const char* path :
         {"/../../../../etc/passwd", "/%2e%2e/%2e%2e/etc/passwd", "//etc/passwd", "/app.js/../../etc/passwd",
          "/sessions/../../etc/passwd", "/..%5c..%5cetc%5cpasswd", "/app.ts", "/%00"})
        EXPECT_EQ(statusOf(path, tab.headers()), 404) << path;
}

TEST_F(Guard, RefusesWhatIsTooLargeOrHasNoSize) {
    const auto big = tab.post("/sessions", std::string((1 << 20) + 1, ' '));
    EXPECT_TRUE(!big || big->status == 413) << "it may have closed the connection before all was sent";
    EXPECT_EQ(statusOf("/" + std::string(2000, 'a'), tab.headers()), 414);
    EXPECT_EQ(statusOf("/", with("Content-Encoding", "gzip")), 415);
    const auto parts = tab.post("/sessions", "--x\r\n", "multipart/form-data; boundary=x");
    ASSERT_TRUE(parts);
    EXPECT_EQ(parts->status, 415);
    EXPECT_EQ(statusOf("/", tab.headers()), 200);
}

TEST_F(Guard, RefusesNonsenseOnTheWire) {
    std::string head = "POST /sessions HTTP/1.1\r\nHost: 127.0.0.1:" + port() + "\r\n";
    for (const auto& [name, value] : tab.headers()) head += name + ": " + value + "\r\n";
    const struct {
        std::string bytes;
        std::string status;
    } table[] = {
        {head + "Transfer-Encoding: chunked\r\n\r\nffffffff\r\n", " 411 "},
        {head + "Content-Length: 99999999999999999999999\r\n\r\n", " 413 "},
        {head + "Content-Length: -1\r\n\r\n", " 413 "},
        {head + "Content-Length: 2\r\nContent-Length: 3\r\n\r\n{}", " 400 "},
        {head + "Host: evil.example\r\nContent-Length: 2\r\n\r\n{}", " 403 "},
        {"nonsense\r\n\r\n", " 400 "},
        {std::string("\0\xff\x80\r\n\r\n", 7), " 400 "},
    };
    for (const auto& row : table) {
        test::RawConnection connection(server->port());
        connection.send(row.bytes);
        const std::string answer = connection.readAll();
        EXPECT_NE(answer.substr(0, 20).find(row.status), std::string::npos) << row.bytes << '\n' << answer;
        EXPECT_EQ(statusOf("/", tab.headers()), 200);
    }
    EXPECT_EQ(server->sessions().count(), 0U);
}

TEST_F(Guard, ReadsNoRequestOutOfABodyThatItRefused) {
    test::RawConnection connection(server->port());
    connection.send(
        "POST /sessions HTTP/1.1\r\nHost: evil.example\r\nContent-Length: 200\r\n\r\nGET / HTTP/1.1\r\nHost: "
        "127.0.0.1:" +
        port() + "\r\n\r\n");
    const std::string answer = connection.readAll();
    EXPECT_EQ(answer.find("HTTP/1.1", 1), std::string::npos) << answer;
}
