// AConfig: what the application knows of its classes.
#pragma once

#include "kzcore/document/class_info.h"

class AConfig {
public:
    // The class tables, by index. An index outside a table gives null.
    int getDBClassTableSize() const;
    const WCHAR* getDBClassNameByIndex(int index) const;
    int getColorItemClassTableSize() const;
    const WCHAR* getColorItemClassNameByIndex(int index) const;

    // String id of the class's name for users, 0 when it has none. The name is the class's display structure:
    // category first, segments separated by "/". The second argument is the host's and always 1.
    UINT getClassNameID(const WCHAR* className, UINT which) const;
    // Bitmap id of the class's 16x16 picture, 0 when it has none.
    UINT getClassIconID(const WCHAR* className, UINT which) const;
    // The class's display structure; 0, with an empty text, when it has none.
    int getClassDisplayStructure(const WCHAR* className, AString& structure, UINT which) const;

    // Non-zero when settings are to be saved for the next run.
    static int m_BackupSettingsOnOff;
};
