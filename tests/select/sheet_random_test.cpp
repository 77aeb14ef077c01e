// Random clicks in the sheet against a plain model of every page: what is ticked, greyed, listed, and what OK
// selects in the end.
#include <algorithm>

#include "checktree/plain_model.h"
#include "conditions/class_tables.h"
#include "kzcore/tool/tool_runner.h"
#include "kzutil/message_box.h"
#include "plain_rules.h"
#include "platform/driver/driver.h"
#include "scene.h"
#include "select/select_by_attr_tool.h"

using driver::Dialog;
using test::Names;
using test::PlainTree;

namespace {

// The moves that order a page, one by one.
void sortByTheMoves(std::vector<std::unique_ptr<ACondition>>& list) {
    for (std::size_t k = kObjectClasses.size(); k-- > 0;) {
        for (std::size_t i = 0; i < list.size(); ++i) {
            const AStringArray& classes = list[i]->getClassNames();
            const auto at = list.begin() + static_cast<std::ptrdiff_t>(i);
            if (classes.IsEmpty() || classes[0] == kObjectClasses[k]) std::rotate(list.begin(), at, at + 1);
        }
    }
}

struct PageModel {
    std::unique_ptr<plain::Page> page;
    PlainTree tree;
    std::vector<DWORD> remembered;
    bool wasShown = false;
    bool showAll = false;
    bool allTypes = false;

    void fill(bool selectionOnly) {
        tree.update(remembered);
        PlainTree fresh;
        fresh.enabled = tree.enabled;
        tree = std::move(fresh);
        for (const auto& one : page->conditions) {
            if (showAll || (selectionOnly ? one->inSelection : one->inDocument))
                tree.insert(one->path.toUtf8(), static_cast<DWORD>(one->getSerial()));
        }
        if (tree.enabled)
            tree.setChecks(remembered, true, nullptr);
        else
            tree.setAllChecks(true);
    }
    void show(bool selectionOnly) {
        if (wasShown) return;
        wasShown = true;
        fill(selectionOnly);
    }
    void toggleAllTypes() {
        allTypes = !allTypes;
        if (allTypes) tree.update(remembered);
        tree.enable(!allTypes);
        if (allTypes)
            tree.setAllChecks(true);
        else
            tree.setChecks(remembered, true, nullptr);
    }
    void appendTicked(std::vector<ACondition*>& conditions) const {
        const std::vector<DWORD> data = wasShown ? tree.collect(3, true) : std::vector<DWORD>();
        for (const auto& one : page->conditions) {
            if (allTypes || std::ranges::find(data, one->getSerial()) != data.end())
                conditions.push_back(one.get());
        }
    }
};

class Model {
public:
    explicit Model(const ADocView& view) : m_gathered(plain::gather(view)) {
        plain::Pages pages = plain::createPages();
        plain::fillPages(pages, m_gathered);
        for (const WCHAR* category : kCategories) {
            for (auto& page : pages) {
                if (!page || page->category != category) continue;
                sortByTheMoves(page->conditions);
                m_pages.emplace_back();
                m_pages.back().page = std::move(page);
            }
        }
        m_pages[0].show(false);
    }

    std::vector<PageModel>& pages() { return m_pages; }
    PageModel& page() { return m_pages[m_active]; }

    void turnTo(std::size_t page) {
        m_active = page;
        m_pages[page].show(selectionOnly);
    }
    void toggleSelectionOnly() {
        selectionOnly = !selectionOnly;
        for (PageModel& one : m_pages) {
            if (one.wasShown) one.fill(selectionOnly);
        }
    }
    // The names of what OK selects, sorted.
    Names selects() const {
        std::vector<ACondition*> conditions;
        for (const PageModel& one : m_pages) one.appendTicked(conditions);
        std::erase_if(conditions, [](ACondition* one) { return typeid(*one) == typeid(ACondition); });
        if (conditions.empty()) return {};
        std::vector<AObject*> candidates = m_gathered.candidates;
        if (selectionOnly)
            std::erase_if(candidates, [this](AObject* object) {
                return std::ranges::find(m_gathered.selected, object) == m_gathered.selected.end();
            });
        Names names;
        for (const AObject* object : plain::match(conditions, candidates))
            names.push_back(std::string(object->getNameUtf8()));
        std::ranges::sort(names);
        return names;
    }

    bool selectionOnly = false;

private:
    plain::Gathered m_gathered;
    std::vector<PageModel> m_pages;
    std::size_t m_active = 0;
};

void dump(const std::vector<driver::TreeItem>& items, const std::string& indent, std::string& lines) {
    for (const driver::TreeItem& item : items) {
        lines += indent + item.text + " " + std::to_string(item.check) + "\n";
        dump(item.children, indent + "  ", lines);
    }
}

std::string shown(const Dialog& sheet) {
    std::string lines;
    dump(sheet.tree(), "", lines);
    return lines;
}

std::string shown(PageModel& page) {
    std::string lines;
    for (const test::PlainItem* item : page.tree.items()) {
        const std::string path = page.tree.pathOf(*item);
        const auto depth = static_cast<std::size_t>(std::count(path.begin(), path.end(), '/'));
        lines += std::string(2 * depth, ' ') + item->text + " " +
                 std::to_string(item->check + (page.tree.enabled ? 0 : 1)) + "\n";
    }
    return lines;
}

class Clicks {
public:
    explicit Clicks(unsigned seed, Model& model) : m_random(seed), m_model(model) {}

