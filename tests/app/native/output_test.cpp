// Where standard output and input do not work as usual.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

#include "app/process.h"
#include "app/sea.h"
#include "support/temp_folder.h"

using test::Outcome;

namespace {

class Output : public testing::Test {
protected:
    test::TempFolder folder;
    std::filesystem::path err = folder.write("err", "");
    std::string sea = folder.write("sea.svg", test::kSea).string();

    // A drawing whose objects take more room than a pipe or a buffer has.
    std::string large() {
        std::string text = "<svg xmlns='http://www.w3.org/2000/svg'>";
        for (int i = 0; i < 20'000; ++i) text += "<rect/>";
        return folder.write("large.svg", text + "</svg>").string();
    }
    // Runs the program with its standard output into a pipe that nobody reads; returns what waitpid tells.
    int runIntoClosedPipe(const std::string& file, bool ignoresTheSignal) {
        int pipeEnds[2];
        EXPECT_EQ(pipe(pipeEnds), 0);
        close(pipeEnds[0]);
        const pid_t process = fork();
        if (process == 0) {
            std::signal(SIGPIPE, ignoresTheSignal ? SIG_IGN : SIG_DFL);
            dup2(pipeEnds[1], 1);
            dup2(open(err.c_str(), O_WRONLY | O_TRUNC), 2);
            const std::string program = test::kzdraw().string();
            execl(program.c_str(), program.c_str(), "select", file.c_str(), "--similar-to", "rect-1",
                  nullptr);
            _exit(127);
        }
        close(pipeEnds[1]);
        int status = 0;
        waitpid(process, &status, 0);
        return status;
    }
};

}  // namespace

TEST_F(Output, OntoAFullDiskIsAnError) {
    const struct {
        std::vector<std::string> arguments;
    } table[] = {{{"info", sea}},
                 {{"info", sea, "--json"}},
                 {{"tools"}},
                 {{"select", sea, "--similar-to", "hull"}},
                 {{"select", large(), "--similar-to", "rect-1", "--json"}},
                 {{"--help"}},
                 {{"--version"}}};
    const std::filesystem::path in = folder.write("in", "");
    for (const auto& row : table) {
        EXPECT_EQ(test::runProcess(test::kzdraw(), row.arguments, in, "/dev/full", err), 2)
            << row.arguments[0];
        EXPECT_EQ(test::readText(err), "kzdraw: cannot write the output: No space left on device\n");
        folder.write("err", "");
    }
}

TEST_F(Output, OfAScriptOntoAFullDiskIsAnError) {
    const std::filesystem::path in = folder.write("in", "print messages\n");
    EXPECT_EQ(test::runProcess(test::kzdraw(), {"script", "-"}, in, "/dev/full", err), 2);
    EXPECT_EQ(test::readText(err), "kzdraw: cannot write the output: No space left on device\n");
}

TEST_F(Output, IntoAClosedPipeEndsTheProgramAsItEndsEveryOther) {
    const int status = runIntoClosedPipe(large(), false);
    EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGPIPE) << status;
    EXPECT_EQ(test::readText(err), "");
}

TEST_F(Output, IntoAClosedPipeWhoseSignalIsIgnoredIsAnError) {
    const int status = runIntoClosedPipe(large(), true);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 2) << status;
    EXPECT_EQ(test::readText(err), "kzdraw: cannot write the output: Broken pipe\n");
}

TEST_F(Output, OfAScriptThatCannotBeReadOnIsAnError) {
    EXPECT_EQ(test::runKzdraw({"script", "/proc/self/mem"}),
              (Outcome{2, "", "kzdraw: /proc/self/mem:1: cannot be read any further\n"}));
}
