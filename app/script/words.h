// Splits a script line into words as a shell does.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace app {

// Blanks separate words. '…' keeps everything as it is; "…" and \ outside of quotes let \ take the next
// character as it is; # at the start of an unquoted word starts a comment. False, with the reason in `error`,
// when a quote is not closed or the line ends with a backslash.
bool splitWords(std::string_view line, std::vector<std::string>& words, std::string& error);

// The line that is split into these words, each quoted where it has to be.
std::string joinWords(const std::vector<std::string>& words);

}  // namespace app
