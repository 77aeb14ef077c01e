// The modules in the folder Plugins beside the program.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "kzcore/tool/plugin_loader.h"

namespace app {

class PlugIns {
public:
    // Those of the process: loaded by the first who asks, unloaded behind the last. A module that cannot be used is left
    // out; problems() tells why.
    static std::shared_ptr<const PlugIns> loaded();

    // Of every module, the modules in the order of their files' names.
    const std::vector<APlugInTool>& tools() const { return m_tools; }
    const APlugInTool* findTool(const AString& className) const;
    // A line for each module, and each localized module, that cannot be used, and one when there is no module.
    const std::vector<std::string>& problems() const { return m_problems; }

private:
    PlugIns();
    void load(const std::string& name);

    std::vector<std::unique_ptr<APlugIn>> m_modules;
    std::vector<APlugInTool> m_tools;
    std::vector<std::string> m_problems;
};

}  // namespace app
