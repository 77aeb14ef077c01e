// Paths and names between the UTF-16 of the Windows API and the UTF-8 of the system.
#pragma once

#include <string>
#include <string_view>

namespace headless {

// Malformed sequences (lone surrogates, bad UTF-8) become U+FFFD, so that both directions always succeed.
std::string to_utf8(std::u16string_view text);
std::u16string to_utf16(std::string_view utf8);

}  // namespace headless
