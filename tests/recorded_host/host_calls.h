// What the tools ask of the host, in the order in which they do.
//
// The host's operations that end a tool or show what it did are not virtual, so the test program defines them
// itself: the tools that are linked into it call these instead of the library's.
#pragma once

#include <string>
#include <vector>

namespace test {

// "view" (asked for the active one), "filter" or "no filter" (handed over), "reset 1", "add 3 0 1",
// "sort 1", "before change", "after change 2", "redraw 0 all", "end".
std::vector<std::string>& hostCalls();
// While it is set, the host finds no tool valid.
bool& hostRefusesTools();

}  // namespace test
