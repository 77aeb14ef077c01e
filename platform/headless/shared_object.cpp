#include "platform/headless/shared_object.h"

#include <dlfcn.h>
#include <link.h>

#include <filesystem>
#include <memory>
#include <system_error>

namespace headless {
namespace {

struct CloseObject {
    void operator()(void* handle) const { dlclose(handle); }
};
using OpenObject = std::unique_ptr<void, CloseObject>;

// A further handle of an object that is loaded already.
OpenObject reopen(const link_map* object) {
    if (object == program_object()) return OpenObject(dlopen(nullptr, RTLD_LAZY));
    if (object->l_name[0] == '\0')
        return nullptr;  // the system's own page: dlopen would take it for the program
    return OpenObject(dlopen(object->l_name, RTLD_LAZY | RTLD_NOLOAD));
}

}  // namespace

link_map* object_at(const void* address) {
    Dl_info info;
    void* object = nullptr;
    if (dladdr1(address, &info, &object, RTLD_DL_LINKMAP) == 0) return nullptr;
    return static_cast<link_map*>(object);
}

link_map* object_of(void* handle) {
    link_map* object = nullptr;
    return dlinfo(handle, RTLD_DI_LINKMAP, &object) == 0 ? object : nullptr;
}

link_map* program_object() {
    static link_map* const program = object_of(OpenObject(dlopen(nullptr, RTLD_LAZY)).get());
    return program;
}

void* own_symbol(link_map* object, const char* name) {
    const OpenObject handle = reopen(object);
    if (!handle || object_of(handle.get()) != object) return nullptr;
    void* symbol = dlsym(handle.get(), name);  // searches the object and then what it depends on
    return symbol != nullptr && object_at(symbol) == object ? symbol : nullptr;
}

unsigned long long unload_count() {
    unsigned long long count = 0;
    dl_iterate_phdr(
        [](dl_phdr_info* info, std::size_t, void* result) {
            *static_cast<unsigned long long*>(result) = info->dlpi_subs;
            return 1;
        },
        &count);
    return count;
}

std::string object_path(const link_map* object) {
    std::error_code error;
    std::filesystem::path path = object == program_object()
                                     ? std::filesystem::read_symlink("/proc/self/exe", error)
                                     : std::filesystem::absolute(object->l_name, error);
    return error ? std::string() : path.lexically_normal().string();
}

}  // namespace headless
