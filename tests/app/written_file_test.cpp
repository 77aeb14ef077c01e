// Files are there as a whole or not at all.
#include "app/written_file.h"

#include <gtest/gtest.h>

#include "app/session.h"
#include "process.h"
#include "support/temp_folder.h"

namespace {

class WrittenFile : public testing::Test {
protected:
    test::TempFolder folder;

    std::string name(const std::string& file) { return test::utf8(folder.path()) + '/' + file; }
    std::string failureOf(const std::string& file, const std::string& bytes = "new") {
        try {
            app::writeFile(file, bytes);
        } catch (const app::Failure& failure) {
            return failure.reason;
        }
        return {};
    }
    std::size_t filesInFolder() {
        const std::filesystem::directory_iterator files(folder.path());
        return static_cast<std::size_t>(std::distance(begin(files), end(files)));
    }
};

}  // namespace

TEST_F(WrittenFile, IsMadeOrReplaced) {
    app::writeFile(name("a.svg"), "one");
    EXPECT_EQ(test::readText(folder.path() / "a.svg"), "one");
    app::writeFile(name("a.svg"), "two");
    EXPECT_EQ(test::readText(folder.path() / "a.svg"), "two");
    EXPECT_EQ(filesInFolder(), 1U);
}

TEST_F(WrittenFile, TakesWhatAKilledProgramLeftOfItAway) {
    folder.write(".a.svg-0123456789abcdef.part", "half");
    folder.write(".b.svg-0123456789abcdef.part", "half of another");
    folder.write(".a.svg-mine.part", "somebody's own");
    app::writeFile(name("a.svg"), "one");
    EXPECT_FALSE(std::filesystem::exists(folder.path() / ".a.svg-0123456789abcdef.part"));
    EXPECT_EQ(filesInFolder(), 3U) << "a.svg and the two others";
}

TEST_F(WrittenFile, MayHaveAnyName) {
    app::writeFile(name("\xE6\xB8\xAF \xC3\xA9'.png"), "x");
    EXPECT_EQ(test::readText(folder.path() / std::filesystem::path(u8"\u6E2F \u00E9'.png")), "x");
}

TEST_F(WrittenFile, CannotTakeTheNameOfAFolder) {
    EXPECT_EQ(failureOf(test::utf8(folder.path())),
              test::utf8(folder.path()) + ": cannot be written: it is a folder");
}

TEST_F(WrittenFile, NeedsItsFolder) {
    EXPECT_EQ(failureOf(name("no folder/a.png")),
              name("no folder/a.png") + ": cannot be written: there is no such folder");
    EXPECT_EQ(failureOf(""), "the name of a file is empty");
}

TEST_F(WrittenFile, HasAnExtensionInLowerCase) {
    EXPECT_EQ(app::extensionOf("a/b.PnG"), ".png");
    EXPECT_EQ(app::extensionOf("a.png/b"), "");
    EXPECT_EQ(app::extensionOf("a.tar.svg"), ".svg");
}
