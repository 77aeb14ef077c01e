// What cannot be read as a drawing: status 2 and one line that names the file, and the line where there is
// one.
#include <gtest/gtest.h>

#include "process.h"
#include "support/temp_folder.h"

using test::Outcome;
using test::runKzdraw;

namespace {

class BadDrawing : public testing::Test {
protected:
    test::TempFolder folder;

    // What every command that reads a drawing says of it.
    void expectRefused(const std::filesystem::path& path, const std::string& reason) {
        const std::string file = test::utf8(path);
        const Outcome expected{2, "", "kzdraw: " + file + reason + "\n"};
        EXPECT_EQ(runKzdraw({"info", file}), expected);
        EXPECT_EQ(runKzdraw({"tools", "--json", file}), expected);
        EXPECT_EQ(runKzdraw({"select", file, "--similar-to", "a"}), expected);
        EXPECT_EQ(runKzdraw({"view", file, "--hide", "red"}), expected);
        EXPECT_EQ(runKzdraw({"render", file, "-o", file + ".png"}), expected);
        const Outcome inScript = {2, "", "kzdraw: -:2: " + file + reason + "\n"};
        EXPECT_EQ(runKzdraw({"script", "-"}, "# a comment\nopen '" + file + "'\n"), inScript);
    }
};

}  // namespace

TEST_F(BadDrawing, MissingFile) {
    expectRefused(folder.path() / "missing.svg", ": there is no such file");
    expectRefused(folder.path() / "no folder" / "missing.svg", ": there is no such file");
}

TEST_F(BadDrawing, Folder) {
    expectRefused(folder.path(), ": is a folder");
}

TEST_F(BadDrawing, EmptyFile) {
    expectRefused(folder.write("empty.svg", ""), ": the file is empty");
}

TEST_F(BadDrawing, OtherXml) {
    expectRefused(folder.write("page.svg", "<?xml version=\"1.0\"?>\n<html></html>\n"),
                  ":2: this is no SVG drawing: its root is <html>");
}

TEST_F(BadDrawing, NoXml) {
    expectRefused(folder.write("text.svg", "just text\n"), ":1: there is no element in it");
}

TEST_F(BadDrawing, MismatchedTag) {
    expectRefused(folder.write("broken.svg", "<svg xmlns='http://www.w3.org/2000/svg'>\n<g>\n</h>\n</svg>\n"),
                  ":3: an end tag does not match its start tag");
}

TEST_F(BadDrawing, CutOff) {
    expectRefused(folder.write("cut.svg", "<svg xmlns='http://www.w3.org/2000/svg'>\n<rect id='a'/>\n"),
                  ":2: the file ends in the middle of the drawing");
}

TEST_F(BadDrawing, AbsurdlyDeep) {
    std::string text = "<svg xmlns='http://www.w3.org/2000/svg'>";
    for (int i = 0; i < 200'000; ++i) text += "<g>";
    for (int i = 0; i < 200'000; ++i) text += "</g>";
    expectRefused(folder.write("deep.svg", text + "</svg>"), ":1: elements are nested deeper than 1000");
}

TEST_F(BadDrawing, NamedWithAControlCharacterStaysOneLine) {
    const Outcome outcome = runKzdraw({"info", "no\nsuch\x1B[31m\xC2\x9B.svg"});
    EXPECT_EQ(outcome.status, 2);
    EXPECT_TRUE(outcome.err.starts_with("kzdraw: no?such?[31m?.svg: ")) << outcome;
    EXPECT_EQ(outcome.err.find('\n'), outcome.err.size() - 1) << outcome;
}

TEST_F(BadDrawing, ScriptThatIsMissingOrAFolder) {
    const std::string missing = test::utf8(folder.path() / "missing.kzs");
    EXPECT_EQ(runKzdraw({"script", missing}),
              (Outcome{2, "", "kzdraw: " + missing + ": there is no such file\n"}));
    const std::string itself = test::utf8(folder.path());
    EXPECT_EQ(runKzdraw({"script", itself}), (Outcome{2, "", "kzdraw: " + itself + ": is a folder\n"}));
}
