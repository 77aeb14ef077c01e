#include "formats/svg/write/visible_text.h"

#include <deque>
#include <map>

#include "formats/svg/values/text_scan.h"

namespace svg {

namespace {

// Copies may nest in copies; more than that is no drawing that anyone could open.
constexpr std::size_t kMostCopied = std::size_t{1} << 30;

// What draws an object together with its element, and loses a paint with it: the parts of a text, say.
bool hasOwnPaint(Element kind) {
    return kind >= Element::svg && kind <= Element::textPath;
}

class VisibleText {
public:
    VisibleText(const std::string& text, const SourceElements& source, const LeftOut& leftOut)
        : m_text(text), m_source(source), m_leftOut(leftOut) {}

    std::vector<TextEdit> edits() {
        const auto count = static_cast<std::uint32_t>(m_source.elements.size());
        for (std::uint32_t i = 0; i < count; ++i) {
            const SourceElement& element = m_source.elements[i];
            const Outcome outcome = m_leftOut.at(i);
            const bool isTarget = m_leftOut.isPinned(i) && m_leftOut.changes(i, element.next);
            if (!isTarget && (outcome != kGoes || !m_leftOut.holdsTarget(i))) {
                change(i, outcome, m_edits);
                if (outcome == kGoes) i = element.next - 1;
                continue;
            }
            // Something still refers to it, or into it: the original goes where it does not show.
            TextEdit edit{element.begin, element.end - element.begin,
                          inDefinitions(i, copy(i, kStays, true))};
            edit.text += isTarget ? copyAsShown(i) : placeholder(element);
            m_edits.push_back(std::move(edit));
            m_kept.push_back(i);
            i = element.next - 1;
        }
        insertVariants();
        return std::move(m_edits);
    }

private:
    // A target of "use" that shows something else than where it stands.
    struct Variant {
        std::uint32_t target;
        Outcome outcome;
        std::string id;
    };

    std::string_view part(const SourceElement& element) const {
        return std::string_view(m_text).substr(element.begin, element.end - element.begin);
    }

    // Appends what makes the element look like its outcome.
    void change(std::uint32_t number, Outcome outcome, std::vector<TextEdit>& edits) {
        const SourceElement& element = m_source.elements[number];
        switch (outcome) {
            case kLosesFill:
                return losePaint(number, "fill:none!important", edits);
            case kLosesStroke:
                return losePaint(number, "stroke:none!important", edits);
            case kLosesBoth:
                return losePaint(number, "fill:none!important;stroke:none!important", edits);
            case kGoes:
                edits.push_back({element.begin, element.end - element.begin, placeholder(element)});
                return;
            default:
                if (element.kind == Element::use) redirect(number, outcome, edits);
        }
    }

    // A switch shows the first of its children that suits: another one must not come forward.
    std::string placeholder(const SourceElement& element) const {
        const bool isCase =
            element.parent != kNoElement && m_source.elements[element.parent].kind == Element::switch_;
        return isCase ? '<' + std::string(prefixOf(m_text, element)) + "g/>" : std::string();
    }

    void losePaint(std::uint32_t first, const char* declaration, std::vector<TextEdit>& edits) const {
        for (std::uint32_t i = first; i < m_source.elements[first].next; ++i) {
            const SourceElement& element = m_source.elements[i];
            if (i == first || hasOwnPaint(element.kind)) appendStyle(element, declaration, edits);
        }
    }

    void appendStyle(const SourceElement& element, const char* declaration,
                     std::vector<TextEdit>& edits) const {
        std::size_t at = behindName(m_text, element.begin);
        std::size_t behind = at;
        for (SourceAttribute attribute; takeAttribute(m_text, at, attribute); behind = at) {
            if (attribute.name != "style") continue;
            const std::string_view value = trim(attribute.value);
            const bool needsSemicolon = !value.empty() && value.back() != ';';
            edits.push_back({offsetOf(attribute.value) + attribute.value.size(), 0,
                             (needsSemicolon ? ";" : "") + std::string(declaration)});
            return;
        }
        edits.push_back({behind, 0, " style=\"" + std::string(declaration) + '"'});
    }

    // Makes a "use" refer to what it has to show, where its target does not.
    void redirect(std::uint32_t number, Outcome outcome, std::vector<TextEdit>& edits) {
        const std::uint32_t target = m_leftOut.targetOf(number);
        if (target == kNoElement || m_leftOut.shows(target, outcome)) return;
        const std::string& id = variant(target, outcome);
        std::size_t at = behindName(m_text, m_source.elements[number].begin);
        for (SourceAttribute attribute; takeAttribute(m_text, at, attribute);) {
            const bool isLink = attribute.name == "href" || attribute.name.ends_with(":href");
            if (isLink) edits.push_back({offsetOf(attribute.value), attribute.value.size(), '#' + id});
        }
    }

    const std::string& variant(std::uint32_t target, Outcome outcome) {
        const auto [entry, isNew] = m_variants.try_emplace({target, outcome});
        if (isNew) {
            entry->second = newId(m_source.elements[target].id);
            m_pending.push_back({target, outcome, entry->second});
        }
        return entry->second;
    }

    std::string newId(std::string_view like) {
        if (m_ids.empty()) {
            for (const SourceElement& element : m_source.elements) m_ids.insert(element.id);
        }
        std::uint32_t& number = m_lastNumber.try_emplace(like, 1).first->second;
        for (;;) {
            std::string id = std::string(like) + '-' + std::to_string(++number);
            if (!m_ids.contains(id)) return id;
        }
    }

