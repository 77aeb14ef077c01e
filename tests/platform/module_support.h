// Loading the tests' modules.
#pragma once

#include <gtest/gtest.h>

#include "tests/platform/module_path.h"

inline Wide native_module(std::string_view name) {
    return module_path(wide(name) + wide(KZ_MODULE_SUFFIX));
}

// A module loaded for the length of a scope.
class LoadedModule {
public:
    explicit LoadedModule(HMODULE handle) : handle_(handle) { EXPECT_NE(handle, nullptr) << GetLastError(); }
    ~LoadedModule() {
        if (handle_ != nullptr) FreeLibrary(handle_);
    }
    LoadedModule(const LoadedModule&) = delete;
    LoadedModule& operator=(const LoadedModule&) = delete;

    operator HMODULE() const { return handle_; }

private:
    HMODULE handle_;
};

inline HMODULE load_native(std::string_view name) {
    return LoadLibraryW(native_module(name).c_str());
}

inline HMODULE load_resources(const Wide& file) {
    return LoadLibraryExW(module_path(file).c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE);
}
