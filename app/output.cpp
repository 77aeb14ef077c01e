#include "app/output.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>

namespace app {

namespace {

[[noreturn]] void failed() {
    throw OutputError{std::string("cannot write the output: ") + std::strerror(errno)};
}

bool isPlain(char c) {
    return c >= 0x20 && c < 0x7f && c != '"' && c != '\\';
}

}  // namespace

void print(std::string_view text) {
    if (std::fwrite(text.data(), 1, text.size(), stdout) != text.size()) failed();
}

void printLine(std::string_view text) {
    print(text);
    print("\n");
}

void printJson(const nlohmann::ordered_json& value) {
    printLine(value.dump(-1, ' ', false, nlohmann::ordered_json::error_handler_t::replace));
}

void flushOutput() {
    if (std::fflush(stdout) != 0 || std::ferror(stdout)) failed();
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

void printError(std::string_view text) {
    std::fflush(stdout);
    std::fprintf(stderr, "kzdraw: %.*s\n", static_cast<int>(text.size()), text.data());
}

}  // namespace app
