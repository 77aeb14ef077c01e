#include <gtest/gtest.h>

#include <new>

#include "support/drawing.h"
#include "support/failing_new.h"

using test::Drawing;
using Objects = std::vector<AObject*>;

namespace {

// Of a class that nobody registers.
struct UnknownFilter : AViewFilter {
    UnknownFilter() { ++alive; }
    ~UnknownFilter() override { --alive; }
    static inline int alive = 0;
};

// A filter with one number, copied and compared by value.
struct NumberFilter : AViewFilter {
    explicit NumberFilter(int n) : number(n) {}
    int number;
};

struct Registered {
    Registered() {
        registerViewFilter(typeid(NumberFilter),
                           {[](const AViewFilter& filter) -> AViewFilter* {
                                return new NumberFilter(static_cast<const NumberFilter&>(filter).number);
                            },
                            [](const AViewFilter& a, const AViewFilter& b) {
                                return static_cast<const NumberFilter&>(a).number ==
                                       static_cast<const NumberFilter&>(b).number;
                            }});
    }
    ~Registered() { unregisterViewFilter(typeid(NumberFilter)); }
    Registered(const Registered&) = delete;
    Registered& operator=(const Registered&) = delete;
};

int numberOf(const ADocView& view) {
    const auto* filter = dynamic_cast<const NumberFilter*>(view.m_viewFilter);
    return filter ? filter->number : -1;
}

}  // namespace

TEST(History, UndoAndRedoBringSelectionsBackInTheirOrder) {
    Drawing drawing;
    ALayer* layer = drawing.layer();
    AObject* a = drawing.add(layer, _T("AOval"));
    AObject* b = drawing.add(layer, _T("AOval"));
    AHistory& history = drawing.view().getHistory();
    drawing.select({b, a});
    history.begin();
    drawing.select({a});
    EXPECT_TRUE(history.end());
    history.begin();
    drawing.select({});
    EXPECT_TRUE(history.end());
    EXPECT_TRUE(history.undo());
    EXPECT_EQ(drawing.selected(), Objects{a});
    EXPECT_TRUE(history.undo());
    EXPECT_EQ(drawing.selected(), (Objects{b, a}));
    EXPECT_TRUE(drawing.selection().contains(b));
    EXPECT_FALSE(history.undo());
    EXPECT_TRUE(history.redo());
    EXPECT_TRUE(history.redo());
    EXPECT_FALSE(history.redo());
    EXPECT_TRUE(drawing.selected().empty());
}

TEST(History, AStepThatChangesNothingIsNotRecorded) {
    Drawing drawing;
    AObject* a = drawing.add(drawing.layer(), _T("AOval"));
    drawing.select({a});
    AHistory& history = drawing.view().getHistory();
    history.begin();
    drawing.select({});
    drawing.select({a});
    EXPECT_FALSE(history.end());
    EXPECT_FALSE(history.undo());
}

TEST(History, ANestedStepJoinsTheOuterOne) {
    Drawing drawing;
    ALayer* layer = drawing.layer();
    AObject* a = drawing.add(layer, _T("AOval"));
    AObject* b = drawing.add(layer, _T("AOval"));
    AHistory& history = drawing.view().getHistory();
    history.begin();
    drawing.select({a});
    history.begin();
    drawing.select({b});
    EXPECT_FALSE(history.end());
    EXPECT_FALSE(history.undo()) << "a step is being recorded";
    EXPECT_TRUE(history.end());
    EXPECT_FALSE(history.end());
    EXPECT_TRUE(history.undo());
    EXPECT_TRUE(drawing.selected().empty());
    EXPECT_FALSE(history.undo());
}

