// The program is whole in its folder: copied elsewhere it runs, and what is missing there it tells.
#include <gtest/gtest.h>

#include "process.h"
#include "sea.h"
#include "support/program_folder.h"
#include "support/temp_folder.h"

using test::Outcome;

namespace {

namespace fs = std::filesystem;

class Installed : public testing::Test {
protected:
    test::TempFolder folder;
    fs::path home = folder.path() / u8"Zeichnen für alle";
    fs::path program = home / KZ_PROGRAM;

    // The program and the libraries beside it.
    void copyProgram() {
        fs::create_directory(home);
        fs::copy(test::kzdraw(), home);
        for (const fs::directory_entry& entry : fs::directory_iterator(test::programFolder())) {
            if (entry.path().extension() == KZ_LIBRARY_SUFFIX) fs::copy(entry.path(), home);
        }
    }
    std::string plugIn() {
        const fs::path file = fs::path("Plugins") / (std::string("kzattribute") + KZ_MODULE_SUFFIX);
        return test::utf8((home / file).make_preferred());
    }
    void expectOneErrorAbout(const std::string& file) {
        const Outcome outcome = test::runProgram(program, {"tools"});
        EXPECT_EQ(outcome.status, 2);
        EXPECT_EQ(outcome.out, "");
        EXPECT_TRUE(outcome.err.starts_with("kzdraw: " + file + ": ")) << outcome;
        EXPECT_EQ(outcome.err.find('\n'), outcome.err.size() - 1) << outcome;
    }
};

}  // namespace

TEST_F(Installed, ElsewhereItRuns) {
    copyProgram();
    fs::copy(test::programFolder() / "Plugins", home / "Plugins");
    const std::string sea = test::utf8(folder.write("sea.svg", test::kSea));
    EXPECT_EQ(test::runProgram(program, {"select", sea, "--similar-to", "sun", "--json"}),
              (Outcome{0, "{\"selection\":[\"sun\"]}\n", ""}));
}

TEST_F(Installed, WithoutThePlugInItSaysSo) {
    copyProgram();
    expectOneErrorAbout(plugIn());
}

TEST_F(Installed, WithAnEmptyFileForThePlugInItSaysSo) {
    copyProgram();
    fs::create_directory(home / "Plugins");
    std::ofstream(fs::path(home / "Plugins" / (std::string("kzattribute") + KZ_MODULE_SUFFIX)));
    expectOneErrorAbout(plugIn());
}

TEST_F(Installed, WithALibraryThatIsNoPlugInItSaysSo) {
    copyProgram();
    fs::create_directory(home / "Plugins");
    fs::copy(test::programFolder() / "Languages" / "de" / "kzattributeloc.dll",
             home / "Plugins" / (std::string("kzattribute") + KZ_MODULE_SUFFIX));
    expectOneErrorAbout(plugIn());
}

TEST_F(Installed, WithoutThePlugInItStillHelps) {
    copyProgram();
    const Outcome outcome = test::runProgram(program, {"--help"});
    EXPECT_EQ(outcome.status, 0) << outcome;
    EXPECT_EQ(outcome.err, "");
}
