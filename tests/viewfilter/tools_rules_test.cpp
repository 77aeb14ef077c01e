// What the five tools do towards the host: how often they redraw, end and reset the selection, and what they
// make of the point, of the view and of the item.
#include "support.h"
#include "support/drawing.h"
#include "tools.h"

using namespace test;

namespace {

constexpr const char* kColorTools[] = {"AShowAllExceptTool", "AShowThisTool", "AHideThisTool",
                                       "AHideAllExceptTool"};

bool hides(const std::string& tool) {
    return tool.starts_with("AHide");
}

struct ToolRules : ToolTest {
    // Does the work for every tool, every state and two colours of it.
    template <class Work>
    void forEach(Work work) {
        for (const std::string tool : kTools) {
            for (const State state : kStates) {
                for (const char* name : {"red", "black"}) {
                    set(state);
                    drawing.select({object});
                    SCOPED_TRACE(tool + " on " + name + " from " + told(drawing.view().m_viewFilter));
                    work(tool, state, color(name));
                }
            }
        }
    }
};

// Remembers how many references an item had when the filter was deleted: when a new one is handed over.
struct CountingFilter : AViewFilter {
    CountingFilter(const AReferItem* counted, int& count) : item(counted), references(count) {}
    ~CountingFilter() override { references = item->getReferenceCount(); }
    const AReferItem* item;
    int& references;
};

// Tells when its class is asked for, which is when a condition is made of it.
class Telling : public AColorItem {
public:
    explicit Telling(std::function<void()> tell)
        : AColorItem(*findClass(_T("ARGBColorItem")), _T("telling"), {}, 0), m_tell(std::move(tell)) {}
    const AString& getClassName() const override {
        m_tell();
        return AColorItem::getClassName();
    }

private:
    std::function<void()> m_tell;
};

}  // namespace

TEST_F(ToolRules, ThePointDoesNotMatter) {
    const AFPoint points[] = {AFPoint(0, 0), AFPoint(-1e9, 12345.5)};
    for (const char* name : kColorTools) {
        for (const State state : kStates) {
            std::vector<std::string> left;
            for (const AFPoint& point : points) {
                set(state);
                drawing.select({object});
                const auto tool = make(name);
                EXPECT_EQ(tool->onToolStart(point, color("red")), 1);
                left.push_back(told(drawing.view().m_viewFilter) + " selected " +
                               std::to_string(drawing.selection().getCount()) + " ended " +
                               std::to_string(tool->getEndCount()));
            }
            EXPECT_EQ(left[0], left[1]) << name;
        }
    }
}

TEST_F(ToolRules, RedrawOnceAndEndOnce) {
    forEach([&](const std::string& name, State, AReferItem* item) {
        const unsigned long long redraws = drawing.view().getRedrawCount();
        const auto tool = make(name);
        EXPECT_EQ(tool->getEndCount(), 0);
        EXPECT_EQ(start(*tool, item), 1);
        EXPECT_EQ(tool->getEndCount(), 1);
        EXPECT_EQ(drawing.view().getRedrawCount(), redraws + 1);
        start(*tool, item);
        EXPECT_EQ(tool->getEndCount(), 2) << "each start ends anew: the tool keeps nothing";
        EXPECT_EQ(drawing.view().getRedrawCount(), redraws + 2);
    });
}

TEST_F(ToolRules, ResetTheSelectionOnceOrNotAtAll) {
    forEach([&](const std::string& name, State, AReferItem* item) {
        const unsigned long long revision = drawing.selection().getRevision();
        const unsigned long long redraws = drawing.selection().getRedrawCount();
        start(name, item);
        EXPECT_EQ(drawing.selection().getRevision(), revision + (hides(name) ? 1 : 0));
        EXPECT_EQ(drawing.selection().getRedrawCount(), redraws + (hides(name) ? 1 : 0));
        EXPECT_EQ(drawing.selection().getCount(), hides(name) ? 0 : 1);
    });
}

