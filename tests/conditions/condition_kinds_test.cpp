// What holds for every kind of condition alike.
#include <gtest/gtest.h>

#include <functional>

#include "conditions/container_conditions.h"
#include "conditions/fill_condition.h"
#include "conditions/object_condition.h"
#include "conditions/refer_condition.h"
#include "conditions/stroke_condition.h"
#include "kzutil/archive.h"
#include "support.h"
#include "support/virtual_slots.h"

using test::makeColor;
using test::makeSolid;
using test::Names;
using test::namesOf;
using test::slotOf;

// Declared by the framework only; nobody looks into them.
class CArchive {};
class CDumpContext {};

namespace {

struct Items {
    test::Held<AColorItem> red = makeColor(_T("red"), RGB(255, 0, 0));
    test::Held<ASolidBrushItem> brush = makeSolid(red.get());
};

using Made = std::unique_ptr<ACondition>;

// A constructor, and the class that it is of.
struct Constructor {
    const char* name;
    const std::type_info& type;
    Made (*make)(const Items& items);
};

const Constructor kConstructors[] = {
    {"Plain", typeid(ACondition),
     [](const Items&) -> Made { return std::make_unique<ACondition>(_T("a/b"), _T("AOval")); }},
    {"Object", typeid(AObjectCondition),
     [](const Items&) -> Made { return std::make_unique<AObjectCondition>(_T("a/b"), _T("AOval")); }},
    {"Effect", typeid(AEffectCondition),
     [](const Items&) -> Made { return std::make_unique<AEffectCondition>(_T("a/b"), _T("AOval")); }},
    {"Layer", typeid(ALayerCondition),
     [](const Items&) -> Made { return std::make_unique<ALayerCondition>(_T("a/b"), _T("AOval")); }},
    {"Fill", typeid(AFillCondition),
     [](const Items& items) -> Made {
         return std::make_unique<AFillCondition>(_T("a/b"), items.brush.get());
     }},
    {"NoFill", typeid(AFillCondition),
     [](const Items&) -> Made { return std::make_unique<AFillCondition>(_T("a/b"), nullptr); }},
    {"Stroke", typeid(AStrokeCondition),
     [](const Items& items) -> Made {
         return std::make_unique<AStrokeCondition>(_T("a/b"), _T("APenItem"), items.red.get());
     }},
    {"ReferToItem", typeid(AReferCondition),
     [](const Items& items) -> Made {
         return std::make_unique<AReferCondition>(_T("a/b"), items.red.get());
     }},
    {"ReferToClass", typeid(AReferCondition),
     [](const Items&) -> Made { return std::make_unique<AReferCondition>(_T("a/b"), _T("AOval")); }},
};

struct EveryKind : testing::TestWithParam<Constructor> {
    Items items;
    Made make() { return GetParam().make(items); }
};

// All fields of the base, and those of a kind as far as they show.
std::string stateOf(const ACondition& condition) {
    std::string state = condition.path.toUtf8() + ' ' + std::to_string(condition.getSerial()) + ' ' +
                        std::to_string(condition.inDocument) + std::to_string(condition.inSelection) +
                        std::to_string(condition.treeFlags);
    for (const std::string& name : namesOf(condition)) state += ' ' + name;
    return state;
}

}  // namespace

TEST_P(EveryKind, HasTheNextSerialNoFlagsAndItsPath) {
    const Made first = make();
    const Made second = make();
    EXPECT_EQ(second->getSerial(), first->getSerial() + 1);
    EXPECT_EQ(ACondition(nullptr, nullptr).getSerial(), first->getSerial() + 2);
    EXPECT_EQ(typeid(*first), GetParam().type);
    EXPECT_EQ(first->path.toUtf8(), "a/b");
    EXPECT_EQ(first->inDocument, 0);
    EXPECT_EQ(first->inSelection, 0);
    EXPECT_EQ(first->treeFlags, 0u);
}

TEST_P(EveryKind, AnswersAsARootThatRegistersNoClass) {
    const Made condition = make();
    const ARoot root;
    EXPECT_EQ(condition->getClassName(), root.getClassName());
    EXPECT_EQ(condition->getDisplayNameID(), root.getDisplayNameID());
    EXPECT_EQ(condition->getDisplayIconID(), root.getDisplayIconID());
    EXPECT_EQ(condition->getVersion(), root.getVersion());
    EXPECT_EQ(condition->GetRuntimeClass(), root.GetRuntimeClass());
    EXPECT_EQ(condition->createInstance(), nullptr);
    EXPECT_EQ(condition->deepCopy(), nullptr);
    EXPECT_EQ(condition->convertToOutline(), nullptr);
    EXPECT_EQ(condition->shouldConvertToOutline(), root.shouldConvertToOutline());
}

