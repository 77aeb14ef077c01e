// What a view filter leaves of every element of a drawing.
//
// An element may stand for many objects: "use" repeats it. Each "use" has its own outcome for what it
// repeats, told by a list of those elements that do not stay as they are; equal lists are the same outcome.
// The element itself is changed where it is drawn directly or where every place agrees, but never where
// something else refers to it (a clip path, a text on a path, a "use" in a pattern), which must not change.
#pragma once

#include <compare>
#include <cstdint>
#include <map>
#include <vector>

#include "formats/svg/xml/source_elements.h"
#include "kzcore/document/document.h"

class AViewFilter;

namespace svg {

using Outcome = std::uint32_t;
constexpr Outcome kStays = 0;
constexpr Outcome kLosesFill = 1;
constexpr Outcome kLosesStroke = 2;
constexpr Outcome kLosesBoth = 3;  // stays for its extent, which an effect around it depends on
constexpr Outcome kGoes = 4;
constexpr Outcome kFirstContent = 5;  // of a "use": so it and the following stand for a list

struct ContentOutcome {
    std::uint32_t element = 0;
    Outcome outcome = kStays;
    auto operator<=>(const ContentOutcome&) const = default;
};
using Content = std::vector<ContentOutcome>;  // ascending; nothing that stays

class LeftOut {
public:
    LeftOut(const ADocument& document, AViewFilter& filter, const SourceElements& source);

    // Whether anything changes at all.
    bool any() const { return m_any; }
    // What becomes of the element where it stands.
    Outcome at(std::uint32_t element) const { return m_outcomes[element]; }
    // Whether something besides objects refers to it, or to an element around it.
    bool isPinned(std::uint32_t element) const { return m_pinned[element]; }
    // Whether something changes from one element to before another.
    bool changes(std::uint32_t first, std::uint32_t behind) const {
        return m_changesBefore[behind] != m_changesBefore[first];
    }
    // Whether the target of a "use" will be, where it stands, what that "use" has to show.
    bool shows(std::uint32_t target, Outcome outcome) const;
    // The list of a "use"; empty for one that stays.
    const Content& contentOf(Outcome outcome) const;
    // The target of a "use"; kNoElement when there is none, or the "use" is inside of it.
    std::uint32_t targetOf(std::uint32_t use) const { return m_targets[use]; }
    // Whether the element of an id, that is referred to, lies inside.
    bool holdsTarget(std::uint32_t element) const;

private:
    void decide(const ADocument& document, AViewFilter& filter);
    bool needsExtents(const AParent& container) const;
    void findTargets();
    void pin();
    Outcome intern(Content content);
    // The outcome as the targets of "use" have it: what is pinned stays, the changed copy stands elsewhere.
    Outcome asTarget(std::uint32_t element) const { return m_pinned[element] ? kStays : m_outcomes[element]; }

    const SourceElements& m_source;
    std::map<Content, Outcome> m_numbers;
    std::vector<const Content*> m_contents;
    std::vector<Outcome> m_outcomes;
    std::vector<bool> m_direct;   // stands for an object that no "use" repeats
    std::vector<bool> m_repeats;  // a "use" that is an object
    std::vector<bool> m_pinned;
    std::vector<bool> m_referred;
    std::vector<std::uint32_t> m_targets;
    std::vector<std::uint32_t> m_ids;  // of m_source.references: the elements referred to
    std::vector<std::uint32_t> m_changesBefore;
    std::vector<std::uint32_t> m_targetChangesBefore;
    std::vector<std::uint32_t> m_referredBefore;
    bool m_any = false;
};

}  // namespace svg
