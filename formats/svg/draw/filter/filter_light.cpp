#include "formats/svg/draw/filter/filter_light.h"

#include <algorithm>
#include <cmath>

#include "formats/svg/draw/filter/pixel_values.h"

namespace svg {

namespace {

Vector3 unit(const Vector3& v) {
    const double length = std::sqrt(v.x * v.x + v.y * v.y + v.z * v.z);
    if (!(length > 0) || !std::isfinite(length)) return {0, 0, 1};
    return {v.x / length, v.y / length, v.z / length};
}

double dot(const Vector3& a, const Vector3& b) {
    return a.x * b.x + a.y * b.y + a.z * b.z;
}

Vector3 difference(const Vector3& a, const Vector3& b) {
    return {a.x - b.x, a.y - b.y, a.z - b.z};
}

// How far the height changes from the pixel before to the one behind. At the edges one of them is missing,
// and the pixel itself stands for it.
Vector3 normalAt(const AImage& image, int x, int y, double scale) {
    const auto height = [&](int atX, int atY) {
        return static_cast<double>(alphaOfPixel(image.at(atX, atY)));
    };
    const int left = std::max(x - 1, 0);
    const int right = std::min(x + 1, image.width() - 1);
    const int top = std::max(y - 1, 0);
    const int bottom = std::min(y + 1, image.height() - 1);
    // The row or column of the pixel counts twice.
    const double weightX = 2 + (top != y) + (bottom != y);
    const double weightY = 2 + (left != x) + (right != x);
    double across = 2 * (height(right, y) - height(left, y));
    double down = 2 * (height(x, bottom) - height(x, top));
    if (top != y) across += height(right, top) - height(left, top);
    if (bottom != y) across += height(right, bottom) - height(left, bottom);
    if (left != x) down += height(left, bottom) - height(left, top);
    if (right != x) down += height(right, bottom) - height(right, top);
    const double spanX = std::max(1, right - left);
    const double spanY = std::max(1, bottom - top);
    return unit({-scale * across / (weightX * spanX * 255), -scale * down / (weightY * spanY * 255), 1});
}

// The part of a spot's light that goes in a direction.
double spotPart(const Light& light, const Vector3& toLight) {
    const Vector3 axis = unit(difference(light.target, light.at));
    const double cosine = -dot(toLight, axis);
    if (cosine <= 0 || cosine < light.coneCosine) return 0;
    return std::pow(cosine, light.focus);
}

}  // namespace

AImage lightImage(const AImage& image, const Light& light) {
    AImage result(image.width(), image.height());
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const Vector3 normal = normalAt(image, x, y, light.surfaceScale);
            Vector3 toLight = light.toLight;
            double part = light.strength;
            if (light.kind != Light::Kind::distant) {
                const double z = light.surfaceScale * alphaOfPixel(image.at(x, y)) / 255;
                toLight = unit(difference(light.at, {x + 0.5, y + 0.5, z}));
                if (light.kind == Light::Kind::spot) part *= spotPart(light, toLight);
            }
            if (light.specular) {
                // The eye looks straight down.
                const Vector3 half = unit({toLight.x, toLight.y, toLight.z + 1});
                part *= std::pow(std::max(dot(normal, half), 0.0), light.shininess);
            } else {
                part *= std::max(dot(normal, toLight), 0.0);
            }
            const unsigned red = componentOf(light.color[0] * part);
            const unsigned green = componentOf(light.color[1] * part);
            const unsigned blue = componentOf(light.color[2] * part);
            result.at(x, y) = pixelOf(red, green, blue, light.specular ? std::max({red, green, blue}) : 255);
        }
    }
    return result;
}

}  // namespace svg
