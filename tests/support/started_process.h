// Windows: a process that a test begins.
#pragma once

#include <iostream>
#include <stdexcept>
#include <string>

#include "kzutil/utf.h"
#include "platform/winapi.h"

namespace test {

// The caller closes both handles; what the program is given as its standard streams is inherited. Raises runtime_error
// with the system's code. Wine may refuse on a busy machine; what could not be begun has done nothing, so it is asked for
// three times, and each refusal is told.
inline PROCESS_INFORMATION startProcess(const kzutil::WideString& program, const kzutil::WideString& line,
                                        STARTUPINFOW startup) {
    startup.cb = sizeof startup;
    std::string refusal;
    for (int attempt = 0; attempt < 3; ++attempt) {
        PROCESS_INFORMATION process{};
        kzutil::WideString written = line;  // which may be written to
        const BOOL inherit = (startup.dwFlags & STARTF_USESTDHANDLES) != 0;
        if (CreateProcessW(program.c_str(), written.data(), nullptr, nullptr, inherit, 0, nullptr, nullptr,
                           &startup, &process))
            return process;
        refusal =
            "cannot start " + kzutil::narrow(program.c_str()) + ": error " + std::to_string(GetLastError());
        std::cerr << refusal << '\n';
    }
    throw std::runtime_error(refusal);
}

}  // namespace test
