#include "app/attribute_tree.h"

#include "app/attribute_count.h"
#include "app/guarded_author.h"

namespace app {

namespace {

using Page = std::pair<std::string, std::vector<driver::TreeItem>>;

// A tick on the only entry of a group that stands for something ticks the group.
std::vector<AttributeEntry> withCounts(const std::vector<driver::TreeItem>& items, const std::string& above,
                                       const std::optional<std::size_t>& group,
                                       const AttributeCounts& counts) {
    std::vector<AttributeEntry> entries;
    for (const driver::TreeItem& item : items) {
        const std::string path = above + "/" + item.text;
        AttributeEntry entry{item.text, {}, {}};
        if (const auto found = counts.find(path); found != counts.end()) entry.objects = found->second;
        if (items.size() == 1 && group) entry.objects = group;
        entry.entries = withCounts(item.children, path, entry.objects, counts);
        entries.push_back(std::move(entry));
    }
    return entries;
}

}  // namespace

std::vector<AttributePage> readAttributes(Session& session) {
    std::vector<Page> shown;
    GuardedAuthor author([&shown](driver::Dialog& sheet) {
        for (const std::string& name : sheet.describe().pages) {
            sheet.page(name);
            shown.emplace_back(name, sheet.tree());
        }
        sheet.press("Cancel");
        return true;
    });
    {
        const driver::Driver user(author.asAuthor());
        if (!session.runTool("ASelectByAttrTool")) throw Failure{"there is no object to select"};
    }
    author.rethrow();
    const AttributeCounts counts = countAttributes(session.view());
    std::vector<AttributePage> pages;
    pages.reserve(shown.size());
    for (const auto& [name, tree] : shown) pages.push_back({name, withCounts(tree, name, {}, counts)});
    return pages;
}

}  // namespace app
