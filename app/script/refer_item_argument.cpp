#include "app/script/refer_item_argument.h"

#include <algorithm>
#include <charconv>
#include <functional>
#include <vector>

#include "app/output.h"
#include "app/report.h"
#include "app/session.h"
#include "kzcore/document/named_colors.h"
#include "kzcore/document/object_paint.h"

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

std::string inLowerCase(std::string text) {
    for (char& c : text) c = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    return text;
}

using Colors = std::vector<AColorItem*>;

// "RGB Color/red": what tells colours of one name apart.
std::string fullName(const AColorItem& color) {
    return displayName(color.getClassInfo()) + '/' + color.getName().toUtf8();
}

// Those that may be meant, without regard to case: the RGB colour of the value that the text stands for, and
// the other colours of the name.
Colors candidatesFor(const APaintTable& paint, const std::string& name) {
    Colors found = paint.findNamed(name);
    const auto value = valueOfColor(inLowerCase(name));
    if (AColorItem* rgb = value ? paint.findRgb(*value) : nullptr) found.insert(found.begin(), rgb);
    return found;
}

// Keeps what the test accepts, unless that is nothing.
template <class Test>
void prefer(Colors& colors, Test test) {
    if (std::ranges::any_of(colors, test)) std::erase_if(colors, std::not_fn(test));
}

[[noreturn]] void failAmbiguous(const std::string& name, const Colors& candidates) {
    constexpr std::size_t kMostTold = 8;
    std::string told;
    for (std::size_t i = 0; i < candidates.size() && i < kMostTold; ++i)
        told += (i == 0 ? "" : ", ") + inQuotes(fullName(*candidates[i]));
    if (candidates.size() > kMostTold) told += ", ...";
    throw Failure{"the drawing has more than one color " + inQuotes(name) + ": " + told};
}

AReferItem* findColor(ADocument& document, const std::string& text) {
    // No name has a slash, so that what stands before one is the colour's class.
    const std::size_t slash = text.find('/');
    const std::string colorClass = slash == std::string::npos ? "" : inLowerCase(text.substr(0, slash));
    const std::string name = slash == std::string::npos ? text : text.substr(slash + 1);
    Colors candidates = candidatesFor(document.getPaint(), name);
    if (slash != std::string::npos) {
        std::erase_if(candidates, [&](const AColorItem* color) {
            return inLowerCase(displayName(color->getClassInfo())) != colorClass;
        });
    }
    if (candidates.empty()) throw Failure{"the drawing has no color " + inQuotes(text)};
    if (name.starts_with('#')) {
        static const AClassInfo& rgb = *findClass(_T("ARGBColorItem"));
        prefer(candidates, [](const AColorItem* color) { return &color->getClassInfo() == &rgb; });
    }
    const AString exact = AString::fromUtf8(name);
    prefer(candidates, [&](const AColorItem* color) { return color->getName() == exact; });
    if (candidates.size() > 1) failAmbiguous(text, candidates);
    return candidates.front();
}

AObject& findObject(ADocument& document, const std::string& id) {
    AObject* object = document.findObject(id);
    if (!object) throw Failure{"there is no object " + inQuotes(id)};
    return *object;
}

AReferItem* findFill(ADocument& document, const std::string& id) {
    if (AReferItem* item = shownItem(fillItem(findObject(document, id)))) return item;
    throw Failure{inQuotes(id) + " has no fill"};
}

AReferItem* findStroke(ADocument& document, const std::string& id) {
    if (AReferItem* item = shownItem(strokeItem(findObject(document, id)))) return item;
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
