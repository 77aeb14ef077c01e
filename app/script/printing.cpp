#include "app/script/printing.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

#include "app/color_report.h"
#include "app/dialog_report.h"
#include "app/filter_report.h"
#include "app/place_report.h"
#include "app/report.h"
#include "app/state_report.h"
#include "app/stored_prefs.h"

namespace app {

namespace {

using Words = std::vector<std::string>;

struct Request {
    Session& session;
    driver::Dialog* open;  // null without one
    RowReport& rows;
    const Words& words;  // what to print, then its arguments

    driver::Dialog& dialog() const {
        if (!open) throw Failure{"no dialog is open"};
        return *open;
    }
};

double readNumber(const std::string& word) {
    double value = 0;
    const char* end = word.data() + word.size();
    const auto [stop, error] = std::from_chars(word.data(), end, value);
    if (error != std::errc() || stop != end || !std::isfinite(value))
        throw Failure{inQuotes(word) + " is no number"};
    return value;
}

AFRect readArea(const Words& words) {
    const double x = readNumber(words[1]), y = readNumber(words[2]);
    const double width = readNumber(words[3]), height = readNumber(words[4]);
    if (!(width > 0) || !(height > 0)) throw Failure{"the width and height of an area are above 0"};
    return {x, y, x + width, y + height};
}

void printAt(const Request& asked) {
    const AFPoint point{readNumber(asked.words[1]), readNumber(asked.words[2])};
    const double tolerance = asked.words.size() == 4 ? readNumber(asked.words[3]) : 0;
    if (tolerance < 0) throw Failure{"a tolerance is not below 0"};
    printJson(reportAt(asked.session, point, tolerance));
}

void printRows(const Request& asked) {
    std::optional<unsigned> since;
    if (asked.words.size() == 2) {
        unsigned revision = 0;
        const std::string& word = asked.words[1];
        const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), revision);
        if (error != std::errc() || end != word.data() + word.size())
            throw Failure{inQuotes(word) + " is no revision"};
        since = revision;
    }
    printJson(asked.rows.report(asked.dialog(), since));
}

struct Printer {
    std::string_view name;
    std::size_t leastWords, mostWords;  // behind the name
    std::string_view arguments;
    std::string_view tells;
    void (*print)(const Request&);
};

constexpr char kSeeHelp[] = "kzdraw script --help lists what can be printed";

constexpr std::array kPrinters = {
    Printer{"selection", 0, 0, "", "the selected objects, in their order",
            [](const Request& r) { printSelection(r.session.view()); }},
    Printer{"filter", 0, 0, "", "the colors that the view hides and shows",
            [](const Request& r) { printJson(reportFilter(r.session.view())); }},
    Printer{"visible", 0, 0, "", "of every object, whether its fill and stroke are shown",
            [](const Request& r) { printVisible(r.session.view()); }},
    Printer{"objects", 0, 0, "", "every object, with its class, place and paint",
            [](const Request& r) { printObjects(r.session.document()); }},
    Printer{"colors", 0, 0, "", "the colors, gradients and patterns in use, with their objects counted",
            [](const Request& r) { printJson(reportColors(r.session)); }},
    Printer{"layers", 0, 0, "", "the layers",
            [](const Request& r) {
                printJson({{"layers", reportLayers(r.session.document())}});
            }},
    Printer{"at", 2, 3, " X Y [TOLERANCE]", "what lies there, in user units, topmost first", printAt},
    Printer{"inside", 4, 4, " X Y WIDTH HEIGHT", "what lies within the area",
            [](const Request& r) { printJson(reportInside(r.session, readArea(r.words))); }},
    Printer{"touching", 4, 4, " X Y WIDTH HEIGHT", "what lies within the area or reaches into it",
            [](const Request& r) { printJson(reportTouching(r.session, readArea(r.words))); }},
    Printer{"extents", 0, 0, "", "the boxes of the selected objects",
            [](const Request& r) { printJson(reportExtents(r.session)); }},
    Printer{"state", 0, 0, "", "numbers that change with the drawing, its selection and its picture",
            [](const Request& r) { printJson(reportState(r.session, r.open)); }},
    Printer{"tools", 0, 0, "", "the tools, and whether they are valid now",
            [](const Request& r) { printJson(reportTools(r.session)); }},
    Printer{"messages", 0, 0, "", "what was shown to the user since it was last printed",
            [](const Request&) { printJson(reportMessages()); }},
    Printer{"prefs", 0, 0, "", "what dialogs remember", [](const Request&) { printJson(reportPrefs()); }},
    Printer{"dialog", 0, 0, "", "the open dialog: its pages and controls",
            [](const Request& r) { printJson(reportDialog(r.dialog())); }},
    Printer{"kinds", 0, 0, "", "what its controls are",
            [](const Request& r) { printJson(reportKinds(r.dialog())); }},
    Printer{"tree", 0, 0, "", "its tree, an entry within the other",
            [](const Request& r) { printJson(reportTree(r.dialog())); }},
    Printer{"rows", 0, 1, " [REVISION]", "its tree as rows, or what changed of them since a revision",
            printRows},
    Printer{"images", 0, 0, "", "the pictures of its tree's entries",
            [](const Request& r) { printJson(reportImages(r.dialog())); }},
};

std::string usageOf(const Printer& printer) {
    return std::string(printer.name) + std::string(printer.arguments);
}

}  // namespace

std::string printHelp() {
    std::string help;
    for (const Printer& printer : kPrinters) {
        std::string line = "  print " + usageOf(printer);
        fillUp(line, 38);
        help += line + std::string(printer.tells) + '\n';
    }
    return help;
}

void printWords(Session& session, driver::Dialog* dialog, RowReport& rows, const Words& words) {
    if (words.size() < 2) throw Failure{std::string("usage: print WHAT: ") + kSeeHelp};
    const auto printer = std::ranges::find(kPrinters, words[1], &Printer::name);
    if (printer == kPrinters.end()) throw Failure{"cannot print " + inQuotes(words[1]) + ": " + kSeeHelp};
    const std::size_t count = words.size() - 2;
    if (count < printer->leastWords || count > printer->mostWords)
        throw Failure{"usage: print " + usageOf(*printer)};
    printer->print({session, dialog, rows, Words(words.begin() + 1, words.end())});
}

}  // namespace app
