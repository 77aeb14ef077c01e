#include "select/select_color_tool.h"

#include <vector>

#include "kzcore/document/refer_item.h"
#include "select/object_walk.h"

namespace {

// The object as a group, null when it is none. Composites and effects hold children but are no groups.
AGroup* asGroup(AObject& object) {
    return object.asParent() ? dynamic_cast<AGroup*>(&object) : nullptr;
}

// The fill that stands for an object: its own, or for a group without one that of its first filled
// descendant, breadth-first, whether hidden or locked. A brush without an item ends the search all the same.
ABrushItem* referenceItem(AObject& object) {
    if (const ABrush* brush = object.getBrush()) return brush->getBrushItem();
    const AGroup* group = asGroup(object);
    if (!group) return nullptr;
    ABrushItem* found = nullptr;
    AObList work(0, 10);
    work.AddTail(&group->children);
    walkBreadthFirst(work, [&found](AObject& entry) -> WalkStep {
        if (const ABrush* brush = entry.getBrush()) {
            found = brush->getBrushItem();
            return {.end = true};
        }
        const AGroup* inner = asGroup(entry);
        return {inner ? &inner->children : nullptr};
    });
    return found;
}

// Tells whether a fill is that of the reference: for two solid fills the colours decide, otherwise the fill
// item itself has to be the same. No item is nobody's fill, not even that of another object without one.
// Neighbours often share their fill, so the last answer is kept.
class FillMatcher {
public:
    explicit FillMatcher(ABrushItem* reference)
        : m_reference(reference), m_solid(dynamic_cast<const ASolidBrushItem*>(reference)) {}

    bool matches(ABrushItem* item) {
        if (!m_asked || item != m_lastItem) {
            m_lastAnswer = decide(item);
            m_lastItem = item;
            m_asked = true;
        }
        return m_lastAnswer;
    }

private:
    bool decide(ABrushItem* item) const {
        const auto* solid = m_solid ? dynamic_cast<const ASolidBrushItem*>(item) : nullptr;
        if (!solid) return item && item == m_reference;
        AColorItem* color = solid->getColorItem();
        return color && color->isSameColor(m_solid->getColorItem());
    }

    ABrushItem* m_reference;
    const ASolidBrushItem* m_solid;
    ABrushItem* m_lastItem = nullptr;
    bool m_lastAnswer = false;
    bool m_asked = false;
};

enum class Decision { take, enter, leave };

Decision decide(AObject& object, FillMatcher& matcher) {
    if (isPassedOver(object)) return Decision::leave;
    if (const ABrush* brush = object.getBrush()) {
        // An object without extent is left out with all that it contains: nobody sees it.
        AFRect bounds;
        object.getBoundingRect(bounds);
        if (bounds.IsRectEmpty()) return Decision::leave;
        if (matcher.matches(brush->getBrushItem())) return Decision::take;
    }
    return Decision::enter;
}

// Depth-first, in list order. Only groups are entered, and none that is taken. The levels stand in a list of
// their own, so that nothing limits how deep a drawing is nested.
void collectByColor(const AObList& top, FillMatcher& matcher, AObList& found) {
    struct Level {
        ARoot* const* next;
        ARoot* const* end;
    };
    std::vector<Level> levels{{top.begin(), top.end()}};
    while (!levels.empty()) {
        Level& level = levels.back();
        if (level.next == level.end) {
            levels.pop_back();
            continue;
        }
        auto* object = static_cast<AObject*>(*level.next++);
        const Decision decision = decide(*object, matcher);
        if (decision == Decision::take) found.AddTail(object);
        if (decision != Decision::enter) continue;
        if (const AGroup* group = asGroup(*object))
            levels.push_back({group->children.begin(), group->children.end()});
    }
}

AObject* firstSelected(const ADocView* view) {
    const ASelection* selection = view ? view->m_selection : nullptr;
    return selection && selection->getCount() > 0 ? selection->getAt(0) : nullptr;
}

}  // namespace

int ASelectColorTool::isValid() {
    const int valid = ATool::isValid();
    if (valid == 0) return valid;
    AObject* first = firstSelected(ADocView::GetActiveView());
    return first && referenceItem(*first) ? 1 : 0;
}

int ASelectColorTool::onToolStart() {
    ADocView* view = ADocView::GetActiveView();
    if (view) {
        AObject* first = firstSelected(view);
        FillMatcher matcher(first ? referenceItem(*first) : nullptr);
        AObList layers(0, 10);
        AObList top(0, 10);
        AObList found(0, 10);
        appendLayers(*view, layers);
        appendEditableObjects(layers, top);
        collectByColor(top, matcher, found);
        view->m_selection->resetSelection(0);
        view->m_selection->addSelection(&found, 0, 1);
    }
    notifyEnd(nullptr);
    return 1;
}
