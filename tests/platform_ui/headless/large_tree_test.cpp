// The order of rows against a plain walk, and trees of a size that only proportional work fills in time.
#include <gtest/gtest.h>

#include <random>
#include <vector>

#include "platform/headless/tree/items.h"

using headless::Item;
using headless::Items;

namespace {

std::vector<const Item*> walk(Items& items) {
    std::vector<const Item*> shown;
    Item& root = items.root();
    for (Item* item = root.first_child; item; item = headless::is_expanded(*item)
                                                         ? headless::next_in_branch(*item, root)
                                                         : headless::after_branch(*item, root))
        shown.push_back(item);
    return shown;
}

void expect_rows(Items& items) {
    const std::vector<const Item*> shown = walk(items);
    ASSERT_EQ(items.rows().count(), static_cast<int>(shown.size()));
    int widest = 0;
    for (int row = 0; row < items.rows().count(); ++row) {
        const auto* item = static_cast<const Item*>(items.rows().at(row));
        ASSERT_EQ(item, shown[static_cast<std::size_t>(row)]);
        ASSERT_EQ(items.rows().index(*item), row);
        ASSERT_TRUE(item->shown);
        widest = std::max(widest, item->width);
    }
    ASSERT_EQ(items.rows().widest(), widest);
}

}  // namespace

TEST(TreeRows, AgreeWithAPlainWalkAfterEveryRandomChange) {
    std::mt19937 random(7);
    auto pick = [&](std::size_t count) { return random() % count; };
    Items items;
    std::vector<Item*> all = {&items.root()};
    for (int step = 0; step < 3000; ++step) {
        Item* item = all[pick(all.size())];
        const std::size_t choice = pick(10);
        if (choice < 5 || all.size() < 3) {
            Item* after = pick(3) ? item->last_child : pick(2) ? item->first_child : nullptr;
            all.push_back(&items.insert(*item, after));
            items.set_width(*all.back(), static_cast<int>(pick(1000)));
        } else if (item != &items.root()) {
            if (choice < 7)
                items.expand(*item);
            else if (choice < 9)
                items.collapse(*item);
            else if (!item->first_child)
                std::erase(all, item), items.remove(*item);
        }
        if (step % 10 == 0) expect_rows(items);
    }
    expect_rows(items);
}

TEST(TreeRows, AHundredThousandLeavesUnderAThousandGroups) {
    Items items;
    for (int group = 0; group < 1000; ++group) {
        Item& parent = items.insert(items.root(), items.root().last_child);
        for (int leaf = 0; leaf < 100; ++leaf) items.insert(parent, parent.last_child);
    }
    EXPECT_EQ(items.count(), 101000);
    EXPECT_EQ(items.rows().count(), 1000);
    for (Item* group = items.root().first_child; group; group = group->next) items.expand(*group);
    EXPECT_EQ(items.rows().count(), 101000);
    const auto* last = static_cast<const Item*>(items.rows().at(100999));
    EXPECT_EQ(last, items.root().last_child->last_child);
    EXPECT_EQ(items.rows().index(*last), 100999);
}
