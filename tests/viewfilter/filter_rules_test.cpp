// What the filter's rules say beyond its states: the table of virtual operations, what each condition is
// asked, what stays in which order.
#include "support.h"
#include "support/virtual_slots.h"

using namespace test;

namespace {

using Asked = std::vector<std::pair<std::string, const ARoot*>>;

// Notes what it is asked about, under its name.
class Note : public ACondition {
public:
    Note(std::string name, Asked& asked, const ARoot* matches = nullptr)
        : ACondition(AString(), nullptr), m_name(std::move(name)), m_asked(asked), m_matches(matches) {}
    Note(const Note&) = default;

    ACondition* clone() const override { return new Note(*this); }
    BOOL isMatch(ARoot* item) const override {
        m_asked.emplace_back(m_name, item);
        return item == m_matches;
    }

private:
    std::string m_name;
    Asked& m_asked;
    const ARoot* m_matches;
};

// Counts how often it is asked for its class, which each condition does first, and for its name.
class Counting : public AColorItem {
public:
    Counting(const WCHAR* className, const WCHAR* name, const Components& components)
        : AColorItem(*findClass(className), name, components, 0) {}
    const AString& getClassName() const override {
        ++classes;
        return AColorItem::getClassName();
    }
    const AString& getName() const override {
        ++names;
        return AColorItem::getName();
    }
    mutable int classes = 0;
    mutable int names = 0;
};

struct FilterRules : testing::Test {
    Colors colors;
    AViewAttrFilter filter;
    Asked asked;

    void list(const std::vector<const ACondition*>& show, const std::vector<const ACondition*>& hide,
              BYTE uniform, BYTE negative) {
        AObArray shown;
        AObArray hidden;
        for (const ACondition* condition : show) shown.Add(const_cast<ACondition*>(condition));
        for (const ACondition* condition : hide) hidden.Add(const_cast<ACondition*>(condition));
        filter.assign(shown, hidden, uniform, negative);
    }
};

}  // namespace

TEST_F(FilterRules, TheVisibilityTestStandsBehindTheDestructorAsInTheHostsClass) {
    // The destructor takes two slots: one that destroys, one that destroys and deletes.
    EXPECT_EQ(slotOf(&AViewFilter::isVisible), 2);
    EXPECT_EQ(slotOf(&AViewAttrFilter::isVisible), 2);
    const int before = AllBut::alive;
    const AllBut counted(_T("ARGBColorItem"), nullptr);
    auto* made = new AViewAttrFilter;
    made->hideCondition(&counted);
    AViewFilter* const base = made;
    EXPECT_EQ(base->isVisible(colors.red.get()), 0);
    delete base;
    EXPECT_EQ(AllBut::alive, before + 1) << "the filter's own destructor ran";
}

TEST_F(FilterRules, AssignTakesShowListHideListUniformAndNegativeInThisOrder) {
    const Condition red = on(colors.red.get());
    const Condition blue = on(colors.blue.get());
    list({red.get()}, {blue.get()}, 0, 1);
    EXPECT_EQ(told(&filter), "negative show: red hide: blue");
    list({red.get()}, {blue.get()}, 1, 0);
    EXPECT_EQ(told(&filter), "all shown");
    list({red.get()}, {blue.get()}, 0, 0);
    EXPECT_EQ(told(&filter), "normal show: red hide: blue");
    list({red.get()}, {blue.get()}, 1, 1);
    EXPECT_EQ(told(&filter), "none shown");
}

TEST_F(FilterRules, AssignDropsWhatTheListsHeldBefore) {
    const int before = AllBut::alive;
    const AllBut counted(_T("ARGBColorItem"), nullptr);
    list({&counted}, {&counted}, 0, 0);
    EXPECT_EQ(AllBut::alive, before + 3);
    list({}, {}, 0, 0);
    EXPECT_EQ(AllBut::alive, before + 1);
    EXPECT_EQ(filter.isVisible(colors.red.get()), 1);
}

