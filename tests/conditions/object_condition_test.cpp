// Objects by class and sub-kind; the class tables.
#include <gtest/gtest.h>

#include "conditions/class_tables.h"
#include "kzcore/document/application.h"
#include "kzcore/document/object.h"
#include "support.h"

using test::cloneOf;
using test::Foreign;
using test::Names;
using test::namesOf;
using test::ofClasses;

namespace {

UINT alwaysSeven(const ARoot*) {
    return 7;
}

const AClassInfo& row(const WCHAR* className) {
    return *findClass(className);
}

}  // namespace

TEST(ObjectCondition, AcceptsObjectsOfItsClassesAndWhatTheClassifierAnswersAsExpected) {
    struct Case {
        Names classes;
        AObjectCondition::Classifier classifier;
        UINT expectedId;
        BOOL matches;
    };
    const Case cases[] = {
        {{"AOval"}, nullptr, 0, TRUE},
        {{"AFan", "AOval"}, nullptr, 0, TRUE},
        {{"AOval"}, nullptr, 7, TRUE},  // without a classifier the id says nothing
        {{"AOval"}, alwaysSeven, 7, TRUE},
        {{"AOval"}, alwaysSeven, 8, FALSE},
        {{"AOval"}, alwaysSeven, 0, FALSE},
        {{"AFan"}, alwaysSeven, 7, FALSE},
        {{"aoval"}, nullptr, 0, FALSE},
        {{""}, nullptr, 0, FALSE},
        {{}, nullptr, 0, FALSE},
        {{}, alwaysSeven, 7, FALSE},
    };
    AObject oval(row(_T("AOval")));
    for (const Case& test : cases) {
        const auto condition = ofClasses<AObjectCondition>(test.classes);
        condition->classifier = test.classifier;
        condition->expectedId = test.expectedId;
        EXPECT_EQ(condition->isMatch(&oval), test.matches) << testing::PrintToString(test.classes);
        EXPECT_FALSE(condition->isMatch(nullptr));
    }
}

TEST(ObjectCondition, ContainersAreObjectsOfTheirOwnClassAndNotOfWhatTheyHold) {
    AGroup group(row(_T("AGroup")));
    AObject oval(row(_T("AOval")));
    group.appendChild(&oval);
    const AObjectCondition groups(_T("Group"), _T("AGroup"));
    EXPECT_TRUE(groups.isMatch(&group));
    EXPECT_FALSE(groups.isMatch(&oval));
}

TEST(ObjectCondition, TheClassNameIsAskedWithoutATypeTest) {
    Foreign foreign(_T("AOval"));
    EXPECT_TRUE(AObjectCondition(_T("Oval"), _T("AOval")).isMatch(&foreign));
}

TEST(ObjectCondition, NeitherConstructorSetsTheSubKind) {
    AObjectCondition source(_T("Oval"), _T("AOval"));
    EXPECT_EQ(source.classifier, nullptr);
    EXPECT_EQ(source.expectedId, 0u);
    source.classifier = alwaysSeven;
    source.expectedId = 8;
    const AObjectCondition copy(source);
    EXPECT_EQ(copy.classifier, nullptr);
    EXPECT_EQ(copy.expectedId, 0u);
    EXPECT_EQ(copy.getSerial(), source.getSerial());
    EXPECT_EQ(namesOf(copy), Names{"AOval"});
}

TEST(ObjectCondition, ItsCloneIsAPlainEntry) {
    AObject oval(row(_T("AOval")));
    const AObjectCondition condition(_T("Oval"), _T("AOval"));
    ASSERT_TRUE(condition.isMatch(&oval));
    const auto clone = cloneOf(condition);
    EXPECT_EQ(typeid(*clone), typeid(ACondition));
    EXPECT_FALSE(clone->isMatch(&oval));
    EXPECT_EQ(clone->getSerial(), condition.getSerial());
    EXPECT_EQ(namesOf(*clone), Names{"AOval"});
    EXPECT_EQ(clone->path.toUtf8(), "Oval");
}

TEST(BitmapKind, EveryColorModelHasTheIdOfItsName) {
    struct Case {
        int model;
        UINT id;
        const char* name;
    };
    const Case cases[] = {
        {1, 4122, "RGB Bitmap"},
        {2, 4119, "Black and White Bitmap"},
        {3, 4120, "Grayscale Bitmap"},
        {4, 4123, "CMYK Bitmap"},
        {5, 4121, "Indexed Color Bitmap"},
        {6, 4124, "LAB Bitmap"},
        {0, 0, ""},
        {7, 0, ""},
        {-1, 0, ""},
    };
    for (const Case& test : cases) {
        ABitmap bitmap(row(_T("ABitmap")));
        bitmap.setColorModel(test.model);
        EXPECT_EQ(bitmapColorModelId(&bitmap), test.id) << test.model;
        AString name;
        name.LoadStringW(test.id);
        EXPECT_EQ(name.toUtf8(), test.name) << test.model;
    }
}

