#include <algorithm>
#include <cmath>

#include "formats/svg/draw/filter/filter_pixels.h"
#include "formats/svg/draw/filter/pixel_values.h"

namespace svg {

namespace {

using Table = std::array<std::uint8_t, 256>;

double srgbOf(double linear) {
    return linear <= 0.0031308 ? linear * 12.92 : 1.055 * std::pow(linear, 1 / 2.4) - 0.055;
}

Table tableOf(double (*convert)(double)) {
    Table table{};
    for (std::size_t i = 0; i < table.size(); ++i)
        table[i] = static_cast<std::uint8_t>(componentOf(convert(static_cast<double>(i) / 255)));
    return table;
}

void convert(AImage& image, const Table& table) {
    for (std::uint32_t& pixel : image.pixels()) {
        const unsigned alpha = alphaOfPixel(pixel);
        if ((pixel & 0xffffff) == 0) continue;  // black and transparent stay as they are
        if (alpha == 255) {
            pixel = pixelOf(table[redOf(pixel)], table[greenOf(pixel)], table[blueOf(pixel)], 255);
        } else if (alpha != 0) {
            pixel =
                multipliedPixel(table[divided(redOf(pixel), alpha)], table[divided(greenOf(pixel), alpha)],
                                table[divided(blueOf(pixel), alpha)], alpha);
        }
    }
}

}  // namespace

double linearOf(double srgb) {
    return srgb <= 0.04045 ? srgb / 12.92 : std::pow((srgb + 0.055) / 1.055, 2.4);
}

void convertToLinear(AImage& image) {
    static const Table table = tableOf(linearOf);
    convert(image, table);
}

void convertToSrgb(AImage& image) {
    static const Table table = tableOf(srgbOf);
    convert(image, table);
}

AImage alphaOf(const AImage& image) {
    AImage result = image;
    for (std::uint32_t& pixel : result.pixels()) pixel &= 0xff000000;
    return result;
}

AImage applyColorMatrix(const AImage& image, const ColorMatrix& matrix) {
    AImage result = image;
    std::array<float, 20> m;
    std::transform(matrix.begin(), matrix.end(), m.begin(), [](double value) {
        return static_cast<float>(std::clamp(std::isfinite(value) ? value : 0, -1e6, 1e6));
    });
    for (std::uint32_t& pixel : result.pixels()) {
        const unsigned alpha = alphaOfPixel(pixel);
        const float scale = alpha != 0 ? 1 / static_cast<float>(alpha) : 0;
        const std::array<float, 4> from{
            static_cast<float>(redOf(pixel)) * scale, static_cast<float>(greenOf(pixel)) * scale,
            static_cast<float>(blueOf(pixel)) * scale, static_cast<float>(alpha) / 255};
        std::array<unsigned, 4> to;
        for (std::size_t i = 0; i < 4; ++i) {
            const float* row = &m[i * 5];
            to[i] = componentOf(static_cast<double>(row[0] * from[0] + row[1] * from[1] + row[2] * from[2] +
                                                    row[3] * from[3] + row[4]));
        }
        pixel = multipliedPixel(to[0], to[1], to[2], to[3]);
    }
    return result;
}

AImage applyTransfer(const AImage& image, const TransferTables& tables) {
    AImage result = image;
    for (std::uint32_t& pixel : result.pixels()) {
        const unsigned alpha = alphaOfPixel(pixel);
        const auto plain = [&](unsigned component) { return alpha != 0 ? divided(component, alpha) : 0u; };
        pixel = multipliedPixel(tables[0][plain(redOf(pixel))], tables[1][plain(greenOf(pixel))],
                                tables[2][plain(blueOf(pixel))], tables[3][alpha]);
    }
    return result;
}

}  // namespace svg
