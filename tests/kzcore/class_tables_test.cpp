#include <gtest/gtest.h>

#include <set>

#include "kzcore/document/config.h"
#include "support/drawing.h"
#include "support/pixels.h"

namespace {

struct Row {
    const char* className;
    const char* structure;
};

// The whole table: classes in order, with their display structures.
constexpr Row kRows[] = {
    {"ARectangle", "Object/Rectangle"},
    {"AOval", "Object/Oval"},
    {"APolygon", "Object/Polygon"},
    {"AStarburst", "Object/Starburst"},
    {"AFan", "Object/Sector"},
    {"AArrow", "Object/Arrow"},
    {"AParamShape", "Object/Parametric Shape"},
    {"ARegMark", "Object/Registration Mark"},
    {"ADimension", "Dimension/Linear"},
    {"ADimensionH", "Dimension/Horizontal"},
    {"ADimensionV", "Dimension/Vertical"},
    {"ALabel", "Dimension/Label"},
    {"ALabel2", "Dimension/Label 2"},
    {"AEditPath", "Object/Path"},
    {"AGuideLine", "Object/Guideline"},
    {"AOleObject", "Object/OLE Object"},
    {"AGroup", "Object/Group"},
    {"AComposite", "Object/Composite"},
    {"AMask", "Object/Mask"},
    {"AText", "Object/Text"},
    {"AArcText", "Object/Arc Text"},
    {"ACombinePathText", "Object/Text on Path"},
    {"ABitmap", "Object/Bitmap"},
    {"ACombineWeld", "Effect/Weld"},
    {"ACombineCutOut", "Effect/Cut Out"},
    {"ACombineCommon", "Effect/Common"},
    {"ACombineXor", "Effect/Exclusive"},
    {"ACombineMask", "Effect/Combine Mask"},
    {"ATransLens", "Effect/Transparent Lens"},
    {"AInvertLens", "Effect/Invert Lens"},
    {"ABrightenLens", "Effect/Brighten Lens"},
    {"AWireframeLens", "Effect/Wireframe Lens"},
    {"AZoomLens", "Effect/Zoom Lens"},
    {"AStripe", "Effect/Stripe"},
    {"AInOutline", "Effect/In-Outline"},
    {"ADistort", "Effect/Distort"},
    {"AShadow", "Effect/Shadow"},
    {"AGradientBrushItem", "Fill/Gradient"},
    {"APatternBrushItem", "Fill/Pattern"},
    {"ASolidBrushItem", "Fill/Solid"},
    {"APenItem", "Stroke/Pen"},
    {"ALayer", "Layer/Drawing"},
    {"AGuideLayer", "Layer/Guides"},
    {"AMasterLayer", "Layer/Master"},
};

constexpr Row kColors[] = {
    {"ARGBColorItem", "RGB Color"},
    {"ACMYKColorItem", "CMYK Color"},
    {"AGrayColorItem", "Gray Color"},
    {"ASpotColorItem", "Spot Color"},
};

// Every class that users see.
std::vector<AString> shownClasses() {
    const AConfig config;
    std::vector<AString> names;
    for (int i = 0; i < config.getDBClassTableSize(); ++i)
        names.emplace_back(config.getDBClassNameByIndex(i));
    for (int i = 0; i < config.getColorItemClassTableSize(); ++i)
        names.emplace_back(config.getColorItemClassNameByIndex(i));
    return names;
}

test::Pixels iconOf(const AString& name, COLORREF window) {
    CBitmap icon;
    COLORMAP white{test::kWhite, window};
    icon.LoadMappedBitmap(AConfig().getClassIconID(name, 1), 0, &white, 1);
    return test::pixelsOf(icon);
}

}  // namespace

TEST(ClassTables, ListTheDatabaseClassesInTheirOrderWithTheirStructures) {
    const AConfig config;
    ASSERT_EQ(config.getDBClassTableSize(), static_cast<int>(std::size(kRows)));
    for (int i = 0; i < config.getDBClassTableSize(); ++i) {
        const WCHAR* name = config.getDBClassNameByIndex(i);
        EXPECT_EQ(AString(name).toUtf8(), kRows[i].className);
        AString structure;
        EXPECT_EQ(config.getClassDisplayStructure(name, structure, 1), 1);
        EXPECT_EQ(structure.toUtf8(), kRows[i].structure);
    }
}

TEST(ClassTables, ListTheColorClassesWithoutACategory) {
    const AConfig config;
    ASSERT_EQ(config.getColorItemClassTableSize(), 4);
    for (int i = 0; i < 4; ++i) {
        const WCHAR* name = config.getColorItemClassNameByIndex(i);
        EXPECT_EQ(AString(name).toUtf8(), kColors[i].className);
        AString structure;
        EXPECT_EQ(config.getClassDisplayStructure(name, structure, 1), 1);
        EXPECT_EQ(structure.toUtf8(), kColors[i].structure);
        EXPECT_EQ(structure.Find(WCHAR('/')), -1);
    }
}

