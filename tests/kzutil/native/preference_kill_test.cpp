// A program that is killed while it writes preferences, before and behind each of its system calls, leaves
// the old ones or the new ones.
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/ptrace.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>

#include "kzutil/user_folder.h"
#include "support/stored_pair.h"
#include "support/temp_folder.h"

namespace fs = std::filesystem;

namespace {

const AStoredPair kOld(1000, 1), kNew(2000, 2);

class KilledWriter : public testing::Test {
protected:
    test::TempFolder folder;

    void SetUp() override {
        APreferenceManager::setFolder(folder.path());
        store(kOld);
    }
    void TearDown() override { APreferenceManager::setFolder({}); }

    static void store(AStoredPair pair) { ASSERT_EQ(APreferenceManager::writePrefs(&pair), 1); }

    // A process that calls `prepare`, writes the new preferences and ends.
    template <class Prepare>
    static pid_t startWriter(Prepare prepare) {
        const pid_t process = fork();
        if (process != 0) return process;
        prepare();
        AStoredPair pair = kNew;
        _exit(APreferenceManager::writePrefs(&pair) ? 0 : 1);
    }

    // True when the process was killed at its stop number `stops`: it stops before and behind each system
    // call. False when it had ended before.
    static bool killAtStop(pid_t process, int stops) {
        int status = 0;
        for (int i = 0; i <= stops; ++i) {
            if (waitpid(process, &status, 0) != process || !WIFSTOPPED(status)) break;
            if (i == stops) {
                kill(process, SIGKILL);
                waitpid(process, &status, 0);
                return true;
            }
            ptrace(PTRACE_SYSCALL, process, nullptr, nullptr);
        }
        EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << status;
        return false;
    }

    AStoredPair found() {
        AStoredPair pair(0, 0);
        std::string problem;
        EXPECT_EQ(APreferenceManager::readPrefs(&pair, problem), 1) << problem;
        return pair;
    }
    std::ptrdiff_t files() { return std::distance(fs::directory_iterator(folder.path()), {}); }
};

}  // namespace

TEST_F(KilledWriter, LeavesTheOldOrTheNew) {
    int stops = 0, old = 0, leftOver = 0;
    bool killed = true;
    for (; killed; ++stops) {
        const pid_t process = startWriter([] {
            if (ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) != 0) _exit(2);
            raise(SIGSTOP);
        });
        killed = killAtStop(process, stops);
        ASSERT_LT(stops, 10'000);
        const AStoredPair pair = found();
        EXPECT_TRUE(pair == kOld || pair == kNew) << "stop " << stops << ": " << pair;
        old += pair == kOld;
        leftOver += files() > 1;
        store(kOld);
        EXPECT_EQ(files(), 1) << "stop " << stops << ": the next one to write removes what is left over";
    }
    EXPECT_GT(old, 0);
    EXPECT_LT(old, stops) << "the last one was not killed";
    EXPECT_GT(leftOver, 0);
}

TEST_F(KilledWriter, LeavesTheOldOnesWhateverItsFileHolds) {
    const std::size_t size = fs::file_size(folder.path() / "AStoredPair.prefs");
    for (std::size_t bytes = 0; bytes < size; ++bytes) {
        const pid_t process = startWriter([bytes] {
            const rlimit limit{bytes, bytes};
            setrlimit(RLIMIT_FSIZE, &limit);
            const rlimit noCore{0, 0};
            setrlimit(RLIMIT_CORE, &noCore);
            signal(SIGXFSZ, SIG_DFL);
        });
        int status = 0;
        waitpid(process, &status, 0);
        EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGXFSZ) << bytes << ": " << status;
        EXPECT_EQ(found(), kOld) << bytes;
        EXPECT_EQ(files(), 2) << bytes;
        store(kOld);
        EXPECT_EQ(files(), 1) << bytes;
    }
}

TEST_F(KilledWriter, LeavesTheOldOnesWhenTheDiskIsFull) {
    const pid_t process = startWriter([] {
        const rlimit limit{20, 20};
        setrlimit(RLIMIT_FSIZE, &limit);
        signal(SIGXFSZ, SIG_IGN);
    });
    int status = 0;
    waitpid(process, &status, 0);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 1) << "it is told that nothing was stored";
    EXPECT_EQ(found(), kOld);
    EXPECT_EQ(files(), 1) << "nothing is left over";
}

TEST_F(KilledWriter, DoesNotDisturbAnotherProgram) {
    constexpr int kPrograms = 4, kTimes = 50;
    std::vector<pid_t> programs;
    for (int program = 0; program < kPrograms; ++program) {
        const pid_t process = fork();
        if (process == 0) {
            int written = 0;
            for (int i = 0; i < kTimes; ++i) {
                AStoredPair pair(program, program * 1000);
                written += APreferenceManager::writePrefs(&pair);
            }
            _exit(written > 0 ? 0 : 1);
        }
        programs.push_back(process);
    }
    kill(programs.back(), SIGKILL);
    for (const pid_t process : programs) {
        int status = 0;
        waitpid(process, &status, 0);
        EXPECT_TRUE(status == 0 || process == programs.back()) << status;
        const AStoredPair pair = found();
        EXPECT_TRUE(pair == kOld || pair.second == pair.first * 1000) << pair;
    }
    store(kNew);
    EXPECT_EQ(files(), 1);
}

TEST(UserFolder, IsDotConfigUnlessTheEnvironmentNamesAnAbsoluteOne) {
    const std::string before = std::getenv("XDG_CONFIG_HOME");
    const char* home = std::getenv("HOME");
    const std::string homeBefore = home ? home : "";
    setenv("HOME", "/home/somebody", 1);
    for (const char* invalid : {"", "relative/folder"}) {
        setenv("XDG_CONFIG_HOME", invalid, 1);
        EXPECT_EQ(kzutil::userConfigurationFolder(), "/home/somebody/.config");
    }
    unsetenv("HOME");
    EXPECT_EQ(kzutil::userConfigurationFolder(), "");
    setenv("HOME", homeBefore.c_str(), 1);
    setenv("XDG_CONFIG_HOME", before.c_str(), 1);
}
