// Where the tests' modules are, and short names for what every test of them does.
#pragma once

#include <string>
#include <string_view>

#include "platform/winapi.h"

using Wide = std::basic_string<WCHAR>;

// ASCII only.
inline Wide wide(std::string_view ascii) {
    return Wide(ascii.begin(), ascii.end());
}

inline Wide program_path() {
    WCHAR buffer[4096];
    return Wide(buffer, GetModuleFileNameW(nullptr, buffer, 4096));
}

// A file in the folder of test modules.
inline Wide module_path(const Wide& file) {
    const Wide program = program_path();
    return program.substr(0, program.find_last_of(_T("/\\")) + 1) + _T("test_modules/") + file;
}

inline Wide string_of(HMODULE module, UINT id) {
    WCHAR buffer[256];
    return Wide(buffer, static_cast<std::size_t>(LoadStringW(module, id, buffer, 256)));
}
