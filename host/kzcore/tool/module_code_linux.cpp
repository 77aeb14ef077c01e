#include <link.h>

#include <cstdint>

#include "kzcore/tool/module_code.h"

namespace {

struct Search {
    std::uintptr_t address;
    bool isCode;
};

int lookIn(dl_phdr_info* module, std::size_t, void* data) {
    auto& search = *static_cast<Search*>(data);
    for (int i = 0; i < module->dlpi_phnum; ++i) {
        const ElfW(Phdr)& segment = module->dlpi_phdr[i];
        const std::uintptr_t begin = module->dlpi_addr + segment.p_vaddr;
        if (segment.p_type == PT_LOAD && search.address >= begin && search.address - begin < segment.p_memsz)
            search.isCode = (segment.p_flags & PF_X) != 0;
    }
    return search.isCode ? 1 : 0;
}

}  // namespace

bool isModuleCode(const void* address) {
    Search search{reinterpret_cast<std::uintptr_t>(address), false};
    dl_iterate_phdr(lookIn, &search);
    return search.isCode;
}
