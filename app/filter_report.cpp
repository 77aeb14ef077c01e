#include "app/filter_report.h"

#include <algorithm>
#include <unordered_set>

#include "app/report.h"
#include "kzcore/document/document.h"
#include "kzcore/view/paint_visibility.h"

namespace app {

namespace {

using Json = nlohmann::ordered_json;
using Items = std::unordered_set<const AReferItem*>;

const APenItem* penItemOf(const AObject& object) {
    const APen* pen = object.getPen();
    return pen ? pen->getPenItem() : nullptr;
}

ABrushItem* brushItemOf(const AObject& object) {
    const ABrush* brush = object.getBrush();
    return brush ? brush->getBrushItem() : nullptr;
}

// The colours and brushes of the objects' own paint.
Items usedItems(const ADocument& document) {
    Items items;
    const auto addBrush = [&items](ABrushItem* brush) {
        if (const auto* solid = dynamic_cast<const ASolidBrushItem*>(brush))
            items.insert(solid->getColorItem());
        else
            items.insert(brush);
    };
    const AReferItem* lastBrush = nullptr;
    const AReferItem* lastPen = nullptr;
    for (std::uint32_t i = 1; i <= document.getObjectCount(); ++i) {
        const AObject& object = *document.getObject(i);
        ABrushItem* const brush = brushItemOf(object);
        if (brush != lastBrush) addBrush(brush);
        lastBrush = brush;
        const APenItem* const pen = penItemOf(object);
        if (pen != lastPen && pen) {
            items.insert(pen->getColorItem());
            addBrush(pen->getBrushItem());
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
        line += stateOf(brushItemOf(object) != nullptr, visible.fill);
        line += ",\"stroke\":";
        line += stateOf(penItemOf(object) != nullptr, visible.stroke);
        line += '}';
        if (line.size() > 60000) {
            print(line);
            line.clear();
        }
    }
    printLine(line + "}}");
}

}  // namespace app
