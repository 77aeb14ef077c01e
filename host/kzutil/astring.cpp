#include "kzutil/astring.h"

#include <algorithm>
#include <array>
#include <charconv>

#include "platform/afx/extension_module.h"

namespace {

kzutil::WideView viewOf(const WCHAR* text) {
    return text ? kzutil::WideView(text) : kzutil::WideView();
}

// Text that need not be terminated: no character behind `length` is looked at.
kzutil::WideView viewOf(const WCHAR* text, int length) {
    std::size_t end = 0;
    if (text)
        while (static_cast<int>(end) < length && text[end] != WCHAR()) ++end;
    return {text, end};
}

WCHAR folded(WCHAR character) {
    return character >= WCHAR('A') && character <= WCHAR('Z') ? static_cast<WCHAR>(character + 32)
                                                              : character;
}

int compareNoCase(kzutil::WideView a, kzutil::WideView b) {
    const std::size_t shared = std::min(a.size(), b.size());
    for (std::size_t i = 0; i < shared; ++i) {
        const int difference = int{folded(a[i])} - int{folded(b[i])};
        if (difference != 0) return difference;
    }
    return a.size() == b.size() ? 0 : (a.size() < b.size() ? -1 : 1);
}

}  // namespace

AString::AString(const WCHAR* text) : m_text(viewOf(text)) {}

AString::AString(const WCHAR* text, int length) : m_text(viewOf(text, length)) {}

AString& AString::operator=(const WCHAR* text) {
    m_text = viewOf(text);
    return *this;
}

AString& AString::operator+=(const AString& text) {
    m_text += text.m_text;
    return *this;
}

AString& AString::operator+=(const WCHAR* text) {
    m_text += viewOf(text);
    return *this;
}

AString& AString::operator+=(WCHAR character) {
    m_text += character;
    return *this;
}

int AString::Compare(const WCHAR* text) const {
    return kzutil::WideView(m_text).compare(viewOf(text));
}

int AString::CompareNoCase(const WCHAR* text) const {
    return compareNoCase(m_text, viewOf(text));
}

AString AString::Mid(int first) const {
    return Mid(first, GetLength());
}

AString AString::Mid(int first, int count) const {
    const int start = std::clamp(first, 0, GetLength());
    const int taken = std::clamp(count, 0, GetLength() - start);
    return AString(
        kzutil::WideView(m_text).substr(static_cast<std::size_t>(start), static_cast<std::size_t>(taken)));
}

AString AString::Left(int count) const {
    return Mid(0, count);
}

AString AString::Right(int count) const {
    return Mid(GetLength() - std::clamp(count, 0, GetLength()));
}

int AString::Find(WCHAR character, int from) const {
    const auto found = m_text.find(character, static_cast<std::size_t>(std::max(from, 0)));
    return found == kzutil::WideString::npos ? -1 : static_cast<int>(found);
}

int AString::Find(const WCHAR* text, int from) const {
    const auto found =
        kzutil::WideView(m_text).find(viewOf(text), static_cast<std::size_t>(std::max(from, 0)));
    return found == kzutil::WideView::npos ? -1 : static_cast<int>(found);
}

void AString::AppendNumber(long long number) {
    std::array<char, 24> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
    for (const char* digit = digits.data(); digit != end; ++digit) m_text += static_cast<WCHAR>(*digit);
}

BOOL AString::LoadStringW(UINT id) {
    constexpr UINT kMaxLength = 4096;  // what a localized module may put behind one id
    std::array<WCHAR, kMaxLength + 1> buffer;
    const int length = AfxLoadString(id, buffer.data(), kMaxLength + 1);
    m_text.assign(buffer.data(), static_cast<std::size_t>(length));
    return length > 0 ? TRUE : FALSE;
}

int kzCompareNoCase(const WCHAR* a, const WCHAR* b) {
    return compareNoCase(viewOf(a), viewOf(b));
}