TEST(History, ANewStepForgetsWhatCouldBeRedone) {
    Drawing drawing;
    ALayer* layer = drawing.layer();
    AObject* a = drawing.add(layer, _T("AOval"));
    AObject* b = drawing.add(layer, _T("AOval"));
    AHistory& history = drawing.view().getHistory();
    history.begin();
    drawing.select({a});
    history.end();
    history.undo();
    history.begin();
    drawing.select({b});
    history.end();
    EXPECT_FALSE(history.redo());
    EXPECT_TRUE(history.undo());
    EXPECT_TRUE(drawing.selected().empty());
}

TEST(History, CancelPutsTheViewBack) {
    const Registered registered;
    Drawing drawing;
    AObject* a = drawing.add(drawing.layer(), _T("AOval"));
    drawing.view().setViewFilter(new NumberFilter(1));
    AHistory& history = drawing.view().getHistory();
    history.begin();
    history.begin();
    drawing.select({a});
    static_cast<NumberFilter*>(drawing.view().m_viewFilter)->number = 2;
    history.cancel();
    EXPECT_TRUE(drawing.selected().empty());
    EXPECT_EQ(numberOf(drawing.view()), 1);
    EXPECT_FALSE(history.undo());
}

TEST(History, FiltersChangedInPlaceComeBackAsTheyWere) {
    const Registered registered;
    Drawing drawing;
    AHistory& history = drawing.view().getHistory();
    history.begin();
    drawing.view().setViewFilter(new NumberFilter(1));
    EXPECT_TRUE(history.end());
    history.begin();
    static_cast<NumberFilter*>(drawing.view().m_viewFilter)->number = 2;
    EXPECT_TRUE(history.end());
    history.begin();
    static_cast<NumberFilter*>(drawing.view().m_viewFilter)->number = 2;
    EXPECT_FALSE(history.end());
    EXPECT_TRUE(history.undo());
    EXPECT_EQ(numberOf(drawing.view()), 1);
    EXPECT_TRUE(history.undo());
    EXPECT_EQ(drawing.view().m_viewFilter, nullptr);
    EXPECT_TRUE(history.redo());
    EXPECT_TRUE(history.redo());
    EXPECT_EQ(numberOf(drawing.view()), 2);
}

TEST(History, AStepBringsSelectionAndFilterBackTogether) {
    const Registered registered;
    Drawing drawing;
    ALayer* layer = drawing.layer();
    AObject* a = drawing.add(layer, _T("AOval"));
    AObject* b = drawing.add(layer, _T("AOval"));
    AHistory& history = drawing.view().getHistory();
    drawing.select({a, b});
    drawing.view().setViewFilter(new NumberFilter(1));
    history.begin();
    drawing.select({b});
    drawing.view().setViewFilter(new NumberFilter(2));
    EXPECT_TRUE(history.end());
    EXPECT_TRUE(history.undo());
    EXPECT_EQ(drawing.selected(), (Objects{a, b}));
    EXPECT_EQ(numberOf(drawing.view()), 1);
    EXPECT_TRUE(history.redo());
    EXPECT_EQ(drawing.selected(), Objects{b});
    EXPECT_EQ(numberOf(drawing.view()), 2);
}

TEST(History, ANewFilterForgetsTheFilterThatCouldBeRedone) {
    const Registered registered;
    Drawing drawing;
    AHistory& history = drawing.view().getHistory();
    history.begin();
    drawing.view().setViewFilter(new NumberFilter(1));
    EXPECT_TRUE(history.end());
    EXPECT_TRUE(history.undo());
    EXPECT_EQ(drawing.view().m_viewFilter, nullptr);
    history.begin();
    drawing.view().setViewFilter(new NumberFilter(2));
    EXPECT_TRUE(history.end());
    EXPECT_FALSE(history.redo());
    EXPECT_TRUE(history.undo());
    EXPECT_EQ(drawing.view().m_viewFilter, nullptr);
}

