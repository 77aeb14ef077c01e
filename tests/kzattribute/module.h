// The plug-in, loaded as a host does.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>

#include "kzcore/tool/plugin_loader.h"
#include "kzcore/tool/tool.h"
#include "support/drawing.h"
#include "support/program_folder.h"
#include "support/temp_folder.h"

namespace test {

inline AFilePath plugInPath() {
    AFilePath path;
    path += _T("Plugins");
    path += _T(KZ_PLUGIN_FILE);
    return path;
}

// The plug-in, loaded with the base folder as it is now.
inline std::unique_ptr<APlugIn> loadPlugIn(const AFilePath& path = plugInPath()) {
    std::string error;
    std::unique_ptr<APlugIn> plugIn = APlugIn::load(path, error);
    EXPECT_EQ(error, "");
    return plugIn;
}

inline std::unique_ptr<ATool> makeTool(const APlugIn& plugIn, const WCHAR* className) {
    const APlugInTool* entry = plugIn.findTool(className);
    return std::unique_ptr<ATool>(entry ? entry->factory() : nullptr);
}

inline std::string textOf(UINT id) {
    AString text;
    text.LoadStringW(id);
    return text.toUtf8();
}

}  // namespace test
