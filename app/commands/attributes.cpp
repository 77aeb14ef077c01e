#include "app/attribute_tree.h"
#include "app/commands/commands.h"
#include "app/commands/on_file.h"
#include "app/output.h"

namespace app {

namespace {

using Json = nlohmann::ordered_json;

Json entriesAsJson(const std::vector<AttributeEntry>& entries) {
    Json list = Json::array();
    for (const AttributeEntry& entry : entries) {
        list.push_back({{"text", entry.text},
                        {"objects", entry.objects ? Json(*entry.objects) : Json()},
                        {"entries", entriesAsJson(entry.entries)}});
    }
    return list;
}

void printEntries(const std::vector<AttributeEntry>& entries, std::size_t depth) {
    for (const AttributeEntry& entry : entries) {
        std::string line(2 * depth, ' ');
        line += entry.text;
        fillUp(line, 40);
        printText(line + (entry.objects ? std::to_string(*entry.objects) : "?"));
        printEntries(entry.entries, depth + 1);
    }
}

}  // namespace

int runAttributes(const std::string& file, bool json) {
    Session session;
    session.open(file);
    const std::vector<AttributePage> pages = onFile(file, [&] { return readAttributes(session); });
    if (json) {
        Json list = Json::array();
        for (const AttributePage& page : pages)
            list.push_back({{"page", page.name}, {"entries", entriesAsJson(page.entries)}});
        printJson({{"attributes", std::move(list)}});
        return 0;
    }
    for (const AttributePage& page : pages) {
        printText(page.name);
        printEntries(page.entries, 1);
    }
    return 0;
}

}  // namespace app
