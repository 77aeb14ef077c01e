// What can be asked of a module: its functions, its handle, its file.
#include <algorithm>

#include "platform/headless/guard.h"
#include "platform/headless/module_registry.h"
#include "platform/headless/shared_object.h"
#include "platform/headless/text.h"

using namespace headless;

FARPROC GetProcAddress(HMODULE handle, const char* name) {
    return guarded([&]() -> FARPROC {
        const LoaderLock lock;
        const Module* module = find_module(handle);
        if (module == nullptr) return nullptr;
        void* symbol = nullptr;
        // Functions have no numbers here.
        if (!IS_INTRESOURCE(name) && module->object != nullptr) symbol = own_symbol(module->object, name);
        if (symbol == nullptr) return fails(ERROR_PROC_NOT_FOUND);
        return reinterpret_cast<FARPROC>(symbol);
    });
}

BOOL GetModuleHandleExW(DWORD flags, LPCWSTR address, HMODULE* result) {
    return guarded([&]() -> BOOL {
        if (result == nullptr) return fails(ERROR_INVALID_PARAMETER);
        *result = nullptr;
        const bool by_address = (flags & GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS) != 0;
        const DWORD known =
            GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT;
        const bool counts = (flags & GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT) == 0;
        if ((flags & ~known) != 0 || counts || (!by_address && address != nullptr)) {
            return fails(ERROR_INVALID_PARAMETER);
        }
        const LoaderLock lock;
        link_map* object = address == nullptr ? program_object() : object_at(address);
        if (object == nullptr) return fails(ERROR_MOD_NOT_FOUND);
        *result = module_of(object).handle;
        return TRUE;
    });
}

DWORD GetModuleFileNameW(HMODULE handle, LPWSTR buffer, DWORD size) {
    return guarded([&]() -> DWORD {
        const LoaderLock lock;
        const Module* module = find_module(handle);
        if (module == nullptr) return 0;
        const std::u16string path = to_utf16(module->path);
        if (buffer == nullptr || size == 0) return fails(ERROR_INSUFFICIENT_BUFFER);
        const std::size_t length = std::min<std::size_t>(path.size(), size - 1);
        std::copy_n(path.data(), length, buffer);
        buffer[length] = 0;
        if (length == path.size()) {
            SetLastError(ERROR_SUCCESS);
            return static_cast<DWORD>(length);
        }
        SetLastError(ERROR_INSUFFICIENT_BUFFER);
        return size;  // tells a cut path from one that just fits
    });
}
