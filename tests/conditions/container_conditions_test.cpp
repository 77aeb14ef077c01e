// Effects and layers: what an object satisfies by its containers.
#include <gtest/gtest.h>

#include "conditions/container_conditions.h"
#include "kzcore/document/object.h"
#include "support.h"

using test::cloneOf;
using test::Foreign;
using test::Names;
using test::namesOf;
using test::ofClasses;

namespace {

const AClassInfo& row(const WCHAR* className) {
    return *findClass(className);
}

// Outline over the layer over the shadow over the group over the oval; the fan has no container.
struct Chain : testing::Test {
    AEffect above{row(_T("AInOutline"))};
    ALayer layer{row(_T("AGuideLayer"))};
    AEffect shadow{row(_T("AShadow"))};
    AGroup group{row(_T("AGroup"))};
    AObject oval{row(_T("AOval"))};
    AObject fan{row(_T("AFan"))};
    Foreign foreign{_T("AShadow")};
    AColorItem* color = new AColorItem(row(_T("ARGBColorItem")), _T("red"), {1, 0, 0, 0}, RGB(255, 0, 0));

    Chain() {
        above.appendChild(&layer);
        layer.appendChild(&shadow);
        shadow.appendChild(&group);
        group.appendChild(&oval);
    }
    ~Chain() override { color->releaseReference(); }

    Names acceptedBy(const ACondition& condition) {
        const std::pair<const char*, ARoot*> items[] = {
            {"above", &above}, {"layer", &layer}, {"shadow", &shadow},   {"group", &group}, {"oval", &oval},
            {"fan", &fan},     {"color", color},  {"foreign", &foreign}, {"null", nullptr}};
        Names accepted;
        for (const auto& [name, item] : items) {
            if (condition.isMatch(item)) accepted.emplace_back(name);
        }
        return accepted;
    }
};

using EffectCondition = Chain;
using LayerCondition = Chain;

}  // namespace

TEST_F(EffectCondition, AcceptsWhatIsOfItsClassesAndWhatLiesInsideBelowTheLayer) {
    const std::pair<Names, Names> cases[] = {
        {{"AShadow"}, {"shadow", "group", "oval"}},
        {{"AGroup"}, {"group", "oval"}},
        {{"AOval"}, {"oval"}},
        {{"AFan"}, {"fan"}},
        {{"AInOutline"}, {"above"}},  // never through the layer
        {{"AGuideLayer"}, {}},        // the layer ends the walk before it is asked
        {{"ARGBColorItem"}, {}},      // no object
        {{"ADistort"}, {}},
        {{"ADistort", "AGroup", "AFan"}, {"group", "oval", "fan"}},
        {{"ashadow"}, {}},
        {{""}, {}},
        {{}, {}},
    };
    for (const auto& [classes, accepted] : cases)
        EXPECT_EQ(acceptedBy(*ofClasses<AEffectCondition>(classes)), accepted)
            << testing::PrintToString(classes);
}

TEST_F(EffectCondition, AcceptsAnObjectAtAnyDepth) {
    std::vector<std::unique_ptr<AGroup>> groups;
    AParent* innermost = &shadow;
    for (int depth = 0; depth < 10000; ++depth) {
        groups.push_back(std::make_unique<AGroup>(row(_T("AGroup"))));
        innermost->appendChild(groups.back().get());
        innermost = groups.back().get();
    }
    innermost->appendChild(&fan);
    EXPECT_TRUE(AEffectCondition(_T("Shadow"), _T("AShadow")).isMatch(&fan));
    EXPECT_FALSE(AEffectCondition(_T("Distort"), _T("ADistort")).isMatch(&fan));
}

TEST_F(LayerCondition, AcceptsWhatLiesOnALayerOfItsClassesAndTheLayerItself) {
    const std::pair<Names, Names> cases[] = {
        {{"AGuideLayer"}, {"layer", "shadow", "group", "oval"}},
        {{"ALayer", "AGuideLayer"}, {"layer", "shadow", "group", "oval"}},
        {{"ALayer"}, {}},
        {{"AShadow"}, {}},     // no layer, though it contains the object
        {{"AInOutline"}, {}},  // above the layer
        {{"AFan"}, {}},        // on no layer
        {{"aguidelayer"}, {}},
        {{""}, {}},
        {{}, {}},
    };
    for (const auto& [classes, accepted] : cases)
        EXPECT_EQ(acceptedBy(*ofClasses<ALayerCondition>(classes)), accepted)
            << testing::PrintToString(classes);
}

TEST_F(LayerCondition, TheInnermostLayerCounts) {
    ALayer outer(row(_T("ALayer")));
    outer.appendChild(&above);
    EXPECT_FALSE(ALayerCondition(_T("Drawing"), _T("ALayer")).isMatch(&oval));
    EXPECT_TRUE(ALayerCondition(_T("Guides"), _T("AGuideLayer")).isMatch(&oval));
    EXPECT_TRUE(ALayerCondition(_T("Drawing"), _T("ALayer")).isMatch(&above));
}

TEST_F(LayerCondition, TheTitleIsNotAsked) {
    layer.setTitle(_T("ALayer"));
    EXPECT_FALSE(ALayerCondition(_T("Drawing"), _T("ALayer")).isMatch(&oval));
}

TEST_F(Chain, CopiesOfContainerConditionsMatchAndClonesArePlainEntries) {
    const AEffectCondition effects(_T("Shadow"), _T("AShadow"));
    const ALayerCondition layers(_T("Guides"), _T("AGuideLayer"));
    EXPECT_TRUE(AEffectCondition(effects).isMatch(&oval));
    EXPECT_TRUE(ALayerCondition(layers).isMatch(&oval));
    for (const ACondition* source : std::initializer_list<const ACondition*>{&effects, &layers}) {
        const auto clone = cloneOf(*source);
        EXPECT_EQ(typeid(*clone), typeid(ACondition));
        EXPECT_FALSE(clone->isMatch(&oval));
        EXPECT_EQ(clone->getSerial(), source->getSerial());
        EXPECT_EQ(namesOf(*clone), namesOf(*source));
    }
}
