// What a run over several drawings shows on a terminal.
#include <gtest/gtest.h>
#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>

#include "app/process.h"
#include "app/sea.h"
#include "support/temp_folder.h"

namespace {

// All that the program writes on a terminal.
std::string onTerminal(std::vector<std::string> arguments) {
    std::string program = test::utf8(test::kzdraw());
    std::vector<char*> list{program.data()};
    for (std::string& argument : arguments) list.push_back(argument.data());
    list.push_back(nullptr);
    int terminal = -1;
    const pid_t child = forkpty(&terminal, nullptr, nullptr, nullptr);
    if (child == 0) {
        execv(program.c_str(), list.data());
        _exit(127);
    }
    std::string text;
    char piece[4096];
    for (ssize_t count = 0; (count = read(terminal, piece, sizeof piece)) > 0;)
        text.append(piece, static_cast<std::size_t>(count));
    close(terminal);
    waitpid(child, nullptr, 0);
    return text;
}

}  // namespace

TEST(Progress, StandsOnATerminalWhileDrawingsAreLeft) {
    const test::TempFolder folder;
    const std::string sea = test::utf8(folder.write("sea.svg", test::kSea));
    const std::string missing = test::utf8(folder.path() / "missing.svg");
    EXPECT_EQ(onTerminal({"select", "--json", "--similar-to", "sun", missing, sea, sea}),
              "kzdraw: " + missing + ": there is no such file\r\n{\"file\":\"" + missing + "\",\"error\":\"" +
                  missing + ": there is no such file\"}\r\n" + "\r1 of 3 drawings, 1 failed\r" +
                  std::string(25, ' ') + "\r{\"file\":\"" + sea + "\",\"selection\":[\"sun\"]}\r\n" +
                  "\r2 of 3 drawings, 1 failed\r" + std::string(25, ' ') + "\r{\"file\":\"" + sea +
                  "\",\"selection\":[\"sun\"]}\r\nkzdraw: 1 of 3 drawings has failed\r\n");
    EXPECT_EQ(onTerminal({"select", "--json", "--similar-to", "sun", sea}), "{\"selection\":[\"sun\"]}\r\n");
}
