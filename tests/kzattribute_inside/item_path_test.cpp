#include <gtest/gtest.h>

#include <random>

#include "base/item_path.h"

namespace {

std::string segment(const AItemPath& path, int index) {
    AString out(_T("left over"));
    path.getSegment(index, out);
    return out.toUtf8();
}

std::string withoutFirst(AItemPath path) {
    path.removeFirstSegment();
    return path.toUtf8();
}

}  // namespace

TEST(ItemPath, CountsAndGivesItsSegments) {
    struct Case {
        const WCHAR* text;
        std::vector<std::string> segments;
        std::string rest;
    };
    const Case cases[] = {
        {_T(""), {""}, ""},
        {_T("abc"), {"abc"}, ""},
        {_T("a/b/c"), {"a", "b", "c"}, "b/c"},
        {_T("/a/b"), {"", "a", "b"}, "a/b"},
        {_T("a/"), {"a", ""}, ""},
        {_T("a//b"), {"a", "", "b"}, "/b"},
        {_T("//"), {"", "", ""}, "/"},
    };
    for (const Case& expected : cases) {
        const AItemPath path(expected.text);
        const int count = static_cast<int>(expected.segments.size());
        EXPECT_EQ(path.getSegmentCount(), count) << path.toUtf8();
        for (int i = 0; i < count; ++i)
            EXPECT_EQ(segment(path, i), expected.segments[static_cast<std::size_t>(i)]) << path.toUtf8();
        for (const int behind : {count, count + 1, 1000})
            EXPECT_EQ(segment(path, behind), "") << path.toUtf8();
        EXPECT_EQ(withoutFirst(path), expected.rest) << path.toUtf8();
    }
}

TEST(ItemPath, ANegativeIndexGivesTheFirstSegment) {
    EXPECT_EQ(segment(AItemPath(_T("a/b")), -1), "a");
    EXPECT_EQ(segment(AItemPath(_T("a/b")), -1000), "a");
}

TEST(ItemPath, AppendingToAnEmptyPathLeavesAnEmptyFirstSegment) {
    AItemPath path;
    path.appendSegment(_T("x"));
    EXPECT_EQ(path.toUtf8(), "/x");
    EXPECT_EQ(path.getSegmentCount(), 2);
    EXPECT_EQ(segment(path, 0), "");
    EXPECT_EQ(segment(path, 1), "x");
    path.appendSegment(_T(""));
    EXPECT_EQ(path.toUtf8(), "/x/");
    path.appendSegment(path);
    EXPECT_EQ(path.toUtf8(), "/x///x/");
}

TEST(ItemPath, UsesItsSeparatorExactlyAndLosesItWithTheFirstSegment) {
    AItemPath path(_T("a|b/c|d"));
    EXPECT_EQ(path.getSeparator(), WCHAR(47));
    path.setSeparator(WCHAR('|'));
    EXPECT_EQ(path.getSegmentCount(), 3);
    EXPECT_EQ(segment(path, 1), "b/c");
    path.appendSegment(_T("e"));
    EXPECT_EQ(path.toUtf8(), "a|b/c|d|e");
    const AItemPath copy = path;
    EXPECT_EQ(copy.getSeparator(), WCHAR('|'));
    path.removeFirstSegment();
    EXPECT_EQ(path.toUtf8(), "b/c|d|e");
    EXPECT_EQ(path.getSeparator(), WCHAR(47));
    EXPECT_EQ(path.getSegmentCount(), 2);
}

TEST(ItemPath, KeepsItsSeparatorWhenThereIsNoSegmentToDrop) {
    AItemPath path(_T("a/b"));
    path.setSeparator(WCHAR('|'));
    path.removeFirstSegment();
    EXPECT_TRUE(path.IsEmpty());
    EXPECT_EQ(path.getSeparator(), WCHAR('|'));
}

TEST(ItemPath, AssignmentCopiesTextAndSeparator) {
    AItemPath source(_T("a|b"));
    source.setSeparator(WCHAR('|'));
    AItemPath target(_T("c"));
    target = source;
    EXPECT_EQ(target.toUtf8(), "a|b");
    EXPECT_EQ(target.getSegmentCount(), 2);
}

TEST(ItemPath, ASegmentMayBeReadIntoThePathItself) {
    AItemPath path(_T("a/bc/d"));
    path.getSegment(1, path);
    EXPECT_EQ(path.toUtf8(), "bc");
}

TEST(ItemPath, JoiningItsSegmentsGivesTheTextAgain) {
    std::mt19937 random(5);
    for (int round = 0; round < 2000; ++round) {
        AString text;
        for (unsigned i = random() % 12; i > 0; --i) text += WCHAR("ab/"[random() % 3]);
        const AItemPath path(text);
        AString joined;
        for (int i = 0; i < path.getSegmentCount(); ++i) {
            AString part;
            path.getSegment(i, part);
            if (i > 0) joined += WCHAR('/');
            joined += part;
        }
        ASSERT_EQ(joined, text);
    }
}
