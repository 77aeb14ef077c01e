// A blur is three averages over a box, one behind the other, which no eye tells from a Gaussian curve; small
// ones, where it could, are the curve itself. Columns are blurred as the rows of the transposed image.
#include <algorithm>
#include <cmath>

#include "formats/svg/draw/filter/filter_pixels.h"
#include "formats/svg/draw/filter/pixel_values.h"

namespace svg {

namespace {

constexpr double kLeastBoxes = 2;  // smaller deviations use the curve
constexpr double kNoBlur = 0.05;   // nothing that pixels could show
constexpr double kLargest = 1 << 16;

struct Sums {
    std::uint32_t alpha = 0, red = 0, green = 0, blue = 0;

    void add(std::uint32_t pixel) {
        alpha += alphaOfPixel(pixel);
        red += redOf(pixel);
        green += greenOf(pixel);
        blue += blueOf(pixel);
    }
    void remove(std::uint32_t pixel) {
        alpha -= alphaOfPixel(pixel);
        red -= redOf(pixel);
        green -= greenOf(pixel);
        blue -= blueOf(pixel);
    }
};

// The average of the pixels from `before` in front of each to `after` behind it.
void averageLine(const std::vector<std::uint32_t>& from, std::vector<std::uint32_t>& to, int before,
                 int after) {
    const int count = static_cast<int>(from.size());
    const std::uint64_t share = (std::uint64_t{1} << 32) / static_cast<unsigned>(before + after + 1);
    const auto average = [&](std::uint32_t sum) {
        return static_cast<std::uint32_t>((sum * share + (std::uint64_t{1} << 31)) >> 32);
    };
    Sums sums;
    for (int i = 0; i < std::min(after, count); ++i) sums.add(from[static_cast<std::size_t>(i)]);
    for (int i = 0; i < count; ++i) {
        if (i + after < count) sums.add(from[static_cast<std::size_t>(i + after)]);
        if (i - before - 1 >= 0) sums.remove(from[static_cast<std::size_t>(i - before - 1)]);
        to[static_cast<std::size_t>(i)] =
            pixelOf(average(sums.red), average(sums.green), average(sums.blue), average(sums.alpha));
    }
}

class LineBlur {
public:
    LineBlur(double deviation, int length) : m_room(static_cast<std::size_t>(length)), m_line(m_room) {
        deviation = std::min(deviation, kLargest);
        if (deviation >= kLeastBoxes) {
            m_size = static_cast<int>(deviation * 3 * std::sqrt(2 * 3.14159265358979323846) / 4 + 0.5);
            return;
        }
        const int radius = static_cast<int>(std::ceil(deviation * 3));
        double sum = 0;
        for (int i = -radius; i <= radius; ++i) {
            m_curve.push_back(static_cast<float>(std::exp(-i * i / (2 * deviation * deviation))));
            sum += static_cast<double>(m_curve.back());
        }
        for (float& weight : m_curve) weight /= static_cast<float>(sum);
    }

    void blur(std::uint32_t* row) {
        std::copy(row, row + m_line.size(), m_line.begin());
        if (std::all_of(m_line.begin(), m_line.end(), [](std::uint32_t pixel) { return pixel == 0; })) return;
        if (m_curve.empty()) {
            const int half = m_size / 2;
            const bool even = m_size % 2 == 0;
            // Of even size: the first two boxes stand half a pixel to either side, the last is one larger.
            averageLine(m_line, m_room, half, even ? half - 1 : half);
            averageLine(m_room, m_line, even ? half - 1 : half, half);
            averageLine(m_line, m_room, half, half);
            std::copy(m_room.begin(), m_room.end(), row);
        } else {
            weigh(row);
        }
    }

private:
    void weigh(std::uint32_t* row) const {
        const int count = static_cast<int>(m_line.size());
        const int radius = static_cast<int>(m_curve.size() / 2);
        for (int i = 0; i < count; ++i) {
            float alpha = 0.5f, red = 0.5f, green = 0.5f, blue = 0.5f;
            const int last = std::min(i + radius, count - 1);
            for (int at = std::max(i - radius, 0); at <= last; ++at) {
                const std::uint32_t pixel = m_line[static_cast<std::size_t>(at)];
                const float weight = m_curve[static_cast<std::size_t>(at - i + radius)];
                alpha += weight * static_cast<float>(alphaOfPixel(pixel));
                red += weight * static_cast<float>(redOf(pixel));
                green += weight * static_cast<float>(greenOf(pixel));
                blue += weight * static_cast<float>(blueOf(pixel));
            }
            const unsigned most = std::min(static_cast<unsigned>(alpha), 255u);
            row[i] = pixelOf(std::min(static_cast<unsigned>(red), most),
                             std::min(static_cast<unsigned>(green), most),
                             std::min(static_cast<unsigned>(blue), most), most);
        }
    }

    int m_size = 0;
    std::vector<float> m_curve;
    std::vector<std::uint32_t> m_room, m_line;
};

void blurRows(AImage& image, double deviation) {
    LineBlur line(deviation, image.width());
    for (int y = 0; y < image.height(); ++y) line.blur(image.row(y));
}

// In blocks, so that both images stay near.
AImage transposed(const AImage& image) {
    constexpr int kBlock = 32;
    AImage result(image.height(), image.width());
    for (int top = 0; top < image.height(); top += kBlock) {
        for (int left = 0; left < image.width(); left += kBlock) {
            const int bottom = std::min(top + kBlock, image.height());
            const int right = std::min(left + kBlock, image.width());
            for (int y = top; y < bottom; ++y) {
                for (int x = left; x < right; ++x) result.at(y, x) = image.at(x, y);
            }
        }
    }
    return result;
}

}  // namespace

AImage blurImage(const AImage& image, double across, double down) {
    AImage result = image;
    if (image.empty()) return result;
    if (across > kNoBlur) blurRows(result, across);
    if (down > kNoBlur) {
        result = transposed(result);
        blurRows(result, down);
        result = transposed(result);
    }
    return result;
}

}  // namespace svg
