// What only happens to files natively: devices, links, permissions, a disk that is full.
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

#include <csignal>

#include "app/process.h"
#include "app/sea.h"
#include "app/session.h"
#include "app/written_file.h"
#include "support/temp_folder.h"

using test::Outcome;
using test::runKzdraw;

namespace {

class Files : public testing::Test {
protected:
    test::TempFolder folder;
    std::string sea = folder.write("sea.svg", test::kSea).string();

    std::string failureOf(const std::filesystem::path& file, const std::string& bytes) {
        try {
            app::writeFile(file.string(), bytes);
        } catch (const app::Failure& failure) {
            return failure.reason;
        }
        return {};
    }
};

// Files may not grow beyond so many bytes until the end of the block.
class SmallFiles {
public:
    explicit SmallFiles(rlim_t bytes) {
        m_signal = std::signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &m_before);
        const rlimit limit{bytes, m_before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~SmallFiles() {
        setrlimit(RLIMIT_FSIZE, &m_before);
        std::signal(SIGXFSZ, m_signal);
    }
    SmallFiles(const SmallFiles&) = delete;
    SmallFiles& operator=(const SmallFiles&) = delete;

private:
    rlimit m_before{};
    void (*m_signal)(int);
};

}  // namespace

TEST_F(Files, AreWrittenToDevices) {
    app::writeFile("/dev/null", "x");
    EXPECT_TRUE(std::filesystem::is_character_file("/dev/null"));
    EXPECT_EQ(failureOf("/dev/full", "x"), "/dev/full: cannot be written: No space left on device");
    EXPECT_TRUE(std::filesystem::is_character_file("/dev/full"));
    const Outcome full{2, "", "kzdraw: /dev/full: cannot be written: No space left on device\n"};
    EXPECT_EQ(runKzdraw({"render", sea, "-o", "/dev/full"}), full);
    EXPECT_EQ(runKzdraw({"script", "-"}, "open '" + sea + "'\nsave /dev/full\n"),
              (Outcome{2, "", "kzdraw: -:2: /dev/full: cannot be written: No space left on device\n"}));
}

TEST_F(Files, StayAsTheyWereWhenTheDiskIsFull) {
    const auto file = folder.write("a.svg", "old");
    {
        const SmallFiles limit(1000);
        EXPECT_EQ(failureOf(file, std::string(100'000, 'x')),
                  file.string() + ": cannot be written: File too large");
    }
    EXPECT_EQ(test::readText(file), "old");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.path()), {}), 2)
        << "sea.svg and a.svg";
}

TEST_F(Files, AreReplacedBehindALink) {
    const auto file = folder.write("there/a.svg", "old");
    std::filesystem::create_symlink(file, folder.path() / "link.svg");
    app::writeFile((folder.path() / "link.svg").string(), "new");
    EXPECT_EQ(test::readText(file), "new");
    EXPECT_TRUE(std::filesystem::is_symlink(folder.path() / "link.svg"));
}

TEST_F(Files, BehindALinkThatLeadsNowhereAreNotMade) {
    std::filesystem::create_symlink("none.svg", folder.path() / "dangling.svg");
    std::filesystem::create_symlink("other.svg", folder.path() / "loop.svg");
    std::filesystem::create_symlink("loop.svg", folder.path() / "other.svg");
    for (const char* link : {"dangling.svg", "loop.svg"}) {
        const std::string file = (folder.path() / link).string();
        const std::string reason = file + ": cannot be written: it is a link that leads to no file\n";
        EXPECT_EQ(runKzdraw({"view", sea, "--hide", "red", "-o", file}),
                  (Outcome{2, "", "kzdraw: " + reason}));
        EXPECT_EQ(runKzdraw({"script", "-"}, "open '" + sea + "'\nsave '" + file + "'\n"),
                  (Outcome{2, "", "kzdraw: -:2: " + reason}));
        EXPECT_TRUE(std::filesystem::is_symlink(folder.path() / link));
    }
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.path()), {}), 4)
        << "sea.svg and the links";
}

TEST_F(Files, ThatNeverEndAreReadNoFurtherThanTheyCanBeADrawing) {
    EXPECT_EQ(runKzdraw({"info", "/dev/zero"}),
              (Outcome{2, "", "kzdraw: /dev/zero:1: there is no element in it\n"}));
}

TEST_F(Files, MayHaveNamesAsLongAsTheSystemTakes) {
    const std::filesystem::path longest = folder.path() / (std::string(251, 'n') + ".svg");
    for (const char* text : {"one", "two"}) {
        app::writeFile(longest.string(), text);
        EXPECT_EQ(test::readText(longest), text);
    }
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.path()), {}), 2) << "sea.svg and it";
}

TEST_F(Files, KeepTheirPermissions) {
    const auto file = folder.write("a.svg", "old");
    constexpr auto kPrivate = std::filesystem::perms::owner_read | std::filesystem::perms::owner_write;
    std::filesystem::permissions(file, kPrivate);
    app::writeFile(file.string(), "new");
    EXPECT_EQ(std::filesystem::status(file).permissions(), kPrivate);
}

TEST_F(Files, ThatMayNotBeWrittenAreNot) {
    if (geteuid() == 0) GTEST_SKIP() << "the superuser may write everything";
    const auto file = folder.write("a.svg", "old");
    std::filesystem::permissions(file, std::filesystem::perms::owner_read);
    EXPECT_EQ(failureOf(file, "new"), file.string() + ": cannot be written: Permission denied");
    const auto inside = folder.write("closed/b.svg", "old");
    std::filesystem::permissions(inside.parent_path(),
                                 std::filesystem::perms::owner_read | std::filesystem::perms::owner_exec);
    EXPECT_EQ(failureOf(inside, "new"), inside.string() + ": cannot be written: Permission denied");
    std::filesystem::permissions(inside.parent_path(), std::filesystem::perms::owner_all);
    EXPECT_EQ(test::readText(inside), "old");
}
