#include "plain_rules.h"

#include <algorithm>

#include "conditions/class_tables.h"
#include "conditions/container_conditions.h"
#include "conditions/fill_condition.h"
#include "conditions/stroke_condition.h"
#include "kzcore/document/application.h"
#include "kzcore/document/document.h"
#include "res/resource.h"

namespace plain {

namespace {

bool hasStructure(const ARoot& object) {
    AString structure;
    return object.getClassDisplayStructure(structure) != 0;
}

// Breadth-first, entering open parents; appended children are walked, too.
template <class Visit>
void walk(std::vector<AObject*> work, Visit visit) {
    for (std::size_t i = 0; i < work.size(); ++i) {
        AObject* object = work[i];
        if (!visit(*object)) continue;
        auto* parent = dynamic_cast<AParent*>(object);
        if (!parent || parent->hasOption(0x200)) continue;
        for (ARoot* child : parent->children) work.push_back(static_cast<AObject*>(child));
    }
}

template <class T>
bool holds(const std::vector<T>& list, const T& wanted) {
    return std::find(list.begin(), list.end(), wanted) != list.end();
}

AString structureOf(const WCHAR* className) {
    AString structure;
    AApplication::GetApplication()->getConfig().getClassDisplayStructure(className, structure, 1);
    return structure;
}

AString firstSegment(const AString& structure) {
    AString segment;
    AItemPath(structure).getSegment(0, segment);
    return segment;
}

AItemPath behindFirst(const AString& structure) {
    AItemPath path(structure);
    path.removeFirstSegment();
    return path;
}

AString text(UINT id) {
    AString loaded;
    loaded.LoadStringW(id);
    return loaded;
}

Page* pageOf(Pages& pages, const AString& category) {
    for (auto& page : pages) {
        if (page->category == category) return page.get();
    }
    return nullptr;
}

constexpr const WCHAR* kNone = nullptr;

template <class Kind>
std::unique_ptr<ACondition> become(const ACondition& entry) {
    std::unique_ptr<Kind> made;
    if constexpr (std::is_same_v<Kind, AFillCondition>)
        made = std::make_unique<Kind>(AString(), nullptr);
    else if constexpr (std::is_same_v<Kind, AStrokeCondition>)
        made = std::make_unique<Kind>(AString(), kNone, nullptr);
    else
        made = std::make_unique<Kind>(AString(), kNone);
    made->assignBase(entry);
    return made;
}

template <class Kind>
void replaceUnlessOfKind(std::unique_ptr<ACondition>& entry) {
    if (!dynamic_cast<Kind*>(entry.get())) entry = become<Kind>(*entry);
}

Page* offer(Pages& pages, ARoot* item, bool selected) {
    for (auto& page : pages) {
        if (page->take(item, selected)) return page.get();
    }
    return nullptr;
}

template <class Kind>
void markNone(Pages& pages, bool selected) {
    for (auto& page : pages) {
        for (auto& entry : page->conditions) {
            if (!dynamic_cast<Kind*>(entry.get()) || !entry->getClassNames().IsEmpty()) continue;
            entry->inDocument = 1;
            entry->inSelection = selected || entry->inSelection;
            return;
        }
    }
}

void addFill(Page& page, ABrushItem& brush, bool selected) {
    auto entry = std::make_unique<AFillCondition>(AString(), nullptr);
    AItemPath path = behindFirst(structureOf(brush.getClassName()));
    if (auto* solid = dynamic_cast<ASolidBrushItem*>(&brush)) {
        path.appendSegment(structureOf(solid->getColorItem()->getClassName()));
        path.appendSegment(solid->getColorItem()->getName());
    } else if (brush.getName().IsEmpty()) {
        AString name(_T("brush"));
        name.AppendNumber(static_cast<long long>(entry->getSerial()));
        path.appendSegment(name);
    } else {
        path.appendSegment(brush.getName());
    }
    entry->reset(path, &brush);
    entry->inDocument = 1;
    entry->inSelection = selected;
    page.add(std::move(entry));
}

void addStroke(Page& page, APenItem& pen, bool selected) {
    AItemPath path = behindFirst(structureOf(pen.getClassName()));
    path.appendSegment(structureOf(pen.getColorItem()->getClassName()));
    path.appendSegment(pen.getColorItem()->getName());
    auto entry = std::make_unique<AStrokeCondition>(path, pen.getClassName(), pen.getColorItem());
    entry->inDocument = 1;
    entry->inSelection = selected;
    page.add(std::move(entry));
}

template <class Kind>
void restrict(const std::vector<ACondition*>& conditions, std::vector<AObject*>& candidates) {
    std::vector<ACondition*> ofKind;
    for (ACondition* condition : conditions) {
        if (dynamic_cast<Kind*>(condition)) ofKind.push_back(condition);
    }
    if (ofKind.empty()) return;
    std::erase_if(candidates, [&](AObject* object) {
        return std::none_of(ofKind.begin(), ofKind.end(),
                            [&](ACondition* condition) { return condition->isMatch(object); });
    });
}

}  // namespace

Gathered gather(const ADocView& view) {
    Gathered gathered;
    for (ADatabase* database : {view.m_database, view.getDocument()->getSecondaryDatabase()}) {
        for (ARoot* layer : database->children) gathered.pool.push_back(static_cast<ALayer*>(layer));
    }
    std::vector<AObject*> work;
    for (ALayer* layer : gathered.pool) {
        if (!layer->IsLayerEditable()) continue;
        for (ARoot* child : layer->children) work.push_back(static_cast<AObject*>(child));
    }
    walk(work, [&](AObject& object) {
        if (object.isUnselectable() || object.getObjectFlags(kObjectHidden)) return false;
        if (hasStructure(object)) gathered.candidates.push_back(&object);
        return true;
    });
    walk(view.m_selection->getObjects(), [&](AObject& object) {
        if (hasStructure(object) && !holds(gathered.selected, &object)) gathered.selected.push_back(&object);
        return true;
    });
    for (AObject* object : gathered.selected) {
        AObject* at = object;
        while (at && !dynamic_cast<ALayer*>(at)) at = at->getParent();
        if (!at) continue;
        // The search ends one behind the entry that it finds, and takes the end for a miss.
        std::vector<ALayer*>& layers = gathered.selectedLayers;
        std::size_t next = 0;
        while (next < layers.size() && layers[next++] != at) {
        }
        if (next == layers.size()) layers.push_back(static_cast<ALayer*>(at));
    }
    return gathered;
}

void Page::add(std::unique_ptr<ACondition> added) {
    const AString base = added->path;
    int counter = 0;
    for (std::size_t i = 0; i < conditions.size();) {
        if (conditions[i]->path != added->path) {
            ++i;
            continue;
        }
        if (added->hasCommonClass(*conditions[i])) {
            conditions[i]->merge(*added);
            return;
        }
        AString numbered = base;
        numbered += _T("_");
        numbered.AppendNumber(++counter);
        added->path = AItemPath(numbered);
        i = 0;
    }
    conditions.push_back(std::move(added));
}

bool Page::take(ARoot* item, bool selected) {
    bool accepted = false;
    for (auto& entry : conditions) {
        if (!item || !entry->hasClass(item->getClassName())) continue;
        if (dynamic_cast<AFillCondition*>(entry.get()) && !entry->isMatch(item)) continue;
        const int inDocument = entry->inDocument;
        const int inSelection = entry->inSelection;
        entry->inDocument = 1;
        entry->inSelection = selected || inSelection != 0;
        accepted = true;
        auto* object = dynamic_cast<AObject*>(item);
        const auto* effect = dynamic_cast<AEffect*>(item);
        if (dynamic_cast<ALayer*>(item)) {
            replaceUnlessOfKind<ALayerCondition>(entry);
        } else if (object && (!effect || effect->hasOption(512))) {
            if (auto* old = dynamic_cast<AObjectCondition*>(entry.get())) {
                old->inDocument = inDocument != 0 || old->isMatch(object);
                old->inSelection = inSelection != 0 || (selected && old->isMatch(object));
            } else {
                entry = become<AObjectCondition>(*entry);
            }
        } else if (effect) {
            replaceUnlessOfKind<AEffectCondition>(entry);
        } else if (dynamic_cast<ABrushItem*>(item)) {
            replaceUnlessOfKind<AFillCondition>(entry);
        } else if (dynamic_cast<APenItem*>(item)) {
            replaceUnlessOfKind<AStrokeCondition>(entry);
        }
    }
    return accepted;
}

Pages createPages() {
    Pages pages;
    AConfig& config = AApplication::GetApplication()->getConfig();
    for (int i = 0; i < config.getDBClassTableSize(); ++i) {
        const WCHAR* className = config.getDBClassNameByIndex(i);
        const AString structure = structureOf(className);
        if (config.getClassNameID(className, 1) == 0 || structure.Find(WCHAR('/')) < 0) continue;
        if (!pageOf(pages, firstSegment(structure))) {
            pages.push_back(std::make_unique<Page>());
            pages.back()->category = firstSegment(structure);
        }
        pageOf(pages, firstSegment(structure))
            ->add(std::make_unique<ACondition>(behindFirst(structure), className));
    }
    for (const BitmapKind& kind : kBitmapKinds) {
        auto entry = std::make_unique<AObjectCondition>(AString(), kNone);
        entry->reset(kind.className, kind.nameId, kind.classifier);
        pageOf(pages, firstSegment(structureOf(kind.className)))->add(std::move(entry));
    }
    for (auto& page : pages) {
        if (page->category == firstSegment(structureOf(_T("ASolidBrushItem")))) {
            page->add(std::make_unique<AFillCondition>(text(IDS_NO_FILL), nullptr));
            for (int i = 0; i < config.getColorItemClassTableSize(); ++i) {
                const WCHAR* color = config.getColorItemClassNameByIndex(i);
                AItemPath path = behindFirst(structureOf(_T("ASolidBrushItem")));
                path.appendSegment(structureOf(color));
                auto entry = std::make_unique<AFillCondition>(AString(), nullptr);
                static_cast<ACondition&>(*entry).reset(path, color);
                page->add(std::move(entry));
            }
        } else if (page->category == firstSegment(structureOf(_T("APenItem")))) {
            page->add(std::make_unique<AStrokeCondition>(text(IDS_NO_STROKE), kNone, nullptr));
        }
    }
    return pages;
}

void fillPages(Pages& pages, const Gathered& gathered) {
    for (ALayer* layer : gathered.pool) offer(pages, layer, holds(gathered.selectedLayers, layer));
    for (AObject* object : gathered.candidates) {
        const bool selected = holds(gathered.selected, object);
        offer(pages, object, selected);
        if (const ABrush* brush = object->getBrush()) {
            if (Page* page = offer(pages, brush->getBrushItem(), selected))
                addFill(*page, *brush->getBrushItem(), selected);
        } else {
            markNone<AFillCondition>(pages, selected);
        }
        const APen* pen = object->getPen();
        Page* page = pen ? offer(pages, pen->getPenItem(), selected) : nullptr;
        if (page && pen->getPenItem() && pen->getPenItem()->getColorItem())
            addStroke(*page, *pen->getPenItem(), selected);
        else
            markNone<AStrokeCondition>(pages, selected);
    }
}

std::vector<AObject*> match(const std::vector<ACondition*>& conditions, std::vector<AObject*> candidates) {
    restrict<ALayerCondition>(conditions, candidates);
    restrict<AObjectCondition>(conditions, candidates);
    restrict<AFillCondition>(conditions, candidates);
    restrict<AStrokeCondition>(conditions, candidates);
    restrict<AEffectCondition>(conditions, candidates);
    std::vector<AObject*> outermost;
    for (AObject* one : candidates) {
        if (std::none_of(candidates.begin(), candidates.end(),
                         [one](AObject* other) { return one->isParent(other); }))
            outermost.push_back(one);
    }
    return outermost;
}

}  // namespace plain
