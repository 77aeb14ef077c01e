// Pictures of a display list in squares, drawn side by side by several threads.
//
// A square's picture depends on nothing but the list, what is shown, the transform and the square, so it is the same
// whoever draws it, in whichever order.
#pragma once

#include <functional>

#include "kzcore/display/shown_paint.h"

constexpr std::uint32_t kWhiteGround = 0xffffffff;

// The square (x, y), in squares, of a picture that starts at 0, 0, on white. `stops`, asked now and then, breaks off
// when it says so: then empty. Raises bad_alloc.
AImage drawTile(const ADisplayList& list, const AShownPaint& shown, const AAffine& toPixels, int side, int x,
                int y, const std::function<bool()>& stops = {});

// A whole picture made of such squares, on a ground of this pixel (see AImage), 0 for none, by so many threads; 0: as
// many as there are cores. Where the format draws most of it by itself, one square is the whole picture. Raises
// bad_alloc.
AImage drawTiled(const ADisplayList& list, const AShownPaint& shown, const AAffine& toPixels, int width,
                 int height, int side, unsigned threads = 0, std::uint32_t ground = kWhiteGround);
