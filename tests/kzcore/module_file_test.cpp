// Files of modules that are not all there.
#include <gtest/gtest.h>

#include "kzcore/tool/module_file.h"
#include "support/program_folder.h"
#include "support/temp_folder.h"

namespace {

namespace fs = std::filesystem;

// The host's own library, as it is loaded into this test.
fs::path library() {
    for (const fs::directory_entry& entry : fs::directory_iterator(test::programFolder())) {
        const std::string name = entry.path().filename().string();
        if (name.find("kzcore") != name.npos && name.find("test") == name.npos &&
            !moduleFileProblem(entry).size())
            return entry.path();
    }
    return {};
}

std::string firstBytes(const fs::path& file, std::size_t size) {
    std::string bytes(size, '\0');
    std::ifstream(file, std::ios::binary).read(bytes.data(), static_cast<std::streamsize>(size));
    return bytes;
}

class ModuleFile : public testing::Test {
protected:
    test::TempFolder folder;
    std::string problemOf(const std::string& bytes) {
        return moduleFileProblem(folder.write("module", bytes));
    }
};

constexpr char kCutOff[] = "is damaged: the file is cut off";

}  // namespace

TEST_F(ModuleFile, ThatIsWholeHasNoProblem) {
    EXPECT_FALSE(library().empty());
}

TEST_F(ModuleFile, ThatIsCutOffIsDamaged) {
    const std::size_t size = fs::file_size(library());
    for (const std::size_t left :
         {std::size_t{4}, std::size_t{63}, std::size_t{64}, std::size_t{200}, size / 8, size / 2})
        EXPECT_EQ(problemOf(firstBytes(library(), left)), kCutOff) << left;
}

TEST_F(ModuleFile, OfAnotherKindIsNone) {
    EXPECT_EQ(problemOf(""), "is no module");
    EXPECT_EQ(problemOf("MZ"), "is no module");
    EXPECT_EQ(problemOf(std::string(5000, 'x')), "is no module");
    EXPECT_EQ(problemOf("MZ" + std::string(5000, '\0')), "is no module");
    EXPECT_EQ(problemOf("\177ELF" + std::string(5000, '\0')), "is no module");
}

TEST_F(ModuleFile, WithNumbersBeyondEveryFileIsDamaged) {
    std::string shared = "\177ELF\2\1" + std::string(5000, '\0');
    shared[54] = 56;
    shared[56] = 1;
    for (int i = 32; i < 40; ++i) shared[i] = '\xff';  // the table's place
    EXPECT_EQ(problemOf(shared), kCutOff);
    std::string library = "MZ" + std::string(5000, '\0');
    for (int i = 60; i < 64; ++i) library[i] = '\xff';
    EXPECT_EQ(problemOf(library), kCutOff);
}

TEST_F(ModuleFile, ThatIsNotThereOrAFolderIsTold) {
    EXPECT_EQ(moduleFileProblem(folder.path() / "none"), "there is no such file");
    EXPECT_EQ(moduleFileProblem(folder.path()), "cannot be read");
}
