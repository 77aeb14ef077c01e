// Entities that a drawing declares for itself: <!DOCTYPE svg [ <!ENTITY ns_svg "http://…"> ]>.
//
// The XML library leaves references to them as they stand, so they are replaced in the text before it is
// parsed. Only internal entities; nothing outside the file is ever opened. Line ends inside a value become
// spaces, so that lines keep their numbers.
#pragma once

#include <string>

namespace svg {

struct EntityError {
    std::size_t offset = 0;
    std::string reason;
};

// False when the entities refer to themselves or grow beyond every use ("a billion laughs").
bool expandEntities(std::string& text, EntityError& error);

}  // namespace svg
