#include "app/row_report.h"

#include <algorithm>

#include "app/base64.h"
#include "canvas/image.h"

namespace app {

using Json = nlohmann::ordered_json;

namespace {

constexpr int kColumns = 64;

}  // namespace

void RowReport::append(std::vector<Row>& rows, std::vector<driver::TreeItem>& items, int depth) {
    for (driver::TreeItem& item : items) {
        rows.push_back(
            {depth, std::move(item.text), item.check, item.image, item.expanded, item.children.size()});
        append(rows, item.children, depth + 1);
    }
}

bool RowReport::isSameTree(const std::vector<Row>& rows, const std::string& place) const {
    return place == m_place && std::ranges::equal(rows, m_rows, [](const Row& a, const Row& b) {
               return a.depth == b.depth && a.text == b.text;
           });
}

Json RowReport::report(const driver::Dialog& dialog, std::optional<unsigned> since) {
    const driver::DialogDescription shown = dialog.describe();
    std::vector<driver::TreeItem> items = dialog.tree();
    std::vector<Row> rows;
    append(rows, items, 0);
    const std::string place = shown.title + '\n' + shown.page.value_or("");
    const bool onlyChanges = since == m_revision && m_revision != 0 && isSameTree(rows, place);
    Json told = Json::array();
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const Row& row = rows[i];
        if (!onlyChanges) {
            told.push_back({{"depth", row.depth},
                            {"text", row.text},
                            {"check", row.check},
                            {"image", row.image},
                            {"expanded", row.expanded},
                            {"children", row.children}});
        } else if (row != m_rows[i]) {
            told.push_back(
                {{"row", i}, {"check", row.check}, {"image", row.image}, {"expanded", row.expanded}});
        }
    }
    if (place != m_place || rows != m_rows || m_revision == 0) ++m_revision;
    m_place = place;
    m_rows = std::move(rows);
    const auto tree =
        std::ranges::find(shown.controls, "SysTreeView32", &driver::ControlDescription::className);
    return {{"rows",
             {{"revision", m_revision},
              {"page", shown.page ? Json(*shown.page) : Json()},
              {"enabled", tree != shown.controls.end() && tree->enabled},
              {onlyChanges ? "changed" : "all", std::move(told)}}}};
}

Json reportImages(const driver::Dialog& dialog) {
    const driver::TreeImages images = dialog.treeImages();
    const int count = static_cast<int>(images.pictures.size());
    AImage sheet(std::min(count, kColumns) * images.width, (count + kColumns - 1) / kColumns * images.height);
    for (int i = 0; i < count; ++i) {
        const std::vector<std::uint32_t>& picture = images.pictures[static_cast<std::size_t>(i)];
        for (int y = 0; y < images.height; ++y) {
            std::copy_n(picture.begin() + y * images.width, images.width,
                        sheet.row(i / kColumns * images.height + y) + i % kColumns * images.width);
        }
    }
    return {{"images",
             {{"width", images.width},
              {"height", images.height},
              {"columns", kColumns},
              {"count", count},
              {"png", count == 0 ? Json() : Json(inBase64(encodePng(sheet)))}}}};
}

}  // namespace app
