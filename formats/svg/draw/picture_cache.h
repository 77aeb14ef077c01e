// The pictures of data URIs, decoded and reduced once for all the uses of a drawing.
//
//     CachedPicture* picture = cachedPicture(context, uri);
//     if (!picture) return;                                    // nothing to show
//     const AImage* pixels = picture->pixels(context, picture->reductionFor(toPixels));
#pragma once

#include <memory>
#include <string_view>

#include "canvas/image.h"
#include "formats/svg/draw/context/context.h"
#include "formats/svg/draw/inner_drawing.h"

namespace svg {

class CachedPicture {
public:
    CachedPicture(DrawContext& context, std::string_view uri);

    // In its own pixels; 0 when there is nothing to show.
    AFPoint size() const { return m_size; }
    // Null for an image.
    InnerDrawing* drawing() const { return m_drawing.get(); }

    // How many pixels, in both directions, become one before the image is drawn. A power of two; 1 where it would
    // not save much.
    static int reductionFor(const AAffine& toPixels);
    // The image so much reduced. Null when the picture's budget does not allow to decode it. Valid until the next
    // picture is asked for.
    const AImage* pixels(DrawContext& context, int reduction);

    std::string_view uri() const { return m_uri; }
    std::size_t bytes() const;

private:
    bool decode(DrawContext& context);

    std::string_view m_uri;
    AFPoint m_size;
    AImage m_whole;  // empty when it is not kept
    AImage m_reduced;
    int m_reduction = 0;  // of m_reduced
    std::unique_ptr<InnerDrawing> m_drawing;
};

// A data URI is found by its address: attributes stay where they are as long as the tree. Null when there is nothing
// to show, or the picture's budget does not allow to decode it.
CachedPicture* cachedPicture(DrawContext& context, std::string_view uri);

}  // namespace svg
