#include "app/window/pointing.h"

#include <algorithm>
#include <cmath>
#include <unordered_set>

#include "app/place_report.h"

namespace app::window {

std::optional<Names> Pointing::click(AFPoint point, double reach, bool adds) {
    Names at = reportAt(m_session, point, reach)["at"].get<Names>();
    const bool isSame = m_drawing == m_session.openCount() && at == m_names &&
                        std::hypot(point.x - m_point.x, point.y - m_point.y) < reach;
    m_taken = isSame && !adds && !at.empty() ? (m_taken + 1) % at.size() : 0;
    m_drawing = m_session.openCount();
    m_point = point;
    m_names = at;
    if (at.empty()) return adds ? std::nullopt : selection({});
    return selection(adds ? added({at[0]}) : Names{at[m_taken]});
}

std::optional<Names> Pointing::band(AFPoint from, AFPoint to, bool adds) {
    const AFRect area{std::min(from.x, to.x), std::min(from.y, to.y), std::max(from.x, to.x),
                      std::max(from.y, to.y)};
    if (area.IsRectEmpty()) return std::nullopt;
    const Names names = to.x < from.x ? reportTouching(m_session, area)["touching"].get<Names>()
                                      : reportInside(m_session, area)["inside"].get<Names>();
    return selection(adds ? added(names) : names);
}

std::optional<Names> Pointing::selection(Names names) const {
    if (names.empty() && m_session.view().m_selection->getCount() == 0) return std::nullopt;
    return names;
}

Names Pointing::added(const Names& names) const {
    Names all;
    for (const AObject* object : m_session.view().m_selection->getObjects())
        all.emplace_back(object->getNameUtf8());
    std::unordered_set<std::string> selected(all.begin(), all.end());
    if (names.size() == 1 && selected.contains(names[0])) {
        std::erase(all, names[0]);
        return all;
    }
    for (const std::string& name : names) {
        if (selected.insert(name).second) all.push_back(name);
    }
    return all;
}

}  // namespace app::window
