// Loads plug-in modules and reads their export tables.
//
// Nothing in a table is trusted: records are read as bytes at their stated offsets, every pointer must lie in
// the module that handed it over, and the table must end within a bounded number of records.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "kzcore/tool/plugin.h"
#include "kzutil/file_path.h"

struct APlugInTool {
    AString className;
    std::uint32_t flags;
    ATool* (*factory)();
};

// Reads a table. `isReadable(address, size)` tells whether bytes may be read there. On a malformed table the
// result is empty and `error` says what is wrong, and in which record.
std::vector<APlugInTool> readExportTable(const void* table,
                                         const std::function<bool(const void*, std::size_t)>& isReadable,
                                         std::string& error);

// A loaded module. Its tools can be made by name, and from archives, until it is destroyed; whoever made
// tools destroys them before.
class APlugIn {
public:
    // Null, with an error that names the file, when the module cannot be loaded or its table is malformed.
    static std::unique_ptr<APlugIn> load(const AFilePath& path, std::string& error);
    ~APlugIn();
    APlugIn(const APlugIn&) = delete;
    APlugIn& operator=(const APlugIn&) = delete;

    const std::vector<APlugInTool>& getTools() const { return m_tools; }
    const APlugInTool* findTool(const AString& className) const;
    HMODULE getModule() const { return m_module; }

private:
    APlugIn() = default;

    HMODULE m_module = nullptr;
    std::vector<APlugInTool> m_tools;
};
