// AOutlineCoverage: how much of each pixel an outline covers, as the drawing library sees it.
//
//     coverage.fill(path, toPixels, EFillRule::nonZero, area, [&](int x, int y, auto covered) {
//         // `covered`: of the pixels from (x, y) on to the right, each from 0 to 255
//     });
//
// The area's pixels are told in pieces of rows, each once; what is not told is not covered. Edges are
// antialiased, and exact where they lie on pixel edges.
#pragma once

#include <functional>
#include <memory>
#include <span>

#include "canvas/canvas.h"

class AOutlineCoverage {
public:
    using Told = std::function<void(int x, int y, std::span<const std::uint8_t> covered)>;

    AOutlineCoverage();
    ~AOutlineCoverage();

    // Both raise bad_alloc. What is not finite covers nothing.
    void fill(const APath& path, const AAffine& toPixels, EFillRule rule, const RECT& area, const Told& told);
    // Not the dashes. The path reaches no farther than some ten thousand pixels from the area; the transform
    // has an inverse.
    void stroke(const APath& path, const AAffine& toPixels, const AStrokeStyle& pen, const RECT& area,
                const Told& told);

private:
    struct Library;
    std::unique_ptr<Library> m_library;
};
