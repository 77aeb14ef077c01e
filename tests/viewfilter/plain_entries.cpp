#include <algorithm>

#include "conditions/class_tables.h"
#include "dialog.h"

namespace test {

namespace {

std::unique_ptr<AReferCondition> empty() {
    return std::make_unique<AReferCondition>(AString(), static_cast<const WCHAR*>(nullptr));
}

bool isClassEntry(const ACondition& condition) {
    const auto* refers = dynamic_cast<const AReferCondition*>(&condition);
    return refers && !refers->getReferItem();
}

AItemPath structureOf(const AString& className) {
    AString structure;
    AApplication::GetApplication()->getConfig().getClassDisplayStructure(className, structure, 1);
    return structure;
}

DWORD serialOf(const ACondition& condition) {
    return static_cast<DWORD>(condition.getSerial());
}

}  // namespace

void PlainEntries::addColorClasses() {
    const AConfig& config = AApplication::GetApplication()->getConfig();
    for (int i = 0; i < config.getColorItemClassTableSize(); ++i) {
        const AString name = config.getColorItemClassNameByIndex(i);
        if (structureOf(name).IsEmpty()) continue;
        auto condition = empty();
        condition->reset(structureOf(name), name);
        add(std::move(condition));
    }
    AString category;
    structureOf(ASolidBrushItem::stgetClassName()).getSegment(0, category);
    for (int i = 0; i < config.getDBClassTableSize(); ++i) {
        const AString name = config.getDBClassNameByIndex(i);
        if (config.getClassNameID(name, 1) == 0) continue;
        if (name.CompareNoCase(ASolidBrushItem::stgetClassName()) == 0) continue;
        AItemPath path = structureOf(name);
        AString first;
        path.getSegment(0, first);
        if (first.CompareNoCase(category) != 0) continue;
        path.removeFirstSegment();
        auto condition = empty();
        condition->reset(path, name);
        add(std::move(condition));
    }
}

void PlainEntries::addDocumentColors(ADatabase& database) {
    AObList objects(0, 10);
    database.getAllObjects(objects, 0);
    for (ARoot* object : objects) {
        AObList items(0, 10);
        dynamic_cast<AObject&>(*object).getAllReferItems(items, 8195);
        for (ARoot* item : items) addReferItem(dynamic_cast<AReferItem*>(item));
    }
    sort();
}

void PlainEntries::addReferItem(AReferItem* item) {
    bool matched = false;
    for (const Condition& condition : held) {
        if (!condition->hasClass(item->getClassName())) continue;
        condition->inDocument = 1;
        matched = true;
    }
    const bool isBrush = dynamic_cast<ABrushItem*>(item) != nullptr;
    if (!matched || (!isBrush && !dynamic_cast<AColorItem*>(item))) return;
    AItemPath path = structureOf(item->getClassName());
    if (isBrush) path.removeFirstSegment();
    auto condition = empty();
    AString name = item->getName();
    if (isBrush && name.IsEmpty()) name = AString::fromUtf8("brush" + std::to_string(condition->getSerial()));
    path.appendSegment(name);
    condition->reset(path, item);
    condition->inDocument = 1;
    if (isBrush) condition->treeFlags |= 2;
    add(std::move(condition));
}

void PlainEntries::add(Condition added) {
    if (isClassEntry(*added)) {
        for (const Condition& condition : held) {
            if (condition->path != added->path) continue;
            condition->merge(*added);
            return;
        }
    } else {
        const AString base = added->path;
        int number = 0;
        for (std::size_t i = 0; i < held.size();) {
            if (held[i]->path != added->path) {
                ++i;
                continue;
            }
            if (added->hasCommonClass(*held[i])) return;
            added->path = AItemPath(AString::fromUtf8(base.toUtf8() + '_' + std::to_string(++number)));
            i = 0;
        }
    }
    held.push_back(std::move(added));
}

void PlainEntries::sort() {
    for (std::size_t k = kObjectClasses.size(); k-- > 0;) {
        for (std::size_t i = 0; i < held.size(); ++i) {
            const AStringArray& names = held[i]->getClassNames();
            if (!names.IsEmpty() && names[0].Compare(kObjectClasses[k]) != 0) continue;
            const auto place = held.begin() + static_cast<std::ptrdiff_t>(i);
            std::rotate(held.begin(), place, place + 1);
        }
    }
}

void PlainEntries::load(const AViewAttrFilter* filter) {
    for (const Condition& condition : held) {
        if (!isClassEntry(*condition) && std::ranges::count(checked, serialOf(*condition)) == 0)
            checked.push_back(serialOf(*condition));
    }
    if (!filter || (filter->isUniform() && !filter->isNegative())) return;
    for (const ARoot* entry :
         filter->isNegative() ? filter->getShowConditions() : filter->getHideConditions()) {
        for (const Condition& condition : held) {
            if (!condition->hasCommonClass(dynamic_cast<const ACondition&>(*entry))) continue;
            std::erase(checked, serialOf(*condition));
            unchecked.push_back(serialOf(*condition));
        }
    }
}

}  // namespace test
