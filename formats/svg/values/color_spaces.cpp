#include "formats/svg/values/color_spaces.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "formats/svg/values/text_scan.h"

namespace svg {

namespace {

using Matrix = std::array<double, 9>;

constexpr ColorValues3 operator*(const Matrix& m, const ColorValues3& v) {
    return {m[0] * v[0] + m[1] * v[1] + m[2] * v[2], m[3] * v[0] + m[4] * v[1] + m[5] * v[2],
            m[6] * v[0] + m[7] * v[1] + m[8] * v[2]};
}

constexpr Matrix inverse(const Matrix& m) {
    const double det = m[0] * (m[4] * m[8] - m[5] * m[7]) - m[1] * (m[3] * m[8] - m[5] * m[6]) +
                       m[2] * (m[3] * m[7] - m[4] * m[6]);
    return {(m[4] * m[8] - m[5] * m[7]) / det, (m[2] * m[7] - m[1] * m[8]) / det,
            (m[1] * m[5] - m[2] * m[4]) / det, (m[5] * m[6] - m[3] * m[8]) / det,
            (m[0] * m[8] - m[2] * m[6]) / det, (m[2] * m[3] - m[0] * m[5]) / det,
            (m[3] * m[7] - m[4] * m[6]) / det, (m[1] * m[6] - m[0] * m[7]) / det,
            (m[0] * m[4] - m[1] * m[3]) / det};
}

// From the linear components of a space to XYZ, from its primaries and white (chromaticities x, y).
constexpr Matrix fromPrimaries(const std::array<double, 8>& xy) {
    Matrix m{};
    for (std::size_t i = 0; i < 3; ++i) {
        m[i] = xy[2 * i] / xy[2 * i + 1];
        m[3 + i] = 1;
        m[6 + i] = (1 - xy[2 * i] - xy[2 * i + 1]) / xy[2 * i + 1];
    }
    const ColorValues3 white{xy[6] / xy[7], 1, (1 - xy[6] - xy[7]) / xy[7]};
    const ColorValues3 scale = inverse(m) * white;
    for (std::size_t i = 0; i < 9; ++i) m[i] *= scale[i % 3];
    return m;
}

constexpr double kX65 = 0.3127, kY65 = 0.3290, kX50 = 0.3457, kY50 = 0.3585;
constexpr Matrix kSrgb = fromPrimaries({0.64, 0.33, 0.30, 0.60, 0.15, 0.06, kX65, kY65});
constexpr Matrix kP3 = fromPrimaries({0.680, 0.320, 0.265, 0.690, 0.150, 0.060, kX65, kY65});
constexpr Matrix kA98 = fromPrimaries({0.64, 0.33, 0.21, 0.71, 0.15, 0.06, kX65, kY65});
constexpr Matrix kRec2020 = fromPrimaries({0.708, 0.292, 0.170, 0.797, 0.131, 0.046, kX65, kY65});
constexpr Matrix kProphoto =
    fromPrimaries({0.734699, 0.265301, 0.159597, 0.840403, 0.036598, 0.000105, kX50, kY50});

constexpr ColorValues3 kWhite65{kX65 / kY65, 1, (1 - kX65 - kY65) / kY65};
constexpr ColorValues3 kWhite50{kX50 / kY50, 1, (1 - kX50 - kY50) / kY50};

// From one white to another as the eye adapts (Bradford).
constexpr Matrix adaptation(const ColorValues3& from, const ColorValues3& to) {
    constexpr Matrix kCone{0.8951, 0.2664, -0.1614, -0.7502, 1.7135, 0.0367, 0.0389, -0.0685, 1.0296};
    const ColorValues3 a = kCone * from;
    const ColorValues3 b = kCone * to;
    Matrix scaled = kCone;
    for (std::size_t i = 0; i < 9; ++i) scaled[i] *= b[i / 3] / a[i / 3];
    const Matrix back = inverse(kCone);
    Matrix result{};
    for (std::size_t i = 0; i < 9; ++i) {
        for (std::size_t k = 0; k < 3; ++k) result[i] += back[i / 3 * 3 + k] * scaled[k * 3 + i % 3];
    }
    return result;
}
constexpr Matrix kTo65 = adaptation(kWhite50, kWhite65);
constexpr Matrix kTo50 = adaptation(kWhite65, kWhite50);

constexpr Matrix kLms{0.8190224379967030, 0.3619062600528904, -0.1288737815209879,
                      0.0329836539323885, 0.9292868615863434, 0.0361446663506424,
                      0.0481771893596242, 0.2642395317527308, 0.6335478284694309};
constexpr Matrix kOklab{0.2104542683093140, 0.7936177747023054,  -0.0040720430116193,
                        1.9779985324311684, -2.4285922420485799, 0.4505937096174110,
                        0.0259040424655478, 0.7827717124575296,  -0.8086757549230774};

ColorValues3 each(ColorValues3 values, double (*map)(double)) {
    for (double& one : values) one = std::copysign(map(std::fabs(one)), one);
    return values;
}
double srgbToLinear(double v) {
    return v <= 0.04045 ? v / 12.92 : std::pow((v + 0.055) / 1.055, 2.4);
}
double linearToSrgb(double v) {
    return v <= 0.0031308 ? v * 12.92 : 1.055 * std::pow(v, 1 / 2.4) - 0.055;
}
double power(double v, double exponent) {
    return std::pow(v, exponent);
}

double hslPart(double hue, double saturation, double lightness, double n) {
    const double k = std::fmod(n + hue / 30, 12);
    const double amount = saturation * std::min(lightness, 1 - lightness);
    return lightness - amount * std::max(-1.0, std::min({k - 3, 9 - k, 1.0}));
}

double turned(double hue) {
    hue = std::fmod(hue, 360);
    return hue < 0 ? hue + 360 : hue;
}

ColorValues3 hslToSrgb(const ColorValues3& v) {
    const double hue = turned(v[0]);
    const double saturation = std::clamp(v[1], 0.0, 1.0);
    const double lightness = std::clamp(v[2], 0.0, 1.0);
    return {hslPart(hue, saturation, lightness, 0), hslPart(hue, saturation, lightness, 8),
            hslPart(hue, saturation, lightness, 4)};
}

ColorValues3 srgbToHsl(const ColorValues3& v) {
    const auto [least, most] = std::minmax({v[0], v[1], v[2]});
    const double range = most - least;
    const double lightness = (least + most) / 2;
    if (range == 0) return {0, 0, lightness};
    const double sector = most == v[0]   ? (v[1] - v[2]) / range
                          : most == v[1] ? (v[2] - v[0]) / range + 2
                                         : (v[0] - v[1]) / range + 4;
    return {turned(sector * 60), range / (1 - std::fabs(2 * lightness - 1)), lightness};
}

ColorValues3 hwbToSrgb(const ColorValues3& v) {
    const double white = std::max(v[1], 0.0);
    const double black = std::max(v[2], 0.0);
    if (white + black >= 1)
        return {white / (white + black), white / (white + black), white / (white + black)};
    ColorValues3 pure = hslToSrgb({v[0], 1, 0.5});
    for (double& one : pure) one = one * (1 - white - black) + white;
    return pure;
}

ColorValues3 labToXyz50(const ColorValues3& v) {
    constexpr double kCube = 216.0 / 24389;
    constexpr double kSlope = 24389.0 / 27;
    const double y = (v[0] + 16) / 116;
    const auto back = [](double f) { return f * f * f > kCube ? f * f * f : (116 * f - 16) / kSlope; };
    return {back(y + v[1] / 500) * kWhite50[0], v[0] > 8 ? y * y * y : v[0] / kSlope,
            back(y - v[2] / 200) * kWhite50[2]};
}

ColorValues3 xyz50ToLab(const ColorValues3& v) {
    constexpr double kCube = 216.0 / 24389;
    constexpr double kSlope = 24389.0 / 27;
    const auto f = [](double t) { return t > kCube ? std::cbrt(t) : (kSlope * t + 16) / 116; };
    const double x = f(v[0] / kWhite50[0]), y = f(v[1]), z = f(v[2] / kWhite50[2]);
    return {116 * y - 16, 500 * (x - y), 200 * (y - z)};
}

ColorValues3 fromPolar(const ColorValues3& v) {
    const double angle = v[2] * std::numbers::pi / 180;
    return {v[0], v[1] * std::cos(angle), v[1] * std::sin(angle)};
}
ColorValues3 toPolar(const ColorValues3& v) {
    return {v[0], std::hypot(v[1], v[2]), turned(std::atan2(v[2], v[1]) * 180 / std::numbers::pi)};
}

ColorValues3 toXyz65(ColorSpace space, const ColorValues3& v) {
    switch (space) {
        case ColorSpace::srgbLinear:
            return kSrgb * v;
        case ColorSpace::displayP3:
            return kP3 * each(v, srgbToLinear);
        case ColorSpace::a98:
            return kA98 * each(v, [](double one) { return power(one, 563.0 / 256); });
        case ColorSpace::prophoto:
            return kTo65 * (kProphoto * each(v, [](double one) {
                                return one < 16.0 / 512 ? one / 16 : power(one, 1.8);
                            }));
        case ColorSpace::rec2020:
            return kRec2020 * each(v, [](double one) {
                       constexpr double kAlpha = 1.09929682680944;
                       return one < 0.08124285829863151 ? one / 4.5
                                                        : power((one + kAlpha - 1) / kAlpha, 1 / 0.45);
                   });
        case ColorSpace::xyz50:
            return kTo65 * v;
        case ColorSpace::lab:
            return kTo65 * labToXyz50(v);
        case ColorSpace::lch:
            return kTo65 * labToXyz50(fromPolar(v));
        case ColorSpace::oklab:
            return inverse(kLms) * each(inverse(kOklab) * v, [](double one) { return one * one * one; });
        case ColorSpace::oklch:
            return toXyz65(ColorSpace::oklab, fromPolar(v));
        default:
            return v;
    }
}

}  // namespace

std::optional<ColorSpace> colorSpaceNamed(std::string_view name) {
    struct Name {
        std::string_view word;
        ColorSpace space;
    };
    constexpr Name kNames[] = {{"srgb", ColorSpace::srgb},
                               {"srgb-linear", ColorSpace::srgbLinear},
                               {"display-p3", ColorSpace::displayP3},
                               {"a98-rgb", ColorSpace::a98},
                               {"prophoto-rgb", ColorSpace::prophoto},
                               {"rec2020", ColorSpace::rec2020},
                               {"xyz", ColorSpace::xyz65},
                               {"xyz-d65", ColorSpace::xyz65},
                               {"xyz-d50", ColorSpace::xyz50},
                               {"lab", ColorSpace::lab},
                               {"lch", ColorSpace::lch},
                               {"oklab", ColorSpace::oklab},
                               {"oklch", ColorSpace::oklch},
                               {"hsl", ColorSpace::hsl},
                               {"hwb", ColorSpace::hwb}};
    for (const Name& one : kNames) {
        if (equalsNoCase(name, one.word)) return one.space;
    }
    return std::nullopt;
}

int hueOf(ColorSpace space) {
    if (space == ColorSpace::hsl || space == ColorSpace::hwb) return 0;
    return space == ColorSpace::lch || space == ColorSpace::oklch ? 2 : -1;
}

ColorValues3 toSrgb(ColorSpace space, const ColorValues3& v) {
    if (space == ColorSpace::srgb) return v;
    if (space == ColorSpace::hsl) return hslToSrgb(v);
    if (space == ColorSpace::hwb) return hwbToSrgb(v);
    return each(inverse(kSrgb) * toXyz65(space, v), linearToSrgb);
}

// To those that colours are mixed in; the others stay as they are in sRGB.
ColorValues3 fromSrgb(ColorSpace space, const ColorValues3& srgb) {
    if (space == ColorSpace::hsl) return srgbToHsl(srgb);
    if (space == ColorSpace::hwb) {
        const auto [least, most] = std::minmax({srgb[0], srgb[1], srgb[2]});
        return {srgbToHsl(srgb)[0], least, 1 - most};
    }
    const ColorValues3 linear = each(srgb, srgbToLinear);
    const ColorValues3 xyz = kSrgb * linear;
    switch (space) {
        case ColorSpace::srgbLinear:
            return linear;
        case ColorSpace::displayP3:
            return each(inverse(kP3) * xyz, linearToSrgb);
        case ColorSpace::xyz65:
            return xyz;
        case ColorSpace::xyz50:
            return kTo50 * xyz;
        case ColorSpace::lab:
            return xyz50ToLab(kTo50 * xyz);
        case ColorSpace::lch:
            return toPolar(xyz50ToLab(kTo50 * xyz));
        case ColorSpace::oklab:
            return kOklab * each(kLms * xyz, [](double one) { return std::cbrt(one); });
        case ColorSpace::oklch:
            return toPolar(fromSrgb(ColorSpace::oklab, srgb));
        default:
            return srgb;
    }
}

}  // namespace svg
