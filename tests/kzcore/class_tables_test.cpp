#include <gtest/gtest.h>

#include <set>

#include "kzcore/config.h"
#include "support/drawing.h"

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
