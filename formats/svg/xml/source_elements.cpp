#include "formats/svg/xml/source_elements.h"

#include <algorithm>

#include "formats/svg/values/text_scan.h"

namespace svg {

namespace {

// Behind what starts at `at` and is no element's tag; `at` itself where one starts.
std::size_t skipNoTag(std::string_view text, std::size_t at) {
    if (text[at + 1] != '?' && text[at + 1] != '!') return at;
    const std::size_t behindOpaque = skipOpaque(text, at);
    if (behindOpaque != at) return behindOpaque;
    // A document type, with declarations inside.
    int depth = 0;
    for (std::size_t i = at; (i = findUnquoted(text, i, '<', '>')) < text.size();) {
        const std::size_t inside = i > at ? skipOpaque(text, i) : i;
        if (inside != i) {
            i = inside;
            continue;
        }
        depth += text[i++] == '<' ? 1 : -1;
        if (depth == 0) return i;
    }
    return text.size();
}

std::string_view localName(std::string_view name) {
    return name.substr(name.find(':') + 1);  // npos + 1 is 0
}

// Notes every "#name" of a style sheet.
void collectSheetIds(std::string_view sheet, TextSet& ids) {
    for (std::size_t at = 0; (at = sheet.find('#', at)) != sheet.npos;) {
        std::size_t end = ++at;
        const auto isPart = [](char c) {
            return isDigit(c) || (toLower(c) >= 'a' && toLower(c) <= 'z') || c == '-' || c == '_' ||
                   static_cast<unsigned char>(c) >= 0x80;
        };
        while (end < sheet.size() && isPart(sheet[end])) ++end;
        ids.insert(sheet.substr(at, end - at));
    }
}

// Notes what an attribute refers to.
void collectReferences(std::uint32_t element, const SourceAttribute& attribute,
                       std::vector<SourceReference>& references) {
    if (localName(attribute.name) == "href") {
        const std::string_view id = localReference(attribute.value);
        if (!id.empty()) references.push_back({element, true, id});
        return;
    }
    const std::string_view value = attribute.value;
    std::size_t close = 0;
    for (std::size_t at = 0; (at = value.find("url(", at)) != value.npos;) {
        at += 4;
        if (close < at) close = value.find(')', at);  // once for all that it closes
        if (close == value.npos) return;
        std::string_view inside = value.substr(at, close - at);
        for (const std::string_view quote : {"\"", "'", "&quot;", "&apos;", "&#34;", "&#39;"}) {
            inside = trim(inside);
            if (inside.starts_with(quote)) inside.remove_prefix(quote.size());
            if (inside.ends_with(quote)) inside.remove_suffix(quote.size());
        }
        const std::string_view id = localReference(inside);
        if (!id.empty()) references.push_back({element, false, id});
    }
}

}  // namespace

std::string_view prefixOf(std::string_view text, const SourceElement& element) {
    const std::size_t from = element.begin + 1;
    const std::string_view name = text.substr(from, behindName(text, element.begin) - from);
    return name.substr(0, name.find(':') + 1);
}

SourceElements::SourceElements(std::string_view drawing) : text(drawing) {
    std::uint32_t open = kNoElement;
    const auto close = [&](std::uint32_t number, std::size_t end) {
        elements[number].end = static_cast<std::uint32_t>(end);
        elements[number].next = static_cast<std::uint32_t>(elements.size());
        open = elements[number].parent;
    };
    std::size_t at = 0;
    while ((at = text.find('<', at)) != text.npos && at + 1 < text.size()) {
        if (const std::size_t next = skipNoTag(text, at); next != at) {
            at = next;
            continue;
        }
        if (text[at + 1] == '/') {
            const std::size_t begin = at;
            at = behind(text, at, ">");
            if (open == kNoElement) continue;
            const SourceElement& closed = elements[open];
            if (closed.kind == Element::style)
                collectSheetIds(text.substr(closed.content, begin - closed.content), sheetIds);
            close(open, at);
            continue;
        }
        const auto number = static_cast<std::uint32_t>(elements.size());
        SourceElement element;
        element.begin = static_cast<std::uint32_t>(at);
        element.parent = open;
        const std::size_t name = at + 1;
        at = behindName(text, at);
        element.kind = findElement(localName(text.substr(name, at - name)));
        for (SourceAttribute attribute; takeAttribute(text, at, attribute);) {
            if (attribute.name == "id")
                element.id = attribute.value;
            else
                collectReferences(number, attribute, references);
        }
        at = behind(text, at, ">");
        element.content = static_cast<std::uint32_t>(at);
        elements.push_back(element);
        open = number;
        if (text[at - 2] == '/') close(number, at);
    }
    while (open != kNoElement) close(open, text.size());
}

std::uint32_t SourceElements::find(std::uint32_t sourceIndex) const {
    if (sourceIndex == 0) return kNoElement;
    const auto found = std::ranges::lower_bound(elements, sourceIndex - 1, {}, &SourceElement::begin);
    if (found == elements.end() || found->begin != sourceIndex - 1) return kNoElement;
    return static_cast<std::uint32_t>(found - elements.begin());
}

}  // namespace svg
