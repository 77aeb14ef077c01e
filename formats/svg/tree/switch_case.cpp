#include "formats/svg/tree/switch_case.h"

#include <algorithm>

#include "formats/svg/tree/object_class.h"
#include "formats/svg/values/text_scan.h"

namespace svg {

namespace {

// Whether one of a list of languages is English, which is what scripts and documents expect.
bool listsEnglish(std::string_view languages) {
    while (!languages.empty()) {
        const std::size_t comma = std::min(languages.find(','), languages.size());
        const std::string_view one = trim(languages.substr(0, comma));
        if (startsWithNoCase(one, "en") && (one.size() == 2 || one[2] == '-')) return true;
        languages.remove_prefix(std::min(comma + 1, languages.size()));
    }
    return false;
}

}  // namespace

pugi::xml_node chosenCase(pugi::xml_node node) {
    for (const pugi::xml_node child : node.children()) {
        if (!isDrawn(kindOf(child))) continue;
        const pugi::xml_attribute language = child.attribute("systemLanguage");
        const bool wanted =
            !child.attribute("requiredExtensions") && (!language || listsEnglish(language.value()));
        if (wanted) return child;
    }
    return {};
}

bool isWanted(const AttributeSet& attributes) {
    return !attributes.has(Attribute::requiredExtensions) &&
           (!attributes.has(Attribute::systemLanguage) ||
            listsEnglish(attributes.get(Attribute::systemLanguage)));
}

}  // namespace svg
