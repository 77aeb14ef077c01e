#include "kzcore/tool/module_code.h"
#include "platform/winapi.h"

bool isModuleCode(const void* address) {
    MEMORY_BASIC_INFORMATION memory;
    if (VirtualQuery(address, &memory, sizeof memory) == 0) return false;
    constexpr DWORD kExecutable =
        PAGE_EXECUTE | PAGE_EXECUTE_READ | PAGE_EXECUTE_READWRITE | PAGE_EXECUTE_WRITECOPY;
    return memory.State == MEM_COMMIT && (memory.Protect & kExecutable) != 0;
}
