#include "app/output.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <utility>

namespace app {

namespace {

[[noreturn]] void failToWrite() {
    throw OutputError{std::string("cannot write the output: ") + std::strerror(errno)};
}

bool isFollowingByte(char c) {  // of a character of several bytes in UTF-8
    return (static_cast<unsigned char>(c) & 0xc0) == 0x80;
}

// With '?' for what commands a terminal: control characters, and U+0080 to U+009F.
template <class Put>
void forEachPrintable(std::string_view text, Put put) {
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto c = static_cast<unsigned char>(text[i]);
        const bool isTwoByteControl =
            c == 0xc2 && i + 1 < text.size() && static_cast<unsigned char>(text[i + 1]) < 0xa0;
        if (isTwoByteControl) ++i;
        put(c < 0x20 || c == 0x7f || isTwoByteControl ? '?' : text[i]);
    }
}

bool isPlain(char c) {
    return c >= 0x20 && c < 0x7f && c != '"' && c != '\\';
}

std::string* the_text = nullptr;  // that print() writes to; null: standard output

}  // namespace

PrintedText::PrintedText(std::string& text) : m_before(std::exchange(the_text, &text)) {}

PrintedText::~PrintedText() {
    the_text = m_before;
}

void print(std::string_view text) {
    if (the_text) {
        *the_text += text;
        return;
    }
    if (std::fwrite(text.data(), 1, text.size(), stdout) != text.size()) failToWrite();
}

void printLine(std::string_view text) {
    print(text);
    print("\n");
}

void printText(std::string_view text) {
    printLine(printable(text));
}

void printJson(const nlohmann::ordered_json& value) {
    printLine(value.dump(-1, ' ', false, nlohmann::ordered_json::error_handler_t::replace));
}

void flushOutput() {
    if (std::fflush(stdout) != 0 || std::ferror(stdout)) failToWrite();
}

void appendJsonString(std::string& out, std::string_view text) {
    if (std::ranges::all_of(text, isPlain)) {  // nearly every name; a million of them are printed at once
        out += '"';
        out += text;
        out += '"';
    } else {
        out += nlohmann::ordered_json(text).dump(-1, ' ', false,
                                                 nlohmann::ordered_json::error_handler_t::replace);
    }
}

void printError(std::string_view text, std::string_view more) noexcept {
    std::fflush(stdout);
    std::fputs("kzdraw: ", stderr);
    const auto put = [](char c) { std::fputc(c, stderr); };
    forEachPrintable(text, put);
    forEachPrintable(more, put);
    put('\n');
}

std::string printable(std::string_view text) {
    std::string result;
    forEachPrintable(text, [&](char c) { result += c; });
    return result;
}

std::string inQuotes(std::string_view name) {
    constexpr std::size_t kLongest = 200;
    if (name.size() <= kLongest) return '"' + std::string(name) + '"';
    std::size_t end = kLongest;
    while (end > kLongest - 3 && isFollowingByte(name[end])) --end;
    return '"' + std::string(name.substr(0, end)) + "...\"";
}

void fillUp(std::string& line, std::size_t width) {
    const auto length = line.size() - static_cast<std::size_t>(std::ranges::count_if(line, isFollowingByte));
    line.append(length < width ? width - length : 1, ' ');
}

}  // namespace app