TEST(BitmapKind, WhatIsNoBitmapHasNone) {
    AObject oval(row(_T("AOval")));
    AObject onlyNamed(row(_T("ABitmap")));
    EXPECT_EQ(bitmapColorModelId(&oval), 0u);
    EXPECT_EQ(bitmapColorModelId(&onlyNamed), 0u);
    EXPECT_EQ(bitmapColorModelId(nullptr), 0u);
    for (const BitmapKind& kind : kBitmapKinds) {
        AObjectCondition condition(_T(""), _T("AOval"));
        condition.classifier = kind.classifier;
        condition.expectedId = kind.nameId;
        EXPECT_FALSE(condition.isMatch(&oval)) << kind.nameId;
    }
}

TEST(BitmapKind, EachSubEntryAcceptsTheBitmapsOfItsModelAloneAndTheClassEntryAll) {
    const AApplication application;
    const AObjectCondition every(_T("Bitmap"), _T("ABitmap"));
    for (int model = 1; model <= 6; ++model) {
        ABitmap bitmap(row(_T("ABitmap")));
        bitmap.setColorModel(model);
        int accepted = 0;
        for (const BitmapKind& kind : kBitmapKinds) {
            AObjectCondition condition(_T(""), nullptr);
            condition.reset(kind.className, kind.nameId, kind.classifier);
            const BOOL matches = condition.isMatch(&bitmap);
            EXPECT_EQ(matches != 0, kind.nameId == bitmapColorModelId(&bitmap));
            accepted += matches;
        }
        EXPECT_EQ(accepted, 1) << model;
        EXPECT_TRUE(every.isMatch(&bitmap));
    }
}

TEST(ObjectCondition, ResetToASubKindMakesThePathOfDisplayNameAndSubKind) {
    const AApplication application;
    AObjectCondition condition(_T("elsewhere"), _T("AOval"));
    condition.inDocument = 1;
    condition.inSelection = 1;
    const std::uint64_t serial = condition.getSerial();
    condition.reset(_T("ABitmap"), 4122, bitmapColorModelId);
    EXPECT_EQ(condition.path.toUtf8(), "Bitmap/RGB Bitmap");
    EXPECT_EQ(namesOf(condition), Names{"ABitmap"});
    EXPECT_EQ(condition.classifier, &bitmapColorModelId);
    EXPECT_EQ(condition.expectedId, 4122u);
    EXPECT_EQ(condition.inDocument, 0);
    EXPECT_EQ(condition.inSelection, 1);
    EXPECT_EQ(condition.getSerial(), serial);
}

TEST(ObjectCondition, ResetToASubKindOfAClassWithoutADisplayNameStartsWithAnEmptySegment) {
    const AApplication application;
    AObjectCondition condition(_T(""), nullptr);
    condition.reset(_T("ANoSuchClass"), 4119, nullptr);
    EXPECT_EQ(condition.path.toUtf8(), "/Black and White Bitmap");
    condition.reset(nullptr, 0, nullptr);
    EXPECT_EQ(condition.path.toUtf8(), "/");
    EXPECT_EQ(namesOf(condition), Names{});
}

TEST(ObjectCondition, ResetToASubKindWithoutAnApplicationIsHarmless) {
    ASSERT_EQ(AApplication::GetApplication(), nullptr);
    AObjectCondition condition(_T(""), nullptr);
    condition.reset(_T("ABitmap"), 4122, bitmapColorModelId);
    EXPECT_EQ(condition.path.toUtf8(), "/RGB Bitmap");
}

TEST(ClassTables, ObjectClassesStandInTheirOrder) {
    const Names expected{
        "ARectangle",     "AOval",          "APolygon",    "AStarburst",       "AFan",        "AArrow",
        "AParamShape",    "ARegMark",       "ADimension",  "ADimensionH",      "ADimensionV", "ALabel",
        "ALabel2",        "AEditPath",      "AGuideLine",  "AOleObject",       "AGroup",      "AComposite",
        "AMask",          "AText",          "AArcText",    "ACombinePathText", "ABitmap",     "ACombineWeld",
        "ACombineCutOut", "ACombineCommon", "ACombineXor", "ACombineMask",     "ATransLens",  "AInvertLens",
        "ABrightenLens",  "AWireframeLens", "AZoomLens",   "AStripe",          "AInOutline",  "ADistort",
        "AShadow"};
    Names names;
    for (const WCHAR* name : kObjectClasses) names.push_back(AString(name).toUtf8());
    ASSERT_EQ(names.size(), 37u);
    EXPECT_EQ(names, expected);
    EXPECT_EQ(names[22], "ABitmap");
    for (const WCHAR* name : kObjectClasses) EXPECT_NE(findClass(name), nullptr) << AString(name).toUtf8();
}

TEST(ClassTables, CategoriesStandInTheOrderOfThePages) {
    Names names;
    for (const WCHAR* name : kCategories) names.push_back(AString(name).toUtf8());
    EXPECT_EQ(names, (Names{"Object", "Dimension", "Fill", "Stroke", "Effect", "Layer", "Color"}));
}

TEST(ClassTables, BitmapKindsStandInTheOrderOfTheirIds) {
    UINT id = 4119;
    for (const BitmapKind& kind : kBitmapKinds) {
        EXPECT_EQ(kind.nameId, id++);
        EXPECT_EQ(AString(kind.className), _T("ABitmap"));
        EXPECT_EQ(kind.classifier, &bitmapColorModelId);
    }
    EXPECT_EQ(id, 4125u);
}
