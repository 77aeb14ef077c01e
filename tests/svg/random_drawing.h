// Small drawings made at random, of everything that makes leaving something out hard: inherited paint, "use"
// in "use", symbols, definitions, clip paths and texts that refer to shapes, style sheets, switches.
#pragma once

#include <random>
#include <set>
#include <string>

namespace svg_test {

// The page is 200 by 100.
std::string randomDrawing(std::mt19937& random);
// Some of the names that its paint has.
std::set<std::string> randomColors(std::mt19937& random);

}  // namespace svg_test
