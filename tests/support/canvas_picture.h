// Pictures of canvases and images as rows of letters: r, g, b, w, k (black), . (transparent), ? (all else).
//
//     Picture picture(4, 2);
//     picture.canvas.fill(box, AAffine(), APaint{AColor(RGB(255, 0, 0))}, EFillRule::nonZero);
//     EXPECT_EQ(picture.rows(), "rr..\n"
//                               "....\n");
#pragma once

#include <string>

#include "canvas/canvas.h"

namespace test {

inline std::string rowsOf(const AImage& image) {
    std::string rows;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            switch (image.at(x, y)) {
                case 0xffff0000:
                    rows += 'r';
                    break;
                case 0xff00ff00:
                    rows += 'g';
                    break;
                case 0xff0000ff:
                    rows += 'b';
                    break;
                case 0xffffffff:
                    rows += 'w';
                    break;
                case 0xff000000:
                    rows += 'k';
                    break;
                case 0:
                    rows += '.';
                    break;
                default:
                    rows += '?';
            }
        }
        rows += '\n';
    }
    return rows;
}

// An image of rows of those letters.
inline AImage imageOf(const std::string& rows) {
    const auto width = static_cast<int>(rows.find('\n'));
    AImage image(width, static_cast<int>(rows.size()) / (width + 1));
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < width; ++x) {
            const char letter = rows[static_cast<std::size_t>(y * (width + 1) + x)];
            image.at(x, y) = letter == 'r'   ? 0xffff0000
                             : letter == 'g' ? 0xff00ff00
                             : letter == 'b' ? 0xff0000ff
                             : letter == 'w' ? 0xffffffff
                             : letter == 'k' ? 0xff000000
                                             : 0;
        }
    }
    return image;
}

// A canvas on an image of its own, transparent at first.
struct Picture {
    Picture(int width, int height) : image(width, height), canvas(pixelsOf(image)) {}

    std::string rows() {
        canvas.flush();
        return rowsOf(image);
    }
    std::uint32_t at(int x, int y) {
        canvas.flush();
        return image.at(x, y);
    }

    AImage image;
    ACanvas canvas;
};

inline int redOf(std::uint32_t pixel) {
    return static_cast<int>(pixel >> 16 & 0xff);
}
inline int greenOf(std::uint32_t pixel) {
    return static_cast<int>(pixel >> 8 & 0xff);
}
inline int blueOf(std::uint32_t pixel) {
    return static_cast<int>(pixel & 0xff);
}
inline int alphaOf(std::uint32_t pixel) {
    return static_cast<int>(pixel >> 24);
}

}  // namespace test
