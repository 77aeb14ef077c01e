// LoadLibrary and FreeLibrary.
#include <dlfcn.h>

#include <cstring>

#include "platform/headless/guard.h"
#include "platform/headless/module_file.h"
#include "platform/headless/module_registry.h"
#include "platform/headless/shared_object.h"

namespace {

using namespace headless;

using EntryPoint = BOOL (*)(HINSTANCE, DWORD, LPVOID);

// A module without an entry point agrees to everything. An exception must not reach the loader: it
// counts as refusal.
BOOL call_entry_point(const Module& module, DWORD reason) {
    const auto entry_point = reinterpret_cast<EntryPoint>(own_symbol(module.object, "DllMain"));
    if (entry_point == nullptr) return TRUE;
    try {
        return entry_point(module.handle, reason, nullptr);
    } catch (...) {
        return FALSE;
    }
}

// Undoes the load of a module that nobody else counts.
void unload(Module& module) {
    call_entry_point(module, DLL_PROCESS_DETACH);
    void* library = module.library;
    module.library = nullptr;
    dlclose(library);  // its destructors may still ask for its resources, so the entry goes afterwards
    drop_unloaded_modules();
}

// Why dlopen refused the file. It looks for the file's own dependencies too, and tells that apart in
// its text only.
DWORD load_error(const std::string& path) {
    const char* text = dlerror();
    const ModuleFile front = read_front(path, 4);
    if (front.error != ERROR_SUCCESS)
        return front.error == ERROR_FILE_NOT_FOUND ? ERROR_MOD_NOT_FOUND : front.error;
    if (front.bytes.size() < 4 || std::memcmp(front.bytes.data(), "\177ELF", 4) != 0)
        return ERROR_BAD_EXE_FORMAT;
    if (text == nullptr || std::strstr(text, "memory") != nullptr) return ERROR_NOT_ENOUGH_MEMORY;
    if (std::strstr(text, "undefined symbol") != nullptr) return ERROR_PROC_NOT_FOUND;
    if (std::strstr(text, "cannot open shared object file") != nullptr) return ERROR_MOD_NOT_FOUND;
    return ERROR_BAD_EXE_FORMAT;
}

HMODULE load_module(LPCWSTR name) {
    const LoaderLock lock;
    const std::string path = module_file(name);
    void* library = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (library == nullptr) return fails(load_error(path));

    struct CloseUnlessKept {
        void* library;
        ~CloseUnlessKept() {
            if (library != nullptr) dlclose(library);
        }
    } close_unless_kept{library};
    Module& module = module_of(object_of(library));
    if (module.count > 0) {
        ++module.count;  // one handle of dlopen is enough
        return module.handle;
    }
    close_unless_kept.library = nullptr;
    module.library = library;
    module.count = 1;
    const HMODULE handle = module.handle;
    if (call_entry_point(module, DLL_PROCESS_ATTACH)) return handle;
    module.count = 0;
    unload(module);  // with a call to detach, as Windows does after a refusal
    return fails(ERROR_DLL_INIT_FAILED);
}

HMODULE load_resources(LPCWSTR name) {
    const LoaderLock lock;
    std::string path = module_file(name);
    ModuleFile file = read_whole(path);
    if (file.error != ERROR_SUCCESS) return fails(file.error);
    const auto resources = open_resources(file.bytes);
    if (!resources) return fails(ERROR_BAD_EXE_FORMAT);
    return add_resource_module(std::move(path), std::move(file.bytes), *resources).handle;
}

}  // namespace

HMODULE LoadLibraryW(LPCWSTR path) {
    return LoadLibraryExW(path, nullptr, 0);
}

HMODULE LoadLibraryExW(LPCWSTR path, HANDLE file, DWORD flags) {
    return guarded([&]() -> HMODULE {
        if (path == nullptr || path[0] == 0 || file != nullptr) return fails(ERROR_INVALID_PARAMETER);
        if (flags == 0) return load_module(path);
        if (flags == LOAD_LIBRARY_AS_DATAFILE) return load_resources(path);
        return fails(ERROR_INVALID_PARAMETER);
    });
}

BOOL FreeLibrary(HMODULE handle) {
    return guarded([&]() -> BOOL {
        const LoaderLock lock;
        if (handle == nullptr) return fails(ERROR_INVALID_HANDLE);
        Module* module = find_module(handle);
        if (module == nullptr) return FALSE;
        if (module->count == 0 || --module->count > 0) return TRUE;  // what came with the program stays
        if (module->object == nullptr) {
            remove_module(handle);
        } else {
            unload(*module);
        }
        return TRUE;
    });
}
