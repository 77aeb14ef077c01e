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

constexpr auto kPlainAttributes = makeWordTable<Attribute>({
    {"id", Attribute::id},
    {"class", Attribute::class_},
    {"style", Attribute::style},
    {"transform", Attribute::transform},
    {"href", Attribute::href},
    {"viewBox", Attribute::viewBox},
    {"preserveAspectRatio", Attribute::preserveAspectRatio},
    {"systemLanguage", Attribute::systemLanguage},
    {"requiredExtensions", Attribute::requiredExtensions},
    {"x", Attribute::x},
    {"y", Attribute::y},
    {"width", Attribute::width},
    {"height", Attribute::height},
    {"cx", Attribute::cx},
    {"cy", Attribute::cy},
    {"r", Attribute::r},
    {"rx", Attribute::rx},
    {"ry", Attribute::ry},
    {"x1", Attribute::x1},
    {"y1", Attribute::y1},
    {"x2", Attribute::x2},
    {"y2", Attribute::y2},
    {"points", Attribute::points},
    {"d", Attribute::d},
    {"fill", Attribute::fill},
    {"stroke", Attribute::stroke},
    {"color", Attribute::color},
    {"display", Attribute::display},
    {"visibility", Attribute::visibility},
    {"font-size", Attribute::fontSize},
    {"text-anchor", Attribute::textAnchor},
    {"filter", Attribute::filter},
    {"mask", Attribute::mask},
    {"clip-path", Attribute::clipPath},
    {"stop-color", Attribute::stopColor},
});

constexpr PackedWordTable kShortElements(kElements);
constexpr PackedWordTable kShortPlainAttributes(kPlainAttributes);

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

Attribute findPlainAttribute(const char* name) {
    const char* rest = name;
    const std::uint64_t key = packWord(rest);
    if (*rest == '\0') return kShortPlainAttributes.find(key, Attribute::unknown);
    return kPlainAttributes.find(name, Attribute::unknown);
}

Attribute findAttribute(Namespace space, std::string_view localName) {
    switch (space) {
        case Namespace::none:
            return kPlainAttributes.find(localName, Attribute::unknown);
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
