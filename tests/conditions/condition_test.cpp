// What all conditions have in common: fields, serials, copies, merging, class names.
#include <gtest/gtest.h>

#include <random>

#include "conditions/container_conditions.h"
#include "conditions/fill_condition.h"
#include "conditions/object_condition.h"
#include "conditions/stroke_condition.h"
#include "support.h"
#include "support/virtual_slots.h"

using test::cloneOf;
using test::Foreign;
using test::Names;
using test::namesOf;
using test::ofClasses;
using test::slotOf;

namespace {

// Before any test, and with it any other condition of this program, is made.
const std::uint64_t firstSerial = ACondition(nullptr, nullptr).getSerial();

// The rule, told as plain loops: append, then compare each entry from the last with all before it.
Names mergedByTheRule(Names names, const Names& others) {
    names.insert(names.end(), others.begin(), others.end());
    for (std::size_t i = names.size(); i-- > 1;) {
        for (std::size_t j = 0; j < i; ++j) {
            if (names[i] == names[j]) {
                names.erase(names.begin() + static_cast<std::ptrdiff_t>(i));
                break;
            }
        }
    }
    return names;
}

}  // namespace

TEST(Condition, ANewOneHasItsPathItsClassAndNoFlags) {
    const ACondition condition(_T("Object/Oval"), _T("AOval"));
    EXPECT_EQ(condition.path.toUtf8(), "Object/Oval");
    EXPECT_EQ(condition.path.getSegmentCount(), 2);
    EXPECT_EQ(namesOf(condition), Names{"AOval"});
    EXPECT_EQ(condition.inDocument, 0);
    EXPECT_EQ(condition.inSelection, 0);
    EXPECT_EQ(condition.treeFlags, 0u);
}

TEST(Condition, ANullClassNameLeavesTheListEmptyAndAnEmptyOneDoesNot) {
    EXPECT_EQ(namesOf(ACondition(_T("a"), nullptr)), Names{});
    EXPECT_EQ(namesOf(ACondition(_T("a"), _T(""))), Names{""});
    EXPECT_TRUE(ACondition(nullptr, nullptr).path.IsEmpty());
}

TEST(Condition, TwoBuiltOneAfterTheOtherHaveSerialsNAndNPlus1) {
    const ACondition first(_T("a"), nullptr);
    const AFillCondition second(_T("b"), nullptr);
    const ACondition third(first);
    const AEffectCondition fourth(_T("c"), nullptr);
    EXPECT_GT(first.getSerial(), 0u);
    EXPECT_EQ(second.getSerial(), first.getSerial() + 1);
    EXPECT_EQ(third.getSerial(), first.getSerial()) << "a copy keeps its source's";
    EXPECT_EQ(fourth.getSerial(), first.getSerial() + 2) << "and consumes none";
}

TEST(Condition, ACopyTakesAllFieldsButTheTreeFlags) {
    auto source = ofClasses({"AOval", "AFan"});
    source->path = AItemPath(_T("a.b"));
    source->path.setSeparator(WCHAR('.'));
    source->inDocument = 1;
    source->inSelection = 1;
    source->treeFlags = kTreeItemExpanded;
    const ACondition copy(*source);
    const std::uint64_t serial = source->getSerial();
    source.reset();
    EXPECT_EQ(copy.getSerial(), serial);
    EXPECT_EQ(namesOf(copy), (Names{"AOval", "AFan"}));
    EXPECT_EQ(copy.path.toUtf8(), "a.b");
    EXPECT_EQ(copy.path.getSeparator(), WCHAR('.'));
    EXPECT_EQ(copy.inDocument, 1);
    EXPECT_EQ(copy.inSelection, 1);
    EXPECT_EQ(copy.treeFlags, 0u);
}

TEST(Condition, ResetReplacesPathAndClassAndClearsInDocumentAlone) {
    ACondition condition(_T("a"), _T("AOval"));
    condition.inDocument = 1;
    condition.inSelection = 1;
    condition.treeFlags = kTreeItemExpanded;
    const std::uint64_t serial = condition.getSerial();
    condition.reset(_T("b/c"), _T("AFan"));
    EXPECT_EQ(condition.path.toUtf8(), "b/c");
    EXPECT_EQ(namesOf(condition), Names{"AFan"});
    EXPECT_EQ(condition.inDocument, 0);
    EXPECT_EQ(condition.inSelection, 1);
    EXPECT_EQ(condition.treeFlags, kTreeItemExpanded);
    EXPECT_EQ(condition.getSerial(), serial);
    condition.reset(_T(""), nullptr);
    EXPECT_EQ(namesOf(condition), Names{});
}

