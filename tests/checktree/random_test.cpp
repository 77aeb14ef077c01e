// Random operations on the control and on the plain model: every answer, every callback, the whole tree.
#include <random>

#include "checktree/fixture.h"
#include "checktree/plain_model.h"

using test::CheckTree;
using test::PlainItem;
using test::PlainTree;

namespace {

constexpr int kRounds = 200;
constexpr int kOperations = 1000;

class CheckTreeAtRandom : public CheckTree {
protected:
    std::mt19937 random;
    PlainTree model;
    int compared = 0;

    unsigned below(unsigned limit) { return random() % limit; }

    std::string anyPath() {
        static const char* const texts[] = {"a", "b", ""};
        std::string path = texts[below(3)];
        for (unsigned i = below(4); i > 0; --i) path += std::string("/") + texts[below(3)];
        return path;
    }
    std::vector<DWORD> anyData() {
        std::vector<DWORD> data;
        for (unsigned i = below(6); i > 0; --i) data.push_back(below(40));
        return data;
    }
    static ADWordArray toArray(const std::vector<DWORD>& data) {
        ADWordArray array;
        for (const DWORD value : data) array.Add(value);
        return array;
    }

    PlainItem* anyItem() {
        const std::vector<PlainItem*> items = model.items();
        return items.empty() ? nullptr : items[below(static_cast<unsigned>(items.size()))];
    }

    void insertAny() {
        const std::string path = anyPath();
        const DWORD data = below(40);
        insert(path.c_str(), data);
        model.insert(path, data);
    }
    void checkAny() {
        PlainItem* item = anyItem();
        if (!item) return;
        const bool check = below(2) == 0;
        tree.setCheck(at(model.pathOf(*item)), check ? 1 : 0);
        model.setCheck(*item, check);
    }
    void clickAny() {
        PlainItem* item = anyItem();
        if (item && model.enabled && driver::click(tree, at(model.pathOf(*item)), TVHT_ONITEMSTATEICON))
            model.click(*item);
    }
    void checkAll() {
        const bool check = below(2) == 0;
        tree.setAllChecks(check ? 1 : 0);
        model.setAllChecks(check);
    }
    void checkMany() {
        const std::vector<DWORD> check = anyData();
        const std::vector<DWORD> uncheck = anyData();
        const bool first = below(2) == 0;
        const bool both = below(2) == 0;
        const ADWordArray uncheckList = toArray(uncheck);
        tree.setChecks(toArray(check), first ? 1 : 0, both ? &uncheckList : nullptr);
        model.setChecks(check, first, both ? &uncheck : nullptr);
    }
    void enable() {
        const bool on = below(2) == 0;
        tree.EnableWindow(on);
        model.enable(on);
    }
    void expand() {
        const bool on = below(2) == 0;
        tree.expandAll(on ? 1 : 0);
        model.expandAll(on);
    }
    void collect() {
        const bool stop = below(2) == 0;
        EXPECT_EQ(checkedData(stop ? 1 : 0), model.collect(3, stop));
        EXPECT_EQ(uncheckedData(stop ? 1 : 0), model.collect(1, stop));
        EXPECT_EQ(tree.isAllChecked() != 0, model.isAllChecked());
    }
    void update() {
        std::vector<DWORD> expected = anyData();
        ADWordArray list = toArray(expected);
        tree.updateCheckedData(list);
        model.update(expected);
        EXPECT_EQ(values(list), std::vector<DWORD>(expected.begin(), expected.end()));
    }
    void find() {
        const DWORD data = below(40);
        const PlainItem* expected = model.withData(data);
        EXPECT_EQ(tree.findItemByData(data), expected ? at(model.pathOf(*expected)) : nullptr);
    }

    void operate() {
        struct Operation {
            unsigned weight;
            void (CheckTreeAtRandom::*act)();
        };
        static constexpr Operation kAll[] = {
            {26, &CheckTreeAtRandom::insertAny}, {35, &CheckTreeAtRandom::checkAny},
            {3, &CheckTreeAtRandom::clickAny},   {3, &CheckTreeAtRandom::checkAll},
            {6, &CheckTreeAtRandom::checkMany},  {3, &CheckTreeAtRandom::enable},
            {2, &CheckTreeAtRandom::expand},     {14, &CheckTreeAtRandom::collect},
            {5, &CheckTreeAtRandom::update},     {3, &CheckTreeAtRandom::find}};
        unsigned choice = below(100);
        for (const Operation& operation : kAll) {
            if (choice < operation.weight) {
                (this->*operation.act)();
                break;
            }
            choice -= operation.weight;
        }
        EXPECT_EQ(takeCalls(), std::exchange(model.calls, {}));
        ++compared;
    }
};

}  // namespace

TEST_F(CheckTreeAtRandom, BehavesAsTheRulesTell) {
    installCallback();
    owner.ShowWindow(SW_HIDE);  // the real control takes a millisecond for each visible change
    for (int round = 0; round < kRounds; ++round) {
        random.seed(static_cast<unsigned>(round));
        model = PlainTree();
        tree.EnableWindow(TRUE);
        tree.initImageLists();
        for (int i = 0; i < kOperations; ++i) {
            operate();
            if (i % 50 == 49) {
                EXPECT_EQ(dump(), model.dump());
            }
            if (HasFailure()) FAIL() << "round " << round << ", operation " << i << "\n" << model.dump();
        }
    }
    EXPECT_EQ(compared, kRounds * kOperations);
}
