#include "formats/svg/write/left_out.h"

#include <algorithm>

#include "kzcore/view/paint_visibility.h"
#include "kzcore/view/view_filter.h"

namespace svg {

namespace {

Outcome outcomeOf(const AObject& object, AViewFilter& filter) {
    const APaintVisibility visible = paintVisibility(object, &filter);
    const bool losesFill = object.getBrush() && !visible.fill;
    const bool losesStroke = object.getPen() && !visible.stroke;
    if (!losesFill && !losesStroke) return kStays;
    const bool showsFill = object.getBrush() && visible.fill;
    const bool showsStroke = object.getPen() && visible.stroke;
    if (!showsFill && !showsStroke) return kGoes;
    return losesFill ? kLosesFill : kLosesStroke;
}

// What is known of a "use" while the objects that it repeats are looked at.
struct Repeating {
    Content content;
    bool loses = false;
    bool shows = false;
};

std::vector<std::uint32_t> countBefore(std::size_t size, auto isCounted) {
    std::vector<std::uint32_t> before(size + 1, 0);
    for (std::uint32_t i = 0; i < size; ++i) before[i + 1] = before[i] + (isCounted(i) ? 1 : 0);
    return before;
}

}  // namespace

LeftOut::LeftOut(const ADocument& document, AViewFilter& filter, const SourceElements& source)
    : m_source(source), m_outcomes(source.elements.size(), kStays) {
    decide(document, filter);
    if (!m_any) return;
    findTargets();
    pin();
    const std::size_t size = m_outcomes.size();
    m_changesBefore = countBefore(size, [&](std::uint32_t i) { return m_outcomes[i] != kStays; });
    m_targetChangesBefore = countBefore(size, [&](std::uint32_t i) { return asTarget(i) != kStays; });
    m_referredBefore = countBefore(size, [&](std::uint32_t i) { return m_referred[i]; });
}

Outcome LeftOut::intern(Content content) {
    std::ranges::sort(content);
    const auto [entry, isNew] =
        m_numbers.try_emplace(std::move(content), kFirstContent + static_cast<Outcome>(m_contents.size()));
    if (isNew) m_contents.push_back(&entry->first);
    return entry->second;
}

const Content& LeftOut::contentOf(Outcome outcome) const {
    static const Content kNothing;
    return outcome < kFirstContent ? kNothing : *m_contents[outcome - kFirstContent];
}

// Whether the container has a filter, a mask or a clip path, which go by the extent of what is inside.
bool LeftOut::needsExtents(const AParent& container) const {
    if (dynamic_cast<const AMask*>(&container)) return true;
    const AParent* const around = container.getParent();
    if (dynamic_cast<const AEffect*>(around) && around->getSourceIndex() == 0) return true;
    const std::uint32_t number = m_source.find(container.getSourceIndex());
    if (number == kNoElement) return false;
    const SourceElement& element = m_source.elements[number];
    const std::string_view tag = m_source.text.substr(element.begin, element.content - element.begin);
    for (const std::string_view effect : {"filter", "mask", "clip-path"}) {
        if (tag.find(effect) != tag.npos) return true;
    }
    return false;
}

// Containers come before their content, so one pass goes up and one pass goes down.
void LeftOut::decide(const ADocument& document, AViewFilter& filter) {
    const auto count = static_cast<std::uint32_t>(document.getObjectCount());
    std::vector<std::uint32_t> elementOf(count + 1, kNoElement);
    std::vector<std::uint32_t> around(count + 1, 0);  // the "use" that repeats the object; 0: none
    std::vector<bool> isExtent(count + 1, false);     // counts for an effect around it
    std::unordered_map<std::uint32_t, Repeating> uses;
    std::unordered_map<const AParent*, bool> effects;
    m_repeats.assign(m_outcomes.size(), false);
    for (std::uint32_t i = 1; i <= count; ++i) {
        AObject& object = *document.getObject(i);
        elementOf[i] = m_source.find(object.getSourceIndex());
        const std::uint32_t parent = object.getParent() ? object.getParent()->getIndex() : 0;
        around[i] = uses.contains(parent) ? parent : around[parent];
        if (const AParent* const container = object.getParent()) {
            const auto [effect, isNew] = effects.try_emplace(container, false);
            if (isNew) effect->second = needsExtents(*container);
            isExtent[i] = effect->second || isExtent[parent];
        }
        const bool isUse = elementOf[i] != kNoElement && object.asParent() &&
                           m_source.elements[elementOf[i]].kind == Element::use;
        if (!isUse) continue;
        uses.try_emplace(i);
        m_repeats[elementOf[i]] = true;
    }

    std::vector<Outcome> outcomes(count + 1, kStays);
    for (std::uint32_t i = count; i > 0; --i) {
        AObject& object = *document.getObject(i);
        Outcome& outcome = outcomes[i];
        bool shows = true;
        if (const auto use = uses.find(i); use != uses.end()) {
            Repeating& repeated = use->second;
            shows = repeated.shows || !repeated.loses;
            if (!shows)
                outcome = kGoes;
            else if (!repeated.content.empty())
                outcome = intern(std::move(repeated.content));
        } else if (object.asParent()) {
            continue;
        } else {
            outcome = outcomeOf(object, filter);
            if (outcome == kGoes && isExtent[i]) outcome = kLosesBoth;
            shows = outcome != kGoes;
        }
        m_any |= outcome != kStays;
        if (around[i] == 0) continue;
        Repeating& repeating = uses[around[i]];
        repeating.shows |= shows;
        repeating.loses |= !shows;
        if (outcome != kStays && elementOf[i] != kNoElement)
            repeating.content.push_back({elementOf[i], outcome});
    }
    if (!m_any) return;

    m_direct.assign(m_outcomes.size(), false);
    std::vector<bool> isDecided(m_outcomes.size(), false);
    std::vector<bool> differs(m_outcomes.size(), false);
    for (std::uint32_t i = 1; i <= count; ++i) {
        const std::uint32_t element = elementOf[i];
        if (element == kNoElement) continue;
        if (around[i] == 0) {
            m_direct[element] = true;
            m_outcomes[element] = outcomes[i];
        } else if (!m_direct[element] && !isDecided[element]) {
            isDecided[element] = true;
            m_outcomes[element] = outcomes[i];
        } else if (!m_direct[element] && m_outcomes[element] != outcomes[i]) {
            differs[element] = true;
        }
    }
    for (std::size_t i = 0; i < m_outcomes.size(); ++i) {
        if (differs[i] && !m_direct[i]) m_outcomes[i] = kStays;
    }
}

void LeftOut::findTargets() {
    TextMap<std::uint32_t> byId;
    for (const SourceReference& reference : m_source.references) byId.emplace(reference.id, kNoElement);
    for (std::uint32_t i = 0; i < m_source.elements.size(); ++i) {
        const auto found = byId.find(m_source.elements[i].id);
        if (found != byId.end() && found->second == kNoElement) found->second = i;  // the first one counts
    }
    m_referred.assign(m_outcomes.size(), false);
    m_targets.assign(m_outcomes.size(), kNoElement);
    for (const SourceReference& reference : m_source.references) {
        const std::uint32_t target = byId[reference.id];
        m_ids.push_back(target);
        if (target == kNoElement) continue;
        m_referred[target] = true;
        const bool isInside =
            reference.element >= target && reference.element < m_source.elements[target].next;
        const bool isUse = m_source.elements[reference.element].kind == Element::use;
        if (isUse && reference.isLink && !isInside) m_targets[reference.element] = target;
    }
}

void LeftOut::pin() {
    m_pinned.assign(m_outcomes.size(), false);
    std::vector<std::uint32_t> open;
    const auto isObjectUse = [&](const SourceReference& reference) {
        return reference.isLink && m_repeats[reference.element];
    };
    for (std::size_t i = 0; i < m_ids.size(); ++i) {
        if (m_ids[i] != kNoElement && !isObjectUse(m_source.references[i])) open.push_back(m_ids[i]);
    }
    while (!open.empty()) {
        const std::uint32_t target = open.back();
        open.pop_back();
        if (m_pinned[target]) continue;
        const std::uint32_t next = m_source.elements[target].next;
        for (std::uint32_t i = target; i < next; ++i) m_pinned[i] = true;
        // What is repeated inside shows there, too.
        auto inside = std::ranges::lower_bound(m_source.references, target, {}, &SourceReference::element);
        for (; inside != m_source.references.end() && inside->element < next; ++inside) {
            const auto number = static_cast<std::size_t>(inside - m_source.references.begin());
            if (m_ids[number] != kNoElement) open.push_back(m_ids[number]);
        }
    }
    for (std::size_t i = 0; i < m_outcomes.size(); ++i) {
        if (m_pinned[i] && !m_direct[i]) m_outcomes[i] = kStays;
    }
}

bool LeftOut::shows(std::uint32_t target, Outcome outcome) const {
    const Content& content = contentOf(outcome);
    const std::uint32_t next = m_source.elements[target].next;
    if (m_targetChangesBefore[next] - m_targetChangesBefore[target] != content.size()) return false;
    return std::ranges::all_of(content, [&](const ContentOutcome& one) {
        return one.element >= target && one.element < next && asTarget(one.element) == one.outcome;
    });
}

bool LeftOut::holdsTarget(std::uint32_t element) const {
    return m_referredBefore[m_source.elements[element].next] != m_referredBefore[element + 1];
}

}  // namespace svg
