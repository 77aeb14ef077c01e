#include "app/window/icons.h"

#include <algorithm>
#include <array>

#include "formats/svg/values/path_data.h"

namespace app::window {

namespace {

struct Icon {
    std::string_view name;
    std::string_view outline;
};

constexpr std::array kIcons = {
    Icon{"tool", "M4 10h12M10 4v12"},
    Icon{"AViewFilterTool", "M3 4h14l-5.2 6.4v5.2L8.2 17v-6.6z"},
    Icon{"ASelectByAttrTool",
         "M3 5l1.4 1.4L7 3.8M3 11l1.4 1.4L7 9.8M3 17l1.4 1.4L7 15.8M10 5.2h7M10 11.2h7M10 16.5h7"},
    Icon{"ASelectSimilarTool", "M3 3h6v6H3zM11 11h6v6h-6zM13 4.5h2.5V7M7 15.5H4.5V13"},
    Icon{"ASelectColorTool",
         "M10 2.5c3 3.6 5 6 5 8.7a5 5 0 0 1-10 0c0-2.700 2-5.100 5-8.700z"
         "M7.5 11.5a2.500 2.500 0 0 0 2.500 2.500"},
    Icon{"AShowAllTool",
         "M2 10s3-5 8-5 8 5 8 5-3 5-8 5-8-5-8-5zM10 12.3a2.300 2.300 0 1 0 0-4.600 2.300 2.300 0 0 0 0 "
         "4.600z"},
    Icon{"AShowAllExceptTool", "M2 9s3-4.500 8-4.500S18 9 18 9s-3 4.500-8 4.500S2 9 2 9zM6 17h8"},
    Icon{"AShowThisTool", "M2 9s3-4.500 8-4.500S18 9 18 9s-3 4.500-8 4.500S2 9 2 9zM10 15v4M8 17h4"},
    Icon{"AHideThisTool", "M2 10s3-5 8-5 8 5 8 5-3 5-8 5-8-5-8-5zM4 17L16 3"},
    Icon{"AHideAllExceptTool",
         "M3 3h4M3 3v4M17 3h-4M17 3v4M3 17h4M3 17v-4M17 17h-4M17 17v-4"
         "M10 12.5a2.500 2.500 0 1 0 0-5 2.500 2.500 0 0 0 0 5z"},
    Icon{"open", "M2.5 5.5V15.5h15V7H9.500L7.700 4.800H2.500z"},
    Icon{"save", "M10 3v9M6.5 9L10 12.5 13.5 9M3.5 16.5h13"},
    Icon{"undo", "M7 4L3 8l4 4M3 8h8.500a5 5 0 0 1 0 10H8"},
    Icon{"redo", "M13 4l4 4-4 4M17 8H8.500a5 5 0 0 0 0 10H12"},
    Icon{"plus",
         "M8.5 14a5.500 5.500 0 1 0 0-11 5.500 5.500 0 0 0 0 11zM12.5 12.5L17.5 17.5M6 8.500h5M8.5 6v5"},
    Icon{"minus", "M8.5 14a5.500 5.500 0 1 0 0-11 5.500 5.500 0 0 0 0 11zM12.5 12.5L17.5 17.5M6 8.500h5"},
    Icon{"fit", "M3 7V3h4M13 3h4v4M17 13v4h-4M7 17H3v-4"},
    Icon{"full", "M4 6l2-1.500V15.500M15 6l2-1.500V15.500M10.500 8v.1M10.500 13v.1"},
    Icon{"shown",
         "M2 10s3-5 8-5 8 5 8 5-3 5-8 5-8-5-8-5zM10 12.3a2.300 2.300 0 1 0 0-4.600 2.300 2.300 0 0 0 0 "
         "4.600z"},
    Icon{"hidden", "M2 10s3-5 8-5 8 5 8 5-3 5-8 5-8-5-8-5zM4 17L16 3"},
    Icon{"close", "M4 4l12 12M16 4L4 16"},
    Icon{"locked", "M5.500 9h9v7.500h-9zM7 9V6.500a3 3 0 0 1 6 0V9"},
    Icon{"unlocked", "M5.500 9h9v7.500h-9zM7 9V6.500a3 3 0 0 1 5.600-1.500"},
};

constexpr double kSquare = 20;

}  // namespace

void drawIcon(ACanvas& canvas, std::string_view name, AFPoint at, double side, AColor color) {
    const auto found = std::ranges::find(kIcons, name, &Icon::name);
    APath outline;
    svg::appendPath((found == kIcons.end() ? kIcons[0] : *found).outline, outline);
    AStrokeStyle pen;
    pen.width = 1.5;
    pen.cap = ELineCap::round;
    pen.join = ELineJoin::round;
    canvas.stroke(outline, AAffine::translation(at.x, at.y) * AAffine::scaling(side / kSquare), {color}, pen);
}

}  // namespace app::window
