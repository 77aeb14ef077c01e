// Failing tests show wide texts as UTF-8.
#pragma once

#include <ostream>

#include "kzutil/astring.h"

inline void PrintTo(const AString& text, std::ostream* out) {
    *out << '"' << text.toUtf8() << '"';
}
