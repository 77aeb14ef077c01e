// What dialogs remember, as the program tells and forgets it.
#include <gtest/gtest.h>

#include "kzutil/user_folder.h"
#include "process.h"
#include "support/archive_node.h"
#include "support/temp_folder.h"

using test::Outcome;
using test::runKzdraw;

namespace {

class Prefs : public testing::Test {
protected:
    // Where the program looks: this test's own folder, not that of the user who runs it.
    const std::filesystem::path folder = kzutil::userConfigurationFolder() / "kzdraw";
    const std::filesystem::path file = folder / "AViewFilterPrefs.prefs";

    void write(const Bytes& bytes) {
        std::filesystem::create_directories(folder);
        std::ofstream(file, std::ios::binary)
            .write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    }
    static Bytes geometry(int width, int height, int left, int top) {
        Bytes base;
        appendNumber(base, 0, 1);
        appendNumber(base, 0, 4);
        Bytes fields;
        appendNumber(fields, 0, 1);
        appendNumber(fields, base.size(), 8);
        fields.insert(fields.end(), base.begin(), base.end());
        appendNumber(fields, 1, 1);
        for (const int value : {width, height}) appendNumber(fields, static_cast<unsigned>(value), 4);
        appendNumber(fields, 2, 1);
        for (const int value : {left, top}) appendNumber(fields, static_cast<unsigned>(value), 4);
        Bytes content;
        appendText(content, _T("AViewFilterPrefs"));
        appendNumber(content, fields.size(), 8);
        content.insert(content.end(), fields.begin(), fields.end());
        return sealed(content);
    }
};

constexpr char kNothing[] = "{\"prefs\":{\"AViewFilterPrefs\":null}}\n";

}  // namespace

TEST_F(Prefs, AreNoneAtFirst) {
    EXPECT_EQ(runKzdraw({"prefs"}), (Outcome{0, "nothing is stored\n", ""}));
    EXPECT_EQ(runKzdraw({"prefs", "--json"}), (Outcome{0, kNothing, ""}));
    EXPECT_EQ(runKzdraw({"prefs", "--reset"}), (Outcome{0, "nothing is stored\n", ""}));
    EXPECT_EQ(runKzdraw({"script", "-"}, "print prefs\n"), (Outcome{0, kNothing, ""}));
    EXPECT_FALSE(std::filesystem::exists(folder)) << "asking makes nothing";
}

TEST_F(Prefs, AreTold) {
    write(geometry(-1, 300, 40, -50));
    EXPECT_EQ(runKzdraw({"prefs"}),
              (Outcome{0,
                       "View Filter dialog: width its own, height 300, left 40, top -50\nstored in " +
                           test::utf8(folder) + "\n",
                       ""}));
    const std::string json =
        "{\"prefs\":{\"AViewFilterPrefs\":{\"width\":-1,\"height\":300,\"left\":40,\"top\":-50}}}\n";
    EXPECT_EQ(runKzdraw({"prefs", "--json"}), (Outcome{0, json, ""}));
    EXPECT_EQ(runKzdraw({"script", "-"}, "print prefs\n"), (Outcome{0, json, ""}));
}

TEST_F(Prefs, AreForgotten) {
    write(geometry(400, 300, 40, 50));
    EXPECT_EQ(runKzdraw({"prefs", "--reset", "--json"}), (Outcome{0, kNothing, ""}));
    EXPECT_FALSE(std::filesystem::exists(file));
    EXPECT_EQ(runKzdraw({"prefs", "--json"}), (Outcome{0, kNothing, ""}));
}

TEST_F(Prefs, ThatAreDamagedAreAnErrorAndCanBeForgotten) {
    Bytes bytes = geometry(400, 300, 40, 50);
    bytes.back() ^= 1;
    write(bytes);
    EXPECT_EQ(runKzdraw({"prefs"}),
              (Outcome{2, "", "kzdraw: " + test::utf8(file) + ": the archive is damaged (byte 16)\n"}));
    EXPECT_EQ(runKzdraw({"script", "-"}, "print prefs\n"),
              (Outcome{2, "", "kzdraw: -:1: " + test::utf8(file) + ": the archive is damaged (byte 16)\n"}));
    EXPECT_EQ(runKzdraw({"prefs", "--reset"}), (Outcome{0, "nothing is stored\n", ""}));
}
