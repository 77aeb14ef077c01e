// The tools when memory runs out: the told outcomes, nothing leaked, and a filter that is whole.
#include <new>

#include "support/failing_new.h"
#include "tools.h"

using namespace test;

namespace {

struct ToolsWithoutMemory : ToolTest {
    enum class Outcome { done, refused, raised };

    // Starts the tool on red with the nth allocation failing; false when it got through with fewer.
    bool startFailing(const std::string& name, int n, Outcome& outcome) {
        const auto tool = make(name);
        const unsigned long long redraws = drawing.view().getRedrawCount();
        AColorItem* red = color("red");
        bool happened = false;
        {
            const AllocationFailure failing = failAllocation(n);
            try {
                outcome = start(*tool, red) ? Outcome::done : Outcome::refused;
            } catch (const std::bad_alloc&) {
                outcome = Outcome::raised;
            }
            happened = failing.happened();
        }
        const bool done = outcome == Outcome::done;
        EXPECT_EQ(tool->hasEnded(), done) << name << ", allocation " << n;
        EXPECT_EQ(drawing.view().getRedrawCount(), redraws + done) << name << ", allocation " << n;
        EXPECT_EQ(done, !happened) << name << ", allocation " << n;
        return happened;
    }
};

}  // namespace

TEST_F(ToolsWithoutMemory, LeaveTheViewWholeWhicheverAllocationFails) {
    const auto states = toldStates();
    for (const std::string name : kTools) {
        const bool mayRefuse = name == "AShowAllExceptTool" || name == "AShowThisTool";
        for (std::size_t state = 0; state < states.size(); ++state) {
            const bool makesFilter = kStates[state] == State::none || kStates[state] == State::foreign;
            for (int n = 1;; ++n) {
                set(kStates[state]);
                drawing.select({object});
                Outcome outcome = Outcome::done;
                if (!startFailing(name, n, outcome)) break;
                const std::string where =
                    name + " from " + states[state] + ", allocation " + std::to_string(n);
                EXPECT_EQ(outcome == Outcome::refused, mayRefuse && makesFilter && n == 1) << where;
                EXPECT_EQ(drawing.selection().getCount(), 1) << where;
                const std::string left = told(drawing.view().m_viewFilter);
                if (left != states[state]) {
                    const std::string uniform = name == "AShowAllExceptTool" ? "all shown" : "none shown";
                    EXPECT_TRUE(name.ends_with("ExceptTool") && !makesFilter) << where << ": " << left;
                    EXPECT_EQ(left, uniform) << where << ": the half of it that cannot fail is done";
                }
            }
        }
    }
}

TEST_F(ToolsWithoutMemory, HoldNoReferenceOnTheChosenColour) {
    AColorItem* red = color("red");
    const int document = red->getReferenceCount();
    for (const char* name : kTools) {
        for (int n = 1;; ++n) {
            set(State::none);
            Outcome outcome = Outcome::done;
            const bool failed = startFailing(name, n, outcome);
            if (!failed) break;
            EXPECT_EQ(drawing.view().m_viewFilter, nullptr) << name;
            EXPECT_EQ(red->getReferenceCount(), document) << name << ", allocation " << n;
        }
    }
}

TEST_F(ToolsWithoutMemory, TwoToolsReturnZeroWithoutRedrawOrEndWhenThereIsNoneForAFilter) {
    for (const char* name : {"AShowAllExceptTool", "AShowThisTool"}) {
        for (const State state : {State::none, State::foreign}) {
            set(state);
            Outcome outcome = Outcome::done;
            EXPECT_TRUE(startFailing(name, 1, outcome));
            EXPECT_EQ(outcome, Outcome::refused) << name;
        }
    }
}

TEST_F(ToolsWithoutMemory, TheHidingToolsLetTheFailureReachTheHost) {
    for (const char* name : {"AHideThisTool", "AHideAllExceptTool"}) {
        set(State::none);
        Outcome outcome = Outcome::done;
        EXPECT_TRUE(startFailing(name, 1, outcome));
        EXPECT_EQ(outcome, Outcome::raised) << name;
    }
}