TEST(Condition, ResetTakesItsOwnPathAndClassName) {
    ACondition condition(_T("a path that is longer than short"), _T("AClassNameLongerThanShort"));
    condition.reset(condition.path, condition.getClassNames()[0]);
    EXPECT_EQ(condition.path.toUtf8(), "a path that is longer than short");
    EXPECT_EQ(namesOf(condition), Names{"AClassNameLongerThanShort"});
}

TEST(Condition, ResetGivesThePathTheUsualSeparator) {
    AItemPath dotted(_T("a.b"));
    dotted.setSeparator(WCHAR('.'));
    ACondition condition(_T(""), nullptr);
    condition.reset(dotted, nullptr);
    EXPECT_EQ(condition.path.getSeparator(), AItemPath::kSeparator);
}

TEST(Condition, AssigningTheBaseMakesAKindOfAnEntry) {
    auto entry = ofClasses({"AOval", "AFan"});
    entry->path = AItemPath(_T("Oval"));
    entry->inDocument = 1;
    entry->inSelection = 1;
    entry->treeFlags = kTreeItemExpanded;
    AEffectCondition kind(_T(""), nullptr);
    kind.assignBase(*entry);
    EXPECT_EQ(kind.getSerial(), entry->getSerial());
    EXPECT_EQ(namesOf(kind), namesOf(*entry));
    EXPECT_EQ(kind.path.toUtf8(), "Oval");
    EXPECT_EQ(kind.inDocument, 1);
    EXPECT_EQ(kind.inSelection, 1);
    EXPECT_EQ(kind.treeFlags, 0u);
    kind.assignBase(kind);
    EXPECT_EQ(namesOf(kind), namesOf(*entry));
}

TEST(Condition, APlainOneMatchesNothing) {
    ACondition condition(_T("Oval"), _T("AOval"));
    Foreign oval(_T("AOval"));
    EXPECT_FALSE(condition.isMatch(&oval));
    EXPECT_FALSE(condition.isMatch(nullptr));
}

TEST(Condition, HasClassComparesWholeNamesWithTheirCase) {
    const auto condition = ofClasses({"AOval", "ALabel2"});
    EXPECT_TRUE(condition->hasClass(_T("AOval")));
    EXPECT_TRUE(condition->hasClass(AString(_T("ALabel2"))));
    for (const WCHAR* other : {_T("aoval"), _T("AOva"), _T("AOval2"), _T("ALabel"), _T("")}) {
        EXPECT_FALSE(condition->hasClass(other)) << AString(other).toUtf8();
        EXPECT_FALSE(condition->hasClass(AString(other))) << AString(other).toUtf8();
    }
}

TEST(Condition, HasClassOfAnEmptyListAndOfNullIsFalse) {
    EXPECT_FALSE(ACondition(_T("a"), nullptr).hasClass(_T("")));
    const ACondition unnamed(_T("a"), _T(""));
    EXPECT_TRUE(unnamed.hasClass(_T("")));
    EXPECT_FALSE(unnamed.hasClass(static_cast<const WCHAR*>(nullptr)));
}

TEST(Condition, HasCommonClassLooksForOneNameOfBoth) {
    const auto some = ofClasses({"AOval", "AFan"});
    EXPECT_TRUE(some->hasCommonClass(*ofClasses({"AText", "AFan"})));
    EXPECT_FALSE(some->hasCommonClass(*ofClasses({"AText", "afan"})));
    EXPECT_FALSE(some->hasCommonClass(*ofClasses({})));
    EXPECT_FALSE(ofClasses({})->hasCommonClass(*some));
    EXPECT_FALSE(ofClasses({})->hasCommonClass(*ofClasses({}))) << "two empty lists have nothing in common";
}

