#include "app/report.h"

#include <algorithm>
#include <map>

#include "kzcore/document/object_paint.h"
#include "kzcore/view/view.h"
#include "kzutil/message_box.h"

namespace app {

using Json = nlohmann::ordered_json;

namespace {

Json nameOf(const AReferItem* item) {
    return item ? Json(item->getName().toUtf8()) : Json();
}

// Gradients, patterns and the like. The solid brush that every color has is not worth counting.
std::ptrdiff_t countOwnBrushes(ADocument& document) {
    return std::ranges::count_if(document.getPaint().getBrushes(), [](const ABrushItem* brush) {
        return dynamic_cast<const ASolidBrushItem*>(brush) == nullptr;
    });
}

void appendLayers(Json& layers, const ADatabase& database, bool master) {
    for (ARoot* entry : database.children) {
        const auto* layer = static_cast<const ALayer*>(entry);
        layers.push_back({{"name", layer->getTitle().toUtf8()},
                          {"class", layer->getClassName().toUtf8()},
                          {"master", master},
                          {"locked", layer->isLocked()},
                          {"hidden", layer->isHidden()},
                          {"objects", layer->children.GetCount()}});
    }
}

struct State {
    bool isHidden = false;
    bool isLocked = false;
};

// By itself, by what it lies in or by its layer.
State stateOf(const AObject& object) {
    State state{object.getObjectFlags(kObjectHidden) != 0, object.isUnselectable() != 0};
    for (const AParent* parent = object.getParent(); parent; parent = parent->getParent()) {
        if (const auto* layer = dynamic_cast<const ALayer*>(parent)) {
            state.isHidden |= layer->isHidden();
            state.isLocked |= layer->isLocked();
        } else if (const auto* around = dynamic_cast<const AObject*>(parent)) {
            state.isHidden |= around->getObjectFlags(kObjectHidden) != 0;
            state.isLocked |= around->isUnselectable() != 0;
        }
    }
    return state;
}

}  // namespace

AObList allObjects(ADocument& document) {
    AObList objects(0, 10);
    document.getSecondaryDatabase()->getAllObjects(objects, 0);
    document.getDatabase().getAllObjects(objects, 0);
    return objects;
}

void printSelection(const ADocView& view, const Json& head) {
    const ANameTable& names = view.getDocument()->getNames();
    std::string line = "{";
    for (const auto& [name, value] : head.items()) {
        line += Json(name).dump() + ':';
        line += value.dump(-1, ' ', false, Json::error_handler_t::replace) + ',';
    }
    line += "\"selection\":[";
    bool first = true;
    for (const AObject* object : view.m_selection->getObjects()) {
        if (!first) line += ',';
        first = false;
        appendJsonString(line, names.get(object->getIndex()));
        if (line.size() > 60000) {
            print(line);
            line.clear();
        }
    }
    printLine(line + "]}");
}

void printObjects(ADocument& document) {
    print("{\"objects\":[");
    bool first = true;
    for (ARoot* entry : allObjects(document)) {
        const auto* object = static_cast<const AObject*>(entry);
        const AParent* parent = object->getParent();
        const State state = stateOf(*object);
        const bool isInParent = parent && !dynamic_cast<const ALayer*>(parent);
        const Json row = {
            {"id", object->getNameUtf8()},  {"class", object->getClassName().toUtf8()},
            {"layer", layerTitle(*object)}, {"parent", isInParent ? Json(parent->getNameUtf8()) : Json()},
            {"fill", fillName(*object)},    {"stroke", strokeName(*object)},
            {"hidden", state.isHidden},     {"locked", state.isLocked}};
        if (!first) print(",");
        first = false;
        print(row.dump(-1, ' ', false, Json::error_handler_t::replace));
    }
    printLine("]}");
}

Json reportTools(const Session& session) {
    Json tools = Json::array();
    for (const APlugInTool& entry : session.plugIns().tools()) {
        const std::string className = entry.className.toUtf8();
        const std::unique_ptr<ATool> tool = session.makeTool(className);
        tools.push_back({{"class", className},
                         {"name", tool->getDisplayName().toUtf8()},
                         {"description", tool->getToolTip().toUtf8()},
                         {"flags", entry.flags},
                         {"valid", tool->isValid() != 0}});
    }
    return {{"tools", std::move(tools)}};
}

Json reportMessages() {
    Json messages = Json::array();
    for (const AString& text : takeKeptMessages()) messages.push_back(text.toUtf8());
    return {{"messages", std::move(messages)}};
}

Json reportLayers(ADocument& document) {
    Json layers = Json::array();
    appendLayers(layers, *document.getSecondaryDatabase(), true);
    appendLayers(layers, document.getDatabase(), false);
    return layers;
}

Json reportInfo(const std::string& file, ADocument& document) {
    std::map<std::string, int> counts;
    for (ARoot* entry : allObjects(document))
        ++counts[static_cast<const AObject*>(entry)->getClassName().toUtf8()];
    Json classes = Json::object();
    for (const AClassInfo& row : databaseClasses()) {
        const auto found = counts.find(row.name.toUtf8());
        if (found != counts.end()) classes[found->first] = found->second;
    }
    const AFRect& page = document.getPage();
    return {{"file", file},
            {"page", {page.left, page.top, page.Width(), page.Height()}},
            {"objects", document.getObjectCount()},
            {"colors", document.getPaint().getColors().size()},
            {"brushes", countOwnBrushes(document)},
            {"layers", reportLayers(document)},
            {"classes", std::move(classes)}};
}

std::string displayName(const AClassInfo& classInfo) {
    AString structure;
    if (!AConfig().getClassDisplayStructure(classInfo.name, structure, 1)) return classInfo.name.toUtf8();
    const std::string text = structure.toUtf8();
    const std::size_t slash = text.rfind('/');
    return slash == std::string::npos ? text : text.substr(slash + 1);
}

std::string layerTitle(const AObject& object) {
    for (const AParent* parent = object.getParent(); parent; parent = parent->getParent()) {
        if (const auto* layer = dynamic_cast<const ALayer*>(parent)) return layer->getTitle().toUtf8();
    }
    return {};
}

Json fillName(const AObject& object) {
    return nameOf(fillItem(object));
}

Json strokeName(const AObject& object) {
    return nameOf(strokeItem(object));
}

}  // namespace app
