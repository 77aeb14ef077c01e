// Resources of modules.
//
// An HRSRC is its module's serial number and, in the low 32 bits, where the resource's data entry stands: it
// belongs to one module, is checked against it, and takes no memory. The HGLOBAL of LoadResource is the
// address of the bytes, good for as long as the module is loaded.
#include <algorithm>
#include <cstring>

#include "platform/headless/guard.h"
#include "platform/headless/module_registry.h"
#include "platform/headless/resource_directory.h"

namespace {

using namespace headless;

ResourceName name_of(LPCWSTR name) {
    if (IS_INTRESOURCE(name)) return {static_cast<WORD>(reinterpret_cast<ULONG_PTR>(name)), {}};
    return {0, name};
}

ULONG_PTR mark_of(const Module& module) {
    return reinterpret_cast<ULONG_PTR>(module.handle) >> 16 << 32;
}

// The bytes behind an HRSRC; none and a last error when it is not this module's.
std::optional<Bytes> bytes_of(HMODULE handle, HRSRC resource) {
    const Module* module = find_module(handle);
    if (module == nullptr) return std::nullopt;
    const ULONG_PTR entry = reinterpret_cast<ULONG_PTR>(resource) ^ mark_of(*module);
    const bool is_its_own = entry <= 0xffffffff;
    const auto bytes =
        is_its_own ? resource_bytes(module->resources, static_cast<DWORD>(entry)) : std::nullopt;
    if (!bytes) SetLastError(ERROR_INVALID_HANDLE);
    return bytes;
}

// What LoadStringW does with its size 0: hands out the text where it stands.
int point_at_string(Bytes text, LPWSTR buffer) {
    // A well-formed image aligns its strings; of another one, nobody may read them as characters.
    if (reinterpret_cast<ULONG_PTR>(text.data()) % alignof(WCHAR) != 0)
        return fails(ERROR_RESOURCE_DATA_NOT_FOUND);
    const auto start = reinterpret_cast<LPCWSTR>(text.data());
    std::memcpy(buffer, &start, sizeof start);
    return static_cast<int>(text.size() / sizeof(WCHAR));
}

}  // namespace

HRSRC FindResourceW(HMODULE handle, LPCWSTR name, LPCWSTR type) {
    return guarded([&]() -> HRSRC {
        const LoaderLock lock;
        const Module* module = find_module(handle);
        if (module == nullptr) return nullptr;
        const FoundResource found = find_resource(module->resources, name_of(type), name_of(name));
        if (found.error != ERROR_SUCCESS) return fails(found.error);
        return reinterpret_cast<HRSRC>(mark_of(*module) | found.resource.entry);
    });
}

HGLOBAL LoadResource(HMODULE module, HRSRC resource) {
    return guarded([&]() -> HGLOBAL {
        const LoaderLock lock;
        const auto bytes = bytes_of(module, resource);
        return bytes ? const_cast<std::uint8_t*>(bytes->data()) : nullptr;
    });
}

LPVOID LockResource(HGLOBAL resource) {
    return resource;
}

DWORD SizeofResource(HMODULE module, HRSRC resource) {
    return guarded([&]() -> DWORD {
        const LoaderLock lock;
        const auto bytes = bytes_of(module, resource);
        return bytes ? static_cast<DWORD>(bytes->size()) : 0;
    });
}

int LoadStringW(HINSTANCE handle, UINT id, LPWSTR buffer, int size) {
    return guarded([&]() -> int {
        if (buffer == nullptr || size < 0) return fails(ERROR_INVALID_PARAMETER);
        if (size > 0) buffer[0] = 0;
        const LoaderLock lock;
        const Module* module = find_module(handle);
        if (module == nullptr) return 0;
        const auto text = find_string(module->resources, LOWORD(id));
        if (!text) return fails(ERROR_RESOURCE_NAME_NOT_FOUND);
        if (size == 0) return point_at_string(*text, buffer);
        const int length = std::min(static_cast<int>(text->size() / sizeof(WCHAR)), size - 1);
        std::memcpy(buffer, text->data(), static_cast<std::size_t>(length) * sizeof(WCHAR));
        buffer[length] = 0;
        return length;
    });
}
