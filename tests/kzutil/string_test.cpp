#include <gtest/gtest.h>

#include <limits>
#include <stdexcept>
#include <vector>

#include "kzutil/astring.h"
#include "tests/kzutil/text_printing.h"

namespace {

constexpr int kMost = std::numeric_limits<int>::max();
constexpr int kLeast = std::numeric_limits<int>::min();

int signOf(int number) {
    return (number > 0) - (number < 0);
}

TEST(String, MidCutsPositionAndCountToTheText) {
    const struct {
        int first, count;
        const WCHAR* expected;
    } cases[] = {
        {0, 3, _T("Fil")},   {5, 3, _T("Red")}, {5, 4, _T("Red")},       {7, 1, _T("d")},
        {8, 1, _T("")},      {9, 1, _T("")},    {kMost, kMost, _T("")},  {0, 0, _T("")},
        {0, -1, _T("")},     {-1, 2, _T("Fi")}, {kLeast, 4, _T("Fill")}, {3, kMost, _T("l/Red")},
        {3, kLeast, _T("")},
    };
    const AString text(_T("Fill/Red"));
    for (const auto& row : cases)
        EXPECT_EQ(text.Mid(row.first, row.count), AString(row.expected)) << row.first << ", " << row.count;
}

TEST(String, MidLeftAndRightOfOneNumberStopAtTheEnds) {
    const AString text(_T("Fill/Red"));
    EXPECT_EQ(text.Mid(5), AString(_T("Red")));
    EXPECT_EQ(text.Mid(8), AString());
    EXPECT_EQ(text.Mid(-2), text);
    EXPECT_EQ(text.Left(4), AString(_T("Fill")));
    EXPECT_EQ(text.Left(0), AString());
    EXPECT_EQ(text.Left(-1), AString());
    EXPECT_EQ(text.Left(kMost), text);
    EXPECT_EQ(text.Right(3), AString(_T("Red")));
    EXPECT_EQ(text.Right(0), AString());
    EXPECT_EQ(text.Right(kLeast), AString());
    EXPECT_EQ(text.Right(kMost), text);
    EXPECT_EQ(AString().Right(1), AString());
}

TEST(String, FindGivesTheFirstPositionAtOrBehindTheStart) {
    const AString text(_T("a/b/c"));
    EXPECT_EQ(text.Find(WCHAR('/')), 1);
    EXPECT_EQ(text.Find(WCHAR('/'), 1), 1);
    EXPECT_EQ(text.Find(WCHAR('/'), 2), 3);
    EXPECT_EQ(text.Find(WCHAR('/'), 4), -1);
    EXPECT_EQ(text.Find(WCHAR('/'), -7), 1);
    EXPECT_EQ(text.Find(WCHAR('/'), kMost), -1);
    EXPECT_EQ(text.Find(WCHAR('x')), -1);
    EXPECT_EQ(text.Find(_T("/c")), 3);
    EXPECT_EQ(text.Find(_T("/c"), 4), -1);
    EXPECT_EQ(text.Find(_T("a/b/c/d")), -1);
    EXPECT_EQ(text.Find(AString(_T("b"))), 2);
    EXPECT_EQ(AString().Find(WCHAR('a')), -1);
}

TEST(String, FindSeesTheEmptyTextEverywhereUpToTheEnd) {
    const AString text(_T("ab"));
    EXPECT_EQ(text.Find(_T("")), 0);
    EXPECT_EQ(text.Find(_T(""), 2), 2);
    EXPECT_EQ(text.Find(_T(""), 3), -1);
    EXPECT_EQ(text.Find(static_cast<const WCHAR*>(nullptr)), 0);
}

TEST(String, CompareIsExactAndCompareNoCaseFoldsOnlyAToZ) {
    const struct {
        const WCHAR *a, *b;
        int exact, noCase;
    } cases[] = {
        {_T("Red"), _T("Red"), 0, 0},     {_T("Red"), _T("red"), -1, 0},
        {_T("red"), _T("Redder"), 1, -1}, {_T(""), _T(""), 0, 0},
        {_T(""), _T("a"), -1, -1},        {_T("b"), _T("A"), 1, 1},
        {_T("Z"), _T("_"), -1, 1},        {_T("@"), _T("`"), -1, -1},
        {_T("["), _T("{"), -1, -1},       {_T("\u00c4"), _T("\u00e4"), -1, -1},
        {_T("a"), nullptr, 1, 1},
    };
    for (const auto& row : cases) {
        EXPECT_EQ(signOf(AString(row.a).Compare(row.b)), row.exact) << AString(row.a).toUtf8();
        EXPECT_EQ(signOf(AString(row.a).Compare(AString(row.b))), row.exact) << AString(row.a).toUtf8();
        EXPECT_EQ(signOf(AString(row.a).CompareNoCase(row.b)), row.noCase) << AString(row.a).toUtf8();
        EXPECT_EQ(signOf(kzCompareNoCase(row.b, row.a)), -row.noCase) << AString(row.a).toUtf8();
    }
}

TEST(String, OrderIsThatOfTheCodeUnitsAndNotOfTheAddresses) {
    const std::vector<AString> texts = {AString(_T("b")), AString(_T("a")), AString(_T("ab")), AString()};
    for (const AString& a : texts) {
        for (const AString& b : texts) {
            const WCHAR* plain = b;
            const int order = a.Compare(b);
            EXPECT_EQ(a < b, order < 0);
            EXPECT_EQ(a > b, order > 0);
            EXPECT_EQ(a <= b, order <= 0);
            EXPECT_EQ(a >= b, order >= 0);
            EXPECT_EQ(a == b, order == 0);
            EXPECT_EQ(a != b, order != 0);
            EXPECT_EQ(a < plain, order < 0);
            EXPECT_EQ(a >= plain, order >= 0);
            EXPECT_EQ(plain > a, order < 0);
            EXPECT_EQ(plain == a, order == 0);
            EXPECT_EQ(a != plain, order != 0);
        }
    }
    EXPECT_GT(AString(_T("\uffff")), AString(_T("\U0001f600")));
}

TEST(String, NumbersAreAppendedInDecimal) {
    const struct {
        long long number;
        const WCHAR* expected;
    } cases[] = {
        {0, _T("n0")},
        {-1, _T("n-1")},
        {std::numeric_limits<long long>::max(), _T("n9223372036854775807")},
        {std::numeric_limits<long long>::min(), _T("n-9223372036854775808")},
        {std::numeric_limits<int>::min(), _T("n-2147483648")},
        {std::numeric_limits<unsigned>::max(), _T("n4294967295")},
    };
    for (const auto& row : cases) {
        AString text(_T("n"));
        text.AppendNumber(row.number);
        EXPECT_EQ(text, row.expected);
    }
}

TEST(String, ANullTextIsAnEmptyOne) {
    const WCHAR* nothing = nullptr;
    AString text(nothing);
    EXPECT_TRUE(text.IsEmpty());
    EXPECT_TRUE(AString(nothing, 5).IsEmpty());
    text = _T("x");
    text += nothing;
    EXPECT_EQ(text, _T("x"));
    text = nothing;
    EXPECT_TRUE(text.IsEmpty());
    EXPECT_EQ(text, nothing);
}

TEST(String, ATextWithALengthNeedsNoTerminator) {
    const std::vector<WCHAR> letters = {WCHAR('a'), WCHAR('b'), WCHAR('c')};
    EXPECT_EQ(AString(letters.data(), 3), _T("abc"));
    EXPECT_EQ(AString(letters.data(), 2), _T("ab"));
    EXPECT_EQ(AString(letters.data(), 0), AString());
    EXPECT_EQ(AString(letters.data(), -1), AString());
    EXPECT_EQ(AString(_T("abc"), 99), _T("abc"));
}

TEST(String, MayBeAssignedAndAppendedToItself) {
    AString text(_T("a text that is too long to lie in the object itself"));
    const AString once = text;
    text += text;
    EXPECT_EQ(text, once + once);
    text = once;
    text += static_cast<const WCHAR*>(text);
    EXPECT_EQ(text, once + once);
    text = static_cast<const WCHAR*>(text) + once.GetLength();
    EXPECT_EQ(text, once);
}

TEST(String, IsPutTogetherFromTextsAndCharacters) {
    EXPECT_EQ(AString(_T("a")) + _T("b") + AString(_T("c")) + WCHAR('d'), _T("abcd"));
    EXPECT_EQ(_T("a") + AString(_T("b")), _T("ab"));
    AString text;
    text += WCHAR('/');
    EXPECT_EQ(text, _T("/"));
    EXPECT_EQ(text.GetLength(), 1);
}

TEST(String, AnIndexOutsideTheTextRaises) {
    const AString text(_T("ab"));
    EXPECT_EQ(text[0], WCHAR('a'));
    EXPECT_EQ(text.GetAt(1), WCHAR('b'));
    EXPECT_THROW(text.GetAt(2), std::out_of_range);
    EXPECT_THROW(text[-1], std::out_of_range);
}

TEST(String, GoesToUtf8AndBack) {
    const std::string utf8 =
        "Gr\xc3\xbc\xc3\x9f"
        "e \xf0\x9f\x98\x80";
    EXPECT_EQ(AString::fromUtf8(utf8), _T("Gr\u00fc\u00dfe \U0001f600"));
    EXPECT_EQ(AString::fromUtf8(utf8).toUtf8(), utf8);
}

TEST(String, IsLoadedByIdFromTheResources) {
    AString text(_T("before"));
    EXPECT_EQ(text.LoadStringW(4160), TRUE);
    EXPECT_EQ(text, _T("No object matches the criteria."));
    EXPECT_EQ(text.LoadStringW(4161), TRUE);
    EXPECT_EQ(text, _T("Gr\u00fc\u00dfe"));
}

TEST(String, LoadingAMissingIdEmptiesIt) {
    AString text(_T("before"));
    EXPECT_EQ(text.LoadStringW(65000), FALSE);
    EXPECT_TRUE(text.IsEmpty());
}

}  // namespace
