#include "app/main/program.h"
#include "kzutil/utf.h"

// Where the shell does not expand *.svg, as on this system, the program's start does.
extern "C" int _dowildcard;
int _dowildcard = -1;

// The wide command line, so that file names of every language arrive.
int wmain(int argc, wchar_t** argv) {
    try {
        std::vector<std::string> arguments;
        for (int i = 1; i < argc; ++i) arguments.push_back(kzutil::narrow(argv[i]));
        return app::run(std::move(arguments));
    } catch (...) {
        return app::failed();
    }
}
