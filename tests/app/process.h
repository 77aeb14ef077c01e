// Runs programs as users do: as processes, with arguments, standard input and what they answer.
#pragma once

#include <filesystem>
#include <ostream>
#include <string>
#include <vector>

namespace test {

struct Outcome {
    int status;  // what the program returned; natively, minus the signal that ended it
    std::string out;
    std::string err;

    bool operator==(const Outcome&) const = default;
    friend std::ostream& operator<<(std::ostream& out, const Outcome& outcome) {
        return out << "status " << outcome.status << "\nout: " << outcome.out << "\nerr: " << outcome.err;
    }
};

// Arguments are UTF-8. Line ends come back as "\n" on every build.
Outcome runProgram(const std::filesystem::path& program, const std::vector<std::string>& arguments,
                   const std::string& input = {});

// The built kzdraw.
std::filesystem::path kzdraw();
Outcome runKzdraw(const std::vector<std::string>& arguments, const std::string& input = {});

// What kzdraw answers to what it cannot do.
inline Outcome refused(const std::string& reason) {
    return {2, "", "kzdraw: " + reason + "\n"};
}

// What a message or a script says for a path.
std::string utf8(const std::filesystem::path& path);
// The bytes of a file, line ends as "\n".
std::string readText(const std::filesystem::path& file);

// For the two builds: runs the program with these files as its standard streams; returns its status.
int runProcess(const std::filesystem::path& program, const std::vector<std::string>& arguments,
               const std::filesystem::path& in, const std::filesystem::path& out,
               const std::filesystem::path& err);

}  // namespace test
