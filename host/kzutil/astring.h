// AString: the host's wide-character string, a value.
//
//     AString text(_T("Fill/Red"));
//     text.Mid(5).Compare(_T("Red")) == 0
//
// Characters are 16 bits on every build. Comparisons are exact unless the name says NoCase. Positions outside
// the text are cut to it; nothing here reads past the end.
#pragma once

#include <compare>
#include <concepts>
#include <utility>

#include "kzutil/utf.h"

class AString {
public:
    AString() = default;
    AString(const WCHAR* text);  // null: empty
    // At most `length` characters of the text, which need not be terminated; a NUL ends it earlier.
    AString(const WCHAR* text, int length);
    explicit AString(kzutil::WideView text) : m_text(text) {}
    explicit AString(kzutil::WideString&& text) : m_text(std::move(text)) {}

    static AString fromUtf8(std::string_view utf8) { return AString(kzutil::widen(utf8)); }
    std::string toUtf8() const { return kzutil::narrow(m_text); }

    AString& operator=(const WCHAR* text);
    AString& operator+=(const AString& text);
    AString& operator+=(const WCHAR* text);
    AString& operator+=(WCHAR character);

    int GetLength() const { return static_cast<int>(m_text.size()); }
    bool IsEmpty() const { return m_text.empty(); }
    void Empty() { m_text.clear(); }
    WCHAR GetAt(int index) const { return m_text.at(static_cast<std::size_t>(index)); }
    WCHAR operator[](int index) const { return GetAt(index); }
    operator const WCHAR*() const { return m_text.c_str(); }
    kzutil::WideView view() const { return m_text; }

    // Less than, equal to or greater than zero; by code unit.
    int Compare(const WCHAR* text) const;
    int Compare(const AString& text) const { return m_text.compare(text.m_text); }
    // The letters A to Z and a to z count as equal; no other character is folded.
    int CompareNoCase(const WCHAR* text) const;

    AString Mid(int first) const;
    AString Mid(int first, int count) const;
    AString Left(int count) const;
    AString Right(int count) const;

    // The first position at or behind `from`, -1 when there is none.
    int Find(WCHAR character, int from = 0) const;
    int Find(const WCHAR* text, int from = 0) const;

    // Appends a decimal number, the "%d" of the host's formats.
    void AppendNumber(long long number);

    // Loads a string id from the framework's resource chain. On a missing id the string becomes empty and the
    // result is FALSE.
    BOOL LoadStringW(UINT id);

    friend bool operator==(const AString& a, const AString& b) { return a.m_text == b.m_text; }
    friend bool operator==(const AString& a, const WCHAR* b) { return a.Compare(b) == 0; }
    // All four orders, for both kinds of text: without them the conversion to a pointer
    // would compare addresses.
    friend std::strong_ordering operator<=>(const AString& a, const AString& b) {
        return a.m_text <=> b.m_text;
    }
    friend std::strong_ordering operator<=>(const AString& a, const WCHAR* b) { return a.Compare(b) <=> 0; }
    friend AString operator+(AString a, const AString& b) {
        a += b;
        return a;
    }
    friend AString operator+(AString a, WCHAR b) {
        a += b;
        return a;
    }
    // A number would be added to the text's address, or taken for a character: see AppendNumber.
    template <std::integral Number>
    requires(!std::same_as<Number, WCHAR>) friend AString operator+(AString a, Number b) = delete;

private:
    kzutil::WideString m_text;
};

// Compares without regard to the case of A to Z, as AString::CompareNoCase; the result's sign
// tells the order.
int kzCompareNoCase(const WCHAR* a, const WCHAR* b);
