// The modules that the process knows by handle.
//
// A handle is a number that is never given twice, so a stale or made-up one is noticed, not dereferenced.
// Shared objects get an entry when LoadLibraryW loads them, or when somebody asks for their handle by an
// address; the program's entry is made when first asked for. An entry goes when its object is unloaded,
// whoever unloads it.
//
// Lock before calling anything here and hold the lock while using what it answered: LoaderLock is to these
// functions what the loader lock is on Windows, and is held while a module's entry point runs.
#pragma once

#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "platform/headless/resource_directory.h"

struct link_map;

namespace headless {

class LoaderLock {
public:
    LoaderLock();

private:
    std::unique_lock<std::recursive_mutex> lock_;
};

struct Module {
    HMODULE handle = nullptr;
    int count = 0;     // of LoadLibrary calls not yet undone; 0 for what others loaded
    std::string path;  // absolute, UTF-8
    ResourceDirectory resources;
    link_map* object = nullptr;  // null for a module loaded for its resources only
    const void* dynamic =
        nullptr;              // an address in the object's image, to ask later whether it is still loaded
    void* library = nullptr;  // dlopen's handle while count > 0
    std::vector<std::uint8_t> image;  // the file, when loaded for its resources only
};

// The module of a handle, the program's for null. Null and ERROR_INVALID_HANDLE when there is none.
Module* find_module(HMODULE handle);

// The entry of a shared object, made when it has none yet.
Module& module_of(link_map* object);

// An entry for a file whose bytes are loaded for their resources; the handle's low bit is set. Loading a file
// twice makes two entries: the file may have changed between.
Module& add_resource_module(std::string path, std::vector<std::uint8_t> image,
                            const ResourceDirectory& resources);

void remove_module(HMODULE handle);

// Takes out the entries of shared objects that are no longer loaded.
void drop_unloaded_modules();

}  // namespace headless
