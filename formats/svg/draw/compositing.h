// What an element's opacity, clip path, mask, filter and blend mode do to its picture: the content goes to an
// image of its own, where that is needed, and from there to the canvas.
//
//     Compositing compositing(context);
//     BoundingBox box(context, element);
//     if (!compositing.begin(element, box, nullptr, style.own.opacity)) return;   // nothing can be seen
//     paint(compositing.space());   // to the pixels of the element's own image
//     compositing.end();
#pragma once

#include <optional>
#include <vector>

#include "formats/svg/draw/context/bounding_box.h"
#include "formats/svg/draw/filter/filters.h"

namespace svg {

class Compositing {
public:
    explicit Compositing(DrawContext& context) : m_context(context) {}
    ~Compositing();
    Compositing(const Compositing&) = delete;
    Compositing& operator=(const Compositing&) = delete;

    // False: nothing can be seen, and there is no end. `reach`: the pixels that the content can reach, null
    // where they are not known. `opacity`: the element's, or 1 when the content is painted with it.
    bool begin(const DrawnElement& element, BoundingBox& box, const RECT* reach, double opacity);
    // The element's user space, to the pixels of what is drawn on inside.
    const UserSpace& space() const { return m_space; }
    // From the pixels outside to those inside.
    AAffine shift() const {
        const AAffine shift = AAffine::translation(-m_area.left, -m_area.top);
        return m_turn ? shift * m_turn->back : shift;
    }
    void end();

private:
    void findMask(std::string_view property);
    bool beginRecording(const DrawnElement& element, BoundingBox& box);
    bool beginImage(const DrawnElement& element, BoundingBox& box, const RECT* reach);
    void finishImage();
    void compose(const RECT& touched);
    void popClips();

    // A filter works along the axes of the element: its image is upright there, and turned when it is drawn.
    struct Turn {
        AAffine toPixels, back;
        UserSpace space;  // the element's, to the upright pixels
    };
    void findTurn(const UserSpace& space);

    DrawContext& m_context;
    UserSpace m_space;
    std::optional<Turn> m_turn;
    EBlend m_blend = EBlend::normal;
    AFRect m_box;                             // where mask, clip paths or filter need it
    RECT m_area{0, 0, 0, 0};                  // of the image on the canvas outside
    int m_clips = 0;                          // on the canvas outside; groups of a recorder
    std::vector<pugi::xml_node> m_clipPaths;  // those that the canvas cannot cut by itself
    pugi::xml_node m_mask;
    double m_opacity = 1;
    ElementFilter m_filter;
    bool m_filtered = false;
    AImage m_image;
    std::unique_ptr<ACanvas> m_canvas;
    DrawContext::HeldPixels m_held{m_context};  // of the image
    bool m_lent = false;                        // the image is the groups' and has to be given back
    std::optional<DrawContext::OnCanvas> m_on;
};

}  // namespace svg
