// Conversions between the 16-bit text of the host and UTF-8.
#pragma once

#include <string>
#include <string_view>

#include "platform/winapi.h"

namespace kzutil {

using WideView = std::basic_string_view<WCHAR>;
using WideString = std::basic_string<WCHAR>;

// Malformed sequences (bad UTF-8, lone surrogates) become U+FFFD, so that both directions always succeed.
WideString widen(std::string_view utf8);
std::string narrow(WideView text);

}  // namespace kzutil
