// Pointing: what a click or a rubber band selects.
//
// A click takes what is topmost, a further one on the same place what lies below it. A rubber band takes what lies
// within; one that was drawn to the left, also what reaches in. What is added to a selection and is in it already
// leaves instead, when it is but one object.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "app/session.h"

namespace app::window {

using Names = std::vector<std::string>;

class Pointing {
public:
    explicit Pointing(Session& session) : m_session(session) {}

    // Places in user units, also how far a click may miss. The new selection; nothing: it stays as it is.
    std::optional<Names> click(AFPoint point, double reach, bool adds);
    std::optional<Names> band(AFPoint from, AFPoint to, bool adds);

private:
    std::optional<Names> selection(Names names) const;
    Names added(const Names& names) const;

    Session& m_session;
    // The click before, for those that follow on the same place.
    unsigned m_drawing = 0;
    AFPoint m_point;
    Names m_names;
    std::size_t m_taken = 0;
};

}  // namespace app::window
