#include "app/program.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <new>

#include "app/commands/commands.h"
#include "app/output.h"
#include "app/session.h"

namespace app {

namespace {

constexpr int kFailed = 2;

void addJson(CLI::App* command, bool& json) {
    command->add_flag("--json", json, "Print JSON, one line");
}

int parseAndRun(std::vector<std::string> arguments) {
    CLI::App program("Draws and selects by attributes.", "kzdraw");
    program.set_version_flag("--version", "kzdraw " KZ_VERSION);
    program.require_subcommand(1);
    int status = 0;

    std::string file;
    bool json = false;
    CLI::App* info = program.add_subcommand("info", "Tell what a drawing holds");
    info->add_option("FILE", file, "An SVG drawing")->required();
    addJson(info, json);
    info->final_callback([&] { status = runInfo(file, json); });

    CLI::App* tools = program.add_subcommand("tools", "List the plug-in's tools");
    tools->add_option("FILE", file, "A drawing to be open meanwhile");
    addJson(tools, json);
    tools->final_callback([&] { status = runTools(file, json); });

    SelectOptions options;
    CLI::App* select = program.add_subcommand("select", "Select objects and tell which");
    select->add_option("FILE", options.file, "An SVG drawing")->required();
    select->add_option("--similar-to", options.similarTo, "Every object of the class of the object ID")
        ->required()
        ->type_name("ID");
    addJson(select, options.json);
    select->final_callback([&] { status = runSelect(options); });

    CLI::App* script = program.add_subcommand("script", "Run the commands of a file, - for standard input");
    script->add_option("FILE", file, "A script")->required();
    script->final_callback([&] { status = runScript(file); });

    try {
        std::ranges::reverse(arguments);  // the order in which CLI11 takes them
        program.parse(std::move(arguments));
    } catch (const CLI::CallForHelp&) {
        print(program.help());
    } catch (const CLI::CallForAllHelp&) {
        print(program.help("", CLI::AppFormatMode::All));
    } catch (const CLI::CallForVersion& version) {
        printLine(version.what());
    } catch (const CLI::ParseError& error) {
        throw Failure{std::string(error.what()) + " (see kzdraw --help)"};
    }
    return status;
}

}  // namespace

int run(std::vector<std::string> arguments) {
    try {
        const int status = parseAndRun(std::move(arguments));
        flushOutput();
        return status;
    } catch (const Failure& failure) {
        printError(failure.reason);
    } catch (const OutputError& error) {
        printError(error.reason);
    } catch (const std::bad_alloc&) {
        printError("not enough memory");
    } catch (const std::exception& error) {
        printError(error.what());
    }
    return kFailed;
}

}  // namespace app
