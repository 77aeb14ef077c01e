#include "app/dialog_report.h"

namespace app {

using Json = nlohmann::ordered_json;

namespace {

Json itemsOf(const std::vector<driver::TreeItem>& items) {
    Json list = Json::array();
    for (const driver::TreeItem& item : items) {
        list.push_back({{"text", item.text},
                        {"check", item.check},
                        {"image", item.image},
                        {"expanded", item.expanded},
                        {"children", itemsOf(item.children)}});
    }
    return list;
}

Json rectOf(const RECT& rect) {
    return {rect.left, rect.top, rect.right - rect.left, rect.bottom - rect.top};
}

// What a user would call it.
const char* kindOf(const driver::ControlDescription& control) {
    if (control.checked) return "check box";
    if (control.className == "Button") return "button";
    if (control.className == "SysTreeView32") return "tree";
    if (control.className == "SysTabControl32") return "tabs";
    return "other";
}

}  // namespace

Json reportKinds(const driver::Dialog& dialog) {
    Json kinds = Json::array();
    for (const driver::ControlDescription& control : dialog.describe().controls)
        kinds.push_back(kindOf(control));
    return {{"kinds", std::move(kinds)}};
}

Json reportTree(const driver::Dialog& dialog) {
    return {{"tree", itemsOf(dialog.tree())}};
}

Json reportDialog(const driver::Dialog& dialog) {
    const driver::DialogDescription shown = dialog.describe();
    Json controls = Json::array();
    for (const driver::ControlDescription& control : shown.controls) {
        controls.push_back({{"id", control.id},
                            {"text", control.text},
                            {"enabled", control.enabled},
                            {"checked", control.checked ? Json(*control.checked) : Json()},
                            {"rect", rectOf(control.rect)}});
    }
    Json report{{"title", shown.title},
                {"rect", rectOf(shown.rect)},
                {"page", shown.page ? Json(*shown.page) : Json()},
                {"pages", shown.pages},
                {"controls", std::move(controls)}};
    return {{"dialog", std::move(report)}};
}

}  // namespace app
