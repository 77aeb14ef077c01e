// AHistory: undo and redo of a view's selection and filter.
//
//     AHistory::Step step(view.getHistory());
//     tool.onToolStart();                      // may raise: the view is then what it was before
//     step.end();
//
// A step inside a step joins it; one that changed nothing is not recorded. The last hundred are kept.
//
// A filter of an unregistered class (view_filter.h) stays in the view as long as nobody replaces it; no step
// brings it back.
#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <vector>

class ADocView;
class AObject;
class AViewFilter;
class AViewFilterState;

class AHistory {
public:
    class Step;

    explicit AHistory(ADocView& view);
    ~AHistory();
    AHistory(const AHistory&) = delete;
    AHistory& operator=(const AHistory&) = delete;

    // A pair that brackets changes. Both raise bad_alloc, and then the step is as open as it was before.
    void begin();
    // Ends the innermost pair. True when that recorded a step; whatever could be redone is then forgotten.
    bool end();

    // Gives up the step that is being recorded, however deep: the view becomes again what it was before.
    // Needs no memory.
    void cancel() noexcept;

    // False when there is nothing to undo or redo, or a step is being recorded. Both raise bad_alloc, and
    // change nothing then.
    bool undo();
    bool redo();
    // Whether undo, or redo, would do something.
    bool canUndo() const { return m_depth == 0 && m_current > 0; }
    bool canRedo() const { return m_depth == 0 && m_current + 1 < m_states.size(); }

private:
    static constexpr std::size_t kMaxSteps = 100;

    struct State {
        std::shared_ptr<const std::vector<AObject*>> selection;
        unsigned long long revision = 0;  // the selection's, when it was this one
        // One of them is null, or both: no filter. The unregistered one belongs to the view, if it
        // is still there.
        std::shared_ptr<const AViewFilterState> filter;
        const AViewFilter* unregistered = nullptr;
    };
    // What it takes to bring a state back without any memory.
    struct WayBack {
        State state;
        std::vector<AObject*> selection;  // room for the selection
        std::unique_ptr<AViewFilter> filter;
    };

    State capture(const State* like) const;
    bool hasFilter(const State& state) const;
    WayBack wayBackTo(const State& state) const;
    void go(WayBack way) noexcept;
    bool step(int by);

    ADocView& m_view;
    std::vector<State> m_states;  // m_states[m_current] is the view as it is between steps
    std::size_t m_current = 0;
    int m_depth = 0;
    int m_floor = 0;                  // end() does not end pairs up to this depth: they are a Step's
    std::optional<WayBack> m_before;  // while a step is being recorded
};

// A pair that is given up unless it is ended. Pairs that are opened inside it and left open end with it; what
// ends more pairs than it opened does not end this one.
class AHistory::Step {
public:
    explicit Step(AHistory& history);
    ~Step();
    Step(const Step&) = delete;
    Step& operator=(const Step&) = delete;

    // As AHistory::end, once.
    bool end();

private:
    AHistory& m_history;
    int m_depth;  // before
    int m_floor;
    bool m_ended = false;
};