TEST(Condition, MergingLeavesEachNameOnceInTheOrderOfFirstOccurrence) {
    auto condition = ofClasses({"AOval", "AFan"});
    condition->merge(*ofClasses({"AText", "AFan", "AOval", "AArrow"}));
    EXPECT_EQ(namesOf(*condition), (Names{"AOval", "AFan", "AText", "AArrow"}));
    condition->merge(*ofClasses({"aoval"}));
    EXPECT_EQ(namesOf(*condition), (Names{"AOval", "AFan", "AText", "AArrow", "aoval"}));
    condition->merge(*condition);
    EXPECT_EQ(namesOf(*condition), (Names{"AOval", "AFan", "AText", "AArrow", "aoval"}));
}

TEST(Condition, MergingOrsEachFlagAndGivesTheNewInDocument) {
    struct Row {
        int mine, others, both;
    };
    for (const Row row :
         {Row{0, 0, 0}, Row{0, 1, 1}, Row{1, 0, 1}, Row{1, 1, 1}, Row{0, 7, 1}, Row{-1, 0, 1}}) {
        for (const bool selection : {false, true}) {
            ACondition condition(_T("a"), nullptr);
            ACondition other(_T("a"), nullptr);
            int ACondition::*const flag = selection ? &ACondition::inSelection : &ACondition::inDocument;
            int ACondition::*const still = selection ? &ACondition::inDocument : &ACondition::inSelection;
            condition.*flag = row.mine;
            other.*flag = row.others;
            EXPECT_EQ(condition.merge(other), selection ? 0 : row.both);
            EXPECT_EQ(condition.*flag, row.both) << row.mine << row.others;
            EXPECT_EQ(condition.*still, 0);
        }
    }
}

TEST(Condition, MergingKeepsPathSerialTreeFlagsAndTheKindsOwnFields) {
    AObjectCondition condition(_T("a"), _T("AOval"));
    condition.expectedId = 7;
    condition.treeFlags = kTreeItemExpanded;
    const std::uint64_t serial = condition.getSerial();
    AObjectCondition other(_T("b"), _T("AFan"));
    other.expectedId = 8;
    condition.merge(other);
    EXPECT_EQ(condition.path.toUtf8(), "a");
    EXPECT_EQ(condition.getSerial(), serial);
    EXPECT_EQ(condition.treeFlags, kTreeItemExpanded);
    EXPECT_EQ(condition.expectedId, 7u);
}

TEST(Condition, MergingRandomListsFollowsThePlainLoops) {
    std::mt19937 random(20);
    const Names pool{"AOval", "aoval", "AFan", "AText", "", "ALabel", "ALabel2", "ABitmap"};
    const auto draw = [&] {
        Names names;
        for (unsigned left = random() % 9; left > 0; --left) names.push_back(pool[random() % pool.size()]);
        return names;
    };
    for (int round = 0; round < 2000; ++round) {
        const Names first = draw();
        const Names second = draw();
        auto condition = ofClasses(first);
        EXPECT_EQ(namesOf(*condition), mergedByTheRule(first, {}));
        condition->merge(*ofClasses(second));
        EXPECT_EQ(namesOf(*condition), mergedByTheRule(first, second));
        const Names unique = mergedByTheRule(first, {});
        bool common = false;
        for (const std::string& name : unique)
            common = common || std::find(second.begin(), second.end(), name) != second.end();
        EXPECT_EQ(ofClasses(first)->hasCommonClass(*ofClasses(second)) != 0, common);
    }
}

TEST(Condition, TheFirstOfAProcessHasSerial1) {
    EXPECT_EQ(firstSerial, 1u);
}

TEST(Condition, ItsOperationsStandBehindThoseOfTheRootInTheStatedOrder) {
    const std::ptrdiff_t slots[] = {slotOf(&ACondition::clone), slotOf(&ACondition::isMatch),
                                    slotOf(&ACondition::addToTree), slotOf(&ACondition::merge),
                                    slotOf(&ACondition::hasCommonClass)};
    std::ptrdiff_t expected = slotOf(&ARoot::shouldConvertToOutline) + 1;
    for (const std::ptrdiff_t slot : slots) EXPECT_EQ(slot, expected++);
}
