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
        m_pages.push_back(std::make_unique<Page>(Page{page, PageEntries(*page, &m_unsettled)}));
}

// Null: nobody took it. What a page gets while it is filled has the class of what it took, so that the first
// page with entries for a class stays the first.
PageFiller::Page* PageFiller::offer(ARoot* item, ItemKind kind, bool selected) {
    consumeSerials();
    std::size_t& first = m_first[&item->getClassName()];
    if (first == 0) {
        while (first < m_pages.size() && !m_pages[first]->entries.hasClassOf(*item)) ++first;
        ++first;
    }
    for (std::size_t i = first - 1; i < m_pages.size(); ++i) {
        if (m_pages[i]->entries.take(item, kind, selected)) return m_pages[i].get();
    }
    return nullptr;
}

void PageFiller::offerLayer(ALayer& layer, bool selected) {
    offer(&layer, ItemKind::layer, selected);
}

// An effect may be of its class's kind or of another, so nothing is known of its class.
void PageFiller::offerClass(AObject& object, bool selected) {
    const AClassInfo& info = object.getClassInfo();
    const ItemKind kind = kindOf(object);
    Page* page = offer(&object, kind, selected);
    if (page && kind == ItemKind::object && info.kind != AClassKind::effect &&
        page->entries.isSettled(&object, kind, selected))
        settle(m_classes[&info], kind, selected);
}

void PageFiller::offerFill(const ABrush* brush, bool selected) {
    Known& known = m_fills[keyOf(brush)];
    ABrushItem* item = brush ? brush->getBrushItem() : nullptr;
    if (!brush) markNoPaint<AFillCondition>(m_noFill, selected);
    if (!item) return settle(known, ItemKind::fill, selected);
    Page* page = offer(item, ItemKind::fill, selected);
    if (!page) return;
    addFill(*page, *item, selected, known);
    if (known.hasColor && page->entries.isSettled(item, ItemKind::fill, selected))
        settle(known, ItemKind::fill, selected);
}

void PageFiller::offerStroke(const APen* pen, bool selected) {
    Known& known = m_strokes[keyOf(pen)];
    APenItem* item = pen ? pen->getPenItem() : nullptr;
    Page* page = item ? offer(item, ItemKind::stroke, selected) : nullptr;
    if (page && item->getColorItem())
        addStroke(*page, *item, selected, known);
    else
        markNoPaint<AStrokeCondition>(m_noStroke, selected);
    if (!item || (page && page->entries.isSettled(item, ItemKind::stroke, selected)))
        settle(known, ItemKind::stroke, selected);
}

void PageFiller::add(Page& page, ACondition* entry, bool selected) {
    entry->inDocument = 1;
    entry->inSelection = selected;
    page.page->fileCondition(entry);
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
    kzutil::WideString path;
    path.reserve(group->view().size() + 1 + color.getName().view().size());
    path.append(group->view()).append(1, AItemPath::kSeparator).append(color.getName().view());
    return AItemPath(AString(std::move(path)));
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
