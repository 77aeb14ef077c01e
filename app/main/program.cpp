#include "app/main/program.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdlib>
#include <exception>
#include <map>
#include <new>
#include <optional>

#include "app/commands/commands.h"
#include "app/output.h"
#include "app/script/interpreter.h"
#include "app/session.h"
#include "app/web/serve.h"
#include "app/window/window.h"
#include "kzutil/preference_manager.h"
#include "kzutil/user_folder.h"

namespace app {

namespace {

constexpr int kFailed = 2;

constexpr char kDescription[] =
    "kzdraw selects the objects of a drawing by their attributes and shows or hides them by color.";
constexpr char kFooter[] =
    "kzdraw COMMAND --help tells more of a command.\n"
    "Exit status: 0 done, 1 nothing matched, 2 wrong usage or unreadable input.\n\n"
    "Example:\n  kzdraw select harbour.svg --similar-to house-1-roof\n"
    "  kzdraw select harbour.svg --same-color-as trawler-hull\n"
    "  kzdraw view harbour.svg --hide crimson -o without.png";

CLI::App* addCommand(CLI::App& program, const char* name, const char* description,
                     const std::string& footer) {
    CLI::App* command = program.add_subcommand(name, description);
    command->footer(footer)->group("Commands");
    return command;
}

CLI::Option* addFile(CLI::App* command, std::string& file, const char* description) {
    return command->add_option("FILE", file, description)->type_name("");
}

constexpr char kPattern[] = "{name} stands for the drawing's name, {folder} for its folder";

CLI::Option* addSize(CLI::App* command, std::string& size) {
    return command
        ->add_option("--size", size, "The picture's size in pixels, WIDTHxHEIGHT or WIDTH; else the page's")
        ->type_name("SIZE");
}

CLI::Option* addBackground(CLI::App* command, std::string& background) {
    return command
        ->add_option("--background", background, "What the picture's ground is, none or a color; else white")
        ->type_name("COLOR");
}

void addFiles(CLI::App* command, std::vector<std::string>& files) {
    command->add_option("FILE", files, "SVG drawings, also compressed, .svgz")->type_name("")->required();
}

// A footer of the commands that take several drawings.
std::string several(const std::string& example) {
    return "Of several drawings, those that fail are told, and the others are done nevertheless; the "
           "exit status is then 2.\n\n" +
           example;
}

void addJson(CLI::App* command, bool& json) {
    command->add_flag("--json", json, "Print JSON, one line");
}

// The four options of "view", each of which starts a tool.
struct ToolOption {
    const char* name;
    const char* tool;
    const char* description;
};
constexpr ToolOption kToolOptions[] = {
    {"--hide", "AHideThisTool", "Hide what has this color"},
    {"--show", "AShowThisTool", "Show what has this color"},
    {"--only", "AHideAllExceptTool", "Hide what has any other color"},
    {"--except", "AShowAllExceptTool", "Show what has any other color"},
};

// Each may be given often; their order among each other counts, which only parse_order() tells.
std::vector<ViewStep> stepsOf(const CLI::App& view) {
    std::vector<ViewStep> steps;
    std::map<const CLI::Option*, std::size_t> taken;
    for (const CLI::Option* option : view.parse_order()) {
        for (const ToolOption& one : kToolOptions) {
            if (!option->check_name(one.name)) continue;
            steps.push_back({one.tool, option->results().at(taken[option]++)});
        }
    }
    return steps;
}

void setUp(CLI::App& program) {
    program.set_version_flag("--version", "kzdraw " KZ_VERSION, "Print the version and exit");
    program.set_help_flag("-h,--help", "Print this help and exit");
    program.require_subcommand(1);
    program.footer(kFooter);
    program.allow_windows_style_options(false);  // "/folder/file" is a file on every system
    program.get_formatter()->label("SUBCOMMAND", "COMMAND");
    program.get_formatter()->label("Positionals", "Arguments");
    program.get_formatter()->label("REQUIRED", "(required)");
}

// CLI11 tells of a missing command in its own words, and of an unknown one not at all.
void expectCommand(const CLI::App& program, const std::vector<std::string>& arguments) {
    const std::string first = arguments.empty() ? "" : arguments[0];
    if (program.get_option_no_throw(first)) return;
    if (first.starts_with('-'))
        throw Failure{"there is no option " + inQuotes(first) + " (see kzdraw --help)"};
    std::string names;
    for (const CLI::App* command : program.get_subcommands({})) {
        if (command->get_name() == first) return;
        if (command->get_group().empty()) continue;
        names += (names.empty() ? "" : ", ") + command->get_name();
    }
    throw Failure{(arguments.empty() ? "a command is missing" : "there is no command " + inQuotes(first)) +
                  ": it is one of " + names + " (see kzdraw --help)"};
}

std::string helpOf(const CLI::App& program) {
    std::string command = "kzdraw ";
    for (const CLI::App* given : program.get_subcommands()) command += given->get_name() + " ";
    return " (see " + command + "--help)";
}

// Of a command with its file.
struct NotEnoughMemory {
    std::string file;
};

// What the command line says, kept until its command runs.
struct Given {
    int status = 0;  // what the command returned
    std::string file, out, size, area, background;
    bool json = false, reset = false;
    std::string similar, colored;
    std::vector<std::string> where, within, files;  // of `file` and `files` a command has one
    int port = 0, socket = -1;
    bool noOpen = false;
    std::vector<std::string> colors;  // of the tool options, in no order: see stepsOf
};

std::optional<std::string> valueOf(const CLI::Option* option, const std::string& value) {
    return option->count() > 0 ? std::optional(value) : std::nullopt;
}

void addInfo(CLI::App& program, Given& given) {
    CLI::App* info = addCommand(program, "info", "Tell what a drawing holds: page, layers, objects, colors",
                                several("Example:\n  kzdraw info harbour.svg\n  kzdraw info --json *.svg"));
    addFiles(info, given.files);
    addJson(info, given.json);
    info->final_callback([&given] { given.status = runInfo({given.files, given.json}); });
}

void addTools(CLI::App& program, Given& given) {
    CLI::App* tools =
        addCommand(program, "tools", "List the plug-in's tools", "Example:\n  kzdraw tools --json");
    const CLI::Option* file =
        addFile(tools, given.file, "With --json: the SVG drawing that tells which tools are valid");
    addJson(tools, given.json);
    tools->final_callback([&given, file] { given.status = runTools(valueOf(file, given.file), given.json); });
}

void addAttributes(CLI::App& program, Given& given) {
    CLI::App* attributes =
        addCommand(program, "attributes", "List what a drawing's objects can be selected by",
                   "Beside each entry stands how many objects it selects when it is ticked alone.\n\n"
                   "Example:\n  kzdraw attributes harbour.svg");
    addFile(attributes, given.file, "An SVG drawing")->required();
    addJson(attributes, given.json);
    attributes->final_callback([&given] { given.status = runAttributes(given.file, given.json); });
}

void addSelect(CLI::App& program, Given& given) {
    CLI::App* select = addCommand(
        program, "select", "Select objects and tell which",
        "Entries of one page are alternatives; what is ticked on several pages has to hold "
        "together. kzdraw attributes lists them.\n\n" +
            several("Example:\n  kzdraw select harbour.svg --similar-to house-1-roof\n"
                    "  kzdraw select harbour.svg --same-color-as trawler-hull\n"
                    "  kzdraw select harbour.svg --where Object/Rectangle --where 'Stroke/No stroke'\n"
                    "  kzdraw select --json --where 'Effect/Shadow' plans/*.svg"));
    addFiles(select, given.files);
    const CLI::Option* similar =
        select->add_option("--similar-to", given.similar, "Every object of the class of the object ID")
            ->type_name("ID");
    const CLI::Option* color =
        select->add_option("--same-color-as", given.colored, "Every object with the fill of the object ID")
            ->type_name("ID");
    const CLI::Option* where =
        select->add_option("--where", given.where, "Every object that this entry stands for")
            ->type_name("PAGE/PATH")
            ->allow_extra_args(false);
    const CLI::Option* within =
        select->add_option("--within", given.within, "With --where: of these objects and what is in them")
            ->type_name("ID...");
    addJson(select, given.json);
    select->final_callback([&program, &given, similar, color, where, within] {
        const bool byAttributes = where->count() > 0;
        if (similar->count() + color->count() + (byAttributes ? 1 : 0) != 1)
            throw Failure{"one of --similar-to, --same-color-as and --where is needed" + helpOf(program)};
        if (within->count() > 0 && !byAttributes) throw Failure{"--within needs --where" + helpOf(program)};
        const bool byColor = color->count() == 1;
        given.status =
            runSelect({given.files,
                       byAttributes ? SelectBy::attributes
                       : byColor    ? SelectBy::color
                                    : SelectBy::similarObjects,
                       byColor ? given.colored : given.similar, given.where, given.within, given.json});
    });
}

void addView(CLI::App& program, Given& given) {
    CLI::App* view =
        addCommand(program, "view", "Show and hide colors; write what is left, or tell",
                   "A COLOR is the name of a color or #rrggbb; fill:ID and stroke:ID are what the "
                   "object ID has.\n\n" +
                       several("Example:\n  kzdraw view harbour.svg --hide crimson -o without.png\n"
                               "  kzdraw view harbour.svg --only fill:trawler-hull -o hull.svg\n"
                               "  kzdraw view --hide crimson -o 'out/{name}.svgz' plans/*.svg"));
    addFiles(view, given.files);
    for (const ToolOption& one : kToolOptions) {
        view->add_option(one.name, given.colors, one.description)
            ->type_name("COLOR")
            ->allow_extra_args(false);
    }
    const CLI::Option* out =
        view->add_option("-o,--output", given.out,
                         "Write a picture, .png, or a drawing, .svg or .svgz, without what is hidden; " +
                             std::string(kPattern))
            ->type_name("FILE");
    const CLI::Option* size = addSize(view, given.size);
    const CLI::Option* background = addBackground(view, given.background);
    addJson(view, given.json);
    view->final_callback([&given, view, out, size, background] {
        given.status =
            runView({given.files, stepsOf(*view), valueOf(out, given.out), valueOf(size, given.size),
                     valueOf(background, given.background), given.json});
    });
}

void addRender(CLI::App& program, Given& given) {
    CLI::App* render =
        addCommand(program, "render", "Draw a picture of a drawing",
                   several("Example:\n  kzdraw render harbour.svg -o harbour.png --size 1600x1200\n"
                           "  kzdraw render plans/*.svg -o 'out/{name}.png'"));
    addFiles(render, given.files);
    render->add_option("-o,--output", given.out, "The picture, a PNG file; " + std::string(kPattern))
        ->type_name("FILE")
        ->required();
    const CLI::Option* size = addSize(render, given.size);
    const CLI::Option* area =
        render->add_option("--area", given.area, "The part to draw, in user units; else the page")
            ->type_name("X,Y,WIDTH,HEIGHT");
    const CLI::Option* background = addBackground(render, given.background);
    addJson(render, given.json);
    render->final_callback([&given, size, area, background] {
        given.status =
            runRender({given.files, given.out, valueOf(size, given.size), valueOf(area, given.area),
                       valueOf(background, given.background), given.json});
    });
}

void addPrefs(CLI::App& program, Given& given) {
    CLI::App* prefs = addCommand(program, "prefs", "Tell what the dialogs remember for the next run",
                                 "Example:\n  kzdraw prefs --reset");
    prefs->add_flag("--reset", given.reset, "Forget it: dialogs open where and as large as they first did");
    addJson(prefs, given.json);
    prefs->final_callback([&given] { given.status = runPrefs(given.reset, given.json); });
}

void addScript(CLI::App& program, Given& given) {
    CLI::App* script = addCommand(program, "script", "Run the commands of a script", "");
    script->footer(scriptHelp() + "\nExample:\n  kzdraw script select-boats.kzs");
    addFile(script, given.file, "A script, - for standard input")->required();
    script->final_callback([&given] { given.status = runScript(given.file); });
}

void addServe(CLI::App& program, Given& given) {
    CLI::App* serve =
        addCommand(program, "serve", "Show drawings, the tools and their dialogs in a browser",
                   "It prints the address of the page, for this machine only, and serves it until "
                   "it is interrupted.\n\n"
                   "Example:\n  kzdraw serve harbour.svg");
    serve
        ->add_option("FILE", given.files,
                     "SVG drawings that the page may open; others can be dropped onto it")
        ->type_name("");
    serve->add_option("--port", given.port, "The port; else any that is free")
        ->type_name("PORT")
        ->check(CLI::Range(1, 65535));
    serve->add_flag("--no-open", given.noOpen, "Do not open the page in the user's browser");
    serve->final_callback([&given] { given.status = runServe({given.files, given.port, !given.noOpen}); });
    // What serve starts for each tab.
    CLI::App* session = program.add_subcommand("session", "A session of a page")->group("");
    session->add_option("SOCKET", given.socket, "")->required();
    session->add_option("FILE", given.files, "");
    session->final_callback([&given] { given.status = runServedSession(given.socket, given.files); });
}

void addWindow(CLI::App& program, Given& given) {
    CLI::App* window = addCommand(program, "window", "Show a drawing in a window, on Windows",
                                  "There, kzdraw drawing.svg does the same.\n\n"
                                  "Example:\n  kzdraw window harbour.svg");
    addFile(window, given.file, "An SVG drawing; others can be opened and dropped");
    window->final_callback([&given] { given.status = runWindow(given.file); });
}

// Without a folder of the user's, nothing is remembered.
void namePreferenceFolder() {
    const std::filesystem::path folder = kzutil::userConfigurationFolder();
    if (!folder.empty()) APreferenceManager::setFolder(folder / "kzdraw");
}

int parseAndRun(std::vector<std::string> arguments) {
    CLI::App program(kDescription, "kzdraw");
    setUp(program);
    Given given;
    for (const auto add : {addInfo, addTools, addAttributes, addSelect, addView, addRender, addPrefs,
                           addScript, addServe, addWindow})
        add(program, given);
    if (isForWindow(arguments)) arguments.insert(arguments.begin(), "window");
    try {
        expectCommand(program, arguments);
        std::ranges::reverse(arguments);  // the order in which CLI11 takes them
        program.parse(std::move(arguments));
    } catch (const CLI::CallForHelp&) {
        print(program.help());
    } catch (const CLI::CallForVersion& version) {
        printLine(version.what());
    } catch (const CLI::ParseError& error) {
        throw Failure{error.what() + helpOf(program)};
    } catch (const std::bad_alloc&) {
        throw NotEnoughMemory{std::move(given.files.size() == 1 ? given.files[0] : given.file)};
    }
    return given.status;
}

// Without memory the JSON library raises out of its destructors; files are whole or as they were at any time.
[[noreturn]] void endWithoutMemory() {
    try {
        if (std::current_exception()) throw;
    } catch (const std::bad_alloc&) {
        std::_Exit(failed());
    } catch (...) {
    }
    std::abort();
}

}  // namespace

int run(std::vector<std::string> arguments) {
    std::set_terminate(endWithoutMemory);
    namePreferenceFolder();
    const int status = parseAndRun(std::move(arguments));
    flushOutput();
    return status;
}

int failed() noexcept {
    try {
        throw;
    } catch (const Failure& failure) {
        printError(failure.reason);
    } catch (const OutputError& error) {
        printError(error.reason);
    } catch (const NotEnoughMemory& shortage) {
        printError(shortage.file, shortage.file.empty() ? "not enough memory" : ": not enough memory");
    } catch (const std::bad_alloc&) {
        printError("not enough memory");
    } catch (const std::exception& error) {
        printError(error.what());
    } catch (...) {
        printError("failed for an unknown reason");
    }
    return kFailed;
}

}  // namespace app
