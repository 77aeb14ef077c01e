#include "app/plug_ins.h"

#include <algorithm>
#include <filesystem>
#include <mutex>
#include <system_error>

#include "kzcore/tool/module_file.h"
#include "kzutil/folder_names.h"

namespace app {

namespace {

namespace fs = std::filesystem;

AFilePath plugInFolder() {
    AFilePath path;
    path += _T("Plugins");
    return path;
}

fs::path fileOf(const AFilePath& path) {
    return fs::path(path.getPath().view());
}

// "kzattribute" of "kzattribute.so": a module's texts in another language stand beside it in "kzattributeloc.dll".
std::string stemOf(const std::string& name) {
    return name.substr(0, name.size() - std::string_view(KZ_PLUGIN_SUFFIX).size());
}

std::vector<std::string> moduleNames(const fs::path& folder) {
    std::vector<std::string> names;
    for (const fs::path& file : kzutil::folderNames(folder)) {
        const std::u8string text = file.u8string();
        std::string name(text.begin(), text.end());
        if (name.ends_with(KZ_PLUGIN_SUFFIX) && !name.ends_with("loc" KZ_PLUGIN_SUFFIX))
            names.push_back(std::move(name));
    }
    std::ranges::sort(names);
    return names;
}

}  // namespace

std::shared_ptr<const PlugIns> PlugIns::loaded() {
    static std::mutex mutex;
    static std::weak_ptr<const PlugIns> shared;
    const std::lock_guard lock(mutex);
    std::shared_ptr<const PlugIns> plugIns = shared.lock();
    if (!plugIns) {
        plugIns.reset(new PlugIns);
        shared = plugIns;
    }
    return plugIns;
}

PlugIns::PlugIns() {
    const std::vector<std::string> names = moduleNames(fileOf(plugInFolder()));
    for (const std::string& name : names) load(name);
    if (names.empty()) m_problems.push_back(plugInFolder().getPath().toUtf8() + ": there is no plug-in");
}

void PlugIns::load(const std::string& name) {
    AFilePath path = plugInFolder();
    path += AString::fromUtf8(name);
    std::string error;
    std::unique_ptr<APlugIn> module = APlugIn::load(path, error);
    if (!module) {
        m_problems.push_back(error);
        return;
    }
    m_tools.insert(m_tools.end(), module->getTools().begin(), module->getTools().end());
    m_modules.push_back(std::move(module));

    AFilePath localized = plugInFolder();
    localized += AString::fromUtf8(stemOf(name) + "loc.dll");
    std::error_code ignored;
    if (!fs::exists(fileOf(localized), ignored)) return;
    std::string problem = moduleFileProblem(fileOf(localized));
    if (problem.empty()) {
        const HMODULE texts = LoadLibraryExW(localized, nullptr, LOAD_LIBRARY_AS_DATAFILE);
        if (texts)
            FreeLibrary(texts);
        else
            problem = "cannot be loaded (error " + std::to_string(GetLastError()) + ")";
    }
    if (!problem.empty())
        m_problems.push_back(localized.getPath().toUtf8() + ": " + problem +
                             "; the plug-in's own texts serve");
}

const APlugInTool* PlugIns::findTool(const AString& className) const {
    const auto found = std::ranges::find(m_tools, className, &APlugInTool::className);
    return found == m_tools.end() ? nullptr : &*found;
}

}  // namespace app
