#include "app/color_report.h"

#include <cstdio>
#include <unordered_map>

#include "app/filter_report.h"
#include "app/report.h"
#include "kzcore/document/object_paint.h"

namespace app {

namespace {

using Json = nlohmann::ordered_json;

struct Use {
    std::size_t objects = 0;
    const AObject* first = nullptr;
    bool asFill = false;  // of the first
};
using Uses = std::unordered_map<const AReferItem*, Use>;

void count(Uses& uses, const AReferItem* item, const AObject& object, bool asFill) {
    if (!item) return;
    Use& use = uses[item];
    ++use.objects;
    if (use.first) return;
    use.first = &object;
    use.asFill = asFill;
}

Uses usesOf(const ADocument& document) {
    Uses uses;
    for (std::uint32_t i = 1; i <= document.getObjectCount(); ++i) {
        const AObject& object = *document.getObject(i);
        const AReferItem* const fill = shownItem(fillItem(object));
        const AReferItem* const stroke = shownItem(strokeItem(object));
        count(uses, fill, object, true);
        if (stroke != fill) count(uses, stroke, object, false);
    }
    return uses;
}

std::string hexadecimal(COLORREF color) {
    const unsigned value = static_cast<unsigned>(GetRValue(color)) << 16 |
                           static_cast<unsigned>(GetGValue(color)) << 8 | GetBValue(color);
    char text[16];
    std::snprintf(text, sizeof text, "#%06x", value);
    return text;
}

Json describe(const ShownItem& shown, const Use& use) {
    const AReferItem& item = *shown.item;
    const std::string className = displayName(item.getClassInfo());
    Json row{{"name", item.getName().toUtf8()}, {"class", className}};
    if (const auto* color = dynamic_cast<const AColorItem*>(&item)) {
        row["value"] = hexadecimal(color->getDisplayColor());
        row["item"] = "color:" + className + '/' + item.getName().toUtf8();
    } else {
        Json stops = Json::array();
        if (const auto* gradient = dynamic_cast<const AGradientBrushItem*>(&item)) {
            for (const AGradientStop& stop : gradient->getStops())
                stops.push_back({hexadecimal(stop.color.getColorRef()), stop.offset});
        }
        row["stops"] = std::move(stops);
        row["item"] = (use.asFill ? "fill:" : "stroke:") + std::string(use.first->getNameUtf8());
    }
    row["objects"] = use.objects;
    row["visible"] = shown.isVisible;
    return row;
}

Json describeAll(const std::vector<ShownItem>& items, const Uses& uses) {
    Json rows = Json::array();
    for (const ShownItem& item : items) {
        const auto use = uses.find(item.item);
        if (use != uses.end()) rows.push_back(describe(item, use->second));
    }
    return rows;
}

}  // namespace

Json reportColors(Session& session) {
    const ShownItems shown = shownItems(session.view());
    const Uses uses = usesOf(session.document());
    return {{"colors", describeAll(shown.colors, uses)}, {"brushes", describeAll(shown.brushes, uses)}};
}

}  // namespace app
