// What nobody may do to the server: keep it from answering the next request.
#include <sys/resource.h>

#include <chrono>
#include <future>

#include "browser.h"

namespace {

constexpr std::size_t kConnections = 1000;

class Load : public testing::Test {
protected:
    test::RunningServer server{test::RunningServer::options()};
    test::Tab tab{server};

    // Both ends of every connection are this process's.
    static void SetUpTestSuite() {
        rlimit files{};
        getrlimit(RLIMIT_NOFILE, &files);
        files.rlim_cur = files.rlim_max;
        setrlimit(RLIMIT_NOFILE, &files);
    }
    void expectAnswer() {
        test::Tab next(server);
        const auto answer = next.get("/");
        ASSERT_TRUE(answer);
        EXPECT_EQ(answer->status, 200);
    }
    std::vector<std::unique_ptr<test::RawConnection>> connect(std::size_t count, const std::string& bytes) {
        std::vector<std::unique_ptr<test::RawConnection>> connections;
        for (std::size_t i = 0; i < count; ++i) {
            connections.push_back(std::make_unique<test::RawConnection>(server->port()));
            connections.back()->send(bytes);
        }
        return connections;
    }
    std::string head() {
        std::string text =
            "POST /sessions HTTP/1.1\r\nHost: 127.0.0.1:" + std::to_string(server->port()) + "\r\n";
        for (const auto& [name, value] : tab.headers()) text += name + ": " + value + "\r\n";
        return text;
    }
};

}  // namespace

TEST_F(Load, OfAThousandSilentConnections) {
    const std::size_t before = test::openFiles();
    auto connections = connect(kConnections, "");
    expectAnswer();
    connections.clear();
    expectAnswer();
    test::waitUntil([before] { return test::openFiles() <= before + 1; });  // a connection that is kept alive
}

TEST_F(Load, OfSlowHeads) {
    auto connections = connect(64, "GET / HT");
    for (int i = 0; i < 3; ++i) {
        expectAnswer();
        for (auto& connection : connections) connection->send("T");
    }
}

TEST_F(Load, OfSlowBodies) {
    auto connections = connect(64, head() + "Content-Length: 1000\r\n\r\n{");
    for (int i = 0; i < 3; ++i) {
        expectAnswer();
        for (auto& connection : connections) connection->send(" ");
    }
    EXPECT_EQ(server->sessions().count(), 0U);
}

TEST_F(Load, OfHeadsWithoutEnd) {
    auto connections = connect(20, head());
    for (auto& connection : connections) {
        for (int i = 0;
             i < 64 && connection->send("X-" + std::to_string(i) + ": " + std::string(1000, 'x') + "\r\n");
             ++i) {
        }
    }
    expectAnswer();
    for (auto& connection : connections) connection->readAll();
}

TEST_F(Load, OfBrowsersThatAreKilled) {
    for (int i = 0; i < 100; ++i) {
        test::RawConnection connection(server->port());
        connection.send("GET /app.js HTTP/1.1\r\nHost: 127.0.0.1:" + std::to_string(server->port()) +
                        "\r\nCookie: kzdraw_" + std::to_string(server->port()) + "=" + server->secret() +
                        "\r\n\r\n");
        connection.abort();
    }
    expectAnswer();
}

TEST_F(Load, OfReadersThatNeverRead) {
    std::string requests;
    for (int i = 0; i < 50; ++i) {
        requests += "GET /app.js HTTP/1.1\r\nHost: 127.0.0.1:" + std::to_string(server->port()) +
                    "\r\nCookie: kzdraw_" + std::to_string(server->port()) + "=" + server->secret() +
                    "\r\n\r\n";
    }
    auto connections = connect(8, requests);
    expectAnswer();
}

TEST_F(Load, OfAConnectionThatSendsNothingEndsByItself) {
    auto options = test::RunningServer::options();
    options.limits.idle = options.limits.head = std::chrono::milliseconds(20);
    test::RunningServer hasty(options);
    test::RawConnection silent(hasty->port());
    EXPECT_EQ(silent.readAll(), "");
    test::RawConnection slow(hasty->port());
    slow.send("GET / HTTP/1.1\r\nHost:");
    slow.readAll();  // returns: the server has closed it
}

// A signal may come as soon as the address is told.
TEST(PageServer, IsStoppedBeforeItRuns) {
    app::web::PageServer server(test::RunningServer::options());
    server.stop();
    std::future<void> run = std::async(std::launch::async, [&server] { server.run(); });
    EXPECT_EQ(run.wait_for(std::chrono::seconds(30)), std::future_status::ready);
    server.stop();
}
