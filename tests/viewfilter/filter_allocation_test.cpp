// Filters when memory runs out, and where they need none.
#include <new>

#include "support.h"
#include "support/failing_new.h"

using namespace test;

namespace {

struct FilterWithoutMemory : testing::Test {
    Colors colors;
    Condition red = on(colors.red.get());
    Condition green = on(colors.green.get());
    Condition blue = on(colors.blue.get());
    Condition rgb = onClass(_T("ARGBColorItem"));
    AllBut foreign{_T("ARGBColorItem"), nullptr};

    using Start = std::function<void(AViewAttrFilter&)>;
    std::vector<Start> states() {
        return {[](AViewAttrFilter&) {}, [](AViewAttrFilter& filter) { filter.setUniform(0); },
                [&](AViewAttrFilter& filter) { lists(filter, 0); },
                [&](AViewAttrFilter& filter) { lists(filter, 1); }};
    }
    void lists(AViewAttrFilter& filter, BYTE negative) {
        AObArray show;
        AObArray hide;
        show.Add(blue.get());
        show.Add(&foreign);
        hide.Add(red.get());
        hide.Add(rgb.get());
        filter.assign(show, hide, 0, negative);
    }

    // Fails every allocation in turn; a filter that raised is as it was, one that did not has changed.
    void expectAllOrNothing(const std::function<void(AViewAttrFilter&)>& operation) {
        int failures = 0;
        for (const Start& start : states()) {
            for (int n = 1;; ++n) {
                AViewAttrFilter filter;
                start(filter);
                const std::string before = told(&filter);
                bool raised = false;
                bool happened = false;
                {
                    const AllocationFailure failing = failAllocation(n);
                    try {
                        operation(filter);
                    } catch (const std::bad_alloc&) {
                        raised = true;
                    }
                    happened = failing.happened();
                }
                EXPECT_EQ(raised, happened) << before << ", allocation " << n;
                if (raised) {
                    EXPECT_EQ(told(&filter), before) << "allocation " << n;
                }
                failures += raised;
                for (AColorItem* color : {colors.red.get(), colors.green.get(), colors.blue.get()})
                    EXPECT_EQ(filter.isVisible(color), plainlyVisible(filter, color)) << before;
                if (!happened) break;
            }
            EXPECT_EQ(colors.red->getReferenceCount(), 2) << "maker and the test's condition";
            EXPECT_EQ(colors.green->getReferenceCount(), 2);
            EXPECT_EQ(AllBut::alive, 1);
        }
        EXPECT_GT(failures, 0);
    }
};

}  // namespace

TEST_F(FilterWithoutMemory, ShowsAllOrNothing) {
    expectAllOrNothing([&](AViewAttrFilter& filter) { filter.showCondition(green.get()); });
    expectAllOrNothing([&](AViewAttrFilter& filter) { filter.showCondition(red.get()); });
    expectAllOrNothing([&](AViewAttrFilter& filter) { filter.showCondition(rgb.get()); });
    expectAllOrNothing([&](AViewAttrFilter& filter) { filter.showCondition(&foreign); });
}

TEST_F(FilterWithoutMemory, HidesAllOrNothing) {
    expectAllOrNothing([&](AViewAttrFilter& filter) { filter.hideCondition(green.get()); });
    expectAllOrNothing([&](AViewAttrFilter& filter) { filter.hideCondition(blue.get()); });
    expectAllOrNothing([&](AViewAttrFilter& filter) { filter.hideCondition(rgb.get()); });
    expectAllOrNothing([&](AViewAttrFilter& filter) { filter.hideCondition(&foreign); });
}

TEST_F(FilterWithoutMemory, AssignsAllOrNothing) {
    AObArray show;
    AObArray hide;
    for (ACondition* condition : {green.get(), rgb.get(), static_cast<ACondition*>(&foreign)})
        show.Add(condition);
    for (ACondition* condition : {red.get(), blue.get()}) hide.Add(condition);
    expectAllOrNothing([&](AViewAttrFilter& filter) { filter.assign(show, hide, 0, 1); });
    expectAllOrNothing([&](AViewAttrFilter& filter) {
        filter.assign(filter.getHideConditions(), show, 0, 0);
        filter.clearConditions();
    });
}

TEST_F(FilterWithoutMemory, ClonesWholeOrNotAtAll) {
    expectAllOrNothing([&](AViewAttrFilter& filter) {
        const std::unique_ptr<AViewAttrFilter> copy(filter.clone());
        EXPECT_EQ(told(copy.get()), told(&filter));
    });
}

TEST_F(FilterWithoutMemory, NeedsNoneToBecomeUniformOrToBeCleared) {
    AViewAttrFilter filter;
    lists(filter, 0);
    const AllocationFailure failing = failAllocation(1);
    filter.clearConditions();
    filter.setUniform(0);
    filter.setUniform(1);
    EXPECT_FALSE(failing.happened());
}

TEST_F(FilterWithoutMemory, NeedsNoneToAnswer) {
    const WCHAR* const name = _T("a name longer than short ones");
    const auto listed = makeColor(name, RGB(1, 2, 3));
    const auto equal = makeColor(name, RGB(1, 2, 3));
    const auto other = makeColor(name, RGB(1, 2, 4));
    const auto brush = makeSolid(equal.get());
    const auto pen = makePen(other.get());
    const auto gradient = makeGradient(name);
    AViewAttrFilter filter;
    filter.hideCondition(on(listed.get()).get());
    filter.hideCondition(on(gradient.get()).get());
    filter.hideCondition(onClass(_T("AGrayColorItem")).get());
    std::vector<int> answers;
    answers.reserve(8);
    bool happened = false;
    {
        const AllocationFailure failing = failAllocation(1);
        for (AReferItem* item : std::initializer_list<AReferItem*>{listed.get(), equal.get(), other.get(),
                                                                   brush.get(), pen.get(), gradient.get()})
            answers.push_back(filter.isVisible(item));
        happened = failing.happened();
    }
    EXPECT_FALSE(happened);
    EXPECT_EQ(answers, (std::vector<int>{0, 0, 1, 0, 1, 0}));
}
