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

// Null: nobody took it.
PageFiller::Page* PageFiller::offer(ARoot* item, ItemKind kind, bool selected) {
    if (!item) return nullptr;
    std::size_t& first = m_first[&item->getClassName()];
    if (first == 0) {
        while (first < m_pages.size() && !m_pages[first]->entries.hasClassOf(*item)) ++first;
        ++first;
    }
    for (std::size_t i = first - 1; i < m_pages.size(); ++i) {
        PageEntries& entries = m_pages[i]->entries;
        if (entries.isSettled(item, kind, selected) || entries.take(item, kind, selected))
            return m_pages[i].get();
    }
    return nullptr;
}

void PageFiller::offerLayer(ALayer& layer, bool selected) {
    offer(&layer, ItemKind::layer, selected);
}

void PageFiller::offerObject(AObject& object, bool selected) {
    offer(&object, kindOf(object), selected);
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
    if (Page* page = offer(item, ItemKind::fill, selected)) addFill(*page, *item, selected);
}

void PageFiller::offerStroke(const AObject& object, bool selected) {
    const APen* pen = object.getPen();
    APenItem* item = pen ? pen->getPenItem() : nullptr;
    Page* page = offer(item, ItemKind::stroke, selected);
    if (page && item->getColorItem())
        addStroke(*page, *item, selected);
    else
        markNoPaint<AStrokeCondition>(m_noStroke, selected);
}

// The entry of a colour that was added before takes in another one of the same colour by its flags alone:
// paths, classes and what it is about are the same, so that it would find its way to the same entry. The way
// does not change: entries before it lack a common class for good.
bool PageFiller::markColor(const Color* color, const Page& page, bool selected) {
    if (!color || color->page != page.page) return false;
    ACondition::consumeSerials();
    color->entry->inDocument = 1;
    if (selected) color->entry->inSelection = 1;
    return true;
}

ACondition* PageFiller::add(Page& page, ACondition* entry, bool selected) {
    entry->inDocument = 1;
    entry->inSelection = selected;
    const std::size_t classes = page.entries.getClassCount();
    ACondition* filed = page.page->fileCondition(entry);
    if (page.entries.getClassCount() != classes) m_first.clear();
    return filed;
}

const AString& PageFiller::structureOf(const AString& className) {
    std::unique_ptr<AString>& known = m_structures[&className];
    if (!known) {
        known = std::make_unique<AString>();
        if (AApplication* application = AApplication::GetApplication())
            application->getConfig().getClassDisplayStructure(className, *known, 1);
    }
    return *known;
}

void PageFiller::addFill(Page& page, ABrushItem& brush, bool selected) {
    if (markColor(m_fills.find(&brush), page, selected)) return;
    auto entry = std::make_unique<AFillCondition>(AString(), nullptr);
    AItemPath path = withoutCategory(structureOf(brush.getClassName()));
    const AColorItem* color = colorOf(&brush);
    if (color) {
        path.appendSegment(structureOf(color->getClassName()));
        path.appendSegment(color->getName());
    } else {
        path.appendSegment(conditions::nameForEntry(brush, *entry));
    }
    entry->reset(path, &brush);
    ACondition* filed = add(page, entry.release(), selected);
    if (color) m_fills[&brush] = {page.page, filed};
}

void PageFiller::addStroke(Page& page, APenItem& pen, bool selected) {
    if (markColor(m_strokes.find(&pen), page, selected)) return;
    AColorItem* color = pen.getColorItem();
    AItemPath path = withoutCategory(structureOf(pen.getClassName()));
    path.appendSegment(structureOf(color->getClassName()));
    path.appendSegment(color->getName());
    auto entry = std::make_unique<AStrokeCondition>(path, pen.getClassName(), color);
    m_strokes[&pen] = {page.page, add(page, entry.release(), selected)};
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
