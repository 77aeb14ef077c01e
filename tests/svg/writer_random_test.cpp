// Random drawings: what is written under a filter, read again, shows what the view showed.
#include <gtest/gtest.h>

#include <cstdio>
#include <random>

#include "filter.h"
#include "formats/svg/writer.h"
#include "kzcore/view/paint_visibility.h"
#include "kzcore/view/view.h"
#include "random_drawing.h"
#include "support.h"

using svg_test::HideByName;

namespace {

// A line for every object that shows, in drawing order: its class, its place, and of its paint what shows.
std::string shown(ADocument& document, AViewFilter* filter) {
    AObList objects(0, 10);
    document.getDatabase().getAllObjects(objects, 0);
    std::string lines;
    for (ARoot* entry : objects) {
        auto& object = static_cast<AObject&>(*entry);
        const bool isBitmap = dynamic_cast<ABitmap*>(&object) != nullptr;
        if (object.asParent() || object.getObjectFlags(kObjectHidden)) continue;
        const APaintVisibility visible = paintVisibility(object, filter);
        const bool fill = object.getBrush() && visible.fill;
        const bool stroke = object.getPen() && visible.stroke;
        if (!fill && !stroke && !isBitmap) continue;
        AFRect bounds;
        object.getBoundingRect(bounds);
        char place[128];
        std::snprintf(place, sizeof place, " %.3f %.3f %.3f %.3f", bounds.left, bounds.top, bounds.right,
                      bounds.bottom);
        lines += object.getClassName().toUtf8() + place;
        if (fill) lines += " fill " + object.getBrush()->getBrushItem()->getName().toUtf8();
        if (stroke) lines += " stroke " + object.getPen()->getPenItem()->getName().toUtf8();
        lines += '\n';
    }
    return lines;
}

}  // namespace

TEST(WriterRandom, TheWrittenDrawingShowsWhatTheViewShowed) {
    std::size_t hidden = 0;
    for (unsigned seed = 1; seed <= 400; ++seed) {
        std::mt19937 random(seed);
        const std::string text = svg_test::randomDrawing(random);
        HideByName filter(svg_test::randomColors(random));
        const auto document = svg_test::readText(text);
        std::string error;
        const std::optional<std::string> bytes = svg::writeDrawing(*document, &filter, error);
        ASSERT_TRUE(bytes) << error;
        const auto again = svg_test::readText(*bytes);
        const std::string expected = shown(*document, &filter);
        hidden += shown(*document, nullptr) != expected ? 1 : 0;
        ASSERT_EQ(shown(*again, nullptr), expected) << "seed " << seed << '\n'
                                                    << text << "\nwritten:\n"
                                                    << *bytes;
    }
    EXPECT_GT(hidden, 300U);
}
