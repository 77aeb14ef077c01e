// The context of one picture: what its parts share, with the walk that draws whatever they refer to.
#pragma once

#include "formats/svg/draw/context/context.h"

namespace svg {

class PictureContext final : public DrawContext {
public:
    using DrawContext::DrawContext;

    void paintChildren(pugi::xml_node parent, const Style& style, const UserSpace& space) override;
    AFRect boundsOf(const DrawnElement& element) override;
    void paintElement(pugi::xml_node element, const Style& style, const UserSpace& space) override;
    void paintUri(std::string_view uri, const AFRect& viewport, std::string_view aspect,
                  const UserSpace& space, bool smooth) override;

private:
    int m_boxes = 0;  // whose extents are being looked for, one inside the other
};

}  // namespace svg
