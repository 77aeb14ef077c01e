#include "select/page_entries.h"

#include <algorithm>

#include "conditions/fill_condition.h"
#include "conditions/object_condition.h"
#include "kzcore/document/object_paint.h"

// The page's list only grows at its end while it is filled; whatever else happens to it starts anew.
void PageEntries::catchUp() {
    if (m_revision != m_page.getRevision()) {
        m_classes.clear();
        m_seen = 0;
        m_revision = m_page.getRevision();
        unsettleAll();
    }
    for (; m_seen < m_page.getConditions().GetSize(); ++m_seen) file(m_seen);
}

void PageEntries::file(int place) {
    const ACondition& entry = *m_page.getCondition(place);
    const auto* fill = dynamic_cast<const AFillCondition*>(&entry);
    const auto* object = fill ? nullptr : dynamic_cast<const AObjectCondition*>(&entry);
    const bool isSubKind = object && object->classifier;
    const bool isOneFill = fill && fill->brushItem;
    // What is offered of another of its classes may change an entry's kind.
    const bool isOfOneClass = entry.getClassNames().GetSize() == 1;
    for (const AString& name : entry.getClassNames()) {
        ClassEntries* found = findClass(name);
        if (!found) {
            std::unique_ptr<ClassEntries>& slot = m_classes[kzutil::WideString(name.view())];
            slot = std::make_unique<ClassEntries>();
            found = slot.get();
            m_known.clear();  // classes without entries are known as such
        }
        ClassEntries& of = *found;
        of.all.push_back(place);
        of.hasFills = of.hasFills || fill;
        if (isOneFill) {
            addFill(of, *fill, place);
        } else if (isOfOneClass && !isSubKind) {
            addAlike(of, place);
        } else {
            of.always.push_back(place);
            unsettleAll();
        }
    }
}

// An entry has nothing to learn from its own fill that it is marked with already.
void PageEntries::addFill(ClassEntries& of, const AFillCondition& entry, int place) {
    FillEntries& entries = fillEntries(of, *entry.brushItem);
    entries.add(place);
    FillState* fill = of.fills.find(entry.brushItem);
    for (const bool selected : {false, true}) {
        if (!fill || !(selected ? entry.inSelection : entry.inDocument)) continue;
        if (fill->asked.of(selected) + 1 == entries.size()) ++fill->asked.of(selected);
        fill->accepted = true;
    }
    // A second one for the colour is news to fills that found the first.
    if (m_unsettled && entries.size() > 1 && colorOf(entry.brushItem)) m_unsettled->add(ItemKind::fill);
}

// An entry that is marked as used and of the right kind has nothing to learn from items that are not selected.
void PageEntries::addAlike(ClassEntries& of, int place) {
    of.alike.push_back(place);
    const ACondition& entry = *m_page.getCondition(place);
    const bool isMarked = entry.inDocument && of.kind != ItemKind::none && isOfKind(entry, of.kind);
    std::size_t& asked = of.asked.of(false);
    if (isMarked && asked + 1 == of.alike.size()) ++asked;
    if (!m_unsettled) return;
    if (isMarked)
        m_unsettled->addSelected(of.kind);
    else
        m_unsettled->addAll();
}

void PageEntries::unsettleAll() {
    if (m_unsettled) m_unsettled->addAll();
}

// Two fills match when they are one, or when both are solid and their colours share a name.
PageEntries::FillEntries& PageEntries::fillEntries(ClassEntries& of, const ABrushItem& brush) {
    const AColorItem* color = colorOf(&brush);
    return color ? of.colorFills[color->getName().view()] : of.otherFills[&brush];
}

PageEntries::ClassEntries* PageEntries::findClass(const AString& name) const {
    const auto found = m_classes.find(name.view());
    return found == m_classes.end() ? nullptr : found->second.get();
}

PageEntries::ClassEntries* PageEntries::entriesOf(ARoot& item) {
    catchUp();
    const AString& name = item.getClassName();
    if (ClassEntries** known = m_known.find(&name)) return *known;
    return m_known[&name] = findClass(name);
}

// True when entries that answer alike do so for items of this kind, too, and entries for one fill are not asked for
// anything else.
bool PageEntries::isPlain(ClassEntries& of, ItemKind kind) {
    if (of.kind == ItemKind::none) of.kind = kind;
    of.isMixed = of.isMixed || of.kind != kind;
    return !of.isMixed && (!of.hasFills || kind == ItemKind::fill);
}

bool PageEntries::take(ARoot* item, ItemKind kind, bool selected) {
    ClassEntries* of = item ? entriesOf(*item) : nullptr;
    if (!of) return false;
    bool accepted = false;
    if (!isPlain(*of, kind)) {
        for (const int place : of->all) accepted |= visit(place, *item, kind, selected);
        return accepted;
    }
    for (std::size_t i = of->asked.of(selected); i < of->alike.size(); ++i)
        visit(of->alike[i], *item, kind, selected);
    of->asked.done(selected, of->alike.size());
    accepted = !of->alike.empty();
    for (const int place : of->always) accepted |= visit(place, *item, kind, selected);
    if (kind == ItemKind::fill) accepted |= takeFill(*of, *item, selected);
    return accepted;
}

bool PageEntries::takeFill(ClassEntries& of, ARoot& item, bool selected) {
    FillState& fill = of.fills[&item];
    if (!fill.entries) fill.entries = &fillEntries(of, static_cast<ABrushItem&>(item));
    for (std::size_t i = fill.asked.of(selected); i < fill.entries->size(); ++i)
        fill.accepted |= visit((*fill.entries)[i], item, ItemKind::fill, selected);
    fill.asked.done(selected, fill.entries->size());
    return fill.accepted;
}

bool PageEntries::isSettled(ARoot* item, ItemKind kind, bool selected) {
    ClassEntries* of = item ? entriesOf(*item) : nullptr;
    if (!of || of->alike.empty() || !of->always.empty() || !isPlain(*of, kind) ||
        of->asked.of(selected) < of->alike.size())
        return false;
    if (kind != ItemKind::fill) return true;
    FillState* fill = of->fills.find(item);
    return fill && fill->asked.of(selected) == fill->entries->size();
}

// The entry has the item's class.
bool PageEntries::visit(int place, ARoot& item, ItemKind kind, bool selected) {
    ACondition& entry = *m_page.getCondition(place);
    if (dynamic_cast<const AFillCondition*>(&entry) && !entry.isMatch(&item)) return false;
    const bool wasInDocument = entry.inDocument != 0;
    const bool wasInSelection = entry.inSelection != 0;
    entry.inDocument = 1;
    entry.inSelection = selected || wasInSelection;
    if (kind == ItemKind::none) return true;
    if (!isOfKind(entry, kind)) {
        m_page.replaceCondition(place, madeOfKind(kind, entry));
        unsettleAll();
    } else if (kind == ItemKind::object) {
        const bool matches = entry.isMatch(&item) != 0;
        entry.inDocument = wasInDocument || matches;
        entry.inSelection = wasInSelection || (selected && matches);
    }
    return true;
}
