// Entities that a drawing declares for itself: <!DOCTYPE svg [ <!ENTITY ns_svg "http://…"> ]>.
//
// The XML library leaves references to them as they stand, so they are replaced in the text before it is
// parsed. Only internal entities; nothing outside the file is ever opened. Line ends inside a value become
// spaces, so that lines keep their numbers.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace svg {

struct EntityError {
    std::size_t offset = 0;
    std::string reason;
};

// A reference that was replaced, so that it can be written back.
struct EntityUse {
    std::size_t offset = 0;  // of what stands for it, in the text with the references replaced
    std::size_t length = 0;
    std::string name;
};

// False when the entities refer to themselves or grow beyond every use ("a billion laughs"). `uses`: the
// references of the document itself, in their order.
bool expandEntities(std::string& text, EntityError& error, std::vector<EntityUse>& uses);

}  // namespace svg
