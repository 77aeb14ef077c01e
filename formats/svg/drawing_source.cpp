#include "formats/svg/drawing_source.h"

#include <vector>

namespace svg {

namespace {

// One start tag, parsed on its own. What is missing behind it does not matter: the element is there all the
// same.
class StartTag {
public:
    explicit StartTag(std::string_view tag) {
        m_document.load_buffer(tag.data(), tag.size(), pugi::parse_default, pugi::encoding_utf8);
        const pugi::xml_node node = m_document.first_child();
        m_element = findElement(splitName(node.name()).local);
        // Namespaces are declared elsewhere; the geometry lies in plain attributes.
        Namespaces namespaces;
        m_attributes.read(node, namespaces);
    }

    Element element() const { return m_element; }
    const AttributeSet& attributes() const { return m_attributes; }

private:
    pugi::xml_document m_document;
    Element m_element = Element::unknown;
    AttributeSet m_attributes;
};

}  // namespace

std::string_view DrawingSource::startTag(const AObject& object) const {
    const std::size_t name = object.getSourceIndex();
    if (name == 0 || name >= m_text.size()) return {};
    char quote = 0;
    for (std::size_t i = name; i < m_text.size(); ++i) {
        const char c = m_text[i];
        if (quote != 0) {
            if (c == quote) quote = 0;
        } else if (c == '>') {
            return std::string_view(m_text).substr(name - 1, i - name + 2);
        } else if (c == '"' || c == '\'') {
            quote = c;
        }
    }
    return {};
}

View DrawingSource::viewAround(const AObject& object) const {
    AParent* const parent = object.getParent();
    if (parent != nullptr && parent == m_lastParent) return m_lastView;
    std::vector<const AParent*> containers;
    for (const AParent* at = parent; at != nullptr; at = at->getParent()) {
        if (at->getSourceIndex() != 0) containers.push_back(at);
    }
    View view = m_root;
    for (std::size_t i = containers.size(); i-- > 0;) {
        const StartTag tag(startTag(*containers[i]));
        view = enter(view, tag.element(), tag.attributes());
    }
    m_lastParent = parent;
    m_lastView = view;
    return view;
}

AFRect DrawingSource::computeBounds(const AObject& object) const {
    const std::string_view text = startTag(object);
    if (text.empty()) return {};
    const StartTag tag(text);
    const View view = viewAround(object);
    switch (tag.element()) {
        case Element::path:
        case Element::polygon:
        case Element::polyline:
            return curveBounds(tag.element(), tag.attributes(), view);
        default:
            return shapeBounds(tag.element(), tag.attributes(), view, 16);
    }
}

}  // namespace svg
