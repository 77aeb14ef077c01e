#include "conditions/condition.h"

#include <algorithm>
#include <utility>

#include "checktree/check_tree.h"
#include "kzcore/document/application.h"

namespace {

std::uint64_t lastSerial = 0;

bool contains(const AStringArray& names, const AString& name) {
    return std::find(names.begin(), names.end(), name) != names.end();
}

}  // namespace

ACondition::ACondition(const AString& itemPath, const WCHAR* className) : m_serial(++lastSerial) {
    reset(itemPath, className);
}

ACondition::ACondition(const ACondition& source)
    : ARoot(source),
      inDocument(source.inDocument),
      inSelection(source.inSelection),
      m_serial(source.m_serial),
      path(source.path),
      m_classNames(source.m_classNames) {}

void ACondition::consumeSerials(std::uint64_t count) {
    lastSerial += count;
}

ACondition* ACondition::clone() const {
    return new ACondition(*this);
}

BOOL ACondition::isMatch(ARoot*) const {
    return FALSE;
}

HTREEITEM ACondition::addToTree(ACheckTree& tree) const {
    HTREEITEM item = tree.insertItem(path, static_cast<DWORD>(m_serial));
    if (!item) return nullptr;
    tree.Expand(item, treeFlags & kTreeItemExpanded ? TVE_EXPAND : TVE_COLLAPSE);
    setClassIcon(tree, item);
    return item;
}

// What is missing is appended: as the list has no duplicates before, it has the order of first occurrence.
BOOL ACondition::merge(const ACondition& other) {
    for (const AString& name : other.m_classNames) {
        if (!contains(m_classNames, name)) m_classNames.Add(name);
    }
    inDocument = inDocument || other.inDocument;
    inSelection = inSelection || other.inSelection;
    return inDocument;
}

BOOL ACondition::hasCommonClass(const ACondition& other) const {
    return std::any_of(other.m_classNames.begin(), other.m_classNames.end(),
                       [this](const AString& name) { return contains(m_classNames, name); });
}

BOOL ACondition::hasClass(const WCHAR* name) const {
    return name && std::any_of(m_classNames.begin(), m_classNames.end(),
                               [name](const AString& held) { return held.Compare(name) == 0; });
}

BOOL ACondition::hasClass(const AString& name) const {
    return contains(m_classNames, name);
}

// Both arguments may be parts of this very condition, so the new values are made first; they also make the
// change all or nothing when memory runs out.
void ACondition::reset(const AString& itemPath, const WCHAR* className) {
    AItemPath newPath(itemPath);
    AStringArray newNames;
    if (className) newNames.Add(className);
    path = std::move(newPath);
    m_classNames = std::move(newNames);
    inDocument = 0;
}

void ACondition::assignBase(const ACondition& source) {
    AItemPath newPath(source.path);
    AStringArray newNames(source.m_classNames);
    inDocument = source.inDocument;
    inSelection = source.inSelection;
    m_serial = source.m_serial;
    path = std::move(newPath);
    m_classNames = std::move(newNames);
}

void ACondition::setClassIcon(ACheckTree& tree, HTREEITEM item) const {
    AApplication* application = AApplication::GetApplication();
    if (!application) return;
    for (const AString& name : m_classNames) {
        if (tree.setItemBitmap(item, application->getConfig().getClassIconID(name, 1))) return;
    }
}
