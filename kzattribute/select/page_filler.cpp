#include "select/page_filler.h"

#include "conditions/brush_names.h"
#include "conditions/fill_condition.h"
#include "conditions/stroke_condition.h"
#include "kzcore/document/application.h"
#include "kzcore/document/object_paint.h"

namespace {

// The display structure without its category, and the colour's below it.
AItemPath withoutCategory(const AString& structure) {
    AItemPath path(structure);
    path.removeFirstSegment();
    return path;
}

}  // namespace

PageFiller::PageFiller(const std::vector<ACheckPageBase*>& pages) {
    for (ACheckPageBase* page : pages)
        m_pages.push_back(std::make_unique<Page>(Page{page, PageEntries(*page)}));
}

bool PageFiller::isSettled(const Known& known, ItemKind kind, bool selected) const {
    return known.isSettled[selected ? 1 : 0] && known.kind == kind &&
           known.entries->size() == known.entryCount;
}

void PageFiller::settle(Known& known, Page& page, const PageEntries::Places& entries, ItemKind kind,
                        bool selected) {
    known.page = &page;
    known.entries = &entries;
    known.entryCount = entries.size();
    known.kind = kind;
    known.isSettled[0] = true;  // what is marked as selected is marked as used, too
    known.isSettled[1] = selected;
}

// Null: nobody took it. What a page gets while it is filled has the class of what it took, so that the first
// page with entries for a class stays the first.
PageFiller::Page* PageFiller::offer(ARoot* item, ItemKind kind, bool selected, Known& known) {
    if (isSettled(known, kind, selected)) return known.page;
    known.isSettled[0] = known.isSettled[1] = false;  // another kind may change what the entries are
    std::size_t& first = m_first[&item->getClassName()];
    if (first == 0) {
        while (first < m_pages.size() && !m_pages[first]->entries.hasClassOf(*item)) ++first;
        ++first;
    }
    for (std::size_t i = first - 1; i < m_pages.size(); ++i) {
        PageEntries& entries = m_pages[i]->entries;
        if (const auto* settled = entries.findSettled(item, kind, selected)) {
            settle(known, *m_pages[i], *settled, kind, selected);
            return m_pages[i].get();
        }
        if (entries.take(item, kind, selected)) return m_pages[i].get();
    }
    return nullptr;
}

void PageFiller::offerLayer(ALayer& layer, bool selected) {
    offer(&layer, ItemKind::layer, selected, m_objects[&layer.getClassName()]);
}

void PageFiller::offerObject(AObject& object, bool selected) {
    offer(&object, kindOf(object), selected, m_objects[&object.getClassName()]);
    offerFill(object, selected);
    offerStroke(object, selected);
}

void PageFiller::offerFill(const AObject& object, bool selected) {
    const ABrush* brush = object.getBrush();
    if (!brush) {
        markNoPaint<AFillCondition>(m_noFill, selected);
        return;
    }
    ABrushItem* item = brush->getBrushItem();
    if (!item) return;
    Known& known = m_fills[item];
    if (Page* page = offer(item, ItemKind::fill, selected, known)) addFill(*page, *item, selected, known);
}

void PageFiller::offerStroke(const AObject& object, bool selected) {
    const APen* pen = object.getPen();
    if (APenItem* item = pen ? pen->getPenItem() : nullptr) {
        Known& known = m_strokes[item];
        Page* page = offer(item, ItemKind::stroke, selected, known);
        if (page && item->getColorItem()) return addStroke(*page, *item, selected, known);
    }
    markNoPaint<AStrokeCondition>(m_noStroke, selected);
}

void PageFiller::add(Page& page, ACondition* entry, bool selected) {
    entry->inDocument = 1;
    entry->inSelection = selected;
    page.page->fileCondition(entry);
    page.entries.catchUp();
}

const AString& PageFiller::structureOf(const AString& className) {
    std::optional<AString>& known = m_structures[&className];
    if (!known) {
        known.emplace();
        if (AApplication* application = AApplication::GetApplication())
            application->getConfig().getClassDisplayStructure(className, *known, 1);
    }
    return *known;
}

// "Solid/RGB Color/red" for a solid fill.
AItemPath PageFiller::pathOf(const AString& className, const AColorItem& color) {
    std::optional<AItemPath>& group = m_groups[&className][&color.getClassName()];
    if (!group) {
        AItemPath made = withoutCategory(structureOf(className));
        made.appendSegment(structureOf(color.getClassName()));
        group = made;
    }
    AItemPath path(*group);
    path.appendSegment(color.getName());
    return path;
}

// Another entry of a colour that has one would find its way to that one, as paths, classes and what they are
// about are the same, and mark what offering the item has marked already: it costs a serial, no more.
void PageFiller::addFill(Page& page, ABrushItem& brush, bool selected, Known& known) {
    if (known.hasColor) return ACondition::consumeSerials();
    if (const AColorItem* color = colorOf(&brush)) {
        add(page, new AFillCondition(pathOf(brush.getClassName(), *color), &brush), selected);
        known.hasColor = true;
        return;
    }
    auto entry = std::make_unique<AFillCondition>(AString(), nullptr);
    AItemPath path = withoutCategory(structureOf(brush.getClassName()));
    path.appendSegment(conditions::nameForEntry(brush, *entry));
    entry->reset(path, &brush);
    add(page, entry.release(), selected);
}

void PageFiller::addStroke(Page& page, APenItem& pen, bool selected, Known& known) {
    if (known.hasColor) return ACondition::consumeSerials();
    AColorItem* color = pen.getColorItem();
    const AItemPath path = pathOf(pen.getClassName(), *color);
    add(page, new AStrokeCondition(path, pen.getClassName(), color), selected);
    known.hasColor = true;
}

// The first entry of the kind without a class. Once it is found it stays the first: the lists only grow, and
// no entry loses its classes.
template <class Kind>
void PageFiller::markNoPaint(NoPaint& none, bool selected) {
    if (!none.isKnown) {
        none.isKnown = true;
        for (std::size_t i = 0; i < m_pages.size() && !none.entry; ++i) {
            for (ARoot* entry : m_pages[i]->page->getConditions()) {
                auto* condition = dynamic_cast<Kind*>(entry);
                if (!condition || !condition->getClassNames().IsEmpty()) continue;
                none.entry = condition;
                break;
            }
        }
    }
    if (!none.entry) return;
    none.entry->inDocument = 1;
    if (selected) none.entry->inSelection = 1;
}
