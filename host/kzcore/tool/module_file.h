// Whether the file of a module is all there. Loaders map what a file's headers tell without a look at its size; a
// process that then touches a page behind the file's end is ended.
#pragma once

#include <filesystem>
#include <string>

// Empty for a shared object (ELF, 64 bits) or a library (PE) whose parts all lie within the file; else what is wrong,
// to be told behind the file's name. The file may be of the other system. Raises
// bad_alloc.
std::string moduleFileProblem(const std::filesystem::path& file);
