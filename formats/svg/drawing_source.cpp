#include "formats/svg/drawing_source.h"

#include <optional>
#include <vector>

#include "formats/svg/draw/painter.h"
#include "formats/svg/values/text_scan.h"
#include "formats/svg/xml/tag_scan.h"

namespace svg {

namespace {

// One start tag of a drawing that the XML library has accepted as a whole. Boxes are asked for by the hundred
// thousand, so tags are cut into pieces here; only one with an entity goes through the library again, which
// does not mind what is missing behind the tag.
class StartTag {
public:
    // `buffer` is overwritten, and must outlive the tag.
    StartTag(std::string_view tag, std::string& buffer) {
        if (tag.empty()) return;
        if (tag.find('&') != tag.npos) {
            m_document.emplace();
            m_document->load_buffer(tag.data(), tag.size(), pugi::parse_default, pugi::encoding_utf8);
            const pugi::xml_node node = m_document->first_child();
            m_element = kindOfName(node.name());
            // Namespaces are declared elsewhere; the geometry lies in plain attributes.
            Namespaces namespaces;
            m_attributes.read(node, namespaces);
        } else {
            buffer = tag;
            cut(buffer);
        }
    }

    Element element() const { return m_element; }
    const AttributeSet& attributes() const { return m_attributes; }

private:
    // What an attribute ends with is overwritten, which the scan has passed by then.
    void cut(std::string& tag) {
        std::size_t at = behindName(tag, 0);
        const bool hasAttributes = isSpace(tag[at]);
        tag[at] = '\0';
        m_element = kindOfName(tag.c_str() + 1);
        m_attributes.clear();
        if (!hasAttributes) return;
        ++at;
        const auto terminated = [&tag](std::string_view piece) {
            const auto from = static_cast<std::size_t>(piece.data() - tag.data());
            tag[from + piece.size()] = '\0';
            return tag.c_str() + from;
        };
        for (SourceAttribute one; takeAttribute(tag, at, one);) {
            const char* const name = terminated(one.name);
            m_attributes.addPlain(name, terminated(one.value));
        }
    }

    std::optional<pugi::xml_document> m_document;
    Element m_element = Element::unknown;
    AttributeSet m_attributes;
};

}  // namespace

std::string_view DrawingSource::startTag(const AObject& object) const {
    const std::size_t name = object.getSourceIndex();
    if (name == 0 || name >= m_text.size()) return {};
    const std::string_view text = m_text;
    const std::size_t end = findUnquoted(text, name, '>', '>');
    return end < text.size() ? text.substr(name - 1, end - name + 2) : std::string_view();
}

UserSpace DrawingSource::spaceAround(const AObject& object) const {
    AParent* const parent = object.getParent();
    if (parent != nullptr && parent == m_lastParent) return m_lastSpace;
    std::vector<const AParent*> containers;
    for (const AParent* at = parent; at != nullptr; at = at->getParent()) {
        if (at->getSourceIndex() != 0) containers.push_back(at);
    }
    UserSpace space = m_root;
    for (std::size_t i = containers.size(); i-- > 0;) {
        const StartTag tag(startTag(*containers[i]), m_buffer);
        space = enter(space, tag.element(), tag.attributes());
    }
    m_lastParent = parent;
    m_lastSpace = space;
    return space;
}

std::unique_ptr<AObjectPainter> DrawingSource::startPainting(ACanvas& canvas, const AAffine& toPixels) const {
    return makePainter(m_text, m_root, canvas, toPixels);
}

std::unique_ptr<AObjectPainter> DrawingSource::startRecording(ADisplayRecorder& recorder) const {
    return makeRecording(m_text, m_root, recorder);
}

AFRect DrawingSource::computeBounds(const AObject& object) const {
    const std::string_view text = startTag(object);
    if (text.empty()) return {};
    const UserSpace space = spaceAround(object);
    const StartTag tag(text, m_buffer);
    switch (tag.element()) {
        case Element::path:
        case Element::polygon:
        case Element::polyline:
            return curveBounds(tag.element(), tag.attributes(), space);
        default:
            return shapeBounds(tag.element(), tag.attributes(), space, kUsualFontSize);
    }
}

}  // namespace svg
