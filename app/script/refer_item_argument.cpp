#include "app/script/refer_item_argument.h"

#include <algorithm>
#include <charconv>

#include "app/output.h"
#include "app/session.h"
#include "kzcore/document/named_colors.h"

namespace app {

namespace {

// Of a CSS name or #rrggbb, in lower case.
std::optional<std::uint32_t> valueOfColor(const std::string& text) {
    if (text.size() != 7 || text[0] != '#') return findNamedColor(text);
    std::uint32_t value = 0;
    const auto [end, error] = std::from_chars(text.data() + 1, text.data() + 7, value, 16);
    if (error != std::errc() || end != text.data() + 7) return std::nullopt;
    return value;
}

AReferItem* findColor(ADocument& document, const std::string& name) {
    // A color is called by its canonical name, but found by any of its CSS names and as #rrggbb.
    std::string canonical = name;
    for (char& c : canonical) c = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    if (const auto value = valueOfColor(canonical)) canonical = canonicalColorName(*value);
    for (const std::string& text : {name, canonical}) {
        const AString wanted = AString::fromUtf8(text);
        for (AColorItem* color : document.getPaint().getColors()) {
            if (color->getName().CompareNoCase(wanted) == 0) return color;
        }
    }
    throw Failure{"the drawing has no color " + inQuotes(name)};
}

AObject& findObject(ADocument& document, const std::string& id) {
    AObject* object = document.findObject(id);
    if (!object) throw Failure{"there is no object " + inQuotes(id)};
    return *object;
}

AReferItem* findFill(ADocument& document, const std::string& id) {
    const ABrush* brush = findObject(document, id).getBrush();
    ABrushItem* item = brush ? brush->getBrushItem() : nullptr;
    if (auto* solid = dynamic_cast<ASolidBrushItem*>(item); solid && solid->getColorItem())
        return solid->getColorItem();
    if (item) return item;
    throw Failure{inQuotes(id) + " has no fill"};
}

AReferItem* findStroke(ADocument& document, const std::string& id) {
    const APen* pen = findObject(document, id).getPen();
    const APenItem* item = pen ? pen->getPenItem() : nullptr;
    if (item && item->getColorItem()) return item->getColorItem();
    if (item && item->getBrushItem()) return item->getBrushItem();
    throw Failure{inQuotes(id) + " has no stroke"};
}

struct Kind {
    std::string_view prefix;
    AReferItem* (*find)(ADocument&, const std::string&);
};
constexpr Kind kKinds[] = {{"color:", findColor}, {"fill:", findFill}, {"stroke:", findStroke}};

// Null for a text that is of none.
const Kind* kindOf(const std::string& text) {
    const Kind* kind =
        std::ranges::find_if(kKinds, [&](const Kind& k) { return text.starts_with(k.prefix); });
    return kind == std::end(kKinds) ? nullptr : kind;
}

}  // namespace

AReferItem* findReferItem(ADocument& document, const std::string& text) {
    const Kind* kind = kindOf(text);
    if (!kind) throw Failure{inQuotes(text) + " is none of color:NAME, fill:ID, stroke:ID"};
    return kind->find(document, text.substr(kind->prefix.size()));
}

AReferItem* findReferItemOrColor(ADocument& document, const std::string& text) {
    return kindOf(text) ? findReferItem(document, text) : findColor(document, text);
}

}  // namespace app
