// The plug-in that benchmarks start tools of, loaded once.
#pragma once

#include <memory>
#include <stdexcept>
#include <string>

#include "kzcore/tool/plugin_loader.h"

// Raises runtime_error when it cannot be loaded.
inline const APlugIn& plugIn() {
    static const std::unique_ptr<APlugIn> loaded = [] {
        AFilePath path;
        path += _T("Plugins");
        path += _T(KZ_PLUGIN_FILE);
        std::string error;
        auto module = APlugIn::load(path, error);
        if (!module) throw std::runtime_error(error);
        return module;
    }();
    return *loaded;
}