TEST_F(FilterRules, EveryConditionIsAskedAboutTheColourOfASolidBrushOrAPen) {
    const auto solid = makeSolid(colors.red.get());
    const auto gradient = makeGradient(_T("glow"));
    const auto pen = makePen(colors.red.get());
    const Held<APenItem> both(new APenItem(APenItem::kStyleSolid, colors.red.get(), gradient.get()));
    for (const BYTE negative : {BYTE{0}, BYTE{1}}) {
        const Note s1("s1", asked);
        const Note s2("s2", asked);
        const Note h1("h1", asked);
        const Note h2("h2", asked);
        list({&s1, &s2}, {&h1, &h2}, 0, negative);
        const ARoot* const red = colors.red.get();
        const Asked expected{{"s1", red}, {"s2", red}, {"h1", red}, {"h2", red}};
        for (AReferItem* item :
             std::initializer_list<AReferItem*>{colors.red.get(), solid.get(), pen.get(), both.get()}) {
            asked.clear();
            EXPECT_EQ(filter.isVisible(item), negative ? 0 : 1);
            EXPECT_EQ(asked, expected) << item->getClassName().toUtf8();
        }
        asked.clear();
        filter.isVisible(gradient.get());
        EXPECT_EQ(asked[0].second, gradient.get()) << "what is not solid stands for itself";
    }
}

TEST_F(FilterRules, TheFirstMatchDecidesAndTheShowListIsAskedFirst) {
    const ARoot* const red = colors.red.get();
    const Note s1("s1", asked);
    const Note s2("s2", asked, red);
    const Note h1("h1", asked, red);
    const Note h2("h2", asked, red);
    list({&s1, &s2}, {&h1, &h2}, 0, 0);
    EXPECT_EQ(filter.isVisible(colors.red.get()), 1);
    EXPECT_EQ(asked, (Asked{{"s1", red}, {"s2", red}}));
    asked.clear();
    list({&s1}, {&h1, &h2}, 0, 0);
    EXPECT_EQ(filter.isVisible(colors.red.get()), 0);
    EXPECT_EQ(asked, (Asked{{"s1", red}, {"h1", red}}));
}

TEST_F(FilterRules, AUniformFilterAsksNoCondition) {
    const Note note("n", asked);
    for (const BYTE negative : {BYTE{0}, BYTE{1}}) {
        list({&note}, {&note}, 1, negative);
        EXPECT_EQ(filter.isVisible(colors.red.get()), negative ? 0 : 1);
        EXPECT_EQ(filter.isVisible(nullptr), negative ? 0 : 1)
            << "the uniform test comes before the null test";
    }
    EXPECT_EQ(asked, Asked());
}

// Conditions leave from the last to the first; all that shows of it is that those that stay, stay in order.
TEST_F(FilterRules, WhatStaysOnTheOtherSideKeepsItsOrder) {
    const Condition red = on(colors.red.get());
    const Condition green = on(colors.green.get());
    const Condition blue = on(colors.blue.get());
    const Condition black = on(colors.black.get());
    const std::vector<const ACondition*> mixed{red.get(),  green.get(), red.get(),
                                               blue.get(), red.get(),   black.get()};
    list({}, mixed, 0, 0);
    filter.showCondition(red.get());
    EXPECT_EQ(told(&filter), "normal show: red hide: green,blue,black");
    list(mixed, {}, 0, 0);
    filter.hideCondition(red.get());
    EXPECT_EQ(told(&filter), "normal show: green,blue,black hide: red");
    list(mixed, {}, 0, 1);
    filter.showCondition(red.get());
    EXPECT_EQ(told(&filter), "negative show: green,blue,black hide: red");
    list({}, mixed, 0, 1);
    filter.hideCondition(red.get());
    EXPECT_EQ(told(&filter), "negative show: red hide: green,blue,black");
}

TEST_F(FilterRules, TheConditionStaysWithTheCallerAndTheFilterHoldsAClone) {
    const int before = AllBut::alive;
    for (const int show : {0, 1}) {
        auto counted = std::make_unique<AllBut>(_T("ARGBColorItem"), nullptr);
        filter.setUniform(!show);
        show ? filter.showCondition(counted.get()) : filter.hideCondition(counted.get());
        EXPECT_EQ(AllBut::alive, before + 2);
        EXPECT_NE(filter.getHideConditions()[0], counted.get());
        counted.reset();
        EXPECT_EQ(filter.isVisible(colors.red.get()), show);
        filter.setUniform(1);
        EXPECT_EQ(AllBut::alive, before);
    }
}

