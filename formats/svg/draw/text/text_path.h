// A path as the base line of a text.
#pragma once

#include <optional>

#include "formats/svg/draw/context/context.h"

namespace svg {

class TextPath {
public:
    // Of a textPath element; its path is made of straight pieces, as fine as letters of this size need.
    TextPath(DrawContext& context, pugi::xml_node textPath, const UserSpace& space, double fontSize);

    double length() const { return m_length; }
    // Where the text starts along the path: startOffset.
    double start() const { return m_start; }
    // From a letter whose base line has its middle at 0, 0 to a place along the path; none beyond its ends.
    std::optional<AAffine> place(double along) const;

private:
    void addLine(AFPoint to);
    void addCurve(const APath::Segment& curve, double fontSize);

    struct Piece {
        AFPoint from, to;
        double start;  // along the path
    };
    std::vector<Piece> m_pieces;
    double m_length = 0;
    double m_start = 0;
    AFPoint m_at;
};

}  // namespace svg
