#include "app/script/interpreter.h"

#include <array>
#include <istream>

#include "app/report.h"
#include "app/script/refer_item_argument.h"
#include "app/script/words.h"
#include "kzcore/view.h"

namespace app {

namespace {

using Words = std::vector<std::string>;

void needArguments(const Words& words, std::size_t least, std::size_t most, const char* usage) {
    const std::size_t count = words.size() - 1;
    if (count < least || count > most) throw Failure{std::string("usage: ") + usage};
}

void doOpen(Session& session, const Words& words) {
    needArguments(words, 1, 1, "open FILE");
    session.open(words[1]);
}

void doSelect(Session& session, const Words& words) {
    needArguments(words, 1, words.size(), "select ID... or select none");
    const bool none = words.size() == 2 && words[1] == "none" && !session.document().findObject("none");
    session.select(none ? Words() : Words(words.begin() + 1, words.end()));
}

void doUndo(Session& session, const Words& words) {
    needArguments(words, 0, 0, "undo");
    if (!session.document().getView().getHistory().undo()) throw Failure{"there is nothing to undo"};
}

void doRedo(Session& session, const Words& words) {
    needArguments(words, 0, 0, "redo");
    if (!session.document().getView().getHistory().redo()) throw Failure{"there is nothing to redo"};
}

void doTool(Session& session, const Words& words) {
    needArguments(words, 1, 2, "tool CLASS [ITEM]");
    const APlugInTool* entry = session.plugIn().findTool(AString::fromUtf8(words[1]));
    const bool takesItem = entry && (entry->flags & kToolTakesItem) != 0;
    // Of the flagged tools, Show All works on the whole view and is started without an item.
    if (entry && words.size() == 3 && !takesItem) throw Failure{"the tool " + words[1] + " takes no item"};
    AReferItem* item = words.size() == 3 ? findReferItem(session.document(), words[2]) : nullptr;
    if (!session.runTool(words[1], item)) printJson({{"tool", words[1]}, {"valid", false}});
}

void printWhat(Session& session, const Words& words) {
    needArguments(words, 1, 1, "print selection|tools|objects|messages");
    const std::string& what = words[1];
    if (what == "selection")
        printSelection(session.document());
    else if (what == "objects")
        printObjects(session.document());
    else if (what == "tools")
        printJson(reportTools(session));
    else if (what == "messages")
        printJson(reportMessages());
    else
        throw Failure{"cannot print \"" + what + "\""};
}

struct Command {
    std::string_view name;
    void (*run)(Session&, const Words&);
};

constexpr std::array kCommands = {
    Command{"open", doOpen}, Command{"select", doSelect}, Command{"tool", doTool},
    Command{"undo", doUndo}, Command{"redo", doRedo},     Command{"print", printWhat},
};

void runLine(Session& session, const std::string& line) {
    Words words;
    std::string error;
    if (!splitWords(line, words, error)) throw Failure{error};
    if (words.empty()) return;
    for (const Command& command : kCommands) {
        if (command.name == words[0]) return command.run(session, words);
    }
    throw Failure{"unknown command \"" + words[0] + "\""};
}

}  // namespace

void interpret(Session& session, std::istream& script, const std::string& name) {
    std::string line;
    for (int number = 1; std::getline(script, line); ++number) {
        try {
            runLine(session, line);
        } catch (const Failure& failure) {
            throw Failure{name + ":" + std::to_string(number) + ": " + failure.reason};
        }
    }
    if (script.bad()) throw Failure{name + ": cannot be read to its end"};
}

}  // namespace app
