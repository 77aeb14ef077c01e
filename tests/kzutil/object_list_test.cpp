#include <gtest/gtest.h>

#include <array>
#include <string>
#include <vector>

#include "kzutil/object_list.h"

namespace {

// Objects named a to e, of which lists hold addresses.
class ObjectList : public testing::Test {
protected:
    ARoot* named(char name) { return &m_objects[static_cast<std::size_t>(name - 'a')]; }

    void fill(AObList& list, const std::string& names) {
        for (const char name : names) list.AddTail(named(name));
    }

    char nameOf(const ARoot* object) const {
        return object ? static_cast<char>('a' + (static_cast<const ARoot*>(object) - m_objects.data())) : '-';
    }

    std::string namesIn(const AObList& list) const {
        std::string names;
        for (POSITION at = list.GetHeadPosition(); at;) names += nameOf(list.GetNext(at));
        return names;
    }

    std::array<ARoot, 5> m_objects;
    AObList m_list{0, 10};
};

TEST_F(ObjectList, KeepsOrderAndDuplicates) {
    fill(m_list, "abacb");
    EXPECT_EQ(namesIn(m_list), "abacb");
    EXPECT_EQ(m_list.GetCount(), 5);
    EXPECT_EQ(m_list.GetHead(), named('a'));
    EXPECT_EQ(m_list.GetTail(), named('b'));
    EXPECT_EQ(std::vector<ARoot*>(m_list.begin(), m_list.end()).size(), 5u);
}

TEST_F(ObjectList, HasNothingAtFirst) {
    EXPECT_TRUE(m_list.IsEmpty());
    EXPECT_EQ(m_list.GetHead(), nullptr);
    EXPECT_EQ(m_list.GetTail(), nullptr);
    EXPECT_EQ(m_list.GetHeadPosition(), nullptr);
    EXPECT_EQ(m_list.Find(named('a')), nullptr);
}

TEST_F(ObjectList, WalksWhatIsAppendedDuringTheWalk) {
    fill(m_list, "ab");
    std::string walked;
    for (POSITION at = m_list.GetHeadPosition(); at;) {
        // Before the step, so that the last entry is not yet taken. Growth moves the entries many times.
        if (walked.size() < 1000) fill(m_list, "cde");
        walked += nameOf(m_list.GetNext(at));
    }
    EXPECT_EQ(walked.size(), 3002u);
    EXPECT_EQ(walked.substr(0, 8), "abcdecde");
    EXPECT_EQ(walked, namesIn(m_list));
}

TEST_F(ObjectList, AWalkThatHasTakenTheLastEntryIsOver) {
    fill(m_list, "a");
    POSITION at = m_list.GetHeadPosition();
    EXPECT_EQ(m_list.GetNext(at), named('a'));
    fill(m_list, "b");
    EXPECT_EQ(at, nullptr);
}

TEST_F(ObjectList, MayBeEmptiedAndRefilledDuringAWalkThatStartsAnew) {
    fill(m_list, "ab");
    std::string walked;
    for (POSITION at = m_list.GetHeadPosition(); at;) {
        ARoot* entry = m_list.GetNext(at);
        walked += nameOf(entry);
        if (entry != named('b')) continue;
        m_list.RemoveAll();
        fill(m_list, "cd");
        at = m_list.GetHeadPosition();
    }
    EXPECT_EQ(walked, "abcd");
    EXPECT_EQ(namesIn(m_list), "cd");
}

TEST_F(ObjectList, APositionWithoutAnEntryGivesNullAndEndsTheWalk) {
    fill(m_list, "abc");
    POSITION at = m_list.Find(named('c'));
    m_list.RemoveAll();
    fill(m_list, "a");
    EXPECT_EQ(m_list.GetNext(at), nullptr);
    EXPECT_EQ(at, nullptr);
    EXPECT_EQ(m_list.GetNext(at), nullptr);
}

TEST_F(ObjectList, AppendsListsInOrder) {
    AObList other;
    fill(m_list, "ab");
    m_list.AddTail(&other);
    m_list.AddTail(static_cast<const AObList*>(nullptr));
    EXPECT_EQ(namesIn(m_list), "ab");
    fill(other, "cd");
    m_list.AddTail(&other);
    EXPECT_EQ(namesIn(m_list), "abcd");
    EXPECT_EQ(namesIn(other), "cd");
}

TEST_F(ObjectList, DoublesWhenItIsAppendedToItself) {
    fill(m_list, "abc");
    for (int i = 0; i < 3; ++i) m_list.AddTail(&m_list);
    EXPECT_EQ(namesIn(m_list), "abcabcabcabcabcabcabcabc");
    AObList empty;
    empty.AddTail(&empty);
    EXPECT_TRUE(empty.IsEmpty());
}

TEST_F(ObjectList, RemovesTheFirstOfEqualEntriesOnly) {
    fill(m_list, "abab");
    EXPECT_TRUE(m_list.Remove(named('b')));
    EXPECT_EQ(namesIn(m_list), "aab");
    EXPECT_FALSE(m_list.Remove(named('e')));
    EXPECT_EQ(namesIn(m_list), "aab");
}

TEST_F(ObjectList, FindsTheFirstPlaceOfAnObject) {
    fill(m_list, "abcb");
    POSITION at = m_list.Find(named('b'));
    EXPECT_EQ(m_list.GetNext(at), named('b'));
    EXPECT_EQ(m_list.GetNext(at), named('c'));
    EXPECT_EQ(m_list.Find(named('d')), nullptr);
}

TEST_F(ObjectList, TakesNullEntries) {
    m_list.AddTail(static_cast<ARoot*>(nullptr));
    fill(m_list, "a");
    EXPECT_EQ(namesIn(m_list), "-a");
}

TEST_F(ObjectList, ABlockSizeOfNothingStillHoldsEntries) {
    AObList list(0, -1);
    fill(list, "ab");
    EXPECT_EQ(namesIn(list), "ab");
}

}  // namespace
