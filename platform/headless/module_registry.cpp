#include "platform/headless/module_registry.h"

#include <link.h>

#include <cstring>
#include <map>

#include "platform/headless/shared_object.h"

namespace headless {
namespace {

struct Registry {
    std::recursive_mutex mutex;
    std::map<HMODULE, Module> modules;
    ULONG_PTR last_serial = 0;
    unsigned long long unloads_seen = 0;
};

// Never destroyed: modules that are still loaded when the process ends ask for their handles in their
// destructors, which run in no order that a registry could outlive otherwise.
Registry& registry() {
    static Registry* const instance = new Registry;
    return *instance;
}

// The low 16 bits stay free: resource-only modules carry a mark there, and no handle looks like
// a resource number.
HMODULE new_handle(ULONG_PTR mark) {
    return reinterpret_cast<HMODULE>(++registry().last_serial << 16 | mark);
}

// A native module carries the PE image of its resources under these two names, if it has any.
ResourceDirectory own_resources(link_map* object) {
    const void* start = own_symbol(object, "kz_module_resources");
    const void* size_at = own_symbol(object, "kz_module_resources_size");
    if (start == nullptr || size_at == nullptr) return {};
    std::uint64_t size = 0;
    std::memcpy(&size, size_at, sizeof size);
    return open_resources({static_cast<const std::uint8_t*>(start), size}).value_or(ResourceDirectory{});
}

}  // namespace

LoaderLock::LoaderLock() : lock_(registry().mutex) {}

Module* find_module(HMODULE handle) {
    if (registry().unloads_seen != unload_count()) drop_unloaded_modules();
    if (handle == nullptr) return &module_of(program_object());
    const auto found = registry().modules.find(handle);
    if (found != registry().modules.end()) return &found->second;
    SetLastError(ERROR_INVALID_HANDLE);
    return nullptr;
}

Module& module_of(link_map* object) {
    if (registry().unloads_seen != unload_count()) drop_unloaded_modules();
    for (auto& [handle, module] : registry().modules) {
        if (module.object == object) return module;
    }
    Module module;
    module.path = object_path(object);
    module.resources = own_resources(object);
    module.object = object;
    module.dynamic = object->l_ld;
    module.handle = new_handle(0);
    return registry().modules.emplace(module.handle, std::move(module)).first->second;
}

Module& add_resource_module(std::string path, std::vector<std::uint8_t> image,
                            const ResourceDirectory& resources) {
    Module module;
    module.count = 1;
    module.path = std::move(path);
    module.resources = resources;
    module.image = std::move(image);  // the bytes stay where they are, and the directory points into them
    module.handle = new_handle(1);
    return registry().modules.emplace(module.handle, std::move(module)).first->second;
}

void remove_module(HMODULE handle) {
    registry().modules.erase(handle);
}

void drop_unloaded_modules() {
    registry().unloads_seen = unload_count();
    std::erase_if(registry().modules, [](const auto& entry) {
        const Module& module = entry.second;
        if (module.object == nullptr) return false;
        return object_at(module.dynamic) != module.object || object_path(module.object) != module.path;
    });
}

}  // namespace headless
