#include "kzcore/view/history.h"

#include <utility>

#include "kzcore/view/view.h"

AHistory::AHistory(ADocView& view) : m_view(view) {}

AHistory::~AHistory() = default;

bool AHistory::hasFilter(const State& state) const {
    const AViewFilter* filter = m_view.m_viewFilter;
    return state.filter ? filter && state.filter->isStateOf(*filter) : state.unregistered == filter;
}

// The view's state now. What equals `like` is shared with it, so that a step costs memory only for
// what it changed.
AHistory::State AHistory::capture(const State* like) const {
    State state;
    const ASelection& selection = *m_view.m_selection;
    state.revision = selection.getRevision();
    if (like && (like->revision == state.revision || *like->selection == selection.getObjects()))
        state.selection = like->selection;
    else
        state.selection = std::make_shared<const std::vector<AObject*>>(selection.getObjects());
    if (like && hasFilter(*like)) {
        state.filter = like->filter;
        state.unregistered = like->unregistered;
    } else {
        state.filter = keepViewFilter(m_view.m_viewFilter);
        if (!state.filter) state.unregistered = m_view.m_viewFilter;
    }
    return state;
}

AHistory::WayBack AHistory::wayBackTo(const State& state) const {
    WayBack way{state, {}, state.filter ? state.filter->make() : nullptr};
    way.selection.reserve(state.selection->size());
    return way;
}

void AHistory::go(WayBack way) noexcept {
    way.selection.assign(way.state.selection->begin(), way.state.selection->end());
    m_view.m_selection->restore(std::move(way.selection));
    AViewFilter* const filter = m_view.m_viewFilter;
    const bool stays = way.state.filter ? filter && way.state.filter->restore(*filter)
                                        : filter && filter == way.state.unregistered;
    if (!stays) m_view.setViewFilter(way.filter.release());
    m_view.invalidate(nullptr);
}

void AHistory::begin() {
    if (m_depth == 0) {
        // What happened outside of steps belongs to none: it is the state that the step starts from.
        State before = capture(m_states.empty() ? nullptr : &m_states[m_current]);
        m_before = wayBackTo(before);
        if (m_states.empty())
            m_states.push_back(std::move(before));
        else
            m_states[m_current] = std::move(before);
    }
    ++m_depth;
}

bool AHistory::end() {
    if (m_depth <= m_floor) return false;
    if (m_depth > 1) {
        --m_depth;
        return false;
    }
    const State& before = m_states[m_current];
    State after = capture(&before);
    const bool changed = after.selection != before.selection || after.filter != before.filter ||
                         after.unregistered != before.unregistered;
    if (changed) {
        m_states.reserve(m_current + 2);
        m_states.resize(m_current + 1);
        m_states.push_back(std::move(after));
        if (m_states.size() > kMaxSteps + 1)
            m_states.erase(m_states.begin());
        else
            ++m_current;
    }
    m_depth = 0;
    m_before.reset();
    return changed;
}

void AHistory::cancel() noexcept {
    if (m_depth == 0) return;
    m_depth = 0;
    go(std::move(*m_before));
    m_before.reset();
}

bool AHistory::step(int by) {
    if (m_depth > 0) return false;
    const std::size_t target = m_current + static_cast<std::size_t>(by);  // -1 wraps below the first state
    if (target >= m_states.size()) return false;
    go(wayBackTo(m_states[target]));
    m_states[target].revision = m_view.m_selection->getRevision();
    m_current = target;
    return true;
}

bool AHistory::undo() {
    return step(-1);
}

bool AHistory::redo() {
    return step(1);
}

AHistory::Step::Step(AHistory& history)
    : m_history(history), m_depth(history.m_depth), m_floor(history.m_floor) {
    history.begin();
    history.m_floor = history.m_depth;
}

AHistory::Step::~Step() {
    if (m_ended) return;
    m_history.m_floor = m_floor;
    m_history.cancel();
}

bool AHistory::Step::end() {
    if (m_history.m_depth == 0) return false;  // a step inside it was given up, and so was all of it
    m_history.m_depth = m_depth + 1;
    m_history.m_floor = m_floor;
    const bool recorded = m_history.end();
    m_ended = true;
    return recorded;
}
