#include "formats/svg/import/text_bounds.h"

#include "formats/svg/values/path_data.h"
#include "formats/svg/values/text_scan.h"
#include "formats/svg/values/units.h"

namespace svg {

namespace {

constexpr double kCharacterWidth = 0.55;

// Characters as they are drawn: white space at the ends is dropped, further white space counts once.
std::size_t countCharacters(std::string_view text) {
    std::size_t count = 0;
    bool space = false;
    for (const char c : trim(text)) {
        if (isSpace(c)) {
            count += space ? 0 : 1;
            space = true;
            continue;
        }
        space = false;
        if ((static_cast<unsigned char>(c) & 0xC0) != 0x80) ++count;
    }
    return count;
}

// The first of a list of positions; false when there is none.
bool firstLength(std::string_view list, Axis axis, const LengthContext& context, double& value) {
    if (list.empty()) return false;
    if (parseLength(list, axis, context, value)) return true;
    list = trimFront(list);
    std::size_t end = 0;
    while (end < list.size() && !isSpace(list[end]) && list[end] != ',') ++end;
    return parseLength(list.substr(0, end), axis, context, value);
}

class TextLines {
public:
    TextLines(const UserSpace& space, const Affine& transform) : m_space(space), m_transform(transform) {}

    // A new position ends the line before.
    void moveTo(const AttributeSet& attributes, const Style& style) {
        const LengthContext context{style.fontSize, m_space.width, m_space.height};
        double x = m_x;
        double y = m_y;
        bool moved = firstLength(attributes.get(Attribute::x), Axis::horizontal, context, x);
        moved |= firstLength(attributes.get(Attribute::y), Axis::vertical, context, y);
        if (!moved) return;
        flush();
        m_x = x;
        m_y = y;
    }

    void add(std::string_view text, const Style& style) {
        m_width += static_cast<double>(countCharacters(text)) * kCharacterWidth * style.fontSize;
        m_size = std::fmax(m_size, style.fontSize);
        m_anchor = style.textAnchor;
    }

    void flush() {
        if (m_width > 0) {
            const double left = m_anchor == TextAnchor::start    ? m_x
                                : m_anchor == TextAnchor::middle ? m_x - m_width / 2
                                                                 : m_x - m_width;
            m_bounds.add(rectBounds(m_transform,
                                    {left, m_y - kAscent * m_size, left + m_width, m_y + kDescent * m_size}));
        }
        m_width = m_size = 0;
    }

    AFRect get() const { return m_bounds.get(); }

private:
    const UserSpace& m_space;
    const Affine& m_transform;
    double m_x = 0, m_y = 0, m_width = 0, m_size = 0;
    TextAnchor m_anchor = TextAnchor::start;
    BoundsBuilder m_bounds;
};

// A text with parts of their own positions and styles.
void addParts(pugi::xml_node text, const Style& style, StyleResolver& styles, TextLines& lines) {
    Namespaces namespaces;
    AttributeSet attributes;
    std::vector<Style> around{style};  // of the elements open around the node, by depth
    int depth = 0;
    for (pugi::xml_node node = nextNode(text, text, depth); node; node = nextNode(node, text, depth)) {
        around.resize(static_cast<std::size_t>(depth), style);
        if (node.type() != pugi::node_element) {
            lines.add(node.value(), around.back());
            continue;
        }
        attributes.read(node, namespaces);
        around.push_back(styles.compute(node, attributes, {around.back()}));
        lines.moveTo(attributes, around.back());
    }
}

AFRect pathTextBounds(pugi::xml_node textPath, const Style& style, const Affine& transform,
                      DrawingIndex& index) {
    Namespaces namespaces;
    AttributeSet attributes;
    std::string_view href;
    for (const pugi::xml_attribute attribute : textPath.attributes()) {
        if (splitName(attribute.name()).local == "href") href = localReference(attribute.value());
    }
    const pugi::xml_node path = href.empty() ? pugi::xml_node() : index.findAny(href);
    if (kindOf(path) != Element::path) return {};
    attributes.read(path, namespaces);
    AFRect box = curveBounds(Element::path, attributes, UserSpace());
    if (box == AFRect()) return {};
    const double height = kAscent * style.fontSize;
    box = {box.left - height, box.top - height, box.right + height, box.bottom + height};
    return rectBounds(transform, box);
}

}  // namespace

pugi::xml_node findTextPath(pugi::xml_node text) {
    for (pugi::xml_node child = text.first_child(); child; child = child.next_sibling()) {
        if (kindOf(child) == Element::textPath) return child;
    }
    return {};
}

AFRect textBounds(pugi::xml_node text, const AttributeSet& attributes, const Style& style,
                  const UserSpace& outer, StyleResolver& styles, DrawingIndex& index) {
    const Affine transform = outer.toDrawing * ownTransform(attributes);
    const pugi::xml_node only = text.first_child();
    const bool plain = only && !only.next_sibling() && only.type() != pugi::node_element;
    const pugi::xml_node path = plain ? pugi::xml_node() : findTextPath(text);
    if (path) return pathTextBounds(path, style, transform, index);

    TextLines lines(outer, transform);
    lines.moveTo(attributes, style);
    if (plain) {
        lines.add(only.value(), style);
    } else {
        addParts(text, style, styles, lines);
    }
    lines.flush();
    return lines.get();
}

}  // namespace svg
