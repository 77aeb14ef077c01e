// What the framework raises.
#pragma once

#include <stdexcept>

// An argument that cannot be: an index outside an array, a control that the dialog does not have.
class CInvalidArgException : public std::invalid_argument {
public:
    using std::invalid_argument::invalid_argument;
};

// A modal loop has nothing to do and nobody who could change that: only off Windows, where there is no user.
class AfxNoInputException : public std::runtime_error {
public:
    AfxNoInputException() : std::runtime_error("the dialog waits for input that nobody gives") {}
};

[[noreturn]] void AfxThrowInvalidArgException(const char* reason = "invalid argument");
