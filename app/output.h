// What the program prints, checked for success: a full disk or a closed pipe is an error like any other.
#pragma once

#include <nlohmann/json.hpp>
#include <string>
#include <string_view>

namespace app {

// Writes to standard output. Raises OutputError when the bytes cannot be written.
void print(std::string_view text);
void printLine(std::string_view text);
// A line for people: printable() of the text.
void printText(std::string_view text);
// One line of JSON. Text that is not UTF-8 is shown with replacement characters.
void printJson(const nlohmann::ordered_json& value);
// Hands what was printed to the system; to be called before the program ends.
void flushOutput();

// What is printed while it lives goes into the text, which outlives it, instead of standard output.
class PrintedText {
public:
    explicit PrintedText(std::string& text);
    ~PrintedText();
    PrintedText(const PrintedText&) = delete;
    PrintedText& operator=(const PrintedText&) = delete;

private:
    std::string* m_before;
};

// Appends a JSON string literal.
void appendJsonString(std::string& out, std::string_view text);

// One line on standard error: "kzdraw: " and printable() of the two texts. Asks for no memory.
void printError(std::string_view text, std::string_view more = {}) noexcept;

// The text with '?' for every control character: names come from drawings, and must neither break a line nor
// command the terminal.
std::string printable(std::string_view text);
// A name for a message: in double quotes, a long one cut.
std::string inQuotes(std::string_view name);
// Appends blanks until the line has so many characters, at least one.
void fillUp(std::string& line, std::size_t width);

struct OutputError {
    std::string reason;
};

}  // namespace app
