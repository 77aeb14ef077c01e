#include "formats/svg/style/variables.h"

#include "formats/svg/values/text_scan.h"

namespace svg {

namespace {

constexpr std::size_t kLongestValue = 1 << 14;
constexpr std::size_t kMostBytes = 1 << 26;
constexpr int kDeepestVariable = 16;

// A reference and what to take where it stands for nothing.
struct Reference {
    std::size_t begin = 0, end = 0;  // in the value
    std::string_view name;
    std::optional<std::string_view> fallback;
};

std::optional<Reference> findReference(std::string_view value, std::size_t from) {
    for (std::size_t at = from; at + 4 < value.size(); ++at) {
        if (!startsWithNoCase(value.substr(at), "var(")) continue;
        std::size_t close = at + 4;
        for (int depth = 1; close < value.size(); ++close) {
            depth += value[close] == '(' ? 1 : value[close] == ')' ? -1 : 0;
            if (depth == 0) break;
        }
        if (close == value.size()) return std::nullopt;
        const std::string_view inside = value.substr(at + 4, close - at - 4);
        const std::size_t comma = inside.find(',');
        Reference found{at, close + 1, trim(inside.substr(0, comma)), std::nullopt};
        if (comma != inside.npos) found.fallback = trim(inside.substr(comma + 1));
        return found;
    }
    return std::nullopt;
}

}  // namespace

bool hasVariable(std::string_view value) {
    return findReference(value, 0).has_value();
}

std::size_t Variables::Hash::operator()(const Variable& one) const {
    const TextHash hash;
    return kzutil::mixBits(hash(one.name) ^ reinterpret_cast<std::uintptr_t>(one.outer)) ^ hash(one.value);
}

bool Variables::Equal::operator()(const Variable& a, const Variable& b) const {
    return a.outer == b.outer && a.name == b.name && a.value == b.value;
}

const Variable* Variables::declare(std::string_view name, std::string_view value, const Variable* outer) {
    return &*m_declared.insert({name, value, outer}).first;
}

bool Variables::append(std::string_view value, const Variable* inForce, int depth, std::string& out) {
    if (depth > kDeepestVariable) return false;
    std::size_t at = 0;
    while (const std::optional<Reference> found = findReference(value, at)) {
        out += value.substr(at, found->begin - at);
        const Variable* one = inForce;
        std::size_t steps = 0;
        while (one != nullptr && one->name != found->name && ++steps < kLongestValue) one = one->outer;
        const std::size_t before = out.size();
        if (one == nullptr || !append(one->value, inForce, depth + 1, out)) {
            out.resize(before);
            if (!found->fallback || !append(*found->fallback, inForce, depth + 1, out)) return false;
        }
        if (out.size() > kLongestValue) return false;
        at = found->end;
    }
    out += value.substr(at);
    return out.size() <= kLongestValue;
}

std::optional<std::string_view> Variables::substitute(std::string_view value, const Variable* inForce) {
    std::string text;
    if (m_bytes > kMostBytes || !append(value, inForce, 0, text)) return std::nullopt;
    const auto [entry, isNew] = m_texts.insert(std::move(text));
    if (isNew) m_bytes += entry->size();
    return *entry;
}

}  // namespace svg
