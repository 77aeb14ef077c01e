#include "formats/svg/draw/text/text_characters.h"

#include <cstring>

#include "formats/svg/tree/switch_case.h"
#include "formats/svg/values/text_scan.h"
#include "formats/svg/xml/encoding.h"

namespace svg {

namespace {

constexpr int kDeepestText = 64;  // parts within parts
constexpr char32_t kNoCharacter = 0xfffd;
constexpr char32_t kJoiner = 0x200d;

// Takes one character from the front of the text; what is not UTF-8 is a replacement character for each byte.
char32_t takeCharacter(std::string_view& text) {
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    const unsigned char lead = byte(0);
    const std::size_t size = lead < 0x80 ? 1 : lead >= 0xf0 && lead < 0xf5 ? 4 : lead >= 0xe0 ? 3 : 2;
    char32_t code = size == 1 ? lead : lead & (0xff >> (size + 1));
    bool good = lead < 0x80 || (lead >= 0xc2 && lead < 0xf5 && text.size() >= size);
    for (std::size_t i = 1; good && i < size; ++i) {
        good = (byte(i) & 0xc0) == 0x80;
        code = code << 6 | (byte(i) & 0x3f);
    }
    constexpr char32_t kLeast[] = {0, 0, 0x80, 0x800, 0x10000};
    good = good && code >= kLeast[size] && code <= 0x10ffff && !(code >= 0xd800 && code < 0xe000);
    text.remove_prefix(good ? size : 1);
    return good ? code : kNoCharacter;
}

// Calls use(std::string_view) for the entries of a list separated by white space or commas.
template <class Use>
void forEachEntry(std::string_view list, Use use) {
    std::size_t count = 0;
    for (list = trimFront(list); !list.empty() && count < kMostCharacters; ++count) {
        const std::size_t length = componentLength(list);
        use(list.substr(0, length));
        list = skipSeparator(list.substr(length));
    }
}

std::vector<double> readLengths(std::string_view list, Axis axis, const LengthContext& context) {
    std::vector<double> values;
    forEachEntry(list, [&](std::string_view entry) {
        double value = 0;
        parseLength(entry, axis, context, value);
        values.push_back(value);
    });
    return values;
}

// The lists of one element, with a link to those around it.
struct PositionLists {
    const PositionLists* outer = nullptr;
    std::size_t start = 0;  // the place of the element's first character
    std::vector<double> x, y, dx, dy, rotate;

    double find(std::vector<double> PositionLists::*list, std::size_t place, double missing) const {
        for (const PositionLists* at = this; at; at = at->outer) {
            const std::vector<double>& values = at->*list;
            if (place - at->start < values.size()) return values[place - at->start];
        }
        return missing;
    }
    // The last angle holds for the rest of the element.
    double findAngle(std::size_t place) const {
        for (const PositionLists* at = this; at; at = at->outer) {
            if (!at->rotate.empty()) return at->rotate[std::min(place - at->start, at->rotate.size() - 1)];
        }
        return 0;
    }
};

enum class Part { none, span, reference };

Part partOf(pugi::xml_node node) {
    switch (kindOf(node)) {
        case Element::tspan:
        case Element::textPath:
        case Element::a:
            return Part::span;
        default:
            break;
    }
    const std::string_view name = splitName(node.name()).local;
    return name == "tref" ? Part::reference : name == "altGlyph" ? Part::span : Part::none;
}

bool isText(pugi::xml_node node) {
    return node.type() == pugi::node_pcdata || node.type() == pugi::node_cdata;
}

class Collector {
public:
    Collector(DrawContext& context, const UserSpace& space) : m_context(context), m_space(space) {}

    TextCharacters run(const DrawnElement& text) {
        bool preserve = false;
        for (pugi::xml_node node = text.node; node; node = node.parent()) {
            if (const char* space = node.attribute("xml:space").as_string(nullptr)) {
                preserve = std::strcmp(space, "preserve") == 0;
                break;
            }
        }
        TextSpan span;
        addLinesAround(text, span);
        span.style = text.style;
        enter(text.node, text.attributes, std::move(span), nullptr, preserve, kUsualFontSize);
        if (m_endsWithLooseSpace) {
            m_out.characters.pop_back();
            m_out.bytes.pop_back();
            for (TextSpan& one : m_out.spans) {
                one.first = std::min(one.first, m_out.characters.size());
                one.last = std::min(one.last, m_out.characters.size());
            }
        }
        return std::move(m_out);
    }

private:
    // Lines under the text that elements around it ask for are painted like those.
    void addLinesAround(const DrawnElement& text, TextSpan& span) {
        if (!m_context.hasDecorations()) return;
        std::vector<pugi::xml_node> chain;
        for (pugi::xml_node at = text.node.parent(); at.type() == pugi::node_element; at = at.parent())
            chain.push_back(at);
        if (!m_context.spend(chain.size() / 16)) return;
        Style style;
        AttributeSet attributes;
        for (std::size_t i = chain.size(); i-- > 0;) {
            attributes.read(chain[i]);
            Style room;
            const Style& own = m_context.styleOf(chain[i], attributes, style, m_space, room);
            if (&own != &style) style = own;
            if (!noteLines(style.own.decoration, span)) continue;
            TextSpan around;
            // As high and as thick as the text's own font says.
            around.style = text.style;
            around.style.fill = style.fill;
            around.style.stroke = style.stroke;
            around.style.color = style.color;
            m_out.spans.push_back(std::move(around));
        }
    }