    // What was done, for messages.
    std::string log;

    void one(Dialog& sheet) {
        switch (m_random() % 8) {
            case 0:
                return turn(sheet);
            case 1:
                return press(sheet, "Show all");
            case 2:
                return press(sheet, "All types");
            case 3:
                if (sheetHasSelection) return press(sheet, "Selection only");
                [[fallthrough]];
            default:
                return click(sheet);
        }
    }

    bool sheetHasSelection = false;

private:
    void turn(Dialog& sheet) {
        const std::size_t page = m_random() % m_model.pages().size();
        sheet.page(m_model.pages()[page].page->category.toUtf8());
        m_model.turnTo(page);
        log += "page " + m_model.page().page->category.toUtf8() + "\n";
    }
    void press(Dialog& sheet, const std::string& box) {
        sheet.press(box);
        log += box + "\n";
        PageModel& page = m_model.page();
        if (box == "Selection only") {
            m_model.toggleSelectionOnly();
        } else if (box == "All types") {
            page.toggleAllTypes();
        } else {
            page.showAll = !page.showAll;
            page.fill(m_model.selectionOnly);
        }
    }
    void click(Dialog& sheet) {
        PageModel& page = m_model.page();
        const std::vector<test::PlainItem*> items = page.tree.items();
        if (items.empty() || !page.tree.enabled) return turn(sheet);
        test::PlainItem& item = *items[m_random() % items.size()];
        const std::string path = page.tree.pathOf(item);
        sheet.click(path);
        page.tree.click(item);
        log += "click " + path + "\n";
    }

    std::mt19937 m_random;
    Model& m_model;
};

}  // namespace

TEST(SheetRandom, ClicksFollowThePlainModel) {
    for (unsigned seed = 0; seed < 25; ++seed) {
        test::RandomScene scene(5000 + seed, 30);
        // A fill without a name is called by a serial, which the model's entry does not share.
        for (AObject* object : scene.objects) {
            const ABrush* brush = object->getBrush();
            if (brush && brush->getBrushItem() && brush->getBrushItem()->getName().IsEmpty() &&
                !dynamic_cast<const ASolidBrushItem*>(brush->getBrushItem()))
                object->setBrush(nullptr);
        }
        ASelectByAttrTool tool;
        if (!tool.isValid()) continue;
        Model model(scene.view);
        Clicks clicks(seed, model);
        clicks.sheetHasSelection = scene.view.m_selection->getCount() > 0;
        const auto act = [&](Dialog& sheet) {
            ASSERT_EQ(shown(sheet), shown(model.page())) << seed;
            for (int i = 0; i < 40; ++i) {
                clicks.one(sheet);
                ASSERT_EQ(shown(sheet), shown(model.page())) << seed << "\n" << clicks.log;
            }
        };
        driver::Driver user({[&](Dialog& sheet) {
            act(sheet);
            sheet.press("OK");
        }});
        std::string error;
        ASSERT_EQ(runTool(tool, nullptr, error), AToolOutcome::done) << error;
        Names selected = scene.selected();
        std::ranges::sort(selected);
        ASSERT_EQ(selected, model.selects()) << seed << "\n" << clicks.log;
        takeKeptMessages();
    }
}

// Collecting the ticks climbs one level only; in the order of the host's classes nothing follows a branch
// that is deeper.
TEST(SheetRandom, NoTickOfAFillPageIsLost) {
    test::Scene scene;
    ALayer* layer = scene.layer();
    APaintTable& paint = scene.document.getPaint();
    scene.add(layer, _T("AOval"), "none");
    scene.add(layer, _T("AOval"), "g")->setBrush(paint.gradientBrush("g"));
    scene.add(layer, _T("AOval"), "p")->setBrush(paint.patternBrush("p"));
    scene.filled(layer, _T("AOval"), 0xff0000, "red");
    scene.filled(layer, _T("AOval"), 0x0000ff, "blue");
    scene.add(layer, _T("AOval"), "spot")
        ->setBrush(paint.solidBrush(
            paint.color(*findClass(_T("ASpotColorItem")), "Signal", {1, 0, 0, 0}, 0x00ff00)));
    const std::pair<const char*, const char*> leaves[] = {
        {"none", "No fill"},
        {"g", "Gradient/g"},
        {"p", "Pattern/p"},
        {"red", "Solid/RGB Color/red"},
        {"blue", "Solid/RGB Color/blue"},
        {"spot", "Solid/Spot Color/Signal"},
    };
    for (unsigned subset = 1; subset < 1u << std::size(leaves); ++subset) {
        ASelectByAttrTool tool;
        Names expected;
        driver::Driver user({[&](Dialog& sheet) {
            sheet.page("Fill");
            for (std::size_t i = 0; i < std::size(leaves); ++i) {
                if (!(subset >> i & 1)) continue;
                sheet.check(leaves[i].second);
                expected.push_back(leaves[i].first);
            }
            sheet.press("OK");
        }});
        std::string error;
        ASSERT_EQ(runTool(tool, nullptr, error), AToolOutcome::done) << error;
        EXPECT_EQ(scene.selected(), expected) << subset;
    }
}
