#include "kzcore/tool/plugin_loader.h"

#include <algorithm>
#include <cstring>
#include <new>

#include "kzcore/tool/module_code.h"
#include "kzcore/tool/module_file.h"
#include "kzcore/tool/tool.h"
#include "kzutil/archive.h"

namespace {

constexpr std::size_t kRecordSize = 48;
constexpr std::size_t kMaxRecords = 1024;
constexpr std::size_t kMaxNameLength = 255;

template <class Field>
Field fieldAt(const BYTE* record, std::size_t offset) {
    Field field;
    std::memcpy(&field, record + offset, sizeof field);
    return field;
}

bool isAllZero(const BYTE* bytes, std::size_t size) {
    return std::all_of(bytes, bytes + size, [](BYTE byte) { return byte == 0; });
}

// The name's characters as the class table wants them: letters, digits and '_', the first one no digit.
bool isClassName(kzutil::WideView name) {
    const auto isLetter = [](WCHAR c) {
        return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '_';
    };
    const auto isDigit = [](WCHAR c) { return c >= '0' && c <= '9'; };
    return !name.empty() && !isDigit(name.front()) &&
           std::ranges::all_of(name, [&](WCHAR c) { return isLetter(c) || isDigit(c); });
}

// Reads a NUL-terminated name character by character, so that nothing behind its end is touched.
bool readName(const WCHAR* at, const std::function<bool(const void*, std::size_t)>& isReadable,
              AString& name) {
    kzutil::WideString text;
    for (; text.size() <= kMaxNameLength; ++at) {
        if (!isReadable(at, sizeof *at)) return false;
        WCHAR character;
        std::memcpy(&character, at, sizeof character);
        if (character == 0) {
            name = AString(kzutil::WideView(text));
            return true;
        }
        text += character;
    }
    return false;
}

}  // namespace

std::vector<APlugInTool> readExportTable(const void* table, const AModuleMemory& memory, std::string& error) {
    error.clear();
    std::vector<APlugInTool> tools;
    const auto malformed = [&](std::size_t index, const char* reason) {
        error = "record " + std::to_string(index) + " of the export table: " + reason;
        return std::vector<APlugInTool>();
    };
    const BYTE* record = static_cast<const BYTE*>(table);
    for (std::size_t index = 0; index < kMaxRecords; ++index, record += kRecordSize) {
        if (!record || !memory.isReadable(record, kRecordSize)) return malformed(index, "cannot be read");
        const auto kind = fieldAt<std::uint32_t>(record, offsetof(APlugInExport, kind));
        if (index == 0) {
            if (kind != kPlugInHeader || !isAllZero(record + 4, kRecordSize - 4))
                return malformed(0, "is no header");
            continue;
        }
        if (kind == kPlugInEnd) {
            if (!isAllZero(record, kRecordSize))
                return malformed(index, "ends the table, but is not all zero");
            return tools;
        }
        if (kind != kPlugInTool) return malformed(index, "has an unknown kind");
        if (fieldAt<const void*>(record, offsetof(APlugInExport, reserved)))
            return malformed(index, "uses the reserved field");
        APlugInTool tool{AString(), fieldAt<std::uint32_t>(record, offsetof(APlugInExport, flags)),
                         fieldAt<ATool* (*)()>(record, offsetof(APlugInExport, factory))};
        const auto* name = fieldAt<const WCHAR*>(record, offsetof(APlugInExport, className));
        if (!name || !readName(name, memory.isReadable, tool.className))
            return malformed(index, "has no readable class name");
        if (!isClassName(tool.className.view())) return malformed(index, "has a malformed class name");
        for (const std::size_t offset :
             {offsetof(APlugInExport, factory), offsetof(APlugInExport, firstCallback),
              offsetof(APlugInExport, secondCallback)}) {
            const auto* function = fieldAt<const void*>(record, offset);
            if (!function || !memory.isReadable(function, 1))
                return malformed(index, "has a function outside its module");
            if (!memory.isCode(function)) return malformed(index, "has data in place of a function");
        }
        const bool known = std::ranges::any_of(
            tools, [&](const APlugInTool& other) { return other.className == tool.className; });
        if (known) return malformed(index, "repeats a class name");
        tools.push_back(std::move(tool));
    }
    return malformed(kMaxRecords, "the table has no end");
}

std::unique_ptr<APlugIn> APlugIn::load(const AFilePath& path, std::string& error) {
    const std::string file = path.getPath().toUtf8();
    const auto refused = [&](const std::string& reason) {
        error = file + ": " + reason;
        return nullptr;
    };
    error = moduleFileProblem(std::filesystem::path(path.getPath().view()));
    if (!error.empty()) return refused(error);
    std::unique_ptr<APlugIn> plugIn(new APlugIn);
    plugIn->m_module = LoadLibraryW(path);
    if (!plugIn->m_module && GetLastError() == ERROR_NOT_ENOUGH_MEMORY) throw std::bad_alloc();
    if (!plugIn->m_module)
        return refused("cannot load the plug-in (error " + std::to_string(GetLastError()) + ")");
    // Through void* the compiler lets one function pointer become another.
    void* const getList = reinterpret_cast<void*>(GetProcAddress(plugIn->m_module, "APlugInExportGetList"));
    if (!getList) return refused("not a plug-in: it exports no APlugInExportGetList");
    if (!isModuleCode(getList)) return refused("not a plug-in: its APlugInExportGetList is no function");
    // Whatever the table points at must lie in the module itself.
    const auto isInModule = [module = plugIn->m_module](const void* address, std::size_t size) {
        constexpr DWORD flags =
            GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT;
        for (const BYTE* end :
             {static_cast<const BYTE*>(address), static_cast<const BYTE*>(address) + size - 1}) {
            HMODULE holder = nullptr;
            if (!GetModuleHandleExW(flags, reinterpret_cast<LPCWSTR>(end), &holder) || holder != module)
                return false;
        }
        return true;
    };
    std::vector<APlugInTool> tools = readExportTable(
        reinterpret_cast<APlugInExportGetListFunction>(getList)(), {isInModule, isModuleCode}, error);
    if (!error.empty()) return refused(error);
    for (const APlugInTool& tool : tools) {
        if (isArchiveClass(tool.className))
            return refused("its class " + tool.className.toUtf8() + " is another's already");
    }
    plugIn->m_tools = std::move(tools);
    for (const APlugInTool& tool : plugIn->m_tools) registerArchiveClass(tool.className, tool.factory);
    return plugIn;
}

APlugIn::~APlugIn() {
    for (const APlugInTool& tool : m_tools) registerArchiveClass(tool.className, nullptr);
    if (m_module) FreeLibrary(m_module);
}

const APlugInTool* APlugIn::findTool(const AString& className) const {
    const auto found = std::ranges::find(m_tools, className, &APlugInTool::className);
    return found == m_tools.end() ? nullptr : &*found;
}
