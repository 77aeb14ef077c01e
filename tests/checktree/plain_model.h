// The check tree as its rules tell it: plain loops over plain records, without a control.
#pragma once

#include <algorithm>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "platform/winapi.h"

namespace test {

struct PlainItem {
    std::string text;
    std::uint64_t data = 0;
    int check = 1;
    int image = 0;  // -1: the owner is asked
    bool expanded = false;
    PlainItem* parent = nullptr;
    std::vector<std::unique_ptr<PlainItem>> children;
};

class PlainTree {
public:
    bool enabled = true;
    std::vector<std::string> calls;

    void insert(const std::string& path, DWORD data) {
        PlainItem* parent = &m_root;
        std::vector<std::string> segments{""};
        for (const char c : path) {
            if (c == '/')
                segments.emplace_back();
            else
                segments.back() += c;
        }
        const std::string leaf = segments.back();
        segments.pop_back();
        for (const std::string& segment : segments) {
            PlainItem* group = child(*parent, segment);
            if (!group) group = add(*parent, segment);
            group->image = -1;
            parent = group;
        }
        PlainItem* item = child(*parent, leaf);
        if (!item) {
            item = add(*parent, leaf);
            item->image = enabled ? 0 : 1;
        }
        item->data = data;
    }

    void setCheck(PlainItem& item, bool check) {
        const int target = check ? 3 : 1;
        item.check = target;
        calls.push_back(item.text + (check ? " 1" : " 0"));
        for (auto& below : item.children) {
            if (below->check != target) setCheck(*below, check);
        }
        PlainItem* parent = above(item);
        if (!parent || parent->check == target) return;
        for (auto& sibling : parent->children) {
            if (sibling->check == target) continue;
            for (; parent; parent = above(*parent)) parent->check = 5;
            return;
        }
        setCheck(*parent, check);
    }

    void setAllChecks(bool check) {
        for (auto& item : m_root.children) setCheck(*item, check);
        calls.push_back("end");
    }

    void setChecks(const std::vector<DWORD>& check, bool uncheckFirst, const std::vector<DWORD>* uncheck) {
        if (uncheckFirst) setAllChecks(false);
        for (const DWORD data : check) {
            if (PlainItem* item = withData(data)) setCheck(*item, true);
        }
        if (uncheck) {
            for (const DWORD data : *uncheck) {
                if (PlainItem* item = withData(data)) setCheck(*item, false);
            }
        }
        calls.push_back("end");
    }

    void click(PlainItem& item) {
        setCheck(item, item.check == 1);
        calls.push_back("end");
    }

    bool isAllChecked() const {
        return std::ranges::all_of(m_root.children, [](const auto& item) { return item->check == 3; });
    }

    // wanted: 3 for checked data, 1 for unchecked.
    std::vector<DWORD> collect(int wanted, bool stop) const {
        std::vector<DWORD> data;
        const PlainItem* item = m_root.children.empty() ? nullptr : m_root.children.front().get();
        while (item) {
            const PlainItem* down = item->children.empty() ? nullptr : item->children.front().get();
            if (item->check == 4 - wanted) {
                down = nullptr;
            } else if (item->check == wanted && item->data != 0) {
                if (stop || !down) {
                    data.push_back(static_cast<DWORD>(item->data));
                    down = nullptr;
                }
            }
            if (!down) {
                down = next(*item);
                if (!down && item->parent != &m_root) down = next(*item->parent);
            }
            item = down;
        }
        return data;
    }

    void update(std::vector<DWORD>& list) const {
        if (!enabled) return;
        for (std::size_t i = list.size(); i-- > 0;) {
            const PlainItem* item = withData(list[i]);
            if (item && item->check != 3) list.erase(list.begin() + static_cast<std::ptrdiff_t>(i));
        }
        for (const DWORD data : collect(3, true)) {
            if (std::ranges::find(list, data) == list.end()) list.push_back(data);
        }
    }

    void expandAll(bool expand) {
        forEach([&](PlainItem& item) { item.expanded = expand && !item.children.empty(); });
    }

    void enable(bool on) {
        if (enabled == on) return;
        enabled = on;
        forEach([&](PlainItem& item) {
            if (item.image < 0) return;  // its owner answers with the right one already
            if (on && item.image % 2 == 1) --item.image;
            if (!on && item.image % 2 == 0) ++item.image;
        });
    }

    PlainItem* withData(std::uint64_t data) const {
        PlainItem* found = nullptr;
        const_cast<PlainTree*>(this)->forEach([&](PlainItem& item) {
            if (!found && item.data == data) found = &item;
        });
        return found;
    }

    std::vector<PlainItem*> items() {
        std::vector<PlainItem*> all;
        forEach([&](PlainItem& item) { all.push_back(&item); });
        return all;
    }

    std::string dump() {
        std::string lines;
        forEach([&](PlainItem& item) {
            int depth = 0;
            for (PlainItem* up = above(item); up; up = above(*up)) ++depth;
            const int shown = item.image >= 0 ? item.image : (item.expanded ? 4 : 2) + (enabled ? 0 : 1);
            lines += std::string(static_cast<std::size_t>(2 * depth), ' ') + item.text + " " +
                     std::to_string(item.check) + " " + std::to_string(item.data) + " " +
                     std::to_string(shown) + "\n";
        });
        return lines;
    }

    std::string pathOf(const PlainItem& item) const {
        return item.parent == &m_root ? item.text : pathOf(*item.parent) + "/" + item.text;
    }

private:
    static PlainItem* child(PlainItem& parent, const std::string& text) {
        for (auto& item : parent.children) {
            if (item->text == text) return item.get();
        }
        return nullptr;
    }
    static PlainItem* add(PlainItem& parent, const std::string& text) {
        parent.children.push_back(std::make_unique<PlainItem>());
        parent.children.back()->text = text;
        parent.children.back()->parent = &parent;
        return parent.children.back().get();
    }
    PlainItem* above(const PlainItem& item) const { return item.parent == &m_root ? nullptr : item.parent; }
    static const PlainItem* next(const PlainItem& item) {
        auto& siblings = item.parent->children;
        for (std::size_t i = 0; i + 1 < siblings.size(); ++i) {
            if (siblings[i].get() == &item) return siblings[i + 1].get();
        }
        return nullptr;
    }
    template <class Visit>
    void forEach(Visit visit) {
        std::vector<PlainItem*> open;
        const auto push = [&open](PlainItem& parent) {
            for (std::size_t i = parent.children.size(); i-- > 0;) open.push_back(parent.children[i].get());
        };
        push(m_root);
        while (!open.empty()) {
            PlainItem* item = open.back();
            open.pop_back();
            visit(*item);
            push(*item);
        }
    }

    PlainItem m_root;
};

}  // namespace test
