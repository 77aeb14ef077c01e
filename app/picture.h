// Pictures of a drawing as its view shows it.
#pragma once

#include <string>

#include "kzcore/view/view.h"

namespace app {

struct PictureSize {
    int width = 0;   // 0: as large as the page was made, 96 to the inch, rounded
    int height = 0;  // 0: as the page's proportions ask for
};

constexpr int kLongestPictureSide = 32767;

// Reads WIDTHxHEIGHT or WIDTH. Raises Failure.
PictureSize readPictureSize(const std::string& text);

// The bytes of a PNG file: the page, fitted into the picture and centred, on white; where the page has no
// extent, what the objects cover. Raises Failure, and bad_alloc.
std::string drawPng(const ADocView& view, PictureSize size);

}  // namespace app
