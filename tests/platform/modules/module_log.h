// What the sample modules did, told to the test program by a library that both link: a module that refuses to
// load is gone before anybody could ask it.
#pragma once

#include <string>
#include <vector>

void log_of_module(const char* event);
std::vector<std::string> take_module_log();
