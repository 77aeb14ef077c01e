// What of a drawing lies at a place on the screen.
//
//     AHits hits(list, shown, toPixels);
//     const AObject* top = hits.topAt({x, y}, 3);             // null where nothing is
//     std::vector<const AObject*> all = hits.allAt({x, y}, 3);  // topmost first
//
// An object is where its own picture is: fill rule, pen, dashes and clips count, opacity does not. Places are
// pixels. One thread at a time.
#pragma once

#include "kzcore/display/display_drawing.h"

class AHits {
public:
    // They outlive it. With an AShownPaint of everything, what a filter hides is found, too.
    AHits(const ADisplayList& list, const AShownPaint& shown, const AAffine& toPixels)
        : m_list(list), m_shown(shown), m_toPixels(toPixels) {}

    // `tolerance`: how far from the pixel an object may be, in pixels; at most 16.
    const AObject* topAt(AFPoint pixel, double tolerance);
    std::vector<const AObject*> allAt(AFPoint pixel, double tolerance);

    // In drawing order. The extent of an object's geometry lies within the rectangle.
    std::vector<const AObject*> inside(const AFRect& pixels);
    // Something of the object's picture lies within it.
    std::vector<const AObject*> touching(const AFRect& pixels);

private:
    template <class Use>
    void forEachAt(AFPoint pixel, double tolerance, Use use);
    template <class Use>
    void forEachObject(const ABox& area, Use use);
    // Draws the object on the pixels of the area, enlarged by `scale`.
    void draw(const std::vector<std::uint32_t>& entries, const AFRect& area, double scale);

    const ADisplayList& m_list;
    const AShownPaint& m_shown;
    AAffine m_toPixels;
    std::vector<std::uint32_t> m_found;
    AImage m_image;  // that a hit is drawn on
};
