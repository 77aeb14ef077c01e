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
    fs::path plugIn() const { return module("kzattribute"); }
    // Where a plug-in of this name stands.
    fs::path module(const std::string& name) const { return home / "Plugins" / (name + KZ_MODULE_SUFFIX); }
    void copyPlugIns() { fs::copy(test::programFolder() / "Plugins", home / "Plugins"); }
    void copyModule(const std::string& name) {
        fs::create_directory(home / "Plugins");
        fs::copy(test::programFolder() / "test_modules" / (name + KZ_MODULE_SUFFIX), home / "Plugins");
    }
    std::string sea() const { return test::utf8(folder.write("sea.svg", test::kSea)); }
    Outcome run(const std::vector<std::string>& arguments, const std::string& input = {}) {
        return test::runProgram(program, arguments, input);
    }
    static std::string lineAbout(const fs::path& file, const std::string& reason) {
        return "kzdraw: " + test::utf8(fs::path(file).make_preferred()) + ": " + reason + "\n";
    }
    // Without the plug-in what needs none works, and the reason is told once.
    void expectLeftOut(const std::string& told) {
        EXPECT_EQ(run({"tools"}), (Outcome{1, "", told}));
        const Outcome info = run({"info", sea(), "--json"});
        EXPECT_EQ(info.status, 0);
        EXPECT_EQ(info.err, told);
        const std::string picture = test::utf8(folder.path() / "sea.png");
        EXPECT_EQ(run({"render", sea(), "-o", picture}), (Outcome{0, "", told}));
        const std::string failed = "kzdraw: " + sea() + ": there is no tool \"ASelectSimilarTool\"\n";
        EXPECT_EQ(run({"select", sea(), "--similar-to", "sun"}), (Outcome{2, "", told + failed}));
    }
    void expectLeftOutFor(const std::string& reason) { expectLeftOut(lineAbout(plugIn(), reason)); }
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
    expectLeftOut(lineAbout(home / "Plugins", "there is no plug-in"));
}

TEST_F(Installed, AnEmptyFileForThePlugInIsLeftOut) {
    copyProgram();
    fs::create_directory(home / "Plugins");
    std::ofstream(fs::path(plugIn()));
    expectLeftOutFor("is no module");
}

TEST_F(Installed, ALibraryThatIsNoPlugInIsLeftOut) {
    copyProgram();
    fs::create_directory(home / "Plugins");
    fs::copy(test::programFolder() / "Languages" / "de" / "kzattributeloc.dll", plugIn());
    const Outcome outcome = run({"info", sea()});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_TRUE(outcome.err.starts_with("kzdraw: " + test::utf8(plugIn().make_preferred()) + ": "))
        << outcome;
    EXPECT_EQ(outcome.err.find('\n'), outcome.err.size() - 1) << outcome;
}

// A loader that maps such a file ends the process at the first page that is not there.
TEST_F(Installed, APlugInThatIsCutOffIsLeftOut) {
    copyProgram();
    copyPlugIns();
    const auto size = fs::file_size(plugIn());
    for (const auto left : {std::uintmax_t{40}, std::uintmax_t{100}, size / 4, size / 2}) {
        fs::resize_file(plugIn(), left);
        SCOPED_TRACE(left);
        EXPECT_EQ(run({"tools"}), (Outcome{1, "", lineAbout(plugIn(), "is damaged: the file is cut off")}));
        fs::remove(plugIn());
        fs::copy(test::programFolder() / "Plugins" / plugIn().filename(), plugIn());
    }
    fs::resize_file(plugIn(), size / 2);
    expectLeftOutFor("is damaged: the file is cut off");
}

TEST_F(Installed, AModuleWithDataInPlaceOfItsTableIsLeftOut) {
    copyProgram();
    copyPlugIns();
    copyModule("data_plug_in");
    const std::string told =
        lineAbout(module("data_plug_in"), "not a plug-in: its APlugInExportGetList is no function");
    EXPECT_EQ(run({"select", sea(), "--similar-to", "sun", "--json"}),
              (Outcome{0, "{\"selection\":[\"sun\"]}\n", told}));
}

TEST_F(Installed, ToolsOfSeveralPlugInsWorkTogether) {
    copyProgram();
    copyPlugIns();
    copyModule("second_plug_in");
    const std::string script = "open '" + sea() +
                               "'\nselect sun\ntool ASelectNothingTool\nprint selection\n" +
                               "select sun\ntool ASelectSimilarTool\nprint selection\n";
    EXPECT_EQ(run({"script", "-"}, script),
              (Outcome{0, "{\"selection\":[]}\n{\"selection\":[\"sun\"]}\n", ""}));
}

TEST_F(Installed, TheSecondOfTwoPlugInsWithOneToolIsLeftOut) {
    copyProgram();
    copyModule("second_plug_in");
    fs::copy(module("second_plug_in"), module("third_plug_in"));
    const Outcome outcome = run({"tools", "--json"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.err,
              lineAbout(module("third_plug_in"), "its class ASelectNothingTool is another's already"));
    EXPECT_EQ(outcome.out.find("ASelectNothingTool"), outcome.out.rfind("ASelectNothingTool")) << outcome;
}

TEST_F(Installed, ADamagedLanguageIsToldAndTheToolsSpeakEnglish) {
    copyProgram();
    copyPlugIns();
    const Outcome english = run({"tools", "--json"});
    const fs::path texts = home / "Plugins" / "kzattributeloc.dll";
    fs::copy(test::programFolder() / "Languages" / "de" / "kzattributeloc.dll", texts);
    fs::resize_file(texts, fs::file_size(texts) / 2);
    EXPECT_EQ(run({"tools", "--json"}),
              (Outcome{0, english.out,
                       lineAbout(texts, "is damaged: the file is cut off; the plug-in's own texts serve")}));
}

TEST_F(Installed, WithoutThePlugInItStillHelps) {
    copyProgram();
    const Outcome outcome = test::runProgram(program, {"--help"});
    EXPECT_EQ(outcome.status, 0) << outcome;
    EXPECT_EQ(outcome.err, "");
}
