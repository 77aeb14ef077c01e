#include <gtest/gtest.h>

#include <filesystem>

#include "kzutil/file_path.h"
#include "tests/kzutil/text_printing.h"

namespace {

// What the platform writes between folders.
const WCHAR kSeparator = static_cast<WCHAR>(std::filesystem::path::preferred_separator);

AString joined(const WCHAR* a, const WCHAR* b) {
    return AString(a) + kSeparator + b;
}

class FilePath : public testing::Test {
protected:
    ~FilePath() override { AFilePath::setBaseFolder(AString()); }
};

TEST_F(FilePath, BeginsAtTheFolderOfTheProgramUntilTheHostSaysOtherwise) {
    const AString folder = AFilePath().getPath();
    EXPECT_GT(folder.GetLength(), 0);
    EXPECT_NE(folder[folder.GetLength() - 1], kSeparator);
    // The tests run in the folder that holds the programs.
    EXPECT_TRUE(std::filesystem::equivalent(std::filesystem::u8path(folder.toUtf8()),
                                            std::filesystem::current_path()));

    AFilePath::setBaseFolder(AString(_T("base")));
    EXPECT_EQ(AFilePath().getPath(), _T("base"));
    AFilePath::setBaseFolder(AString());
    EXPECT_EQ(AFilePath().getPath(), folder);
}

TEST_F(FilePath, ComponentsAreParted) {
    AFilePath::setBaseFolder(AString(_T("base")));
    AFilePath path;
    path += _T("Plugins");
    path += _T("kzattributeloc.dll");
    EXPECT_EQ(path.getPath(), joined(joined(_T("base"), _T("Plugins")), _T("kzattributeloc.dll")));
    EXPECT_EQ(AString(static_cast<const WCHAR*>(path)), path.getPath());
}

TEST_F(FilePath, ASeparatorThatIsThereIsNotDoubled) {
    AFilePath path(AString(_T("base/")));
    path += _T("file");
    EXPECT_EQ(path.getPath(), _T("base/file"));
}

TEST_F(FilePath, TheFirstComponentOfAnEmptyPathStandsAlone) {
    AFilePath path{AString()};
    path += _T("file");
    EXPECT_EQ(path.getPath(), _T("file"));
}

TEST_F(FilePath, NoComponentChangesNothing) {
    AFilePath path(AString(_T("base")));
    path += _T("");
    path += nullptr;
    EXPECT_EQ(path.getPath(), _T("base"));
}

}  // namespace
