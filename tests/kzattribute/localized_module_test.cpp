// Attach and detach, with and without a localized module.
#include "module.h"

namespace {

// The texts of the whole string table: id, English, German.
struct Text {
    UINT id;
    const char* english;
    const char* german;
};

constexpr Text kTexts[] = {
    {4103, "Selection only", "Nur Auswahl"},
    {4119, "Black and White Bitmap", "Schwarzweiß-Bitmap"},
    {4120, "Grayscale Bitmap", "Graustufen-Bitmap"},
    {4121, "Indexed Color Bitmap", "Bitmap mit Farbpalette"},
    {4122, "RGB Bitmap", "RGB-Bitmap"},
    {4123, "CMYK Bitmap", "CMYK-Bitmap"},
    {4124, "LAB Bitmap", "LAB-Bitmap"},
    {4128, "No fill", "Keine Füllung"},
    {4132, "No stroke", "Keine Kontur"},
    {4160, "No object matches the criteria.", "Kein Objekt entspricht den Kriterien."},
    {4174, "View Filter...", "Ansichtsfilter..."},
    {4179, "Select by Attributes...", "Nach Attributen auswählen..."},
    {4180, "Select Similar Objects", "Ähnliche Objekte auswählen"},
    {4181, "Select by Attributes", "Nach Attributen auswählen"},
    {4182, "Show All", "Alle zeigen"},
    {4183, "All But This Color", "Alle außer dieser Farbe"},
    {4184, "Show This Color", "Diese Farbe zeigen"},
    {4185, "Hide This Color", "Diese Farbe verbergen"},
    {11727, "Select Similar Color", "Gleiche Farbe auswählen"},
    {12045, "Hide All But This Color", "Alle außer dieser Farbe verbergen"},
    {50176, "Selects objects based on their attributes", "Wählt Objekte nach ihren Attributen aus"},
    {50177, "Selects all objects of the same type", "Wählt alle Objekte des gleichen Typs aus"},
    {50183, "Shows or hides colors", "Zeigt oder verbirgt Farben"},
    {50184, "Show all objects in the active view.", "Alle Objekte der aktiven Ansicht zeigen."},
    {50185, "Show all except those with the color of the selected objects",
     "Alle Objekte zeigen, außer denen mit der Farbe der ausgewählten Objekte"},
    {50186, "Show the objects with the same color of the selected objects",
     "Die Objekte mit der Farbe der ausgewählten Objekte zeigen"},
    {50187, "Hide the objects with the same color of the selected objects",
     "Die Objekte mit der Farbe der ausgewählten Objekte verbergen"},
    {52033, "Selects all objects of the same color", "Wählt alle Objekte der gleichen Farbe aus"},
    {52074, "Hide all objects except those with the color of the selected objects",
     "Alle Objekte verbergen, außer denen mit der Farbe der ausgewählten Objekte"},
};

// A base folder of its own, for as long as the test runs. The plug-in itself stays where it was built.
class LocalizedModule : public testing::Test {
protected:
    const AFilePath plugInFile = test::plugInPath();
    const std::filesystem::path program = test::programFolder();
    test::TempFolder base;

    void SetUp() override { AFilePath::setBaseFolder(base.wide()); }
    void TearDown() override { AFilePath::setBaseFolder(AString()); }

    void install(const std::filesystem::path& module) {
        std::filesystem::create_directories(base.path() / "Plugins");
        std::filesystem::copy_file(module, localizedFile());
    }
    std::filesystem::path localizedFile() const { return base.path() / "Plugins" / "kzattributeloc.dll"; }
};

}  // namespace

TEST_F(LocalizedModule, WithoutOneEveryTextIsTheModulesOwn) {
    const auto plugIn = test::loadPlugIn(plugInFile);
    for (const Text& text : kTexts) EXPECT_EQ(test::textOf(text.id), text.english);
}

TEST_F(LocalizedModule, WinsWhereItIsPresent) {
    install(program / "Languages" / "de" / "kzattributeloc.dll");
    const auto plugIn = test::loadPlugIn(plugInFile);
    for (const Text& text : kTexts) EXPECT_EQ(test::textOf(text.id), text.german);
    EXPECT_EQ(test::makeTool(*plugIn, _T("AShowAllTool"))->getDisplayName().toUtf8(), "Alle zeigen");
}

TEST_F(LocalizedModule, LeavesWhatItLacksToTheModuleIdById) {
    install(program / "test_modules" / "kzattributeloc_partial.dll");
    const auto plugIn = test::loadPlugIn(plugInFile);
    for (const Text& text : kTexts)
        EXPECT_EQ(test::textOf(text.id), text.id == 4182 ? text.german : text.english);
}

TEST_F(LocalizedModule, ThatIsBrokenIsIgnoredSilently) {
    for (const char* content : {"", "MZ", "This is no module."}) {
        base.write("Plugins/kzattributeloc.dll", content);
        const auto plugIn = test::loadPlugIn(plugInFile);
        ASSERT_NE(plugIn, nullptr);
        EXPECT_EQ(test::textOf(4180), "Select Similar Objects");
        EXPECT_EQ(plugIn->getTools().size(), 9U);
    }
}

TEST_F(LocalizedModule, IsFreedWhenTheModuleIsUnloaded) {
    install(program / "Languages" / "de" / "kzattributeloc.dll");
    auto plugIn = test::loadPlugIn(plugInFile);
    plugIn.reset();
    std::error_code error;
    EXPECT_TRUE(std::filesystem::remove(localizedFile(), error)) << error.message();
    EXPECT_EQ(test::textOf(4180), "") << "the module's texts go with it";
    plugIn = test::loadPlugIn(plugInFile);
    EXPECT_EQ(test::textOf(4180), "Select Similar Objects");
}

TEST_F(LocalizedModule, TheHostsOwnTextsStayBesideIt) {
    install(program / "Languages" / "de" / "kzattributeloc.dll");
    const auto plugIn = test::loadPlugIn(plugInFile);
    AString structure;
    EXPECT_EQ(AConfig().getClassDisplayStructure(_T("ARectangle"), structure, 1), 1);
    EXPECT_EQ(structure.toUtf8(), "Object/Rectangle");
}
