#include "random_drawing.h"

#include <vector>

#include "support.h"

namespace svg_test {

namespace {

const char* const kColors[] = {"red", "blue", "lime", "gold"};

class Maker {
public:
    explicit Maker(std::mt19937& random) : m_random(random) {}

    std::string body() {
        std::string text =
            "<style>.w{fill:gold;stroke:blue}.n{stroke:none!important}#e3{fill:lime}</style>"
            "<filter id='sh'><feDropShadow/></filter>"
            "<linearGradient id='lg'><stop stop-color='red'/><stop offset='1'/></linearGradient>";
        text += "<defs>";
        for (unsigned i = below(3); i > 0; --i) text += something(2);
        if (oneOf(2)) text += "<symbol" + id() + " viewBox='0 0 20 20'>" + things(2) + "</symbol>";
        close(0);
        text += "</defs>";
        if (oneOf(3)) text += "<clipPath id='cp'><use href='#" + target() + "'/></clipPath>";
        text += things(0);
        if (oneOf(3))
            text +=
                "<text" + paint() + " x='5' y='50'><textPath href='#" + target() + "'>on</textPath></text>";
        if (oneOf(3)) text += "<pattern id='pt'><use href='#" + target() + "'/></pattern>";
        text += things(0);
        for (int i = 0; i < 3; ++i) {
            text += "<g" + paint() + "><rect id='f" + std::to_string(i) + '\'' + place() + size() + paint() +
                    "/></g>";
        }
        return text;
    }

private:
    unsigned below(unsigned limit) { return m_random() % limit; }
    bool oneOf(unsigned count) { return below(count) == 0; }
    std::string number(unsigned limit) { return std::to_string(below(limit)); }

    // An id attribute, or none.
    std::string id() {
        if (oneOf(3)) return {};
        m_open.push_back("e" + std::to_string(m_lastId++));
        return " id='" + m_open.back() + '\'';
    }
    // Of an element that is complete, or of one that comes at the end, or of none. Nothing repeats itself.
    std::string target() {
        const auto known = static_cast<unsigned>(m_ids.size());
        const unsigned which = below(known + 4);
        return which < known ? m_ids[which] : "f" + std::to_string(which - known);
    }
    // What was opened since is complete now.
    void close(std::size_t open) {
        m_ids.insert(m_ids.end(), m_open.begin() + static_cast<std::ptrdiff_t>(open), m_open.end());
        m_open.resize(open);
    }

    std::string color() {
        if (oneOf(8)) return "url(#lg)";
        return kColors[below(4)];
    }

    std::string paint() {
        std::string text;
        if (oneOf(2)) text += " fill='" + color() + '\'';
        if (oneOf(3)) text += " stroke='" + color() + '\'';
        if (oneOf(5))
            text +=
                " style='" + std::string(oneOf(2) ? "fill:" : "stroke:") + color() + (oneOf(2) ? "; '" : "'");
        if (oneOf(8)) text += oneOf(2) ? " class='w'" : " class='n'";
        if (oneOf(8)) text += " opacity='.5'";
        if (oneOf(12)) text += " filter='url(#sh)'";
        return text;
    }

    std::string place() { return " x='" + number(150) + "' y='" + number(80) + '\''; }
    std::string size() {
        return " width='" + std::to_string(5 + below(40)) + "' height='" + std::to_string(5 + below(20)) +
               '\'';
    }

    std::string things(int depth) {
        std::string text;
        for (unsigned i = 1 + below(4); i > 0; --i) text += something(depth) + '\n';
        return text;
    }

    std::string group(const char* name, int depth) {
        std::string text = '<' + std::string(name) + id();
        if (std::string(name) != "svg") text += paint();  // see the gaps of the writer
        if (oneOf(4)) text += " transform='translate(" + number(20) + ',' + number(20) + ")'";
        if (oneOf(8)) text += " clip-path='url(#cp)'";
        return text + '>' + things(depth + 1) + "</" + name + '>';
    }

    std::string something(int depth) {
        const std::size_t open = m_open.size();
        std::string text = element(depth);
        close(open);
        return text;
    }

    std::string element(int depth) {
        switch (below(depth > 3 ? 6 : 9)) {
            case 0:
            case 1:
                return "<rect" + id() + place() + size() + paint() + "/>";
            case 2:
                return "<path" + id() + " d='M" + number(150) + ' ' + number(80) + "h30l-9 12z'" + paint() +
                       "></path>";
            case 3:
                return "<text" + id() + place() + paint() + ">one<tspan" + paint() + ">two</tspan></text>";
            case 4:
            case 5:
                return "<use" + id() + place() + (oneOf(3) ? size() : std::string()) + paint() + " href='#" +
                       target() + "'/>";
            case 6:
                return group(oneOf(2) ? "switch" : "svg", depth);
            default:
                return group("g", depth);
        }
    }

    std::mt19937& m_random;
    unsigned m_lastId = 0;
    std::vector<std::string> m_open;
    std::vector<std::string> m_ids;
};

}  // namespace

std::string randomDrawing(std::mt19937& random) {
    return drawing(Maker(random).body());
}

std::set<std::string> randomColors(std::mt19937& random) {
    std::set<std::string> names;
    for (const char* name : kColors) {
        if (random() % 3 == 0) names.insert(name);
    }
    if (random() % 4 == 0) names.insert("lg");
    if (names.empty()) names.insert("red");
    return names;
}

}  // namespace svg_test
