// Commands on several drawings: one after the other, in one process.
//
// What a command prints of one of several drawings says whose it is: a line of JSON starts with "file", lines for people with
// the name. A drawing that fails is told on standard error, with --json by a line {"file":…,"error":…} too, and the
// others are done nevertheless. A single drawing is told of without its name, and its failure is the command's.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "app/output.h"

namespace app {

// Does the work of each drawing, which prints, and returns 0 done or 1 nothing matched. Returns 0 when one of them did; raises
// Failure when drawings failed, behind the last. Shows how far it is where standard error is a terminal.
int onEachDrawing(const std::vector<std::string>& files, bool json,
                  const std::function<int(std::size_t)>& work);

// What a line of JSON and a line for people start with.
nlohmann::ordered_json headOf(const std::vector<std::string>& files, const std::string& file);
std::string leadOf(const std::vector<std::string>& files, const std::string& file);

// The files to write, one for each drawing: {name} stands for the drawing's name without folder and extension, {folder} for
// its folder. Raises Failure when two would be the same file, or one another's drawing.
std::vector<std::string> outputNames(const std::vector<std::string>& files, const std::string& pattern);

}  // namespace app
