// What a canvas has of cairo: a context on its pixels, and the clips in force.
//
// One context serves a canvas for its whole life. It always has the identity matrix: outlines are transformed
// on the way in, and only a stroke's pen takes the matrix for a moment. An error makes a cairo context useless
// for good, so what cairo would refuse is sorted out before, and should it refuse something all the same, the
// context is made anew with its clips.
#pragma once

#include <optional>

#include "canvas/cairo/pen.h"
#include "canvas/cairo/source.h"
#include "canvas/cairo/types.h"

struct ACanvas::Library {
public:
    explicit Library(const APixels& pixels);
    ~Library() { flush(); }
    Library(const Library&) = delete;
    Library& operator=(const Library&) = delete;

    cairo_t* cairo() { return m_cairo.get(); }
    void flush() { cairo_surface_flush(m_surface.get()); }

    // Takes the path's points to pixels, for the traces below, and tells where they lie. Nothing when a point
    // cannot be drawn, or there is none.
    std::optional<AFRect> place(const APath& path, const AAffine& toPixels);
    // Whether something in the box, or so many pixels beside it, can show.
    bool isVisible(const AFRect& box, double margin) const;

    // The outline of the path that has just been placed, for a fill or a clip.
    void traceArea(const APath& path, const AAffine& toPixels, const AFRect& box);
    // The same for a stroke; the box is within kFar.
    void traceLine(const APath& path, const APen& pen);

    // The source outlives the settling.
    void setSource(const ASource& source);
    // Behind everything that was drawn since the last place(): gives back what is the caller's, and starts anew after
    // an error. Raises bad_alloc when memory has run out meanwhile: something is missing then.
    void settle();

    void pushClip(const APath& path, const AAffine& toPixels, EFillRule rule);
    void popClip();
    // The whole pixels that drawing can reach.
    RECT bounds() const;

private:
    struct Clip {
        APath path;
        AAffine toPixels;
        EFillRule rule;
        RECT bounds;
    };

    void start();
    void traceCut(const APath& path, const AAffine& toPixels);
    // Figure by figure, without those that lie farther from what can be seen. With a transform, those that reach too
    // far are cut.
    void traceSeen(const APath& path, double margin, bool flattens, const AAffine* toPixels);
    void applyClip(const Clip& clip);
    RECT clipExtents() const;

    APixels m_pixels;
    ACairoSurface m_surface;
    ACairo m_cairo;
    std::vector<Clip> m_clips;
    std::vector<AFPoint> m_points;  // scratch
    bool m_borrows = false;         // the source reads the caller's pixels
};

// Whether all of the box is at most so far from 0, 0.
inline bool isWithin(const AFRect& box, double limit) {
    return box.left >= -limit && box.top >= -limit && box.right <= limit && box.bottom <= limit;
}