TEST(History, WhatIsChangedAfterAnUndoDoesNotReachTheStepsThatAreKept) {
    const Registered registered;
    Drawing drawing;
    AHistory& history = drawing.view().getHistory();
    history.begin();
    drawing.view().setViewFilter(new NumberFilter(1));
    EXPECT_TRUE(history.end());
    history.begin();
    drawing.view().setViewFilter(nullptr);
    EXPECT_TRUE(history.end());
    EXPECT_TRUE(history.undo());
    static_cast<NumberFilter*>(drawing.view().m_viewFilter)->number = 7;  // outside of every step
    EXPECT_TRUE(history.redo());
    EXPECT_TRUE(history.undo());
    EXPECT_EQ(numberOf(drawing.view()), 1);
}

TEST(History, UndoAndRedoAskForTheViewToBeDrawn) {
    Drawing drawing;
    AObject* a = drawing.add(drawing.layer(), _T("AOval"));
    AHistory& history = drawing.view().getHistory();
    history.begin();
    drawing.select({a});
    EXPECT_TRUE(history.end());
    const auto before = drawing.view().getRedrawCount();
    EXPECT_TRUE(history.undo());
    EXPECT_EQ(drawing.view().getRedrawCount(), before + 1);
    EXPECT_TRUE(history.redo());
    EXPECT_EQ(drawing.view().getRedrawCount(), before + 2);
}

TEST(History, KeepsTheLastHundredSteps) {
    Drawing drawing;
    ALayer* layer = drawing.layer();
    AHistory& history = drawing.view().getHistory();
    Objects objects;
    for (int i = 0; i < 150; ++i) {
        objects.push_back(drawing.add(layer, _T("AOval")));
        history.begin();
        drawing.select({objects.back()});
        ASSERT_TRUE(history.end());
    }
    int undone = 0;
    while (history.undo()) ++undone;
    EXPECT_EQ(undone, 100);
    EXPECT_EQ(drawing.selected(), Objects{objects[49]});
}

TEST(History, AFilterOfAnUnknownClassSurvivesStepsThatDoNotConcernIt) {
    Drawing drawing;
    AObject* a = drawing.add(drawing.layer(), _T("AOval"));
    auto* unknown = new UnknownFilter;
    drawing.view().setViewFilter(unknown);
    AHistory& history = drawing.view().getHistory();
    history.begin();
    drawing.select({a});
    EXPECT_TRUE(history.end());
    EXPECT_TRUE(history.undo());
    EXPECT_EQ(drawing.view().m_viewFilter, unknown);
    EXPECT_TRUE(history.redo());
    EXPECT_EQ(drawing.view().m_viewFilter, unknown);
    history.begin();
    drawing.select({});
    history.cancel();
    EXPECT_EQ(drawing.selected(), Objects{a});
    EXPECT_EQ(drawing.view().m_viewFilter, unknown);
    EXPECT_EQ(UnknownFilter::alive, 1);
}

TEST(History, AFilterOfAnUnknownClassIsUndoneButNotBroughtBack) {
    const Registered registered;
    Drawing drawing;
    AHistory& history = drawing.view().getHistory();
    history.begin();
    drawing.view().setViewFilter(new UnknownFilter);
    EXPECT_TRUE(history.end());
    history.begin();
    drawing.view().setViewFilter(new NumberFilter(1));
    EXPECT_TRUE(history.end());
    EXPECT_EQ(UnknownFilter::alive, 0);
    EXPECT_TRUE(history.undo());
    EXPECT_EQ(drawing.view().m_viewFilter, nullptr) << "there is nothing to make it from";
    EXPECT_TRUE(history.redo());
    EXPECT_EQ(numberOf(drawing.view()), 1);
    EXPECT_TRUE(history.undo());
    EXPECT_TRUE(history.undo());
    EXPECT_EQ(drawing.view().m_viewFilter, nullptr);
}

