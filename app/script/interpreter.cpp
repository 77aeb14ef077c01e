#include "app/script/interpreter.h"

#include <algorithm>
#include <array>
#include <istream>
#include <new>

#include "app/filter_report.h"
#include "app/report.h"
#include "app/script/refer_item_argument.h"
#include "app/script/words.h"
#include "app/stored_prefs.h"
#include "app/written_drawing.h"
#include "app/written_file.h"
#include "kzcore/view/view.h"

namespace app {

namespace {

using Words = std::vector<std::string>;

// A line of that length names a few million objects; it bounds the memory that a script can take.
constexpr std::size_t kLongestLine = std::size_t{64} << 20;

void doOpen(Session& session, const Words& words) {
    session.open(words[1]);
}

void doSave(Session& session, const Words& words) {
    writeFile(words[1], drawingBytes(session.document(), nullptr));
}

void doRender(Session& session, const Words& words) {
    const PictureSize size = words.size() == 3 ? readPictureSize(words[2]) : PictureSize();
    checkPictureName(words[1]);
    writeFile(words[1], drawPng(session.view(), size));
}

void doSelect(Session& session, const Words& words) {
    const bool none = words.size() == 2 && words[1] == "none" && !session.document().findObject("none");
    session.select(none ? Words() : Words(words.begin() + 1, words.end()));
}

void doUndo(Session& session, const Words&) {
    if (!session.view().getHistory().undo()) throw Failure{"there is nothing to undo"};
}

void doRedo(Session& session, const Words&) {
    if (!session.view().getHistory().redo()) throw Failure{"there is nothing to redo"};
}

void doTool(Session& session, const Words& words) {
    const APlugInTool* entry = session.plugIn().findTool(AString::fromUtf8(words[1]));
    const bool takesItem = entry && (entry->flags & kToolTakesItem) != 0;
    // Of the flagged tools, Show All works on the whole view and is started without an item.
    if (entry && words.size() == 3 && !takesItem) throw Failure{"the tool " + words[1] + " takes no item"};
    AReferItem* item = words.size() == 3 ? findReferItem(session.document(), words[2]) : nullptr;
    if (!session.runTool(words[1], item)) printJson({{"tool", words[1]}, {"valid", false}});
}

constexpr std::string_view kPrintUsage =
    "print selection | filter | visible | objects | tools | messages | prefs";

void doPrint(Session& session, const Words& words) {
    const std::string& what = words[1];
    if (what == "selection")
        printSelection(session.view());
    else if (what == "objects")
        printObjects(session.document());
    else if (what == "filter")
        printJson(reportFilter(session.view()));
    else if (what == "visible")
        printVisible(session.view());
    else if (what == "tools")
        printJson(reportTools(session));
    else if (what == "messages")
        printJson(reportMessages());
    else if (what == "prefs")
        printJson(reportPrefs());
    else
        throw Failure{"cannot print " + inQuotes(what) + ": usage: " + std::string(kPrintUsage)};
}

struct Command {
    std::string_view name;
    std::size_t leastWords, mostWords;  // behind the name
    std::string_view usage;
    void (*run)(Session&, const Words&);
};

constexpr std::size_t kAny = std::string::npos - 1;

constexpr std::array kCommands = {
    Command{"open", 1, 1, "open FILE", doOpen},
    Command{"save", 1, 1, "save FILE", doSave},
    Command{"render", 1, 2, "render FILE [WIDTHxHEIGHT]", doRender},
    Command{"select", 1, kAny, "select ID... | select none", doSelect},
    Command{"tool", 1, 2, "tool CLASS [color:NAME | fill:ID | stroke:ID]", doTool},
    Command{"undo", 0, 0, "undo", doUndo},
    Command{"redo", 0, 0, "redo", doRedo},
    Command{"print", 1, 1, kPrintUsage, doPrint},
};

void runLine(Session& session, const std::string& line) {
    Words words;
    std::string error;
    if (!splitWords(line, words, error)) throw Failure{error};
    if (words.empty()) return;
    const auto command = std::ranges::find(kCommands, words[0], &Command::name);
    if (command == kCommands.end()) throw Failure{"unknown command " + inQuotes(words[0])};
    const std::size_t count = words.size() - 1;
    if (count < command->leastWords || count > command->mostWords)
        throw Failure{"usage: " + std::string(command->usage)};
    command->run(session, words);
}

// False at the end of the script. The line comes without its line feed.
bool readLine(std::istream& script, std::string& line) {
    line.clear();
    constexpr int kEnd = std::istream::traits_type::eof();
    std::streambuf& source = *script.rdbuf();
    int c = source.sbumpc();
    if (c == kEnd) return false;
    for (; c != kEnd && c != '\n'; c = source.sbumpc()) {
        if (line.size() == kLongestLine) throw Failure{"the line is too long"};
        line += static_cast<char>(c);
    }
    return true;
}

}  // namespace

void interpret(Session& session, std::istream& script, const std::string& name) {
    int number = 1;
    try {
        constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";  // editors put it in front
        for (std::string line; readLine(script, line); ++number) {
            if (number == 1 && line.starts_with(kByteOrderMark)) line.erase(0, kByteOrderMark.size());
            runLine(session, line);
        }
    } catch (const Failure& failure) {
        throw Failure{name + ':' + std::to_string(number) + ": " + failure.reason};
    } catch (const std::ios_base::failure&) {
        throw Failure{name + ':' + std::to_string(number) + ": cannot be read any further"};
    } catch (const std::bad_alloc&) {
        throw Failure{name + ':' + std::to_string(number) + ": not enough memory"};
    }
}

std::string scriptHelp() {
    std::string help = "A line of a script is one of these commands:\n";
    for (const Command& command : kCommands) help += "  " + std::string(command.usage) + '\n';
    return help +
           "Words are split as a shell does, # starts a comment. Each print writes one line of JSON.\n"
           "The first line that fails ends the script.\n";
}

}  // namespace app