    // The element with the outcome of a "use" that repeats it, or as it is.
    // `edits`: what is changed besides.
    std::string copy(std::uint32_t number, Outcome outcome, bool withIds, const std::string& rootId = {},
                     std::vector<TextEdit> edits = {}) {
        const Content& content = m_leftOut.contentOf(outcome);
        auto next = content.begin();
        return copyWith(
            number,
            [&](std::uint32_t element) {
                while (next != content.end() && next->element < element) ++next;
                return next != content.end() && next->element == element ? next->outcome : kStays;
            },
            withIds, rootId, std::move(edits));
    }

    std::string copyAsShown(std::uint32_t number) {
        return copyWith(number, [&](std::uint32_t element) { return m_leftOut.at(element); }, false, {}, {});
    }

    std::string copyWith(std::uint32_t number, auto outcomeOfElement, bool withIds, const std::string& rootId,
                         std::vector<TextEdit> edits) {
        const SourceElement& root = m_source.elements[number];
        for (std::uint32_t i = number; i < root.next; ++i) {
            const Outcome outcome = outcomeOfElement(i);
            change(i, outcome, edits);
            if (!withIds && outcome != kGoes) changeId(i, i == number ? rootId : std::string(), edits);
            if (outcome == kGoes) i = m_source.elements[i].next - 1;
        }
        std::string text;
        applyEdits(
            edits, root.begin, root.end,
            [&](std::size_t from, std::size_t to) { text.append(m_text, from, to - from); },
            [&](const std::string& put) { text += put; });
        m_copied += text.size();
        if (m_copied > kMostCopied) throw CopiesGrow{};
        return text;
    }

    // Takes the id away, or gives another one. An id that a style sheet knows stays: the element would look
    // different without it, and what refers to it finds the original, which stands in front.
    void changeId(std::uint32_t number, const std::string& id, std::vector<TextEdit>& edits) const {
        const SourceElement& element = m_source.elements[number];
        if (element.id.data() == nullptr) return;
        if (id.empty() && m_source.sheetIds.contains(element.id)) return;
        std::size_t at = behindName(m_text, element.begin);
        std::size_t behind = at;
        for (SourceAttribute attribute; takeAttribute(m_text, at, attribute); behind = at) {
            if (attribute.name != "id") continue;
            if (id.empty())
                edits.push_back({behind, at - behind, {}});
            else
                edits.push_back({offsetOf(attribute.value), attribute.value.size(), id});
            return;
        }
    }

    std::string inDefinitions(std::uint32_t number, const std::string& text) const {
        const std::string prefix(prefixOf(m_text, m_source.elements[number]));
        return '<' + prefix + "defs>" + text + "</" + prefix + "defs>";
    }

    // Behind its target, where style sheets and inheritance give the same.
    void insertVariants() {
        while (!m_pending.empty()) {
            const Variant one = m_pending.front();
            m_pending.pop_front();
            const SourceElement& target = m_source.elements[one.target];
            // A copy does not show in what is not drawn directly.
            const bool isHiddenPlace =
                target.kind == Element::symbol ||
                (target.parent != kNoElement && isDefinitions(m_source.elements[target.parent]));
            const std::string text = variantText(one);
            m_edits.push_back(
                {placeBehind(one.target), 0, isHiddenPlace ? text : inDefinitions(one.target, text)});
        }
    }

    // What a style sheet says of the target's id has to hold for the copy, which is why the old id stays on
    // an element of its own: around the copy, or around the content of what may not stand in a group.
    std::string variantText(const Variant& one) {
        const SourceElement& target = m_source.elements[one.target];
        if (!m_source.sheetIds.contains(target.id)) return copy(one.target, one.outcome, false, one.id);
        const std::string prefix(prefixOf(m_text, target));
        const auto open = [&](std::string_view id) {
            return '<' + prefix + "g id=\"" + std::string(id) + "\">";
        };
        const std::string close = "</" + prefix + "g>";
        if (target.kind != Element::symbol && target.kind != Element::svg)
            return open(one.id) + copy(one.target, one.outcome, false) + close;
        std::vector<TextEdit> edits;
        if (target.content != target.end) {
            edits.push_back({target.content, 0, open(target.id)});
            edits.push_back({m_text.rfind("</", target.end - 1), 0, close});
        }
        return copy(one.target, one.outcome, false, one.id, std::move(edits));
    }

    bool isDefinitions(const SourceElement& element) const {
        const std::string_view start = part(element);
        const std::size_t name = 1 + prefixOf(m_text, element).size();
        return start.substr(name, behindName(start, 0) - name) == "defs";
    }

    // An offset outside of everything that is replaced as a whole.
    std::size_t placeBehind(std::uint32_t number) const {
        const auto above = std::ranges::upper_bound(m_kept, number);
        if (above != m_kept.begin()) {
            const SourceElement& kept = m_source.elements[*std::prev(above)];
            if (number < kept.next) return kept.end;
        }
        return m_source.elements[number].end;
    }

    std::size_t offsetOf(std::string_view piece) const {
        return static_cast<std::size_t>(piece.data() - m_text.data());
    }

    const std::string& m_text;
    const SourceElements& m_source;
    const LeftOut& m_leftOut;
    std::vector<TextEdit> m_edits;
    std::vector<std::uint32_t> m_kept;  // replaced as a whole, with their content inside
    std::map<std::pair<std::uint32_t, Outcome>, std::string> m_variants;
    std::deque<Variant> m_pending;
    TextSet m_ids;
    TextMap<std::uint32_t> m_lastNumber;
    std::size_t m_copied = 0;
};

}  // namespace

std::vector<TextEdit> editsUnder(const std::string& text, const SourceElements& source,
                                 const LeftOut& leftOut) {
    return VisibleText(text, source, leftOut).edits();
}

}  // namespace svg
