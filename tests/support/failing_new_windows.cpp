// A program's own operator new would not be seen by the DLLs here: every module imports the one of the C++
// runtime's DLL. So the malloc that this one imports is redirected.
#include <cstdlib>
#include <cstring>
#include <stdexcept>

#include "platform/winapi.h"
#include "tests/support/failing_new.h"

namespace {

void* countingMalloc(std::size_t size) {
    return allocationFailsNow() ? nullptr : std::malloc(size);
}

// The place from which a module calls an imported function; null when it does not import it.
ULONG_PTR* importPlace(HMODULE module, const char* function) {
    BYTE* base = reinterpret_cast<BYTE*>(module);
    const auto* dos = reinterpret_cast<const IMAGE_DOS_HEADER*>(base);
    const auto* nt = reinterpret_cast<const IMAGE_NT_HEADERS64*>(base + dos->e_lfanew);
    const IMAGE_DATA_DIRECTORY& imports = nt->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
    const auto* library = reinterpret_cast<const IMAGE_IMPORT_DESCRIPTOR*>(base + imports.VirtualAddress);
    for (; library->Name != 0; ++library) {
        const auto* names = reinterpret_cast<const ULONG_PTR*>(base + library->OriginalFirstThunk);
        auto* places = reinterpret_cast<ULONG_PTR*>(base + library->FirstThunk);
        for (; *names != 0; ++names, ++places) {
            if ((*names & IMAGE_ORDINAL_FLAG64) != 0) continue;
            const auto* name = reinterpret_cast<const IMAGE_IMPORT_BY_NAME*>(base + *names);
            if (std::strcmp(reinterpret_cast<const char*>(name->Name), function) == 0) return places;
        }
    }
    return nullptr;
}

bool redirect() {
    const HMODULE runtime = GetModuleHandleW(L"libstdc++-6.dll");
    ULONG_PTR* place = runtime ? importPlace(runtime, "malloc") : nullptr;
    DWORD protection = 0;
    if (!place || !VirtualProtect(place, sizeof *place, PAGE_READWRITE, &protection))
        throw std::runtime_error("the C++ runtime's malloc cannot be redirected");
    *place = reinterpret_cast<ULONG_PTR>(&countingMalloc);
    return VirtualProtect(place, sizeof *place, protection, &protection) != 0;
}

}  // namespace

void ensureAllocationsAreCounted() {
    static const bool redirected = redirect();
    static_cast<void>(redirected);
}
