// The program's commands. Each returns the exit status: 0 done, 1 nothing matched; what goes wrong raises
// Failure.
#pragma once

#include <optional>
#include <string>

namespace app {

int runInfo(const std::string& file, bool json);
// Without a file no drawing is open, and no tool that needs one is valid.
int runTools(const std::optional<std::string>& file, bool json);

enum class SelectBy { similarObjects, color };
struct SelectOptions {
    std::string file;
    SelectBy by = SelectBy::similarObjects;
    std::string reference;  // the object to go by
    bool json = false;
};
int runSelect(const SelectOptions& options);

// "-": standard input.
int runScript(const std::string& file);

}  // namespace app
