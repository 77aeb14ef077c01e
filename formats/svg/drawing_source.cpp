#include "formats/svg/drawing_source.h"

#include <optional>
#include <vector>

#include "formats/svg/draw/painter.h"
#include "formats/svg/values/text_scan.h"

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
            cut(buffer.data() + 1);
        }
    }

    Element element() const { return m_element; }
    const AttributeSet& attributes() const { return m_attributes; }

private:
    // From behind the "<"; the tag's ">" stops every search.
    void cut(char* at) {
        const char* const name = at;
        at = skipName(at);
        bool more = isSpace(*at);
        *at = '\0';
        m_element = kindOfName(name);
        m_attributes.clear();
        while (more) {
            do {
                ++at;
            } while (isSpace(*at));
            char* const attribute = at;
            at = skipName(at);
            char* const end = at;
            while (isSpace(*at) || *at == '=') ++at;
            const char quote = *at;
            if (quote != '"' && quote != '\'') return;  // behind the last attribute
            char* const value = ++at;
            while (*at != quote && *at != '\0') ++at;
            if (*at == '\0') return;  // no tag that the library accepts
            *end = *at = '\0';
            m_attributes.addPlain(attribute, value);
            more = isSpace(at[1]);
        }
    }

    static char* skipName(char* at) {
        while (!isSpace(*at) && *at != '=' && *at != '/' && *at != '>') ++at;
        return at;
    }

    std::optional<pugi::xml_document> m_document;
    Element m_element = Element::unknown;
    AttributeSet m_attributes;
};

}  // namespace

// Quoted values are passed over whole: they may hold a ">".
std::string_view DrawingSource::startTag(const AObject& object) const {
    const std::size_t name = object.getSourceIndex();
    if (name == 0 || name >= m_text.size()) return {};
    const std::string_view text = m_text;
    for (std::size_t at = name; at < text.size(); ++at) {
        const char c = text[at];
        if (c == '>') return text.substr(name - 1, at - name + 2);
        if (c == '"' || c == '\'') {
            at = text.find(c, at + 1);
            if (at == text.npos) break;
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
        const StartTag tag(startTag(*containers[i]), m_buffer);
        view = enter(view, tag.element(), tag.attributes());
    }
    m_lastParent = parent;
    m_lastView = view;
    return view;
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
    const View view = viewAround(object);
    const StartTag tag(text, m_buffer);
    switch (tag.element()) {
        case Element::path:
        case Element::polygon:
        case Element::polyline:
            return curveBounds(tag.element(), tag.attributes(), view);
        default:
            return shapeBounds(tag.element(), tag.attributes(), view, kUsualFontSize);
    }
}

}  // namespace svg
