// Loads plug-in modules and reads their export tables.
//
// Nothing in a table is trusted: records are read as bytes at their stated offsets, every pointer must lie in
// the module that handed it over, functions in its code, and the table must end within a bounded number of records.
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

// What a table may refer to.
struct AModuleMemory {
    std::function<bool(const void* address, std::size_t size)> isReadable;
    std::function<bool(const void* address)> isCode;
};

// Reads a table. On a malformed one the result is empty and `error` says what is wrong, and in which record.
std::vector<APlugInTool> readExportTable(const void* table, const AModuleMemory& memory, std::string& error);

// A loaded module. Its tools can be made by name, and from archives, until it is destroyed; whoever made
// tools destroys them before.
class APlugIn {
public:
    // Null, with an error that names the file, when the module is not whole, cannot be loaded, or has a malformed
    // table or a tool of a class that archives know already. Raises bad_alloc.
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
