#include "app/filter_report.h"

#include <algorithm>
#include <unordered_set>

#include "app/report.h"
#include "kzcore/document/document.h"
#include "kzcore/document/object_paint.h"
#include "kzcore/view/paint_visibility.h"

namespace app {

namespace {

using Json = nlohmann::ordered_json;
using Items = std::unordered_set<const AReferItem*>;

// The colours and brushes of the objects' own paint.
Items usedItems(const ADocument& document) {
    Items items;
    const AReferItem* lastBrush = nullptr;
    const AReferItem* lastPen = nullptr;
    for (std::uint32_t i = 1; i <= document.getObjectCount(); ++i) {
        const AObject& object = *document.getObject(i);
        ABrushItem* const brush = fillItem(object);
        if (brush != lastBrush) items.insert(shownItem(brush));
        lastBrush = brush;
        const APenItem* const pen = strokeItem(object);
        if (pen != lastPen && pen) {
            items.insert(pen->getColorItem());
            items.insert(shownItem(pen->getBrushItem()));
        }
        lastPen = pen;
    }
    return items;
}

template <class Item>
std::vector<ShownItem> ask(const std::vector<Item*>& items, const Items& used, AViewFilter* filter) {
    std::vector<ShownItem> shown;
    for (Item* item : items) {
        if (used.contains(item)) shown.push_back({item, !filter || filter->isVisible(item) != 0});
    }
    return shown;
}

Json namesOf(const std::vector<ShownItem>& items, bool visible) {
    Json names = Json::array();
    for (const ShownItem& one : items) {
        if (one.isVisible == visible) names.push_back(one.item->getName().toUtf8());
    }
    return names;
}

const char* stateOf(bool hasPaint, bool isVisible) {
    return !hasPaint ? "null" : isVisible ? "true" : "false";
}

}  // namespace

ShownItems shownItems(const ADocView& view) {
    ADocument& document = *view.getDocument();
    const Items used = usedItems(document);
    AViewFilter* const filter = view.m_viewFilter;
    return {ask(document.getPaint().getColors(), used, filter),
            ask(document.getPaint().getBrushes(), used, filter)};
}

Json reportFilter(const ADocView& view) {
    if (!view.m_viewFilter) return {{"filter", Json()}};
    const ShownItems shown = shownItems(view);
    return {{"filter",
             {{"hidden", namesOf(shown.colors, false)},
              {"visible", namesOf(shown.colors, true)},
              {"brushes",
               {{"hidden", namesOf(shown.brushes, false)}, {"visible", namesOf(shown.brushes, true)}}}}}};
}

void printVisible(const ADocView& view) {
    AViewFilter* const filter = view.m_viewFilter;
    std::string line = "{\"visible\":{";
    bool first = true;
    for (ARoot* entry : allObjects(*view.getDocument())) {
        const auto& object = static_cast<const AObject&>(*entry);
        const APaintVisibility visible = paintVisibility(object, filter);
        if (!first) line += ',';
        first = false;
        appendJsonString(line, object.getNameUtf8());
        line += ":{\"fill\":";
        line += stateOf(fillItem(object) != nullptr, visible.fill);
        line += ",\"stroke\":";
        line += stateOf(strokeItem(object) != nullptr, visible.stroke);
        line += '}';
        if (line.size() > 60000) {
            print(line);
            line.clear();
        }
    }
    printLine(line + "}}");
}

}  // namespace app
