#include "app/script/interpreter.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <istream>
#include <memory>
#include <new>
#include <utility>

#include "app/guarded_author.h"
#include "app/output.h"
#include "app/script/printing.h"
#include "app/script/refer_item_argument.h"
#include "app/script/words.h"
#include "app/written_drawing.h"
#include "app/written_file.h"
#include "kzcore/view/view.h"

namespace app {

namespace {

using Words = std::vector<std::string>;

// A line of that length names a few million objects; it bounds the memory that a script can take.
constexpr std::size_t kLongestLine = std::size_t{64} << 20;

// A script on its way. While a tool's dialog waits for input, the next lines are run on it.
class Interpreter {
public:
    Interpreter(Session& runsIn, LineSource& runs) : session(runsIn), lines(runs) {}

    void run();

    // The dialog that the lines act on. Raises Failure when none is open.
    driver::Dialog& dialog() const {
        if (!m_dialog) throw Failure{"no dialog is open"};
        return *m_dialog;
    }
    driver::Dialog* openDialog() const { return m_dialog; }
    // Runs the tool, with the lines behind this one for its dialog.
    bool runTool(const std::string& className, AReferItem* item);

    Session& session;
    LineSource& lines;
    RowReport rows;

private:
    bool runNextLine();
    bool readWords(Words& words);
    bool actOn(driver::Dialog& dialog);

    driver::Dialog* m_dialog = nullptr;
};

void doOpen(Interpreter& script, const Words& words) {
    script.lines.open(script.session, words[1]);
}

void doSave(Interpreter& script, const Words& words) {
    const bool asShown = words.size() == 3;
    if (asShown && words[2] != "shown") throw Failure{"usage: save FILE [shown]"};
    AViewFilter* const filter = asShown ? script.session.view().m_viewFilter : nullptr;
    script.lines.write(words[1], drawingBytesFor(words[1], script.session.document(), filter));
}

void doRender(Interpreter& script, const Words& words) {
    PictureOptions options;
    if (words.size() > 2) options.size = readPictureSize(words[2]);
    if (words.size() > 3) options.part = readPictureArea(words[3]);
    checkPictureName(words[1]);
    script.lines.write(words[1], drawPng(script.session.view(), options));
}

// An object's name goes before the two words.
void doSelect(Interpreter& script, const Words& words) {
    const bool isWord = words.size() == 2 && !script.session.document().findObject(words[1]);
    if (isWord && words[1] == "all") return script.session.selectAll();
    const bool none = isWord && words[1] == "none";
    script.session.select(none ? Words() : Words(words.begin() + 1, words.end()));
}

void doLayer(Interpreter& script, const Words& words) {
    script.session.changeLayer(words[1], words[2]);
}

void doUndo(Interpreter& script, const Words&) {
    if (!script.session.view().getHistory().undo()) throw Failure{"there is nothing to undo"};
}

void doRedo(Interpreter& script, const Words&) {
    if (!script.session.view().getHistory().redo()) throw Failure{"there is nothing to redo"};
}

void doTool(Interpreter& script, const Words& words) {
    const APlugInTool* entry = script.session.plugIns().findTool(AString::fromUtf8(words[1]));
    const bool takesItem = entry && (entry->flags & kToolTakesItem) != 0;
    // Of the flagged tools, Show All works on the whole view and is started without an item.
    if (entry && words.size() == 3 && !takesItem) throw Failure{"the tool " + words[1] + " takes no item"};
    AReferItem* item = words.size() == 3 ? findReferItem(script.session.document(), words[2]) : nullptr;
    if (!script.runTool(words[1], item)) printJson({{"tool", words[1]}, {"valid", false}});
}

void doPrint(Interpreter& script, const Words& words) {
    printWords(script.session, script.openDialog(), script.rows, words);
}

// A number of pixels on the screen.
int readPixels(const std::string& word) {
    int value = 0;
    const char* end = word.data() + word.size();
    const auto [stop, error] = std::from_chars(word.data(), end, value);
    if (error != std::errc() || stop != end || value < -32768 || value > 32767)
        throw Failure{inQuotes(word) + " is no number of pixels"};
    return value;
}

template <auto act>
void onDialog(Interpreter& script, const Words& words) {
    (script.dialog().*act)(words[1]);
}

template <auto act>
void onDialogPixels(Interpreter& script, const Words& words) {
    (script.dialog().*act)(readPixels(words[1]), readPixels(words[2]));
}

enum class Where { outside, inside, everywhere };  // of a dialog

struct Command {
    std::string_view name;
    std::size_t leastWords, mostWords;  // behind the name
    std::string_view usage;
    void (*run)(Interpreter&, const Words&);
    Where where = Where::outside;
};

constexpr std::size_t kAny = std::string::npos - 1;

constexpr std::array kCommands = {
    Command{"open", 1, 1, "open FILE", doOpen},
    Command{"save", 1, 2, "save FILE [shown]", doSave},
    Command{"render", 1, 3, "render FILE [WIDTHxHEIGHT [X,Y,WIDTH,HEIGHT]]", doRender},
    Command{"select", 1, kAny, "select ID... | select none | select all", doSelect},
    Command{"layer", 2, 2, "layer NAME hide | show | lock | unlock", doLayer},
    Command{"tool", 1, 2, "tool CLASS [color:NAME | fill:ID | stroke:ID]", doTool},
    Command{"undo", 0, 0, "undo", doUndo},
    Command{"redo", 0, 0, "redo", doRedo},
    Command{"print", 0, kAny, "print WHAT", doPrint, Where::everywhere},
    Command{"page", 1, 1, "page NAME", onDialog<&driver::Dialog::page>, Where::inside},
    Command{"click", 1, 1, "click PATH", onDialog<&driver::Dialog::click>, Where::inside},
    Command{"check", 1, 1, "check PATH", onDialog<&driver::Dialog::check>, Where::inside},
    Command{"uncheck", 1, 1, "uncheck PATH", onDialog<&driver::Dialog::uncheck>, Where::inside},
    Command{"expand", 1, 1, "expand PATH", onDialog<&driver::Dialog::expand>, Where::inside},
    Command{"collapse", 1, 1, "collapse PATH", onDialog<&driver::Dialog::collapse>, Where::inside},
    Command{"press", 1, 1, "press CAPTION", onDialog<&driver::Dialog::press>, Where::inside},
    Command{"move", 2, 2, "move X Y", onDialogPixels<&driver::Dialog::move>, Where::inside},
    Command{"size", 2, 2, "size WIDTH HEIGHT", onDialogPixels<&driver::Dialog::size>, Where::inside},
};

void runWords(Interpreter& script, const Words& words) {
    const auto command = std::ranges::find(kCommands, words[0], &Command::name);
    if (command == kCommands.end()) throw Failure{"unknown command " + inQuotes(words[0])};
    const std::size_t count = words.size() - 1;
    if (count < command->leastWords || count > command->mostWords)
        throw Failure{"usage: " + std::string(command->usage)};
    if (command->where == Where::inside) script.dialog();
    if (command->where == Where::outside && script.openDialog())
        throw Failure{inQuotes(words[0]) + " has to wait until the dialog is closed"};
    command->run(script, words);
}

// The words of the next line that says something; false at the end of the script.
bool Interpreter::readWords(Words& words) {
    for (std::string line, error;;) {
        if (!lines.next(line, m_dialog)) return false;
        if (!splitWords(line, words, error)) throw Failure{error};
        if (!words.empty()) return true;
    }
}

// Runs one line; false at the end of the script. What does not work is raised unless the source goes on after it.
bool Interpreter::runNextLine() {
    std::string reason;
    try {
        Words words;
        if (!readWords(words)) return false;
        runWords(*this, words);
        return true;
    } catch (const Failure& failure) {
        reason = failure.reason;
    } catch (const driver::Error& error) {
        reason = error.what();
    } catch (const std::bad_alloc&) {
        reason = "not enough memory";
    }
    if (!lines.goesOnAfter(reason)) throw Failure{reason};
    return true;
}

// The dialog waits: it gets one line.
bool Interpreter::actOn(driver::Dialog& dialog) {
    driver::Dialog* const outer = std::exchange(m_dialog, &dialog);
    const auto restore = [this, outer](void*) { m_dialog = outer; };
    const std::unique_ptr<void, decltype(restore)> restored(this, restore);
    if (!runNextLine())
        throw Failure{"the script ends inside the dialog " + inQuotes(dialog.describe().title)};
    return true;
}

bool Interpreter::runTool(const std::string& className, AReferItem* item) {
    if (!lines.drivesDialogs()) return session.runTool(className, item);
    GuardedAuthor author([this](driver::Dialog& waiting) { return actOn(waiting); });
    const driver::Driver user(author.asAuthor());
    const bool valid = session.runTool(className, item);
    author.rethrow();
    return valid;
}

void Interpreter::run() {
    while (runNextLine()) {
    }
}

// The lines of a stream. They name files as the user does.
class StreamLines : public LineSource {
public:
    StreamLines(std::istream& script) : m_script(script) {}

