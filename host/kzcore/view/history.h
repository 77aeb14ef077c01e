// AHistory: undo and redo of a view's selection and filter.
//
// Every tool runs inside begin/end; a nested pair joins the outer step. A step that changed nothing is not
// recorded. The last hundred steps are kept.
#pragma once

#include <cstddef>
#include <memory>
#include <vector>

class ADocView;
class AObject;
class AViewFilter;

class AHistory {
public:
    explicit AHistory(ADocView& view);
    ~AHistory();
    AHistory(const AHistory&) = delete;
    AHistory& operator=(const AHistory&) = delete;

    void begin();
    // Ends the innermost pair. True when that recorded a step; whatever could be redone is then forgotten.
    bool end();

    // Gives up the step that is being recorded, however deep: the view becomes again what it was before.
    void cancel();

    // False when there is nothing to undo or redo, or a step is being recorded.
    bool undo();
    bool redo();

private:
    static constexpr std::size_t kMaxSteps = 100;

    using Selection = std::shared_ptr<const std::vector<AObject*>>;
    struct State {
        Selection selection;
        std::shared_ptr<const AViewFilter> filter;
    };

    State capture(const State* like) const;
    void apply(const State& state);
    bool step(int by);

    ADocView& m_view;
    std::vector<State> m_states;  // m_states[m_current] is the view as it is between steps
    std::size_t m_current = 0;
    int m_depth = 0;
};
