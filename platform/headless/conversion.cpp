// MultiByteToWideChar and WideCharToMultiByte, between UTF-8 and UTF-16.
#include <algorithm>
#include <string_view>

#include "platform/headless/guard.h"
#include "platform/headless/include/winapi/text.h"
#include "platform/headless/text.h"

using namespace headless;

namespace {

template <class Source, class Converted, class Target>
int hand_out(Converted (*convert)(std::basic_string_view<Source>), const Source* text, int length,
             Target* target, int size) {
    if (!text || length < -1 || size < 0 || (size > 0 && !target)) return fails(ERROR_INVALID_PARAMETER);
    return guarded([&]() -> int {
        const std::size_t characters =
            length >= 0 ? static_cast<std::size_t>(length) : std::char_traits<Source>::length(text) + 1;
        const Converted converted = convert({text, characters});
        const int needed = static_cast<int>(converted.size());
        if (size == 0) return needed;
        if (needed > size) return fails(ERROR_INSUFFICIENT_BUFFER);
        std::copy(converted.begin(), converted.end(), target);
        return needed;
    });
}

}  // namespace

int MultiByteToWideChar(UINT codePage, DWORD flags, const char* text, int length, LPWSTR target, int size) {
    if (codePage != CP_UTF8 || flags != 0) return fails(ERROR_INVALID_PARAMETER);
    return hand_out<char>(to_utf16, text, length, target, size);
}

int WideCharToMultiByte(UINT codePage, DWORD flags, LPCWSTR text, int length, char* target, int size,
                        const char* defaultCharacter, BOOL* usedDefault) {
    if (codePage != CP_UTF8 || flags != 0 || defaultCharacter || usedDefault)
        return fails(ERROR_INVALID_PARAMETER);
    return hand_out<char16_t>(to_utf8, text, length, target, size);
}