TEST(History, CancelNeedsNoMemory) {
    const Registered registered;
    Drawing drawing;
    ALayer* layer = drawing.layer();
    AObject* a = drawing.add(layer, _T("AOval"));
    AObject* b = drawing.add(layer, _T("AOval"));
    drawing.select({a, b});
    drawing.view().setViewFilter(new NumberFilter(1));
    AHistory& history = drawing.view().getHistory();
    history.begin();
    drawing.select({b});
    drawing.view().setViewFilter(nullptr);
    bool happened = false;
    {
        const AllocationFailure failing = failAllocation(1);
        history.cancel();
        happened = failing.happened();
    }
    EXPECT_FALSE(happened);
    EXPECT_EQ(drawing.selected(), (Objects{a, b}));
    EXPECT_EQ(numberOf(drawing.view()), 1);
}

// Whichever allocation fails: the step is as open, or as closed, as before, and the view can be put back.
TEST(History, AStepThatCannotBeRecordedCanStillBeGivenUp) {
    const Registered registered;
    for (int n = 1;; ++n) {
        Drawing drawing;
        ALayer* layer = drawing.layer();
        AObject* a = drawing.add(layer, _T("AOval"));
        AObject* b = drawing.add(layer, _T("AOval"));
        drawing.select({a});
        drawing.view().setViewFilter(new NumberFilter(1));
        AHistory& history = drawing.view().getHistory();
        bool happened = false;
        bool begun = false;
        bool ended = false;
        {
            const AllocationFailure failing = failAllocation(n);
            try {
                history.begin();
                begun = true;
                static_cast<NumberFilter*>(drawing.view().m_viewFilter)->number = 2;
                drawing.selection().restore({});
                ended = history.end();
            } catch (const std::bad_alloc&) {
            }
            happened = failing.happened();
        }
        EXPECT_EQ(ended, !happened) << n;
        history.cancel();
        const bool put = begun && !ended;
        EXPECT_EQ(numberOf(drawing.view()), ended ? 2 : 1) << n << (put ? ": put back" : "");
        EXPECT_EQ(drawing.selected(), ended ? Objects{} : Objects{a}) << n;
        drawing.select({b});
        EXPECT_EQ(history.undo(), ended) << n;
        if (!happened) break;
    }
}

TEST(History, AStepEndsWhatIsLeftOpenInsideItAndOutlivesWhatEndsTooMuch) {
    Drawing drawing;
    ALayer* layer = drawing.layer();
    AObject* a = drawing.add(layer, _T("AOval"));
    AObject* b = drawing.add(layer, _T("AOval"));
    AHistory& history = drawing.view().getHistory();
    {
        AHistory::Step step(history);
        history.begin();
        drawing.select({a});
        EXPECT_TRUE(step.end());
    }
    EXPECT_TRUE(history.undo()) << "nothing is being recorded any more";
    {
        AHistory::Step step(history);
        drawing.select({a});
        EXPECT_FALSE(history.end());
        drawing.select({b});
        EXPECT_TRUE(step.end());
    }
    EXPECT_TRUE(history.undo());
    EXPECT_TRUE(drawing.selected().empty()) << "one step, not two";
    {
        const AHistory::Step givenUp(history);
        history.begin();
        drawing.select({b});
    }
    EXPECT_TRUE(drawing.selected().empty());
    EXPECT_TRUE(history.redo()) << "what was given up takes no redo away";
}

TEST(ViewFilter, TheViewOwnsItsFilterAndTheBaseShowsEverything) {
    struct Tracked : AViewFilter {
        explicit Tracked(int& count) : alive(count) { ++alive; }
        ~Tracked() override { --alive; }
        int& alive;
    };
    int alive = 0;
    {
        Drawing drawing;
        auto* filter = new Tracked(alive);
        drawing.view().setViewFilter(filter);
        drawing.view().setViewFilter(filter);
        EXPECT_EQ(alive, 1);
        EXPECT_EQ(drawing.view().m_viewFilter->isVisible(nullptr), 1);
        drawing.view().setViewFilter(new Tracked(alive));
        EXPECT_EQ(alive, 1);
    }
    EXPECT_EQ(alive, 0);
}
