#include "kzcore/view/history.h"

#include "kzcore/view/view.h"

AHistory::AHistory(ADocView& view) : m_view(view) {}

AHistory::~AHistory() = default;

// The view's state now. What equals `like` is shared with it, so that a step costs memory only for what it
// changed.
AHistory::State AHistory::capture(const State* like) const {
    State state;
    const std::vector<AObject*>& selected = m_view.m_selection->getObjects();
    if (like && *like->selection == selected)
        state.selection = like->selection;
    else
        state.selection = std::make_shared<const std::vector<AObject*>>(selected);
    if (like && sameViewFilter(like->filter.get(), m_view.m_viewFilter))
        state.filter = like->filter;
    else
        state.filter = copyViewFilter(m_view.m_viewFilter);
    return state;
}

void AHistory::begin() {
    if (m_depth == 0) {
        // What happened outside of steps belongs to none: it is the state that the step starts from.
        const State* last = m_states.empty() ? nullptr : &m_states[m_current];
        State before = capture(last);
        if (m_states.empty())
            m_states.push_back(std::move(before));
        else
            m_states[m_current] = std::move(before);
    }
    ++m_depth;
}

bool AHistory::end() {
    if (m_depth == 0 || --m_depth > 0) return false;
    const State& before = m_states[m_current];
    State after = capture(&before);
    if (after.selection == before.selection && after.filter == before.filter) return false;
    m_states.resize(m_current + 1);
    m_states.push_back(std::move(after));
    if (m_states.size() > kMaxSteps + 1)
        m_states.erase(m_states.begin());
    else
        ++m_current;
    return true;
}

void AHistory::apply(const State& state) {
    std::unique_ptr<AViewFilter> filter = copyViewFilter(state.filter.get());
    m_view.m_selection->restore(*state.selection);
    m_view.setViewFilter(filter.release());
    m_view.invalidate(nullptr);
}

void AHistory::cancel() {
    if (m_depth == 0) return;
    m_depth = 0;
    apply(m_states[m_current]);
}

bool AHistory::step(int by) {
    if (m_depth > 0) return false;
    const std::size_t target = m_current + static_cast<std::size_t>(by);  // -1 wraps below the first state
    if (target >= m_states.size()) return false;
    apply(m_states[target]);
    m_current = target;
    return true;
}

bool AHistory::undo() {
    return step(-1);
}

bool AHistory::redo() {
    return step(1);
}
