// Brings a drawing's bytes to UTF-8, the one encoding in which the reader keeps them.
#pragma once

#include <string>
#include <string_view>

namespace svg {

// UTF-16 and UTF-32 (by their byte order mark or by how "<" looks in them) and Latin-1 (by the XML
// declaration) are converted, and the declaration then says UTF-8. Removes a UTF-8 byte order mark.
void convertToUtf8(std::string& bytes);

// No overlong forms, no surrogates, nothing cut short.
bool isValidUtf8(std::string_view text);
// A replacement character for what is no character.
void appendUtf8(std::string& out, char32_t character);

}  // namespace svg
