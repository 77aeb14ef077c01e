// Pictures of a drawing as its view shows it.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "kzcore/view/view.h"
#include "kzutil/rect.h"

namespace app {

struct PictureSize {
    int width = 0;  // 0: as large as the page was made, 96 to the inch, rounded
    int height =
        0;  // 0: as the page's proportions ask for, rounded; the drawing is then as wide as the picture
};

constexpr int kLongestPictureSide = 32767;

// Reads WIDTHxHEIGHT or WIDTH. Raises Failure.
PictureSize readPictureSize(const std::string& text);

// Reads X,Y,WIDTH,HEIGHT in user units. Raises Failure.
AFRect readPictureArea(const std::string& text);

// Reads none or a colour as style sheets write it, into a pixel as in AImage. Raises Failure.
std::uint32_t readGround(const std::string& text);

struct PictureOptions {
    PictureSize size;
    std::optional<AFRect> part = std::nullopt;  // of the drawing; else the page
    std::uint32_t ground = 0xffffffff;          // what the drawing stands on, a pixel as in AImage
};

// What a picture shows unless a part is given: the page, or what the objects cover where that has no extent, in user
// units. Raises Failure when there is neither.
AFRect shownArea(ADocument& document);

// The bytes of a PNG file: the page, or the part of the drawing that is given, fitted into the picture and centred;
// where the page has no extent, what the objects cover. Raises Failure, and bad_alloc.
std::string drawPng(const ADocView& view, const PictureOptions& options);

}  // namespace app
