// AFilePath: a path that is built from components.
#pragma once

#include "kzutil/astring.h"

class AFilePath {
public:
    // The host's base folder: the one that holds its "Plugins" folder.
    AFilePath();
    explicit AFilePath(const AString& path) : m_path(path) {}

    // Appends one component, with the platform's separator unless the path is empty or ends with one. An
    // empty or null component changes nothing.
    AFilePath& operator+=(const WCHAR* component);

    const AString& getPath() const { return m_path; }
    operator const WCHAR*() const { return m_path; }

    // Where the base folder is: the folder of the running program until a host says otherwise. Empty:
    // back to that.
    static void setBaseFolder(const AString& folder);

private:
    AString m_path;
};