TEST_F(ToolRules, AStartThatReturns0NeitherRedrawsNorEndsNorResets) {
    drawing.select({object});
    drawing.application.setActiveView(nullptr);
    const unsigned long long redraws = drawing.view().getRedrawCount();
    AHideThisTool tool;
    EXPECT_EQ(tool.onToolStart(AFPoint(), color("red")), 0);
    EXPECT_EQ(tool.getEndCount(), 0);
    EXPECT_EQ(drawing.view().getRedrawCount(), redraws);
    EXPECT_EQ(drawing.selection().getCount(), 1);
}

TEST_F(ToolRules, TheViewsFilterIsOursAfterwardsWhereverAConditionWasListed) {
    forEach([&](const std::string& name, State state, AReferItem* item) {
        start(name, item);
        const bool without = name == "AShowAllTool" || (name == "AShowThisTool" && state == State::none);
        const bool untouched = name == "AShowThisTool" && state == State::foreign;
        EXPECT_EQ(drawing.view().m_viewFilter == nullptr, without);
        EXPECT_EQ(dynamic_cast<AViewAttrFilter*>(drawing.view().m_viewFilter) != nullptr,
                  !without && !untouched);
    });
}

TEST_F(ToolRules, TheViewIsAskedAgainBeforeANewFilterIsHandedOver) {
    for (const char* name : {"AShowAllExceptTool", "AHideThisTool", "AHideAllExceptTool"}) {
        for (const State before : {State::none, State::foreign}) {
            for (const State meanwhile : {State::foreign, State::noneShown}) {
                set(before);
                const AViewFilter* got = nullptr;
                const Held<Telling> item(new Telling([&] {
                    if (got) return;
                    set(meanwhile);
                    got = drawing.view().m_viewFilter;
                }));
                start(name, item.get());
                ASSERT_NE(got, nullptr);
                if (meanwhile == State::noneShown) {
                    EXPECT_EQ(drawing.view().m_viewFilter, got) << name << ": it has one of ours by now";
                    EXPECT_EQ(item->getReferenceCount(), 1) << "and the new one is gone";
                } else {
                    EXPECT_EQ(ForeignFilter::alive, 0) << name << ": it still has one of another class";
                    EXPECT_EQ(ours().getHideConditions().GetSize(), 1);
                }
                drawing.view().setViewFilter(nullptr);
            }
        }
    }
}

TEST_F(ToolRules, TheItemIsHeldByTheFiltersCloneAndByNothingElse) {
    forEach([&](const std::string& name, State state, AReferItem* item) {
        drawing.view().setViewFilter(nullptr);
        const int document = item->getReferenceCount();
        set(state);
        start(name, item);
        int clones = 0;
        if (const auto* left = dynamic_cast<AViewAttrFilter*>(drawing.view().m_viewFilter)) {
            for (const AObArray* conditions : {&left->getShowConditions(), &left->getHideConditions()}) {
                for (const ARoot* element : *conditions)
                    clones += dynamic_cast<const AReferCondition*>(element)->getReferItem() == item;
            }
        }
        EXPECT_LE(clones, 1);
        EXPECT_EQ(item->getReferenceCount(), document + clones);
    });
}

TEST_F(ToolRules, TheConditionHasNoPathTheItemsClassAndTheItem) {
    AColorItem* red = color("red");
    start("AHideThisTool", red);
    const auto* held = dynamic_cast<const AReferCondition*>(ours().getHideConditions()[0]);
    ASSERT_NE(held, nullptr);
    EXPECT_EQ(held->path.toUtf8(), "");
    EXPECT_EQ(namesOf(*held), Names{"ARGBColorItem"});
    EXPECT_EQ(held->getReferItem(), red);
}

TEST_F(ToolRules, TheConditionIsGoneWhenTheFilterIsHandedOver) {
    AColorItem* red = color("red");
    const int document = red->getReferenceCount();
    for (const char* name : {"AShowAllExceptTool", "AHideThisTool", "AHideAllExceptTool"}) {
        int references = 0;
        drawing.view().setViewFilter(new CountingFilter(red, references));
        start(name, red);
        EXPECT_EQ(references, document + 1) << name << ": the filter's own clone and nothing else";
        drawing.view().setViewFilter(nullptr);
    }
}
