#include <gtest/gtest.h>

#include <functional>
#include <new>

#include "kzcore/document/refer_item.h"
#include "kzcore/tool/tool_runner.h"
#include "support/drawing.h"

using test::Drawing;

namespace {

// A tool that does what the test tells it.
struct TestTool : ATool {
    std::function<int(TestTool&, void*)> start;
    int valid = 1;
    int isValid() override { return valid; }
    int onToolStart() override { return start(*this, nullptr); }
    int onToolStart(const AFPoint&, void* data) override { return start(*this, data); }
};

}  // namespace

TEST(ToolRunner, WithoutAViewNoToolIsValid) {
    AApplication application;
    ATool tool;
    TestTool eager;
    eager.start = [](TestTool&, void*) { return 1; };
    std::string error;
    EXPECT_EQ(tool.isValid(), 0);
    EXPECT_EQ(runTool(tool, nullptr, error), AToolOutcome::notValid);
    EXPECT_EQ(runTool(eager, nullptr, error), AToolOutcome::notValid);
}

TEST(ToolRunner, AToolThatIsNotValidIsNotStarted) {
    Drawing drawing;
    TestTool tool;
    tool.valid = 0;
    bool started = false;
    tool.start = [&](TestTool&, void*) { return started = true; };
    std::string error;
    EXPECT_EQ(runTool(tool, nullptr, error), AToolOutcome::notValid);
    EXPECT_FALSE(started);
}

TEST(ToolRunner, RecordsOneStepAndHandsOverTheItem) {
    Drawing drawing;
    AObject* object = drawing.add(drawing.layer(), _T("AOval"));
    AColorItem* red = drawing.document.getPaint().rgb(0xff0000);
    TestTool tool;
    void* received = nullptr;
    tool.start = [&](TestTool& self, void* data) {
        received = data;
        self.preChangeObject();
        drawing.select({object});
        self.postChangeObject(nullptr, TRANS_FLAG{}, REPEAT_FLAG{});
        self.redrawView(0, nullptr);
        self.notifyEnd(nullptr);
        return 1;
    };
    std::string error;
    const auto redraws = drawing.view().getRedrawCount();
    EXPECT_EQ(runTool(tool, red, error), AToolOutcome::done);
    EXPECT_EQ(received, red);
    EXPECT_EQ(drawing.view().getRedrawCount(), redraws + 1);
    EXPECT_TRUE(drawing.view().getHistory().undo());
    EXPECT_TRUE(drawing.selected().empty());
    EXPECT_FALSE(drawing.view().getHistory().undo());
}

TEST(ToolRunner, TellsWhenAToolRefusesOrDoesNotEnd) {
    Drawing drawing;
    TestTool tool;
    std::string error;
    tool.start = [](TestTool&, void*) { return 0; };
    EXPECT_EQ(runTool(tool, nullptr, error), AToolOutcome::refused);
    tool.start = [](TestTool& self, void*) {
        self.notifyEnd(nullptr);
        return 1;
    };
    EXPECT_EQ(runTool(tool, nullptr, error), AToolOutcome::done);
    tool.start = [](TestTool&, void*) { return 1; };
    EXPECT_EQ(runTool(tool, nullptr, error), AToolOutcome::notEnded);
}

TEST(ToolRunner, WhatRaisesLeavesTheViewAsItWas) {
    Drawing drawing;
    ALayer* layer = drawing.layer();
    AObject* a = drawing.add(layer, _T("AOval"));
    AObject* b = drawing.add(layer, _T("AOval"));
    drawing.select({a});
    TestTool tool;
    tool.start = [&](TestTool&, void*) -> int {
        drawing.select({b});
        throw std::bad_alloc();
    };
    std::string error;
    EXPECT_EQ(runTool(tool, nullptr, error), AToolOutcome::failed);
    EXPECT_EQ(error, "not enough memory");
    EXPECT_EQ(drawing.selected(), std::vector<AObject*>{a});
    EXPECT_FALSE(drawing.view().getHistory().undo());
    tool.start = [&](TestTool& self, void*) {
        drawing.select({b});
        self.notifyEnd(nullptr);
        return 1;
    };
    EXPECT_EQ(runTool(tool, nullptr, error), AToolOutcome::done);
    EXPECT_TRUE(drawing.view().getHistory().undo());
}

TEST(ToolRunner, WhateverIsRaisedEndsTheStep) {
    Drawing drawing;
    AObject* a = drawing.add(drawing.layer(), _T("AOval"));
    TestTool tool;
    tool.start = [&](TestTool& self, void*) -> int {
        self.preChangeObject();
        drawing.select({a});
        throw 7;
    };
    std::string error;
    EXPECT_EQ(runTool(tool, nullptr, error), AToolOutcome::failed);
    EXPECT_FALSE(error.empty());
    EXPECT_TRUE(drawing.selected().empty());
    tool.start = [&](TestTool& self, void*) {
        drawing.select({a});
        self.notifyEnd(nullptr);
        return 1;
    };
    EXPECT_EQ(runTool(tool, nullptr, error), AToolOutcome::done);
    EXPECT_EQ(error, "");
    EXPECT_TRUE(drawing.view().getHistory().undo()) << "history goes on";
}

TEST(ToolRunner, AToolThatLeavesItsChangeOpenLeavesNoStepOpen) {
    Drawing drawing;
    AObject* a = drawing.add(drawing.layer(), _T("AOval"));
    TestTool tool;
    tool.start = [&](TestTool& self, void*) {
        self.preChangeObject();
        drawing.select({a});
        self.notifyEnd(nullptr);
        return 1;
    };
    std::string error;
    EXPECT_EQ(runTool(tool, nullptr, error), AToolOutcome::done);
    EXPECT_TRUE(drawing.view().getHistory().undo());
    EXPECT_TRUE(drawing.selected().empty());
}
