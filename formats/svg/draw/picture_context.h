// The context of one picture: what its parts share, with the walk that draws whatever they refer to.
#pragma once

#include "formats/svg/draw/context/context.h"

namespace svg {

class PictureContext final : public DrawContext {
public:
    using DrawContext::DrawContext;

    void paintChildren(pugi::xml_node parent, const Style& style, const UserSpace& space) override;
    AFRect boundsOf(const DrawnElement& element) override;
};

}  // namespace svg
