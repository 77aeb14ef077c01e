#include "kzcore/display/hits.h"

#include <algorithm>
#include <cmath>

#include "kzcore/document/object.h"

namespace {

constexpr double kMostTolerance = 16;
// What touches a rectangle is drawn at most so large.
constexpr double kMostSide = 256;

bool isInside(const AFRect& box, const AFRect& area) {
    return box.left >= area.left && box.top >= area.top && box.right <= area.right &&
           box.bottom <= area.bottom;
}

AFRect placed(const AFRect& r, const AAffine& t) {
    AFRect result{HUGE_VAL, HUGE_VAL, -HUGE_VAL, -HUGE_VAL};
    for (const AFPoint& corner : {AFPoint{r.left, r.top}, AFPoint{r.right, r.top}, AFPoint{r.left, r.bottom},
                                  AFPoint{r.right, r.bottom}}) {
        const AFPoint p = t.apply(corner);
        result.left = std::min(result.left, p.x);
        result.top = std::min(result.top, p.y);
        result.right = std::max(result.right, p.x);
        result.bottom = std::max(result.bottom, p.y);
    }
    return result;
}

RECT pixelsOf(const AFRect& area) {
    static constexpr double kFar = 1e9;
    const auto cut = [](double value) { return static_cast<LONG>(std::clamp(value, -kFar, kFar)); };
    return {cut(std::floor(area.left)), cut(std::floor(area.top)), cut(std::ceil(area.right)),
            cut(std::ceil(area.bottom))};
}

}  // namespace

void AHits::draw(const std::vector<std::uint32_t>& entries, const AFRect& area, double scale) {
    const int width = std::max(1, static_cast<int>(std::ceil(area.Width() * scale)));
    const int height = std::max(1, static_cast<int>(std::ceil(area.Height() * scale)));
    m_image = AImage(width, height);
    ACanvas canvas(::pixelsOf(m_image));
    const AAffine toImage =
        AAffine::scaling(scale) * AAffine::translation(-area.left, -area.top) * m_toPixels;
    ADisplayDrawing(m_list, m_shown, toImage).drawAlone(canvas, entries);
}

// Calls use(entries) for every object with an entry that touches the area, topmost first, until it says false.
template <class Use>
void AHits::forEachObject(const ABox& area, Use use) {
    m_list.tree().find(area, m_found);
    std::vector<std::uint32_t> entries;
    for (std::size_t i = m_found.size(); i > 0;) {
        const std::uint32_t object = m_list.entry(m_found[i - 1]).object;
        entries.clear();
        while (i > 0 && m_list.entry(m_found[i - 1]).object == object) entries.push_back(m_found[--i]);
        std::reverse(entries.begin(), entries.end());
        if (object != 0 && m_shown.shows(object) && !use(m_list.object(object), entries)) return;
    }
}

template <class Use>
void AHits::forEachAt(AFPoint pixel, double tolerance, Use use) {
    if (!std::isfinite(pixel.x) || !std::isfinite(pixel.y)) return;
    tolerance = tolerance > 0 ? std::min(tolerance, kMostTolerance) : 0;
    const double reach = std::floor(tolerance);
    const double x = std::floor(pixel.x);
    const double y = std::floor(pixel.y);
    const AFRect area{x - reach, y - reach, x + reach + 1, y + reach + 1};
    forEachObject(boxOfPixels(pixelsOf(area), m_toPixels),
                  [&](const AObject& object, const std::vector<std::uint32_t>& entries) {
                      draw(entries, area, 1);
                      for (int row = 0; row < m_image.height(); ++row) {
                          for (int column = 0; column < m_image.width(); ++column) {
                              const bool isNear = std::hypot(column - reach, row - reach) <= tolerance;
                              if (isNear && m_image.at(column, row) >> 24 != 0) return use(object);
                          }
                      }
                      return true;
                  });
}

const AObject* AHits::topAt(AFPoint pixel, double tolerance) {
    const AObject* top = nullptr;
    forEachAt(pixel, tolerance, [&](const AObject& object) {
        top = &object;
        return false;
    });
    return top;
}

std::vector<const AObject*> AHits::allAt(AFPoint pixel, double tolerance) {
    std::vector<const AObject*> all;
    forEachAt(pixel, tolerance, [&](const AObject& object) {
        all.push_back(&object);
        return true;
    });
    return all;
}

std::vector<const AObject*> AHits::inside(const AFRect& pixels) {
    std::vector<const AObject*> all;
    forEachObject(boxOfPixels(pixelsOf(pixels), m_toPixels),
                  [&](const AObject& object, const std::vector<std::uint32_t>&) {
                      AFRect bounds;
                      object.getBoundingRect(bounds);
                      if (isInside(placed(bounds, m_toPixels), pixels)) all.push_back(&object);
                      return true;
                  });
    std::reverse(all.begin(), all.end());
    return all;
}

std::vector<const AObject*> AHits::touching(const AFRect& pixels) {
    std::vector<const AObject*> all;
    forEachObject(boxOfPixels(pixelsOf(pixels), m_toPixels), [&](const AObject& object,
                                                                 const std::vector<std::uint32_t>& entries) {
        ABox box;
        for (const std::uint32_t entry : entries) box.add(m_list.box(entry));
        const AFRect drawn = placed(box.rect(), m_toPixels);
        AFRect area{
            std::max(pixels.left, std::floor(drawn.left)), std::max(pixels.top, std::floor(drawn.top)),
            std::min(pixels.right, std::ceil(drawn.right)), std::min(pixels.bottom, std::ceil(drawn.bottom))};
        if (!(area.Width() > 0 && area.Height() > 0)) return true;
        draw(entries, area, std::min(1.0, kMostSide / std::max(area.Width(), area.Height())));
        if (std::ranges::any_of(m_image.pixels(), [](std::uint32_t p) { return p >> 24 != 0; }))
            all.push_back(&object);
        return true;
    });
    std::reverse(all.begin(), all.end());
    return all;
}
