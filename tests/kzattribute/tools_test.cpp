// What every tool tells of itself, whichever way it was made.
#include <new>
#include "kzutil/archive.h"

#include "module.h"
#include "support/failing_new.h"

using test::Drawing;

namespace {

struct Constants {
    const char* className;
    const char* name;
    WORD descriptionId;
    const char* description;
    bool dirtyView;
    bool startsOnItem;
    bool needsObjects;
};

constexpr Constants kTools[] = {
    {"AViewFilterTool", "View Filter...", 50183, "Shows or hides colors", true, false, true},
    {"ASelectByAttrTool", "Select by Attributes...", 50176, "Selects objects based on their attributes",
     false, false, true},
    {"ASelectSimilarTool", "Select Similar Objects", 50177, "Selects all objects of the same type", false,
     false, true},
    {"ASelectColorTool", "Select Similar Color", 52033, "Selects all objects of the same color", false, false,
     true},
    {"AShowAllTool", "Show All", 50184, "Show all objects in the active view.", true, false, true},
    {"AShowAllExceptTool", "All But This Color", 50185,
     "Show all except those with the color of the selected objects", true, true, false},
    {"AShowThisTool", "Show This Color", 50186,
     "Show the objects with the same color of the selected objects", true, true, false},
    {"AHideThisTool", "Hide This Color", 50187,
     "Hide the objects with the same color of the selected objects", true, true, false},
    {"AHideAllExceptTool", "Hide All But This Color", 52074,
     "Hide all objects except those with the color of the selected objects", true, true, false},
};

class Tools : public testing::Test {
protected:
    std::unique_ptr<APlugIn> plugIn = test::loadPlugIn();
    std::unique_ptr<ATool> make(const char* className) {
        return test::makeTool(*plugIn, AString::fromUtf8(className));
    }
};

void expectConstants(const ATool& tool, const Constants& expected) {
    EXPECT_EQ(tool.getClassName().toUtf8(), expected.className);
    EXPECT_EQ(tool.getDisplayName().toUtf8(), expected.name);
    EXPECT_EQ(tool.getDescriptionId(), expected.descriptionId);
    EXPECT_EQ(tool.getToolTip().toUtf8(), expected.description);
    EXPECT_EQ(tool.isStackable(), 1);
    EXPECT_EQ(tool.isDirtyView(), expected.dirtyView ? 1 : 0);
    EXPECT_EQ(tool.isDirtySelection(), expected.dirtyView ? 0 : 1);
    EXPECT_EQ(tool.getVersion(), 60);
    EXPECT_EQ(tool.getDisplayNameID(), 0U);
    EXPECT_EQ(tool.getDisplayIconID(), 0U);
    EXPECT_FALSE(tool.hasEnded());
}

}  // namespace

TEST_F(Tools, FromTheFactoryTellTheirConstants) {
    for (const Constants& expected : kTools) {
        const auto tool = make(expected.className);
        ASSERT_NE(tool, nullptr);
        expectConstants(*tool, expected);
    }
}

TEST_F(Tools, FromCreateInstanceTellTheirConstants) {
    for (const Constants& expected : kTools) {
        const auto tool = make(expected.className);
        const std::unique_ptr<ARoot> other(tool->createInstance());
        ASSERT_NE(other, nullptr);
        EXPECT_NE(other.get(), tool.get());
        EXPECT_EQ(typeid(*other), typeid(*tool));
        expectConstants(dynamic_cast<const ATool&>(*other), expected);
        EXPECT_EQ(&other->getClassName(), &tool->getClassName()) << "one static string for the class";
    }
}

TEST_F(Tools, FromAnArchiveTellTheirConstants) {
    for (const Constants& expected : kTools) {
        const auto tool = make(expected.className);
        AArchive storing;
        storing.orbiWriteObject(tool.get());
        AArchive loading(storing.takeBytes());
        const std::unique_ptr<ARoot> read(loading.orbiReadObject());
        ASSERT_NE(read, nullptr) << loading.getError();
        expectConstants(dynamic_cast<const ATool&>(*read), expected);
    }
}

TEST_F(Tools, AreNotValidWithoutAView) {
    AApplication application;
    for (const Constants& expected : kTools)
        EXPECT_EQ(make(expected.className)->isValid(), 0) << expected.className;
}

TEST_F(Tools, ThatNeedObjectsAreNotValidOnAnEmptyDocument) {
    Drawing drawing;
    drawing.layer();
    for (const Constants& expected : kTools)
        EXPECT_EQ(make(expected.className)->isValid() != 0, !expected.needsObjects) << expected.className;
}

TEST_F(Tools, ForTheWholeViewAreValidOnceTheDocumentHoldsAnObject) {
    Drawing drawing;
    drawing.add(drawing.layer(), _T("AOval"));
    for (const char* name : {"AViewFilterTool", "AShowAllTool", "ASelectByAttrTool"}) {
        EXPECT_EQ(make(name)->isValid(), 1) << name;
    }
}

TEST_F(Tools, ThatWorkOnTheViewAreNotValidWithoutADatabase) {
    Drawing drawing;
    drawing.add(drawing.layer(), _T("AOval"));
    ADatabase* database = drawing.view().m_database;
    drawing.view().m_database = nullptr;
    EXPECT_EQ(make("AShowAllTool")->isValid(), 0);
    EXPECT_EQ(make("AViewFilterTool")->isValid(), 0);
    drawing.view().m_database = database;
}

TEST_F(Tools, OverrideExactlyOneStartOperation) {
    Drawing drawing;
    drawing.add(drawing.layer(), _T("AOval"));
    for (const Constants& expected : kTools) {
        const auto tool = make(expected.className);
        if (expected.startsOnItem)
            EXPECT_EQ(tool->onToolStart(), 0) << expected.className;
        else
            EXPECT_EQ(tool->onToolStart(AFPoint(), nullptr), 0) << expected.className;
        EXPECT_FALSE(tool->hasEnded());
    }
}

TEST_F(Tools, TheFactoryGivesNullWithoutMemoryForTheToolAndRaisesWithoutMemoryForItsTexts) {
    const APlugInTool* entry = plugIn->findTool(_T("ASelectSimilarTool"));
    int raised = 0;
    for (int n = 1;; ++n) {
        const AllocationFailure failing = failAllocation(n);
        try {
            const std::unique_ptr<ATool> tool(entry->factory());
            EXPECT_EQ(tool == nullptr, n == 1);
        } catch (const std::bad_alloc&) {
            EXPECT_TRUE(failing.happened());
            EXPECT_GT(n, 1);
            ++raised;
        }
        if (!failing.happened()) break;
    }
    EXPECT_GT(raised, 0);
}