    bool next(std::string& line, driver::Dialog*) override;
    bool goesOnAfter(const std::string&) override { return false; }
    void open(Session& session, const std::string& name) override { session.open(name); }
    void write(const std::string& name, std::string_view bytes) override { writeFile(name, bytes); }

    // The number of the line that was asked for last.
    int number() const { return m_number; }

private:
    std::istream& m_script;
    int m_number = 0;
};

bool StreamLines::next(std::string& line, driver::Dialog*) {
    constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";  // editors put it in front
    constexpr int kEnd = std::istream::traits_type::eof();
    ++m_number;
    line.clear();
    std::streambuf& source = *m_script.rdbuf();
    int c = source.sbumpc();
    if (c == kEnd) return false;
    for (; c != kEnd && c != '\n'; c = source.sbumpc()) {
        if (line.size() == kLongestLine) throw Failure{"the line is too long"};
        line += static_cast<char>(c);
    }
    if (m_number == 1 && line.starts_with(kByteOrderMark)) line.erase(0, kByteOrderMark.size());
    return true;
}

}  // namespace

void interpret(Session& session, LineSource& lines) {
    Interpreter(session, lines).run();
}

void interpret(Session& session, std::istream& script, const std::string& name) {
    StreamLines lines(script);
    std::string reason;
    try {
        interpret(session, lines);
        return;
    } catch (const Failure& failure) {
        reason = failure.reason;
    } catch (const std::ios_base::failure&) {
        reason = "cannot be read any further";
    }
    throw Failure{name + ':' + std::to_string(lines.number()) + ": " + reason};
}

std::string scriptHelp() {
    std::string help = "A line of a script is one of these commands:\n";
    for (const Command& command : kCommands) help += "  " + std::string(command.usage) + '\n';
    return help + "What print prints, one line of JSON each:\n" + printHelp() +
           "While a tool's dialog is open, the lines from page on act on it, as a user would.\n"
           "Words are split as a shell does, # starts a comment.\n"
           "The first line that fails ends the script.\n";
}

}  // namespace app
