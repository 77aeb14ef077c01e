// The digits of base64.
#pragma once

#include "formats/svg/values/text_scan.h"

namespace svg {

// 0 to 63, negative for any other character.
constexpr int base64Digit(char c) {
    if (c >= 'A' && c <= 'Z') return c - 'A';
    if (c >= 'a' && c <= 'z') return c - 'a' + 26;
    if (isDigit(c)) return c - '0' + 52;
    return c == '+' ? 62 : c == '/' ? 63 : -1;
}

}  // namespace svg
