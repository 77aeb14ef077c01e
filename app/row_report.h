// The tree of a dialog as rows, and what changed of it: for a user interface that shows it again and again.
#pragma once

#include <optional>

#include "app/output.h"
#include "platform/driver/dialog.h"

namespace app {

// Remembers what it told last. One for each session.
class RowReport {
public:
    // {"rows":{"revision":…,"page":…,"enabled":…,"all":[{"depth":…,"text":…,"check":…,"image":…,"expanded":…,
    // "children":…}]}}: every item, each before what is below it; `children` tells how many are directly below.
    //
    // When `since` is the revision told last, of the same page and the same items, only what changed:
    // {"rows":{"revision":…,"page":…,"enabled":…,"changed":[{"row":…,"check":…,"image":…,"expanded":…}]}}.
    nlohmann::ordered_json report(const driver::Dialog& dialog, std::optional<unsigned> since);

private:
    struct Row {
        int depth = 0;
        std::string text;
        int check = 0;
        int image = 0;
        bool expanded = false;
        std::size_t children = 0;
        bool operator==(const Row&) const = default;
    };

    static void append(std::vector<Row>& rows, std::vector<driver::TreeItem>& items, int depth);
    bool isSameTree(const std::vector<Row>& rows, const std::string& place) const;

    unsigned m_revision = 0;
    std::string m_place;  // the dialog and its page
    std::vector<Row> m_rows;
};

// {"images":{"width":…,"height":…,"columns":…,"count":…,"png":…}}: the pictures of the tree's items, in rows of so many,
// as a PNG file in base64; count 0 for a tree without pictures.
nlohmann::ordered_json reportImages(const driver::Dialog& dialog);

}  // namespace app
