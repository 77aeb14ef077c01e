// ADisplayDrawing: draws a display list on canvases.
//
//     ADisplayDrawing drawing(list, shown, toPixels);
//     drawing.draw(canvas);
//
// One thread at a time; each makes its own. Objects below a quarter of a pixel are drawn as specks, which never
// vanish.
#pragma once

#include <functional>

#include "kzcore/display/shown_paint.h"

// What can be seen on an area of pixels, in drawing coordinates; empty where the transform has no inverse.
ABox boxOfPixels(const RECT& area, const AAffine& toPixels);

class ADisplayDrawing {
public:
    // They all outlive it. `toPixels`: from drawing coordinates to the canvas.
    ADisplayDrawing(const ADisplayList& list, const AShownPaint& shown, const AAffine& toPixels)
        : m_list(list), m_shown(shown), m_toPixels(toPixels) {}

    // What the canvas's clip can show. `stops`, asked now and then, breaks off when it says so: then false. Raises
    // bad_alloc.
    bool draw(ACanvas& canvas, const std::function<bool()>& stops = {});

    // One object by itself, in black or its gradients, cut by the clips around it, of it what is shown.
    void drawAlone(ACanvas& canvas, const std::vector<std::uint32_t>& entries);

private:
    // A group that is open on the canvas below, or on an image.
    struct Open {
        std::uint32_t group;
        bool clips = false;
        RECT area{0, 0, 0, 0};  // of the image on the canvas below
        AImage image;
        std::unique_ptr<ACanvas> canvas;  // of the image
        AAffine toPixels;                 // of what is around
        ACanvas* below = nullptr;
    };

    bool open(std::uint32_t group);
    void openImage(Open& open);
    void close();
    RECT areaOf(std::uint32_t group) const;
    bool enterGroups(std::uint32_t entry, std::uint32_t& skipTo);
    void drawEntry(std::uint32_t entry);
    bool drawSpeck(std::uint32_t entry, APaintVisibility visible);
    void drawItem(const ADisplayItem& item, const ADisplayPaint* paint);
    void drawPicture(const AObject* picture, std::uint32_t first, std::uint32_t end);
    void pushClip(std::uint32_t clip);

    const ADisplayList& m_list;
    const AShownPaint& m_shown;
    AAffine m_toPixels;  // of the open image
    ACanvas* m_canvas = nullptr;
    std::vector<Open> m_open;
    std::size_t m_pixels = 0;  // of the open images
    std::vector<std::uint32_t> m_found;
    std::size_t m_next = 0;  // in m_found
    APath m_path;            // scratch
    AGradient m_gradient;
};
