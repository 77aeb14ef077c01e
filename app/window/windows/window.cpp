#include "app/window/window.h"

#include <algorithm>
#include <filesystem>

#include "app/window/windows/main_window.h"
#include "app/written_file.h"

namespace app {

namespace {

// A console of its own comes and goes with the program: it was started from the desktop.
bool hasOwnConsole() {
    DWORD processes[2];
    return GetConsoleProcessList(processes, 2) == 1;
}

}  // namespace

int runWindow(const std::string& file) {
    if (hasOwnConsole()) FreeConsole();
    window::User user;
    window::MainWindow window(user);
    if (!window.create()) throw Failure{"the window cannot be opened"};
    window.ShowWindow(SW_SHOWDEFAULT);
    window.UpdateWindow();
    if (!file.empty()) window.open(file);
    return window.run();
}

bool isForWindow(const std::vector<std::string>& arguments) {
    if (arguments.empty()) return hasOwnConsole();
    if (arguments.size() != 1 || arguments[0].empty() || arguments[0].starts_with('-')) return false;
    const std::string extension = extensionOf(arguments[0]);
    return extension == ".svg" || extension == ".svgz";
}

}  // namespace app
