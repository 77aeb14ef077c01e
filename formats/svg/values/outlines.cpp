#include "formats/svg/values/outlines.h"

namespace svg {

namespace {

// How far the control points of a quarter of a circle lie from its ends.
constexpr double kQuarterReach = 0.5522847498307936;

}  // namespace

void appendEllipse(AFPoint center, double rx, double ry, APath& path) {
    if (!(rx > 0 && ry > 0)) return;
    const auto [cx, cy] = center;
    const double kx = rx * kQuarterReach;
    const double ky = ry * kQuarterReach;
    path.moveTo({cx + rx, cy});
    path.curveTo({cx + rx, cy + ky}, {cx + kx, cy + ry}, {cx, cy + ry});
    path.curveTo({cx - kx, cy + ry}, {cx - rx, cy + ky}, {cx - rx, cy});
    path.curveTo({cx - rx, cy - ky}, {cx - kx, cy - ry}, {cx, cy - ry});
    path.curveTo({cx + kx, cy - ry}, {cx + rx, cy - ky}, {cx + rx, cy});
    path.close();
}

void appendRectangle(const AFRect& box, const CornerRadii& radii, APath& path) {
    const auto [left, top, right, bottom] = box;
    const auto isRound = [](AFPoint radius) { return radius.x > 0 && radius.y > 0; };
    // How far a control point lies from the corner.
    const auto rest = [](double radius) { return radius * (1 - kQuarterReach); };
    const auto [upperLeft, upperRight, lowerRight, lowerLeft] = radii;
    path.moveTo({isRound(upperLeft) ? left + upperLeft.x : left, top});
    if (isRound(upperRight)) {
        path.lineTo({right - upperRight.x, top});
        path.curveTo({right - rest(upperRight.x), top}, {right, top + rest(upperRight.y)},
                     {right, top + upperRight.y});
    } else {
        path.lineTo({right, top});
    }
    if (isRound(lowerRight)) {
        path.lineTo({right, bottom - lowerRight.y});
        path.curveTo({right, bottom - rest(lowerRight.y)}, {right - rest(lowerRight.x), bottom},
                     {right - lowerRight.x, bottom});
    } else {
        path.lineTo({right, bottom});
    }
    if (isRound(lowerLeft)) {
        path.lineTo({left + lowerLeft.x, bottom});
        path.curveTo({left + rest(lowerLeft.x), bottom}, {left, bottom - rest(lowerLeft.y)},
                     {left, bottom - lowerLeft.y});
    } else {
        path.lineTo({left, bottom});
    }
    if (isRound(upperLeft)) {
        path.lineTo({left, top + upperLeft.y});
        path.curveTo({left, top + rest(upperLeft.y)}, {left + rest(upperLeft.x), top},
                     {left + upperLeft.x, top});
    }
    path.close();
}

}  // namespace svg