    // The next span is what asks for these lines. False when there are none.
    bool noteLines(const TextDecoration& lines, TextSpan& span) const {
        const int next = static_cast<int>(m_out.spans.size());
        if (lines.underline) span.underline = next;
        if (lines.overline) span.overline = next;
        if (lines.lineThrough) span.lineThrough = next;
        return lines.underline || lines.overline || lines.lineThrough;
    }

    void enter(pugi::xml_node node, const AttributeSet& attributes, TextSpan span, const PositionLists* outer,
               bool preserve, double fontSizeAround) {
        const OwnStyle& own = span.style.own;
        noteLines(own.decoration, span);
        span.baselineShift += shiftOf(span.style, fontSizeAround);
        const LengthContext lengths{span.style.fontSize, m_space.width, m_space.height};
        if (!parseLength(textOf(node, "textLength"), Axis::horizontal, lengths, span.textLength))
            span.textLength = -1;
        span.stretchesGlyphs = textOf(node, "lengthAdjust") == "spacingAndGlyphs";
        span.first = m_out.characters.size();
        const std::size_t index = m_out.spans.size();
        m_out.spans.push_back(std::move(span));

        PositionLists lists;
        lists.outer = outer;
        lists.start = m_place;
        lists.x = readLengths(attributes.get(Attribute::x), Axis::horizontal, lengths);
        lists.y = readLengths(attributes.get(Attribute::y), Axis::vertical, lengths);
        lists.dx = readLengths(textOf(node, "dx"), Axis::horizontal, lengths);
        lists.dy = readLengths(textOf(node, "dy"), Axis::vertical, lengths);
        lists.rotate = readLengths(textOf(node, "rotate"), Axis::both, {});
        const bool hasLists = !lists.x.empty() || !lists.y.empty() || !lists.dx.empty() ||
                              !lists.dy.empty() || !lists.rotate.empty();
        const PositionLists* around = hasLists ? &lists : outer;

        for (pugi::xml_node child = node.first_child(); child; child = child.next_sibling()) {
            if (isText(child)) {
                add(child.value(), index, around, preserve);
            } else if (child.type() == pugi::node_element) {
                // White space between two elements is not in the tree.
                if (!isText(child.previous_sibling()) && m_context.tree().hasSpaceBefore(child))
                    add(" ", index, around, preserve);
                enterChild(child, index, around, preserve);
            }
        }
        m_out.spans[index].last = m_out.characters.size();
    }

    void enterChild(pugi::xml_node node, std::size_t parent, const PositionLists* outer, bool preserve) {
        const Part part = partOf(node);
        if (part == Part::none || m_depth >= kDeepestText || m_out.characters.size() >= kMostCharacters ||
            m_out.spans.size() >= kMostCharacters) {
            return;
        }
        AttributeSet attributes;
        attributes.read(node);
        TextSpan span;
        {
            const TextSpan& around = m_out.spans[parent];
            Style room;
            span.style = m_context.styleOf(node, attributes, around.style, m_space, room);
            span.textPath = kindOf(node) == Element::textPath ? node : around.textPath;
            span.baselineShift = around.baselineShift;
            span.underline = around.underline;
            span.overline = around.overline;
            span.lineThrough = around.lineThrough;
            span.effect = around.effect;
            if (hasEffects(span.style))
                span.effect = std::make_shared<const TextEffect>(TextEffect{node, span.style, around.effect});
            // A path within a path has no place.
            if (around.textPath && kindOf(node) == Element::textPath) return;
        }
        if (!span.style.displayed || !isWanted(attributes)) return;
        if (const char* space = node.attribute("xml:space").as_string(nullptr))
            preserve = std::strcmp(space, "preserve") == 0;
        const double fontSizeAround = m_out.spans[parent].style.fontSize;
        ++m_depth;
        enter(node, attributes, std::move(span), outer, preserve, fontSizeAround);
        --m_depth;
        if (part == Part::reference) addReferred(node, outer, preserve);
    }

