// The program's commands. Each returns the exit status: 0 done, 1 nothing matched; what goes wrong raises
// Failure. Those that take several drawings: see drawings.h.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace app {

struct InfoOptions {
    std::vector<std::string> files;
    bool json = false;
};
int runInfo(const InfoOptions& options);
// Without a file no drawing is open, and no tool that needs one is valid.
int runTools(const std::optional<std::string>& file, bool json);

// What Select by Attributes offers for a drawing, and how many objects each entry stands for.
int runAttributes(const std::string& file, bool json);

enum class SelectBy { similarObjects, color, attributes };
struct SelectOptions {
    std::vector<std::string> files;
    SelectBy by = SelectBy::similarObjects;
    std::string reference;            // the object to go by
    std::vector<std::string> where;   // PAGE/PATH of the entries to tick
    std::vector<std::string> within;  // the objects to keep to; none: all
    bool json = false;
};
int runSelect(const SelectOptions& options);

struct ViewStep {
    std::string tool;  // its class
    std::string item;  // NAME or #rrggbb of a colour, color:NAME, fill:ID or stroke:ID
};
struct ViewOptions {
    std::vector<std::string> files;
    std::vector<ViewStep> steps;      // in their order
    std::optional<std::string> out;   // pattern of the names of pictures or drawings: see outputNames()
    std::optional<std::string> size;  // of the picture
    std::optional<std::string> background;
    bool json = false;
};
// Without a file to write, what is hidden is told.
int runView(const ViewOptions& options);

struct RenderOptions {
    std::vector<std::string> files;
    std::string out;                        // pattern of the pictures' names
    std::optional<std::string> size;        // else the page's
    std::optional<std::string> area;        // else the page
    std::optional<std::string> background;  // else white
    bool json = false;
};
int runRender(const RenderOptions& options);

// What the dialogs remember for the next run. `reset`: forget it, and then tell what is left.
int runPrefs(bool reset, bool json);

// "-": standard input.
int runScript(const std::string& file);

}  // namespace app