TEST(ClassTables, TheNameStringOfAClassIsItsDisplayStructure) {
    const AConfig config;
    for (int i = 0; i < config.getDBClassTableSize(); ++i) {
        const WCHAR* name = config.getDBClassNameByIndex(i);
        AString text;
        ASSERT_TRUE(text.LoadStringW(config.getClassNameID(name, 1)));
        AString structure;
        config.getClassDisplayStructure(name, structure, 1);
        EXPECT_EQ(text, structure);
    }
}

TEST(ClassTables, HostStringIdsShareNoBlockWithThePlugIns) {
    const std::set<UINT> plugInBlocks = {4103 / 16,  4119 / 16,  4128 / 16,  4160 / 16,
                                         4174 / 16,  4186 / 16,  11727 / 16, 12045 / 16,
                                         50176 / 16, 50187 / 16, 52033 / 16, 52074 / 16};
    const AConfig config;
    std::set<UINT> ids;
    for (int i = 0; i < config.getDBClassTableSize(); ++i)
        ids.insert(config.getClassNameID(config.getDBClassNameByIndex(i), 1));
    EXPECT_EQ(ids.size(), std::size(kRows));
    for (const UINT id : ids) EXPECT_FALSE(plugInBlocks.contains(id / 16)) << id;
}

TEST(ClassTables, EveryClassHasAnIconOfItsOwn) {
    std::set<UINT> ids;
    std::vector<std::pair<std::string, test::Pixels>> icons;
    for (const AString& name : shownClasses()) {
        const UINT id = AConfig().getClassIconID(name, 1);
        EXPECT_NE(id, 0U) << name.toUtf8();
        EXPECT_TRUE(ids.insert(id).second) << name.toUtf8();
        icons.emplace_back(name.toUtf8(), iconOf(name, test::kWhite));
    }
    EXPECT_EQ(icons.size(), std::size(kRows) + std::size(kColors));
    for (std::size_t i = 0; i < icons.size(); ++i) {
        for (std::size_t j = 0; j < i; ++j)
            EXPECT_NE(icons[i].second, icons[j].second) << icons[i].first << " looks like " << icons[j].first;
    }
}

TEST(ClassTables, IconsAre16By16WithAirAroundInTheWindowsColor) {
    constexpr COLORREF kWindow = RGB(255, 250, 230);
    for (const AString& name : shownClasses()) {
        const test::Pixels icon = iconOf(name, kWindow);
        ASSERT_EQ(icon.width, 16) << name.toUtf8();
        ASSERT_EQ(icon.height, 16) << name.toUtf8();
        for (int i = 0; i < 16; ++i) {
            for (const COLORREF edge : {icon.at(i, 0), icon.at(i, 15), icon.at(0, i), icon.at(15, i)})
                EXPECT_EQ(edge, kWindow) << name.toUtf8() << " at " << i;
        }
        EXPECT_EQ(std::count(icon.colors.begin(), icon.colors.end(), test::kWhite), 0) << name.toUtf8();
    }
}

// As many pixels as a check box has are dark or deeply coloured: that shows on white and on a control's face.
TEST(ClassTables, IconsStandOutFromTheWindow) {
    constexpr int kCheckBoxOutline = 4 * 10;
    for (const AString& name : shownClasses()) {
        const test::Pixels icon = iconOf(name, test::kWhite);
        const auto dark = std::count_if(icon.colors.begin(), icon.colors.end(), [](COLORREF color) {
            return std::min({color & 0xFF, color >> 8 & 0xFF, color >> 16 & 0xFF}) < 160;
        });
        EXPECT_GE(dark, kCheckBoxOutline) << name.toUtf8();
    }
}

TEST(ClassTables, UnknownClassesHaveNeitherNameNorIconNorStructure) {
    const AConfig config;
    for (const WCHAR* name :
         {_T("arectangle"), _T("ARectangle "), _T(""), static_cast<const WCHAR*>(nullptr)}) {
        AString structure(_T("left over"));
        EXPECT_EQ(config.getClassNameID(name, 1), 0U);
        EXPECT_EQ(config.getClassIconID(name, 1), 0U);
        EXPECT_EQ(config.getClassDisplayStructure(name, structure, 1), 0);
        EXPECT_TRUE(structure.IsEmpty());
    }
    EXPECT_EQ(config.getDBClassNameByIndex(-1), nullptr);
    EXPECT_EQ(config.getDBClassNameByIndex(config.getDBClassTableSize()), nullptr);
    EXPECT_EQ(config.getColorItemClassNameByIndex(4), nullptr);
}

TEST(ClassTables, ObjectsTellTheStructureOfTheirOwnClass) {
    test::Drawing drawing;
    const AObject* label = drawing.add(drawing.layer(), _T("ALabel2"));
    AString structure;
    EXPECT_EQ(label->getClassDisplayStructure(structure), 1);
    EXPECT_EQ(structure.toUtf8(), "Dimension/Label 2");
    EXPECT_EQ(drawing.document.getDatabase().getClassDisplayStructure(structure), 0);
    EXPECT_TRUE(structure.IsEmpty());
}