    // The characters of the element that a tref names, in the style of the tref, which is the last span.
    void addReferred(pugi::xml_node tref, const PositionLists* outer, bool preserve) {
        const std::string_view id = referenceOf(tref);
        const pugi::xml_node source = id.empty() ? pugi::xml_node() : m_context.tree().findAny(id);
        const std::size_t index = m_out.spans.size() - 1;
        int depth = 0;
        for (pugi::xml_node node = source ? nextNode(source, source, depth) : source;
             node && m_out.characters.size() < kMostCharacters; node = nextNode(node, source, depth)) {
            if (isText(node)) add(node.value(), index, outer, preserve);
        }
        m_out.spans[index].last = m_out.characters.size();
    }

    void add(std::string_view text, std::size_t span, const PositionLists* lists, bool preserve) {
        preserve |= m_out.spans[span].style.preserveSpace;
        while (!text.empty() && m_out.characters.size() < kMostCharacters) {
            char32_t code = takeCharacter(text);
            if (code < ' ') code = ' ';
            const bool loose = code == ' ' && !preserve;
            if (loose && (m_endsWithLooseSpace || m_out.characters.empty())) continue;
            m_endsWithLooseSpace = loose;
            append(code, span, lists);
        }
    }

    void append(char32_t code, std::size_t span, const PositionLists* lists) {
        TextCharacter one;
        one.begin = m_out.bytes.size();
        appendUtf8(m_out.bytes, code);
        one.size = m_out.bytes.size() - one.begin;
        one.span = span;
        one.code = code;
        if (lists) {
            one.x = lists->find(&PositionLists::x, m_place, kNowhere);
            one.y = lists->find(&PositionLists::y, m_place, kNowhere);
            one.dx = lists->find(&PositionLists::dx, m_place, 0);
            one.dy = lists->find(&PositionLists::dy, m_place, 0);
            one.rotate = lists->findAngle(m_place);
        }
        m_place += code > 0xffff ? 2 : 1;
        m_out.characters.push_back(one);
    }

    static double shiftOf(const Style& style, double fontSizeAround) {
        const std::string_view text = trim(style.own.baselineShift);
        if (text.empty() || equalsNoCase(text, "baseline")) return 0;
        AFont font = fontOf(style);
        font.size = fontSizeAround;
        if (equalsNoCase(text, "sub")) return -fontMetrics(font).subscript;
        if (equalsNoCase(text, "super")) return fontMetrics(font).superscript;
        double value = 0;
        parseLength(text, Axis::vertical, {style.fontSize, fontSizeAround, fontSizeAround}, value);
        return value;
    }

    DrawContext& m_context;
    const UserSpace& m_space;
    TextCharacters m_out;
    int m_depth = 0;
    std::size_t m_place = 0;            // in position lists
    bool m_endsWithLooseSpace = false;  // so further white space does not count
};

bool isMark(char32_t code) {
    struct Range {
        char32_t first, last;
    };
    // Combining marks, variation selectors, skin tones.
    static constexpr Range kMarks[] = {
        {0x300, 0x36f},   {0x483, 0x489},     {0x591, 0x5bd},    {0x610, 0x61a},   {0x64b, 0x65f},
        {0x93a, 0x94f},   {0x1ab0, 0x1aff},   {0x1dc0, 0x1dff},  {0x200d, 0x200d}, {0x20d0, 0x20ff},
        {0xfe00, 0xfe0f}, {0xfe20, 0xfe2f},   {0x3099, 0x309a},  {0xe31, 0xe31},   {0xe34, 0xe3a},
        {0xe47, 0xe4e},   {0x1f3fb, 0x1f3ff}, {0xe0100, 0xe01ef}};
    if (code < kMarks[0].first) return false;
    for (const Range& range : kMarks) {
        if (code >= range.first && code <= range.last) return true;
    }
    return false;
}

}  // namespace

AFont fontOf(const Style& style) {
    // "'DejaVu Sans', serif" without the quotation marks.
    std::string family;
    for (const char c : style.fontFamily) {
        if (c != '\'' && c != '"') family.push_back(c);
    }
    return {std::move(family), style.fontSize,    style.fontWeight, style.italic,
            style.smallCaps,   style.fontStretch, style.rightToLeft};
}

TextCharacters collectCharacters(DrawContext& context, const DrawnElement& text) {
    return Collector(context, text.space).run(text);
}

std::size_t clusterEnd(const std::vector<TextCharacter>& characters, std::size_t first, std::size_t end) {
    constexpr std::size_t kLongestCluster = 32;
    std::size_t at = first + 1;
    while (at < end && at - first < kLongestCluster && characters[at].span == characters[first].span &&
           (isMark(characters[at].code) || characters[at - 1].code == kJoiner)) {
        ++at;
    }
    return at;
}

}  // namespace svg