TEST_P(EveryKind, DoesNothingWhenSerializedValidatedOrDumped) {
    const Made condition = make();
    const std::string before = stateOf(*condition);
    CArchive archive;
    CDumpContext context;
    condition->Serialize(archive);
    condition->AssertValid();
    condition->Dump(context);
    EXPECT_EQ(stateOf(*condition), before);
}

TEST_P(EveryKind, WritesToAnArchiveWhatARootWritesAndReadsNothingOfItsOwn) {
    const Made condition = make();
    AArchive ofCondition;
    AArchive ofRoot;
    EXPECT_EQ(condition->orbiSerialize(ofCondition), 1);
    EXPECT_EQ(ARoot().orbiSerialize(ofRoot), 1);
    const std::vector<BYTE> bytes = ofCondition.takeBytes();
    EXPECT_EQ(bytes, ofRoot.takeBytes());
    const Made reader = make();
    const std::string before = stateOf(*reader);
    AArchive in(bytes);
    EXPECT_EQ(reader->orbiSerialize(in), 1);
    EXPECT_EQ(in.getError(), "");
    EXPECT_EQ(stateOf(*reader), before);
}

TEST_P(EveryKind, ClonesIntoAnEntryThatIsAPredicateForReferencesAlone) {
    const Made source = make();
    source->inDocument = 1;
    source->inSelection = 1;
    const Made clone = test::cloneOf(*source);
    const bool refers = GetParam().type == typeid(AReferCondition);
    EXPECT_EQ(typeid(*clone), refers ? typeid(AReferCondition) : typeid(ACondition));
    EXPECT_EQ(stateOf(*clone), stateOf(*source));
    const std::uint64_t last = ACondition(nullptr, nullptr).getSerial();
    EXPECT_EQ(last, source->getSerial() + (refers ? 2 : 1)) << "only a reference's clone consumes a serial";
}

INSTANTIATE_TEST_SUITE_P(Conditions, EveryKind, testing::ValuesIn(kConstructors),
                         [](const auto& kind) { return std::string(kind.param.name); });

// Overriding moves no slot: each kind's own operations stand where the base's do.
TEST(ConditionSlots, OwnOperationsStandWhereTheBasesStand) {
    const std::ptrdiff_t isMatch = slotOf(&ACondition::isMatch);
    for (const std::ptrdiff_t slot : {slotOf(&AObjectCondition::isMatch), slotOf(&AEffectCondition::isMatch),
                                      slotOf(&ALayerCondition::isMatch), slotOf(&AFillCondition::isMatch),
                                      slotOf(&AStrokeCondition::isMatch), slotOf(&AReferCondition::isMatch)})
        EXPECT_EQ(slot, isMatch);
    const std::ptrdiff_t addToTree = slotOf(&ACondition::addToTree);
    for (const std::ptrdiff_t slot :
         {slotOf(&AObjectCondition::addToTree), slotOf(&AFillCondition::addToTree),
          slotOf(&AStrokeCondition::addToTree), slotOf(&AReferCondition::addToTree)})
        EXPECT_EQ(slot, addToTree);
    EXPECT_EQ(slotOf(&AReferCondition::clone), slotOf(&ACondition::clone));
    EXPECT_EQ(slotOf(&AFillCondition::hasCommonClass), slotOf(&ACondition::hasCommonClass));
    EXPECT_EQ(slotOf(&AReferCondition::hasCommonClass), slotOf(&ACondition::hasCommonClass));
}

TEST(ConditionFields, StandInTheOrderInWhichTheyAreDeclared) {
    const ACondition condition(_T(""), nullptr);
    const void* const fields[] = {&condition,           &condition.inDocument, &condition.inSelection,
                                  &condition.treeFlags, &condition.path,       &condition.getClassNames()};
    for (std::size_t i = 1; i < std::size(fields); ++i) EXPECT_LT(fields[i - 1], fields[i]) << i;
    const auto distance = reinterpret_cast<const char*>(&condition.treeFlags) -
                          reinterpret_cast<const char*>(&condition.inSelection);
    EXPECT_GE(distance, static_cast<std::ptrdiff_t>(sizeof(int) + sizeof(std::uint64_t)))
        << "the serial stands between them";
}
