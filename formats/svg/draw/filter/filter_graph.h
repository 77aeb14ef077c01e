// A filter, read for one element at one resolution: steps that make images out of images.
//
//     std::vector<FilterGraph> graphs;
//     const bool isFiltered = readFilters(context, {style.own.filter, box, space, style}, graphs);
//
// Rectangles are pixels of the canvas that FilterArea::space leads to.
#pragma once

#include <functional>
#include <limits>

#include "formats/svg/draw/filter/filter_pixels.h"
#include "formats/svg/draw/filter/filters.h"

namespace svg {

// What a step takes when it runs. All images have the size of the picture being filtered.
struct StepInputs {
    std::vector<const AImage*> images;
    std::vector<RECT> areas;  // of the images, within the picture
    RECT area;                // of the result, within the picture
    POINT origin;             // the canvas's pixel that is the picture's first
};

// Inputs are earlier steps by their index, or one of these.
enum FilterInput { kSourceGraphic = -1, kSourceAlpha = -2, kTransparent = -3 };

struct FilterStep {
    std::vector<int> inputs;
    bool linear = false;  // the images are handed over in linearRGB, and the result is
    RECT area{};          // the result is cut to it
    double reach = 0;     // how far pixels may come from, in pixels
    double cost = 4;      // simple operations for a pixel, besides those for each input
    // A picture of the size of the inputs, whatever of it lies outside the area.
    std::function<AImage(const StepInputs&)> apply;
};

struct FilterGraph {
    RECT region{};
    std::vector<FilterStep> steps;
};

constexpr double kEndlessReach = std::numeric_limits<double>::infinity();
// Further steps of one filter are left out.
constexpr std::size_t kMostFilterSteps = 128;

// The filter elements and functions of a property, in order. False when one is missing or unknown.
bool readFilters(DrawContext& context, const FilterArea& area, std::vector<FilterGraph>& graphs);

// A function such as blur(2px); false when it is unknown or its arguments are wrong.
bool readFilterFunction(std::string_view name, std::string_view arguments, const FilterArea& area,
                        FilterGraph& graph);

// Of flood-color and the like: not multiplied, for a step in linearRGB or not.
ColorValues colorValues(const Paint& paint, std::uint32_t currentColor, double opacity, bool linear);
// A number of pixels that can be calculated with.
int wholePixels(double value);
RECT pixelRect(const AFRect& rect);

// The parts that both kinds of filters are made of; deviations and distances in pixels.
void makeBlur(FilterStep& step, double across, double down);
void makeDropShadow(FilterStep& step, double across, double down, AFPoint by, const ColorValues& color);
void makeColorMatrix(FilterStep& step, const ColorMatrix& matrix);
ColorMatrix saturation(double amount);
ColorMatrix hueRotation(double degrees);

}  // namespace svg
