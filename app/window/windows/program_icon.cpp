// The program's icon, as on the page: shapes on blue, one of them ticked.
#include "app/window/windows/screen.h"
#include "canvas/canvas.h"
#include "formats/svg/values/path_data.h"

namespace app::window {

namespace {

struct Shape {
    const char* outline;  // on a square of 32
    COLORREF color;
};
constexpr Shape kShapes[] = {
    {"M7 0H25a7 7 0 0 1 7 7V25a7 7 0 0 1-7 7H7a7 7 0 0 1-7-7V7a7 7 0 0 1 7-7z", RGB(0x1f, 0x5f, 0xbf)},
    {"M6 6h9v9H6z", RGB(255, 255, 255)},
    {"M21.5 6a4.5 4.5 0 1 1 0 9 4.5 4.5 0 0 1 0-9z", RGB(0xff, 0xd1, 0x66)},
    {"M6 26l5-8 5 8z", RGB(0xef, 0x7f, 0x6b)},
};
constexpr char kTick[] = "M18.5 22l2.5 2.7 5-6";

AImage drawIcon(int side) {
    AImage image(side, side);
    ACanvas canvas(pixelsOf(image));
    const AAffine toPixels = AAffine::scaling(side / 32.0);
    for (const Shape& shape : kShapes) {
        APath outline;
        svg::appendPath(shape.outline, outline);
        canvas.fill(outline, toPixels, {AColor(shape.color)}, EFillRule::nonZero);
    }
    APath tick;
    svg::appendPath(kTick, tick);
    AStrokeStyle pen;
    pen.width = 2.6;
    pen.cap = ELineCap::round;
    pen.join = ELineJoin::round;
    canvas.stroke(tick, toPixels, {AColor(RGB(255, 255, 255))}, pen);
    canvas.flush();
    return image;
}

}  // namespace

// The colour bitmap's own transparency counts; the mask only has to be there.
HICON makeProgramIcon(int side) {
    const AImage image = drawIcon(side);
    ICONINFO icon = {};
    icon.fIcon = TRUE;
    icon.hbmColor = CreateBitmap(side, side, 1, 32, image.pixels().data());
    icon.hbmMask = CreateBitmap(side, side, 1, 1, nullptr);
    const HICON made = CreateIconIndirect(&icon);
    ::DeleteObject(icon.hbmColor);
    ::DeleteObject(icon.hbmMask);
    return made;
}

}  // namespace app::window
