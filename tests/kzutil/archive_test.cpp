// Storing and loading as classes and hosts do it.
#include <gtest/gtest.h>

#include <limits>
#include <memory>
#include <stdexcept>

#include "tests/kzutil/text_printing.h"
#include "tests/support/archive_node.h"

namespace {

using Object = std::unique_ptr<ARoot>;

class Archive : public testing::Test {
protected:
    Archive() { ATestNode::registerClass(); }
};

ATestNode* nodeIn(const Object& object) {
    return dynamic_cast<ATestNode*>(object.get());
}

Object node(int number, const WCHAR* text = _T("")) {
    auto made = std::make_unique<ATestNode>();
    made->number = number;
    made->text = text;
    return made;
}

Bytes stored(std::initializer_list<const ARoot*> objects) {
    AArchive archive;
    for (const ARoot* object : objects) archive.orbiWriteObject(object);
    EXPECT_EQ(archive.getError(), "");
    return archive.takeBytes();
}

TEST_F(Archive, GivesBackWhatWasStored) {
    const int numbers[] = {0, 1, -1, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()};
    const AString texts[] = {AString(), AString(_T("plain")), AString(_T("Gr\u00fc\u00dfe \U0001f600")),
                             AString(kzutil::WideView(_T("a\0b"), 3)),
                             AString(kzutil::WideString(1, WCHAR(0xd800)))};  // a lone surrogate
    AArchive out;
    for (const int number : numbers) out << number;
    for (const AString& text : texts) out << text;
    AArchive in(out.takeBytes());
    EXPECT_TRUE(in.isLoading());
    EXPECT_EQ(in.getMode() & 1u, 1u);
    for (const int number : numbers) {
        int read = 77;
        in >> read;
        EXPECT_EQ(read, number);
    }
    for (const AString& text : texts) {
        AString read(_T("before"));
        in >> read;
        EXPECT_EQ(read, text);
    }
    EXPECT_EQ(in.getError(), "");
}

TEST_F(Archive, GivesBackObjectsWithinObjects) {
    auto outer = node(1, _T("outer"));
    nodeIn(outer)->child = node(2, _T("inner"));
    AArchive in(stored({outer.get()}));
    const Object read(in.orbiReadObject());
    ASSERT_TRUE(nodeIn(read)) << in.getError();
    EXPECT_EQ(nodeIn(read)->number, 1);
    EXPECT_EQ(nodeIn(read)->text, _T("outer"));
    ASSERT_TRUE(nodeIn(nodeIn(read)->child));
    EXPECT_EQ(nodeIn(nodeIn(read)->child)->text, _T("inner"));
    EXPECT_EQ(nodeIn(nodeIn(read)->child)->child, nullptr);
    EXPECT_EQ(in.getError(), "");
}

TEST_F(Archive, GivesNullForNullAndGoesOn) {
    const auto last = node(3);
    AArchive in(stored({nullptr, last.get()}));
    EXPECT_EQ(in.orbiReadObject(), nullptr);
    EXPECT_EQ(in.getError(), "");
    const Object read(in.orbiReadObject());
    ASSERT_TRUE(nodeIn(read));
    EXPECT_EQ(nodeIn(read)->number, 3);
}

TEST_F(Archive, SkipsObjectsOfUnknownClassesWithoutAnError) {
    auto unknown = node(1, _T("text"));
    nodeIn(unknown)->child = node(2);
    Bytes content;
    const Bytes known = contentOf(stored({unknown.get()}));
    appendText(content, AString(_T("ANobodyKnowsMe")));
    appendNumber(content, known.size(), 8);
    content.insert(content.end(), known.begin(), known.end());
    content.insert(content.end(), known.begin(), known.end());

    AArchive in(sealed(content));
    EXPECT_EQ(in.orbiReadObject(), nullptr);
    EXPECT_EQ(in.getError(), "");
    const Object read(in.orbiReadObject());
    ASSERT_TRUE(nodeIn(read));
    EXPECT_EQ(nodeIn(read)->text, _T("text"));
    EXPECT_EQ(in.getError(), "");
}

TEST_F(Archive, ForgetsAClassThatIsTakenOut) {
    const auto object = node(1);
    registerArchiveClass(object->getClassName(), nullptr);
    AArchive in(stored({object.get()}));
    EXPECT_EQ(in.orbiReadObject(), nullptr);
    EXPECT_EQ(in.getError(), "");
    ATestNode::registerClass();
    AArchive again(stored({object.get()}));
    EXPECT_TRUE(Object(again.orbiReadObject()));
}

TEST_F(Archive, SkipsAtARecordsEndWhatWasNotRead) {
    AArchive out;
    out.TagStart();
    out.Tag(0);
    out << 1;
    out.Tag(9);  // a later version's
    out << AString(_T("more")) << 2;
    out.TagEnd();
    out << 3;
    AArchive in(out.takeBytes());
    int first = 0, behind = 0;
    in.TagStart();
    in.Tag(0);
    in >> first;
    in.TagEnd();
    in >> behind;
    EXPECT_EQ(first, 1);
    EXPECT_EQ(behind, 3);
    EXPECT_EQ(in.getError(), "");
}

TEST_F(Archive, HasTheLayoutThatIsWrittenDown) {
    AArchive out;
    out << 0x01020304;
    out.TagStart();
    out.Tag(7);
    out << AString(_T("\u00e9"));
    out.TagEnd();
    out.orbiWriteObject(nullptr);
    const Bytes expected = {4,  3, 2, 1,                          // number
                            11, 0, 0, 0, 0, 0, 0, 0,              // record
                            7,  1, 0, 0, 0, 0, 0, 0, 0, 0xe9, 0,  // tag, text
                            0,  0, 0, 0, 0, 0, 0, 0};             // null
    EXPECT_EQ(out.takeBytes(), sealed(expected));
}

TEST_F(Archive, IsEmptyAfterItsBytesWereTaken) {
    AArchive out;
    out << 1;
    EXPECT_NE(out.takeBytes(), sealed({}));
    EXPECT_EQ(out.takeBytes(), sealed({}));
    out << 2;
    AArchive in(out.takeBytes());
    int read = 0;
    in >> read;
    EXPECT_EQ(read, 2);
}

// Classes that break the rules on both ways, each in its own.
template <int behaviour>
class AOddNode : public ARoot {
public:
    const AString& getClassName() const override {
        static const AString name(AString(_T("AOddNode")) + static_cast<WCHAR>('0' + behaviour));
        return name;
    }
    int orbiSerialize(AArchive& archive) override;
    static void registerClass() {
        registerArchiveClass(AOddNode().getClassName(), []() -> ARoot* { return new AOddNode; });
    }
};

using AQuitter = AOddNode<0>;     // returns 0 with two records open
using AForgetter = AOddNode<1>;   // returns 1 with two records open
using AOverEager = AOddNode<2>;   // ends a record that is not its own
using AUnreadable = AOddNode<3>;  // is stored, but cannot be read
using AThrower = AOddNode<4>;     // throws

template <>
int AQuitter::orbiSerialize(AArchive& archive) {
    archive.TagStart();
    archive.Tag(0);
    archive.TagStart();
    return 0;
}

template <>
int AForgetter::orbiSerialize(AArchive& archive) {
    archive.TagStart();
    archive.Tag(0);
    archive.TagStart();
    archive.Tag(1);
    return 1;
}

template <>
int AOverEager::orbiSerialize(AArchive& archive) {
    archive.TagEnd();
    return 1;
}

template <>
int AUnreadable::orbiSerialize(AArchive& archive) {
    archive.TagStart();
    archive.Tag(0);
    if (archive.isLoading()) return 0;
    archive.TagEnd();
    return 1;
}

template <>
int AThrower::orbiSerialize(AArchive& archive) {
    archive.TagStart();
    archive.TagStart();
    throw std::runtime_error("thrown by a class");
}

// Stores, in a record, this object and a node behind it, and gives the archive that reads them, in the
// record.
AArchive storedInARecord(const ARoot& object, std::string& error) {
    AArchive out;
    out.TagStart();
    out.Tag(5);
    out.orbiWriteObject(&object);
    out.orbiWriteObject(node(8).get());
    out.TagEnd();
    error = out.getError();
    AArchive in(out.takeBytes());
    in.TagStart();
    in.Tag(5);
    return in;
}

TEST_F(Archive, StoresNullForAnObjectThatFailsAndKeepsTheNext) {
    AQuitter::registerClass();
    std::string error;
    AArchive in = storedInARecord(AQuitter(), error);
    EXPECT_NE(error, "");
    EXPECT_EQ(in.orbiReadObject(), nullptr);
    EXPECT_EQ(in.getError(), "");
    const Object next(in.orbiReadObject());
    ASSERT_TRUE(nodeIn(next)) << in.getError();
    EXPECT_EQ(nodeIn(next)->number, 8);
}

TEST_F(Archive, EndsWithAnObjectTheRecordsThatItLeftOpen) {
    AForgetter::registerClass();
    std::string error;
    AArchive in = storedInARecord(AForgetter(), error);
    EXPECT_EQ(error, "");
    EXPECT_TRUE(Object(in.orbiReadObject())) << in.getError();
    const Object next(in.orbiReadObject());
    ASSERT_TRUE(nodeIn(next)) << in.getError();
    EXPECT_EQ(nodeIn(next)->number, 8);
    in.TagEnd();
    EXPECT_EQ(in.getError(), "");
}

TEST_F(Archive, LetsNoObjectEndTheRecordAroundIt) {
    AOverEager::registerClass();
    std::string error;
    AArchive in = storedInARecord(AOverEager(), error);
    EXPECT_NE(error, "");
    EXPECT_EQ(in.orbiReadObject(), nullptr);
    EXPECT_NE(in.getError(), "");
}

TEST_F(Archive, GivesNullAndAnErrorForAnObjectThatCannotBeRead) {
    AUnreadable::registerClass();
    std::string error;
    AArchive in = storedInARecord(AUnreadable(), error);
    EXPECT_EQ(error, "");
    EXPECT_EQ(in.orbiReadObject(), nullptr);
    EXPECT_NE(in.getError(), "");
    EXPECT_EQ(in.orbiReadObject(), nullptr);
}

TEST_F(Archive, StandsWhereItStoodAfterAnException) {
    AThrower::registerClass();
    AArchive out;
    out << 1;
    EXPECT_THROW(out.orbiWriteObject(std::make_unique<AThrower>().get()), std::runtime_error);
    out << 2;
    EXPECT_EQ(out.getError(), "");
    Bytes content = contentOf(out.takeBytes());
    EXPECT_EQ(content.size(), 8u);

    content.clear();
    appendText(content, AThrower().getClassName());
    appendNumber(content, 16, 8);
    appendNumber(content, 8, 8);
    appendNumber(content, 0, 8);
    AArchive in(sealed(content));
    EXPECT_THROW(in.orbiReadObject(), std::runtime_error);
    EXPECT_THROW(in.orbiReadObject(), std::runtime_error);
    EXPECT_EQ(in.getError(), "");
}

TEST_F(Archive, GivesAnErrorWhenTheFactoryGivesNothing) {
    const auto object = node(1);
    registerArchiveClass(object->getClassName(), []() -> ARoot* { return nullptr; });
    AArchive in(stored({object.get()}));
    EXPECT_EQ(in.orbiReadObject(), nullptr);
    EXPECT_NE(in.getError(), "");
}

// That many nodes, each the child of the one before.
Object chain(int length) {
    Object whole;
    for (int i = 0; i < length; ++i) {
        auto outer = node(i);
        nodeIn(outer)->child = std::move(whole);
        whole = std::move(outer);
    }
    return whole;
}

TEST_F(Archive, TakesSixtyFourObjectsInsideOneAnother) {
    AArchive in(stored({chain(64).get()}));
    Object read(in.orbiReadObject());
    EXPECT_EQ(in.getError(), "");
    int depth = 0;
    for (const Object* at = &read; *at; at = &nodeIn(*at)->child) ++depth;
    EXPECT_EQ(depth, 64);
}

TEST_F(Archive, GivesUpTheOutermostOfTooDeepObjectsAndKeepsTheNext) {
    AArchive out;
    out.orbiWriteObject(chain(65).get());
    EXPECT_NE(out.getError(), "");
    out.orbiWriteObject(chain(64).get());
    AArchive in(out.takeBytes());
    EXPECT_EQ(in.orbiReadObject(), nullptr);
    EXPECT_TRUE(Object(in.orbiReadObject())) << in.getError();
}

class ACyclicNode : public ARoot {
public:
    int orbiSerialize(AArchive& archive) override {
        ++visits;
        archive.orbiWriteObject(this);
        archive.orbiWriteObject(this);
        return 1;
    }
    int visits = 0;
};

TEST_F(Archive, DoesNotFollowACycleMoreThanOnce) {
    ACyclicNode cyclic;
    AArchive out;
    out.orbiWriteObject(&cyclic);
    EXPECT_NE(out.getError(), "");
    EXPECT_EQ(cyclic.visits, 64);
    EXPECT_EQ(contentOf(out.takeBytes()), Bytes(8));
}

TEST_F(Archive, IsNotUsedAgainstItsDirection) {
    AArchive out;
    int number = 4;
    AString text(_T("text"));
    out >> number >> text;
    EXPECT_EQ(number, 4);
    EXPECT_EQ(text, _T("text"));
    EXPECT_EQ(out.orbiReadObject(), nullptr);
    EXPECT_NE(out.getError(), "");

    AArchive in(sealed(Bytes(16)));
    in << 1 << text;
    in.orbiWriteObject(nullptr);
    EXPECT_TRUE(in.takeBytes().empty());
    EXPECT_NE(in.getError(), "");
}

TEST_F(Archive, TakesTagsAndEndsInsideOfRecordsOnly) {
    for (const bool isTag : {true, false}) {
        AArchive out, in(sealed(Bytes(16)));
        for (AArchive* archive : {&out, &in}) {
            isTag ? archive->Tag(0) : archive->TagEnd();
            EXPECT_NE(archive->getError(), "");
        }
        EXPECT_EQ(out.takeBytes(), sealed({}));
    }
}

TEST_F(Archive, ClosesWhatIsLeftOpenAndTellsIt) {
    AArchive out;
    out.TagStart();
    out.Tag(0);
    out << 6;
    AArchive in(out.takeBytes());
    EXPECT_NE(out.getError(), "");
    int read = 0;
    in.TagStart();
    in.Tag(0);
    in >> read;
    in.TagEnd();
    EXPECT_EQ(read, 6);
    EXPECT_EQ(in.getError(), "");
}

TEST_F(Archive, ReadsTheBaseOfALaterVersion) {
    Bytes content;
    appendNumber(content, 9, 8);
    appendNumber(content, 0, 1);
    appendNumber(content, 999, 4);
    appendNumber(content, 0xffffffff, 4);  // what that version has added
    AArchive in(sealed(content));
    EXPECT_EQ(ARoot().orbiSerialize(in), 1);
    EXPECT_EQ(in.getError(), "");
}

}  // namespace
