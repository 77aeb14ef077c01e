#include "formats/svg/xml/entities.h"

#include <algorithm>
#include <string_view>

#include "formats/svg/values/text_map.h"
#include "formats/svg/values/text_scan.h"
#include "formats/svg/xml/tag_scan.h"

namespace svg {

namespace {

constexpr std::size_t kLargestValue = std::size_t{1} << 20;
constexpr std::size_t kLargestGrowth = std::size_t{64} << 20;
// Elements and attributes that entities may make: in a tree each takes a hundred times its text.
constexpr std::size_t kMostNodes = 1'000'000;
constexpr int kDeepestReference = 64;

struct Entity {
    std::string value;
    std::size_t offset = 0;  // of its declaration
    std::size_t nodes = 0;   // that the expanded value makes, at most
    enum State { written, inProgress, expanded } state = written;
};

using Entities = StringMap<Entity>;

// <!ENTITY name "value">; parameter entities and external ones are left out. The first declaration counts.
void readEntity(std::string_view declaration, std::size_t offset, Entities& entities) {
    std::string_view rest = declaration;
    const std::string_view name = takeWord(rest);
    rest = trimFront(rest);
    if (name.empty() || name == "%" || rest.empty() || (rest.front() != '"' && rest.front() != '\'')) return;
    const std::size_t close = rest.find(rest.front(), 1);
    if (close == rest.npos) return;
    Entity entity;
    entity.value = rest.substr(1, close - 1);
    entity.offset = offset;
    std::replace(entity.value.begin(), entity.value.end(), '\n', ' ');
    entities.emplace(name, std::move(entity));
}

// Reads the internal subset from behind its "[". Gives the place of its "]".
std::size_t readSubset(std::string_view text, std::size_t at, Entities& entities) {
    while (at < text.size() && text[at] != ']') {
        if (const std::size_t next = skipOpaque(text, at); next != at) {
            at = next;
            continue;
        }
        if (text[at] != '<') {
            ++at;
            continue;
        }
        const std::size_t end = findUnquoted(text, at, '>', '>');
        constexpr std::string_view kEntity = "<!ENTITY";
        if (text.substr(at).starts_with(kEntity)) {
            readEntity(text.substr(at + kEntity.size(), end - at - kEntity.size()), at, entities);
        }
        at = end + 1;
    }
    return std::min(at, text.size());
}

// The place behind the "[" of the document type, npos without one.
std::size_t findSubset(std::string_view text) {
    std::size_t at = 0;
    while (at < text.size()) {
        if (isSpace(text[at])) {
            ++at;
        } else if (text.substr(at).starts_with("<!DOCTYPE")) {
            at = findUnquoted(text, at, '[', '>');
            return at < text.size() && text[at] == '[' ? at + 1 : text.npos;
        } else if (const std::size_t next = skipOpaque(text, at); next != at) {
            at = next;
        } else {
            return text.npos;
        }
    }
    return text.npos;
}

class Expander {
public:
    Expander(Entities& entities, EntityError& error, std::vector<EntityUse>& uses)
        : m_entities(entities), m_error(error), m_uses(uses) {}

    // Appends the text with its references replaced. `limit` bounds the output.
    bool append(std::string_view text, std::size_t limit, int depth, bool isDocument, std::string& out);

private:
    bool fail(std::size_t offset, std::string reason) {
        m_error = {offset, std::move(reason)};
        return false;
    }
    bool expand(const std::string& name, Entity& entity, int depth);

    Entities& m_entities;
    EntityError& m_error;
    std::vector<EntityUse>& m_uses;
    std::size_t m_nodes = 0;
};

bool Expander::expand(const std::string& name, Entity& entity, int depth) {
    if (entity.state == Entity::expanded) return true;
    if (entity.state == Entity::inProgress)
        return fail(entity.offset, "the entity " + name + " refers to itself");
    if (depth > kDeepestReference) return fail(entity.offset, "entities are nested too deep");
    entity.state = Entity::inProgress;
    std::string value;
    if (!append(entity.value, kLargestValue, depth, false, value)) {
        if (m_error.reason.empty())
            return fail(entity.offset, "the entity " + name + " expands to more than 1 MiB");
        return false;
    }
    entity.value = std::move(value);
    entity.nodes = static_cast<std::size_t>(
        std::count_if(entity.value.begin(), entity.value.end(), [](char c) { return c == '<' || c == '='; }));
    entity.state = Entity::expanded;
    return true;
}

bool Expander::append(std::string_view text, std::size_t limit, int depth, bool isDocument,
                      std::string& out) {
    std::size_t done = 0;
    std::size_t at = 0;
    while ((at = text.find_first_of(isDocument ? "&<" : "&", at)) != text.npos) {
        if (text[at] == '<') {
            at = std::max(at + 1, skipOpaque(text, at));
            continue;
        }
        const std::size_t end = text.find_first_of("; \t\r\n<&\"'", at + 1);
        if (end == text.npos) break;
        const std::string name(text.substr(at + 1, end - at - 1));
        const auto found = text[end] == ';' ? m_entities.find(name) : m_entities.end();
        if (found == m_entities.end()) {
            at = end;
            continue;
        }
        if (!expand(name, found->second, depth + 1)) return false;
        out.append(text.substr(done, at - done));
        if (isDocument) {
            m_uses.push_back({out.size(), found->second.value.size(), name});
            m_nodes += found->second.nodes;
            if (m_nodes > kMostNodes)
                return fail(found->second.offset, "the entity " + name + " makes too many elements");
        }
        out += found->second.value;
        if (out.size() > limit) return false;
        at = done = end + 1;
    }
    out.append(text.substr(done));
    return out.size() <= limit;
}

}  // namespace

bool expandEntities(std::string& text, EntityError& error, std::vector<EntityUse>& uses) {
    uses.clear();
    const std::size_t subset = findSubset(text);
    if (subset == text.npos) return true;
    Entities entities;
    const std::size_t body = readSubset(text, subset, entities);
    for (const char* predefined : {"amp", "lt", "gt", "quot", "apos"}) entities.erase(predefined);
    if (entities.empty()) return true;

    // The declarations themselves stay as they are.
    std::string out = text.substr(0, body);
    Expander expander(entities, error, uses);
    if (!expander.append(std::string_view(text).substr(body), text.size() + kLargestGrowth, 0, true, out)) {
        if (error.reason.empty()) error = {subset, "its entities make the drawing more than 64 MiB larger"};
        return false;
    }
    text = std::move(out);
    return true;
}

}  // namespace svg
