// An SVG drawing that another one shows as a picture.
#pragma once

#include <memory>
#include <string>

#include "formats/svg/draw/picture_context.h"

namespace svg {

class InnerDrawing {
public:
    // Null for what is no drawing.
    static std::unique_ptr<InnerDrawing> read(std::string bytes);

    // In pixels, 96 to the inch; that of the view box where the drawing says no other.
    AFPoint size() const { return m_size; }
    // About how much memory it takes.
    std::size_t bytes() const { return 8 * m_text.size(); }
    // Draws it on a canvas of its own, from the budgets of the picture around. `toPixels`: from its pixels to those of
    // the canvas. False when the budgets do not allow it.
    bool draw(DrawContext& around, ACanvas& canvas, const AAffine& toPixels);

private:
    explicit InnerDrawing(std::string text) : m_text(std::move(text)) {}

    std::string m_text;
    UserSpace m_root;
    Page m_page;
    AFPoint m_size;
    std::unique_ptr<PictureContext> m_context;  // made when it is drawn first
};

}  // namespace svg