TEST_F(FilterRules, AFlagOfAnyValueButZeroIsSet) {
    const Condition red = on(colors.red.get());
    list({}, {red.get()}, 0, 2);
    EXPECT_EQ(filter.isVisible(colors.red.get()), 1);
    EXPECT_EQ(filter.isVisible(colors.blue.get()), 0);
    AViewAttrFilter same;
    same.setUniform(0);
    same.showCondition(red.get());
    EXPECT_TRUE(filter.isSame(same));
    list({}, {red.get()}, 4, 8);
    EXPECT_EQ(told(&filter), "none shown");
    same.setUniform(0);
    EXPECT_TRUE(filter.isSame(same));
}

// Many swatches of one name, and many names of one tint: whichever they share, few are asked.
TEST_F(FilterRules, ConditionsOnManyColoursAreNotAskedOneByOne) {
    constexpr int kMany = 2000;
    const auto share = [](int i) { return static_cast<float>(i) / kMany; };
    for (int i = 0; i < kMany; ++i) {
        const Held<AColorItem> swatch(
            new AColorItem(*findClass(_T("ARGBColorItem")), _T("swatch"), {share(i), 0, 0, 0}, 0));
        const Held<AColorItem> spot(new AColorItem(*findClass(_T("ASpotColorItem")),
                                                   AString::fromUtf8(std::to_string(i)), {1, 0, 0, 0}, 0));
        filter.hideCondition(on(swatch.get()).get());
        filter.hideCondition(on(spot.get()).get());
    }
    ASSERT_EQ(filter.getHideConditions().GetSize(), 2 * kMany);
    struct Case {
        Held<Counting> item;
        int visible;
    };
    Case cases[] = {
        {Held<Counting>(new Counting(_T("ARGBColorItem"), _T("swatch"), {share(700), 0, 0, 0})), 0},
        {Held<Counting>(new Counting(_T("ARGBColorItem"), _T("swatch"), {share(700), 1, 0, 0})), 1},
        {Held<Counting>(new Counting(_T("ASpotColorItem"), _T("700"), {1, 0, 0, 0})), 0},
        {Held<Counting>(new Counting(_T("ASpotColorItem"), _T("none"), {1, 0, 0, 0})), 1},
    };
    for (const Case& one : cases) {
        EXPECT_EQ(filter.isVisible(one.item.get()), one.visible) << &one - cases;
        EXPECT_LT(one.item->classes, 10) << &one - cases;
    }
}

TEST_F(FilterRules, AListedItemIsFoundWithoutItsName) {
    const Held<Counting> item(new Counting(_T("ARGBColorItem"), _T("swatch"), {}));
    filter.hideCondition(on(item.get()).get());
    item->names = 0;
    EXPECT_EQ(filter.isVisible(item.get()), 0);
    EXPECT_EQ(item->names, 0);
}

namespace {

// Tells its name when it is deleted; clones into itself.
class Telling : public ACondition {
public:
    Telling(std::string name, std::vector<std::string>& deleted)
        : ACondition(AString(), _T("ARGBColorItem")), m_name(std::move(name)), m_deleted(deleted) {}
    Telling(const Telling& source) : ACondition(source), m_name(source.m_name), m_deleted(source.m_deleted) {}
    ~Telling() override { m_deleted.push_back(m_name); }
    ACondition* clone() const override { return new Telling(*this); }

private:
    std::string m_name;
    std::vector<std::string>& m_deleted;
};

}  // namespace

TEST_F(FilterRules, ClearingDeletesTheShowListBeforeTheHideListEachFromItsHead) {
    std::vector<std::string> deleted;
    std::vector<std::unique_ptr<Telling>> made;
    AObArray show;
    AObArray hide;
    std::vector<std::string> expected;
    for (int i = 0; i < 40; ++i) {
        const std::string name = (i < 20 ? "show " : "hide ") + std::to_string(i);
        (i < 20 ? show : hide).Add(made.emplace_back(std::make_unique<Telling>(name, deleted)).get());
        expected.push_back(name);
    }
    filter.assign(show, hide, 0, 0);
    EXPECT_TRUE(deleted.empty());
    filter.clearConditions();
    EXPECT_EQ(deleted, expected);
    filter.assign(show, hide, 0, 1);
    deleted.clear();
    filter.setUniform(1);
    EXPECT_EQ(deleted, expected);
    {
        AViewAttrFilter going;
        going.assign(show, hide, 0, 0);
        deleted.clear();
    }
    EXPECT_EQ(deleted, expected);
}
