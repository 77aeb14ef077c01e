#include "kzcore/document/config.h"

#include "kzutil/root.h"

int AConfig::m_BackupSettingsOnOff = 1;

namespace {

const WCHAR* nameAt(std::span<const AClassInfo> table, int index) {
    return index >= 0 && index < static_cast<int>(table.size())
               ? static_cast<const WCHAR*>(table[static_cast<std::size_t>(index)].name)
               : nullptr;
}

const AClassInfo* rowOf(const WCHAR* className) {
    return className ? findClass(className) : nullptr;
}

int displayStructure(const WCHAR* className, AString& structure) {
    structure.Empty();
    const AClassInfo* row = rowOf(className);
    return row && row->nameId != 0 ? structure.LoadStringW(row->nameId) : 0;
}

// Objects tell their display structure through the foundation library, which lies below the class tables.
const bool installed = (setClassDisplayStructureLookup(&displayStructure), true);

}  // namespace

int AConfig::getDBClassTableSize() const {
    return static_cast<int>(databaseClasses().size());
}

const WCHAR* AConfig::getDBClassNameByIndex(int index) const {
    return nameAt(databaseClasses(), index);
}

int AConfig::getColorItemClassTableSize() const {
    return static_cast<int>(colorItemClasses().size());
}

const WCHAR* AConfig::getColorItemClassNameByIndex(int index) const {
    return nameAt(colorItemClasses(), index);
}

UINT AConfig::getClassNameID(const WCHAR* className, UINT) const {
    const AClassInfo* row = rowOf(className);
    return row ? row->nameId : 0;
}

UINT AConfig::getClassIconID(const WCHAR* className, UINT) const {
    const AClassInfo* row = rowOf(className);
    return row ? row->iconId : 0;
}

int AConfig::getClassDisplayStructure(const WCHAR* className, AString& structure, UINT) const {
    return displayStructure(className, structure);
}
