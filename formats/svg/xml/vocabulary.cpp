#include "formats/svg/xml/vocabulary.h"

#include <cstring>

#include "formats/svg/values/word_table.h"

namespace svg {

namespace {

constexpr auto kElements = makeWordTable<Element>({
    {"svg", Element::svg},
    {"g", Element::g},
    {"a", Element::a},
    {"switch", Element::switch_},
    {"use", Element::use},
    {"rect", Element::rect},
    {"circle", Element::circle},
    {"ellipse", Element::ellipse},
    {"polygon", Element::polygon},
    {"path", Element::path},
    {"line", Element::line},
    {"polyline", Element::polyline},
    {"text", Element::text},
    {"image", Element::image},
    {"tspan", Element::tspan},
    {"textPath", Element::textPath},
    {"symbol", Element::symbol},
    {"linearGradient", Element::linearGradient},
    {"radialGradient", Element::radialGradient},
    {"meshgradient", Element::meshGradient},
    {"pattern", Element::pattern},
    {"hatch", Element::hatch},
    {"stop", Element::stop},
    {"mask", Element::mask},
    {"clipPath", Element::clipPath},
    {"filter", Element::filter},
    {"marker", Element::marker},
    {"feDropShadow", Element::feDropShadow},
    {"feOffset", Element::feOffset},
    {"feMerge", Element::feMerge},
    {"feBlend", Element::feBlend},
    {"feComposite", Element::feComposite},
    {"style", Element::style},
});

constexpr PackedWordTable kShortElements(kElements);

constexpr auto kInkscapeAttributes = makeWordTable<Attribute>({
    {"label", Attribute::label},
    {"groupmode", Attribute::groupMode},
    {"flatsided", Attribute::flatSided},
});

constexpr auto kSodipodiAttributes = makeWordTable<Attribute>({
    {"type", Attribute::drawingType},
    {"start", Attribute::arcStart},
    {"end", Attribute::arcEnd},
    {"insensitive", Attribute::insensitive},
});

constexpr auto kOwnAttributes = makeWordTable<Attribute>({
    {"class", Attribute::kzClass},
    {"database", Attribute::kzDatabase},
    {"model", Attribute::kzModel},
});

constexpr auto kNamespaces = makeWordTable<Namespace>({
    {"http://www.w3.org/2000/svg", Namespace::svg},
    {"http://www.w3.org/1999/xlink", Namespace::xlink},
    {"http://www.inkscape.org/namespaces/inkscape", Namespace::inkscape},
    {"http://sodipodi.sourceforge.net/DTD/sodipodi-0.dtd", Namespace::sodipodi},
    {"http://inkscape.sourceforge.net/DTD/sodipodi-0.dtd", Namespace::sodipodi},
    {"urn:kzdraw:drawing", Namespace::kz},
});

}  // namespace

Element findElement(std::string_view localName) {
    return kElements.find(localName, Element::unknown);
}

Element kindOfName(const char* qualifiedName) {
    if (*qualifiedName == '\0') return Element::unknown;  // text
    const char* rest = qualifiedName;
    const std::uint64_t key = packWord(rest);
    if (*rest == '\0') {
        const Element element = kShortElements.find(key, Element::unknown);
        if (element != Element::unknown) return element;
    }
    const char* const colon = std::strchr(qualifiedName, ':');
    return findElement(colon != nullptr ? colon + 1 : qualifiedName);
}

Attribute findAttribute(Namespace space, std::string_view localName) {
    switch (space) {
        case Namespace::xlink:
            return localName == "href" ? Attribute::href : Attribute::unknown;
        case Namespace::inkscape:
            return kInkscapeAttributes.find(localName, Attribute::unknown);
        case Namespace::sodipodi:
            return kSodipodiAttributes.find(localName, Attribute::unknown);
        case Namespace::kz:
            return kOwnAttributes.find(localName, Attribute::unknown);
        default:
            return Attribute::unknown;
    }
}

Namespace findNamespace(std::string_view uri) {
    return kNamespaces.find(uri, Namespace::other);
}

}  // namespace svg
