#include "formats/svg/style/attributes.h"

#include <cstring>

#include "formats/svg/style/properties.h"

namespace svg {

// Apart from addPlain, so that it is inlined below: what other libraries could replace is not. `give` needs it as a
// function, too, in whatever unit that is called.
[[gnu::used]] inline bool AttributeSet::take(const char* name, const char* value) {
    const std::uint8_t slot = findSlot(name);
    if (slot == 0) return false;
    m_present[slot / 64] |= std::uint64_t{1} << slot % 64;
    m_values[slot] = value;
    return true;
}

bool AttributeSet::addPlain(const char* name, const char* value) {
    return take(name, value);
}

void AttributeSet::read(pugi::xml_node element, Namespaces& namespaces) {
    // A declaration holds for the attributes before it too, so an element that has one is read again.
    const std::size_t before = namespaces.size();
    readAll(element, namespaces, true);
    if (namespaces.size() != before) readAll(element, namespaces, false);
}

// The XML library lies behind calls, so each attribute costs as few of them as possible: the name that is
// missing behind the last attribute ends the walk.
void AttributeSet::readAll(pugi::xml_node element, Namespaces& namespaces, bool declare) {
    clear();
    for (pugi::xml_attribute attribute = element.first_attribute();; attribute = attribute.next_attribute()) {
        const char* const name = attribute.name();
        if (*name == '\0') return;
        if (take(name, attribute.value())) continue;
        if (std::strchr(name, ':') != nullptr || std::strcmp(name, "xmlns") == 0)
            addQualified(name, attribute.value(), namespaces, declare);
    }
}

void AttributeSet::read(pugi::xml_node element) {
    clear();
    for (pugi::xml_attribute attribute = element.first_attribute();; attribute = attribute.next_attribute()) {
        const char* const name = attribute.name();
        if (*name == '\0') return;
        if (take(name, attribute.value())) continue;
        // Both "href" and "xlink:href": the plain one counts, wherever it stands.
        const char* const colon = std::strchr(name, ':');
        if (colon != nullptr && std::strcmp(colon + 1, "href") == 0 && !has(Attribute::href))
            set(Attribute::href, attribute.value());
    }
}

void AttributeSet::addQualified(const char* text, const char* value, Namespaces& namespaces, bool declare) {
    const QualifiedName name = splitName(text);
    if (name.prefix == "xmlns" || (name.prefix.empty() && name.local == "xmlns")) {
        if (declare) namespaces.declare(name.prefix.empty() ? "" : name.local, value);
        return;
    }
    const Namespace space = namespaces.ofAttribute(name.prefix);
    const Attribute known = findAttribute(space, name.local);
    // Both "href" and "xlink:href": the plain one counts.
    if (known == Attribute::unknown || (space == Namespace::xlink && has(known))) return;
    set(known, value);
}

}  // namespace svg
