// The pages of the Select by Attributes sheet, and the entries that they have whatever the document holds.
#include <memory>

#include "conditions/class_tables.h"
#include "conditions/fill_condition.h"
#include "conditions/stroke_condition.h"
#include "kzcore/document/application.h"
#include "kzcore/document/refer_item.h"
#include "select/select_by_attr_sheet.h"
#include "select/select_by_attr_tool.h"
#include "select/select_page.h"

namespace {

AConfig* config() {
    AApplication* application = AApplication::GetApplication();
    return application ? &application->getConfig() : nullptr;
}

// Empty for a class without one.
AItemPath structureOf(const WCHAR* className) {
    AString structure;
    if (AConfig* classes = config()) classes->getClassDisplayStructure(className, structure, 1);
    return AItemPath(structure);
}

// False for a structure without a category, which has no place in the sheet.
bool splitCategory(AItemPath& structure, AString& category) {
    if (structure.Find(AItemPath::kSeparator) < 0) return false;
    structure.getSegment(0, category);
    structure.removeFirstSegment();
    return true;
}

AString categoryOf(const WCHAR* className) {
    AString category;
    structureOf(className).getSegment(0, category);
    return category;
}

AString textOf(UINT id) {
    AString text;
    text.LoadStringW(id);
    return text;
}

void addClassEntry(ASelectByAttrSheet& sheet, const AString& className) {
    AItemPath path = structureOf(className);
    AString category;
    if (!splitCategory(path, category)) return;
    ASelectPage* page = sheet.findPage(category);
    if (!page) page = &sheet.createPage(category);
    page->addCondition(new ACondition(path, className));
}

void addBitmapKind(ASelectByAttrSheet& sheet, const BitmapKind& kind) {
    AItemPath path = structureOf(kind.className);
    AString category;
    if (!splitCategory(path, category)) return;
    ASelectPage* page = sheet.findPage(category);
    if (!page) return;
    auto entry = std::make_unique<AObjectCondition>(AString(), nullptr);
    entry->reset(kind.className, kind.nameId, kind.classifier);
    page->addCondition(entry.release());
}

// One entry for all solid fills of each colour model.
void addColorEntries(ASelectPage& page) {
    AConfig* classes = config();
    for (int i = 0; classes && i < classes->getColorItemClassTableSize(); ++i) {
        const WCHAR* colorClass = classes->getColorItemClassNameByIndex(i);
        const AItemPath structure = structureOf(colorClass);
        if (structure.IsEmpty()) continue;
        AItemPath path = structureOf(ASolidBrushItem::stgetClassName());
        path.removeFirstSegment();
        path.appendSegment(structure);
        auto entry = std::make_unique<AFillCondition>(AString(), nullptr);
        entry->ACondition::reset(path, colorClass);
        page.addCondition(entry.release());
    }
}

void addPaintEntries(ASelectPage& page, const AString& fillCategory, const AString& strokeCategory) {
    if (page.getTitle() == fillCategory) {
        page.addCondition(new AFillCondition(textOf(IDS_NO_FILL), nullptr));
        addColorEntries(page);
    } else if (page.getTitle() == strokeCategory) {
        page.addCondition(new AStrokeCondition(textOf(IDS_NO_STROKE), nullptr, nullptr));
    }
}

}  // namespace

void ASelectByAttrTool::getSelectableClassNames(AStringArray& out) {
    out.RemoveAll();
    AConfig* classes = config();
    for (int i = 0; classes && i < classes->getDBClassTableSize(); ++i) {
        const WCHAR* name = classes->getDBClassNameByIndex(i);
        if (classes->getClassNameID(name, 1) != 0) out.Add(name);
    }
}

void ASelectByAttrTool::createPages(ASelectByAttrSheet& sheet) {
    AStringArray names;
    getSelectableClassNames(names);
    for (const AString& name : names) addClassEntry(sheet, name);
    for (const BitmapKind& kind : kBitmapKinds) addBitmapKind(sheet, kind);
    const AString fillCategory = categoryOf(ASolidBrushItem::stgetClassName());
    const AString strokeCategory = categoryOf(APenItem::stgetClassName());
    for (int i = 0; i < sheet.getSelectPageCount(); ++i)
        addPaintEntries(sheet.getSelectPage(i), fillCategory, strokeCategory);
}
